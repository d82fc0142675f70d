#include "instruments/dialect.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

struct LineCase {
  Purpose purpose;
  const char* value;
  const char* hp8922M;
  const char* hp8960;
};

// Every text, typed from the command sets of the two instruments.
const LineCase kLines[] = {
    {Purpose::Identify, "", "*IDN?", "*IDN?"},
    {Purpose::AnalyserAutoOff, "", "", "RFAN:CONT:AUTO OFF"},
    {Purpose::Reset, "", "*RST", "*RST"},
    {Purpose::Preset, "", "", "SYSTEM:PRESET3"},
    {Purpose::BaseStationLevel, "-85", "RFG:AMPL1 -85dBm", "CALL:CELL:RFG:POWER:AMPLITUDE -85dBm"},
    {Purpose::FixedCellLevel, "", "", "CALL:CELL:POWER:AMPLITUDE -74.5 DBM"},
    {Purpose::BandGsm, "", "CONF:RAD 'E-GSM'", "CALL:CELL:BAND EGSM"},
    {Purpose::BandDcs, "", "CONF:RAD 'DCS1800'", "CALL:CELL:BAND DCS"},
    {Purpose::TestMode, "", "CELL:MODE 'TEST MODE'", "CALL:OPERATING:MODE TEST"},
    {Purpose::DownlinkFunction, "BCHTCH", "", "CALL:FUNCTION:DOWNLINK BCHTCH"},
    {Purpose::AnalyserChannel, "62", "RFAN:ARFC 62", "RFAN:MAN:CHAN:SELECTED 62"},
    {Purpose::TrafficChannel, "40", "CELL:CALL:TCH:ARFCN 40", "CALL:TCH:SEQ 40"},
    {Purpose::BroadcastChannel, "40", "CCON:SCEL1:ARFC 40", "CALL:BCH:SEQ 40"},
    {Purpose::GeneratorFrequency, "943.067", "", "CALL:CELL:RFG:FREQ 943.067MHz"},
    {Purpose::MobileLevel, "19", "CELL:MS:TLEV 19", "CALL:MS:TXL:SEQ 19"},
    {Purpose::ExpectedPower, "32", "RFAN:AMPL1 32", "RFAN:EXP:POWER:SELECTED 32"},
    {Purpose::LossCorrection, "-0.5", "", "SYST:CORR:SGA -0.5"},
    {Purpose::TxPowerContinuousOff, "", "", "SETUP:TXPOWER:CONTINUOUS OFF"},
    {Purpose::TxPowerSamples, "30", "", "SETUP:TXPOWER:COUNT:SNUMBER 30"},
    {Purpose::TxPowerTriggerAuto, "", "", "SETUP:TXPOWER:TRIGGER:SOURCE AUTO"},
    {Purpose::TxPowerTimeOut, "", "", "SETUP:TXPOWER:TIMEOUT:TIME 2;STATE ON"},
    {Purpose::TxPowerInitiate, "", "", "INITIATE:TXPOWER"},
    {Purpose::TxPowerDone, "", "", "INITIATE:DONE?"},
    {Purpose::TxPowerFetch, "", "MEAS:FTCP?", "FETC:TXP:POW?"},
    {Purpose::PowerVersusTimeStart, "", "", "INIT:PVTIME"},
    {Purpose::TxPowerStart, "", "", "INIT:TXP"},
    {Purpose::PhaseErrorSync, "", "", "SETUP:PFERROR:BSYNC MIDAMBLE"},
    {Purpose::PhaseErrorInitiate, "", "", "INITIATE:PFERROR"},
    {Purpose::PhaseErrorFetch, "", "", "FETCH:PFERROR:ALL?"},
};

TEST(Dialect, GivesEachInstrumentItsOwnText) {
  for (const LineCase& line : kLines) {
    EXPECT_EQ(LineFor(Dialect::Hp8922M, line.purpose, line.value), line.hp8922M);
    EXPECT_EQ(LineFor(Dialect::Hp8960, line.purpose, line.value), line.hp8960);
    EXPECT_EQ(LineForEveryKind(line.purpose, line.value), line.hp8960);
  }
  EXPECT_EQ(std::size(kLines), kDialectRows.size());
}

TEST(Dialect, HasNoTextForAnyOtherInstrument) {
  for (const LineCase& line : kLines) EXPECT_EQ(LineFor(Dialect::None, line.purpose, line.value), "");
}

TEST(Dialect, KeepsTheTextOfAnEmptyValue) {
  EXPECT_EQ(LineForEveryKind(Purpose::LossCorrection, ""), "SYST:CORR:SGA ");
}

TEST(Dialect, IsChosenByTheExactNameOfTheTestSet) {
  EXPECT_EQ(DialectOf("HP8922M"), Dialect::Hp8922M);
  EXPECT_EQ(DialectOf("HP8960"), Dialect::Hp8960);
  EXPECT_EQ(DialectOf("4400M(WaveTek)"), Dialect::None);
  EXPECT_EQ(DialectOf("hp8960"), Dialect::None);
  EXPECT_EQ(DialectOf(""), Dialect::None);
}

}  // namespace
}  // namespace orvane
