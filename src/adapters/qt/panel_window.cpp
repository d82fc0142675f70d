#include "adapters/qt/panel_window.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <algorithm>

#include "adapters/qt/calm_painting.h"
#include "adapters/qt/layout_builder.h"

namespace orvane {
namespace {

// A run writes into its windows far faster than anybody looks, and a reply that comes while one is drawn waits for
// it. So drawing takes a twentieth of the time at most, and what is cheap, a list that is scrolled, stays smooth.
constexpr int kRestPerFrame = 20;
constexpr int kShortestRestMs = 15;
constexpr int kLongestRestMs = 100;

}  // namespace

PanelWindow::PanelWindow(Panel& panel, const Layout& layout, Hands& hands, const ViewMaker& views)
    : panel_(panel), context_{hands} {
  setObjectName(ToQt(panel.Name()));
  new CalmPainting(*this);
  setCentralWidget(BuildLayout(layout, context_, views, this));
  rest_.setSingleShot(true);
  connect(&rest_, &QTimer::timeout, this, [this] {
    if (frameWanted_) QCoreApplication::postEvent(this, new QEvent(QEvent::UpdateRequest));
  });
  TakeItsSize();
}

void PanelWindow::TakeItsSize() {
  // What would like more room than a small screen has gets it from whoever enlarges the window.
  constexpr QSize kSmallScreen(1270, 680);
  resize(sizeHint().boundedTo(kSmallScreen).expandedTo(minimumSizeHint()));
}

bool PanelWindow::event(QEvent* event) {
  if (event->type() != QEvent::UpdateRequest) return QMainWindow::event(event);
  frameWanted_ = rest_.isActive();
  if (frameWanted_) return true;
  QElapsedTimer frame;
  frame.start();
  const bool served = QMainWindow::event(event);
  rest_.start(std::clamp(static_cast<int>(frame.elapsed()) * kRestPerFrame, kShortestRestMs, kLongestRestMs));
  return served;
}

void PanelWindow::FollowPanel() {
  setWindowTitle(ToQt(panel_.Caption()));
  if (!panel_.Visible()) {
    if (isVisible()) place_ = saveGeometry();
    hide();
    return;
  }
  if (!isVisible() && !place_.isEmpty()) restoreGeometry(place_);
  show();
  raise();
  activateWindow();
}

void PanelWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  context_.hands.Do([this](Operator& hand) { hand.Close(panel_); });
}

}  // namespace orvane
