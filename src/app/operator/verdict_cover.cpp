#include "app/operator/verdict_cover.h"

#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>
#include <algorithm>

#include "app/operator/enter_alone.h"
#include "app/operator/page_look.h"

namespace orvane {
namespace {

/// In a square from 0 to 1.
QPainterPath PathOf(UnitVerdict verdict) {
  QPainterPath path;
  const auto line = [&path](QPointF from, QPointF to) {
    path.moveTo(from);
    path.lineTo(to);
  };
  switch (verdict) {
    case UnitVerdict::Pass:
      path.moveTo(0.12, 0.55);
      path.lineTo(0.4, 0.82);
      path.lineTo(0.9, 0.2);
      break;
    case UnitVerdict::Fail:
      line({0.18, 0.18}, {0.82, 0.82});
      line({0.82, 0.18}, {0.18, 0.82});
      break;
    case UnitVerdict::NotMeasured:
      line({0.5, 0.12}, {0.5, 0.62});
      line({0.5, 0.86}, {0.5, 0.861});
      break;
    case UnitVerdict::OutOfTolerance:
      line({0.5, 0.16}, {0.5, 0.161});
      line({0.15, 0.5}, {0.85, 0.5});
      line({0.15, 0.82}, {0.85, 0.82});
      break;
    case UnitVerdict::None:
      line({0.15, 0.5}, {0.85, 0.5});
      break;
  }
  return path;
}

}  // namespace

/// As large as the room that the words leave.
class VerdictCover::Mark final : public QWidget {
 public:
  explicit Mark(QWidget* parent) : QWidget(parent) {
    setObjectName("verdictMark");
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  }
  void Show(UnitVerdict verdict) {
    verdict_ = verdict;
    update();
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    const int side = std::min(width(), height());
    if (side <= 0) return;
    constexpr double kPenShare = 0.13;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        QPen(palette().color(QPalette::WindowText), kPenShare, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.translate((width() - side) / 2.0, (height() - side) / 2.0);
    painter.scale(side, side);
    painter.drawPath(PathOf(verdict_));
  }

 private:
  UnitVerdict verdict_ = UnitVerdict::None;
};

VerdictCover::VerdictCover(std::function<void()> onNext, QWidget* parent) : QWidget(parent) {
  setObjectName("verdictCover");
  new QVBoxLayout(this);
  layout()->addWidget(mark_ = new Mark(this));
  word_ = Add("verdictWord", 5);
  serial_ = Add("verdictSerial", 2);
  why_ = Add("verdictWhy", 1.5);
  toDo_ = Add("verdictToDo", 1.5);
  details_ = Add("verdictDetails", 1);
  record_ = Add("verdictRecord", 0.9);
  next_ = new QPushButton(tr("Next unit (Enter)"), this);
  next_->setObjectName("verdictNext");
  SetUnits(*next_, 1.4);
  static_cast<QVBoxLayout*>(layout())->addWidget(next_, 0, Qt::AlignHCenter);
  hint_ = Add("verdictHint", 1);
  connect(next_, &QPushButton::clicked, this, [onNext = std::move(onNext)] { onNext(); });
  auto* guard = new EnterAlone(this, [this] {
    hint_->setText(tr("Nothing was taken up. Read the verdict, press Enter alone, then scan the next unit."));
  });
  guard->Guard(*next_);
}

QLabel* VerdictCover::Add(const char* name, double units) {
  auto* label = new QLabel(this);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setAlignment(Qt::AlignCenter);
  label->setWordWrap(true);
  label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  SetUnits(*label, units);
  layout()->addWidget(label);
  return label;
}

void VerdictCover::Show(UnitVerdict verdict, const VerdictWords& words, const QString& serial,
                        const QString& record) {
  constexpr qsizetype kMostDetails = 420;
  const Shade& shade = LookOf(verdict);
  Wear(*this, shade);
  WearButton(*next_, {shade.text, shade.ground});
  mark_->Show(verdict);
  mark_->setAccessibleName(words.word);
  word_->setText(words.word);
  serial_->setText(serial);
  why_->setText(words.why);
  toDo_->setText(words.toDo);
  // The button stays in sight; the report has all.
  details_->setText(words.details.size() <= kMostDetails ? words.details
                                                         : words.details.left(kMostDetails) + u'\u2026');
  record_->setText(record);
  hint_->clear();
  for (QLabel* label : {serial_, details_, record_}) label->setVisible(!label->text().isEmpty());
  setAccessibleName(words.word + ". " + words.why + " " + words.toDo);
}

}  // namespace orvane
