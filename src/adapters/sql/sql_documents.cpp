#include "adapters/sql/sql_documents.h"

#include "adapters/sql/content_codec.h"
#include "records/record_bytes.h"

namespace orvane {
namespace {

constexpr std::string_view kCompressed = "+zstd";

QByteArray QtBytes(std::string_view bytes) { return {bytes.data(), static_cast<qsizetype>(bytes.size())}; }

}  // namespace

DocumentsToKeep::DocumentsToKeep(SqlConnection& connection, const std::vector<RecordedDocument>& documents)
    : connection_(connection), documents_(documents) {
  for (const RecordedDocument& document : documents_) {
    links_.push_back({StorableText(document.role), DigestTextOf(document.content)});
    const std::string& sha256 = links_.back().sha256;
    packed_.push_back(Has(sha256) ? std::nullopt : std::optional(Pack(document)));
  }
}

DocumentsToKeep::Packed DocumentsToKeep::Pack(const RecordedDocument& document) {
  std::string frame = Compressed(document.content);
  if (frame.size() >= document.content.size()) return {document.kind, document.content};
  return {document.kind + std::string(kCompressed), std::move(frame)};
}

bool DocumentsToKeep::Has(const std::string& sha256) {
  SqlStatement there = connection_.Prepared("SELECT 1 FROM document WHERE sha256 = ?");
  return there.Bind(QtText(sha256)).Execute().Next();
}

void DocumentsToKeep::Write(const std::string& run) {
  for (std::size_t i = 0; i < links_.size(); ++i) {
    const auto& [role, sha256] = links_[i];
    // Somebody may have taken it out since.
    if (!packed_[i] && !Has(sha256)) packed_[i] = Pack(documents_[i]);
    if (packed_[i]) {
      connection_
          .Prepared("INSERT INTO document (sha256, kind, bytes) VALUES (?, ?, ?) ON CONFLICT (sha256) DO NOTHING")
          .Bind(QtText(sha256))
          .Bind(QtText(StorableText(packed_[i]->kind)))
          .Bind(QtBytes(packed_[i]->bytes))
          .Execute();
    }
    connection_.Prepared("INSERT INTO run_document (run, role, sha256) VALUES (?, ?, ?)")
        .Bind(QtText(run))
        .Bind(QtText(role))
        .Bind(QtText(sha256))
        .Execute();
  }
}

std::vector<DocumentLink> LinksOf(SqlConnection& connection, std::string_view run) {
  std::vector<DocumentLink> links;
  SqlStatement rows = connection.Prepared("SELECT role, sha256 FROM run_document WHERE run = ? ORDER BY role");
  rows.Bind(QtText(run)).Execute();
  while (rows.Next()) links.push_back({rows.Text(0), rows.Text(1)});
  return links;
}

RecordedDocument DocumentBehind(SqlConnection& connection, const DocumentLink& link) {
  SqlStatement row = connection.Prepared("SELECT kind, bytes FROM document WHERE sha256 = ?");
  if (!row.Bind(QtText(link.sha256)).Execute().Next()) {
    throw DamagedRecord("The document \"" + link.role + "\" is not there.");
  }
  RecordedDocument document{link.role, row.Text(0), row.Bytes(1)};
  if (!document.kind.ends_with(kCompressed)) return document;
  document.kind.resize(document.kind.size() - kCompressed.size());
  try {
    document.content = Decompressed(document.content);
  } catch (const DamagedRecord& damage) {
    throw DamagedRecord("The document \"" + link.role + "\" is damaged: " + damage.what());
  }
  return document;
}

}  // namespace orvane
