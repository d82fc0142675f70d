#include "app/stations/desk_server.h"

#include "app/stations/desk_words.h"

namespace orvane {
namespace {

/// A letter has four bytes at the most.
constexpr qint64 kLongestWord = 4 * kLongestUnit + 64;

}  // namespace

DeskServer::DeskServer(QObject* parent) : QObject(parent) {
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&server_, &QLocalServer::newConnection, this, &DeskServer::Welcome);
}

bool DeskServer::Listen(const QString& path) { return server_.listen(path); }

void DeskServer::Welcome() {
  while (QLocalSocket* page = server_.nextPendingConnection()) {
    page->setReadBufferSize(kLongestWord);
    connect(page, &QLocalSocket::readyRead, this, [this, page] { Hear(*page); });
    connect(page, &QLocalSocket::disconnected, page, &QObject::deleteLater);
  }
}

void DeskServer::Hear(QLocalSocket& page) {
  while (page.canReadLine()) {
    QByteArray word = page.readLine(kLongestWord);
    if (word.endsWith('\n')) word.chop(1);
    bool isNumber = false;
    const int station = word.toInt(&isNumber);
    if (isNumber) pages_[station] = &page;
    if (word == kDeskWord) onDeskAskedFor();
    if (word.startsWith(kUnitWord)) TakeUnit(page, QString::fromUtf8(word.mid(QByteArrayView(kUnitWord).size())));
  }
  // Longer than any word.
  if (page.bytesAvailable() >= kLongestWord) page.abort();
}

void DeskServer::TakeUnit(const QLocalSocket& page, const QString& serial) {
  for (const auto& [station, its] : pages_) {
    if (its == &page) onUnit(station, serial);
  }
}

bool DeskServer::BringToFront(int station) {
  const auto page = pages_.find(station);
  if (page == pages_.end() || page->second.isNull() || page->second->state() != QLocalSocket::ConnectedState) {
    return false;
  }
  page->second->write(QByteArray(kFrontWord) + '\n');
  return true;
}

}  // namespace orvane
