#include "adapters/qt/calm_painting.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QWindow>
#include <algorithm>

namespace orvane {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

/// Of the time between two paintings, one part in so many goes to the painting.
constexpr int kShare = 30;
/// However dear a painting was, it may have been the first one, or the machine busy.
constexpr milliseconds kLongestRest{100};
/// The same for a painting that no free time had room for: the run waits for that one. Several windows are open.
constexpr int kHeldUpShare = 150;
constexpr milliseconds kLongestPatience{2000};

bool IsOfHands(QEvent::Type type) {
  return type == QEvent::KeyPress || type == QEvent::MouseButtonPress || type == QEvent::MouseButtonRelease ||
         type == QEvent::Wheel;
}

}  // namespace

CalmPainting::CalmPainting(QWidget& window) : QObject(&window), window_(window) {
  patience_.setSingleShot(true);
  connect(&patience_, &QTimer::timeout, this, [this] { Paint(nanoseconds(0)); });
  window.installEventFilter(this);
}

bool CalmPainting::eventFilter(QObject* watched, QEvent* event) {
  if (watched != &window_) {
    if (IsOfHands(event->type())) AnswerHands();
    return false;
  }
  if (event->type() == QEvent::Show) window_.windowHandle()->installEventFilter(this);
  // The toolkit gathers what has changed and asks its window once to paint all of it.
  if (event->type() != QEvent::UpdateRequest) return false;
  if (!patience_.isActive()) patience_.start(milliseconds(heldUp_.remainingTime()) + kPatience);
  return true;
}

void CalmPainting::AnswerHands() {
  rest_ = QDeadlineTimer(0);
  heldUp_ = rest_;
  if (patience_.isActive()) patience_.start(kPatience);
}

void CalmPainting::UseFreeTime(nanoseconds left) {
  if (patience_.isActive() && rest_.hasExpired() && cost_ <= left) Paint(left);
}

void CalmPainting::Paint(nanoseconds left) {
  patience_.stop();
  ++paintings_;
  QElapsedTimer time;
  time.start();
  QEvent request(QEvent::UpdateRequest);
  static_cast<QObject&>(window_).event(&request);
  const nanoseconds cost(time.nsecsElapsed());
  // A dear painting is remembered for a while: the next one may be as dear.
  cost_ = std::max(cost, cost_ * 9 / 10);
  const auto restFor = [&](int share, milliseconds longest) {
    const auto rest = std::chrono::duration_cast<milliseconds>(cost * share);
    return QDeadlineTimer(std::clamp(rest, kShortestRest, longest), Qt::PreciseTimer);
  };
  rest_ = restFor(kShare, kLongestRest);
  heldUp_ = cost <= left ? rest_ : restFor(kHeldUpShare, kLongestPatience);
}

}  // namespace orvane
