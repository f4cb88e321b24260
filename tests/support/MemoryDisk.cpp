#include "tests/support/MemoryDisk.h"

#include <algorithm>

namespace support {

using Kind = DiskEvent::Kind;

MemoryDisk::MemoryDisk(const DiskImage& start) {
  for (const auto& [name, bytes] : start) {
    names_[name] = std::make_shared<File>(File{files_++, bytes});
  }
}

std::shared_ptr<MemoryDisk::File> MemoryDisk::Find(const std::string& name) const {
  const auto found = names_.find(name);
  return found == names_.end() ? nullptr : found->second;
}

std::shared_ptr<MemoryDisk::File> MemoryDisk::Create(const std::string& name) {
  if (refusesNewFiles_) {
    return nullptr;
  }
  auto& file = names_[name];
  file = std::make_shared<File>(File{files_++, {}});
  events_.push_back({.kind = Kind::Create, .file = file->number, .name = name});
  return file;
}

bool MemoryDisk::Write(File& file, std::size_t offset, std::string_view bytes) {
  const std::size_t size = std::max(file.bytes.size(), offset + bytes.size());
  std::size_t used = size - file.bytes.size();
  for (const auto& [name, other] : names_) {
    used += other->bytes.size();
  }
  if (used > room_) {
    return false;
  }
  file.bytes.resize(size);
  std::copy(bytes.begin(), bytes.end(), file.bytes.begin() + static_cast<std::ptrdiff_t>(offset));
  events_.push_back({.kind = Kind::Write, .file = file.number, .offset = offset, .bytes = std::string(bytes)});
  return true;
}

void MemoryDisk::Resize(File& file, std::size_t size) {
  file.bytes.resize(size);
  events_.push_back({.kind = Kind::Resize, .file = file.number, .offset = size});
}

void MemoryDisk::Sync(const File& file) { events_.push_back({.kind = Kind::Sync, .file = file.number}); }

bool MemoryDisk::Rename(const std::string& name, const std::string& newName) {
  if (!Contains(name) || Contains(newName)) {
    return false;
  }
  auto node = names_.extract(name);
  events_.push_back({.kind = Kind::Rename, .file = node.mapped()->number, .name = name, .newName = newName});
  node.key() = newName;
  names_.insert(std::move(node));
  return true;
}

bool MemoryDisk::Delete(const std::string& name) {
  const auto found = names_.find(name);
  if (found == names_.end()) {
    return false;
  }
  events_.push_back({.kind = Kind::Delete, .file = found->second->number, .name = name});
  names_.erase(found);
  return true;
}

void MemoryDisk::SyncFolder() { events_.push_back({.kind = Kind::SyncFolder}); }

DiskImage MemoryDisk::Image() const {
  DiskImage image;
  for (const auto& [name, file] : names_) {
    image[name] = file->bytes;
  }
  return image;
}

}  // namespace support
