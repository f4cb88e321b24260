#include "apps/marnock-host/Host.h"

#include <chrono>
#include <exception>
#include <ostream>

#include "apps/marnock-host/ImportFile.h"
#include "apps/marnock-host/ImportGuard.h"
#include "apps/marnock-host/StatusDocument.h"
#include "apps/marnock-host/UnsavedChangeWarning.h"
#include "apps/recovery/StoreRepair.h"
#include "codec/Protocol.h"
#include "host/Utils.h"
#include "persistence/DatabaseFiles.h"
#include "platform/configuration/CohesaConfig.h"
#include "platform/ipc/IPCMessageHub.h"
#include "platform/logging/QxLogger.h"
#include "platform/text/PlenixBase.h"
#include "service/Marnock.h"
#include "service/ServiceStatus.h"

namespace KT {

namespace {

constexpr int kStopped = 0;
constexpr int kCouldNotStart = 1;
constexpr int kWrongInput = 2;
constexpr std::chrono::seconds kServiceConnectTimeout{10};

// The store is saved as it is destroyed, after main: by then no request may be under way and no thread be left, since
// Windows ends threads wherever they are when main returns.
void StopInOrder(IPCMessageHub& hub, Marnock& service) {
  hub.StopAccepting();
  service.StopDelivery();
  hub.Stop();
}

void Import(Marnock& service, std::ostream& err) {
  const ImportGuard guard;
  ImportDevicesAtStartup(service);
  if (guard.Exists()) {
    return;
  }
  try {
    guard.Create();
  } catch (const std::exception& error) {
    err << "marnock-host: " << error.what() << std::endl;
  }
}

// Mends what a save that was cut short left behind, before the service loads it. False when the service must not start.
bool Recover(std::ostream& err) {
  const std::wstring folder = Utils::GetCurrUserDefinePath(kDatabaseFolder);
  if (folder.empty()) {
    return true;  // the service has no files then; the lookup has logged why
  }
  bool anyLoss = false;
  const auto refusal = RepairStore(folder, HostHooks(), anyLoss);
  if (refusal.has_value()) {
    err << "marnock-host: not started, so that no database file is overwritten: " << *refusal << std::endl;
  }
  return !refusal.has_value();
}

void OfferStatus(IPCMessageHub& hub, const Marnock& service) {
  hub.SetStatusProvider([&hub, &service, start = std::chrono::steady_clock::now()] {
    const auto uptime = std::chrono::floor<std::chrono::seconds>(std::chrono::steady_clock::now() - start);
    return StatusDocument(uptime, hub.Counters(), GetServiceStatus(service));
  });
}

int Serve(const HostOptions& options, platform::StopSignal& stop, std::ostream& out, std::ostream& err) {
  const std::string pipe = PlenixBase::UnicodeToUTF8(kPipeName);
  IPCMessageHub hub(kPipeName);
  if (!hub.Claim()) {
    err << "marnock-host: another host is running on " << pipe << std::endl;
    return kCouldNotStart;
  }
  if (options.recover && !Recover(err)) {
    return kCouldNotStart;
  }
  Marnock& service = Marnock::GetInstance();
  service.Init();
  ObserveUnsavedChanges(service, &WarnOfUnsavedChange);
  if (!options.importFile.empty()) {
    Import(service, err);
  }
  OfferStatus(hub, service);
  hub.Start();
  const bool ready = service.WaitUntilConnected(kServiceConnectTimeout);
  if (ready) {
    out << "marnock-host: ready on " << pipe << std::endl;
    stop.Wait();
  } else {
    err << "marnock-host: the service did not reach its own hub on " << pipe << std::endl;
  }
  StopInOrder(hub, service);
  return ready ? kStopped : kCouldNotStart;
}

}  // namespace

int RunHost(const HostOptions& options, platform::StopSignal& stop, std::ostream& out, std::ostream& err) {
  try {
    if (!options.importFile.empty()) {
      CohesaConfig::SetSource(ImportFile::Read(options.importFile));
    }
  } catch (const std::exception& error) {
    err << "marnock-host: " << error.what() << std::endl;
    return kWrongInput;
  }
  try {
    if (!options.logFile.empty()) {
      QxLogger::GetInstance().OpenFile(options.logFile);
    }
    return Serve(options, stop, out, err);
  } catch (const std::exception& error) {
    err << "marnock-host: " << error.what() << std::endl;
    return kCouldNotStart;
  }
}

}  // namespace KT
