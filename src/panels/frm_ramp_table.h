#pragma once

#include "panels/ramp_editor_face.h"
#include "platform/panel.h"

namespace orvane {

/// The ramp editor as a dialog of its own.
struct FrmRampTable : Panel {
  FrmRampTable();

  RampEditorFace editor;
  Button cmdRampTableClose;
};

}  // namespace orvane
