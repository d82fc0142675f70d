#include "bench/virtual_bench.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "bench/bytes_of.h"

namespace orvane::bench::test {
namespace {

using namespace std::chrono_literals;

std::string TextOf(const Bytes& bytes) { return {bytes.begin(), bytes.end()}; }

class OnVirtualTime : public ::testing::Test {
 protected:
  void Open(const char* options = "virtual") {
    bench.emplace(loop, ParseBenchOptions(options));
    SerialControl& serial = bench->Serial();
    serial.setup.rThreshold = 1;
    serial.onComm = [this](int event) {
      EXPECT_EQ(event, kCommReceive);
      received += bench->Serial().Input();
      arrivals.push_back(loop.Now());
    };
    serial.Open();
  }
  std::string Exchange(const char* command, TimePoint limit = 2500ms) {
    received.clear();
    bench->Serial().Output(TextOf(CommandBytes(command)));
    const TimePoint until = loop.Now() + limit;
    while (loop.Now() < until) {
      loop.Yield(until);
    }
    return HexOf(Bytes(received.begin(), received.end()));
  }
  std::unique_ptr<GpibSession> At(int address) {
    auto session = bench->Bus().Open({0, static_cast<Integer>(address), 0});
    return session;
  }

  VirtualEventLoop loop;
  std::optional<VirtualBench> bench;
  std::string received;
  std::vector<TimePoint> arrivals;
};

TEST_F(OnVirtualTime, TheTargetAnswersAtThePaceOfTheLine) {
  Open();
  EXPECT_EQ(Exchange("02 14 20 20 02"), "02 14 00 20 00 00 00 20 02");
  ASSERT_EQ(arrivals.size(), 1u);
  // 53 bytes there, the turn-around, 9 bytes back, each 86.8 us.
  EXPECT_NEAR(static_cast<double>(arrivals[0].count()), (53 + 9) * 86805.0 + 300000, 1000);
}

TEST_F(OnVirtualTime, ALongReplyComesInPieces) {
  Open();
  EXPECT_EQ(Exchange("02 14 53 03 50 02").substr(0, 23), "02 14 00 53 00 00 00 03");
  ASSERT_EQ(arrivals.size(), 4u);
  EXPECT_NEAR(static_cast<double>((arrivals[1] - arrivals[0]).count()), 14 * 86805.0, 1000);
}

TEST_F(OnVirtualTime, TheTargetHasActedWhenAnInstrumentIsAskedThoughTheLoopHadNoTurn) {
  Open();
  const auto testSet = At(1);
  for (const char* line : {"RFAN:CONT:AUTO OFF", "RFAN:MAN:CHAN:SELECTED 30", "CALL:CELL:BAND EGSM"}) {
    testSet->Write(line, 1s);
  }
  bench->Serial().Output(TextOf(CommandBytes("02 14 23 10 02 00 21 02")));
  testSet->Write("MEAS:FTCP?", 1s);
  EXPECT_EQ(testSet->Read(1000, 1s), "+9.91000E+037\n") << "still on its way";
  loop.Spin(5'000'000);
  testSet->Write("MEAS:FTCP?", 1s);
  EXPECT_NE(testSet->Read(1000, 1s), "+9.91000E+037\n");
}

TEST_F(OnVirtualTime, AReadThatFindsNothingTakesItsTimeOut) {
  Open();
  const auto supply = At(2);
  supply->Write("VOLT 4.21", 10s);
  const TimePoint before = loop.Now();
  try {
    (void)supply->Read(1000, 10s);
    FAIL() << "it returned";
  } catch (const GpibError& error) {
    EXPECT_EQ(error.ibsta, 0xC000);
    EXPECT_EQ(error.iberr, 6);
  }
  EXPECT_EQ(loop.Now() - before, 10s);
}

TEST_F(OnVirtualTime, AnAbsentInstrumentFailsAtItsFirstMessage) {
  Open("virtual:fault=supply-absent");
  for (const int address : {2, 9}) {
    const auto nobody = At(address);
    try {
      nobody->Write("*IDN?", 10s);
      FAIL() << address;
    } catch (const GpibError& error) {
      EXPECT_EQ(error.ibsta, 0x8000);
      EXPECT_EQ(error.iberr, 2);
    }
  }
}

TEST_F(OnVirtualTime, AReplyCanBeTakenInParts) {
  Open();
  const auto load = At(5);
  load->Write("*IDN?", 1s);
  EXPECT_EQ(load->Read(6, 1s), "ORVANE");
  EXPECT_EQ(load->Read(100, 1s), ",VIRTUAL LOAD,0,1.0\n");
}

TEST_F(OnVirtualTime, AnUnpluggedDeviceFailsTheNextOutputAndCannotBeOpenedAgain) {
  Open("virtual:fault=unplugged@2");
  EXPECT_NE(Exchange("02 14 20 20 02"), "");
  EXPECT_EQ(Exchange("02 14 20 20 02"), "");
  EXPECT_THROW(bench->Serial().Output("x"), StationFailure);
  EXPECT_FALSE(bench->Serial().PortOpen()) << "the device took its open port with it";
  EXPECT_THROW(bench->Serial().Open(), StationFailure);
}

TEST_F(OnVirtualTime, AnotherUnitIsPutInWithoutTheFaultsAndTheMemoryOfTheFirst) {
  Open("virtual:fault=unplugged@2");
  (void)Exchange("02 14 20 20 02");
  (void)Exchange("02 14 20 20 02");
  EXPECT_THROW(bench->Serial().Output("x"), StationFailure);
  const double gain = bench->Models().Target().Unit().Of(Band::kGsm).rxGainDb;

  BenchOptions next;
  next.seed = 2;
  next.cableLossDb = 1.5;
  bench->Insert(next);
  EXPECT_NE(bench->Models().Target().Unit().Of(Band::kGsm).rxGainDb, gain);
  EXPECT_EQ(bench->Models().Joined().cableLossDb, 1.5);
  bench->Serial().Open();
  EXPECT_NE(Exchange("02 14 20 20 02"), "") << "the fault went with its unit";
}

TEST_F(OnVirtualTime, ALateReplyComesAfterTheStationsWait) {
  Open("virtual:fault=late@1");
  EXPECT_EQ(Exchange("02 14 20 20 02", 2500ms), "");
  while (received.empty()) {
    loop.Yield(kForever);
  }
  EXPECT_GT(loop.Now(), 2600ms);
}

TEST_F(OnVirtualTime, BytesThatComeWhileThePortIsClosedAreLost) {
  Open();
  bench->Serial().Output(TextOf(CommandBytes("02 14 20 20 02")));
  bench->Serial().Close();
  loop.Block(20ms);  // serves nothing: the reply's own event comes behind the next opening
  bench->Serial().Open();
  loop.RunDry();
  EXPECT_EQ(received, "");
}

TEST_F(OnVirtualTime, CountsWhatWentOverItsLinks) {
  Open();
  (void)Exchange("02 14 20 20 02");
  const auto testSet = At(1);
  testSet->Write("*IDN?", 1s);
  (void)testSet->Read(1000, 1s);
  const Bench& models = bench->Models();
  EXPECT_EQ(models.target.Counters().commands, 1u);
  EXPECT_EQ(models.target.Counters().bytesIn, 53u);
  EXPECT_EQ(models.target.Counters().bytesOut, 9u);
  EXPECT_EQ(models.testSet.Counters().commands, 1u);
  EXPECT_EQ(models.testSet.Counters().bytesIn, 6u);
  EXPECT_EQ(models.testSet.Counters().bytesOut, 30u);
}

TEST(VirtualBench, MayGoBeforeItsLoop) {
  VirtualEventLoop loop;
  {
    VirtualBench bench(loop);
    bench.Serial().Open();
    bench.Serial().Output(TextOf(CommandBytes("02 14 20 20 02")));
  }
  EXPECT_NO_THROW(loop.RunDry());
}

}  // namespace
}  // namespace orvane::bench::test
