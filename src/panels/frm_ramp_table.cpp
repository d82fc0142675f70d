#include "panels/frm_ramp_table.h"

namespace orvane {

FrmRampTable::FrmRampTable()
    : Panel("frmRampTable", "Ramp Table"),
      editor(*this, "cmdRampTableSet"),
      cmdRampTableClose(*this, "cmdRampTableClose", "Close") {}

}  // namespace orvane
