#pragma once

#include <QTabWidget>
#include <QWidget>

#include "adapters/qt/appearance.h"
#include "adapters/qt/hands.h"
#include "platform/layout.h"

namespace orvane {

/// What the widgets of one window share.
struct WindowContext {
  Hands& hands;
  Mnemonics letters{};
};

/// The widget of a control, as its place in the layout has it. Frames and tabs are widgets that hold others: their
/// widgets stand empty here.
[[nodiscard]] QWidget* MakeWidget(const Layout& place, WindowContext& context, QWidget* parent);

}  // namespace orvane
