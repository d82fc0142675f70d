#include "panels/frm_ramp_table_layout.h"

#include "panels/frm_ramp_table.h"
#include "panels/ramp_editor_layout.h"

namespace orvane {

using namespace lay;

Layout LayOut(FrmRampTable& panel) {
  return Column({
      LayOut(panel.editor, Space()).Stretched(),
      Row({Space(), Of(panel.cmdRampTableClose)}),
  });
}

}  // namespace orvane
