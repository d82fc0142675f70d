#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <tuple>

#include "adapters/sql/content_codec.h"
#include "adapters/sql/sql_run_rows.h"
#include "records/record_bytes.h"

namespace orvane {
namespace {

/// Of what is not a number, and of zero, there is one each.
void MakeStorable(std::initializer_list<double*> numbers) {
  for (double* const number : numbers) {
    if (std::isnan(*number)) *number = std::numeric_limits<double>::quiet_NaN();
    if (*number == 0) *number = 0;
  }
}

void MakeStorable(std::initializer_list<std::optional<double>*> numbers) {
  for (std::optional<double>* const number : numbers) {
    if (*number && std::isnan(**number)) number->reset();
    if (*number) MakeStorable({&**number});
  }
}

void MakeStorable(std::initializer_list<std::string*> texts) {
  for (std::string* const text : texts) *text = StorableText(*text);
}

void MakeStorable(RunIdentity& run) {
  MakeStorable({&run.id, &run.station, &run.bench, &run.benchSetup, &run.program, &run.kind, &run.serial, &run.part,
                &run.operatorName});
  std::map<std::string, std::string> tags;
  for (const auto& [key, value] : run.tags) tags.emplace(StorableText(key), StorableText(value));
  run.tags = std::move(tags);
}

void MakeStorable(RunEnd& end) {
  MakeStorable({&end.verdict, &end.reason});
  if (std::isnan(end.seconds)) end.seconds = 0;
  MakeStorable({&end.seconds});
}

void SortByTime(std::vector<RecordedPass>& passes) {
  std::sort(passes.begin(), passes.end(), [](const RecordedPass& a, const RecordedPass& b) {
    const bool known = !std::isnan(a.atS) && !std::isnan(b.atS);
    return known ? std::tie(a.atS, a.reading, a.position) < std::tie(b.atS, b.reading, b.position)
                 : std::isnan(a.atS) < std::isnan(b.atS);
  });
}

std::string TimeText(const SqlEngine& engine, std::string_view column) {
  return QtText(engine.timeText).arg(QtText(column)).toStdString();
}

std::int64_t TimeOf(const SqlStatement& row, int column) { return UtcOf(row.Text(column)).value_or(0); }

std::optional<RunEnd> EndOf(const SqlStatement& row, int first) {
  const auto ending = EndingOf(row.Text(first + 4));
  if (!ending) return std::nullopt;
  RunEnd end;
  end.endedMs = TimeOf(row, first);
  end.seconds = row.MaybeNumber(first + 1).value_or(0);
  end.verdict = row.Text(first + 2);
  end.complete = row.Whole(first + 3) != 0;
  end.ending = *ending;
  end.reason = row.Text(first + 5);
  end.commands = row.Whole(first + 6);
  end.bytesOut = row.Whole(first + 7);
  end.bytesIn = row.Whole(first + 8);
  return end;
}

/// The rows of one table: `words` select them by the run's id.
template <class Read>
void ReadEach(SqlConnection& connection, const std::string& words, std::string_view id, const Read& read) {
  SqlStatement rows = connection.Prepared(words);
  rows.Bind(QtText(id)).Execute();
  while (rows.Next()) read(rows);
}

void ReadSteps(SqlConnection& connection, std::string_view id, RunRecord& record) {
  ReadEach(connection, "SELECT name, began_s, seconds, complete, reason FROM step WHERE run = ? ORDER BY position",
           id, [&](const SqlStatement& row) {
             record.steps.push_back({row.Text(0), row.Number(1), row.Number(2), row.Whole(3) != 0, row.Text(4)});
           });
}

void ReadReadings(SqlConnection& connection, std::string_view id, RunRecord& record) {
  ReadEach(connection, "SELECT step, name, value, unit, low, high, at_s FROM reading WHERE run = ? ORDER BY position",
           id, [&](const SqlStatement& row) {
             record.readings.push_back({row.Text(0), row.Text(1), row.Number(2), row.Text(3), row.MaybeNumber(4),
                                        row.MaybeNumber(5), row.Number(6)});
           });
}

void ReadPasses(SqlConnection& connection, std::string_view id, RunRecord& record) {
  ReadEach(connection, "SELECT reading, position, dac, dbm, tolerance, at_s FROM pass WHERE run = ?", id,
           [&](const SqlStatement& row) {
             record.passes.push_back({row.Text(0), static_cast<int>(row.Whole(1)), static_cast<int>(row.Whole(2)),
                                      row.Number(3), row.Number(4), row.Number(5)});
           });
  SortByTime(record.passes);
}

void ReadBoxes(SqlConnection& connection, std::string_view id, RunRecord& record) {
  ReadEach(connection, "SELECT title, text, answer, at_s, answered_s FROM box WHERE run = ? ORDER BY position", id,
           [&](const SqlStatement& row) {
             record.boxes.push_back({row.Text(0), row.Text(1), row.Text(2), row.Number(3), row.MaybeNumber(4)});
           });
}

}  // namespace

RunRecord RowsOf(const RunRecord& record) {
  RunRecord rows{record.identity, record.end, record.steps, record.readings, record.passes, record.boxes, {}};
  MakeStorable(rows.identity);
  if (rows.end) MakeStorable(*rows.end);
  for (RecordedStep& step : rows.steps) {
    MakeStorable({&step.name, &step.reason});
    MakeStorable({&step.beganS, &step.seconds});
  }
  for (RecordedReading& reading : rows.readings) {
    MakeStorable({&reading.step, &reading.name, &reading.unit});
    MakeStorable({&reading.value, &reading.atS});
    MakeStorable({&reading.low, &reading.high});
  }
  for (RecordedPass& pass : rows.passes) {
    MakeStorable({&pass.reading});
    MakeStorable({&pass.dbm, &pass.tolerance, &pass.atS});
  }
  SortByTime(rows.passes);
  for (RecordedBox& box : rows.boxes) {
    MakeStorable({&box.title, &box.text, &box.answer});
    MakeStorable({&box.atS});
    MakeStorable({&box.answeredS});
  }
  return rows;
}

std::string SealOf(const RunRecord& rows, const std::vector<DocumentLink>& links) {
  std::string seal;
  for (const auto& [table, bytes] : RowBytesOf(rows)) seal += DigestOf(bytes);
  std::map<std::string, std::string> byRole;
  for (const DocumentLink& link : links) {
    if (link.role != "trace") byRole.emplace(link.role, link.sha256);
  }
  std::string lines;
  for (const auto& [role, sha256] : byRole) lines.append(role).append(1, '\0').append(sha256).append(1, '\n');
  return seal + DigestOf(lines);
}

std::string RunColumns(const SqlEngine& engine) {
  return "id, station, bench, bench_setup, program, kind, serial, part, operator, " + TimeText(engine, "began") +
         ", " + TimeText(engine, "ended") +
         ", seconds, verdict, complete, ending, reason, commands, bytes_out, bytes_in";
}

RunSummary SummaryOf(const SqlStatement& row) {
  RunSummary summary;
  RunIdentity& run = summary.identity;
  int column = 0;
  for (std::string* text : {&run.id, &run.station, &run.bench, &run.benchSetup, &run.program, &run.kind, &run.serial,
                            &run.part, &run.operatorName}) {
    *text = row.Text(column++);
  }
  run.beganMs = TimeOf(row, column++);
  summary.end = EndOf(row, column);
  return summary;
}

std::optional<RunRecord> ReadRows(SqlConnection& connection, std::string_view id) {
  RunRecord record;
  {
    SqlStatement row = connection.Prepared("SELECT " + RunColumns(connection.Engine()) + " FROM run WHERE id = ?");
    if (!row.Bind(QtText(id)).Execute().Next()) return std::nullopt;
    RunSummary summary = SummaryOf(row);
    record.identity = std::move(summary.identity);
    record.end = std::move(summary.end);
  }
  ReadEach(connection, "SELECT key, value FROM tag WHERE run = ?", id,
           [&](const SqlStatement& row) { record.identity.tags.emplace(row.Text(0), row.Text(1)); });
  ReadSteps(connection, id, record);
  ReadReadings(connection, id, record);
  ReadPasses(connection, id, record);
  ReadBoxes(connection, id, record);
  return record;
}

}  // namespace orvane
