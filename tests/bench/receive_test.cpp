#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <string>

#include "bench/road.h"

namespace orvane::bench::test {
namespace {

/// A report as the station reads it: the hundredths stand without leading zeros behind the point, so that .03 is .3.
double AsRead(int raw) {
  static constexpr std::array<double, 6> kWeights{0.5, 0.25, 0.125, 0.0625, 0.0312, 0.0156};
  double fraction = 0;
  for (std::size_t bit = 0; bit < kWeights.size(); ++bit) {
    fraction += (raw >> (5 - bit) & 1) != 0 ? kWeights[bit] : 0;
  }
  const std::string text = std::to_string(raw >> 6) + "." + std::to_string(std::lround(fraction * 100));
  return std::stod(text) * 10;
}

/// The receive part of a line's run: one reading above and one below each channel's carrier.
class Receiver : public Road {
 public:
  using Road::Road;

  void SetUp() {
    for (const char* line : {"CALL:OPERATING:MODE TEST", "CALL:FUNCTION:DOWNLINK CW", "CALL:CELL:BAND EGSM",
                             "CALL:CELL:RFG:POWER:AMPLITUDE -74dBm"}) {
      Tell(line);
    }
    (void)Command(52, 1, 40);
    (void)Command(52, 2, 4);
  }
  double TenthsAt(int arfcn) {
    Tell("CALL:TCH:SEQ " + std::to_string(arfcn));
    Tell("CALL:BCH:SEQ " + std::to_string(arfcn));
    (void)Command(48, 2, arfcn);
    (void)Command(48, 1, arfcn);
    const double above = Report(DownlinkMHz(arfcn) + 0.067);
    return std::nearbyint((std::nearbyint(above) + Report(DownlinkMHz(arfcn) - 0.067)) / 2);
  }

 private:
  double Report(double megahertz) {
    std::array<char, 64> line{};
    std::snprintf(line.data(), line.size(), "CALL:CELL:RFG:FREQ %.3fMHz", megahertz);
    Tell(line.data());
    (void)bench.target.Receive(CommandBytes("02 14 23 01 00 22 02"));
    const Bytes reply = Command(36, 1, 2);
    return AsRead(reply.at(6) + 256 * reply.at(7));
  }
};

TEST(GoodUnit, PassesTheReceiveRun) {
  for (std::uint64_t seed = 0; seed < 500; ++seed) {
    Receiver unit(seed);
    unit.SetUp();
    for (const int reference : {40, 700}) {
      const double tenths = unit.TenthsAt(reference);
      const double gain = 2 * std::nearbyint(tenths / 10.0 - 40 + 74);
      EXPECT_GE(gain, 171) << "seed " << seed << " channel " << reference;
      EXPECT_LE(gain, 191) << "seed " << seed << " channel " << reference;
    }
    for (const int arfcn : {0, 124, 512, 885, 975, 1023}) {
      EXPECT_NEAR(unit.TenthsAt(arfcn), 560, 60) << seed;
    }
  }
}

TEST(ReceiverFault, IsOutOfItsLimits) {
  Receiver unit(1, {FaultAt(FaultKind::kReceiver)});
  unit.SetUp();
  EXPECT_LT(2 * std::nearbyint(unit.TenthsAt(40) / 10.0 - 40 + 74), 171);
}

TEST(ReceiverFault, DeadReportsNothing) {
  Receiver unit(1, {FaultAt(FaultKind::kReceiverDead)});
  unit.SetUp();
  (void)unit.bench.target.Receive(CommandBytes("02 14 23 01 00 22 02"));
  EXPECT_EQ(HexOf(unit.Command(36, 1, 2)).substr(6, 23), "01 00 02 00 00 00 27");
}

TEST(Receiver, HearsOnlyItsOwnChannel) {
  Receiver unit(1);
  unit.SetUp();
  const double tuned = unit.TenthsAt(40);
  EXPECT_NEAR(tuned, 560, 60);
  unit.Tell("CALL:CELL:RFG:FREQ 950MHz");
  (void)unit.bench.target.Receive(CommandBytes("02 14 23 01 00 22 02"));
  const Bytes reply = unit.Command(36, 1, 2);
  EXPECT_LT(AsRead(reply.at(6) + 256 * reply.at(7)), tuned - 250);
}

TEST(GoodUnit, PassesTheBatteryWindows) {
  for (std::uint64_t seed = 0; seed < 500; ++seed) {
    Road unit(seed);
    EXPECT_TRUE(unit.bench.supply.Take("OUTPUT ON"));
    for (const auto& [line, lowest, highest] : {std::tuple{"VOLT 4.21", 619, 631}, {"VOLT 3.36", 489, 503}}) {
      EXPECT_TRUE(unit.bench.supply.Take(line));
      for (int round = 0; round < 5; ++round) {
        const Bytes reply = Unpadded(unit.bench.target.Receive(CommandBytes("02 14 45 1E 00 5B 02")).at(0).bytes);
        const int counts = reply.at(3) + 256 * reply.at(4);
        EXPECT_GE(counts, lowest) << seed;
        EXPECT_LE(counts, highest) << seed;
      }
    }
  }
}

}  // namespace
}  // namespace orvane::bench::test
