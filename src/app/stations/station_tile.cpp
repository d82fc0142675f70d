#include "app/stations/station_tile.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace orvane {
namespace {

using Stands = StationSight::Stands;

/// Of a person at the bench, in the size of ordinary text.
constexpr double kName = 1.6;
constexpr double kState = 2.6;
constexpr double kWords = 1.15;

struct Ground {
  const char* ground;
  const char* text;
};
// Text on its ground has a contrast of 7 to 1 at least.
constexpr Ground kGood{"#0b5a25", "#ffffff"};
constexpr Ground kBad{"#9b1111", "#ffffff"};
constexpr Ground kDoubtful{"#f2b100", "#201800"};
constexpr Ground kGone{"#3a3a3a", "#ffffff"};

const Ground* GroundOf(const StationSight& sight) {
  if (sight.stands == Stands::Ended) return &kGone;
  if (!sight.box.isEmpty()) return &kDoubtful;
  if (sight.verdict == "FAIL") return &kBad;
  if (sight.verdict == "PASS") return sight.isComplete ? &kGood : &kDoubtful;
  return nullptr;
}

QString StateText(const StationSight& sight) {
  switch (sight.stands) {
    case Stands::NotStarted:
      return {};
    case Stands::Starting:
      return StationTile::tr("Starting");
    case Stands::Ended:
      return StationTile::tr("Ended");
    case Stands::InRun:
      return sight.step.isEmpty() ? StationTile::tr("Running") : StepInWords(sight.step);
    case Stands::Idle:
      break;
  }
  if (sight.verdict == "PASS") return sight.isComplete ? StationTile::tr("PASS") : StationTile::tr("PASS?");
  if (sight.verdict == "FAIL") return StationTile::tr("FAIL");
  return sight.verdict.isEmpty() ? StationTile::tr("Ready") : StationTile::tr("No verdict");
}

QString WordsOf(const StationSight& sight) {
  if (sight.stands == Stands::Ended) {
    return (sight.diedInRun ? StationTile::tr("The unit that was under way is not calibrated.") + "\n" : QString()) +
           sight.ending;
  }
  if (!sight.box.isEmpty()) return StationTile::tr("It asks: %1").arg(sight.box);
  return sight.reason;
}

QString ShiftText(const StationSight& sight) {
  if (sight.units == 0) return StationTile::tr("No unit yet");
  const QString passed = StationTile::tr("%1 % passed").arg(sight.YieldPercent());
  return (sight.units == 1 ? StationTile::tr("1 unit") : StationTile::tr("%1 units").arg(sight.units)) + ", " +
         passed;
}

}  // namespace

StationTile::StationTile(int number, QWidget* parent) : QFrame(parent), number_(number) {
  setObjectName("tile" + QString::number(number));
  setFrameShape(QFrame::StyledPanel);
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
  setAutoFillBackground(true);
  new QVBoxLayout(this);
  name_ = AddLabel("tileName", kName, true);
  unit_ = AddLabel("tileUnit", kWords, false);
  state_ = AddLabel("tileState", kState, true);
  progress_ = new QProgressBar(this);
  progress_->setRange(0, kStepsOfARun);
  progress_->setFormat(tr("%v of %m"));
  layout()->addWidget(progress_);
  words_ = AddLabel("tileWords", kWords, false);
  words_->setWordWrap(true);
  words_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  words_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
  again_ = new QPushButton(tr("Start again"), this);
  again_->setObjectName("tileStartAgain");
  layout()->addWidget(again_);
  shift_ = AddLabel("tileShift", kWords, false);
  connect(again_, &QPushButton::clicked, this, [this] { onStartAgain(); });
  Show({});
}

QLabel* StationTile::AddLabel(const char* name, double size, bool isBold) {
  auto* label = new QLabel(this);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  QFont font = label->font();
  font.setPointSizeF(font.pointSizeF() * size);
  font.setBold(isBold);
  label->setFont(font);
  layout()->addWidget(label);
  return label;
}

void StationTile::Show(const StationSight& sight) {
  name_->setText(QString::number(number_) + "  " + sight.name);
  unit_->setText(sight.unit.isEmpty() ? QString() : tr("Unit %1").arg(sight.unit));
  state_->setText(StateText(sight));
  progress_->setVisible(sight.stands == Stands::InRun);
  progress_->setValue(sight.stepsDone);
  words_->setText(WordsOf(sight));
  again_->setVisible(sight.stands == Stands::Ended);
  shift_->setText(ShiftText(sight));
  Colour(sight);
  setAccessibleName(tr("Station %1").arg(name_->text()));
  setAccessibleDescription(QStringList{state_->text(), unit_->text(), words_->text(), shift_->text()}.join(". "));
}

void StationTile::Colour(const StationSight& sight) {
  QPalette colours;
  if (const Ground* ground = GroundOf(sight)) {
    colours.setColor(QPalette::Window, QColor(ground->ground));
    colours.setColor(QPalette::WindowText, QColor(ground->text));
  }
  setPalette(colours);
}

/// Which tile Enter and the space bar touch can be seen on every ground.
void StationTile::paintEvent(QPaintEvent* event) {
  QFrame::paintEvent(event);
  if (!hasFocus()) return;
  constexpr int kWidth = 4;
  QPainter painter(this);
  painter.setPen(QPen(palette().color(QPalette::WindowText), kWidth));
  painter.drawRect(rect().adjusted(kWidth / 2, kWidth / 2, -kWidth / 2, -kWidth / 2));
}

void StationTile::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) onTouched();
}

void StationTile::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space) {
    onTouched();
  } else {
    QFrame::keyPressEvent(event);
  }
}

}  // namespace orvane
