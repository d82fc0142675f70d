#include "app/operator/operator_page.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <utility>

#include "adapters/qt/views/convergence_chart.h"
#include "app/operator/page_look.h"

namespace orvane {
OperatorPage::OperatorPage(Asked asked, SearchTrail& trail, bool isDark) : asked_(std::move(asked)), isDark_(isDark) {
  setObjectName("operatorPage");
  setWindowTitle(tr("ORVANE"));
  setFocusPolicy(Qt::StrongFocus);
  Wear(*this, LookFor(isDark_).page);
  auto* column = new QVBoxLayout(this);
  column->addWidget(MakeHead());
  column->addWidget(MakeUnitRow());
  column->addWidget(MakeSteps());
  auto* below = new QHBoxLayout;
  auto* chart = new ConvergenceChart(trail, this);
  chart->setObjectName("search");
  chart->setFocusPolicy(Qt::NoFocus);
  below->addWidget(chart, 3);
  shift_ = new ShiftBoard(isDark_, this);
  below->addWidget(shift_, 2);
  column->addLayout(below, 1);
  cover_ = new VerdictCover(
      [this] {
        if (onNext_) onNext_();
      },
      this);
  card_ = new PageCard(isDark_, this);
  cover_->hide();
  card_->hide();
  ShowRun({});
}

QPushButton* OperatorPage::MakeButton(const char* name, const QString& caption, double units) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  SetUnits(*button, units);
  return button;
}

QWidget* OperatorPage::MakeHead() {
  auto* head = new QWidget(this);
  auto* row = new QHBoxLayout(head);
  row->setContentsMargins(0, 0, 0, 0);
  bench_ = new QLabel(head);
  bench_->setObjectName("bench");
  bench_->setContentsMargins(8, 0, 8, 0);
  station_ = new QLabel(head);
  station_->setObjectName("station");
  link_ = new QLabel(head);
  link_->setObjectName("link");
  for (QLabel* label : {bench_, station_, link_}) {
    label->setTextFormat(Qt::PlainText);
    SetUnits(*label, 0.9);
    row->addWidget(label);
  }
  station_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  row->setStretchFactor(station_, 1);
  engineer_ = MakeButton("engineer", tr("Engineer"), 0.8);
  auto* exit = MakeButton("exit", tr("Exit"), 0.8);
  connect(engineer_, &QPushButton::clicked, this, [this] { asked_.engineer(); });
  connect(exit, &QPushButton::clicked, this, [this] { asked_.exit(); });
  row->addWidget(engineer_);
  row->addWidget(exit);
  return head;
}

QWidget* OperatorPage::MakeUnitRow() {
  auto* unit = new QWidget(this);
  auto* column = new QVBoxLayout(unit);
  column->setContentsMargins(0, 0, 0, 0);
  auto* row = new QHBoxLayout;
  column->addLayout(row);
  serial_ = new QLineEdit(unit);
  serial_->setObjectName("serial");
  serial_->setAccessibleName(tr("Serial number"));
  serial_->setPlaceholderText(tr("Scan the serial number"));
  SetUnits(*serial_, 2);
  start_ = MakeButton("start", tr("Start (Enter)"), 1.6);
  WearButton(*start_, LookFor(isDark_).main);
  stop_ = MakeButton("stop", tr("Stop (F12)"), 1.6);
  WearButton(*stop_, LookFor(isDark_).stop);
  connect(serial_, &QLineEdit::returnPressed, this, [this] { asked_.start(serial_->text()); });
  connect(start_, &QPushButton::clicked, this, [this] { asked_.start(serial_->text()); });
  connect(stop_, &QPushButton::clicked, this, [this] { asked_.stop(); });
  row->addWidget(serial_, 1);
  row->addWidget(start_);
  row->addWidget(stop_);
  auto* line = new QHBoxLayout;
  column->addLayout(line);
  hint_ = new QLabel(unit);
  hint_->setObjectName("hint");
  hint_->setTextFormat(Qt::PlainText);
  hint_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  elapsed_ = new QLabel(unit);
  elapsed_->setObjectName("elapsed");
  progress_ = new QProgressBar(unit);
  progress_->setObjectName("progress");
  progress_->setAccessibleName(tr("Progress of the run"));
  progress_->setFormat(tr("%v of %m"));
  for (QWidget* widget :
       {static_cast<QWidget*>(hint_), static_cast<QWidget*>(elapsed_), static_cast<QWidget*>(progress_)}) {
    SetUnits(*widget, 1);
  }
  line->addWidget(hint_, 3);
  line->addWidget(elapsed_);
  line->addWidget(progress_, 2);
  return unit;
}

