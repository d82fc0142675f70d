#include "adapters/qt/lamp_widget.h"

#include <QPainter>

#include "adapters/qt/appearance.h"
#include "adapters/qt/spoken_widgets.h"

namespace orvane {
namespace {

bool IsGreen(const Lamp& lamp) { return lamp.BackColor() == kGreen; }
bool IsRed(const Lamp& lamp) { return lamp.BackColor() == kRed; }

/// Red is no fault, it is what is not connected, as the Target is behind each run: its shape must not be the cross of
/// a unit that failed.
class LampWidget final : public QWidget {
 public:
  LampWidget(Lamp& lamp, QWidget* parent) : QWidget(parent), lamp_(lamp) {
    TellAsPicture(*this);
    Follow(lamp, *this, [this] {
      setToolTip(LampWords(lamp_));
      setAccessibleDescription(toolTip());
      update();
    });
  }

  [[nodiscard]] QSize sizeHint() const override {
    const int side = fontMetrics().height() * 3 / 2;
    return {side, side};
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal side = std::min(width(), height()) - 2.0;
    const QRectF disk((width() - side) / 2, (height() - side) / 2, side, side);
    if (IsRed(lamp_)) {
      painter.setPen(QPen(QColor(0xd9, 0x30, 0x30), side / 7));
      painter.drawEllipse(disk.center(), side * 0.42, side * 0.42);
      return;
    }
    painter.setPen(QPen(palette().color(QPalette::PlaceholderText), 1.5));
    painter.setBrush(IsGreen(lamp_) ? QColor(0x2e, 0xb8, 0x4c) : Qt::transparent);
    painter.drawEllipse(disk);
    const auto at = [&](qreal x, qreal y) { return disk.topLeft() + QPointF(x * side, y * side); };
    painter.setPen(QPen(Qt::white, side / 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (IsGreen(lamp_)) painter.drawPolyline(QPolygonF{at(0.26, 0.52), at(0.44, 0.70), at(0.75, 0.33)});
  }

 private:
  Lamp& lamp_;
};

}  // namespace

QString LampWords(const Lamp& lamp) { return IsGreen(lamp) ? "Ready" : IsRed(lamp) ? "Not ready" : "Not used yet"; }

QWidget* MakeLamp(Lamp& lamp, QWidget* parent) {
  auto* widget = new LampWidget(lamp, parent);
  widget->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  return widget;
}

}  // namespace orvane
