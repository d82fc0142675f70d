#pragma once

#include <QWidget>
#include <string_view>

#include "platform/event_loop.h"
#include "platform/panel.h"
#include "state/station_state.h"

namespace orvane {

/// The picture of that name on a panel; null for a name that the panel has not.
[[nodiscard]] QWidget* MakePanelView(Panel& panel, std::string_view name, StationState& state, EventLoop& loop,
                                     QWidget* parent);

}  // namespace orvane
