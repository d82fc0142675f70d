#pragma once

#include <QDialog>
#include <map>
#include <memory>

#include "app/desk.h"
#include "platform/event_loop.h"

namespace orvane {

/// The boxes and file dialogs of the desk on the screen, modal to all windows. Enter presses a box's first button,
/// Escape its Cancel, or its only button.
class DeskWindows {
 public:
  DeskWindows(EventLoop& loop, Desk& desk);
  DeskWindows(const DeskWindows&) = delete;
  DeskWindows& operator=(const DeskWindows&) = delete;

  /// Puts what lies open in front of all windows.
  void Raise();
  /// Opens no more.
  void Abandon() { abandoned_ = true; }
  /// Takes away what is there, unanswered, and opens no more until `Wake`, which opens what lies on the desk then.
  void Rest();
  void Wake();

 private:
  void Open(const Desk::OpenBox& open);
  void Open(const Desk::OpenDialog& open);

  EventLoop& loop_;
  Desk& desk_;
  bool abandoned_ = false;
  bool rests_ = false;
  std::map<Desk::Id, std::unique_ptr<QDialog>> open_;
};

/// "(*.epm)|*.epm|All Files(*.*)|*.*;" as the toolkit's dialog has it: one filter for each pair.
[[nodiscard]] QStringList NameFilters(const std::string& filter);

}  // namespace orvane
