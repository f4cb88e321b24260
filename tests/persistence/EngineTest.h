// What every test of the engines needs: a console user of its own, the calls and log lines it causes, SQL on the side.
#pragma once

#include <SQLiteCpp/Database.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "persistence/DbEngine.h"
#include "tests/support/ConsoleProfile.h"
#include "tests/support/FakeOperatingSystem.h"
#include "tests/support/LogCapture.h"

using Lines = std::vector<std::string>;

// The rows that a query yields, each with its columns joined by "|".
Lines Rows(SQLite::Database& database, const std::string& sql);

// A connection to a database file at its native path, which is made when there is none.
SQLite::Database OpenNative(const std::filesystem::path& file);

// Rows, on a file that is opened for this query alone.
Lines RowsOfFile(const std::filesystem::path& file, const std::string& sql);

// Runs statements on a file that is opened for them alone.
void RunOnFile(const std::filesystem::path& file, const std::string& sql);

// Each test has a console user, an operating system that can fail and the log to itself.
class EngineTest : public testing::Test {
 protected:
  std::filesystem::path Native(const std::string& name) const { return profile_.NativeFile(name); }

  // The names in the database folder, sorted.
  Lines Files() const;

  const support::ConsoleProfile profile_;
  support::FakeOperatingSystem system_{profile_.SamName()};
  support::LogCapture log_;
};

// The smallest engine: the base with one table, "notes", in the file "notes.db".
class NotesEngine final : public KT::DbEngine {
 public:
  NotesEngine();

  // Adds a row by SQL of the test's own.
  void Add(const std::string& sumId, const std::string& note);
  Lines Notes();

  KT::DbContent content;

  // Appended to the CREATE statement.
  std::string columnDefs = "(id INTEGER PRIMARY KEY AUTOINCREMENT, sumId TEXT NOT NULL, note TEXT NOT NULL);";

 private:
  void AppendColumnDefs(std::ostream& statement) const override { statement << columnDefs; }
};

inline constexpr const char* kNotesFile = "notes.db";
inline constexpr const char* kNotesTemporary = "notes.db.tmp";
inline constexpr const char* kAllNotes = "SELECT sumId, note FROM notes ORDER BY id";
