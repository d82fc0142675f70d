#include <algorithm>
#include <array>
#include <span>

#include "adapters/sql/sql_run_rows.h"

namespace orvane {
namespace {

// Rows go in by so many at once: each number is a statement of its own, which is prepared once.
constexpr std::array<std::size_t, 3> kRowsAtOnce{64, 8, 1};

/// `columns` of so many values each.
std::string InsertWords(std::string_view table, std::string_view columns, std::size_t rows) {
  const auto values = static_cast<std::size_t>(std::count(columns.begin(), columns.end(), ',')) + 1;
  std::string row = "(?";
  for (std::size_t i = 1; i < values; ++i) row += ",?";
  row += ")";
  std::string words = "INSERT INTO " + std::string(table) + " (" + std::string(columns) + ") VALUES " + row;
  for (std::size_t i = 1; i < rows; ++i) words += "," + row;
  return words;
}

/// `bind(statement, row, position)` binds one row's values.
template <class Row, class Bind>
void InsertRows(SqlConnection& connection, std::string_view table, std::string_view columns,
                std::span<const Row> rows, const Bind& bind) {
  std::size_t position = 0;
  for (const std::size_t atOnce : kRowsAtOnce) {
    if (rows.size() - position < atOnce) continue;
    SqlStatement insert = connection.Prepared(InsertWords(table, columns, atOnce));
    while (rows.size() - position >= atOnce) {
      for (std::size_t i = 0; i < atOnce; ++i, ++position) bind(insert, rows[position], static_cast<int>(position));
      insert.Execute();
    }
  }
}

void BindIdentity(SqlStatement& statement, const RunIdentity& run) {
  statement.Bind(QtText(run.id));
  for (const std::string& text :
       {run.station, run.bench, run.benchSetup, run.program, run.kind, run.serial, run.part, run.operatorName}) {
    statement.BindKnown(text);
  }
  statement.Bind(QtText(UtcText(run.beganMs)));
}

constexpr std::string_view kIdentityColumns =
    "id, station, bench, bench_setup, program, kind, serial, part, operator, began";
constexpr std::string_view kEndColumns =
    "ended, seconds, verdict, complete, ending, reason, commands, bytes_out, bytes_in";

std::string WithExcluded(std::string_view columns) {
  std::string words;
  while (!columns.empty()) {
    const std::string column(columns.substr(0, columns.find(", ")));
    columns.remove_prefix(std::min(column.size() + 2, columns.size()));
    words.append(words.empty() ? "" : ", ").append(column).append(" = excluded.").append(column);
  }
  return words;
}

std::string EndWords() {
  static const std::string all = std::string(kIdentityColumns) + ", " + std::string(kEndColumns);
  return InsertWords("run", all, 1) + " ON CONFLICT (id) DO UPDATE SET " + WithExcluded(all) +
         " WHERE run.ending IS NULL";
}

}  // namespace

bool RunRowsWriter::Begin(const RunIdentity& run) {
  {
    SqlStatement insert =
        connection_.Prepared(InsertWords("run", kIdentityColumns, 1) + " ON CONFLICT (id) DO NOTHING");
    BindIdentity(insert, run);
    if (insert.Execute().ChangedNothing()) return false;
  }
  WriteTags(run);
  return true;
}

bool RunRowsWriter::End(const RunIdentity& run, const RunEnd& end) {
  SqlStatement upsert = connection_.Prepared(EndWords());
  BindIdentity(upsert, run);
  // Nobody counted what an abandoned run did.
  const auto known = [&](auto number) {
    return end.ending == Ending::Abandoned && number == 0 ? QVariant() : QVariant::fromValue(number);
  };
  upsert.Bind(QtText(UtcText(end.endedMs)))
      .Bind(known(end.seconds))
      .BindKnown(end.verdict)
      .Bind(end.complete ? 1 : 0);
  upsert.Bind(QtText(EndingText(end.ending))).BindKnown(end.reason);
  for (const std::int64_t count : {end.commands, end.bytesOut, end.bytesIn}) {
    upsert.Bind(known(static_cast<qint64>(count)));
  }
  return !upsert.Execute().ChangedNothing();
}

void RunRowsWriter::WriteParts(const RunRecord& rows) {
  connection_.Prepared("DELETE FROM tag WHERE run = ?").Bind(QtText(rows.identity.id)).Execute();
  WriteTags(rows.identity);
  WriteSteps(rows);
  const QVariant run = RunNamed(rows.identity.id);
  WriteReadings(rows, run);
  WritePasses(rows, run);
  WriteBoxes(rows);
}

void RunRowsWriter::WriteTags(const RunIdentity& run) {
  for (const auto& [key, value] : run.tags) {
    connection_.Prepared(InsertWords("tag", "run, key, value", 1))
        .Bind(QtText(run.id))
        .Bind(QtText(key))
        .Bind(QtText(value))
        .Execute();
  }
}

void RunRowsWriter::WriteSteps(const RunRecord& rows) {
  InsertRows<RecordedStep>(connection_, "step", "run, position, name, began_s, seconds, complete, reason", rows.steps,
                           [&](SqlStatement& insert, const RecordedStep& step, int position) {
                             insert.Bind(QtText(rows.identity.id)).Bind(position).BindKnown(step.name);
                             insert.BindNumber(step.beganS).BindNumber(step.seconds).Bind(step.complete ? 1 : 0);
                             insert.BindKnown(step.reason);
                           });
}

void RunRowsWriter::WriteReadings(const RunRecord& rows, const QVariant& run) {
  InsertRows<RecordedReading>(
      connection_, connection_.Engine().readingTable,
      "run, position, step, name, value, unit, low, high, inside, at_s", rows.readings,
      [&](SqlStatement& insert, const RecordedReading& reading, int position) {
        insert.Bind(run).Bind(position).Bind(Named(reading.step)).Bind(Named(reading.name));
        insert.BindNumber(reading.value).Bind(Named(reading.unit)).BindNumber(reading.low).BindNumber(reading.high);
        const auto inside = reading.Inside();
        insert.Bind(inside ? QVariant(*inside ? 1 : 0) : QVariant()).BindNumber(reading.atS);
      });
}

void RunRowsWriter::WritePasses(const RunRecord& rows, const QVariant& run) {
  InsertRows<RecordedPass>(connection_, connection_.Engine().passTable,
                           "run, reading, position, dac, dbm, tolerance, at_s", rows.passes,
                           [&](SqlStatement& insert, const RecordedPass& pass, int) {
                             insert.Bind(run).Bind(Named(pass.reading)).Bind(pass.position).Bind(pass.dac);
                             insert.BindNumber(pass.dbm).BindNumber(pass.tolerance).BindNumber(pass.atS);
                           });
}

void RunRowsWriter::WriteBoxes(const RunRecord& rows) {
  InsertRows<RecordedBox>(
      connection_, "box", "run, position, title, text, answer, at_s, answered_s", rows.boxes,
      [&](SqlStatement& insert, const RecordedBox& box, int position) {
        insert.Bind(QtText(rows.identity.id)).Bind(position).Bind(QtText(box.title));
        insert.Bind(QtText(box.text)).BindKnown(box.answer).BindNumber(box.atS).BindNumber(box.answeredS);
      });
}

QVariant RunRowsWriter::RunNamed(const std::string& id) {
  if (!connection_.Engine().numbersNames) return QtText(id);
  const auto number = NumberOf("SELECT number FROM run_number WHERE run = ?", id);
  return number ? QVariant(*number) : QVariant();
}

QVariant RunRowsWriter::Named(const std::string& name) {
  if (name.empty()) return {};
  if (!connection_.Engine().numbersNames) return QtText(name);
  const auto known = numbers_.find(name);
  if (known != numbers_.end()) return known->second;
  constexpr std::string_view kAsk = "SELECT number FROM name WHERE text = ?";
  auto number = NumberOf(kAsk, name);
  if (!number) {
    connection_.Prepared("INSERT INTO name (text) VALUES (?)").Bind(QtText(name)).Execute();
    number = NumberOf(kAsk, name);
  }
  if (!number) connection_.Fail("lost a name that it has just taken");
  return numbers_.emplace(name, *number).first->second;
}

std::optional<qint64> RunRowsWriter::NumberOf(std::string_view words, const std::string& text) {
  SqlStatement row = connection_.Prepared(std::string(words));
  if (!row.Bind(QtText(text)).Execute().Next()) return std::nullopt;
  return row.Whole(0);
}

}  // namespace orvane
