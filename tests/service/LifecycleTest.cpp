// Construction, registration, the reply envelope and destruction.
#include <gtest/gtest.h>

#include "codec/messages/PeerSumMessages.h"
#include "tests/service/ServiceFixture.h"

namespace {

using KT::MarnockTestAccess;
using support::IpcRecord;
using Lines = std::vector<std::string>;

class Lifecycle : public support::ServiceFixture {};

TEST_F(Lifecycle, ConstructsTheIpcClientWithItsIdFlagsAndPipe) {
  EXPECT_EQ(ipc.clientId, 12'845'056);
  EXPECT_FALSE(ipc.hubMustExist);
  EXPECT_FALSE(ipc.reserved);
  EXPECT_EQ(ipc.pipeName, L"\\\\.\\Pipe\\iLumoraAssistant");
}

TEST_F(Lifecycle, InitRegistersTheElevenCodesInOrder) {
  const std::vector<int> expected{0xc40001, 0xc40002, 0xc40003, 0xc40004, 0xc40005, 0xc40006,
                                  0xc40007, 0xc40008, 0xc40009, 0xc4000a, 0xc4000b};
  EXPECT_EQ(ipc.registeredCodes, expected);
}

TEST_F(Lifecycle, ConstructionLoadsThreeTablesAndInitLogsOnce) {
  Stop();
  std::filesystem::remove_all(profile.NativeRoot());
  log.Take();
  service = MarnockTestAccess::Make();
  EXPECT_EQ(log.Take(), (Lines{"3 [KTData] Creat database success.(KT::DbEngine::CreateTable)",
                               "3 [KTData] Init database success.(KT::DbEngine::InitDb)",
                               "3 [KTData] Creat database success.(KT::DbEngine::CreateTable)",
                               "3 [KTData] Init database success.(KT::DbEngine::InitDb)",
                               "3 [KTData] Creat database success.(KT::DbEngine::CreateTable)",
                               "3 [KTData] Init database success.(KT::DbEngine::InitDb)"}));
  service->Init();
  EXPECT_EQ(log.Take(), Lines{"3 [KTData] Init Marnock finished.(KT::Marnock::Init)"});
}

TEST_F(Lifecycle, RegisteringAgainLeavesOneAnswerARequest) {
  MarnockTestAccess::RegisterIpc(*service);
  KT::PeerSumGetRequest request;
  request.udId = "peer";
  Ask(request);  // expects exactly one reply
}

TEST_F(Lifecycle, UnRegisterIpcEndsRequestHandling) {
  MarnockTestAccess::UnRegisterIpc(*service);
  EXPECT_EQ(ipc.unregistrations, 1);
  TagIPCMessageItem item;
  item.code = 0xc40009;
  EXPECT_FALSE(support::Deliver(item));
}

TEST_F(Lifecycle, AReplyIsAddressedByTheRequestsSenderAndReplyCode) {
  KT::PeerSumGetRequest request;
  request.udId = "peer";
  Ask(request);
  const TagIPCMessageItem& reply = ipc.posted.at(0).item;
  EXPECT_EQ(reply.name, "");
  EXPECT_EQ(reply.receiver, 7);
  EXPECT_EQ(reply.sender, -1);
  EXPECT_EQ(reply.code, 42);
  EXPECT_EQ(reply.replyCode, -1);
  EXPECT_EQ(reply.session, -1);
  EXPECT_EQ(reply.status, 0);
  EXPECT_EQ(reply.length, 6);
  EXPECT_TRUE(reply.isLast);
  EXPECT_EQ(reply.extra, 0);
}

TEST_F(Lifecycle, PostIpcHandsOnWhatTheLibraryAnswersAndKeepsThePayload) {
  std::string payload = "abc";
  EXPECT_TRUE(MarnockTestAccess::PostIpc(*service, 1, 2, 3, payload.data(), 3));
  ipc.postSucceeds = false;
  EXPECT_FALSE(MarnockTestAccess::PostIpc(*service, 1, 2, 3, payload.data(), 3));
  EXPECT_EQ(payload, "abc");
  EXPECT_EQ(ipc.posted.at(1).item.receiver, 1);
  EXPECT_EQ(ipc.posted.at(1).item.code, 2);
  EXPECT_EQ(ipc.posted.at(1).item.replyCode, 3);
}

TEST_F(Lifecycle, PostIpcPassesANegativeLengthOn) {
  EXPECT_TRUE(MarnockTestAccess::PostIpc(*service, 1, 2, -1, nullptr, -1));
  EXPECT_EQ(ipc.posted.at(0).item.length, -1);
}

TEST_F(Lifecycle, CallbacksAreRemovedBeforeTheStoreIsSaved) {
  ipc.onUnregister = [this] { system.Note("callbacks removed"); };
  system.ClearCalls();
  Stop();
  ASSERT_FALSE(system.Calls().empty());
  EXPECT_EQ(system.Calls().front(), "callbacks removed");
  EXPECT_EQ(log.Take(),
            (Lines{"3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)",
                   "3 [KTData] Save zentap database into disk.(KT::TrustedZentapDbEngine::SaveZentapDbIntoDisk)",
                   "3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)",
                   "3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)"}));
  EXPECT_TRUE(std::filesystem::exists(profile.NativeFile("PeerDeviceInfo1G12NJ9DS39D.db")));
  EXPECT_TRUE(std::filesystem::exists(profile.NativeFile("CurrentZentapDeviceInfo1G12NJ9DS39D.db")));
  EXPECT_TRUE(std::filesystem::exists(profile.NativeFile("TrustedZentapDeviceInfo2G12NJ9DS39D.db")));
}

TEST_F(Lifecycle, WhatWasStoredIsThereAfterARestart) {
  KT::PeerSumSetRequest set;
  set.udId = "peer";
  set.sumId = "sum";
  EXPECT_EQ(Ask(set).result, 0);
  Stop();
  ipc = IpcRecord();
  Start();
  KT::PeerSumGetRequest get;
  get.udId = "peer";
  EXPECT_EQ(Ask(get).sumId, "sum");
}

}  // namespace
