#include "adapters/qt/up_down_widget.h"

#include <QKeyEvent>
#include <QToolButton>
#include <QVBoxLayout>

#include "adapters/qt/appearance.h"

namespace orvane {
namespace {

class Arrows final : public QWidget {
 public:
  Arrows(UpDown& upDown, Hands& hands, QWidget* box, QWidget* parent)
      : QWidget(parent), upDown_(upDown), hands_(hands) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    AddArrow("up", Qt::UpArrow, 1);
    AddArrow("down", Qt::DownArrow, -1);
    if (box != nullptr) {
      setFixedHeight(box->sizeHint().height());
      box->installEventFilter(this);
    }
    Follow(upDown, *this, {});
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::KeyPress) {
      const int key = static_cast<QKeyEvent*>(event)->key();
      if (key == Qt::Key_Up || key == Qt::Key_Down) {
        Step(key == Qt::Key_Up ? 1 : -1);
        return true;
      }
    }
    return QWidget::eventFilter(watched, event);
  }

 private:
  void Step(int steps) {
    hands_.Do([this, steps](Operator& hand) { hand.Step(upDown_, steps); });
  }
  void AddArrow(const char* name, Qt::ArrowType type, int steps) {
    auto* arrow = new QToolButton(this);
    arrow->setObjectName(name);
    arrow->setArrowType(type);
    arrow->setAutoRepeat(true);
    arrow->setFocusPolicy(Qt::NoFocus);
    arrow->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    arrow->setMinimumHeight(0);
    arrow->setFixedWidth(fontMetrics().height());
    connect(arrow, &QToolButton::clicked, this, [this, steps] { Step(steps); });
    layout()->addWidget(arrow);
  }

  UpDown& upDown_;
  Hands& hands_;
};

}  // namespace

QWidget* MakeUpDown(UpDown& upDown, Hands& hands, QWidget* box, QWidget* parent) {
  return new Arrows(upDown, hands, box, parent);
}

}  // namespace orvane
