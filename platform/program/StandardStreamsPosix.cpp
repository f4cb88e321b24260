#include "platform/program/StandardStreams.h"

namespace platform {

void PrepareStandardStreams() {}

}  // namespace platform
