#include "app/windows/front_end.h"

#include <QEvent>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>
#include <algorithm>

#include "app/windows/panel_views.h"

namespace orvane {
namespace {

/// Longer than any wait for a reply: nothing is under way.
constexpr std::chrono::seconds kQuiet{10};

/// What a window manager puts around a window is not known before it has: within this all of the window is on the
/// screen.
constexpr QMargins kFrame(4, 36, 4, 4);

void PlaceInTheMiddle(QWidget& window) {
  const QRect screen = window.screen()->availableGeometry();
  const QRect room = screen.marginsRemoved(kFrame);
  QRect place(QPoint(), window.size().boundedTo(room.size()));
  place.moveCenter(screen.center());
  const int lowest = room.bottom() + 1 - place.height() - kFrame.top();
  window.resize(place.size());
  window.move(place.left(), std::min(place.top(), lowest));
}

/// A verdict grows when it has more to say than the one before, and stays whole on the screen.
class StaysInTheMiddle final : public QObject {
 public:
  explicit StaysInTheMiddle(QWidget& window) : QObject(&window) { window.installEventFilter(this); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Resize) PlaceInTheMiddle(static_cast<QWidget&>(*watched));
    return false;
  }
};

/// A verdict comes up beside whatever the operator is at, and nothing of the station lies over it. Where it has the
/// keyboard, Enter presses its button.
void StandInFront(PanelWindow& window) {
  window.setWindowFlag(Qt::WindowStaysOnTopHint);
  new StaysInTheMiddle(window);
  auto* const button = window.findChild<QPushButton*>(QStringLiteral("Command1"));
  for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
    QObject::connect(new QShortcut(key, &window), &QShortcut::activated, button, &QPushButton::click);
  }
}

}  // namespace

FrontEnd::FrontEnd(EventLoop& loop, Desk& desk, Station& station)
    : loop_(loop),
      hands_(loop, station.Nest(), [&desk] { return desk.Clear(); }),
      deskWindows_(loop, desk),
      state_(station.State()),
      panels_(station.Panels()),
      layouts_(LayOutAll(panels_)) {
  for (const PanelLayout& layout : layouts_) {
    layout.panel->changed.Connect([this, &layout] { Follow(layout); });
  }
}

PanelWindow* FrontEnd::WindowOf(const Panel& panel) const {
  const auto window = windows_.find(&panel);
  return window == windows_.end() ? nullptr : window->second.get();
}

void FrontEnd::UseFreeTime(TimePoint until) {
  if (abandoned_ || rests_) return;
  for (const auto& [panel, window] : windows_) window->UseFreeTime(until - loop_.Now());
  if (until - loop_.Now() > kQuiet) MakeOneAhead();
}

void FrontEnd::MakeOneAhead() {
  for (const PanelLayout& layout : layouts_) {
    if (WindowOf(*layout.panel) != nullptr) continue;
    Make(layout);
    loop_.Post([] {});  // Whatever has come meanwhile is served, then the next one has its turn.
    return;
  }
}

void FrontEnd::Abandon() {
  abandoned_ = true;
  deskWindows_.Abandon();
  for (const auto& [panel, window] : windows_) window->setUpdatesEnabled(false);
}

void FrontEnd::Rest() {
  rests_ = true;
  deskWindows_.Rest();
  for (const auto& [panel, window] : windows_) window->hide();
}

void FrontEnd::Wake() {
  rests_ = false;
  for (const PanelLayout& layout : layouts_) Follow(layout);
  deskWindows_.Wake();
}

void FrontEnd::Follow(const PanelLayout& layout) {
  if (abandoned_ || rests_) return;
  PanelWindow* window = WindowOf(*layout.panel);
  if (layout.panel->Visible()) {
    if (window == nullptr) window = &Make(layout);
    if (placed_.insert(window).second) Place(*window, *layout.panel);
  }
  if (window == nullptr) return;
  window->FollowPanel();
  KeepInFront();
}

bool FrontEnd::IsVerdict(const Panel& panel) const { return &panel == &panels_.fail || &panel == &panels_.pass; }

void FrontEnd::KeepInFront() {
  for (const Panel* verdict : {static_cast<Panel*>(&panels_.fail), static_cast<Panel*>(&panels_.pass)}) {
    if (PanelWindow* window = WindowOf(*verdict); window != nullptr && window->isVisible()) window->raise();
  }
  deskWindows_.Raise();
}

PanelWindow& FrontEnd::Make(const PanelLayout& layout) {
  auto& window = windows_[layout.panel];
  window = std::make_unique<PanelWindow>(*layout.panel, layout.layout, hands_, ViewsOf(*layout.panel));
  const bool isVerdict = IsVerdict(*layout.panel);
  const auto& below = layout.panel == &panels_.main ? belowMain : isVerdict ? belowVerdict : nullptr;
  if (below) window->statusBar()->addWidget(below(window.get()), 1);
  if (isVerdict) StandInFront(*window);
  return *window;
}

void FrontEnd::Place(PanelWindow& window, const Panel& panel) {
  if (IsVerdict(panel)) return PlaceInTheMiddle(window);
  constexpr int kStep = 36;
  const QRect room = window.screen()->availableGeometry().marginsRemoved(kFrame);
  QRect place(QPoint(), window.size().boundedTo(room.size()));
  place.moveTopLeft(room.topLeft() + QPoint(kStep, kStep) * static_cast<int>(placed_.size() - 1));
  if (!room.contains(place)) place.moveBottomRight(room.bottomRight());
  window.resize(place.size());
  // Its frame with it: the bar that a window is moved by stays on the screen.
  window.move(place.topLeft() - QPoint(kFrame.left(), kFrame.top()));
}

ViewMaker FrontEnd::ViewsOf(Panel& panel) {
  return [this, &panel](const std::string& name, QWidget* parent) {
    return MakePanelView(panel, name, state_, loop_, parent);
  };
}

}  // namespace orvane
