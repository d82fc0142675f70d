// What a production road leaves behind, held against the unit: every value is looked for where the product's tables
// put it, and every level is measured again.

#include <gtest/gtest.h>

#include <cmath>

#include "base/text.h"
#include "station/virtual_station.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

/// Types a command line and Enter, as an operator at the main panel.
void Command(VirtualStation& station, const std::string& line) {
  TextBox& box = station.Panels().main.txtUserCommand;
  station.op.Click(box);
  station.op.Type(box, line);
  station.op.Key(box, 13);
  ASSERT_EQ(StatusOf(station.State().reply), 0) << line;
}

/// Measures the unit once more, level by level, as an engineer does with the command line and the test set.
class Remeasuring {
 public:
  explicit Remeasuring(VirtualStation& station) : station_(station), session_(station.bench.Bus().Open({0, 1, 0})) {
    station.bench.Serial().Open();
    Command(station, "tms 1");
    for (const char* line : {"RFAN:CONT:AUTO OFF", "CALL:OPERATING:MODE TEST", "SETUP:TXPOWER:CONTINUOUS OFF",
                             "SYST:CORR:SGA -0.5", "SETUP:TXPOWER:COUNT:SNUMBER 30"}) {
      Write(line);
    }
  }

  double Power(const std::string& band, const std::string& channel, const std::string& levelWord, int dac) {
    Write("CALL:CELL:BAND " + band);
    Write("RFAN:MAN:CHAN:SELECTED " + channel);
    Command(station_, "rfpw 2 " + channel);
    Command(station_, "rfpw 1 " + channel);
    Command(station_, "rfe 2");
    Command(station_, "txpw 1 " + levelWord);
    Command(station_, "txpw 4 " + std::to_string(dac));
    Write("INITIATE:TXPOWER");
    Write("FETC:TXP:POW?");
    return std::stod(session_->Read(1000, 10s));
  }

 private:
  void Write(const std::string& line) { session_->Write(line, 10s); }

  VirtualStation& station_;
  std::unique_ptr<GpibSession> session_;
};

class Road : public testing::TestWithParam<int> {
 protected:
  Road() : station_(static_cast<std::uint64_t>(GetParam())) {
    EXPECT_EQ(station_.TakeTargetThrough(), std::nullopt);
    EXPECT_TRUE(station_.State().report.AllComplete()) << station_.Steps();
  }
  VirtualStation station_;
};

/// Tolerance of the search at a target, with 0.03 dB for what the noise of two measurements and the drift may add.
double ToleranceAt(double targetDbm, double lastThreshold) {
  const double tolerance = targetDbm <= 8 ? 0.2 : targetDbm <= 14 ? 0.15 : targetDbm <= lastThreshold ? 0.1 : 0.05;
  return tolerance + 0.03;
}

TEST_P(Road, EveryLevelHasItsTargetPower) {
  const RFParameter record = station_.State().rf.RFParams;
  Remeasuring remeasuring(station_);
  const int gsmTargets[] = {32, 31, 29, 27, 25, 23, 21, 19, 17, 15, 13, 11, 9, 8, 7};
  for (int level = 5; level <= 19; ++level) {
    const double target = gsmTargets[level - 5];
    const double measured = remeasuring.Power("EGSM", "62", std::to_string(level),
                                              record.BAND[0].tx_Level[static_cast<std::size_t>(level)].apc);
    EXPECT_NEAR(measured, target, ToleranceAt(target, 31)) << "GSM level " << level;
  }
  const int dcsTargets[] = {29, 28, 26, 24, 22, 20, 18, 16, 14, 12, 10, 8, 6, 5, 4, 3};
  for (int level = 0; level <= 15; ++level) {
    const double target = dcsTargets[level];
    const double measured = remeasuring.Power("DCS", "699", std::to_string(level + 100),
                                              record.BAND[1].tx_Level[static_cast<std::size_t>(level)].apc);
    EXPECT_NEAR(measured, target, ToleranceAt(target, 28)) << "DCS level " << level;
  }
}

TEST_P(Road, TheTargetsEepromHoldsTheRecord) {
  const auto eeprom = station_.bench.Models().Target().Kept().Eeprom();
  const auto word = [&](std::size_t at) { return static_cast<Integer>(eeprom[at] | (eeprom[at + 1] << 8)); };
  ASSERT_EQ(eeprom.size(), 1816U);
  for (std::size_t b = 0; b < 2; ++b) {
    const RFParameter::Band& band = station_.State().rf.RFParams.BAND[b];
    const std::size_t block = b * 908;
    EXPECT_EQ(word(block), band.g_magic);
    for (std::size_t i = 0; i < 10; ++i) {
      EXPECT_EQ(word(block + 8 + 4 * i), band.agc_bands[i].upper_bound);
      EXPECT_EQ(static_cast<std::int8_t>(eeprom[block + 10 + 4 * i]), band.agc_bands[i].agc_calib);
      EXPECT_EQ(eeprom[block + 11 + 4 * i], 0);
    }
    for (std::size_t i = 0; i < 32; ++i) {
      EXPECT_EQ(word(block + 92 + 4 * i), band.tx_Level[i].apc);
      EXPECT_EQ(eeprom[block + 94 + 4 * i], band.tx_Level[i].ramp_index);
    }
    for (std::size_t a = 0; a < 4; ++a) {
      for (std::size_t s = 0; s < 8; ++s) {
        const auto& segment = band.chan_cal(static_cast<int>(a), static_cast<int>(s));
        EXPECT_EQ(word(block + 220 + 32 * a + 4 * s), segment.arfcn_limit);
        EXPECT_EQ(word(block + 222 + 32 * a + 4 * s), segment.chan_cal);
      }
    }
    for (std::size_t t = 0; t < 16; ++t) {
      for (std::size_t k = 0; k < 16; ++k) {
        EXPECT_EQ(eeprom[block + 348 + 32 * t + k], band.ramp_tables[t].ramp_up[k]);
        EXPECT_EQ(eeprom[block + 364 + 32 * t + k], band.ramp_tables[t].ramp_down[k]);
      }
    }
    EXPECT_EQ(word(block + 906), 0);
  }
}

