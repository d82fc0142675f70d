#include "app/stations/desk_server.h"

#include "app/stations/desk_words.h"

namespace orvane {
namespace {

constexpr qint64 kLongestWord = 64;

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
    const QByteArray word = page.readLine(kLongestWord).trimmed();
    bool isNumber = false;
    const int station = word.toInt(&isNumber);
    if (isNumber) pages_[station] = &page;
    if (word == kDeskWord) onDeskAskedFor();
  }
  // Longer than any word.
  if (page.bytesAvailable() >= kLongestWord) page.abort();
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
