// Windows only: who started this process.
#pragma once

namespace platform {

// Whether the service manager did. Asked before the service dispatcher is: that one waits for the service manager, in
// Wine for 10 s. A wrong yes does no harm, as the dispatcher then says no.
bool StartedByServiceManager();

}  // namespace platform
