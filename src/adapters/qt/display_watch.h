#pragma once

#include <QtGlobal>

namespace orvane {

/// Heeds what the toolkit says of its display, from before the application object is made until the program's end.
/// The toolkit itself aborts a program that finds no display, and exits from one whose display breaks away; neither
/// is left to it.
class DisplayWatch {
 public:
  /// Until `Opened`, a display that cannot be had ends the program with that status and one line on standard error.
  explicit DisplayWatch(int statusWithoutDisplay);
  /// Another status, and another sentence than that it runs without windows.
  void WithoutDisplay(int status, const char* advice);
  DisplayWatch(const DisplayWatch&) = delete;
  DisplayWatch& operator=(const DisplayWatch&) = delete;
  ~DisplayWatch();

  /// The application object is there. A display that breaks away from now on is DisplayGone out of the toolkit's
  /// event dispatcher.
  void Opened();
};

}  // namespace orvane
