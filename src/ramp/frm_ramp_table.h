#pragma once

#include "platform/panel.h"
#include "ramp/ramp_editor_face.h"

namespace orvane {

/// The ramp editor as a dialog of its own.
struct FrmRampTable : Panel {
  FrmRampTable();

  RampEditorFace editor;
  Button cmdRampTableClose;
};

}  // namespace orvane
