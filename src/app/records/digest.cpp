#include "app/records/digest.h"

#include <QCryptographicHash>

namespace orvane {

std::string Sha256Of(std::string_view content) {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  hash.addData(QByteArray::fromRawData(content.data(), static_cast<qsizetype>(content.size())));
  return hash.result().toHex().toStdString();
}

}  // namespace orvane
