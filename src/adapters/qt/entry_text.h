#pragma once

#include <QPlainTextEdit>
#include <string>

#include "adapters/qt/hands.h"
#include "platform/controls.h"

namespace orvane {

/// A text box of several lines, the consoles among them. Text added at the end costs no more than itself, and a
/// selection stays where it is; the view follows the end unless somebody has scrolled away from it.
class EntryText final : public QPlainTextEdit {
 public:
  EntryText(TextBox& box, Hands& hands, QWidget* parent);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void insertFromMimeData(const QMimeData* source) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void ShowText();
  /// A text that came by mouse or input method.
  void TakeEdit();
  /// Takes up a box that had this added and may have lost some of its front; false where that is not all.
  bool ShowAppended(const std::string& wanted, const std::string& appended);
  /// Takes that many bytes off the front of what is shown; false where they end within a line end.
  bool DropShownFront(std::size_t bytes);
  /// The view stays at its end when it was there.
  template <class Change>
  void KeepingEnd(Change change);
  /// What stands in the widget, with the line ends of the model.
  [[nodiscard]] std::string Edited() const;
  void TakeEffect(const std::function<void()>& effect, char32_t key);

  TextBox& box_;
  Hands& hands_;
  /// The text as the widget shows it.
  std::string shown_;
  /// What came behind it since.
  std::string appended_;
  bool takingEdit_ = false;
  /// The widget takes up what the box has.
  bool showing_ = false;
};

}  // namespace orvane
