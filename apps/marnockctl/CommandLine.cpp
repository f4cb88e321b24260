#include "apps/marnockctl/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

namespace KT {

namespace {

constexpr char kUdIdHelp[] = "the peer's unique device id";
constexpr char kSumIdHelp[] = "the summary id";

void AddGlobalOptions(CLI::App& app, GlobalOptions& options, std::int64_t& timeoutMs) {
  app.add_option("--timeout", timeoutMs, "how long to wait for the answer, in milliseconds")
      ->type_name("MS")
      ->check(CLI::Range(std::int64_t{1}, std::int64_t{86'400'000}));
  app.add_option("--pkg", options.pkgName, "the package name to send")->type_name("NAME");
  app.add_flag("--json", options.json, "print one JSON document");
}

// A subcommand whose positionals fill `value` and which makes `value` the command.
template <class Value>
CLI::App* AddCommand(CLI::App* parent, const char* name, const char* help, std::optional<Command>& command,
                     std::shared_ptr<Value> value) {
  CLI::App* const app = parent->add_subcommand(name, help);
  app->callback([&command, value] { command = *value; });
  return app;
}

template <class Family>
void AddDeviceCommands(CLI::App& app, const char* name, const char* help, std::optional<Command>& command) {
  CLI::App* const family = app.add_subcommand(name, help);
  family->require_subcommand(1);

  const auto set = std::make_shared<DeviceSet<Family>>();
  CLI::App* const setApp = AddCommand(family, "set", "store a device under SUMID", command, set);
  setApp->add_option("SUMID", set->sumId, kSumIdHelp)->required();
  setApp->add_option("FILE", set->file, "the device as a JSON object; - for standard input");
  setApp->add_option("--field", set->fields, "set one field, instead of or on top of FILE")
      ->type_name("NAME=VALUE")
      ->allow_extra_args(false);
  setApp->add_flag("--force", set->force, "send even what a get could not give back");

  const auto get = std::make_shared<DeviceGet<Family>>();
  CLI::App* const getApp = AddCommand(family, "get", "print the device stored under SUMID", command, get);
  getApp->add_option("SUMID", get->sumId, kSumIdHelp)->required();

  AddCommand(family, "list", "print every device", command, std::make_shared<DeviceList<Family>>());

  const auto remove = std::make_shared<DeviceDelete<Family>>();
  CLI::App* const removeApp = AddCommand(family, "delete", "forget the device stored under SUMID", command, remove);
  removeApp->add_option("SUMID", remove->sumId, kSumIdHelp)->required();
}

void AddPeerCommands(CLI::App& app, std::optional<Command>& command) {
  CLI::App* const peer = app.add_subcommand("peer", "the map from peer devices to summary ids");
  peer->require_subcommand(1);

  const auto set = std::make_shared<PeerSet>();
  CLI::App* const setApp = AddCommand(peer, "set", "map UDID to SUMID", command, set);
  setApp->add_option("UDID", set->udId, kUdIdHelp)->required();
  setApp->add_option("SUMID", set->sumId, kSumIdHelp)->required();

  const auto get = std::make_shared<PeerGet>();
  CLI::App* const getApp = AddCommand(peer, "get", "print the SUMID of UDID", command, get);
  getApp->add_option("UDID", get->udId, kUdIdHelp)->required();

  const auto remove = std::make_shared<PeerDelete>();
  CLI::App* const removeApp = AddCommand(peer, "delete", "forget UDID", command, remove);
  removeApp->add_option("UDID", remove->udId, kUdIdHelp)->required();
}

void AddStoreCommands(CLI::App& app, std::optional<Command>& command) {
  CLI::App* const store = app.add_subcommand("store",
                                             "the database files on this machine, without the service\n"
                                             "Exit status: 0 all well; 1 something to repair, or damaged; 2 something "
                                             "lost; 3 unreadable, or the host runs; 4 no such file.");
  store->require_subcommand(1);

  AddCommand(store, "check", "say in what state the files are", command, std::make_shared<StoreCheck>());

  const auto repair = std::make_shared<StoreRepair>();
  CLI::App* const repairApp =
      AddCommand(store, "repair", "mend what a save that was cut short has left", command, repair);
  repairApp->add_flag("--dry-run", repair->dryRun, "only tell what would be done");

  const auto show = std::make_shared<StoreShow>();
  CLI::App* const showApp = AddCommand(store, "show", "print the rows of a file, damaged or not", command, show);
  showApp->add_option("FILE", show->file, "peer, current or trusted, a file in the database folder, or a path")
      ->required();
}

}  // namespace

std::optional<Invocation> ParseCommandLine(std::vector<std::string> arguments, std::ostream& out, std::ostream& err,
                                           ExitStatus& status) {
  Invocation invocation;
  std::int64_t timeoutMs = invocation.options.timeout.count();
  std::optional<Command> command;

  CLI::App app(
      "Reads and changes the device registry.\n"
      "Exit status: 0 done; 1 the service failed; 2 wrong command or input; 3 no service or no answer in time; "
      "4 not found.",
      "marnockctl");
  app.allow_windows_style_options(false);  // an argument may well begin with a slash
  app.require_subcommand(1);
  AddGlobalOptions(app, invocation.options, timeoutMs);
  AddDeviceCommands<TrustedFamily>(app, "trusted", "the devices that the user has trusted", command);
  AddDeviceCommands<CurrentFamily>(app, "current", "the devices that are connected now", command);
  AddPeerCommands(app, command);
  AddCommand(&app, "status", "how the host is doing: uptime, connections, requests, saves", command,
             std::make_shared<HostStatus>());
  AddStoreCommands(app, command);

  arguments.erase(arguments.begin());
  std::reverse(arguments.begin(), arguments.end());  // CLI11 takes them from the back
  try {
    app.parse(std::move(arguments));
  } catch (const CLI::ParseError& error) {
    status = app.exit(error, out, err) == 0 ? ExitStatus::Done : ExitStatus::WrongUse;
    return std::nullopt;
  }
  invocation.options.timeout = std::chrono::milliseconds(timeoutMs);
  invocation.command = *std::move(command);
  return invocation;
}

}  // namespace KT
