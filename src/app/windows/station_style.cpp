#include "app/windows/station_style.h"

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>
#include <QSvgRenderer>

#include "adapters/qt/pictures.h"

namespace orvane {
namespace {

constexpr int kDarkest = 110;

bool IsDark(const QPalette& palette) { return qGray(palette.color(QPalette::Window).rgb()) < kDarkest; }

bool HasEdges(QStyle::PrimitiveElement element) {
  return element == QStyle::PE_FrameLineEdit || element == QStyle::PE_Frame || element == QStyle::PE_FrameTabWidget ||
         element == QStyle::PE_IndicatorCheckBox || element == QStyle::PE_IndicatorRadioButton;
}

const char* PictureOf(QStyle::StandardPixmap icon) {
  switch (icon) {
    case QStyle::SP_MessageBoxCritical:
      return "stop";
    case QStyle::SP_MessageBoxWarning:
      return "exclamation";
    case QStyle::SP_MessageBoxInformation:
      return "information";
    case QStyle::SP_MessageBoxQuestion:
      return "question";
    default:
      return "";
  }
}

/// A picture as an icon for screens of one, two and three dots a pixel.
QIcon IconOf(const QByteArray& picture, int side) {
  QIcon icon;
  QSvgRenderer renderer(picture);
  for (const int dots : {1, 2, 3}) {
    QPixmap drawn(side * dots, side * dots);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    renderer.render(&painter);
    painter.end();
    icon.addPixmap(drawn);
  }
  return icon;
}

/// Draws `option` in another palette, if it is an option of that kind.
template <class Option, class Draw>
bool DrawnIn(const QPalette& palette, const QStyleOption* option, Draw draw) {
  const auto* own = qstyleoption_cast<const Option*>(option);
  if (own == nullptr) return false;
  Option changed(*own);
  changed.palette = palette;
  draw(&changed);
  return true;
}

/// Pages are a shade of the buttons' colour.
QPalette PageOf(const QPalette& edged, const QPalette& palette) {
  QPalette page(edged);
  page.setColor(QPalette::Button, palette.color(QPalette::Window));
  return page;
}

/// The toolkit's own mark of the tab that has the keyboard is hardly darker than the tab.
void DrawTabFocus(const QStyleOption& tab, QPainter& painter) {
  if (!tab.state.testFlag(QStyle::State_HasFocus)) return;
  constexpr int kInside = 4;
  painter.save();
  painter.setPen(QPen(tab.palette.color(QPalette::WindowText), 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(tab.rect.adjusted(kInside, kInside, -kInside, -kInside));
  painter.restore();
}

}  // namespace

StationStyle::StationStyle() : QProxyStyle(QStyleFactory::create("Fusion")) {}

StationStyle* StationStyle::ForApplication() { return new StationStyle; }

const QPalette& StationStyle::Edged(const QPalette& palette) const {
  constexpr std::size_t kMost = 64;
  if (edged_.size() > kMost) edged_.clear();
  const auto [place, isNew] = edged_.try_emplace(palette.cacheKey(), palette);
  if (isNew) place->second.setColor(QPalette::Window, QColor(0xaf, 0xb5, 0xbe));
  return place->second;
}

void StationStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const {
  const auto draw = [&](const QStyleOption* drawn) { QProxyStyle::drawPrimitive(element, drawn, painter, widget); };
  if (!HasEdges(element) || !IsDark(option->palette)) return draw(option);
  const QPalette& edged = Edged(option->palette);
  const bool drawn = DrawnIn<QStyleOptionTabWidgetFrame>(PageOf(edged, option->palette), option, draw) ||
                     DrawnIn<QStyleOptionFrame>(edged, option, draw) ||
                     DrawnIn<QStyleOptionButton>(edged, option, draw) ||
                     DrawnIn<QStyleOptionComplex>(edged, option, draw);
  if (!drawn) draw(option);
}

void StationStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
  const auto draw = [&](const QStyleOption* drawn) { QProxyStyle::drawControl(element, drawn, painter, widget); };
  if (element == CE_TabBarTabLabel) {
    draw(option);
    return DrawTabFocus(*option, *painter);
  }
  const bool hasEdges = element == CE_TabBarTabShape || element == CE_ProgressBarGroove;
  if (!hasEdges || !IsDark(option->palette)) return draw(option);
  const QPalette& edged = Edged(option->palette);
  const bool drawn = DrawnIn<QStyleOptionTab>(PageOf(edged, option->palette), option, draw) ||
                     DrawnIn<QStyleOptionProgressBar>(edged, option, draw);
  if (!drawn) draw(option);
}

QIcon StationStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
  const QByteArray picture = PictureNamed(PictureOf(icon));
  if (picture.isEmpty()) return QProxyStyle::standardIcon(icon, option, widget);
  return IconOf(picture, pixelMetric(PM_MessageBoxIconSize, option, widget));
}

}  // namespace orvane
