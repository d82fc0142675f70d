// A whole station on the virtual bench in virtual time.

#include "app/safe_off/station_safe_off.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/safe_off/bench_off_hand.h"
#include "app/station_status.h"
#include "station/virtual_station.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// Answers when the test says so.
class ScriptedHand final : public OffHand {
 public:
  void Tell(const OffPlaces& places) override { told.push_back(places); }
  void Note(const std::string& /*file*/) override {}
  void SwitchOff(std::function<void(const OffOutcome&)> answered) override {
    ++orders;
    answered_ = std::move(answered);
    if (onOrder) onOrder();
  }
  void Dismiss() override { dismissed = true; }
  void Answer(const OffOutcome& outcome) { std::exchange(answered_, nullptr)(outcome); }

  std::vector<OffPlaces> told;
  int orders = 0;
  bool dismissed = false;
  std::function<void()> onOrder;

 private:
  std::function<void(const OffOutcome&)> answered_;
};

StationWishes Wishes() {
  StationWishes wishes;
  wishes.safeOff = true;
  return wishes;
}

class StationSafeOff : public testing::Test {
 protected:
  void Start(std::uint64_t seed = 1, const std::vector<std::string>& faults = {}) {
    station_.emplace(OptionsOf(seed, faults), VirtualStation::OtherFiles{}, Wishes());
    safeOff_.emplace(Ports(), station_->station, hand_, [this] { ++letGo_; });
    station_->station.State().charger.faults.told.Connect(
        [this](const GpibFault& fault) { faults_.push_back(fault); });
    station_->station.Nest().refusal = [this](const Control& pressed) { return safeOff_->Refusal(pressed); };
  }
  /// Events that are due, without waiting for later ones.
  void Turn() {
    for (int i = 0; i < 20; ++i) station_->loop.Yield(station_->loop.Now());
  }
  StationPorts Ports() {
    return {station_->loop,  station_->bench.Serial(), station_->bus,
            station_->files, station_->boxes,          station_->dialogs};
  }
  ChargerState& Charger() { return station_->State().charger; }
  FrmBaseBand& BaseBand() { return station_->Panels().baseBand; }

  std::optional<VirtualStation> station_;
  ScriptedHand hand_;
  std::optional<SafeOff> safeOff_;
  int letGo_ = 0;
  std::vector<GpibFault> faults_;
};

TEST_F(StationSafeOff, ARunThatPassesLeavesTheBenchOn) {
  Start();
  EXPECT_FALSE(station_->TakeTargetThrough());
  Turn();
  EXPECT_EQ(station_->Concluded(), Verdict::Pass);
  EXPECT_EQ(hand_.orders, 0);
  EXPECT_EQ(letGo_, 0);
  EXPECT_TRUE(Charger().PSReady);
}

TEST_F(StationSafeOff, APassThatIsNotCompleteIsAPass) {
  Start(1, {"pa-weak"});
  EXPECT_FALSE(station_->TakeTargetThrough());
  Turn();
  EXPECT_EQ(station_->Concluded(), Verdict::Pass);
  EXPECT_FALSE(station_->State().report.AllComplete());
  EXPECT_EQ(hand_.orders, 0);
}

TEST_F(StationSafeOff, ARunThatFailsHasItSwitchedOffAndBothInstrumentsHaveToBeInitializedAgain) {
  Start(1, {"battery"});
  bool readyAtOrder = true;
  hand_.onOrder = [&] { readyAtOrder = Charger().PSReady || Charger().LoaderReady || letGo_ == 0; };
  EXPECT_FALSE(station_->TakeTargetThrough());
  EXPECT_EQ(station_->Concluded(), Verdict::Fail);
  EXPECT_TRUE(safeOff_->UnderWay());
  Turn();
  EXPECT_EQ(hand_.orders, 1);
  EXPECT_FALSE(readyAtOrder) << "the ways were free by then";
  EXPECT_EQ(BaseBand().cmdPSVoltageEnable.Caption(), "Enable");
  EXPECT_FALSE(Charger().PSVoltageSet);
  hand_.Answer({});
  EXPECT_FALSE(safeOff_->UnderWay());
  Turn();
  EXPECT_THAT(station_->boxes.Texts(), Not(testing::Contains(HasSubstr("made sure"))));
  EXPECT_THAT(faults_, IsEmpty());
}

