#include "adapters/sql/sql_list.h"

#include <map>

#include "adapters/sql/sql_run_rows.h"

namespace orvane {
namespace {

/// Which runs, as it stands behind FROM, and the values that belong in it.
struct Choice {
  std::string words;
  std::vector<QVariant> values;

  void Require(std::string_view condition, QVariant value) {
    words += (values.empty() ? " WHERE " : " AND ") + std::string(condition);
    values.push_back(std::move(value));
  }
  SqlStatement& BindTo(SqlStatement& statement) const {
    for (const QVariant& value : values) statement.Bind(value);
    return statement;
  }
};

Choice ChoiceOf(const RunQuery& query) {
  Choice choice;
  if (query.serial) choice.Require("serial = ?", QtText(*query.serial));
  if (query.station) choice.Require("station = ?", QtText(*query.station));
  if (query.verdict) choice.Require("verdict = ?", QtText(*query.verdict));
  if (query.since) choice.Require("began >= ?", QtText(UtcText(*query.since)));
  if (query.until) choice.Require("began < ?", QtText(UtcText(*query.until)));
  choice.words += " ORDER BY began DESC, id DESC";
  if (query.limit) {
    choice.words += " LIMIT ?";
    choice.values.emplace_back(static_cast<qint64>(*query.limit));
  }
  return choice;
}

void AddTags(SqlConnection& connection, const Choice& choice, std::vector<RunSummary>& runs) {
  std::map<std::string, std::map<std::string, std::string>, std::less<>> tags;
  {
    SqlStatement rows =
        connection.Prepared("SELECT run, key, value FROM tag WHERE run IN (SELECT id FROM run" + choice.words + ")");
    choice.BindTo(rows).Execute();
    while (rows.Next()) tags[rows.Text(0)].emplace(rows.Text(1), rows.Text(2));
  }
  if (tags.empty()) return;
  for (RunSummary& run : runs) {
    const auto hit = tags.find(run.identity.id);
    if (hit != tags.end()) run.identity.tags = std::move(hit->second);
  }
}

}  // namespace

std::vector<RunSummary> ListRuns(SqlConnection& connection, const RunQuery& query) {
  const SqlTransaction moment(connection, SqlTransaction::Kind::Reads);
  const Choice choice = ChoiceOf(query);
  std::vector<RunSummary> runs;
  {
    SqlStatement rows = connection.Prepared("SELECT " + RunColumns(connection.Engine()) + " FROM run" + choice.words);
    choice.BindTo(rows).Execute();
    while (rows.Next()) runs.push_back(SummaryOf(rows));
  }
  AddTags(connection, choice, runs);
  return runs;
}

std::vector<std::string> ListIds(SqlConnection& connection, std::string_view beginning, std::size_t most) {
  // Behind every character of an id.
  constexpr char kBehind = '~';
  const std::string end = std::string(beginning) + kBehind;
  SqlStatement rows = connection.Prepared("SELECT id FROM run WHERE id >= ? AND id < ? ORDER BY id LIMIT ?");
  rows.Bind(QtText(beginning)).Bind(QtText(end)).Bind(static_cast<qint64>(most)).Execute();
  std::vector<std::string> ids;
  while (rows.Next()) ids.push_back(rows.Text(0));
  return ids;
}

}  // namespace orvane
