#include "app/operator/shift_board.h"

#include <QDateTime>
#include <QGridLayout>

#include "adapters/qt/appearance.h"
#include "app/operator/page_look.h"

namespace orvane {
namespace {

QString OutcomeWords(UnitOutcome outcome) {
  switch (outcome) {
    case UnitOutcome::Pass:
      return ShiftBoard::tr("\u2713 PASS");
    case UnitOutcome::NotComplete:
      return ShiftBoard::tr("! not complete");
    case UnitOutcome::Fail:
      return ShiftBoard::tr("\u2715 FAIL");
    case UnitOutcome::NoVerdict:
      return ShiftBoard::tr("\u25cb no result");
  }
  return {};
}

QString WordsOf(const ShiftUnit& unit) {
  const QString clock = QDateTime::fromMSecsSinceEpoch(unit.beganMs).toString("HH:mm");
  return clock + "  " + OutcomeWords(unit.outcome) + "  " + ToQt(unit.serial);
}

constexpr int kColumns = 3;

}  // namespace

ShiftBoard::ShiftBoard(bool isDark, QWidget* parent) : QWidget(parent) {
  setObjectName("shift");
  auto* grid = new QGridLayout(this);
  units_ = AddFigure("shiftUnits", tr("units of this shift"), 0);
  yield_ = AddFigure("shiftYield", tr("passed at once"), 1);
  seconds_ = AddFigure("shiftSeconds", tr("seconds a unit"), 2);
  for (std::size_t i = 0; i < kListed; ++i) {
    auto* row = new QLabel(this);
    row->setObjectName("lastUnit" + QString::number(i));
    row->setTextFormat(Qt::PlainText);
    row->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    SetUnits(*row, 0.85);
    grid->addWidget(row, static_cast<int>(i) + 2, 0, 1, kColumns);
    last_.push_back(row);
  }
  grid->setRowStretch(static_cast<int>(kListed) + 2, 1);
  Wear(*this, LookFor(isDark).card);
}

QLabel* ShiftBoard::AddFigure(const char* name, const QString& caption, int column) {
  auto* grid = static_cast<QGridLayout*>(layout());
  auto* figure = new QLabel(this);
  figure->setObjectName(name);
  SetUnits(*figure, 1.7);
  auto* words = new QLabel(caption, this);
  words->setWordWrap(true);
  words->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  SetUnits(*words, 0.75);
  grid->addWidget(figure, 0, column);
  grid->addWidget(words, 1, column, Qt::AlignTop);
  return figure;
}

void ShiftBoard::Show(const ShiftLog& shift) {
  constexpr double kPercent = 100;
  const auto none = QStringLiteral("\u2013");
  const auto yield = shift.FirstPassYield();
  const auto seconds = shift.SecondsAUnit();
  units_->setText(QString::number(shift.Units()));
  yield_->setText(yield ? QString::number(*yield * kPercent, 'f', 1) + " %" : none);
  seconds_->setText(seconds ? QString::number(*seconds, 'f', 1) : none);
  units_->setAccessibleName(tr("%1 units of this shift").arg(units_->text()));
  yield_->setAccessibleName(tr("%1 passed at once").arg(yield_->text()));
  seconds_->setAccessibleName(tr("%1 seconds a unit").arg(seconds_->text()));
  const auto last = shift.Last(kListed);
  for (std::size_t i = 0; i < last_.size(); ++i) last_[i]->setText(i < last.size() ? WordsOf(last[i]) : QString());
}

}  // namespace orvane
