// Any bytes as a stream of frames, cut into reads at any places: the frames must be those that the bytes hold when they
// are looked at as a whole, each encoding to its own bytes again, and the first fault must be the same.
#include <algorithm>
#include <vector>

#include "fuzz/FuzzInput.h"
#include "platform/ipc/FrameReader.h"

namespace {

using fuzz::FuzzInput;
using fuzz::Require;
using platform::ipc::FrameReader;
using platform::ipc::FrameResult;
using platform::ipc::FrameState;

using Bytes = std::vector<char>;

struct Outcome {
  std::vector<Bytes> frames;
  FrameState end = FrameState::Incomplete;

  bool operator==(const Outcome&) const = default;
};

void CheckFrame(const FrameResult& parsed) {
  Require(parsed.bytes.size() <= platform::ipc::kMaxFrameBytes);
  Require(parsed.bytes.size() == platform::ipc::EncodedBytes(parsed.frame));
  Require(platform::ipc::FitsFrame(parsed.frame.name.size(), parsed.frame.payload.size()));
  Require(platform::ipc::IsUtf8(parsed.frame.name));
  Bytes encoded;
  platform::ipc::AppendFrame(parsed.frame, encoded);
  Require(std::equal(encoded.begin(), encoded.end(), parsed.bytes.begin(), parsed.bytes.end()));
}

Outcome ParseWhole(Bytes stream) {
  Outcome outcome;
  std::span<char> rest(stream);
  FrameResult parsed = platform::ipc::ParseFrame(rest);
  while (parsed.state == FrameState::Complete) {
    CheckFrame(parsed);
    outcome.frames.emplace_back(parsed.bytes.begin(), parsed.bytes.end());
    rest = rest.subspan(parsed.bytes.size());
    parsed = platform::ipc::ParseFrame(rest);
  }
  outcome.end = parsed.state;
  return outcome;
}

// Takes the complete frames out of the reader; why there are no more.
FrameState TakeFrames(FrameReader& reader, std::vector<Bytes>& frames) {
  FrameResult parsed = reader.Next();
  while (parsed.state == FrameState::Complete) {
    frames.emplace_back(parsed.bytes.begin(), parsed.bytes.end());
    reader.Pop(parsed.bytes);
    parsed = reader.Next();
  }
  return parsed.state;
}

// Reads of `first` bytes, of twice as many and so on.
Outcome ParseInPieces(const Bytes& stream, std::size_t first) {
  Outcome outcome;
  FrameReader reader;
  std::size_t piece = first;
  for (std::size_t at = 0; at < stream.size() && outcome.end == FrameState::Incomplete; piece *= 2) {
    const std::span<char> space = reader.Space();
    Require(!space.empty());
    const std::size_t count = std::min({piece, space.size(), stream.size() - at});
    std::copy_n(stream.begin() + static_cast<std::ptrdiff_t>(at), count, space.begin());
    reader.Commit(count);
    at += count;
    outcome.end = TakeFrames(reader, outcome.frames);
  }
  return outcome;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  const std::size_t first = input.Take<std::uint8_t>() + std::size_t{1};
  const std::vector<std::uint8_t> bytes = input.TakeBytes(size);
  const Bytes stream(bytes.begin(), bytes.end());
  Require(ParseInPieces(stream, first) == ParseWhole(stream));
  return 0;
}