QWidget* OperatorPage::MakeSteps() {
  auto* steps = new QWidget(this);
  auto* row = new QHBoxLayout(steps);
  row->setContentsMargins(0, 0, 0, 0);
  for (const RunStep step : kRunSteps) {
    auto*& tile = steps_.at(static_cast<std::size_t>(step));
    tile = new StepTile(step, isDark_, steps);
    row->addWidget(tile, 1);
  }
  return steps;
}

void OperatorPage::ShowHead(const Head& head) {
  if (bench_->text() != head.bench) {
    bench_->setText(head.bench);
    Wear(*bench_, head.isVirtual ? LookFor(isDark_).doubtful : LookFor(isDark_).main);
  }
  station_->setText(head.station);
  link_->setText(head.link);
  engineer_->setVisible(head.hasEngineer);
}

void OperatorPage::ShowRun(const Run& run) {
  elapsed_->setText(run.elapsed);
  progress_->setVisible(run.of > 0);
  if (run.of > 0) {
    progress_->setMaximum(run.of);
    progress_->setValue(run.done);
  }
  stop_->setToolTip(run.stopWords);
  if (run.isUnderWay) ShowHint(tr("Stop (F12): %1").arg(run.stopWords));
  if (run.isUnderWay && serial_->text() != run.serial) serial_->setText(run.serial);
  stop_->setEnabled(run.isUnderWay);
  if (std::exchange(isRun_, run.isUnderWay) && !run.isUnderWay) {
    serial_->clear();
    ShowHint("");
  }
  if (std::exchange(isBusy_, run.isBusy) == run.isBusy) return;
  serial_->setReadOnly(run.isBusy);
  start_->setEnabled(!run.isBusy);
  GiveKeyboard();
}

void OperatorPage::ShowStep(RunStep step, const StepClock::Step& state, TimePoint took, const QString& goesOn) {
  steps_.at(static_cast<std::size_t>(step))->Show(state, took, goesOn);
}

void OperatorPage::ShowHint(const QString& hint) { hint_->setText(hint); }

void OperatorPage::ShowCard(const std::optional<CardContent>& card) {
  if (card) card_->Show(*card);
  if (card_->isVisibleTo(this) == card.has_value()) {
    if (card && !card_->isAncestorOf(focusWidget())) card_->TakeKeyboard();
    return;
  }
  card_->setVisible(card.has_value());
  card_->raise();
  GiveKeyboard();
}

void OperatorPage::ShowVerdict(const std::optional<Covering>& covering, std::function<void()> onNext) {
  onNext_ = std::move(onNext);
  if (covering == covering_) return;
  covering_ = covering;
  if (covering) cover_->Show(covering->verdict, covering->words, covering->serial, covering->record);
  if (cover_->isVisibleTo(this) == covering.has_value()) return;
  cover_->setVisible(covering.has_value());
  if (covering) ApplyUnits(*this);
  GiveKeyboard();
}

void OperatorPage::GiveKeyboard() {
  if (card_->isVisibleTo(this)) {
    card_->TakeKeyboard();
  } else if (cover_->isVisibleTo(this)) {
    cover_->TakeKeyboard();
  } else if (isBusy_.value_or(false)) {
    // A pedal that is pressed twice must not stop the run that it started.
    setFocus();
  } else {
    serial_->setFocus();
  }
}

void OperatorPage::Lay() {
  ApplyUnits(*this);
  const int margin = static_cast<int>(UnitOf(size()) / 2);
  layout()->setContentsMargins(margin, margin, margin, margin);
  cover_->setGeometry(rect());
  card_->setGeometry(rect());
  cover_->layout()->setContentsMargins(2 * margin, margin, 2 * margin, margin);
}

void OperatorPage::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Lay();
}

/// The station ends by its own question.
void OperatorPage::closeEvent(QCloseEvent* event) {
  event->ignore();
  asked_.exit();
}

}  // namespace orvane
