// Hostile payloads for the eleven handlers of a real service, whose files are on a disk in memory. Every request gets
// one answer under the code that it asked for, with a result that its kind may have; it changes no table but its own,
// and that one as described at CheckSet and CheckDelete; no schema ever changes; and where the disk works, what is on
// it at the end is what was answered.
#include <algorithm>
#include <memory>
#include <string_view>
#include <tuple>
#include <utility>

#include "apps/recovery/Judgement.h"
#include "codec/PayloadLimits.h"
#include "codec/messages/EncodedSize.h"
#include "fuzz/FuzzInput.h"
#include "fuzz/PlainSqliteMemory.h"
#include "fuzz/TableWatch.h"
#include "platform/text/PlenixBase.h"
#include "service/RequestTable.h"
#include "tests/service/MarnockTestAccess.h"
#include "tests/service/RecordingIpcClient.h"
#include "tests/support/MemoryMachine.h"

namespace {

using fuzz::FuzzInput;
using fuzz::Require;
using fuzz::Table;
using fuzz::TableRow;
using fuzz::TableRows;
using support::IpcRecord;
using support::MemoryMachine;

using AllRows = std::array<TableRows, fuzz::kTables>;

constexpr std::size_t kMostRequests = 4;
constexpr int kSender = 7;
constexpr int kReplyCode = 42;

// A service with its machine. Lives as long as the fuzzer; each input begins with empty tables and files.
class Machine {
 public:
  Machine() : ipc_(IpcRecord::Reset()), service_(KT::MarnockTestAccess::Make()) {
    service_->Init();
    watch_.Prepare();
    for (std::size_t i = 0; i < fuzz::kTables; ++i) schemas_[i] = watch_.SchemaVersion(static_cast<Table>(i));
  }
  ~Machine() {
    watch_.Release();
    KT::MarnockTestAccess::Destroy(service_);
  }

  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  static Machine& Get() {
    static const bool isReady = (fuzz::UsePlainSqliteMemory(), true);
    static Machine machine;
    static_cast<void>(isReady);
    return machine;
  }

  void Reset(bool diskWorks) {
    for (std::size_t i = 0; i < fuzz::kTables; ++i) {
      if (!rows_[i].empty()) watch_.Clear(static_cast<Table>(i));
    }
    ReadChangedRows();
    for (const auto& [name, bytes] : machine_.Disk().Image()) machine_.Disk().Delete(name);
    machine_.Disk().ForgetEvents();
    machine_.Disk().RefuseNewFiles(!diskWorks);
  }

  // All tables as they are now.
  const AllRows& ReadChangedRows() {
    for (std::size_t i = 0; i < fuzz::kTables; ++i) {
      const auto table = static_cast<Table>(i);
      if (std::exchange(changes_[i], watch_.Changes(table)) != watch_.Changes(table)) rows_[i] = watch_.Rows(table);
    }
    return rows_;
  }

  void CheckSchemas() {
    for (std::size_t i = 0; i < fuzz::kTables; ++i) Require(watch_.SchemaVersion(static_cast<Table>(i)) == schemas_[i]);
  }

  // The bytes of the answers to one request.
  std::vector<std::string> Deliver(int code, const std::string& payload) {
    ipc_.posted.clear();
    // Just its size on the heap: reading past its end is reading past an allocation.
    std::vector<char> bytes(payload.begin(), payload.end());
    TagIPCMessageItem item;
    item.sender = kSender;
    item.code = code;
    item.replyCode = kReplyCode;
    item.length = static_cast<int>(bytes.size());
    item.payload = bytes.empty() ? nullptr : bytes.data();
    Require(support::Deliver(item));
    std::vector<std::string> answers;
    for (support::PostedItem& posted : ipc_.posted) {
      Require(posted.item.receiver == kSender && posted.item.code == kReplyCode && posted.item.replyCode == -1);
      Require(posted.item.status == 0);
      answers.push_back(std::move(posted.payload));
    }
    return answers;
  }

  // The file of a table that was saved holds its rows and has nothing beside it.
  void CheckFile(Table table) {
    const KT::StoreFile& file = KT::StoreFiles()[table];
    const std::string path = PlenixBase::UnicodeToUTF8(MemoryMachine::kFolder) + file.fileName;
    Require(!machine_.Disk().Contains(path + ".tmp") && machine_.Disk().Contains(path));
    const KT::Judgement judgement = KT::Judge(file, machine_.Disk().Find(path)->bytes);
    Require(judgement.IsWhole() && judgement.rows == static_cast<std::int64_t>(watch_.Rows(table).size()));
  }

