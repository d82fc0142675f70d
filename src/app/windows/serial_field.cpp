#include "app/windows/serial_field.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QValidator>
#include <utility>

#include "adapters/qt/appearance.h"

namespace orvane {
namespace {

/// Nothing that no record can hold gets in, a pasted line end or a scanner's separator among it.
class UnitText final : public QValidator {
 public:
  using QValidator::QValidator;

  State validate(QString& text, int& /*cursor*/) const override {
    return FaultOfUnitText(text.toStdString()) ? Invalid : Acceptable;
  }
};

/// As wide as the numbers of most products.
constexpr int kCharacters = 16;
constexpr qsizetype kLongestInTitle = 40;

}  // namespace

SerialField::SerialField(UnitIdentity& unit, QWidget* parent) : QLineEdit(parent), unit_(unit) {
  setObjectName("statusSerial");
  setAccessibleName(tr("Serial number"));
  setPlaceholderText(tr("Serial number"));
  setToolTip(tr("Serial number of the next unit: type or scan it, Enter ends it."));
  setFocusPolicy(Qt::ClickFocus);
  setValidator(new UnitText(this));
  setFixedWidth(fontMetrics().horizontalAdvance(u'0') * kCharacters);
  connect(this, &QLineEdit::editingFinished, this, [this] { Take(); });
  connect(this, &QLineEdit::returnPressed, this, [this] { GiveKeyboardBack(); });
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget* old, QWidget* now) {
    if (now == this && old != nullptr) before_ = old;
  });
  // Within a statement of the station nothing may reach for the display, which may have gone.
  unit.changed.Connect(ShownSoon(*this, [this] { FollowUnit(); }));
  FollowUnit();
}

void SerialField::Take() {
  const std::string text = this->text().trimmed().toStdString();
  if (unit_.InRun() || text == unit_.Texts().serial) return ShowUnit();
  unit_.Change({.serial = text});
}

void SerialField::ShowUnit() {
  shown_ = ToQt(unit_.Texts().serial);
  if (text() != shown_) setText(shown_);
}

/// What somebody is typing stays when something else changes.
void SerialField::FollowUnit() {
  setReadOnly(unit_.InRun());
  if (unit_.InRun() || shown_ != ToQt(unit_.Texts().serial)) ShowUnit();
}

void SerialField::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  clicked_ = event->reason() == Qt::MouseFocusReason;
}

/// The click that gives it the keyboard marks what stands there, so that the next number takes its place.
void SerialField::mouseReleaseEvent(QMouseEvent* event) {
  QLineEdit::mouseReleaseEvent(event);
  if (std::exchange(clicked_, false) && !hasSelectedText()) selectAll();
}

void SerialField::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape) return QLineEdit::keyPressEvent(event);
  ShowUnit();
  GiveKeyboardBack();
}

void SerialField::GiveKeyboardBack() {
  if (before_ && before_->isVisible() && before_->window() == window()) {
    before_->setFocus();
  } else {
    clearFocus();
  }
}

void ShowInTitle(UnitIdentity& unit, PanelWindow& window) {
  const auto show = [&unit, seen = QPointer(&window)] {
    if (!seen) return;
    const QString serial = ToQt(unit.Texts().serial);
    seen->SetSubject(serial.size() <= kLongestInTitle ? serial : serial.left(kLongestInTitle) + u'\u2026');
  };
  show();
  unit.changed.Connect(ShownSoon(window, show));
}

}  // namespace orvane
