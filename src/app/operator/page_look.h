#pragma once

#include <QColor>
#include <QPalette>
#include <QWidget>

#include "app/operator/unit_verdict.h"

namespace orvane {

/// Text and what it stands on.
struct Shade {
  QColor ground;
  QColor text;
};

/// The colours of the page, light or dark.
struct PageLook {
  Shade page;
  /// Tiles and cards.
  Shade card;
  /// What is said beside.
  QColor faded;
  /// The button that Enter presses.
  Shade main;
  /// The one that stops.
  Shade stop;
  Shade good;
  Shade doubtful;
  Shade bad;
};

[[nodiscard]] const PageLook& LookFor(bool isDark);
/// The whole page behind a verdict; the same in light and dark.
[[nodiscard]] const Shade& LookOf(UnitVerdict verdict);

/// From 1 to 21 (WCAG 2.1).
[[nodiscard]] double ContrastOf(const QColor& one, const QColor& other);

/// Gives a widget its ground and text, and all that stands on it.
void Wear(QWidget& widget, const Shade& shade);
/// The same for a button.
void WearButton(QWidget& button, const Shade& shade);

/// How large the text of a widget is, in units of the page: one is a line that is read from three metres on a screen
/// of the usual size.
void SetUnits(QWidget& widget, double units);
/// The unit of a page of that size, in pixels.
[[nodiscard]] double UnitOf(QSize page);
/// Gives all that has a size in units beneath `page` its pixels.
void ApplyUnits(QWidget& page);

}  // namespace orvane
