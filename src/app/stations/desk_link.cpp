#include "app/stations/desk_link.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include "app/stations/desk_words.h"

namespace orvane {
namespace {

void RaiseWindows() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (!window->isVisible() || window->windowType() == Qt::Popup || window->windowType() == Qt::ToolTip) continue;
    window->raise();
    window->activateWindow();
  }
}

}  // namespace

DeskLink::DeskLink(const QString& address, QObject* parent) : QObject(parent), onFront(&RaiseWindows) {
  const QString number = address.section('@', 0, 0);
  connect(&socket_, &QLocalSocket::connected, this, [this, number] { socket_.write(number.toUtf8() + '\n'); });
  connect(&socket_, &QLocalSocket::readyRead, this, [this] {
    while (socket_.canReadLine()) {
      if (socket_.readLine().trimmed() == kFrontWord) onFront();
    }
  });
  socket_.connectToServer(address.section('@', 1));
  qApp->installEventFilter(this);
}

void DeskLink::GoToDesk() {
  if (socket_.state() == QLocalSocket::ConnectedState) socket_.write(QByteArray(kDeskWord) + '\n');
}

bool DeskLink::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
  const auto* key = static_cast<QKeyEvent*>(event);
  if (key->key() != Qt::Key_Home || !key->modifiers().testFlag(Qt::ControlModifier)) return false;
  GoToDesk();
  return true;
}

}  // namespace orvane
