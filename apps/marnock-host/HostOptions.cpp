#include "apps/marnock-host/HostOptions.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <utility>

namespace KT {

namespace {
constexpr int kWrongUse = 2;
}  // namespace

std::optional<HostOptions> ParseHostOptions(std::vector<std::string> arguments, std::ostream& out, std::ostream& err,
                                            int& status) {
  HostOptions options;
  CLI::App app("Runs the device registry and the hub of its pipe until it is told to stop.", "marnock-host");
  app.allow_windows_style_options(false);  // a path may well begin with a slash
  app.add_option("--log", options.logFile, "write the log to FILE instead of standard error")->type_name("FILE");
  app.add_option("--import", options.importFile, "seed the device tables once from a JSON file")->type_name("FILE");
  bool noRecover = false;
  app.add_flag("--no-recover", noRecover, "load the database files as they are, without mending them first");
  arguments.erase(arguments.begin());
  std::reverse(arguments.begin(), arguments.end());  // CLI11 takes them from the back
  try {
    app.parse(std::move(arguments));
  } catch (const CLI::ParseError& error) {
    status = app.exit(error, out, err) == 0 ? 0 : kWrongUse;
    return std::nullopt;
  }
  options.recover = !noRecover;
  return options;
}

}  // namespace KT
