#include "bench/faults.h"

#include <gtest/gtest.h>

#include <fstream>

#include "bench/bench.h"
#include "bench/bytes_of.h"

namespace orvane::bench::test {
namespace {

const Bytes kTi = CommandBytes("02 14 20 20 02");
const Bytes kRfe0 = CommandBytes("02 14 23 00 00 23 02");
const char* const kTiReply = "02 14 00 20 00 00 00 20 02";

std::vector<std::string> Answers(const char* fault, const std::vector<Bytes>& commands) {
  BenchOptions options;
  options.faults.push_back(ParseFault(fault));
  Bench bench(options);
  std::vector<std::string> answers;
  for (const Bytes& command : commands) {
    const auto sent = bench.target.Receive(command);
    answers.push_back(sent.empty() ? "" : HexOf(sent[0].bytes));
  }
  return answers;
}

using Texts = std::vector<std::string>;

TEST(LineFault, StrikesAtTheStepThatItNames) {
  const std::string ti = kTiReply;
  const std::string rfe = "02 14 00 23 00 00 00 23 02";
  EXPECT_EQ(Answers("silent", {kTi, kTi}), (Texts{"", ""}));
  EXPECT_EQ(Answers("silent@2", {kTi, kTi, kTi}), (Texts{ti, "", ""}));
  EXPECT_EQ(Answers("silent-rfe@2", {kRfe0, kTi, kRfe0, kTi}), (Texts{rfe, ti, "", ti}));
  EXPECT_EQ(Answers("status@2", {kTi, kTi, kTi}), (Texts{ti, "02 14 00 20 00 01 00 21 02", ti}));
  EXPECT_EQ(Answers("status@2+", {kTi, kTi, kTi})[2], "02 14 00 20 00 01 00 21 02");
  EXPECT_EQ(Answers("status-rfe@1/5", {kTi, kRfe0}), (Texts{ti, "02 14 00 23 00 05 00 26 02"}));
  EXPECT_EQ(Answers("short@1", {kTi, kTi}), (Texts{"02 14 00 20 00", ti}));
  EXPECT_EQ(Answers("short@1/2", {kTi}), (Texts{"02 14"}));
  EXPECT_EQ(Answers("garbage@1", {kTi}), (Texts{"A5 A5 A5 " + ti}));
  EXPECT_EQ(Answers("unplugged@2", {kTi, kTi, kTi}), (Texts{ti, "", ""}));
}

TEST(LineFault, LateTakesLongerThanAnyWait) {
  BenchOptions options;
  options.faults.push_back(FaultAt(FaultKind::kLate, 1));
  Bench bench(options);
  EXPECT_EQ(bench.target.Receive(kTi)[0].delay, std::chrono::milliseconds(2600));
  EXPECT_EQ(bench.target.Receive(kTi)[0].delay, kTurnAround);
}

TEST(LineFault, AFailedCommandIsNotCarriedOut) {
  BenchOptions options;
  options.faults.push_back(ParseFault("status-rfe@1"));
  Bench bench(options);
  (void)bench.target.Receive(CommandBytes("02 14 23 10 02 00 21 02"));
  EXPECT_FALSE(bench.Joined().uplink);
}

TEST(UnitFault, ChangesWhatIsMeasured) {
  const auto raw = [](const char* fault, const char* item) {
    BenchOptions options;
    options.faults.push_back(ParseFault(fault));
    Bench bench(options);
    (void)bench.supply.Take("VOLT 4.21;OUTPUT ON");
    const Bytes reply = Unpadded(bench.target.Receive(CommandBytes(item)).at(0).bytes);
    return reply.at(3) + 256 * reply.at(4);
  };
  EXPECT_GT(raw("battery", "02 14 45 1E 00 5B 02"), 631);
  EXPECT_LT(raw("battery/-20", "02 14 45 1E 00 5B 02"), 619);
  EXPECT_LT(raw("charger", "02 14 45 1F 00 5A 02"), 256);
}

std::string Phase(const char* fault) {
  BenchOptions options;
  options.faults.push_back(ParseFault(fault));
  Bench bench(options);
  (void)bench.target.Receive(CommandBytes("02 14 23 10 02 00 21 02"));
  (void)bench.testSet.Take("INITIATE:PFERROR");
  (void)bench.testSet.Take("FETCH:PFERROR:ALL?");
  return bench.testSet.TakeReply().value();
}

TEST(UnitFault, PhaseIsAboveBothLimits) {
  const std::string reply = Phase("phase");
  double rms = 0;
  double peak = 0;
  ASSERT_EQ(std::sscanf(reply.c_str(), "0,%lf,%lf", &rms, &peak), 2) << reply;
  EXPECT_GT(rms, 5);
  EXPECT_GT(peak, 20);
}

TEST(TestSetFault, SpoilsTheReadingThatItNames) {
  const auto readings = [](const char* fault) {
    BenchOptions options;
    options.faults.push_back(ParseFault(fault));
    Bench bench(options);
    Texts texts;
    for (int i = 0; i < 3; ++i) {
      texts.push_back(bench.testSet.Take("FETC:TXP:POW?") ? bench.testSet.TakeReply().value_or("none") : "absent");
    }
    return texts;
  };
  const std::string nothing = "+9.91000E+037\n";
  EXPECT_EQ(readings("testset-empty@2"), (Texts{nothing, "\n", nothing}));
  EXPECT_EQ(readings("testset-empty@2+"), (Texts{nothing, "\n", "\n"}));
  EXPECT_EQ(readings("testset-nan@1"), (Texts{"NAN\n", nothing, nothing}));
  EXPECT_EQ(readings("testset-high@1"), (Texts{"+4.12000E+001\n", nothing, nothing}));
  EXPECT_EQ(readings("testset-silent@2"), (Texts{nothing, "none", "none"}));
  EXPECT_EQ(readings("testset-absent@3"), (Texts{nothing, nothing, "absent"}));
}

TEST(TestSetFault, LeavesIdentificationAlone) {
  BenchOptions options;
  options.faults.push_back(ParseFault("testset-empty"));
  Bench bench(options);
  EXPECT_TRUE(bench.testSet.Take("*IDN?"));
  EXPECT_EQ(bench.testSet.TakeReply(), "ORVANE,VIRTUAL TEST SET,0,1.0\n");
}

TEST(FaultText, IsRefusedWhenItSaysNothingClear) {
  const char* const texts[] = {"",         "nonsense",   "silent@",  "silent@0",    "silent@x",
                               "status/0", "status/128", "silent/1", "status-nope", "testset-silent-txpw",
                               "late/a",   "late/nan",   "@3"};
  for (const char* const text : texts) {
    EXPECT_THROW((void)ParseFault(text), BenchOptionError) << text;
  }
}

TEST(FaultTable, HasOneDescribedRowForEachName) {
  for (const FaultRow& row : FaultTable()) {
    EXPECT_EQ(&RowOf(row.kind), &row) << row.name;
    EXPECT_EQ(ParseFault(row.name).kind, row.kind);
    EXPECT_FALSE(row.description.empty());
  }
}

TEST(FaultTable, StandsInTheGuide) {
  std::ifstream guide(BENCH_GUIDE);
  const std::string text{std::istreambuf_iterator<char>(guide), {}};
  for (const FaultRow& row : FaultTable()) {
    EXPECT_NE(text.find("`" + std::string(row.name) + "`"), std::string::npos) << row.name;
  }
}

TEST(Options, AreReadFromOneText) {
  const BenchOptions options =
      ParseBenchOptions("virtual:seed=42,fault=silent@3,fault=status-txpw@7/5,loss=0.7,lead=0.02,supply=6");
  EXPECT_EQ(options.seed, 42u);
  ASSERT_EQ(options.faults.size(), 2u);
  EXPECT_EQ(options.faults[1].operation, 54);
  EXPECT_EQ(options.faults[1].from, 7u);
  EXPECT_EQ(options.faults[1].value, 5);
  EXPECT_EQ(options.cableLossDb, 0.7);
  EXPECT_EQ(options.supplyAddress, 6);
  EXPECT_EQ(ParseBenchOptions("virtual").seed, 1u);
}

TEST(Options, AreRefusedWithTheirName) {
  const std::pair<const char*, const char*> cases[] = {{"real", "real"},
                                                       {"virtuality", "virtuality"},
                                                       {"virtual:seed=x", "seed=x"},
                                                       {"virtual:colour=red", "colour=red"},
                                                       {"virtual:seed", "seed"},
                                                       {"virtual:", "KEY=VALUE"},
                                                       {"virtual:fault=wrong", "fault=wrong"},
                                                       {"virtual:loss=inf", "loss=inf"},
                                                       {"virtual:lead=nan", "lead=nan"},
                                                       {"virtual:load=31", "load=31"},
                                                       {"virtual:testset=-1", "testset=-1"}};
  for (const auto& [text, named] : cases) {
    try {
      (void)ParseBenchOptions(text);
      ADD_FAILURE() << text;
    } catch (const BenchOptionError& error) {
      EXPECT_NE(std::string(error.what()).find(named), std::string::npos) << error.what();
    }
  }
}

class Store : public ::testing::Test {
 protected:
  void SetUp() override { std::filesystem::remove_all(directory); }
  void TearDown() override { std::filesystem::remove_all(directory); }
  std::filesystem::path directory =
      std::filesystem::temp_directory_path() /
      ("bench-store-" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
};

TEST_F(Store, KeepsTheEepromAtTheCommitAndTheFlashTableAtOnce) {
  {
    BenchOptions options;
    options.store = directory;
    Bench bench(options);
    (void)bench.target.Receive(CommandBytes("02 14 52 03 55 04 02"));
    EXPECT_FALSE(std::filesystem::exists(directory / "eeprom.bin"));
    (void)bench.target.Receive(CommandBytes("02 14 54 01 00 55 02"));
    (void)bench.target.Receive(CommandBytes("02 14 52 64 70 10 02 00 00 00 00 00 00 F0 01 B5 02"));
  }
  EXPECT_EQ(std::filesystem::file_size(directory / "eeprom.bin"), 1816u);
  std::ifstream flash(directory / "flash100.txt");
  const std::string text{std::istreambuf_iterator<char>(flash), {}};
  EXPECT_EQ(text, "0x0270\n0x0000\n0x0000\n0x0000\n0x01F0\n");

  const Memory again(directory);
  EXPECT_EQ(again.Eeprom()[0], 0x55);
  EXPECT_EQ(again.FlashTable()[0], 0x0270);
  EXPECT_EQ(again.FlashTable()[4], 0x01F0);
}

TEST_F(Store, IsRefusedWhenItsFilesAreSomethingElse) {
  std::filesystem::create_directories(directory);
  std::ofstream(directory / "eeprom.bin") << "too short";
  EXPECT_THROW(Memory{directory}, BenchOptionError);
  std::filesystem::remove(directory / "eeprom.bin");
  std::ofstream(directory / "flash100.txt") << "0x0270\nwhat\n";
  EXPECT_THROW(Memory{directory}, BenchOptionError);
}

}  // namespace
}  // namespace orvane::bench::test
