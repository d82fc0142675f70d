#pragma once

#include <QFont>
#include <QString>
#include <QWidget>
#include <functional>
#include <set>
#include <string_view>

#include "platform/controls.h"

namespace orvane {

[[nodiscard]] inline QString ToQt(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// Asks for one call of `show` in the next turn of the loop, however often it is called before: what changes while
/// the station is at work is shown while it waits.
[[nodiscard]] std::function<void()> ShownSoon(QWidget& widget, std::function<void()> show);

/// Name, enabling, visibility and colours: what every widget has of its control. Calls `show` now, and soon whenever
/// the control is shown anew.
void Follow(Control& control, QWidget& widget, std::function<void()> show);

/// Colours of a control that the station has set; those of the desktop otherwise.
void ShowColours(const Control& control, QWidget& widget);

/// Digits and bytes in columns.
[[nodiscard]] QFont FixedPitchFont();

/// The letters of one window that stand for its buttons and options together with Alt. Captions have none of their
/// own; each gets the first of its letters that is free.
class Mnemonics {
 public:
  /// The caption with its letter marked. `before`: the letter that it had under its last caption, or null.
  [[nodiscard]] QString Mark(const QString& caption, QChar& letter);

 private:
  std::set<QChar> taken_;
};

}  // namespace orvane
