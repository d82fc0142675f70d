#include "app/windows/status_strip.h"

#include <QHBoxLayout>
#include <QPainter>
#include <algorithm>

#include "adapters/qt/appearance.h"

namespace orvane {
namespace {

constexpr std::chrono::milliseconds kLook{100};
/// A reply that takes no longer is no news.
constexpr int kLooksThatAreWaiting = 4;

/// A text that may be longer than there is room: a device's path, the routes of many instruments. Its middle goes,
/// and the whole of it is in its tip. It never widens its window.
class Shortened final : public QLabel {
 public:
  using QLabel::QLabel;

  [[nodiscard]] QSize minimumSizeHint() const override {
    constexpr int kCharacters = 12;
    const QSize whole = QLabel::minimumSizeHint();
    return {std::min(whole.width(), fontMetrics().horizontalAdvance(u'0') * kCharacters), whole.height()};
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    const QString seen = fontMetrics().elidedText(text(), Qt::ElideMiddle, width());
    setToolTip(seen == text() ? QString() : text());
    QPainter(this).drawText(rect(), Qt::AlignVCenter | Qt::TextSingleLine, seen);
  }
};

QString WaitingText() { return StatusStrip::tr("\u2026 Waiting for a reply"); }

void Show(QProgressBar& bar, const std::optional<StationStatus::Progress>& progress) {
  bar.setVisible(progress.has_value());
  if (!progress) return;
  bar.setMaximum(progress->of);
  bar.setValue(progress->done);
}

}  // namespace

StatusStrip::StatusStrip(const StationStatus& status, Surroundings surroundings, QWidget* parent)
    : QWidget(parent), status_(status), surroundings_(std::move(surroundings)) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(4, 0, 4, 0);
  row->setSpacing(14);
  bench_ = Add(new QLabel(this), "statusBench");
  place_ = Add(new Shortened(this), "statusPlace");
  link_ = Add(new QLabel(this), "statusLink");
  // What stands behind it keeps its place when a reply takes long.
  link_->setMinimumWidth(fontMetrics().horizontalAdvance(WaitingText()));
  stage_ = Add(new Shortened(this), "statusStage");
  row->setStretchFactor(stage_, 1);
  elapsed_ = Add(new QLabel(this), "statusElapsed");
  transfer_ = AddBar("statusTransfer", tr("Transfer %v of %m"));
  run_ = AddBar("statusRun", tr("%v of %m"));
  // A bar that comes up moves nothing above.
  setMinimumHeight(run_->sizeHint().height());
  ShowPlace();
  connect(&timer_, &QTimer::timeout, this, &StatusStrip::Look);
  timer_.start(kLook);
  Look();
}

QLabel* StatusStrip::Add(QLabel* label, const char* name) {
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  layout()->addWidget(label);
  return label;
}

void StatusStrip::AddField(QWidget* field) {
  auto* row = static_cast<QHBoxLayout*>(layout());
  row->insertWidget(row->indexOf(place_) + 1, field);
}

QProgressBar* StatusStrip::AddBar(const char* name, const QString& format) {
  auto* bar = new QProgressBar(this);
  bar->setObjectName(name);
  bar->setFormat(format);
  bar->setFixedWidth(fontMetrics().horizontalAdvance(u'0') * 20);
  bar->setVisible(false);
  layout()->addWidget(bar);
  return bar;
}

/// Nobody may take a model's figures for a unit's: the word stands on a ground of its own.
void StatusStrip::ShowPlace() {
  bench_->setText(surroundings_.isVirtual ? tr("VIRTUAL BENCH") : tr("REAL BENCH"));
  bench_->setStyleSheet(surroundings_.isVirtual
                            ? "background: #f2b100; color: #201800; font-weight: 700; padding: 1px 8px;"
                            : "background: #0b5cad; color: #ffffff; font-weight: 700; padding: 1px 8px;");
}

void StatusStrip::ShowLink() {
  const auto state = status_.LinkState();
  looksThatWaited_ = state == StationStatus::Link::Waiting ? looksThatWaited_ + 1 : 0;
  const auto text = [&] {
    switch (state) {
      case StationStatus::Link::Closed:
        return tr("\u25cb Port closed");
      case StationStatus::Link::NoReply:
        return tr("\u2715 No reply");
      case StationStatus::Link::Waiting:
        if (looksThatWaited_ >= kLooksThatAreWaiting) return WaitingText();
        break;
      case StationStatus::Link::Open:
        break;
    }
    return tr("\u25cf Port open");
  };
  link_->setText(text());
}

/// While an instrument is waited for nothing else goes on that could be told.
QString StatusStrip::StageText() const {
  const auto wait = waits_ == nullptr ? std::nullopt : waits_->UnderWay();
  if (!wait || wait->lasts < LongWaits::kUntold) return ToQt(status_.Stage());
  const QString who =
      tr("\u2026 Waiting for the %1 (%2): ").arg(ToQt(status_.InstrumentAt(wait->address))).arg(wait->address);
  const auto seconds = [](TimePoint span) { return QString::number(span / std::chrono::seconds(1)); };
  if (wait->limit < std::chrono::seconds(1)) return who + tr("%1 s").arg(seconds(wait->lasts));
  return who + tr("%1 of %2 s").arg(seconds(wait->lasts), seconds(wait->limit));
}

void StatusStrip::Look() {
  place_->setText(ToQt(surroundings_.Details(status_.Port())));
  ShowLink();
  stage_->setText(StageText());
  const auto elapsed = status_.Elapsed();
  elapsed_->setText(elapsed ? ToQt(MinutesText(*elapsed)) : QString());
  Show(*run_, status_.WholeRun());
  Show(*transfer_, status_.Transfer());
}

}  // namespace orvane
