// What a profile sets on the panels as the station starts.

#include "app/profile/panel_settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "station/virtual_station.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Applies one setting after the other, with its line as its place.
std::vector<std::string> Told(VirtualStation& station,
                              const std::vector<std::pair<std::string, std::string>>& values) {
  std::vector<PanelSetting> settings;
  for (const auto& [name, text] : values) {
    settings.push_back({name, text, "bench.toml:" + std::to_string(settings.size() + 1)});
  }
  std::vector<std::string> told;
  Apply(settings, station.Panels(), station.station.Nest(), [&](const std::string& text) { told.push_back(text); });
  return told;
}

TEST(PanelSettings, StandOnTheirControlsAndInWhatTheyStandFor) {
  VirtualStation station;
  EXPECT_THAT(Told(station, {{"port", "COM3"},
                             {"target", "QM420"},
                             {"pace", "35000"},
                             {"dialect", "HP8922M"},
                             {"test_set_address", "7"},
                             {"test_set_time_out", "3s"},
                             {"supply_address", "8"},
                             {"supply_time_out", "1s"},
                             {"load_address", "9"},
                             {"load_time_out", "30s"},
                             {"tx_loss_gsm", "-1.2"},
                             {"tx_loss_dcs", "-1.3"},
                             {"rx_loss_gsm", "-1.4"},
                             {"rx_loss_dcs", "-1.55"},
                             {"voltage_loss", "0.03"},
                             {"tolerance", "0.2"},
                             {"channel_calibration", "true"},
                             {"save_mode", "EEPROMFile"},
                             {"auto_save", "false"},
                             {"use_loader", "false"}}),
              IsEmpty());
  StationPanels& panels = station.Panels();
  EXPECT_EQ(panels.main.cboPort.Text(), "COM3");
  EXPECT_EQ(panels.main.cboTarget.Text(), "QM420");
  EXPECT_EQ(panels.main.txtSyncDelay.Text(), "35000");
  EXPECT_EQ(panels.main.cboInstrumentList.Text(), "HP8922M");
  EXPECT_EQ(panels.main.cboPrimaryAddress.Text(), "7");
  EXPECT_EQ(panels.main.cboTimeOut.Text(), "3s");
  EXPECT_EQ(panels.baseBand.supply.primAddress.Text(), "8");
  EXPECT_EQ(panels.baseBand.supply.timeOut.Text(), "1s");
  EXPECT_EQ(panels.baseBand.load.primAddress.Text(), "9");
  EXPECT_EQ(panels.baseBand.load.timeOut.Text(), "30s");
  EXPECT_EQ(panels.autoCal.txtLoss.Text(), "-1.2");
  EXPECT_EQ(panels.autoCal.txtDCSLoss.Text(), "-1.3");
  EXPECT_EQ(panels.autoCal.txtRxCableLossGSM.Text(), "-1.4");
  EXPECT_EQ(panels.autoCal.txtRxCableLossDCS.Text(), "-1.55");
  EXPECT_EQ(panels.main.txtVoltageLoss.Text(), "0.03");
  EXPECT_EQ(panels.baseBand.txtVoltageLoss.Text(), "0.03") << "the main panel's box is copied on";
  EXPECT_EQ(panels.autoCal.txtErrorRate.Text(), "0.2");
  EXPECT_TRUE(panels.autoCal.optChanCal.Selected());
  EXPECT_EQ(station.State().cal.SaveMode, "EEPROMFile");
  EXPECT_FALSE(panels.autoCal.chkAutoSaveMode.Checked());
  EXPECT_TRUE(panels.autoCal.cmdAutoCalResultSave.Enabled()) << "a click of Auto frees the button";
  EXPECT_TRUE(panels.baseBand.optLoaderDisuse.Selected());
}

/// The value that a row's comment shows is the one that a station has of which nothing is wished.
TEST(PanelSettings, TheUsualValuesAreThoseOfAStationThatStarts) {
  VirtualStation station;
  const auto losses = {"tx_loss_gsm", "tx_loss_dcs", "rx_loss_gsm", "rx_loss_dcs", "voltage_loss"};
  for (const PanelRow& row : PanelRows()) {
    if (std::find(losses.begin(), losses.end(), row.name) != losses.end()) continue;  // Cable.loss has them.
    if (row.control != nullptr) row.control(station.Panels()).Owner().Touch();
    int changes = 0;
    for (Panel* panel : station.Panels().All()) {
      for (Control* control : panel->Controls())
        control->changed.Connect([&changes, control] {
          // Picking an entry shows a list anew, also the one that stands there.
          if (control->Kind() != ControlKind::Combo) ++changes;
        });
    }
    const auto* combo =
        row.control == nullptr ? nullptr : dynamic_cast<const ComboBox*>(&row.control(station.Panels()));
    EXPECT_EQ(combo == nullptr ? row.usual : combo->Text(), row.usual) << row.name;
    EXPECT_THAT(Told(station, {{std::string(row.name), std::string(row.usual)}}), IsEmpty());
    EXPECT_EQ(changes, 0) << row.name;
  }
}

TEST(PanelSettings, AreAppliedInTheirOwnOrderAndTouchNoOtherPanel) {
  VirtualStation station;
  std::vector<std::string> changed;
  for (Panel* panel : station.Panels().All()) {
    for (Control* control : panel->Controls()) {
      control->changed.Connect([&changed, control] { changed.push_back(control->Name()); });
    }
  }
  ASSERT_FALSE(station.Panels().mpAutoCal.Created());
  Told(station, {{"tolerance", "0.2"}, {"pace", "35000"}, {"port", "COM2"}});
  EXPECT_THAT(changed, ElementsAre("cboPort", "txtSyncDelay", "txtErrorRate"));
  EXPECT_FALSE(station.Panels().mpAutoCal.Created());
}

TEST(PanelSettings, AnActThatIsRefusedIsToldWithItsPlace) {
  VirtualStation station;
  station.Panels().main.txtSyncDelay.SetEnabled(false);
  EXPECT_THAT(Told(station, {{"port", "COM2"}, {"pace", "35000"}}),
              ElementsAre("bench.toml:2: pace: txtSyncDelay is disabled."));
  EXPECT_EQ(station.Panels().main.cboPort.Text(), "COM2") << "the others stand";

  station.Panels().autoCal.txtErrorRate.onChange = [&] { station.Panels().autoCal.txtErrorRate.SetText("0.1"); };
  EXPECT_THAT(Told(station, {{"tolerance", "0.2"}}),
              ElementsAre("bench.toml:1: tolerance: the station does not take 0.2; it has 0.1."));
}

TEST(PanelSettings, ARunGoesByThem) {
  bench::BenchOptions twoDb;
  twoDb.cableLossDb = 1;
  VirtualStation station(twoDb);
  Told(station, {{"tx_loss_gsm", "-1"}, {"tx_loss_dcs", "-1"}, {"rx_loss_gsm", "-1"}, {"rx_loss_dcs", "-1"}});
  station.TakeTargetThrough();
  EXPECT_EQ(station.Concluded(), Verdict::Pass);
  EXPECT_EQ(station.State().rf.RFParams.BAND[0].tx_Level[5].apc, 584) << "as with a Cable.loss of that cable";
}

}  // namespace
}  // namespace orvane::test
