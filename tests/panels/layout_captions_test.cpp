#include "platform/layout_captions.h"

#include <gmock/gmock.h>

#include "app/layouts_rig.h"

namespace orvane::test {
namespace {

using ::testing::IsEmpty;

class LayoutCaptions : public Layouts {
 protected:
  std::string CaptionOf(const Control& control) {
    for (const auto& [panel, layout] : layouts_) {
      const auto captions = CaptionsBeside(layout);
      if (const auto hit = captions.find(&control); hit != captions.end()) return hit->second;
    }
    return "";
  }
};

TEST_F(LayoutCaptions, AControlIsCalledByWhatStandsBesideIt) {
  const struct {
    const Control& control;
    const char* caption;
  } rows[] = {
      {panels_.main.cboPort, "Target System (Serial): Port Setting"},
      {panels_.main.txtResults, "Results"},
      {panels_.main.txtUserCommand, "User Command:"},
      {panels_.main.updSyncDelay, "Target System (Serial): Sync Delay"},
      {panels_.main.shpTargetOnOff, "Target System (Serial)"},
      {panels_.main.cboFBMode, "Frequency Burst Test: Mode"},
      {panels_.main.cboDELD, "Ramp delay: Down"},
      // A table: the heads of row and column.
      {panels_.autoCal.txtDCSLoss, "Channels and losses: Tx loss (dB), DCS"},
      {panels_.autoCal.txtPowerIndexLevel, "Power Index: dBm"},
      {panels_.autoCal.txtinitialLevel, "Initial Value: Level"},
      // A button that brings about what stands behind it.
      {panels_.baseBand.txtZeroCal, "Battery calibration: ZeroCal"},
      {panels_.txResult.listPeakPower, "Peak Power Measurement"},
      // Buttons of one caption are told apart by where they stand; the others are called by theirs.
      {panels_.main.cmdBeaconSet, "BCH Freq Setting: ARFCN"},
      {panels_.main.Command4, "Target Power Level Setting: Index"},
      {panels_.main.cmdPSReset, "Power Supply (GPIB)"},
      {panels_.autoCal.cmdPowerIndexSet, "Power Index"},
      {panels_.autoCal.cmdRxLossSave, "Cable Loss"},
      {panels_.autoCal.optinitialDCS, "Initial Value"},
      {panels_.autoCal.cmdAutoCalStop, ""},
  };
  for (const auto& row : rows) EXPECT_EQ(CaptionOf(row.control), row.caption) << row.control.Name();
}

TEST_F(LayoutCaptions, NothingThatTakesAnEntryGoesWithoutOne) {
  std::vector<std::string> unspoken;
  for (const auto& [panel, layout] : layouts_) {
    for (const auto& [control, caption] : CaptionsBeside(layout)) {
      const bool takesEntries = control->Kind() == ControlKind::Text || control->Kind() == ControlKind::Combo ||
                                control->Kind() == ControlKind::UpDown || control->Kind() == ControlKind::List;
      if (takesEntries && caption == control->Name()) unspoken.push_back(panel->Name() + "." + caption);
    }
  }
  EXPECT_THAT(unspoken, IsEmpty());
}

TEST_F(LayoutCaptions, NoTwoButtonsSoundAlike) {
  for (const auto& [panel, layout] : layouts_) {
    const auto places = CaptionsBeside(layout);
    std::map<std::string, int> heard;
    for (Control* control : PlacedControls(layout)) {
      if (control->Kind() != ControlKind::Button) continue;
      const auto place = places.find(control);
      const std::string where = place == places.end() ? "" : place->second + ", ";
      // These do nothing, each of them.
      if (where.starts_with("Without effect")) continue;
      const std::string name = where + static_cast<const Button*>(control)->Caption();
      EXPECT_EQ(++heard[name], 1) << panel->Name() << ": " << name;
    }
  }
}

}  // namespace
}  // namespace orvane::test
