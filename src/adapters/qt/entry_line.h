#pragma once

#include <QLineEdit>
#include <memory>

#include "adapters/qt/hands.h"
#include "platform/controls.h"

namespace orvane {

/// The character that a key stands for: 13 for Enter, 8 for backspace, 0 for none.
[[nodiscard]] char32_t CharacterOf(const QKeyEvent& event);

/// A text box of one line. A key takes its effect in its turn of the station's loop, between the box's key press and
/// its change event; so the next key meets the box as the one before has left it, however fast they come.
class EntryLine final : public QLineEdit {
 public:
  EntryLine(TextBox& box, Hands& hands, QWidget* parent);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void ShowText();
  /// A text that came by mouse or input method.
  void TakeEdit();
  void TakeKey(Operator& hand, QKeyEvent& event);

  TextBox& box_;
  Hands& hands_;
  bool takingKey_ = false;
};

}  // namespace orvane
