#include "app/operator/page_look.h"

#include <QVariant>
#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

constexpr const char* kUnits = "units";

Shade Of(QRgb ground, QRgb text) { return {QColor(ground), QColor(text)}; }

/// Its share of light, from 0 to 1.
double LuminanceOf(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

}  // namespace

const PageLook& LookFor(bool isDark) {
  static const PageLook light{Of(0xfff1f3f5, 0xff14171a), Of(0xffffffff, 0xff14171a), QColor(0xff4d545b),
                              Of(0xff0b5cad, 0xffffffff), Of(0xff8f1414, 0xffffffff), Of(0xff0b6b32, 0xffffffff),
                              Of(0xfff2b100, 0xff201800), Of(0xff9b1313, 0xffffffff)};
  static const PageLook dark{Of(0xff16181b, 0xfff0f2f4), Of(0xff24272b, 0xfff0f2f4), QColor(0xffb4bac1),
                             Of(0xff2f7fd6, 0xff04121f), Of(0xfff08a8a, 0xff2b0404), Of(0xff4fc47b, 0xff03210f),
                             Of(0xfff2b100, 0xff201800), Of(0xfff08a8a, 0xff2b0404)};
  return isDark ? dark : light;
}

const Shade& LookOf(UnitVerdict verdict) {
  static const Shade pass = Of(0xff07572a, 0xffffffff);
  static const Shade fail = Of(0xff8a0f0f, 0xffffffff);
  static const Shade notMeasured = Of(0xfff2b100, 0xff1a1300);
  static const Shade outOfTolerance = Of(0xff2b2000, 0xffffc933);
  static const Shade none = Of(0xff3a4047, 0xffffffff);
  switch (verdict) {
    case UnitVerdict::Pass:
      return pass;
    case UnitVerdict::Fail:
      return fail;
    case UnitVerdict::NotMeasured:
      return notMeasured;
    case UnitVerdict::OutOfTolerance:
      return outOfTolerance;
    case UnitVerdict::None:
      break;
  }
  return none;
}

double ContrastOf(const QColor& one, const QColor& other) {
  const auto [darker, lighter] = std::minmax({LuminanceOf(one), LuminanceOf(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

void Wear(QWidget& widget, const Shade& shade) {
  QPalette palette = widget.palette();
  for (const auto role : {QPalette::Window, QPalette::Base}) palette.setColor(role, shade.ground);
  for (const auto role : {QPalette::WindowText, QPalette::Text}) palette.setColor(role, shade.text);
  widget.setPalette(palette);
  widget.setAutoFillBackground(true);
}

void WearButton(QWidget& button, const Shade& shade) {
  QPalette palette = button.palette();
  palette.setColor(QPalette::Button, shade.ground);
  palette.setColor(QPalette::ButtonText, shade.text);
  const QPalette faded = button.parentWidget() == nullptr ? QPalette() : button.parentWidget()->palette();
  for (const auto role : {QPalette::Button, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, faded.color(QPalette::Disabled, role));
  }
  button.setPalette(palette);
}

void SetUnits(QWidget& widget, double units) { widget.setProperty(kUnits, units); }

double UnitOf(QSize page) { return std::min(page.height() / 34.0, page.width() / 60.0); }

void ApplyUnits(QWidget& page) {
  static constexpr int kSmallest = 9;
  const double unit = UnitOf(page.size());
  const auto apply = [unit](QWidget& widget) {
    const QVariant units = widget.property(kUnits);
    if (!units.isValid()) return;
    QFont font = widget.font();
    const int pixels = std::max(kSmallest, static_cast<int>(std::lround(units.toDouble() * unit)));
    if (font.pixelSize() == pixels) return;
    font.setPixelSize(pixels);
    widget.setFont(font);
  };
  apply(page);
  for (QWidget* widget : page.findChildren<QWidget*>()) apply(*widget);
}

}  // namespace orvane
