#pragma once

#include <QLineEdit>
#include <QPointer>

#include "adapters/qt/panel_window.h"
#include "app/unit_identity.h"

namespace orvane {

/// Where the serial number of the next unit is typed or scanned: Enter ends it and gives the keyboard back to who had
/// it, Escape takes back what was typed. While a run is under way it shows that run's number and takes none. It gets
/// the keyboard by a click alone.
class SerialField final : public QLineEdit {
 public:
  /// `unit` outlives what is shown of it.
  SerialField(UnitIdentity& unit, QWidget* parent);

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void Take();
  void ShowUnit();
  void FollowUnit();
  void GiveKeyboardBack();

  UnitIdentity& unit_;
  /// Who had the keyboard.
  QPointer<QWidget> before_;
  /// The number that the unit had when it was last shown.
  QString shown_;
  bool clicked_ = false;
};

/// From now on the window's title has the serial number, shortened where it is long.
void ShowInTitle(UnitIdentity& unit, PanelWindow& window);

}  // namespace orvane
