#include "app/station_status.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "station/virtual_station.h"

namespace orvane {
namespace {

using Progress = StationStatus::Progress;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Optional;

/// A station with somebody who looks at its status whenever something is told.
struct Watched {
  explicit Watched(const std::vector<std::string>& faults = {}) : on(7, faults) {
    on.State().searchTrail.passed.Connect([this](const SearchPass&) { Look(); });
    on.State().searchTrail.ended.Connect([this](const SearchStory&) { Look(); });
    on.State().rxTrail.changed.Connect([this] { Look(); });
    on.State().report.entered.Connect([this](RunStep) { Look(); });
    on.State().report.left.Connect([this](const StepRecord&) { Look(); });
    on.Panels().downLoad.prgDownload.changed.Connect([this] {
      if (const auto transfer = status.Transfer()) transfers.push_back(*transfer);
    });
  }

  void Look() {
    stages.push_back(status.Stage());
    if (const auto run = status.WholeRun()) done.push_back(run->done);
  }

  test::VirtualStation on;
  StationStatus status{on.loop, on.bench.Serial(), on.State(), on.Panels()};
  std::vector<std::string> stages;
  std::vector<int> done;
  std::vector<Progress> transfers;
};

TEST(StationStatus, AWholeRunGoesThroughEveryPieceAndNeverBack) {
  Watched watched;
  EXPECT_EQ(watched.status.WholeRun(), std::nullopt);
  ASSERT_EQ(watched.on.TakeTargetThrough(), std::nullopt);
  // 12 channels, 16 + 3 and 15 + 3 searches, save and charger.
  EXPECT_THAT(watched.status.WholeRun(), Optional(Progress{51, 51}));
  EXPECT_TRUE(std::is_sorted(watched.done.begin(), watched.done.end()));
  for (int piece = 0; piece <= 51; ++piece) EXPECT_THAT(watched.done, Contains(piece));
}

TEST(StationStatus, TellsTheStageOfTheRun) {
  Watched watched;
  EXPECT_EQ(watched.status.Stage(), "No run yet");
  watched.on.TakeTargetThrough();
  for (const char* stage :
       {"Receive", "Receive: channel 700", "Transmit DCS: DCS level 15, pass 2",
        "Transmit DCS: DCS channel 781, pass 2", "Transmit GSM: GSM level 5, pass 2", "Save", "Charger"}) {
    EXPECT_THAT(watched.stages, Contains(stage));
  }
  EXPECT_EQ(watched.status.Stage(), "Ended: PASS");
}

TEST(StationStatus, APassOfStepsThatWereNotCompletedSaysSo) {
  Watched watched({"pa-weak"});
  watched.on.TakeTargetThrough();
  EXPECT_EQ(watched.status.Stage(), "Ended: PASS, but OUT OF TOLERANCE");
}

TEST(StationStatus, ASupplyThatFailedIsToldBehindTheStageUntilItIsInitializedAgain) {
  Watched watched({"supply-absent@1"});
  watched.on.InitializeInstruments();
  EXPECT_EQ(watched.status.Stage(), "No run yet; No instrument listens at address 2 of the virtual bench.");
  watched.on.State().charger.faults.Settle(2);
  EXPECT_EQ(watched.status.Stage(), "No run yet");
}

TEST(StationStatus, ARunThatWasCutShortDoesNotComeToItsEnd) {
  Watched watched({"pa-dead"});
  watched.on.TakeTargetThrough();
  ASSERT_NE(watched.status.WholeRun(), std::nullopt);
  EXPECT_GE(watched.status.WholeRun()->done, 12);
  EXPECT_LT(watched.status.WholeRun()->done, 51);
  EXPECT_FALSE(watched.status.Running());
}

TEST(StationStatus, TheSecondRunBeginsAtNothing) {
  Watched watched;
  watched.on.TakeTargetThrough();
  watched.done.clear();
  watched.stages.clear();
  watched.on.op.Click(watched.on.Panels().autoCal.cmdAllCalStart);
  ASSERT_FALSE(watched.done.empty());
  EXPECT_EQ(watched.done.front(), 0);
  // The channel that the run before came to last is not this one's.
  EXPECT_EQ(watched.stages.front(), "Receive");
  EXPECT_TRUE(std::is_sorted(watched.done.begin(), watched.done.end()));
}

TEST(StationStatus, ABandByHandHasAStageAndATimeButNoWholeRun) {
  Watched watched;
  // A whole run that is stopped behind its first step leaves the Target as it is.
  watched.on.State().report.left.Connect([&](const StepRecord&) { watched.on.State().cal.CalStopRequested = true; });
  watched.on.TakeTargetThrough();
  EXPECT_THAT(watched.status.WholeRun(), Optional(Progress{12, 51}));
  EXPECT_EQ(watched.status.Stage(), "Ended without a verdict");
  watched.done.clear();
  watched.stages.clear();
  watched.on.op.Click(watched.on.Panels().autoCal.cmdGSM);
  EXPECT_TRUE(watched.done.empty());
  EXPECT_THAT(watched.stages, Contains("GSM level 5, pass 2"));
  EXPECT_EQ(watched.status.Stage(), "Run ended");
  EXPECT_EQ(watched.status.WholeRun(), std::nullopt);
}

TEST(StationStatus, TheTimeStandsStillBetweenRuns) {
  Watched watched;
  EXPECT_EQ(watched.status.Elapsed(), std::nullopt);
  watched.on.TakeTargetThrough();
  const auto elapsed = watched.status.Elapsed();
  ASSERT_NE(elapsed, std::nullopt);
  EXPECT_GT(*elapsed, std::chrono::seconds(1));
  watched.on.loop.Spin(100000000);
  EXPECT_EQ(watched.status.Elapsed(), elapsed);
}

TEST(StationStatus, ATransferIsSeenAsLongAsItLasts) {
  Watched watched;
  watched.on.Panels().autoCal.Touch();
  watched.on.Panels().autoCal.chkAutoSaveMode.SetChecked(true);
  watched.on.TakeTargetThrough();
  ASSERT_FALSE(watched.transfers.empty());
  EXPECT_EQ(watched.transfers.back().done, watched.transfers.back().of);
  EXPECT_EQ(watched.status.Transfer(), std::nullopt);
}

TEST(StationStatus, TheLinkIsClosedOpenWaitingOrSilent) {
  using Link = StationStatus::Link;
  // The third command brings no reply.
  Watched watched({"silent@3"});
  EXPECT_EQ(watched.status.LinkState(), Link::Closed);
  std::vector<Link> ahead;
  std::vector<Link> during;
  TextBox& command = watched.on.Panels().main.txtUserCommand;
  command.changed.Connect([&] {
    if (command.Text().empty()) return;
    ahead.push_back(watched.status.LinkState());
    watched.on.loop.PostAt(watched.on.loop.Now() + std::chrono::microseconds(1),
                           [&] { during.push_back(watched.status.LinkState()); });
  });
  watched.on.TakeTargetThrough();
  ASSERT_GE(ahead.size(), 4U);
  EXPECT_EQ(ahead[0], Link::Open);
  EXPECT_EQ(ahead[1], Link::Open);
  EXPECT_THAT(ahead, Contains(Link::NoReply));
  EXPECT_THAT(during, Contains(Link::Waiting));
}

TEST(MinutesText, HasTwoDigitsOfSeconds) {
  EXPECT_EQ(MinutesText(std::chrono::milliseconds(7900)), "0:07");
  EXPECT_EQ(MinutesText(std::chrono::seconds(760)), "12:40");
}

TEST(StationStatus, SaysWhatAStopDoesAtEachPointOfTheRun) {
  Watched watched;
  std::vector<std::string> words;
  const auto note = [&] {
    const std::string now(watched.status.StopWords());
    if (words.empty() || words.back() != now) words.push_back(now);
  };
  watched.on.State().rxTrail.changed.Connect(note);
  watched.on.State().searchTrail.passed.Connect([&](const SearchPass&) { note(); });
  watched.on.Panels().downLoad.prgDownload.changed.Connect(note);
  watched.on.State().report.entered.Connect([&](RunStep step) {
    if (step == RunStep::Save || step == RunStep::Charger) note();
  });
  ASSERT_EQ(watched.on.TakeTargetThrough(), std::nullopt);
  EXPECT_THAT(words,
              ElementsAre("stops behind the receiver", "stops behind this level", "the result is being saved",
                          "the result is being saved, it stops between two pieces", "the result is being saved",
                          "the result is saved, the battery is measured to its end"));
}

TEST(StationStatus, AStopIsAskedForUntilItIsTakenBackOrTheRunHasEnded) {
  Watched watched;
  std::vector<bool> asked;
  watched.on.loop.PostAt(std::chrono::milliseconds(1500), [&] {
    Button& stop = watched.on.Panels().autoCal.cmdAutoCalStop;
    asked.push_back(watched.status.StopAsked());
    for (int i = 0; i < 3; ++i) {
      watched.on.op.Click(stop);
      asked.push_back(watched.status.StopAsked());
    }
  });
  ASSERT_EQ(watched.on.TakeTargetThrough(), std::nullopt);
  EXPECT_THAT(asked, ElementsAre(false, true, false, true));
  EXPECT_EQ(watched.on.Concluded(), Verdict::None);
  EXPECT_FALSE(watched.status.StopAsked()) << "it has ended";
}

}  // namespace
}  // namespace orvane
