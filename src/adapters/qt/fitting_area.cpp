#include "adapters/qt/fitting_area.h"

#include <QEvent>
#include <QScrollBar>

namespace orvane {

FittingArea::FittingArea(QWidget* content, QSize room, QWidget* parent) : QScrollArea(parent), room_(room) {
  setFrameShape(NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setWidgetResizable(true);
  setWidget(content);
  // The ground is that of the page or window around it.
  content->setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
}

QSize FittingArea::sizeHint() const { return widget()->sizeHint(); }

QSize FittingArea::minimumSizeHint() const {
  const QSize whole = widget()->minimumSizeHint();
  // A bar takes from the room across it.
  const int besides = whole.height() > room_.height() ? verticalScrollBar()->sizeHint().width() : 0;
  const int below = whole.width() > room_.width() ? horizontalScrollBar()->sizeHint().height() : 0;
  return (whole + QSize(besides, below)).boundedTo(room_);
}

bool FittingArea::eventFilter(QObject* watched, QEvent* event) {
  if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
  return QScrollArea::eventFilter(watched, event);
}

}  // namespace orvane
