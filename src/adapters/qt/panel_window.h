#pragma once

#include <QMainWindow>
#include <functional>
#include <string>

#include "adapters/qt/calm_painting.h"
#include "adapters/qt/control_widgets.h"
#include "platform/layout.h"

namespace orvane {

/// Makes the picture of a layout's View; null for a name that is none of the panel's.
using ViewMaker = std::function<QWidget*(const std::string& name, QWidget* parent)>;

/// The window of a panel, drawn from its controls and its layout. It is shown and hidden as the panel is; its close
/// button is the panel's close operation. It lives as long as the station.
class PanelWindow final : public QMainWindow {
 public:
  PanelWindow(Panel& panel, const Layout& layout, Hands& hands, const ViewMaker& views);

  /// Takes up the panel's caption, and whether it is shown. A panel that is shown again comes to the front, in the
  /// place where its window was, with the keyboard unless it was shown beside somebody's work.
  void FollowPanel();
  /// What the window's title names behind the panel's caption; nothing when empty.
  void SetSubject(const QString& subject);
  /// Paints what has changed, in time that the station has to wait anyhow.
  void UseFreeTime(std::chrono::nanoseconds left) { painting_.UseFreeTime(left); }
  /// The size that the layout asks for, as far as a small screen has it.
  void TakeItsSize();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void ShowTitle();

  Panel& panel_;
  CalmPainting painting_{*this};
  WindowContext context_;
  QByteArray place_;
  QString subject_;
};

}  // namespace orvane