TEST_F(StationSafeOff, ARunThatAFailureEndsAndOneThatIsStoppedHaveItSwitchedOff) {
  Start(1, {"testset-nan@3"});
  EXPECT_TRUE(station_->TakeTargetThrough());
  Turn();
  EXPECT_EQ(hand_.orders, 1);

  Start();
  auto& autoCal = station_->Panels().autoCal;
  station_->State().searchTrail.passed.Connect([&, asked = false](const SearchPass&) mutable {
    if (!std::exchange(asked, true)) station_->loop.Post([&] { station_->op.Click(autoCal.cmdAutoCalStop); });
  });
  EXPECT_FALSE(station_->TakeTargetThrough());
  Turn();
  EXPECT_EQ(station_->Concluded(), Verdict::None);
  EXPECT_EQ(hand_.orders, 2);
}

TEST_F(StationSafeOff, WhatCouldNotBeMadeSureIsToldInABoxOnTheStatusLineAndAsAFault) {
  Start(1, {"battery"});
  StationStatus status(station_->loop, station_->bench.Serial(), station_->State(), station_->Panels());
  EXPECT_FALSE(station_->TakeTargetThrough());
  Turn();
  std::string answered;
  bool underWay = false;
  safeOff_->onAnswered = [&](const std::string& text) {
    answered = text;
    underWay = safeOff_->UnderWay();
  };
  hand_.Answer({"no connection: Connection refused.", "no reply within 1 s."});
  const std::string supply =
      "The supply's output could not be made sure to be off: no connection: Connection refused. Switch it off by "
      "hand.";
  const std::string load =
      "The load's input could not be made sure to be off: no reply within 1 s. Switch it off by hand.";
  EXPECT_EQ(answered, supply + " " + load);
  EXPECT_TRUE(underWay) << "the record is still to be had";
  EXPECT_FALSE(safeOff_->UnderWay());
  const Box& box = station_->boxes.shown.back();
  EXPECT_EQ(box.text, supply + " " + load);
  EXPECT_EQ(box.title, "Safe-off");
  EXPECT_THAT(status.Stage(), HasSubstr("; " + supply + " " + load));
  ASSERT_EQ(faults_.size(), 2U);
  EXPECT_EQ(faults_[0].address, 2);
  EXPECT_EQ(faults_[0].text, supply);
  EXPECT_EQ(faults_[1].address, 5);
  EXPECT_EQ(faults_[1].text, load);

  station_->InitializeInstruments();
  EXPECT_THAT(status.Stage(), Not(HasSubstr("made sure")));
}

TEST_F(StationSafeOff, ABoxWaitsUntilNoOperationIsHeldUpByIt) {
  Start(1, {"battery"});
  EXPECT_FALSE(station_->TakeTargetThrough());
  Turn();
  const std::size_t boxes = station_->boxes.shown.size();
  station_->station.Nest().Run([&] {
    hand_.Answer({"no reply within 1 s.", ""});
    Turn();
    EXPECT_EQ(station_->boxes.shown.size(), boxes);
  });
  station_->loop.Yield(station_->loop.Now() + 1s);
  EXPECT_EQ(station_->boxes.shown.size(), boxes + 1);
}

