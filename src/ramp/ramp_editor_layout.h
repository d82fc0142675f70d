#pragma once

#include "platform/layout.h"

namespace orvane {

struct RampEditorFace;

/// The ramp editor, the same on the main panel and on `frmRampTable`.
[[nodiscard]] Layout LayOut(RampEditorFace& editor);

}  // namespace orvane
