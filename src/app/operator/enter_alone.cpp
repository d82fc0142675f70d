#include "app/operator/enter_alone.h"

#include <QKeyEvent>
#include <utility>

namespace orvane {

bool EnterAlone::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
  const auto* const key = static_cast<QKeyEvent*>(event);
  if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
    if (key->isAutoRepeat()) return true;
    if (std::exchange(typed_, false)) {
      onScanned_();
    } else {
      static_cast<QPushButton*>(watched)->click();
    }
    return true;
  }
  const bool isText = !key->text().isEmpty() && key->text().front().isPrint() && key->key() != Qt::Key_Space;
  if (!isText || key->modifiers().testFlag(Qt::ControlModifier)) return QObject::eventFilter(watched, event);
  typed_ = true;
  return true;
}

}  // namespace orvane