TEST_F(StationSafeOff, WhileItIsUnderWayNothingIsStartedThatNeedsTheInstruments) {
  Start(1, {"battery"});
  EXPECT_FALSE(station_->TakeTargetThrough());
  Turn();
  StationPanels& panels = station_->Panels();
  const std::string why = "The supply and the load are being switched off.";
  for (Button* button :
       {&panels.main.cmdTargetInitialize, &panels.main.cmdInstrumentInitialize, &panels.main.cmdPSInitialize,
        &panels.autoCal.cmdAllCalStart, &panels.autoCal.cmdGSM, &panels.baseBand.supply.initialize,
        &panels.baseBand.load.initialize, &panels.baseBand.cmdPSVoltageEnable}) {
    EXPECT_EQ(safeOff_->Refusal(*button), why) << button->Name();
  }
  for (Button* button : {&panels.main.cmdExit, &panels.autoCal.cmdAutoCalStop, &panels.fail.Command1,
                         &panels.baseBand.cmdBaseBandClose, &panels.main.cmdResultClear}) {
    EXPECT_EQ(safeOff_->Refusal(*button), std::nullopt) << button->Name();
  }
  EXPECT_EQ(station_->op.Click(panels.main.cmdTargetInitialize), why);
  hand_.Answer({});
  EXPECT_EQ(safeOff_->Refusal(panels.main.cmdTargetInitialize), std::nullopt);
}

TEST_F(StationSafeOff, ARunByHandThatComesToItsEndLeavesTheBenchOnAndOneThatFailsDoesNot) {
  Start();
  EXPECT_FALSE(station_->TakeTargetThrough());
  EXPECT_FALSE(station_->op.Click(BaseBand().cmdChargerAutoCal))
      << "the port is closed: it leaves early, and says so";
  Turn();
  EXPECT_EQ(hand_.orders, 0);
  station_->State().cal.CalFailed = true;
  EXPECT_FALSE(station_->op.Click(BaseBand().cmdChargerAutoCal));
  Turn();
  EXPECT_EQ(hand_.orders, 1) << "a unit that has failed, and another flaw";
}

TEST_F(StationSafeOff, ThePlacesAreThoseOfTheSessionsAndElseOfThePanel) {
  Start();
  EXPECT_EQ(hand_.told.back(), kUsualOffPlaces);
  BaseBand().Touch();
  station_->op.Type(BaseBand().supply.primAddress, "7");
  EXPECT_EQ(hand_.told.back().supply, (GpibAddress{0, 7, 0}));
  station_->op.Type(BaseBand().supply.primAddress, "");
  EXPECT_TRUE(hand_.told.back().supply.has_value());
  station_->op.Type(BaseBand().supply.primAddress, "2");
  station_->InitializeInstruments();
  EXPECT_TRUE(Charger().PSReady);
  station_->op.Type(BaseBand().supply.primAddress, "9");
  EXPECT_EQ(hand_.told.back().supply, (GpibAddress{0, 2, 0})) << "what was switched on stands there";
  (void)station_->op.Click(BaseBand().supply.initialize);
  EXPECT_EQ(hand_.told.back().supply, (GpibAddress{0, 9, 0}));
  EXPECT_EQ(hand_.told.back().load, (GpibAddress{0, 5, 0}));
  station_->op.Select(BaseBand().optLoaderDisuse);
  EXPECT_EQ(hand_.told.back().load, std::nullopt) << "there is none";
}

TEST_F(StationSafeOff, TheStationsEndWaitsForTheAnswerAndThenLetsTheHandGo) {
  Start();
  EXPECT_FALSE(station_->TakeTargetThrough());
  hand_.onOrder = [&] {
    EXPECT_FALSE(hand_.dismissed);
    station_->loop.PostAt(station_->loop.Now() + 1s, [&] { hand_.Answer({}); });
    // Whoever presses Exit once more changes nothing.
    station_->loop.Post([] { throw StationEnded(); });
  };
  const TimePoint before = station_->loop.Now();
  safeOff_->EndOfStation(true);
  EXPECT_GE(station_->loop.Now() - before, 1s);
  EXPECT_EQ(hand_.orders, 1);
  EXPECT_TRUE(hand_.dismissed);
}

