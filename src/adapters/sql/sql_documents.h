#pragma once

#include <optional>
#include <string>
#include <vector>

#include "adapters/sql/sql_connection.h"

namespace orvane {

/// A document of a run, by its content's digest.
struct DocumentLink {
  std::string role;
  std::string sha256;
};

/// Documents on their way into a store. What the store has not is compressed ahead of the transaction, so that nobody
/// waits for it.
class DocumentsToKeep {
 public:
  /// `documents` outlives it.
  DocumentsToKeep(SqlConnection& connection, const std::vector<RecordedDocument>& documents);
  [[nodiscard]] const std::vector<DocumentLink>& Links() const { return links_; }
  /// Within a transaction.
  void Write(const std::string& run);

 private:
  struct Packed {
    std::string kind;
    std::string bytes;
  };
  [[nodiscard]] static Packed Pack(const RecordedDocument& document);
  [[nodiscard]] bool Has(const std::string& sha256);

  SqlConnection& connection_;
  const std::vector<RecordedDocument>& documents_;
  std::vector<DocumentLink> links_;
  /// No value for one that the store has.
  std::vector<std::optional<Packed>> packed_;
};

/// In the order of their roles.
[[nodiscard]] std::vector<DocumentLink> LinksOf(SqlConnection& connection, std::string_view run);

/// The content behind a link. @throws DamagedRecord when it is not there or cannot be unpacked.
[[nodiscard]] RecordedDocument DocumentBehind(SqlConnection& connection, const DocumentLink& link);

}  // namespace orvane
