#include "platform/operation_nest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/virtual_event_loop.h"
#include "support/fake_desk.h"

namespace orvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using namespace std::chrono_literals;

class OperationNestTest : public testing::Test {
 protected:
  OperationNestTest() {
    nest_.onStopped.emplace_back([this] { journal_.Add("rest"); });
    nest_.onFailure.emplace_back([this](const std::string& text) { journal_.Add("told: " + text); });
  }

  test::Journal journal_;
  test::FakeBoxes boxes_{journal_};
  OperationNest nest_{boxes_};
  VirtualEventLoop loop_;
};

TEST_F(OperationNestTest, AnOperationThatEndsWellShowsNothing) {
  EXPECT_EQ(nest_.Run([&] { EXPECT_FALSE(nest_.Idle()); }), std::nullopt);
  EXPECT_TRUE(nest_.Idle());
  EXPECT_THAT(journal_.Lines(), IsEmpty());
}

TEST_F(OperationNestTest, AFailureIsToldAndShownOnceWithTheLinkAtRest) {
  EXPECT_EQ(nest_.Run([] { throw StationFailure("It is broken."); }), "It is broken.");
  EXPECT_THAT(journal_.Lines(), ElementsAre("rest", "told: It is broken.", "box: It is broken."));
  ASSERT_THAT(boxes_.shown, SizeIs(1));
  EXPECT_EQ(boxes_.shown[0].title, "ORVANE");
  EXPECT_EQ(boxes_.shown[0].icon, BoxIcon::Stop);
  EXPECT_THAT(boxes_.shown[0].buttons, ElementsAre(BoxButton::Ok));
}

TEST_F(OperationNestTest, AFailureInANestedOperationEndsTheOuterOneToo) {
  bool reached = false;
  const auto outcome = nest_.Run([&] {
    loop_.Post([&] { nest_.Run([] { throw StationFailure("From within."); }); });
    loop_.Yield(loop_.Now() + 3s);
    reached = true;
  });
  EXPECT_EQ(outcome, "From within.");
  EXPECT_FALSE(reached);
  EXPECT_THAT(journal_.Lines(), ElementsAre("rest", "told: From within.", "box: From within."));
}

TEST_F(OperationNestTest, NoPassOverOnTheWayStopsANestedFailure) {
  bool reached = false;
  const auto outcome = nest_.Run([&] {
    PassOver([&] { nest_.Run([] { throw StationFailure("From within."); }); });
    reached = true;
  });
  EXPECT_EQ(outcome, "From within.");
  EXPECT_FALSE(reached);
}

TEST_F(OperationNestTest, ThreeDeepStillMakesOneBox) {
  const auto outcome =
      nest_.Run([&] { nest_.Run([&] { PassOver([&] { nest_.Run([] { throw StationFailure("Deep."); }); }); }); });
  EXPECT_EQ(outcome, "Deep.");
  EXPECT_THAT(boxes_.shown, SizeIs(1));
  EXPECT_TRUE(nest_.Idle());
}

TEST_F(OperationNestTest, APassOverOfTheOperationItselfKeepsItGoing) {
  bool reached = false;
  EXPECT_EQ(nest_.Run([&] {
    PassOver([] { throw StationFailure("skipped"); });
    reached = true;
  }),
            std::nullopt);
  EXPECT_TRUE(reached);
}

TEST_F(OperationNestTest, ANestedOperationThatEndsWellLeavesTheOuterOneAlone) {
  std::vector<std::string> order;
  nest_.Run([&] {
    nest_.Run([&] { order.emplace_back("inner"); });
    order.emplace_back("outer");
  });
  EXPECT_THAT(order, ElementsAre("inner", "outer"));
}

TEST_F(OperationNestTest, NothingIsNestedWhileItsBoxIsOpen) {
  bool idle = false;
  std::optional<std::string> other = "not run";
  boxes_.whileOpen = [&](const Box&) {
    idle = nest_.Idle();
    other = nest_.Run([] {});
  };
  nest_.Run([] { throw StationFailure("It is broken."); });
  EXPECT_TRUE(idle);
  EXPECT_EQ(other, std::nullopt);
}

TEST_F(OperationNestTest, TheNextOperationRunsAfterAStoppedOne) {
  nest_.Run([] { throw StationFailure("It is broken."); });
  bool ran = false;
  EXPECT_EQ(nest_.Run([&] { ran = true; }), std::nullopt);
  EXPECT_TRUE(ran);
}

TEST_F(OperationNestTest, TheEndOfTheStationPassesEverything) {
  EXPECT_THROW(nest_.Run([&] { PassOver([&] { nest_.Run([] { throw StationEnded(); }); }); }), StationEnded);
  EXPECT_THAT(journal_.Lines(), IsEmpty());
}

TEST(VirtualEventLoop, MovesTimeOnlyByWaitingAndSpinning) {
  VirtualEventLoop loop;
  EXPECT_EQ(loop.Now(), 0ns);
  loop.Spin(10000);
  EXPECT_EQ(loop.Now(), 20us);
  loop.Yield(1ms);
  EXPECT_EQ(loop.Now(), 1ms);
  loop.Yield(500us);
  EXPECT_EQ(loop.Now(), 1ms) << "time never goes back";
  loop.Block(2s);
  EXPECT_EQ(loop.Now(), 2001ms);
}

TEST(VirtualEventLoop, ServesEventsInTheOrderOfTheirTimeThenOfTheirPosting) {
  VirtualEventLoop loop;
  std::vector<std::string> served;
  loop.PostAt(2ms, [&] { served.emplace_back("late"); });
  loop.PostAt(1ms, [&] { served.emplace_back("first"); });
  loop.PostAt(1ms, [&] {
    served.emplace_back("second");
    loop.Post([&] { served.emplace_back("posted by it"); });
  });
  loop.Yield(kForever);
  EXPECT_THAT(served, ElementsAre("first", "second", "posted by it"));
  EXPECT_EQ(loop.Now(), 1ms);
  loop.Yield(1500us);
  EXPECT_THAT(served, SizeIs(3));
  loop.RunDry();
  EXPECT_THAT(served, SizeIs(4));
}

TEST(VirtualEventLoop, ServesWhatIsDueBeforeItMovesTime) {
  VirtualEventLoop loop;
  loop.Post([] {});
  loop.Yield(5ms);
  EXPECT_EQ(loop.Now(), 0ns);
}

TEST(VirtualEventLoop, TakesAnEventOfThePastForNow) {
  VirtualEventLoop loop;
  loop.Yield(5ms);
  bool served = false;
  loop.PostAt(1ms, [&] { served = true; });
  loop.Yield(kForever);
  EXPECT_TRUE(served);
  EXPECT_EQ(loop.Now(), 5ms);
}

TEST(VirtualEventLoop, LetsTheFailureOfAnEventOutAndKeepsTheRest) {
  VirtualEventLoop loop;
  bool served = false;
  loop.Post([] { throw StationFailure("no"); });
  loop.Post([&] { served = true; });
  EXPECT_THROW(loop.Yield(kForever), StationFailure);
  loop.Yield(kForever);
  EXPECT_TRUE(served);
}

TEST(VirtualEventLoop, RefusesAWaitThatNobodyWouldEnd) {
  VirtualEventLoop loop;
  EXPECT_THROW(loop.Yield(kForever), EndlessWait);
}

}  // namespace
}  // namespace orvane
