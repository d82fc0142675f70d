// Hands that press, type and pick anywhere at any time, inside one another's waits, with a Target that misbehaves.

#include <gtest/gtest.h>

#include <chrono>
#include <random>

#include "app/automation/operator_acts.h"
#include "base/counted.h"
#include "station/virtual_station.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

class RandomHands {
 public:
  RandomHands(unsigned seed, const std::vector<std::string>& faults) : random_(seed), station(seed, faults) {
    for (Panel* panel : station.Panels().All()) {
      for (Control* control : panel->Controls()) controls_.push_back(control);
    }
    station.InitializeInstruments();
  }

  /// One act on any control, with others that follow while it waits. @return false when it ended the station
  bool Act() {
    if (!others_) FollowUp();
    try {
      One();
      return true;
    } catch (const StationEnded&) {
      return false;
    }
  }
  bool TakeTargetThrough() {
    if (!others_) FollowUp();
    try {
      station.InitializeTarget();
    } catch (const ControlDisabled&) {
    } catch (const StationEnded&) {
      return false;
    }
    return true;
  }

 private:
  std::size_t Below(std::size_t end) { return random_() % end; }

  void FollowUp() {
    others_ = true;
    const std::chrono::milliseconds pause(Below(4000));
    station.loop.PostAt(station.loop.Now() + pause, [this] {
      others_ = false;
      if (station.station.Nest().Idle()) return;
      constexpr int kMostInside = 4;
      if (inside_ >= kMostInside) return FollowUp();
      const Counted one(inside_);
      FollowUp();
      One();
    });
  }

  void One() {
    Control& control = *controls_[Below(controls_.size())];
    station.station.Nest().Run([&] { control.Owner().Touch(); });
    try {
      Chosen(control)();
    } catch (const RpcFailure&) {
    } catch (const ControlDisabled&) {
    }
  }

  orvane::Act Chosen(Control& control) {
    static const std::vector<std::string> texts{"0", "1", "7", "30", "", "x", "-5", "20000", "tms 1", "999"};
    Operator& hand = station.op;
    if (auto* combo = dynamic_cast<ComboBox*>(&control); combo != nullptr && !combo->Items().empty()) {
      return PrepareSet(hand, control, {{"select", combo->Items()[Below(combo->Items().size())]}});
    }
    if (dynamic_cast<TextBox*>(&control) != nullptr) {
      return PrepareSet(hand, control, {{"text", texts[Below(texts.size())]}});
    }
    return PrepareClick(hand, control);
  }

  std::mt19937 random_;
  std::vector<Control*> controls_;
  bool others_ = false;
  int inside_ = 0;

 public:
  VirtualStation station;
};

/// What a click takes that meets no trouble; a whole run with all that hands ask for beside it is far below.
constexpr TimePoint kWork = 60s;
/// What an exchange without a reply takes. A port that a hand has closed in mid-run answers none either.
constexpr TimePoint kSilence = 2500ms + 1us;

TEST(RandomHands, NoClickLastsLongerThanItsExchangesWithoutAReplyMakeIt) {
  for (const char* fault : {"garbage-ttw", "unplugged@200", "unplugged@500", "silent@300", "status-ti@1000"}) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
      SCOPED_TRACE(testing::Message() << fault << ", seed " << seed);
      RandomHands hands(seed, {fault});
      bool there = true;
      for (int act = 0; act < 60 && there; ++act) {
        const TimePoint begin = hands.station.loop.Now();
        const long silent = hands.station.State().tally.silentWaits;
        there = act % 10 == 0 ? hands.TakeTargetThrough() : hands.Act();
        const long waits = hands.station.State().tally.silentWaits - silent;
        EXPECT_LT(hands.station.loop.Now() - begin, kWork + waits * kSilence) << "act " << act;
        if (there) {
          EXPECT_TRUE(hands.station.station.Nest().Idle()) << "act " << act;
        }
      }
    }
  }
}

/// A Target that falls silent in a search answers no pass, and the search walks to the limit: 2.5 s a pass.
TEST(RandomHands, AStopEndsASearchThatNobodyAnswersWithinTheWaitsThatAreLeft) {
  VirtualStation station(1, {"silent@241"});
  station.InitializeInstruments();
  constexpr TimePoint kPatience = 90s;
  station.loop.PostAt(station.loop.Now() + kPatience,
                      [&] { station.op.Click(station.Panels().autoCal.cmdAutoCalStop); });
  const TimePoint begin = station.loop.Now();
  station.InitializeTarget();
  const TimePoint took = station.loop.Now() - begin;
  EXPECT_GT(took, kPatience) << "it was under way";
  EXPECT_LT(took - kPatience, 15s);
  EXPECT_EQ(station.Concluded(), Verdict::None);
}

}  // namespace
}  // namespace orvane::test
