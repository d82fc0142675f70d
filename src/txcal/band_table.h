#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "instruments/dialect.h"
#include "panels/frm_auto_cal.h"
#include "panels/result_panels.h"
#include "state/cal_state.h"
#include "state/run_report.h"
#include "txcal/power_search.h"

namespace orvane {

/// What the searches of the band runs and of the channel steps do beside the numbers.
struct SearchRow {
  SearchNumbers numbers;
  /// Where each pass leaves its row.
  ListBox FrmAutoCalTxResult::*passList;
  /// A Target that does not take the DAC value of a pass ends the run.
  bool dacMustSucceed;
  /// The test set is told its time-out ahead of each measuring.
  bool tellsTimeOut;
  /// Measurings again after an empty reading, each with the power raised in the Target by so many DAC steps.
  int retries;
  Integer retryRaise;
  /// Whether a retry's reading is looked at: it ends the retries then.
  bool retryCanSucceed;
  /// An empty reading that is left over fails the unit; otherwise it goes on as the reading that it is.
  bool emptyFailsUnit;
  /// A reading above 40 fails the unit, by its text as it stands; otherwise it is rounded to a whole number first
  /// and stops the run, but does not fail the unit.
  bool highFailsUnit;
  std::string_view highMessage;
};

/// One line to the test set, and what stands behind its text.
enum class LineValue { None, Channel, Loss, StartLevel, StrongestLevel, Downlink };
struct TestSetLine {
  Purpose purpose;
  LineValue value = LineValue::None;
  /// A console whose echo lags shows the line before in its place.
  bool lags = false;
};

/// Code of a channel segment: neutral, or one of the codes of the measured channels.
inline constexpr Integer kNeutralCode = 128;
/// Table of channel segments that holds the codes.
inline constexpr int kCodeTable = 3;
struct SegmentRow {
  Integer arfcnLimit;
  std::optional<std::size_t> code = std::nullopt;
};

/// All that differs between the two bands of the transmit calibration.
struct BandRow {
  std::string_view name;
  /// Started by hand.
  RunKind kind;
  /// Element of `RFParams.BAND`.
  std::size_t record;
  TextBox FrmAutoCal::*channel;
  TextBox FrmAutoCal::*loss;
  bool CalState::*done;

  // The band run.
  int weakestLevel;
  int strongestLevel;
  /// Table position of level 0.
  int positionOfLevel0;
  /// What "txpw 1" adds to a level.
  int levelWordOffset;
  Decimal4 powerAtStart;
  Purpose bandLine;
  std::string_view mobileLevelHp8922M;
  std::string_view mobileLevelHp8960;
  std::string_view samples;
  /// The console shows some set-up lines as the line before them; the test set gets the right ones.
  bool echoLags;
  /// The run shows the result panel and clears its power lists.
  bool showsResults;
  bool testsRampTable;
  /// The ramp tables go to the Target even if an earlier band run has sent them.
  bool alwaysSendsRamps;
  /// The weakest level is selected before the transmitter comes on.
  bool selectsLevelFirst;
  int pacesAfterTransmitterOn;
  std::string_view powerLevelHead;
  std::string_view peakPowerHead;
  SearchRow levelSearch;

  // The channel step.
  std::array<int, 3> calChannels;
  Decimal4 channelPowerAtStart;
  /// The Target is tuned ahead of the test set too.
  bool tunesFirst;
  int pacesAtChannelStep;
  int pacesAfterChannelLines;
  /// The step begins with neutral codes in both bands' records and with empty lists.
  bool startsNeutral;
  /// A fourth code follows from the second and third, and the step looks after codes that were not set.
  bool derivesFourthCode;
  /// A DAC value below the reference gives codes below the neutral one.
  bool codesBothSides;
  std::string_view channelPeakHead;
  std::string_view channelLevelHead;
  std::array<SegmentRow, 8> segments;
  SearchRow channelSearch;

  // The phase-error check.
  std::span<const TestSetLine> phaseLines;
  /// Shown in the phase rows, whatever the channel box says.
  std::string_view phaseChannel;

