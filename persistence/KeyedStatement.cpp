#include "persistence/KeyedStatement.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <sqlite3.h>

#include <algorithm>
#include <string_view>

#include "platform/ThreadProcessorTime.h"

namespace KT {

namespace {

// How many of SQLite's virtual machine's steps pass between two looks at the time, and before the first, from which it
// counts: some 20 us of them. Most statements are done by then. Not more, since one step can build a value of 1 MiB: a
// thousand of those are as much memory as should be taken between two looks.
constexpr int kStepsPerCheck = 1000;

char Lower(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter; }

int CountWord(std::string_view text, std::string_view lowerCaseWord) {
  const auto same = [](char letter, char wanted) { return Lower(letter) == wanted; };
  int count = 0;
  for (;; ++count) {
    const auto found = static_cast<std::size_t>(
        std::search(text.begin(), text.end(), lowerCaseWord.begin(), lowerCaseWord.end(), same) - text.begin());
    if (found == text.size()) {
      return count;
    }
    text.remove_prefix(found + 1);
  }
}

// SQLite writes out each reference to a named subquery, and to that one's subqueries in turn, before it runs anything:
// some hundred bytes of SQL can ask for more memory than there is, and no budget of running statements sees it.
void CheckSelects(const std::string& key) {
  if (key.find('\'') != std::string::npos && CountWord(key, "select") + CountWord(key, "values") > kMostSelectsInAKey) {
    throw SQLite::Exception("too many subqueries in a key");
  }
}

std::string TextFor(const char* verb, const std::string& tableName, const std::string& column, const std::string& key) {
  CheckSelects(key);
  return verb + tableName + " WHERE " + column + " = '" + key + "';";
}

}  // namespace

KeyedStatementGuard::KeyedStatementGuard(SQLite::Database& database, const std::string& tableName)
    : connection_(database.getHandle()),
      tableName_(tableName),
      previousValueBytes_(sqlite3_limit(connection_, SQLITE_LIMIT_LENGTH, kKeyedStatementValueBytes)) {
  sqlite3_set_authorizer(connection_, &Authorize, this);
  sqlite3_progress_handler(connection_, kStepsPerCheck, &CheckTime, this);
}

KeyedStatementGuard::~KeyedStatementGuard() {
  sqlite3_progress_handler(connection_, 0, nullptr, nullptr);
  sqlite3_set_authorizer(connection_, nullptr, nullptr);
  sqlite3_limit(connection_, SQLITE_LIMIT_LENGTH, previousValueBytes_);
}

int KeyedStatementGuard::Authorize(void* self, int action, const char* object, const char*, const char*, const char*) {
  switch (action) {
    case SQLITE_SELECT:
    case SQLITE_RECURSIVE:
      return SQLITE_OK;
    case SQLITE_READ:
    case SQLITE_DELETE:
      return sqlite3_stricmp(object, static_cast<const KeyedStatementGuard*>(self)->tableName_.c_str()) == 0
                 ? SQLITE_OK
                 : SQLITE_DENY;
    default:
      return SQLITE_DENY;
  }
}

int KeyedStatementGuard::CheckTime(void* self) {
  auto& end = static_cast<KeyedStatementGuard*>(self)->end_;
  const std::chrono::nanoseconds now = platform::ThreadProcessorTime();
  if (!end.has_value()) {
    end = now + kKeyedStatementTime;
  }
  return now >= *end ? 1 : 0;
}

KeyedStatement::KeyedStatement(SQLite::Database& database, const char* verb, const std::string& tableName,
                               const std::string& column, const std::string& key)
    : guard_(database, tableName), statement_(database, TextFor(verb, tableName, column, key)) {}

}  // namespace KT
