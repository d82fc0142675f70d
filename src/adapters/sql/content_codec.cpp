#include "adapters/sql/content_codec.h"

#include <zstd.h>

#include <QByteArrayView>
#include <QCryptographicHash>

#include "records/record_bytes.h"

namespace orvane {
namespace {

// Higher ones take many times as long for a few hundred bytes of a record.
constexpr int kLevel = 6;

QByteArray HashOf(std::string_view content) {
  // The static form takes no view in every version of the toolkit.
  QCryptographicHash hash(QCryptographicHash::Sha256);
  hash.addData(QByteArrayView(content.data(), static_cast<qsizetype>(content.size())));
  return hash.result();
}

}  // namespace

std::string DigestOf(std::string_view content) { return HashOf(content).toStdString(); }

std::string DigestTextOf(std::string_view content) { return HashOf(content).toHex().toStdString(); }

std::string Compressed(std::string_view content) {
  if (content.size() > kLargestContent) throw DamagedRecord("A content of more than 256 MiB.");
  std::string frame(ZSTD_compressBound(content.size()), '\0');
  const std::size_t size = ZSTD_compress(frame.data(), frame.size(), content.data(), content.size(), kLevel);
  if (ZSTD_isError(size) != 0)
    throw DamagedRecord(std::string("A content is not compressed: ") + ZSTD_getErrorName(size));
  frame.resize(size);
  return frame;
}

std::string Decompressed(std::string_view frame) {
  const unsigned long long told = ZSTD_getFrameContentSize(frame.data(), frame.size());
  if (told == ZSTD_CONTENTSIZE_ERROR || told == ZSTD_CONTENTSIZE_UNKNOWN) {
    throw DamagedRecord("A compressed content without its head.");
  }
  if (told > kLargestContent) throw DamagedRecord("A compressed content that says to have more than 256 MiB.");
  std::string content(static_cast<std::size_t>(told), '\0');
  const std::size_t size = ZSTD_decompress(content.data(), content.size(), frame.data(), frame.size());
  if (ZSTD_isError(size) != 0 || size != content.size()) throw DamagedRecord("A compressed content that is damaged.");
  return content;
}

}  // namespace orvane