  [[nodiscard]] constexpr std::size_t PositionOf(int level) const {
    const int position = level + positionOfLevel0;
    return static_cast<std::size_t>(position);
  }
};

/// Set-up of the test set in a band run, behind the band line. The first three, with the band line, are common to
/// all test sets, which get them empty where their dialect has no text; the others are the HP8960's alone.
inline constexpr std::array kCommonSetUpLines{
    TestSetLine{Purpose::TestMode},
    TestSetLine{Purpose::AnalyserChannel, LineValue::Channel},
    TestSetLine{Purpose::MobileLevel, LineValue::StartLevel},
};
inline constexpr std::array kHp8960SetUpLines{
    TestSetLine{Purpose::PowerVersusTimeStart},
    TestSetLine{Purpose::TxPowerStart, LineValue::None, true},
    TestSetLine{Purpose::BroadcastChannel, LineValue::Channel},
    TestSetLine{Purpose::TrafficChannel, LineValue::Channel, true},
    TestSetLine{Purpose::DownlinkFunction, LineValue::Downlink},
    TestSetLine{Purpose::LossCorrection, LineValue::Loss},
};

inline constexpr std::array kGsmPhaseLines{
    TestSetLine{Purpose::AnalyserChannel, LineValue::Channel},
    TestSetLine{Purpose::BroadcastChannel, LineValue::Channel},
    TestSetLine{Purpose::TrafficChannel, LineValue::Channel},
    TestSetLine{Purpose::LossCorrection, LineValue::Loss},
    TestSetLine{Purpose::FixedCellLevel},
};
inline constexpr std::array kDcsPhaseLines{
    TestSetLine{Purpose::AnalyserChannel, LineValue::Channel},
    TestSetLine{Purpose::TrafficChannel, LineValue::Channel},
    TestSetLine{Purpose::FixedCellLevel},
    TestSetLine{Purpose::MobileLevel, LineValue::StrongestLevel},
};

inline constexpr std::string_view kLevelHigh = " Error in measuring Power.";

/// The channel search is one for both bands, but for the tolerances.
[[nodiscard]] constexpr SearchRow ChannelSearch(const ToleranceTable& tolerances) {
  return {.numbers = {&kChannelSteps, &tolerances, 10},
          .passList = &FrmAutoCalTxResult::listChanCalPeakPower,
          .dacMustSucceed = true,
          .tellsTimeOut = false,
          .retries = 1,
          .retryRaise = 50,
          .retryCanSucceed = false,
          .emptyFailsUnit = false,
          .highFailsUnit = false,
          .highMessage = " Auto Cal is not Completed. Re-try."};
}

inline constexpr BandRow kGsmBand{
    .name = "GSM",
    .kind = RunKind::Gsm,
    .record = 0,
    .channel = &FrmAutoCal::txtARFCN,
    .loss = &FrmAutoCal::txtLoss,
    .done = &CalState::GsmCalDone,
    .weakestLevel = 19,
    .strongestLevel = 5,
    .positionOfLevel0 = -5,
    .levelWordOffset = 0,
    .powerAtStart = 1,
    .bandLine = Purpose::BandGsm,
    .mobileLevelHp8922M = "19",
    .mobileLevelHp8960 = "19",
    .samples = "5",
    .echoLags = true,
    .showsResults = false,
    .testsRampTable = true,
    .alwaysSendsRamps = false,
    .selectsLevelFirst = true,
    .pacesAfterTransmitterOn = 11,
    .powerLevelHead = "lev(GSM)\tLevel\tPow(GSM)",
    .peakPowerHead = "lev(GSM)\tPow(GSM)",
    .levelSearch = {.numbers = {&kGsmSteps, &kGsmTolerances, 11},
                    .passList = &FrmAutoCalTxResult::listPeakPower,
                    .dacMustSucceed = false,
                    .tellsTimeOut = true,
                    .retries = 6,
                    .retryRaise = 10,
                    .retryCanSucceed = false,
                    .emptyFailsUnit = true,
                    .highFailsUnit = true,
                    .highMessage = kLevelHigh},
    .calChannels = {5, 124, 975},
    .channelPowerAtStart = 30,
    .tunesFirst = true,
    .pacesAtChannelStep = 101,
    .pacesAfterChannelLines = 3 + 51,
    .startsNeutral = false,
    .derivesFourthCode = false,
    .codesBothSides = false,
    .channelPeakHead = "lev(GSM)\tPow(GSM)",
    .channelLevelHead = "lev(GSM)CH(GSM)\tPow(GSM)",
    .segments = {{{10, 0}, {114}, {124, 1}, {980, 2}, {1023}, {1023}, {1023}, {1023}}},
    .channelSearch = ChannelSearch(kGsmTolerances),
    .phaseLines = kGsmPhaseLines,
    .phaseChannel = "62",
};

inline constexpr BandRow kDcsBand{
    .name = "DCS",
    .kind = RunKind::Dcs,
    .record = 1,
    .channel = &FrmAutoCal::txtdcsarfcn,
    .loss = &FrmAutoCal::txtDCSLoss,
    .done = &CalState::DcsCalDone,
    .weakestLevel = 15,
    .strongestLevel = 0,
    .positionOfLevel0 = 15,
    .levelWordOffset = 100,
    .powerAtStart = -5,
    .bandLine = Purpose::BandDcs,
    // The HP8922M is left at the level of the GSM run.
    .mobileLevelHp8922M = "19",
    .mobileLevelHp8960 = "15",
    .samples = "30",
    .echoLags = false,
    .showsResults = true,
    .testsRampTable = false,
    .alwaysSendsRamps = true,
    .selectsLevelFirst = false,
    .pacesAfterTransmitterOn = 6,
    .powerLevelHead = "lev(DCS)\tLevel\tAvgPow(DCS)",
    .peakPowerHead = "lev(DCS)\tPow(DCS)",
    .levelSearch = {.numbers = {&kDcsSteps, &kDcsTolerances, 10},
                    .passList = &FrmAutoCalTxResult::listPeakPower,
                    .dacMustSucceed = true,
                    .tellsTimeOut = true,
                    .retries = 6,
                    .retryRaise = 10,
                    .retryCanSucceed = true,
                    .emptyFailsUnit = true,
                    .highFailsUnit = true,
                    .highMessage = kLevelHigh},
    .calChannels = {512, 781, 885},
    .channelPowerAtStart = 27,
    .tunesFirst = false,
    .pacesAtChannelStep = 51,
    .pacesAfterChannelLines = 3 + 101,
    .startsNeutral = true,
    .derivesFourthCode = true,
    .codesBothSides = true,
    .channelPeakHead = "lev(DCS)\tPow(DCS)",
    .channelLevelHead = "lev(DCS)\tCH(DCS)\tPow(DCS)",
    .segments = {{{520, 0}, {770}, {790, 1}, {821, 3}, {885, 2}, {886}, {990}, {1023}}},
    .channelSearch = ChannelSearch(kDcsTolerances),
    .phaseLines = kDcsPhaseLines,
    .phaseChannel = "699",
};

}  // namespace orvane
