// marnockctl from its arguments to its exit status.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "apps/marnockctl/ExitStatus.h"

namespace KT {

// `arguments`: UTF-8, the program's name first.
ExitStatus RunMarnockctl(std::vector<std::string> arguments, std::ostream& out, std::ostream& err);

}  // namespace KT