TEST_P(Road, TheReceiverIsWithinItsLimitsAndOnItsChannels) {
  const auto& bands = station_.State().rf.RFParams.BAND;
  const int gsm[] = {0, 21, 40, 62, 83, 103, 124};
  const int dcs[] = {512, 574, 636, 700, 760, 822, 885};
  const int egsm[] = {975, 999, 1023};
  for (std::size_t k = 0; k < 7; ++k) {
    EXPECT_EQ(bands[0].agc_bands[k].upper_bound, gsm[k]);
    EXPECT_EQ(bands[1].agc_bands[k].upper_bound, dcs[k]);
  }
  for (std::size_t k = 0; k < 3; ++k) {
    EXPECT_EQ(bands[0].agc_bands[k + 7].upper_bound, egsm[k]);
    EXPECT_EQ(bands[1].agc_bands[k + 7].upper_bound, egsm[k]);
  }
  for (const auto& band : bands) {
    EXPECT_GE(band.g_magic, 171);
    EXPECT_LE(band.g_magic, 191);
  }
  EXPECT_EQ(bands[0].agc_bands[2].agc_calib, 0) << "channel 40 is its band's reference";
  EXPECT_EQ(bands[1].agc_bands[3].agc_calib, 0) << "channel 700 is its band's reference";
}

TEST_P(Road, TheReceiveRowsStandOnTheProductionPanelAndNotInTheView) {
  FrmAutoCalRxResult& view = station_.Panels().rxResult;
  view.Show();
  for (const ListBox* list : {&view.lstRawRxResults, &view.lstConvertedRxResults, &view.lstRxChannelCompensation,
                              &view.lstRxCalChannelBands}) {
    EXPECT_TRUE(list->Items().empty()) << list->Name();
  }
  EXPECT_FALSE(station_.Panels().mpAutoCal.lstMPRxChannelCalResult.Items().empty());
}

TEST_P(Road, FlashTable100HoldsTheTwoCountsOfTheBoxes) {
  const auto& table = station_.bench.Models().Target().Kept().FlashTable();
  const FrmBaseBand& panel = station_.Panels().baseBand;
  EXPECT_EQ("0x0" + HexText(Integer(table[0])), panel.txtCC2CVADC.Text());
  EXPECT_EQ("0x0" + HexText(Integer(table[4])), panel.txtShutDownADC.Text());
  EXPECT_GE(table[0], 619);
  EXPECT_LE(table[0], 631);
  EXPECT_EQ(table[1], 0);
  EXPECT_EQ(table[2], 0);
  EXPECT_EQ(table[3], 0);
  EXPECT_GE(table[4], 489);
  EXPECT_LE(table[4], 503);
}

INSTANTIATE_TEST_SUITE_P(Units, Road, testing::Values(1, 2, 3, 17, 4711));

TEST(SavedFile, HoldsTheRecordOfTheRunInItsLines) {
  VirtualStation station(1);
  station.InitializeInstruments();
  station.Panels().autoCal.Touch();
  station.op.Select(station.Panels().autoCal.optSaveModeEEPROMFile);
  station.dialogs.answers.emplace_back("/out/unit.epm");
  ASSERT_EQ(station.InitializeTarget(), std::nullopt);
  EXPECT_TRUE(station.State().report.AllComplete()) << station.Steps();

  const auto lines = LinesOf(station.files.content["/out/unit.epm"]);
  ASSERT_EQ(lines.size(), 1857U);
  const auto& bands = station.State().rf.RFParams.BAND;
  EXPECT_EQ(lines[377], "BAND(0).g_magic\t=\t" + std::to_string(bands[0].g_magic));
  EXPECT_EQ(lines[1117], "BAND(1).g_magic\t=\t" + std::to_string(bands[1].g_magic));
  EXPECT_EQ(lines[423 + 15], "BAND(0).tx_Level(0).apc (5)\t=\t" + std::to_string(bands[0].tx_Level[5].apc));
  EXPECT_EQ(lines[1163 + 45], "BAND(1).tx_Level(0).apc (15)\t=\t" + std::to_string(bands[1].tx_Level[15].apc));
  EXPECT_EQ(lines[520 + 48],
            "BAND(0).chan_cal(3).chan_cal(0)\t=\t" + std::to_string(bands[0].chan_cal(3, 0).chan_cal));
}

TEST(Repeatability, TheSameUnitGivesTheSameRoadToTheByte) {
  const auto run = [](std::uint64_t seed) {
    VirtualStation station(seed);
    station.TakeTargetThrough();
    return std::tuple(station.journal.Lines(), station.Panels().main.txtResults.Text(), station.loop.Now());
  };
  EXPECT_EQ(run(5), run(5));
  EXPECT_NE(std::get<0>(run(5)), std::get<0>(run(6))) << "units differ by their seed";
}

TEST(TwoStations, InOneProcessDoNotKnowEachOther) {
  VirtualStation first(1);
  VirtualStation second(2);
  first.TakeTargetThrough();
  EXPECT_EQ(first.Concluded(), Verdict::Pass);
  EXPECT_EQ(second.Concluded(), Verdict::None);
  EXPECT_EQ(second.State().tally.commands, 0);
  EXPECT_FALSE(second.Panels().pass.Created());
}

}  // namespace
}  // namespace orvane::test
