#pragma once

#include <array>
#include <string>
#include <string_view>

namespace orvane {

/// What the selected test set understands.
enum class Dialect { Hp8922M, Hp8960, None };

/// By the test set's name: first "HP8922M", then "HP8960"; any other has no dialect.
[[nodiscard]] constexpr Dialect DialectOf(std::string_view testSetKind) {
  if (testSetKind == "HP8922M") return Dialect::Hp8922M;
  if (testSetKind == "HP8960") return Dialect::Hp8960;
  return Dialect::None;
}

/// What a line to the test set is for.
enum class Purpose {
  Identify,         ///< A query.
  AnalyserAutoOff,  ///< Ends a session start.
  Reset,
  Preset,
  BaseStationLevel,  ///< Takes dBm.
  FixedCellLevel,
  BandGsm,
  BandDcs,
  TestMode,
  DownlinkFunction,  ///< Takes "BCHTCH" or "CW".
  AnalyserChannel,   ///< Takes an ARFCN, as the two after it do.
  TrafficChannel,
  BroadcastChannel,
  GeneratorFrequency,  ///< Takes MHz.
  MobileLevel,         ///< Takes a power level.
  ExpectedPower,       ///< Takes dBm.
  LossCorrection,      ///< Takes dB.
  TxPowerContinuousOff,
  TxPowerSamples,  ///< Takes a count.
  TxPowerTriggerAuto,
  TxPowerTimeOut,
  TxPowerInitiate,
  TxPowerDone,   ///< A query.
  TxPowerFetch,  ///< A query; the HP8922M measures by it.
  PowerVersusTimeStart,
  TxPowerStart,
  PhaseErrorSync,
  PhaseErrorInitiate,
  PhaseErrorFetch,  ///< A query.
};

/// One text of a dialect. With a blank at its end it takes a value, and then its unit follows.
struct DialectText {
  std::string_view head;
  std::string_view unit = {};
};

struct DialectRow {
  Purpose purpose;
  DialectText hp8922M;
  DialectText hp8960;
};

/// All that the station writes to a test set, in the order of `Purpose`. An empty head: the dialect has no text.
inline constexpr std::array kDialectRows{
    DialectRow{Purpose::Identify, {"*IDN?"}, {"*IDN?"}},
    DialectRow{Purpose::AnalyserAutoOff, {}, {"RFAN:CONT:AUTO OFF"}},
    DialectRow{Purpose::Reset, {"*RST"}, {"*RST"}},
    DialectRow{Purpose::Preset, {}, {"SYSTEM:PRESET3"}},
    DialectRow{Purpose::BaseStationLevel, {"RFG:AMPL1 ", "dBm"}, {"CALL:CELL:RFG:POWER:AMPLITUDE ", "dBm"}},
    DialectRow{Purpose::FixedCellLevel, {}, {"CALL:CELL:POWER:AMPLITUDE -74.5 DBM"}},
    DialectRow{Purpose::BandGsm, {"CONF:RAD 'E-GSM'"}, {"CALL:CELL:BAND EGSM"}},
    DialectRow{Purpose::BandDcs, {"CONF:RAD 'DCS1800'"}, {"CALL:CELL:BAND DCS"}},
    DialectRow{Purpose::TestMode, {"CELL:MODE 'TEST MODE'"}, {"CALL:OPERATING:MODE TEST"}},
    DialectRow{Purpose::DownlinkFunction, {}, {"CALL:FUNCTION:DOWNLINK "}},
    DialectRow{Purpose::AnalyserChannel, {"RFAN:ARFC "}, {"RFAN:MAN:CHAN:SELECTED "}},
    DialectRow{Purpose::TrafficChannel, {"CELL:CALL:TCH:ARFCN "}, {"CALL:TCH:SEQ "}},
    DialectRow{Purpose::BroadcastChannel, {"CCON:SCEL1:ARFC "}, {"CALL:BCH:SEQ "}},
    DialectRow{Purpose::GeneratorFrequency, {}, {"CALL:CELL:RFG:FREQ ", "MHz"}},
    DialectRow{Purpose::MobileLevel, {"CELL:MS:TLEV "}, {"CALL:MS:TXL:SEQ "}},
    DialectRow{Purpose::ExpectedPower, {"RFAN:AMPL1 "}, {"RFAN:EXP:POWER:SELECTED "}},
    DialectRow{Purpose::LossCorrection, {}, {"SYST:CORR:SGA "}},
    DialectRow{Purpose::TxPowerContinuousOff, {}, {"SETUP:TXPOWER:CONTINUOUS OFF"}},
    DialectRow{Purpose::TxPowerSamples, {}, {"SETUP:TXPOWER:COUNT:SNUMBER "}},
    DialectRow{Purpose::TxPowerTriggerAuto, {}, {"SETUP:TXPOWER:TRIGGER:SOURCE AUTO"}},
    DialectRow{Purpose::TxPowerTimeOut, {}, {"SETUP:TXPOWER:TIMEOUT:TIME 2;STATE ON"}},
    DialectRow{Purpose::TxPowerInitiate, {}, {"INITIATE:TXPOWER"}},
    DialectRow{Purpose::TxPowerDone, {}, {"INITIATE:DONE?"}},
    DialectRow{Purpose::TxPowerFetch, {"MEAS:FTCP?"}, {"FETC:TXP:POW?"}},
    DialectRow{Purpose::PowerVersusTimeStart, {}, {"INIT:PVTIME"}},
    DialectRow{Purpose::TxPowerStart, {}, {"INIT:TXP"}},
    DialectRow{Purpose::PhaseErrorSync, {}, {"SETUP:PFERROR:BSYNC MIDAMBLE"}},
    DialectRow{Purpose::PhaseErrorInitiate, {}, {"INITIATE:PFERROR"}},
    DialectRow{Purpose::PhaseErrorFetch, {}, {"FETCH:PFERROR:ALL?"}},
};

static_assert([] {
  for (std::size_t i = 0; i < kDialectRows.size(); ++i) {
    if (kDialectRows[i].purpose != static_cast<Purpose>(i)) return false;
  }
  return kDialectRows.size() == static_cast<std::size_t>(Purpose::PhaseErrorFetch) + 1;
}());

/// The whole line for a dialect, with the value and its unit where the text takes one. Empty where the dialect has
/// no text; the flows write that empty line all the same.
[[nodiscard]] std::string LineFor(Dialect dialect, Purpose purpose, std::string_view value = {});

/// The same for the lines that some flows write whatever test set is selected: the HP8960's text.
[[nodiscard]] std::string LineForEveryKind(Purpose purpose, std::string_view value = {});

}  // namespace orvane
