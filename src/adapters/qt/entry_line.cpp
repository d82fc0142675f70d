#include "adapters/qt/entry_line.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#include "adapters/qt/appearance.h"

namespace orvane {

char32_t CharacterOf(const QKeyEvent& event) {
  constexpr char32_t kEnter = 13;
  constexpr char32_t kBackspace = 8;
  if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) return kEnter;
  if (event.key() == Qt::Key_Backspace) return kBackspace;
  const auto characters = event.text().toUcs4();
  const bool one = characters.size() == 1 && QChar::isPrint(characters.front());
  return one ? static_cast<char32_t>(characters.front()) : 0;
}

EntryLine::EntryLine(TextBox& box, Hands& hands, QWidget* parent) : QLineEdit(parent), box_(box), hands_(hands) {
  Follow(box, *this, [this] { ShowText(); });
  // Only the tail is new, but in one line that is no matter.
  box.appended.Connect([show = ShownSoon(*this, [this] { ShowText(); })](std::string_view) { show(); });
  connect(this, &QLineEdit::textEdited, this, [this] { TakeEdit(); });
}

void EntryLine::ShowText() {
  if (takingKey_) return;
  const QString wanted = ToQt(box_.Text());
  if (text() != wanted) setText(wanted);
}

void EntryLine::TakeEdit() {
  if (takingKey_) return;
  hands_.Do([this](Operator& hand) { hand.Type(box_, text().toStdString()); }, [this] { ShowText(); });
}

void EntryLine::keyPressEvent(QKeyEvent* event) {
  const std::shared_ptr<QKeyEvent> key(event->clone());
  hands_.Do([this, key](Operator& hand) { TakeKey(hand, *key); }, [this] { ShowText(); });
  event->accept();
}

void EntryLine::TakeKey(Operator& hand, QKeyEvent& event) {
  hand.Key(box_, CharacterOf(event), [this, &event] {
    ShowText();
    takingKey_ = true;
    QLineEdit::keyPressEvent(&event);
    takingKey_ = false;
    return text().toStdString();
  });
}

void EntryLine::mouseReleaseEvent(QMouseEvent* event) {
  QLineEdit::mouseReleaseEvent(event);
  if (box_.onClick) hands_.Do([this](Operator& hand) { hand.Click(box_); });
}

void EntryLine::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (box_.onLostFocus && event->reason() != Qt::PopupFocusReason) {
    hands_.Do([this](Operator& hand) { hand.Leave(box_); });
  }
}

}  // namespace orvane
