#include "safe_off/switch_off.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/fake_gpib.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::Ge;
using testing::Le;

/// Supply at 2 and load at 5 of one bus, in virtual time.
class SwitchOffTest : public testing::Test {
 protected:
  SwitchOffTest() {
    Supply().answer = [this](const std::string&) { return supplyOn_ ? "1\n" : "0\n"; };
    Load().answer = [](const std::string&) { return " OFF\r\n"; };
  }

  FakeInstrument& Supply() { return bus_.At(2); }
  FakeInstrument& Load() { return bus_.At(5); }

  std::vector<std::string> Run(const std::vector<OffJob>& jobs) {
    const OffClock clock{[this] { return loop_.Now(); },
                         [this](TimePoint span) {
                           loop_.Block(span);
                           if (onPause_) onPause_();
                         }};
    const TimePoint began = loop_.Now();
    auto why = SwitchOff(bus_, jobs, clock, {kWhole, kWhole});
    took_ = loop_.Now() - began;
    EXPECT_LE(took_, kWhole);
    return why;
  }
  std::vector<std::string> RunBoth() { return Run({kSupply, kLoad}); }

  static constexpr TimePoint kWhole = 2600ms;
  static inline const OffJob kSupply{OffPart::Supply, {0, 2, 0}};
  static inline const OffJob kLoad{OffPart::Load, {0, 5, 0}};

  VirtualEventLoop loop_;
  Journal journal_;
  FakeGpibBus bus_{loop_, journal_};
  bool supplyOn_ = false;
  std::function<void()> onPause_;
  TimePoint took_{0};
};

TEST_F(SwitchOffTest, TellsEachAndAsksItAndSendsItBackToLocal) {
  EXPECT_THAT(RunBoth(), ElementsAre("", ""));
  EXPECT_THAT(Supply().lines, ElementsAre("OUTPUT OFF", "OUTPUT?"));
  EXPECT_THAT(Load().lines, ElementsAre("INPUT OFF", "INPUT?"));
  EXPECT_EQ(Supply().locals, 1);
  EXPECT_EQ(Load().locals, 1);
  EXPECT_EQ(took_, 0s) << "nothing was waited for";
}

TEST_F(SwitchOffTest, NothingButZeroAndOffCountsAsOff) {
  for (const char* answer : {"0\n", "OFF\n", " 0 \r\n", "OFF"}) {
    Supply().answer = [answer](const std::string&) { return answer; };
    EXPECT_THAT(Run({kSupply}), ElementsAre("")) << answer;
  }
  const std::pair<const char*, const char*> others[] = {
      {"1\n", "it answers \"1\"."},     {"ON\n", "it answers \"ON\"."}, {"00\n", "it answers \"00\"."},
      {"0;1\n", "it answers \"0;1\"."}, {"\n", "it answers \"\"."},     {"a\tb\n", "it answers \"a b\"."}};
  for (const auto& [answer, why] : others) {
    Supply().answer = [text = answer](const std::string&) { return text; };
    EXPECT_THAT(Run({kSupply}), ElementsAre(why)) << answer;
  }
}

TEST_F(SwitchOffTest, OneThatTakesAMomentIsAskedAgainUntilItIsOff) {
  supplyOn_ = true;
  int pauses = 0;
  onPause_ = [&] { supplyOn_ = ++pauses < 3; };
  EXPECT_THAT(Run({kSupply}), ElementsAre(""));
  EXPECT_EQ(Supply().lines.size(), 8U) << "told and asked four times";
}

TEST_F(SwitchOffTest, OneThatIsAbsentIsTriedAgainUntilItIsThere) {
  Supply().absent = true;
  onPause_ = [&] { Supply().absent = loop_.Now() < 1s; };
  EXPECT_THAT(RunBoth(), ElementsAre("", ""));
  EXPECT_GT(Supply().sessions, 1) << "a session that failed is of no more use";
  EXPECT_EQ(Load().lines.size(), 2U) << "one that is off is left alone";
}

TEST_F(SwitchOffTest, OneThatStaysAwayIsToldInItsOwnWordsWhenTheTimeIsOver) {
  Supply().absent = true;
  EXPECT_THAT(RunBoth(), ElementsAre("GPIB address 2: nobody answers.", ""));
  EXPECT_THAT(took_, AllOf(Ge(2s), Le(kWhole)));
  EXPECT_EQ(Supply().locals, 0);
}

TEST_F(SwitchOffTest, ASilentOneLeavesTheOtherItsShareOfTheTime) {
  Supply().silent = true;
  TimePoint loadAsked{0};
  Load().answer = [&](const std::string&) {
    loadAsked = loop_.Now();
    return "0\n";
  };
  EXPECT_THAT(RunBoth(), ElementsAre("GPIB address 2: no reply in time.", ""));
  EXPECT_LE(loadAsked, kWhole / 2);
  EXPECT_EQ(Load().lines.size(), 2U);
}

TEST_F(SwitchOffTest, TwoSilentOnesAreOverInTimeToo) {
  Supply().silent = Load().silent = true;
  EXPECT_THAT(RunBoth(), Each(testing::HasSubstr("no reply in time")));
  EXPECT_THAT(Supply().lines, testing::Contains("OUTPUT OFF"));
  EXPECT_THAT(Load().lines, testing::Contains("INPUT OFF"));
}

TEST_F(SwitchOffTest, OneThatDoesNotGoBackToLocalIsOffAllTheSame) {
  Supply().clings = true;
  EXPECT_THAT(RunBoth(), ElementsAre("", ""));
}

/// A bus whose words of a failure name the instrument, as those of all routes do.
TEST_F(SwitchOffTest, TheReasonDoesNotNameTheInstrumentTwice) {
  class NamingBus final : public GpibBus {
   public:
    std::unique_ptr<GpibSession> Open(const GpibAddress&) override {
      throw GpibAbsent("Instrument at address 2, secondary 97, route tcp:h:1: no connection: Connection refused.");
    }
    std::string RouteOf(const GpibAddress&) const override { return "tcp:h:1"; }
  } bus;
  const OffClock clock{[this] { return loop_.Now(); }, [this](TimePoint span) { loop_.Block(span); }};
  EXPECT_THAT(SwitchOff(bus, {kSupply}, clock, {kWhole, kWhole}), ElementsAre("no connection: Connection refused."));
}

}  // namespace
}  // namespace orvane::test
