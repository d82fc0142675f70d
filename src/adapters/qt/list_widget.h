#pragma once

#include <QListView>

#include "adapters/qt/hands.h"
#include "platform/controls.h"

namespace orvane {

/// A list that shows the rows of its control without a copy of them: it stays fluid with many thousands. It follows
/// its end unless somebody has scrolled away from it. Ctrl+C copies the marked rows.
[[nodiscard]] QListView* MakeList(ListBox& list, Hands& hands, QWidget* parent);

}  // namespace orvane
