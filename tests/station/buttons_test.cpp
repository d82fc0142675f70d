#include <gmock/gmock.h>

#include <set>

#include "virtual_station.h"

namespace orvane::test {
namespace {

// Every other button is answered by somebody.
TEST(Buttons, TheInertOnesAreThese) {
  const std::set<std::string> inert{
      "OrvaneMain.cmdRampDelaySet",
      "frmDownLoad.cmdse",
      "frmDownLoad.cmdEepromTest",
      "frmDownLoad.cmdEepromErase",
      "frmAutoCal.cmdAutoCalAGCStart",
      "frmAutoCal.cmdAutoCalGMAGICStart",
      "frmAutoCal.cmdCompensationChannel",
      "frmAutoCal.cmdCompensationTemperature",
      "frmAutoCal.cmdChannel",
      "frmAutoCal.cmdTempCal",
      "frmAutoCal.cmdRxAllAutoCal",
      "frmMPAutoCal.cmdMPTxAutoCal",
      "frmMPAutoCal.cmdSlopeUse",
      "frmMPAutoCal.cmdDACuse",
  };
  VirtualStation station;
  std::set<std::string> unanswered;
  for (Panel* panel : station.Panels().All()) {
    for (Control* control : panel->Controls()) {
      const auto* button = dynamic_cast<Button*>(control);
      if (button != nullptr && !button->onClick) unanswered.insert(panel->Name() + "." + button->Name());
    }
  }
  EXPECT_EQ(unanswered, inert);
}

}  // namespace
}  // namespace orvane::test
