#include "adapters/qt/appearance.h"

#include <QFontDatabase>
#include <QPalette>

namespace orvane {
namespace {

constexpr Colour kSystemColour = 0x80000000;

QColor ToQt(Colour colour) {
  return {static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
          static_cast<int>(colour >> 16 & 0xFF)};
}

/// Black or white, whichever is read better on that ground.
QColor ReadableOn(const QColor& ground) { return qGray(ground.rgb()) > 110 ? Qt::black : Qt::white; }

}  // namespace

void ShowColours(const Control& control, QWidget& widget) {
  QPalette palette;
  const bool ownGround = (control.BackColor() & kSystemColour) == 0;
  const bool ownText = (control.ForeColor() & kSystemColour) == 0;
  if (ownGround) {
    const QColor ground = ToQt(control.BackColor());
    for (const auto role : {QPalette::Base, QPalette::Button, QPalette::Window}) palette.setColor(role, ground);
    for (const auto role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText}) {
      palette.setColor(role, ReadableOn(ground));
    }
    if (control.Kind() == ControlKind::Label) widget.setAutoFillBackground(true);
  }
  if (ownText) {
    for (const auto role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText}) {
      palette.setColor(role, ToQt(control.ForeColor()));
    }
  }
  widget.setPalette(ownGround || ownText ? palette : QPalette());
}

void Follow(Control& control, QWidget& widget, std::function<void()> show) {
  widget.setObjectName(ToQt(control.Name()));
  const auto showAll = [&control, &widget, show = std::move(show)] {
    widget.setEnabled(control.EnabledForOperator());
    widget.setHidden(!control.Visible());
    ShowColours(control, widget);
    if (show) show();
  };
  showAll();
  control.changed.Connect(showAll);
}

QFont FixedPitchFont() { return QFontDatabase::systemFont(QFontDatabase::FixedFont); }

QString Mnemonics::Mark(const QString& caption, QChar& letter) {
  if (!letter.isNull()) taken_.erase(letter);
  letter = QChar();
  for (qsizetype i = 0; i < caption.size(); ++i) {
    if (caption[i] == u'&') {
      ++i;
      continue;
    }
    const QChar upper = caption[i].toUpper();
    if (!upper.isLetterOrNumber() || upper.unicode() > 127 || taken_.contains(upper)) continue;
    taken_.insert(upper);
    letter = upper;
    return caption.left(i) + u'&' + caption.mid(i);
  }
  return caption;
}

}  // namespace orvane
