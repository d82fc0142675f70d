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

}  // namespace
}  // namespace orvane::test
