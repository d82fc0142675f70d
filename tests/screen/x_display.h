#pragma once

#include <QImage>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "program/child.h"

struct xcb_connection_t;

namespace orvane::test {

/// A display of the test's own: an X server that draws into memory, with a mouse and keys that the test moves.
class XDisplay {
 public:
  /// @throws std::runtime_error when the server does not start.
  explicit XDisplay(QSize size = {1600, 1200});
  XDisplay(const XDisplay&) = delete;
  XDisplay& operator=(const XDisplay&) = delete;
  ~XDisplay();

  /// Whether this machine has such a server.
  [[nodiscard]] static bool Installed();
  /// ":7", as the variable DISPLAY has it.
  [[nodiscard]] const std::string& Name() const { return name_; }

  /// What a window manager does for whoever clicks there: the window gets the keyboard.
  void GiveKeyboard(QPoint at);
  /// Presses a key for each character, which the keyboard has without others.
  void Type(std::string_view keys);
  /// A key that stands for no character, by its X keysym.
  void Press(std::uint32_t symbol);
  void MoveMouse(QPoint to);
  void Click(QPoint at);
  /// Starts a window manager and waits until it has taken over. It goes with the display.
  /// @throws std::runtime_error when it does not.
  void Manage(const std::string& program);
  /// The windows that are seen within that rectangle, each with the frame that a manager has put around it.
  [[nodiscard]] std::set<std::uint32_t> WindowsSeen(QRect area) const;
  /// Puts a window of nobody's over all others there, until it is taken away.
  void Cover(QRect area);
  void Uncover();
  /// What stands on the display within that rectangle.
  [[nodiscard]] QImage Shown(QRect area) const;

  /// The server dies, and everybody's connection to it breaks.
  void Kill();

 private:
  /// The key that has it without others. @throws std::runtime_error for a keyboard without one.
  [[nodiscard]] int KeyOf(std::uint32_t symbol) const;
  void Fake(int event, int detail, QPoint at);

  [[nodiscard]] bool IsManaged() const;

  Child server_;
  std::optional<Child> manager_;
  std::string name_;
  xcb_connection_t* connection_;
  std::uint32_t root_ = 0;
  std::uint32_t cover_ = 0;
};

}  // namespace orvane::test