 private:
  MemoryMachine machine_;
  IpcRecord& ipc_;
  fuzz::TableWatch watch_;
  KT::Marnock* const service_;
  std::array<int, fuzz::kTables> schemas_{};
  std::array<int, fuzz::kTables> changes_{};
  AllRows rows_;
};

// What a key does as part of a statement: a quote ends it, a NUL ends the statement.
bool IsPlain(const std::string& key) { return key.find_first_of(std::string("'\0", 2)) == std::string::npos; }

bool IsSubsequence(const TableRows& some, const TableRows& all) {
  auto next = all.begin();
  for (const TableRow& row : some) {
    next = std::find(next, all.end(), row);
    if (next == all.end()) return false;
    ++next;
  }
  return true;
}

TableRows WithoutKey(TableRows rows, const std::string& key) {
  std::erase_if(rows, [&key](const TableRow& row) { return row.key == key; });
  return rows;
}

template <class Message>
Message Decoded(std::string bytes) {
  Message message;
  message.Deserialize(std::make_shared<KT::MessageParcel>(static_cast<std::uint32_t>(bytes.size()),
                                                          reinterpret_cast<std::uint8_t*>(bytes.data()), false));
  return message;
}

template <class Message>
std::string Encoded(Message message) {
  const auto size = static_cast<std::uint32_t>(KT::EncodedSize(message));
  const auto parcel = std::make_shared<KT::MessageParcel>(size, nullptr, true);
  message.Serialize(parcel);
  return {reinterpret_cast<const char*>(parcel->GetBuffer()), size};
}

template <class Request>
constexpr Table TableOf() {
  if constexpr (requires(Request request) { request.udId; }) return fuzz::kPeerTable;
  return Request::kCode >= KT::CurrZentapDeviceSetRequest::kCode ? fuzz::kCurrentTable : fuzz::kTrustedTable;
}

template <class Request>
const std::string& KeyOf(const Request& request) {
  if constexpr (requires { request.udId; }) {
    return request.udId;
  } else {
    return request.sumId;
  }
}

template <class Request>
constexpr bool kIsSet = requires(Request request) {
  request.info;
};
template <>
constexpr bool kIsSet<KT::PeerSumSetRequest> = true;

template <class Request>
constexpr bool kIsList = requires(typename Request::Response response) {
  response.list;
};

template <class Request>
constexpr bool kIsDelete =
    std::is_same_v<Request, KT::TrustedZentapDeviceDeleteRequest> ||
    std::is_same_v<Request, KT::CurrZentapDeviceDeleteRequest> || std::is_same_v<Request, KT::PeerSumDeleteRequest>;

template <class Request>
constexpr int FailureOf() {
  const bool isChange = kIsSet<Request> || kIsDelete<Request>;
  return isChange && TableOf<Request>() != fuzz::kPeerTable ? KT::kResultTapChangeFailed : KT::kResultReadOrPeerFailed;
}

// Without a quote: the rows of the key are replaced by one. With one: some rows of the table may go, and one row comes
// unless the request failed.
void CheckSet(const std::string& key, bool hasSucceeded, const TableRows& before, TableRows after) {
  Require(!IsPlain(key) || hasSucceeded);
  if (hasSucceeded) {
    Require(!after.empty() && after.back().key == key);
    after.pop_back();
  }
  Require(IsPlain(key) ? after == WithoutKey(before, key) : IsSubsequence(after, before));
}

void CheckDelete(const std::string& key, bool hasSucceeded, const TableRows& before, const TableRows& after) {
  if (IsPlain(key)) {
    Require(hasSucceeded && after == WithoutKey(before, key));
  } else {
    Require(IsSubsequence(after, before) && (hasSucceeded || after == before));
  }
}

// What a get must find after this set.
template <class Request>
auto Expected(const Request& set) {
  if constexpr (std::is_same_v<Request, KT::PeerSumSetRequest>) {
    KT::PeerSumGetResponse response;
    response.sumId = set.sumId;
    return response;
  } else {
    constexpr bool kIsTrusted = std::is_same_v<Request, KT::TrustedZentapDeviceSetRequest>;
    constexpr KT::DeviceTable kTable = kIsTrusted ? KT::DeviceTable::Trusted : KT::DeviceTable::Current;
    std::conditional_t<kIsTrusted, KT::TrustedZentapDeviceGetResponse, KT::CurrZentapDeviceGetResponse> response;
    response.pkgName = set.pkgName;
    KT::ForEachColumn<kTable>([&](const auto& field) { response.info.*field.member = set.info.*field.member; });
    return response;
  }
}

template <class Request>
auto GetFor(const Request& set) {
  if constexpr (std::is_same_v<Request, KT::PeerSumSetRequest>) {
    KT::PeerSumGetRequest get;
    get.udId = set.udId;
    return get;
  } else {
    std::conditional_t<std::is_same_v<Request, KT::TrustedZentapDeviceSetRequest>, KT::TrustedZentapDeviceGetRequest,
                       KT::CurrZentapDeviceGetRequest>
        get;
    get.pkgName = set.pkgName;
    get.sumId = set.sumId;
    return get;
  }
}

template <class Request>
void CheckFound(Machine& machine, const Request& set) {
  const auto get = GetFor(set);
  const auto expected = Expected(set);
  const std::size_t requestBytes = KT::EncodedSize(get);
  const bool fits = KT::EncodedSize(expected) <= static_cast<std::size_t>(KT::kReplyCapacityBytes);
  if (!fits || requestBytes == 0 || requestBytes > static_cast<std::size_t>(KT::kMaxPayloadBytes)) return;
  const std::vector<std::string> answers = machine.Deliver(get.kCode, Encoded(get));
  Require(answers.size() == 1);
  Require(Decoded<std::remove_cv_t<decltype(expected)>>(answers[0]) == expected);
}

// Whether an answer that may hold all of the table certainly fits its reply. One that does not fit is cut or not sent.
template <class Request>
bool CertainlyFits(const Request& request, const TableRows& rows, int capacity) {
  constexpr std::size_t kAllIntegers = 200;
  std::size_t bytes = kAllIntegers;
  if constexpr (requires { request.pkgName; }) bytes += request.pkgName.size();
  for (const TableRow& row : rows) bytes += row.rest.size() + kAllIntegers;
  return bytes <= static_cast<std::size_t>(capacity);
}

// Returns whether the table was changed and saved.
template <class Row>
bool CheckRequest(Machine& machine, const Row& row, const std::string& payload) {
  using Request = typename Row::Request;
  constexpr Table kTable = TableOf<Request>();
  const AllRows before = machine.ReadChangedRows();
  const std::vector<std::string> answers = machine.Deliver(row.Code(), payload);
  const AllRows& after = machine.ReadChangedRows();
  for (std::size_t i = 0; i < fuzz::kTables; ++i) Require(i == kTable || after[i] == before[i]);
  if (payload.empty()) {
    Require(answers.empty() && after == before);
    return false;
  }
  // One whose last string does not fit may claim that string's length prefix beyond the capacity.
  Require(answers.size() == 1);
  Require(answers[0].size() <= static_cast<std::size_t>(row.replyCapacityBytes) + KT::kSpareBytes);
  const auto request = Decoded<Request>(payload);
  if constexpr (kIsSet<Request> || kIsDelete<Request>) {
    if (!CertainlyFits(request, {}, row.replyCapacityBytes)) return false;
    const auto response = Decoded<typename Request::Response>(answers[0]);
    Require(response.result == KT::kResultSuccess || response.result == FailureOf<Request>());
    const bool hasSucceeded = response.result == KT::kResultSuccess;
    if constexpr (kIsSet<Request>) {
      CheckSet(KeyOf(request), hasSucceeded, before[kTable], after[kTable]);
      if (hasSucceeded && IsPlain(KeyOf(request))) CheckFound(machine, request);
    } else {
      CheckDelete(KeyOf(request), hasSucceeded, before[kTable], after[kTable]);
    }
    return hasSucceeded;
  } else {
    Require(after == before);
    if (CertainlyFits(request, after[kTable], row.replyCapacityBytes)) {
      const auto response = Decoded<typename Request::Response>(answers[0]);
      Require(response.result == KT::kResultSuccess || response.result == FailureOf<Request>());
      if constexpr (!kIsList<Request>) Require(!IsPlain(KeyOf(request)) || response.result == KT::kResultSuccess);
    }
    return false;
  }
}

template <std::size_t... index>
bool Dispatch(Machine& machine, std::size_t which, const std::string& payload, Table& table,
              std::index_sequence<index...>) {
  bool isSaved = false;
  const auto run = [&](const auto& row) {
    table = TableOf<typename std::remove_cvref_t<decltype(row)>::Request>();
    isSaved = CheckRequest(machine, row, payload);
  };
  ((index == which ? run(std::get<index>(KT::kRequestTable)) : void()), ...);
  return isSaved;
}

std::string Payload(FuzzInput& input) { return input.TakeText(input.Take<std::uint16_t>() % 12288); }

// For one input of 32. Saves that work take ten times as long as all the rest, and a fuzzer that could choose them
// would try little else.
bool DiskWorksFor(std::string_view input) {
  std::uint32_t hash = 2166136261;
  for (const char byte : input) hash = (hash ^ static_cast<unsigned char>(byte)) * 16777619U;
  return hash % 32 == 0;
}

}  // namespace

// Input: requests: which, the payload's length, and the payload.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  Machine& machine = Machine::Get();
  const bool diskWorks = DiskWorksFor({reinterpret_cast<const char*>(data), size});
  machine.Reset(diskWorks);
  std::array<bool, fuzz::kTables> isSaved{};
  for (std::size_t i = 0; i < kMostRequests && !input.Empty(); ++i) {
    constexpr auto kRows = std::tuple_size_v<decltype(KT::kRequestTable)>;
    const std::size_t which = input.Take<std::uint8_t>() % kRows;
    Table table{};
    const bool saved = Dispatch(machine, which, Payload(input), table, std::make_index_sequence<kRows>());
    isSaved[table] = isSaved[table] || saved;
  }
  machine.CheckSchemas();
  for (std::size_t i = 0; i < fuzz::kTables; ++i) {
    if (diskWorks && isSaved[i]) machine.CheckFile(static_cast<Table>(i));
  }
  return 0;
}
