#include "panels/orvane_main.h"

#include "platform/gpib.h"
#include "platform/number_items.h"

namespace orvane {

OrvaneMain::OrvaneMain()
    : Panel("OrvaneMain", ""),
      cboPrimaryAddress(*this, "cboPrimaryAddress", "1", NumberItems(0, 30)),
      cboTimeOut(*this, "cboTimeOut", "10s", GpibTimeOutTexts()) {}

}  // namespace orvane
