#include "adapters/qt/appearance.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QPalette>
#include <QPointer>
#include <cmath>
#include <utility>
#include <vector>

namespace orvane {
namespace {

constexpr Colour kSystemColour = 0x80000000;

QColor ToQt(Colour colour) {
  return {static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
          static_cast<int>(colour >> 16 & 0xFF)};
}

bool IsDark(const QColor& colour) { return qGray(colour.rgb()) <= 110; }

/// Black or white, whichever has the greater contrast with that ground (WCAG 2.1, relative luminance).
QColor ReadableOn(const QColor& ground) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  const double luminance =
      0.2126 * linear(ground.redF()) + 0.7152 * linear(ground.greenF()) + 0.0722 * linear(ground.blueF());
  constexpr double kAsGoodForBoth = 0.179;
  return luminance > kAsGoodForBoth ? Qt::black : Qt::white;
}

/// A colour of text as it is on a light ground, and a pale one of its hue on a dark desktop.
QColor OnDesktop(const QColor& text) {
  constexpr int kPale = 200;
  if (!IsDark(QPalette().color(QPalette::Base)) || !IsDark(text)) return text;
  return QColor::fromHsl(text.hslHue(), text.hslSaturation(), kPale);
}

/// What the text of a control is drawn in. The scroll bars of a box keep the desktop's colours.
std::vector<QPalette::ColorRole> TextRoles(ControlKind kind) {
  if (kind == ControlKind::Text || kind == ControlKind::List) return {QPalette::Text};
  return {QPalette::Text, QPalette::ButtonText, QPalette::WindowText};
}

/// Does its work in the next turn of the loop, once, however often it was asked to.
class Soon final : public QObject {
 public:
  Soon(QWidget& widget, std::function<void()> work) : QObject(&widget), work_(std::move(work)) {}

  void Ask() {
    if (!std::exchange(asked_, true)) QCoreApplication::postEvent(this, new QEvent(QEvent::User));
  }

 protected:
  bool event(QEvent* event) override {
    if (event->type() != QEvent::User) return QObject::event(event);
    asked_ = false;
    work_();
    return true;
  }

 private:
  std::function<void()> work_;
  bool asked_ = false;
};

}  // namespace

void ShowColours(const Control& control, QWidget& widget) {
  QPalette palette;
  const bool ownGround = (control.BackColor() & kSystemColour) == 0;
  const bool ownText = (control.ForeColor() & kSystemColour) == 0;
  if (ownGround) {
    const QColor ground = ToQt(control.BackColor());
    for (const auto role : {QPalette::Base, QPalette::Button, QPalette::Window}) palette.setColor(role, ground);
    for (const auto role : TextRoles(control.Kind())) palette.setColor(role, ReadableOn(ground));
    if (control.Kind() == ControlKind::Label) widget.setAutoFillBackground(true);
  }
  if (ownText) {
    const QColor text = ToQt(control.ForeColor());
    for (const auto role : TextRoles(control.Kind())) palette.setColor(role, ownGround ? text : OnDesktop(text));
  }
  widget.setPalette(ownGround || ownText ? palette : QPalette());
}

std::function<void()> ShownSoon(QWidget& widget, std::function<void()> show) {
  auto* soon = new Soon(widget, std::move(show));
  return [soon = QPointer(soon)] {
    if (soon) soon->Ask();
  };
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
  control.changed.Connect(ShownSoon(widget, showAll));
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
