#include "app/windows/theme.h"

#include <QApplication>

#include "app/windows/station_style.h"

namespace orvane {
namespace {

struct Shades {
  QRgb text;
  QRgb faded;
  QRgb button;
  QRgb window;
  QRgb base;
  QRgb marked;
};

constexpr Shades kLight{0xff1a1a1a, 0xff707070, 0xffe8e8e8, 0xfff1f1f1, 0xffffffff, 0xff2f65ca};
constexpr Shades kDark{0xffe6e6e6, 0xff9c9c9c, 0xff3a3d41, 0xff2b2d30, 0xff1e1f22, 0xff2f65ca};

}  // namespace

QPalette PaletteOf(Theme theme) {
  const Shades& shades = theme == Theme::Dark ? kDark : kLight;
  QPalette palette(QColor(shades.button), QColor(shades.window));
  palette.setColor(QPalette::Base, QColor(shades.base));
  palette.setColor(QPalette::Highlight, QColor(shades.marked));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::PlaceholderText, QColor(shades.faded));
  palette.setColor(QPalette::ToolTipBase, QColor(shades.window));
  palette.setColor(QPalette::ToolTipText, QColor(shades.text));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, QColor(shades.text));
    palette.setColor(QPalette::Disabled, role, QColor(shades.faded));
  }
  return palette;
}

bool IsDark(std::optional<Theme> theme) {
  constexpr int kHalf = 128;
  return theme ? *theme == Theme::Dark : QApplication::palette().color(QPalette::Window).lightness() < kHalf;
}

void Wear(std::optional<Theme> theme) {
  QApplication::setStyle(StationStyle::ForApplication());
  if (theme) QApplication::setPalette(PaletteOf(*theme));
}

}  // namespace orvane
