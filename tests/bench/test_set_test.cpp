#include "bench/test_set.h"

#include <gtest/gtest.h>

#include "bench/bench.h"

namespace orvane::bench::test {
namespace {

struct Instruments {
  Fixture fixture;
  TestSet testSet{fixture, 1};
  Supply supply{fixture};
  Load load;
};

std::string Errors(auto& instrument) {
  std::string all;
  for (;;) {
    const std::string error = instrument.Execute("SYST:ERR?").text.value();
    if (error == "+0,\"No error\"") {
      return all;
    }
    all += error + "\n";
  }
}

TEST(TestSet, UnderstandsEveryLineOfBothDialects) {
  const char* const lines[] = {"*IDN?",
                               "*RST",
                               "SYSTEM:PRESET3",
                               "RFAN:CONT:AUTO OFF",
                               "RFG:AMPL1 -85dBm",
                               "CALL:CELL:RFG:POWER:AMPLITUDE -85dBm",
                               "RFG:AMPL1 -74dBm",
                               "CALL:CELL:RFG:POWER:AMPLITUDE -74dBm",
                               "CALL:CELL:POWER:AMPLITUDE -74.5 DBM",
                               "CONF:RAD 'E-GSM'",
                               "CALL:CELL:BAND EGSM",
                               "CONF:RAD 'DCS1800'",
                               "CALL:CELL:BAND DCS",
                               "CELL:MODE 'TEST MODE'",
                               "CALL:OPERATING:MODE TEST",
                               "CALL:FUNCTION:DOWNLINK BCHTCH",
                               "CALL:FUNCTION:DOWNLINK CW",
                               "RFAN:ARFC 62",
                               "RFAN:MAN:CHAN:SELECTED 62",
                               "CALL:BCH:SEQ 62",
                               "CALL:TCH:SEQ 62",
                               "CELL:CALL:TCH:ARFCN 40",
                               "CCON:SCEL1:ARFC 40",
                               "CALL:CELL:RFG:FREQ 943.067MHz",
                               "CELL:MS:TLEV 19",
                               "CALL:MS:TXL:SEQ 19",
                               "RFAN:AMPL1 32",
                               "RFAN:EXP:POWER:SELECTED 32",
                               "SYST:CORR:SGA -0.5",
                               "SETUP:TXPOWER:CONTINUOUS OFF",
                               "SETUP:TXPOWER:COUNT:SNUMBER 30",
                               "SETUP:TXPOWER:COUNT:SNUMBER 5",
                               "SETUP:TXPOWER:TRIGGER:SOURCE AUTO",
                               "SETUP:TXPOWER:TIMEOUT:TIME 2;STATE ON",
                               "MEAS:FTCP?",
                               "INITIATE:TXPOWER",
                               "INITIATE:DONE?",
                               "FETC:TXP:POW?",
                               "INIT:PVTIME",
                               "INIT:TXP",
                               "SETUP:PFERROR:BSYNC MIDAMBLE",
                               "INITIATE:PFERROR",
                               "FETCH:PFERROR:ALL?"};
  Instruments on;
  for (const std::string line : lines) {
    EXPECT_EQ(on.testSet.Execute(line).text.has_value(), line.ends_with('?')) << line;
    EXPECT_EQ(Errors(on.testSet), "") << line;
  }
}

struct ErrorCase {
  const char* line;
  const char* error;
};

TEST(TestSet, QueuesWhatItCannotFollow) {
  const ErrorCase cases[] = {
      {"", ""},
      {"   ", ""},
      {"NO:SUCH:HEADER 1", "-113,\"Undefined header\"\n"},
      {"CALL:TCH", "-113,\"Undefined header\"\n"},
      {"INITI:TXP", "-113,\"Undefined header\"\n"},
      {"SYST:CORR:SGA ", "-109,\"Missing parameter\"\n"},
      {"CALL:FUNCTION:DOWNLINK ", "-109,\"Missing parameter\"\n"},
      {"CALL:FUNCTION:DOWNLINK NOISE", "-224,\"Illegal parameter value\"\n"},
      {"CALL:CELL:BAND PCS", "-224,\"Illegal parameter value\"\n"},
      {"CALL:TCH:SEQ 1024", "-222,\"Data out of range\"\n"},
      {"CALL:TCH:SEQ abc", "-104,\"Data type error\"\n"},
      {"SYST:CORR:SGA -0.5 pigs", "-104,\"Data type error\"\n"},
      {"NO:SUCH 1;NOR:THIS 2", "-113,\"Undefined header\"\n-113,\"Undefined header\"\n"},
  };
  Instruments on;
  for (const ErrorCase& row : cases) {
    EXPECT_FALSE(on.testSet.Execute(row.line).text) << row.line;
    EXPECT_EQ(Errors(on.testSet), row.error) << row.line;
  }
}

TEST(TestSet, KeepsAnErrorQueueThatOverflowsAtItsEnd) {
  Instruments on;
  for (int i = 0; i < 25; ++i) {
    (void)on.testSet.Execute("NONSENSE");
  }
  const std::string all = Errors(on.testSet);
  EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 20);
  EXPECT_TRUE(all.ends_with("-350,\"Queue overflow\"\n"));
  (void)on.testSet.Execute("NONSENSE");
  (void)on.testSet.Execute("*CLS");
  EXPECT_EQ(Errors(on.testSet), "");
}

TEST(TestSet, WritesReadingsWithSixDigitsAndAThreeDigitExponent) {
  const std::pair<double, const char*> cases[] = {{31.985, "+3.19850E+001"}, {-0.5, "-5.00000E-001"},
                                                  {0, "+0.00000E+000"},      {9.91e37, "+9.91000E+037"},
                                                  {-12.3, "-1.23000E+001"},  {1e100, "+1.00000E+100"}};
  for (const auto& [value, text] : cases) {
    EXPECT_EQ(ReadingText(value), text);
  }
}

TEST(TestSet, OutlivesLinesOfAnyContent) {
  constexpr std::string_view kParts[] = {"CALL", ":",      "TCH", "SEQ ", "62",   ";", "?",  " ",
                                         "*RST", "-1e999", "dBm", "\xFF", "SYST", "'", "\t", "INIT",
                                         "TXP",  "nan",    ",",   "ERR",  "inf",  "\n"};
  Instruments on;
  Random chance(1, 12);
  for (int i = 0; i < 20000; ++i) {
    std::string line;
    for (int part = static_cast<int>(chance.Uniform(0, 12)); part > 0; --part) {
      line += kParts[static_cast<std::size_t>(chance.Uniform(0, std::size(kParts)))];
    }
    (void)on.testSet.Execute(line);
    EXPECT_GE(on.fixture.generator.levelDbm, -127 - 100) << line;
    EXPECT_LE(on.fixture.generator.levelDbm, -7 + 100) << line;
  }
  (void)on.testSet.Execute("*CLS");
  (void)on.testSet.Execute("*RST");
  EXPECT_EQ(Errors(on.testSet), "");
  EXPECT_EQ(on.testSet.Execute("FETC:TXP:POW?").text, "+9.91000E+037");
}

TEST(TestSet, SaysWhichMeasurementIsDone) {
  Instruments on;
  EXPECT_EQ(on.testSet.Execute("INITIATE:DONE?").text, "NONE");
  (void)on.testSet.Execute("INITIATE:TXPOWER");
  EXPECT_EQ(on.testSet.Execute("INITIATE:DONE?").text, "TXP");
}

TEST(TestSet, MeasuresPhaseInFourFields) {
  Instruments on;
  (void)on.testSet.Execute("INITIATE:PFERROR");
  EXPECT_EQ(on.testSet.Execute("FETCH:PFERROR:ALL?").text, "1,9.91E+37,9.91E+37,9.91E+37") << "no burst";
  on.fixture.uplink = Burst{30, 30, 1.5, 4.2, -12};
  (void)on.testSet.Execute("INITIATE:PFERROR");
  const std::string reply = on.testSet.Execute("FETCH:PFERROR:ALL?").text.value();
  EXPECT_TRUE(reply.starts_with("0,1.")) << reply;
  EXPECT_EQ(std::count(reply.begin(), reply.end(), ','), 3) << reply;
  EXPECT_EQ(on.testSet.Execute("FETCH:PFERROR:ALL?").text, reply) << "a fetch measures nothing anew";
}

TEST(TestSet, GeneratesOnTheChannelOrOnAFrequencyAsItsFunctionSays) {
  Instruments on;
  for (const char* line : {"CALL:BCH:SEQ 40", "CALL:CELL:RFG:POWER:AMPLITUDE -74dBm", "SYST:CORR:SGA -0.5",
                           "CALL:CELL:RFG:FREQ 943.067MHz"}) {
    (void)on.testSet.Execute(line);
  }
  EXPECT_DOUBLE_EQ(on.fixture.generator.frequencyMHz, 943.0);
  EXPECT_DOUBLE_EQ(on.fixture.AtTarget().levelDbm, -74);
  (void)on.testSet.Execute("CALL:FUNCTION:DOWNLINK CW");
  EXPECT_DOUBLE_EQ(on.fixture.generator.frequencyMHz, 943.067);
}

TEST(Supply, GivesWhatItIsToldAndSaysSo) {
  Instruments on;
  for (const char* line : {"VOLT 4.21", "OUTPUT ON"}) {
    EXPECT_FALSE(on.supply.Execute(line).text);
  }
  EXPECT_NEAR(on.fixture.BatteryVolts(), 4.2, 1e-9);
  EXPECT_EQ(on.supply.Execute("VOLT?").text, "+4.21000E+000");
  EXPECT_EQ(on.supply.Execute("OUTP?").text, "1");
  EXPECT_EQ(on.supply.Execute("MEAS:VOLT?").text, "+4.21000E+000");
  EXPECT_EQ(on.supply.Execute("VOLT?;OUTP?").text, "+4.21000E+000;1");
  EXPECT_TRUE(on.supply.Execute("*IDN?").text->starts_with("ORVANE,VIRTUAL SUPPLY"));
  (void)on.supply.Execute("VOLT -1");
  (void)on.supply.Execute("BLOW");
  EXPECT_EQ(Errors(on.supply), "-222,\"Data out of range\"\n-113,\"Undefined header\"\n");
  (void)on.supply.Execute("*RST");
  EXPECT_EQ(on.supply.Execute("OUTP?").text, "0");
}

TEST(Load, SwitchesItsInputAndTellsOfIt) {
  Instruments on;
  EXPECT_EQ(on.load.Execute("INPUT?").text, "1");
  (void)on.load.Execute("INPUT OFF");
  EXPECT_EQ(on.load.Execute("INP?").text, "0");
  (void)on.load.Execute("INPUT MAYBE");
  EXPECT_EQ(on.load.Execute("INPUT?").text, "0");
  EXPECT_EQ(Errors(on.load), "-224,\"Illegal parameter value\"\n");
  (void)on.load.Execute("*RST");
  EXPECT_EQ(on.load.Execute("INPUT?").text, "1");
}

TEST(Load, KeepsCurrentAndResistance) {
  Instruments on;
  (void)on.load.Execute("RES 2000");
  (void)on.load.Execute("CURR 0.1");
  EXPECT_EQ(on.load.Execute("RES?").text, "+2.00000E+003");
  EXPECT_EQ(on.load.Execute("CURR?").text, "+1.00000E-001");
  EXPECT_EQ(Errors(on.load), "");
}

TEST(Instrument, ThrowsAnAnswerAwayThatNobodyTookAndSaysSo) {
  Bench bench({});
  EXPECT_TRUE(bench.testSet.Take("*IDN?"));
  EXPECT_TRUE(bench.testSet.Take("SYST:ERR?"));
  EXPECT_EQ(bench.testSet.TakeReply(), "-410,\"Query INTERRUPTED\"\n");
  EXPECT_EQ(bench.testSet.TakeReply(), std::nullopt);
}

}  // namespace
}  // namespace orvane::bench::test
