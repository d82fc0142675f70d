#include "adapters/sha256.h"

#include <QCryptographicHash>

namespace orvane {

std::string Sha256Of(std::string_view content) {
  const QByteArray bytes = QByteArray::fromRawData(content.data(), static_cast<qsizetype>(content.size()));
  return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex().toStdString();
}

}  // namespace orvane
