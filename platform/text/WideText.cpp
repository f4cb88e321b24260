#include "platform/text/WideText.h"

#include "platform/text/CharacterRun.h"
#include "platform/text/CodePoint.h"

namespace platform {

namespace {

template <class Result, class View>
Result Convert(View text) {
  Result result;
  result.reserve(text.size());
  while (!text.empty()) {
    MoveRun(text, result, kIsAscii);
    if (!text.empty()) {
      AppendCodePoint(result, TakeCodePoint(text));
    }
  }
  return result;
}

}  // namespace

std::string ToUtf8(std::wstring_view wide) { return Convert<std::string>(wide); }
std::wstring ToWide(std::string_view utf8) { return Convert<std::wstring>(utf8); }

}  // namespace platform
