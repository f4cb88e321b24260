// marnockctl from its arguments to its exit status.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "apps/marnockctl/ExitStatus.h"
#include "codec/Protocol.h"

namespace KT {

// `arguments`: UTF-8, the program's name first. `pipeName` is for tests, which have a service of their own.
ExitStatus RunMarnockctl(std::vector<std::string> arguments, std::ostream& out, std::ostream& err,
                         const std::wstring& pipeName = kPipeName);

}  // namespace KT
