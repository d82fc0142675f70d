#include "adapters/sql/sql_store_check.h"

#include <array>

#include "adapters/sql/content_codec.h"
#include "adapters/sql/sql_documents.h"
#include "adapters/sql/sql_run_rows.h"
#include "records/record_bytes.h"

namespace orvane {
namespace {

constexpr std::size_t kDigestSize = 32;
constexpr std::size_t kMostFindings = 100;

void CheckDocuments(SqlConnection& connection, const std::vector<DocumentLink>& links,
                    std::vector<std::string>& findings) {
  for (const DocumentLink& link : links) {
    try {
      const RecordedDocument document = DocumentBehind(connection, link);
      if (DigestTextOf(document.content) != link.sha256) {
        findings.push_back("The document \"" + link.role + "\" has another digest than its content: " + link.sha256 +
                           ".");
      }
    } catch (const DamagedRecord& damage) {
      findings.emplace_back(damage.what());
    }
  }
}

/// A run that somebody else wrote has no seal.
std::optional<std::string> KeptSealOf(SqlConnection& connection, std::string_view id) {
  SqlStatement row = connection.Prepared("SELECT digests FROM run_seal WHERE run = ?");
  if (!row.Bind(QtText(id)).Execute().Next()) return std::nullopt;
  return row.Bytes(0);
}

void CheckSeal(const std::string& kept, const RunRecord& rows, const std::vector<DocumentLink>& links,
               std::vector<std::string>& findings) {
  const std::string seal = SealOf(rows, links);
  if (kept.size() != seal.size()) {
    findings.emplace_back("The digests of the rows are damaged.");
    return;
  }
  std::vector<std::string> tables;
  for (const auto& [table, bytes] : RowBytesOf(rows)) tables.emplace_back(table);
  tables.emplace_back("run_document");
  for (std::size_t i = 0; i < tables.size(); ++i) {
    if (seal.compare(i * kDigestSize, kDigestSize, kept, i * kDigestSize, kDigestSize) == 0) continue;
    findings.push_back("The rows of \"" + tables[i] + "\" are not those that were written at the run's end.");
  }
}

struct Link {
  std::string_view table;
  std::string_view column;
  std::string_view of;
  std::string_view key;
};
constexpr std::array kLinks{
    Link{"step", "run", "run", "id"},
    Link{"reading", "run", "run", "id"},
    Link{"pass", "run", "run", "id"},
    Link{"box", "run", "run", "id"},
    Link{"tag", "run", "run", "id"},
    Link{"run_document", "run", "run", "id"},
    Link{"run_document", "sha256", "document", "sha256"},
};
// A view joins its rows to their run, and shows no others.
constexpr std::array kNumberedLinks{
    Link{"reading_row", "run", "run_number", "number"},
    Link{"reading_row", "name", "name", "number"},
    Link{"pass_row", "run", "run_number", "number"},
    Link{"pass_row", "reading", "name", "number"},
    Link{"run_number", "run", "run", "id"},
};

void CheckLink(SqlConnection& connection, const Link& link, std::vector<std::string>& findings) {
  const std::string table(link.table);
  const std::string column(link.column);
  const std::string of(link.of);
  SqlStatement row = connection.Prepared("SELECT count(*), min(t." + column + ") FROM " + table +
                                         " t WHERE NOT EXISTS (SELECT 1 FROM " + of + " o WHERE o." +
                                         std::string(link.key) + " = t." + column + ")");
  if (!row.Execute().Next() || row.Whole(0) == 0) return;
  findings.push_back("Rows of \"" + table + "\" whose \"" + column + "\" is not in \"" + of +
                     "\": " + std::to_string(row.Whole(0)) + ", the first of them " + row.Text(1) + ".");
}

}  // namespace

std::vector<std::string> CheckRun(SqlConnection& connection, std::string_view id) {
  const SqlTransaction moment(connection, SqlTransaction::Kind::Reads);
  const auto rows = ReadRows(connection, id);
  if (!rows) return {"There is no run " + std::string(id) + "."};
  std::vector<std::string> findings;
  const std::vector<DocumentLink> links = LinksOf(connection, id);
  CheckDocuments(connection, links, findings);
  const auto kept = KeptSealOf(connection, id);
  if (kept && rows->end) CheckSeal(*kept, *rows, links, findings);
  return findings;
}

std::vector<std::string> CheckAllOf(SqlConnection& connection) {
  std::vector<std::string> findings;
  const SqlTransaction moment(connection, SqlTransaction::Kind::Reads);
  if (connection.Engine().numbersNames) {
    SqlStatement rows = connection.Prepared("PRAGMA integrity_check(" + std::to_string(kMostFindings) + ")");
    rows.Execute();
    while (rows.Next()) {
      if (rows.Text(0) != "ok") findings.push_back("SQLite finds: " + rows.Text(0));
    }
    for (const Link& link : kNumberedLinks) CheckLink(connection, link, findings);
  }
  for (const Link& link : kLinks) CheckLink(connection, link, findings);
  return findings;
}

}  // namespace orvane
