#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/sql/sql_connection.h"
#include "adapters/sql/sql_documents.h"
#include "records/record.h"

namespace orvane {

/// The rows that a store holds of a record: its texts as every engine takes them, its passes in the order of their
/// time, no documents.
[[nodiscard]] RunRecord RowsOf(const RunRecord& record);

/// The digests of the rows, so that a change behind a run's end is found: of each table in the order of RowBytesOf,
/// and of the documents' links last. A trace may be taken out later, so its link is not among them.
[[nodiscard]] std::string SealOf(const RunRecord& rows, const std::vector<DocumentLink>& links);

/// Writes rows, within a transaction each.
class RunRowsWriter {
 public:
  explicit RunRowsWriter(SqlConnection& connection) : connection_(connection) {}

  /// The run without an end and its tags, unless it is there already. @return whether it was not.
  bool Begin(const RunIdentity& run);
  /// The run's row with its end. @return false, and nothing is written, when it has an end already.
  bool End(const RunIdentity& run, const RunEnd& end);
  /// All that belongs to the run's row.
  void WriteParts(const RunRecord& rows);

  /// The numbers of names are not those any more: a transaction came to nothing, or the store is another one.
  void Forget() { numbers_.clear(); }

 private:
  void WriteTags(const RunIdentity& run);
  void WriteSteps(const RunRecord& rows);
  void WriteReadings(const RunRecord& rows, const QVariant& run);
  void WritePasses(const RunRecord& rows, const QVariant& run);
  void WriteBoxes(const RunRecord& rows);

  /// As it stands in the rows of readings and passes; an empty name is none.
  [[nodiscard]] QVariant Named(const std::string& name);
  [[nodiscard]] QVariant RunNamed(const std::string& id);
  [[nodiscard]] std::optional<qint64> NumberOf(std::string_view words, const std::string& text);

  SqlConnection& connection_;
  std::map<std::string, qint64, std::less<>> numbers_;
};

/// The columns of `run`, for what SummaryOf reads.
[[nodiscard]] std::string RunColumns(const SqlEngine& engine);
[[nodiscard]] RunSummary SummaryOf(const SqlStatement& row);

/// The rows of a run, without documents and in the order of RowsOf; no value when there is no such run.
[[nodiscard]] std::optional<RunRecord> ReadRows(SqlConnection& connection, std::string_view id);

}  // namespace orvane
