#pragma once

#include <QScrollArea>

namespace orvane {

/// Shows its content whole where the screen has the room for it, and can be scrolled where it has not: on a small
/// screen with a large type.
class FittingArea final : public QScrollArea {
 public:
  /// `room`: what a small screen has for it.
  FittingArea(QWidget* content, QSize room, QWidget* parent);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QSize room_;
};

}  // namespace orvane
