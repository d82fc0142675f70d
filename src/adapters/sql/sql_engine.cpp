#include "adapters/sql/sql_engine.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

namespace orvane {
namespace {

using Cause = SqlEngine::Cause;

// SQLite's result codes; the lower eight bits are the code, those above say more of it.
Cause SqliteCause(const std::string& nativeCode) {
  static constexpr std::array kCodes{std::pair{5, Cause::Locked},   std::pair{6, Cause::Locked},
                                     std::pair{8, Cause::ReadOnly}, std::pair{11, Cause::Damaged},
                                     std::pair{13, Cause::Full},    std::pair{14, Cause::Absent},
                                     std::pair{19, Cause::Refused}, std::pair{26, Cause::Damaged}};
  const int code = std::atoi(nativeCode.c_str()) & 0xFF;
  const auto* const row =
      std::find_if(kCodes.begin(), kCodes.end(), [&](const auto& each) { return each.first == code; });
  return row == kCodes.end() ? Cause::Other : row->second;
}

// SQLSTATE: the whole code, or the class that its first two characters are.
Cause PostgresqlCause(const std::string& nativeCode) {
  static constexpr std::array kCodes{
      std::pair{std::string_view("55P03"), Cause::Locked},   std::pair{std::string_view("57014"), Cause::Locked},
      std::pair{std::string_view("40"), Cause::Locked},      std::pair{std::string_view("25006"), Cause::ReadOnly},
      std::pair{std::string_view("42501"), Cause::ReadOnly}, std::pair{std::string_view("53100"), Cause::Full},
      std::pair{std::string_view("XX"), Cause::Damaged},     std::pair{std::string_view("22"), Cause::Refused},
      std::pair{std::string_view("23"), Cause::Refused}};
  const auto* const row = std::find_if(kCodes.begin(), kCodes.end(),
                                       [&](const auto& each) { return nativeCode.starts_with(each.first); });
  return row == kCodes.end() ? Cause::Other : row->second;
}

}  // namespace

// FULL: what was committed is on the disk, also behind a power cut. The write-ahead log lets others read meanwhile.
const SqlEngine& SqliteEngine() {
  static const SqlEngine engine{.driver = "QSQLITE",
                                .settings = {"PRAGMA foreign_keys = ON", "PRAGMA synchronous = FULL"},
                                .patienceSettings = {},
                                .beginWriting = "BEGIN IMMEDIATE",
                                .beginReading = "BEGIN",
                                .readingTable = "reading_row",
                                .passTable = "pass_row",
                                .numbersNames = true,
                                .forwardOnly = true,
                                .timeText = "%1",
                                .causeOf = &SqliteCause};
  return engine;
}

// Fetching one by one is slow there, and keeps the connection from any other statement.
const SqlEngine& PostgresqlEngine() {
  static const SqlEngine engine{.driver = "QPSQL",
                                .settings = {"SET client_min_messages = warning", "SET synchronous_commit = on"},
                                .patienceSettings = {"SET lock_timeout = "},
                                .beginWriting = "BEGIN",
                                .beginReading = "BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY",
                                .readingTable = "reading",
                                .passTable = "pass",
                                .numbersNames = false,
                                .forwardOnly = false,
                                .timeText = "to_char(%1 AT TIME ZONE 'UTC', 'YYYY-MM-DD\"T\"HH24:MI:SS.MS\"Z\"')",
                                .causeOf = &PostgresqlCause};
  return engine;
}

std::string_view WordsFor(Cause cause) {
  switch (cause) {
    case Cause::Locked:
      return "is held by another program";
    case Cause::Damaged:
      return "is damaged, or no store";
    case Cause::ReadOnly:
      return "may not be written to";
    case Cause::Full:
      return "has no space left on its disk";
    case Cause::Absent:
      return "cannot be opened";
    case Cause::Refused:
      return "does not take such a record";
    case Cause::Other:
      break;
  }
  return "";
}

}  // namespace orvane
