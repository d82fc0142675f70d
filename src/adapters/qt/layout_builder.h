#pragma once

#include <QWidget>

#include "adapters/qt/panel_window.h"

namespace orvane {

/// The widgets of a layout, in one widget. The tab key goes through them in the layout's order.
[[nodiscard]] QWidget* BuildLayout(const Layout& layout, WindowContext& context, const ViewMaker& views,
                                   QWidget* parent);

}  // namespace orvane
