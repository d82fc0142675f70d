#pragma once

#include <QString>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// What differs between the engines of a store. Everything else is said in the words that they share.
struct SqlEngine {
  std::string_view driver;
  /// Said to each new connection.
  std::vector<std::string_view> settings;
  /// The same with the patience of its owner, in milliseconds, behind it.
  std::vector<std::string_view> patienceSettings;
  /// Begins a transaction that writes: whoever else writes is waited for here and nowhere else.
  std::string_view beginWriting;
  std::string_view beginReading;
  /// Where readings and passes are put, and whether texts and runs stand there as numbers of their own.
  std::string_view readingTable;
  std::string_view passTable;
  bool numbersNames;
  /// Whether rows are fetched one by one.
  bool forwardOnly;
  /// The text of a time's column, "%1": "2026-11-22T03:04:05.678Z" from either.
  std::string_view timeText;
  /// What the system's code says of a failure.
  enum class Cause { Other, Locked, Damaged, ReadOnly, Full, Absent, Refused };
  Cause (*causeOf)(const std::string& nativeCode);
};

[[nodiscard]] const SqlEngine& SqliteEngine();
[[nodiscard]] const SqlEngine& PostgresqlEngine();

/// What a cause means, as the end of a sentence that the store's name begins; empty for Other.
[[nodiscard]] std::string_view WordsFor(SqlEngine::Cause cause);

}  // namespace orvane
