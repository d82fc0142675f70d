#include "app/windows/stop_button.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>

#include "adapters/qt/appearance.h"

namespace orvane {
namespace {

constexpr std::chrono::milliseconds kLook{100};

}  // namespace

StopButton::StopButton(const StationStatus& status, Hands& hands, Button& stop, QWidget* parent)
    : QToolButton(parent), status_(status), hands_(hands), stop_(stop) {
  setObjectName("statusStop");
  setFocusPolicy(Qt::NoFocus);
  connect(this, &QToolButton::clicked, this, [this] { Press(); });
  connect(&timer_, &QTimer::timeout, this, &StopButton::Look);
  timer_.start(kLook);
  qApp->installEventFilter(this);
  Look();
}

void StopButton::Look() {
  setVisible(status_.Running());
  if (!status_.Running()) return;
  setText(Words());
  setAccessibleName(text());
  setDown(status_.StopAsked() != (pending_ % 2 != 0));
}

QString StopButton::Words() const {
  const bool isAsked = status_.StopAsked();
  if (pending_ % 2 != 0) {
    return isAsked ? tr("Stop is taken back as soon as the station can")
                   : tr("Stop is taken up as soon as the station can");
  }
  return (isAsked ? tr("Take Stop back (F12): %1") : tr("Stop (F12): %1")).arg(ToQt(status_.StopWords()));
}

void StopButton::Press() {
  ++pending_;
  hands_.Do([this](Operator& hand) { hand.Click(stop_); },
            [seen = QPointer(this)] {
              if (seen) --seen->pending_;
            });
}

/// Whatever window has the keyboard, a box's too.
bool StopButton::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_F12 && status_.Running()) {
      if (!key->isAutoRepeat()) Press();
      return true;
    }
  }
  return QToolButton::eventFilter(watched, event);
}

}  // namespace orvane
