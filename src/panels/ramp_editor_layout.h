#pragma once

#include "platform/layout.h"

namespace orvane {

struct RampEditorFace;

/// The ramp editor, the same on the main panel and on `frmRampTable`; `beside` stands at the end of its last line.
[[nodiscard]] Layout LayOut(RampEditorFace& editor, Layout beside);

}  // namespace orvane
