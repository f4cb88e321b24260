// A disk in memory that remembers every change made to it, and what was said to be on it for good.
#pragma once

#include <cstddef>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace support {

// What a disk holds: bytes by name. One folder; a name is a whole Windows path in UTF-8.
using DiskImage = std::map<std::string, std::string>;

struct DiskEvent {
  enum class Kind { Create, Write, Resize, Sync, Rename, Delete, SyncFolder };

  Kind kind;
  int file = -1;           // its number; -1 for SyncFolder
  std::string name{};      // Create, Rename, Delete
  std::string newName{};   // Rename
  std::size_t offset = 0;  // Write: where it begins; Resize: the new size
  std::string bytes{};     // Write
};

// One thread.
class MemoryDisk {
 public:
  // A file stays itself through renames, and after it was deleted for who has it open.
  struct File {
    int number;
    std::string bytes;
  };

  // The files of `start` are numbered in the order of their names, from 0; those made later follow.
  explicit MemoryDisk(const DiskImage& start = {});

  // Null when there is no such file.
  std::shared_ptr<File> Find(const std::string& name) const;
  bool Contains(const std::string& name) const { return names_.contains(name); }

  // From now on there is room for that many bytes in all files together.
  void LimitRoom(std::size_t bytes) { room_ = bytes; }

  // From now on no file can be made.
  void RefuseNewFiles(bool refuse) { refusesNewFiles_ = refuse; }

  // Null when new files are refused.
  std::shared_ptr<File> Create(const std::string& name);
  // False, and nothing written, when there is no room.
  bool Write(File& file, std::size_t offset, std::string_view bytes);
  void Resize(File& file, std::size_t size);
  void Sync(const File& file);

  // False when there is no such file; Rename also when the new name is taken.
  bool Rename(const std::string& name, const std::string& newName);
  bool Delete(const std::string& name);
  void SyncFolder();

  // What a reader sees now.
  DiskImage Image() const;

  // Every change since construction or ForgetEvents.
  const std::vector<DiskEvent>& Events() const { return events_; }
  void ForgetEvents() { events_.clear(); }

 private:
  std::map<std::string, std::shared_ptr<File>> names_;
  std::vector<DiskEvent> events_;
  int files_ = 0;
  bool refusesNewFiles_ = false;
  std::size_t room_ = std::numeric_limits<std::size_t>::max();
};

}  // namespace support
