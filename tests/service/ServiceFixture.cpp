#include "tests/service/ServiceFixture.h"

namespace support {

ServiceFixture::ServiceFixture() : system(profile.SamName()), ipc(IpcRecord::Reset()) { Start(); }

ServiceFixture::~ServiceFixture() { Stop(); }

void ServiceFixture::Deliver(int code, std::string payload) {
  TagIPCMessageItem item;
  item.sender = 7;
  item.code = code;
  item.replyCode = 42;
  item.length = static_cast<int>(payload.size());
  item.payload = payload.data();
  EXPECT_TRUE(support::Deliver(item)) << "nothing is registered for code " << code;
}

void ServiceFixture::Start() {
  service = KT::MarnockTestAccess::Make();
  service->Init();
  log.Take();
}

void ServiceFixture::Stop() {
  KT::MarnockTestAccess::Destroy(service);
  service = nullptr;
}

}  // namespace support
