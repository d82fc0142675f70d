#include "adapters/qt/entry_text.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <algorithm>
#include <memory>
#include <utility>

#include "adapters/qt/appearance.h"
#include "adapters/qt/entry_line.h"
#include "base/text.h"

namespace orvane {
namespace {

/// As long as a text of one line: what is pasted beyond it is cut off.
constexpr qsizetype kLongestEdit = 32767;

QString WithPlainLineEnds(std::string_view text) {
  QString plain = ToQt(text);
  plain.remove(u'\r');
  return plain;
}

}  // namespace

EntryText::EntryText(TextBox& box, Hands& hands, QWidget* parent) : QPlainTextEdit(parent), box_(box), hands_(hands) {
  setUndoRedoEnabled(false);
  setTabChangesFocus(true);
  Follow(box, *this, [this] { ShowText(); });
  box.appended.Connect([this, show = ShownSoon(*this, [this] { ShowText(); })](std::string_view text) {
    appended_ += text;
    show();
  });
  connect(this, &QPlainTextEdit::textChanged, this, [this] { TakeEdit(); });
}

void EntryText::TakeEdit() {
  if (takingEdit_ || showing_ || Edited() == shown_) return;
  hands_.Do(
      [this](Operator& hand) {
        shown_ = Edited();
        hand.Type(box_, shown_);
      },
      [this] { ShowText(); });
}

template <class Change>
void EntryText::KeepingEnd(Change change) {
  QScrollBar& bar = *verticalScrollBar();
  const bool atEnd = bar.value() == bar.maximum();
  showing_ = true;
  change();
  showing_ = false;
  if (atEnd) bar.setValue(bar.maximum());
}

bool EntryText::ShowAppended(const std::string& wanted, const std::string& appended) {
  const std::string longer = shown_ + appended;
  if (appended.size() > wanted.size() || !longer.ends_with(wanted)) return false;
  KeepingEnd([&] {
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.insertText(WithPlainLineEnds(appended));
  });
  shown_ = longer;
  return DropShownFront(longer.size() - wanted.size());
}

bool EntryText::DropShownFront(std::size_t bytes) {
  const bool splitsLineEnd = bytes > 0 && bytes < shown_.size() && shown_[bytes - 1] == '\r' && shown_[bytes] == '\n';
  if (splitsLineEnd) return false;
  KeepingEnd([&] {
    QTextCursor front(document());
    const auto length = WithPlainLineEnds(std::string_view(shown_).substr(0, bytes)).size();
    front.setPosition(static_cast<int>(length), QTextCursor::KeepAnchor);
    front.removeSelectedText();
  });
  shown_.erase(0, bytes);
  return true;
}

void EntryText::ShowText() {
  const std::string& wanted = box_.Text();
  const std::string appended = std::exchange(appended_, {});
  if (takingEdit_ || wanted == shown_) return;
  // What has grown, also a console at its limit, which loses its front, keeps what it shows else.
  if (!wanted.empty() && ShowAppended(wanted, appended)) return;
  KeepingEnd([&] { setPlainText(WithPlainLineEnds(wanted)); });
  shown_ = wanted;
}

std::string EntryText::Edited() const { return WithStandardLineEnds(toPlainText().toStdString()); }

void EntryText::TakeEffect(const std::function<void()>& effect, char32_t key) {
  hands_.Do(
      [this, effect, key](Operator& hand) {
        hand.Key(box_, key, [&] {
          ShowText();
          takingEdit_ = true;
          const int revision = document()->revision();
          effect();
          takingEdit_ = false;
          if (document()->revision() != revision) shown_ = Edited();
          return shown_;
        });
      },
      [this] { ShowText(); });
}

void EntryText::keyPressEvent(QKeyEvent* event) {
  const std::shared_ptr<QKeyEvent> key(event->clone());
  TakeEffect([this, key] { QPlainTextEdit::keyPressEvent(key.get()); }, CharacterOf(*event));
  event->accept();
}

void EntryText::insertFromMimeData(const QMimeData* source) {
  const QString text = source->text().left(std::max<qsizetype>(kLongestEdit - document()->characterCount(), 0));
  if (takingEdit_) {
    insertPlainText(text);
  } else {
    TakeEffect([this, text] { insertPlainText(text); }, 0);
  }
}

void EntryText::mousePressEvent(QMouseEvent* event) {
  // Marked text is not dragged away: the toolkit would hold the station's loop up for as long as the mouse holds it.
  QTextCursor marked = textCursor();
  const int at = cursorForPosition(event->pos()).position();
  if (marked.hasSelection() && marked.selectionStart() <= at && at <= marked.selectionEnd()) {
    marked.clearSelection();
    setTextCursor(marked);
  }
  QPlainTextEdit::mousePressEvent(event);
}

void EntryText::mouseReleaseEvent(QMouseEvent* event) {
  QPlainTextEdit::mouseReleaseEvent(event);
  if (box_.onClick) hands_.Do([this](Operator& hand) { hand.Click(box_); });
}

}  // namespace orvane
