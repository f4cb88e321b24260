// One message payload with the stream that reads or writes it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "codec/DataStream.h"
#include "codec/IpcBufferBuild.h"

namespace KT {

// A reading parcel wraps the caller's bytes, a writing parcel has a buffer of its own. Made with std::make_shared, used
// for one message in one direction, by one thread.
//
// A parcel that could not be set up has no stream: writes do nothing and record nothing, reads give -1 or "". The log
// says why.
class MessageParcel {
 public:
  // Reading: `buffer` holds `size` bytes, is not owned and must outlive the parcel; `allocate` is false.
  // Writing: `buffer` is ignored, `size` is the capacity in bytes, `allocate` is true.
  // `size` is 1 to kMaxPayloadBytes.
  MessageParcel(std::uint32_t size, std::uint8_t* buffer, bool allocate);
  ~MessageParcel();
  MessageParcel(const MessageParcel&) = delete;
  MessageParcel& operator=(const MessageParcel&) = delete;

  // What the constructor does. Called once more it starts the parcel afresh, except for the results recorded so far.
  void Init(std::uint8_t* buffer, std::int32_t size, bool allocate);

  // Whether everything was set up. One that had no memory for its strings alone still reads and writes integers.
  bool IsReady() const { return stream_ != nullptr && stream_->HasScratch(); }

  // Each write records its result: the bytes it accounts for, or -1. A string records 1 when its bytes did not fit, so
  // that only integers make the data size negative. Clients in use rely on that difference.
  // By value, as callers of the suite's interface expect it. NOLINTNEXTLINE(performance-unnecessary-value-param)
  void WriteString(std::string text) { WriteText(text); }
  // WriteString without its copy.
  void WriteText(const std::string& text) {
    if (stream_ != nullptr) Record(stream_->WriteUtf8String(text));
  }
  void WriteInt32(std::int32_t value) {
    if (stream_ != nullptr) Record(stream_->WriteInt32(value));
  }
  void WriteInt64(std::int64_t value) {
    if (stream_ != nullptr) Record(stream_->WriteInt64(value));
  }

  // Past the end of the payload an integer reads as 0. A string whose bytes run short reads with its announced length.
  std::string ReadString() {
    std::string text;
    ReadText(text);
    return text;
  }
  // ReadString into a string that is there.
  void ReadText(std::string& text) {
    text.clear();
    if (stream_ != nullptr) stream_->ReadUtf8String(text);
  }
  std::int32_t ReadInt32() { return stream_ != nullptr ? stream_->ReadInt32() : -1; }
  std::int64_t ReadInt64() { return stream_ != nullptr ? stream_->ReadInt64() : -1; }

  // The payload's bytes; valid as long as the parcel (writing) or the caller's buffer (reading).
  std::uint8_t* GetBuffer() { return buffer_; }

  // The sum of the recorded results up to the first negative one, or that one. Where every write fitted, the number of
  // bytes written. It can pass the capacity by 2 when the last string did not fit; those bytes can be read and are
  // zero.
  std::int32_t GetDataSize() const { return dataSize_; }

 private:
  void Record(std::uint32_t result) {
    const auto outcome = static_cast<std::int32_t>(result);
    if (dataSize_ >= 0) dataSize_ = outcome < 0 ? outcome : dataSize_ + outcome;
  }
  void FreeOwnBuffer();

  bool ownsBuffer_ = false;
  std::uint8_t* buffer_ = nullptr;
  std::unique_ptr<cohesa::DataStream> stream_;
  std::unique_ptr<cohesa::IpcBufferBuild> channel_;
  // The results recorded so far, reduced to what GetDataSize tells of them: nothing asks for a single one, and a list
  // of them took as long to keep as the writes took.
  std::int32_t dataSize_ = 0;
};

}  // namespace KT
