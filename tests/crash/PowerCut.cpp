#include "tests/crash/PowerCut.h"

#include <algorithm>

namespace crash {

using support::DiskEvent;
using support::DiskImage;
using Kind = DiskEvent::Kind;

namespace {

bool ChangesNames(const DiskEvent& event) {
  return event.kind == Kind::Create || event.kind == Kind::Rename || event.kind == Kind::Delete;
}

bool ShareAName(const DiskEvent& one, const DiskEvent& other) {
  const auto names = [&](const std::string& name) {
    return !name.empty() && (name == other.name || name == other.newName);
  };
  return names(one.name) || names(one.newName);
}

template <class Content>
void Apply(const DiskEvent& event, Content& content) {
  std::string& bytes = content.files[event.file];
  switch (event.kind) {
    case Kind::Write:
      bytes.resize(std::max(bytes.size(), event.offset + event.bytes.size()));
      bytes.replace(event.offset, event.bytes.size(), event.bytes);
      break;
    case Kind::Resize:
      bytes.resize(event.offset);
      break;
    case Kind::Rename:
      content.names.erase(event.name);
      content.names[event.newName] = event.file;
      break;
    case Kind::Create:
      content.names[event.name] = event.file;
      break;
    case Kind::Delete:
      content.names.erase(event.name);
      break;
    case Kind::Sync:
    case Kind::SyncFolder:
      break;
  }
}

}  // namespace

PowerCut::PowerCut(const DiskImage& start, const std::vector<DiskEvent>& events, std::size_t count, NameRule rule)
    : rule_(rule) {
  for (const auto& [name, bytes] : start) {
    const int number = static_cast<int>(settled_.files.size());
    settled_.names[name] = number;
    settled_.files[number] = bytes;
  }
  for (std::size_t i = 0; i < count; ++i) {
    Happen(events[i]);
  }
}

void PowerCut::Happen(const DiskEvent& event) {
  switch (event.kind) {
    case Kind::Sync:
      Settle([&](const DiskEvent& earlier) {
        return ChangesNames(earlier) ? rule_ == NameRule::WithAnyFile : earlier.file == event.file;
      });
      break;
    case Kind::SyncFolder:
      Settle([&](const DiskEvent& earlier) { return rule_ == NameRule::WithFolder && ChangesNames(earlier); });
      break;
    default:
      undecided_.push_back(&event);
  }
}

template <class Condition>
void PowerCut::Settle(Condition&& condition) {
  std::erase_if(undecided_, [&](const DiskEvent* event) {
    const bool isSettled = condition(*event);
    if (isSettled) {
      Apply(*event, settled_);
    }
    return isSettled;
  });
}

bool PowerCut::NeedsBefore(const DiskEvent& later, const DiskEvent& earlier) const {
  return ChangesNames(later) && ChangesNames(earlier) && (rule_ == NameRule::WithAnyFile || ShareAName(earlier, later));
}

bool PowerCut::IsPossible(const Choice& choice) const {
  for (std::size_t later = 0; later < undecided_.size(); ++later) {
    for (std::size_t earlier = 0; earlier < later; ++earlier) {
      if (choice[later] && !choice[earlier] && NeedsBefore(*undecided_[later], *undecided_[earlier])) {
        return false;
      }
    }
  }
  return true;
}

DiskImage PowerCut::Image(const Choice& choice) const {
  Content content = settled_;
  for (std::size_t i = 0; i < undecided_.size(); ++i) {
    if (choice[i]) {
      Apply(*undecided_[i], content);
    }
  }
  DiskImage image;
  for (const auto& [name, file] : content.names) {
    image[name] = content.files[file];
  }
  return image;
}

}  // namespace crash
