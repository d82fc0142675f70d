#include "app/operator/page_card.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QVBoxLayout>
#include <algorithm>

#include "app/operator/enter_alone.h"
#include "app/operator/page_look.h"

namespace orvane {
namespace {

/// A text whose card would be larger than the page loses its end.
QString Fitting(const QString& text) {
  constexpr qsizetype kMost = 600;
  return text.size() <= kMost ? text : text.left(kMost) + u'\u2026';
}

}  // namespace

PageCard::PageCard(bool isDark, QWidget* parent) : QWidget(parent), isDark_(isDark) {
  setObjectName("card");
  auto* around = new QVBoxLayout(this);
  around->setContentsMargins(0, 0, 0, 0);
}

void PageCard::paintEvent(QPaintEvent* /*event*/) {
  constexpr int kShadow = 150;
  QPainter(this).fillRect(rect(), QColor(0, 0, 0, kShadow));
}

QLabel* PageCard::AddText(const char* name, double units, const QString& text) {
  auto* label = new QLabel(text, frame_);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  SetUnits(*label, units);
  label->setVisible(!text.isEmpty());
  frame_->layout()->addWidget(label);
  return label;
}

void PageCard::Show(const CardContent& content) {
  if (frame_ != nullptr && key_ == content.key) return;
  key_ = content.key;
  delete frame_;
  buttons_.clear();
  typed_ = nullptr;
  auto* frame = new QFrame(this);
  frame_ = frame;
  frame->setObjectName("cardFrame");
  frame->setFrameShape(QFrame::Box);
  new QVBoxLayout(frame);
  Wear(*frame, LookFor(isDark_).card);
  frame->setAccessibleName(content.title + ": " + content.text);
  AddText("cardTitle", 1, content.title);
  AddText("cardText", 1.5, Fitting(content.text));
  AddText("cardMeans", 1.2, content.means);
  AddText("cardToDo", 1.2, content.toDo);
  if (content.typed) {
    typed_ = new QLineEdit(content.typed->initial, frame);
    typed_->setObjectName("cardTyped");
    typed_->setAccessibleName(content.typed->label);
    typed_->setPlaceholderText(content.typed->label);
    if (content.typed->isSecret) typed_->setEchoMode(QLineEdit::Password);
    SetUnits(*typed_, 1.5);
    frame->layout()->addWidget(typed_);
  }
  AddAnswers(content);
  hint_ = AddText("cardHint", 0.9, "");
  auto* around = static_cast<QVBoxLayout*>(layout());
  around->addWidget(frame, 0, Qt::AlignCenter);
  const int widest = static_cast<int>(parentWidget()->width() * 0.8);
  frame->setFixedWidth(widest);
  ApplyUnits(*parentWidget());
}

void PageCard::AddAnswers(const CardContent& content) {
  auto* row = new QHBoxLayout;
  static_cast<QVBoxLayout*>(frame_->layout())->addLayout(row);
  guard_ = new EnterAlone(frame_, [this] {
    hint_->setText(tr("Nothing was taken up. Read this, then press Enter alone."));
    hint_->show();
  });
  for (const CardContent::Answer& answer : content.answers) {
    auto* button = new QPushButton(answer.caption, frame_);
    button->setObjectName("cardAnswer" + QString::number(buttons_.size()));
    SetUnits(*button, 1.4);
    if (buttons_.empty()) WearButton(*button, LookFor(isDark_).main);
    guard_->Guard(*button);
    // The act may bring up another card in this one's place: it comes when the button is done.
    connect(
        button, &QPushButton::clicked, this,
        [act = answer.act, typed = QPointer(typed_)] { act(typed ? typed->text() : QString()); },
        Qt::QueuedConnection);
    row->addWidget(button);
    buttons_.push_back(button);
  }
  if (typed_ != nullptr && !buttons_.empty()) {
    connect(typed_, &QLineEdit::returnPressed, buttons_.front(), &QPushButton::click);
  }
}

void PageCard::TakeKeyboard() {
  if (typed_ != nullptr) {
    typed_->setFocus();
  } else if (!buttons_.empty()) {
    buttons_.front()->setFocus();
  }
}

bool PageCard::focusNextPrevChild(bool next) {
  std::vector<QWidget*> round(buttons_.begin(), buttons_.end());
  if (typed_ != nullptr) round.insert(round.begin(), typed_);
  const auto at = std::find(round.begin(), round.end(), window()->focusWidget());
  if (round.empty()) return true;
  const std::size_t place = at == round.end() ? 0 : static_cast<std::size_t>(at - round.begin());
  round[(place + (next ? 1 : round.size() - 1)) % round.size()]->setFocus(next ? Qt::TabFocusReason
                                                                               : Qt::BacktabFocusReason);
  return true;
}

void PageCard::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape || buttons_.empty()) return QWidget::keyPressEvent(event);
  buttons_.back()->click();
}

}  // namespace orvane
