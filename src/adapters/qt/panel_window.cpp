#include "adapters/qt/panel_window.h"

#include <QCloseEvent>
#include <QScreen>

#include "adapters/qt/layout_builder.h"
#include "adapters/qt/spoken_widgets.h"

namespace orvane {

PanelWindow::PanelWindow(Panel& panel, const Layout& layout, Hands& hands, const ViewMaker& views)
    : panel_(panel), context_{hands} {
  TellWidgetsByName();
  setObjectName(ToQt(panel.Name()));
  setCentralWidget(BuildLayout(layout, context_, views, this));
  TakeItsSize();
}

void PanelWindow::TakeItsSize() {
  // What would like more room than a small screen has gets it on a larger one, but not all of it.
  constexpr QSize kSmallScreen(1270, 680);
  const QSize room = (screen()->availableSize() * 4 / 5).expandedTo(kSmallScreen);
  resize(sizeHint().boundedTo(room).expandedTo(minimumSizeHint()));
}

void PanelWindow::SetSubject(const QString& subject) {
  subject_ = subject;
  ShowTitle();
}

void PanelWindow::ShowTitle() {
  const QString caption = ToQt(panel_.Caption());
  setWindowTitle(subject_.isEmpty() ? caption : caption + QStringLiteral(" \u2013 ") + subject_);
}

void PanelWindow::FollowPanel() {
  ShowTitle();
  if (!panel_.Visible()) {
    if (isVisible()) place_ = saveGeometry();
    hide();
    return;
  }
  if (!isVisible() && !place_.isEmpty()) restoreGeometry(place_);
  setAttribute(Qt::WA_ShowWithoutActivating, !panel_.TakesKeyboard());
  show();
  raise();
  if (panel_.TakesKeyboard()) activateWindow();
}

void PanelWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  context_.hands.Do([this](Operator& hand) { hand.Close(panel_); });
}

}  // namespace orvane
