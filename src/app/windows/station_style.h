#pragma once

#include <QProxyStyle>
#include <map>

namespace orvane {

/// The look of the station's windows: that of the toolkit, but on a dark desktop boxes and marks have edges that can
/// be seen, and pages the ground of the windows around them; and the icons of message boxes are drawn at any size.
class StationStyle final : public QProxyStyle {
 public:
  StationStyle();
  /// One that the application takes as its own.
  [[nodiscard]] static StationStyle* ForApplication();

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  [[nodiscard]] QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                                   const QWidget* widget) const override;

 private:
  /// A palette in which the toolkit finds edges that can be seen: it takes a darker shade of the windows for them.
  [[nodiscard]] const QPalette& Edged(const QPalette& palette) const;

  /// By what they were made of: the toolkit keeps drawings, each for its palette.
  mutable std::map<qint64, QPalette> edged_;
};

}  // namespace orvane
