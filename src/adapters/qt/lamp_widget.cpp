#include "adapters/qt/lamp_widget.h"

#include <QPainter>

#include "adapters/qt/appearance.h"

namespace orvane {
namespace {

class LampWidget final : public QWidget {
 public:
  LampWidget(Lamp& lamp, QWidget* parent) : QWidget(parent), lamp_(lamp) {
    Follow(lamp, *this, [this] {
      setToolTip(IsGreen() ? "Ready" : IsRed() ? "Not ready" : "Not used yet");
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
    painter.setPen(QPen(palette().color(QPalette::PlaceholderText), 1.5));
    painter.setBrush(IsGreen() ? QColor(0x2e, 0xb8, 0x4c) : IsRed() ? QColor(0xd9, 0x30, 0x30) : Qt::transparent);
    painter.drawEllipse(disk);

    painter.setPen(QPen(Qt::white, side / 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const auto at = [&](qreal x, qreal y) { return disk.topLeft() + QPointF(x * side, y * side); };
    if (IsGreen()) painter.drawPolyline(QPolygonF{at(0.26, 0.52), at(0.44, 0.70), at(0.75, 0.33)});
    if (IsRed()) {
      painter.drawLine(at(0.32, 0.32), at(0.68, 0.68));
      painter.drawLine(at(0.32, 0.68), at(0.68, 0.32));
    }
  }

 private:
  [[nodiscard]] bool IsGreen() const { return lamp_.BackColor() == kGreen; }
  [[nodiscard]] bool IsRed() const { return lamp_.BackColor() == kRed; }

  Lamp& lamp_;
};

}  // namespace

QWidget* MakeLamp(Lamp& lamp, QWidget* parent) {
  auto* widget = new LampWidget(lamp, parent);
  widget->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  return widget;
}

}  // namespace orvane
