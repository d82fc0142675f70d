#include "app/operator/step_tile.h"

#include <QGridLayout>
#include <utility>

#include "app/operator/page_look.h"
#include "app/operator/unit_verdict.h"
#include "app/station_status.h"

namespace orvane {
namespace {

using State = StepClock::State;

QString MarkOf(State state) {
  switch (state) {
    case State::Waiting:
      return QStringLiteral("\u25cb");
    case State::UnderWay:
      return QStringLiteral("\u25b6");
    case State::Complete:
      return QStringLiteral("\u2713");
    case State::Incomplete:
      return QStringLiteral("!");
  }
  return {};
}

Shade ShadeOf(State state, const PageLook& look) {
  switch (state) {
    case State::Waiting:
      return look.card;
    case State::UnderWay:
      return look.main;
    case State::Complete:
      return look.good;
    case State::Incomplete:
      return look.doubtful;
  }
  return look.card;
}

}  // namespace

QString TookWords(TimePoint span) {
  constexpr double kNanosecondsASecond = 1e9;
  constexpr int kSecondsAMinute = 60;
  const double seconds = static_cast<double>(span.count()) / kNanosecondsASecond;
  if (seconds >= kSecondsAMinute) return StepTile::tr("%1 min").arg(QString::fromStdString(MinutesText(span)));
  return StepTile::tr("%1 s").arg(seconds, 0, 'f', 1);
}

StepTile::StepTile(RunStep step, bool isDark, QWidget* parent) : QFrame(parent), step_(step), isDark_(isDark) {
  setObjectName("step" + QString::fromUtf8(StepName(step).data(), static_cast<qsizetype>(StepName(step).size())));
  mark_ = new QLabel(this);
  name_ = new QLabel(NameOf(step), this);
  words_ = new QLabel(this);
  time_ = new QLabel(this);
  mark_->setObjectName("mark");
  words_->setObjectName("words");
  time_->setObjectName("time");
  SetUnits(*mark_, 2.0);
  SetUnits(*name_, 1.15);
  SetUnits(*words_, 0.9);
  SetUnits(*time_, 1.15);
  for (QLabel* label : {mark_, name_, words_, time_}) label->setTextFormat(Qt::PlainText);
  // No text makes the page wider than its screen.
  for (QLabel* label : {name_, words_}) label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  auto* grid = new QGridLayout(this);
  grid->addWidget(mark_, 0, 0);
  grid->addWidget(time_, 0, 1, Qt::AlignRight);
  grid->addWidget(name_, 1, 0, 1, 2);
  grid->addWidget(words_, 2, 0, 1, 2);
  grid->setColumnStretch(1, 1);
  Wear(*this, LookFor(isDark_).card);
  Show({}, {}, {});
}

void StepTile::Show(const StepClock::Step& step, TimePoint took, const QString& goesOn) {
  if (std::exchange(shown_, step.state) != step.state) Wear(*this, ShadeOf(step.state, LookFor(isDark_)));
  const QString state = [&] {
    switch (step.state) {
      case State::Waiting:
        return tr("waits");
      case State::UnderWay:
        return tr("goes on");
      case State::Complete:
        return tr("complete");
      case State::Incomplete:
        return tr("not complete");
    }
    return QString();
  }();
  mark_->setText(MarkOf(step.state));
  words_->setText(step.state == State::UnderWay && !goesOn.isEmpty() ? goesOn : state);
  time_->setText(step.state == State::Waiting ? QString() : TookWords(took));
  mark_->setAccessibleName(state);
  const QString whole = name_->text() + ": " + words_->text() + (time_->text().isEmpty() ? "" : ", " + time_->text());
  setAccessibleName(whole);
}

}  // namespace orvane
