#include "wire_damage.h"

#include <gtest/gtest.h>

#include "support/fake_serial.h"

namespace orvane::proofs {
namespace {

using namespace std::chrono_literals;

class OnADamagedLine : public testing::Test {
 protected:
  OnADamagedLine() {
    line.setup.rThreshold = 1;
    line.onComm = [this](int) { received += line.Input(); };
    inner.answer = nullptr;
    line.Open();
  }
  /// What arrives at the other end of each way when "abcdef" is sent in two parts.
  std::string Sent(const char* damage) {
    inner.writes.clear();
    line.Strike(DamageOf(damage));
    line.Output("abc");
    line.Output("def");
    std::string all;
    for (const std::string& bytes : inner.writes) all += bytes;
    return all;
  }
  std::string Heard(const char* damage) {
    received.clear();
    line.Strike(DamageOf(damage));
    inner.Receive("abc");
    inner.Receive("def");
    return received;
  }

  VirtualEventLoop loop;
  test::FakeSerial inner{loop};
  WireDamage line{loop, inner};
  std::string received;
};

TEST_F(OnADamagedLine, OneByteIsHarmedOnEitherWay) {
  EXPECT_EQ(Sent("out:1:lost"), "acdef");
  EXPECT_EQ(Sent("out:3:doubled"), "abcddef");
  EXPECT_EQ(Sent("out:0:flipped:2"), "cbcdef");
  EXPECT_EQ(Sent("out:2:exchanged"), "abdcef");
  EXPECT_EQ(Sent("in:2:exchanged"), "abcdef") << "the other way";
  EXPECT_EQ(Heard("in:1:lost"), "acdef");
  EXPECT_EQ(Heard("in:3:doubled"), "abcddef");
  EXPECT_EQ(Heard("in:0:flipped:2"), "cbcdef");
  EXPECT_EQ(Heard("in:2:exchanged"), "abdcef");
  EXPECT_TRUE(line.HasStruck());
  EXPECT_TRUE(line.SwappedWithinAFrame());
  EXPECT_EQ(Heard("in:9:lost"), "abcdef");
  EXPECT_FALSE(line.HasStruck());
  EXPECT_EQ(line.Count(Way::ToStation), 6U);
}

TEST_F(OnADamagedLine, ADelayedByteHoldsUpWhatFollowsIt) {
  EXPECT_EQ(Heard("in:4:delayed:100"), "abcd");
  loop.Yield(loop.Now() + 99ms);
  EXPECT_EQ(received, "abcd");
  while (loop.Now() < 101ms) loop.Yield(101ms);
  EXPECT_EQ(received, "abcdef");

  EXPECT_EQ(Sent("out:1:delayed:100"), "a");
  while (loop.Now() < 250ms) loop.Yield(250ms);
  std::string all;
  for (const std::string& bytes : inner.writes) all += bytes;
  EXPECT_EQ(all, "abcdef");
}

TEST(Damage, ReadsItsOwnText) {
  for (const char* text :
       {"in:1204:flipped:64", "out:17:lost", "in:0:doubled", "out:5:delayed:30", "in:9:exchanged"}) {
    const auto damage = DamageOf(text);
    ASSERT_TRUE(damage) << text;
    EXPECT_EQ(TextOf(*damage), text);
  }
  for (const char* text : {"", "late@3", "in:x:lost", "in:1:gone", "in:1:flipped", "in:1:lost:3"}) {
    EXPECT_FALSE(DamageOf(text)) << text;
  }
}

}  // namespace
}  // namespace orvane::proofs
