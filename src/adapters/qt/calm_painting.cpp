#include "adapters/qt/calm_painting.h"

#include <QElapsedTimer>
#include <QEvent>
#include <algorithm>
#include <utility>

namespace orvane {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

/// Of the time between two paintings, one part in so many goes to the painting.
constexpr int kShare = 30;
/// However dear a painting was, it may have been the first one, or the machine busy.
constexpr milliseconds kLongestRest{100};

}  // namespace

CalmPainting::CalmPainting(QWidget& window) : QObject(&window), window_(window) {
  rest_.setSingleShot(true);
  connect(&rest_, &QTimer::timeout, this, [this] {
    if (!std::exchange(due_, false)) return;
    QEvent request(QEvent::UpdateRequest);
    Paint(request);
  });
  window.installEventFilter(this);
}

bool CalmPainting::eventFilter(QObject* /*watched*/, QEvent* event) {
  // The toolkit gathers what has changed and asks its window once to paint all of it.
  if (event->type() != QEvent::UpdateRequest) return false;
  if (rest_.isActive()) {
    due_ = true;
  } else {
    Paint(*event);
  }
  return true;
}

void CalmPainting::Paint(QEvent& request) {
  ++paintings_;
  QElapsedTimer time;
  time.start();
  static_cast<QObject&>(window_).event(&request);
  const auto cost = std::chrono::duration_cast<milliseconds>(nanoseconds(time.nsecsElapsed()) * kShare);
  rest_.start(std::clamp(cost, kShortestRest, kLongestRest));
}

}  // namespace orvane
