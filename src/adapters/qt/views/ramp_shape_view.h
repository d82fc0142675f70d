#pragma once

#include <QWidget>

#include "panels/ramp_editor_face.h"

namespace orvane {

/// The burst's rise and fall as the boxes of a ramp editor have them, while they are typed. A box whose text is no
/// whole number leaves a gap.
[[nodiscard]] QWidget* MakeRampShapeView(RampEditorFace& face, QWidget* parent);

}  // namespace orvane
