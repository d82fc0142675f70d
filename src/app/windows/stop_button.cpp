#include "app/windows/stop_button.h"

#include <QApplication>
#include <QKeyEvent>

#include "adapters/qt/appearance.h"

namespace orvane {
namespace {

constexpr std::chrono::milliseconds kLook{100};

}  // namespace

StopButton::StopButton(const StationStatus& status, std::function<void()> press, QWidget* parent)
    : QToolButton(parent), status_(status), press_(std::move(press)) {
  setObjectName("statusStop");
  setFocusPolicy(Qt::NoFocus);
  connect(this, &QToolButton::clicked, this, [this] { press_(); });
  connect(&timer_, &QTimer::timeout, this, &StopButton::Look);
  timer_.start(kLook);
  qApp->installEventFilter(this);
  Look();
}

void StopButton::Look() {
  setVisible(status_.Running());
  if (!status_.Running()) return;
  const QString words = ToQt(status_.StopWords());
  const bool isAsked = status_.StopAsked();
  setText((isAsked ? tr("Take Stop back (F12): %1") : tr("Stop (F12): %1")).arg(words));
  setAccessibleName(text());
  setDown(isAsked);
}

/// Whatever window has the keyboard, a box's too.
bool StopButton::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_F12 && status_.Running()) {
      if (!key->isAutoRepeat()) press_();
      return true;
    }
  }
  return QToolButton::eventFilter(watched, event);
}

}  // namespace orvane