TEST_F(StationSafeOff, TheEndBehindARunThatIsStillOwedIsOneAndTheSame) {
  Start(1, {"battery"});
  EXPECT_FALSE(station_->TakeTargetThrough());
  EXPECT_EQ(hand_.orders, 0);
  hand_.onOrder = [&] { station_->loop.Post([&] { hand_.Answer({"it answers \"1\".", ""}); }); };
  const std::size_t boxes = station_->boxes.shown.size();
  safeOff_->EndOfStation(true);
  EXPECT_EQ(hand_.orders, 1);
  ASSERT_EQ(station_->boxes.shown.size(), boxes + 1);
  EXPECT_THAT(station_->boxes.shown.back().text, HasSubstr("it answers \"1\"."));
}

TEST_F(StationSafeOff, ABoxThatNobodyWouldAnswerDoesNotHoldTheEndUp) {
  Start();
  hand_.onOrder = [&] { station_->loop.Post([&] { hand_.Answer({"it answers \"1\".", ""}); }); };
  const std::size_t boxes = station_->boxes.shown.size();
  safeOff_->EndOfStation(false);
  EXPECT_EQ(station_->boxes.shown.size(), boxes);
  EXPECT_EQ(faults_.size(), 1U);
}

std::string Answer(GpibBus& bus, Integer address, const std::string& question) {
  const auto session = bus.Open({0, address, 0});
  session->Write(question, 1s);
  return session->Read(100, 1s);
}

TEST(BenchSafeOff, SwitchesTheVirtualBenchOffAndAnInitializeSwitchesItOnAgain) {
  VirtualStation station(OptionsOf(1, {"battery"}), {}, Wishes());
  BenchOffHand hand(station.loop, station.bench.Bus());
  const StationPorts ports{station.loop,  station.bench.Serial(), station.bus,
                           station.files, station.boxes,          station.dialogs};
  SafeOff safeOff(ports, station.station, hand, [] {});
  EXPECT_FALSE(station.TakeTargetThrough());
  EXPECT_EQ(station.Concluded(), Verdict::Fail);
  EXPECT_EQ(Answer(station.bench.Bus(), 2, "OUTPUT?"), "1\n");
  while (safeOff.UnderWay()) station.loop.Yield(kForever);
  EXPECT_EQ(Answer(station.bench.Bus(), 2, "OUTPUT?"), "0\n");
  EXPECT_EQ(Answer(station.bench.Bus(), 5, "INPUT?"), "0\n");
  station.InitializeInstruments();
  EXPECT_EQ(Answer(station.bench.Bus(), 2, "OUTPUT?"), "1\n");
  EXPECT_EQ(Answer(station.bench.Bus(), 5, "INPUT?"), "1\n");
}

TEST(BenchSafeOff, AnInstrumentThatIsNotThereIsTold) {
  VirtualStation station(OptionsOf(1, {"battery", "load-absent"}), {}, Wishes());
  BenchOffHand hand(station.loop, station.bench.Bus());
  const StationPorts ports{station.loop,  station.bench.Serial(), station.bus,
                           station.files, station.boxes,          station.dialogs};
  SafeOff safeOff(ports, station.station, hand, [] {});
  (void)station.TakeTargetThrough();
  while (safeOff.UnderWay()) station.loop.Yield(kForever);
  EXPECT_EQ(station.boxes.shown.back().text,
            "The load's input could not be made sure to be off: No instrument listens at address 5 of the virtual "
            "bench. Switch it off by hand.");
  EXPECT_EQ(Answer(station.bench.Bus(), 2, "OUTPUT?"), "0\n");
}

TEST(ASafeStationsLoad, IsSwitchedOnByItsInitializeAndAnotherOnesIsNot) {
  for (const bool safe : {false, true}) {
    VirtualStation station({}, {}, safe ? Wishes() : StationWishes{});
    station.InitializeInstruments();
    EXPECT_EQ(station.journal.Of("5: INPUT ON").size(), safe ? 1U : 0U);
  }
}

}  // namespace
}  // namespace orvane::test
