#pragma once

#include <QImage>
#include <optional>
#include <string>
#include <string_view>

#include "program/client.h"
#include "program/programs.h"
#include "screen/x_display.h"

namespace orvane::test {

/// The program with windows on a display, with an operator at mouse and screen. Boxes are his to answer.
class ScreenStation {
 public:
  /// @throws std::runtime_error when its windows do not come.
  /// On the toolkit's platform "offscreen" the display shows nothing of it.
  /// `window` is the one that comes first.
  ScreenStation(XDisplay& display, const Arguments& arguments, const char* platform = "xcb",
                const char* window = "OrvaneMain");

  struct Place {
    QRect area;
    bool enabled = false;
    /// Of a label its text.
    std::string tip{};
  };
  /// Where a widget can be seen and reached now; "OrvaneMain/cmdExit", "box/OK", "OrvaneMain/SSTab1:2".
  [[nodiscard]] std::optional<Place> Find(const std::string& widget) const;
  /// Waits until it can be.
  [[nodiscard]] Place Await(const std::string& widget) const;
  Place AwaitEnabled(const std::string& widget) const;
  void AwaitGone(const std::string& widget) const;
  /// Waits until it can be and takes clicks; then clicks on it.
  void Click(const std::string& widget);
  /// The same with the keyboard going to the window, as a window manager gives it to whoever clicks.
  void ClickToType(const std::string& widget);
  /// The operator's way from the first window up to a station that is ready for a Target.
  void InitializeInstruments();
  /// The same, and the click that takes the Target through the whole road.
  void InitializeAll();

  void Type(std::string_view keys) { display_.Type(keys); }
  [[nodiscard]] QImage Shown(const Place& place) const { return display_.Shown(place.area); }
  /// The automation port of a program that was started with one on its standard input and output.
  [[nodiscard]] Client& Port() { return port_; }
  [[nodiscard]] Child& Process() { return process_; }

 private:
  XDisplay& display_;
  TempFolder folder_;
  Variable displayName_;
  Variable runtimeFolder_;
  Variable platform_;
  Variable plugins_;
  Variable whereabouts_;
  Variable leaks_;
  Child process_;
  Client port_{process_};
};

}  // namespace orvane::test
