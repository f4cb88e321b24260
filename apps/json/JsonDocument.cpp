#include "apps/json/JsonDocument.h"

#include <set>
#include <stdexcept>
#include <vector>

#include "apps/json/ByteText.h"

namespace KT {

namespace {

// Refuses an object with two members of one name, of which a parser would silently drop the first.
class RepetitionCheck {
 public:
  bool operator()(int, Json::parse_event_t event, Json& parsed) {
    if (event == Json::parse_event_t::object_start) {
      open_.emplace_back();
    } else if (event == Json::parse_event_t::object_end) {
      open_.pop_back();
    } else if (event == Json::parse_event_t::key && !open_.back().insert(parsed.get<std::string>()).second) {
      throw std::runtime_error("the member \"" + ToTerminalText(parsed.get<std::string>()) +
                               "\" stands twice in one object");
    }
    return true;
  }

 private:
  std::vector<std::set<std::string>> open_;
};

}  // namespace

Json ParseJson(const std::string& text) {
  try {
    RepetitionCheck check;
    return Json::parse(
        text, [&check](int depth, Json::parse_event_t event, Json& parsed) { return check(depth, event, parsed); });
  } catch (const Json::exception& error) {  // a number beyond a double's range is not a parse_error
    // It quotes what was read last, which may hold anything.
    throw std::runtime_error("not JSON: " + ToTerminalText(error.what()));
  }
}

}  // namespace KT
