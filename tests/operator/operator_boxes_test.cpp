// Cards of the page's own: what is missing ahead of a unit, a unit that passed before, the engineers' word.

#include <gmock/gmock.h>

#include "adapters/sql/open_store.h"
#include "golden/golden_runs.h"
#include "operator/operator_rig.h"
#include "records/sample_record.h"
#include "support/scratch_folder.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;

TEST(OperatorCards, AllThatIsMissingIsToldAtOnceAndMendedByOnePress) {
  OperatorRig at;
  at.Settle();
  at.Type("A-17");
  at.Press(Qt::Key_Return);
  at.Settle();
  EXPECT_EQ(at.Text("cardTitle"), "Not ready for a unit");
  EXPECT_THAT(at.Card(), HasSubstr("The test set is not initialized."));
  EXPECT_THAT(at.Card(), HasSubstr("The supply is not initialized."));
  EXPECT_THAT(at.Card(), HasSubstr("The load is not initialized."));
  EXPECT_EQ(at.Text("cardToDo"), "Switch it on and let the station initialize it.");
  EXPECT_FALSE(at.bench.Serial().PortOpen()) << "nothing was sent to the unit";

  at.Press(Qt::Key_Return);
  ASSERT_TRUE(at.UntilCovered()) << "behind the instruments the unit runs";
  EXPECT_EQ(at.Text("verdictWord"), "PASS");
  EXPECT_EQ(at.Text("verdictSerial"), "A-17");
}

TEST(OperatorCards, ADamagedTableIsForAnEngineerAndStartsNothing) {
  OperatorRig at;
  at.InitializeInstruments();
  at.station.State().cal.lossDamage = "Cable.loss is 0 bytes long, not 640.";
  at.Settle();
  at.Press(Qt::Key_Return);
  at.Settle();
  EXPECT_THAT(at.Card(), HasSubstr("Cable.loss is 0 bytes long, not 640."));
  EXPECT_THAT(at.Text("cardToDo"), HasSubstr("Call an engineer"));
  EXPECT_EQ(at.Of<QPushButton>("cardAnswer0").text(), "Look again");
  at.Press(Qt::Key_Escape);
  at.Settle();
  EXPECT_EQ(at.Card(), "");
  EXPECT_TRUE(at.station.Nest().Idle());
}

/// A unit that passed on another day.
class OperatorStore : public testing::Test {
 protected:
  [[nodiscard]] std::string Place() const { return "sqlite:" + folder_.Path("records.sqlite"); }
  void Keep(const std::string& serial, const std::string& verdict) {
    RunRecord record = SmallRecord(static_cast<int>(++kept_));
    record.identity.serial = serial;
    record.identity.kind = "whole";
    record.end->verdict = verdict;
    record.end->complete = verdict == "PASS";
    (void)OpenStore(Place())->Finish(record);
  }
  static bool Await(const std::function<bool()>& seen) { return QTest::qWaitFor(seen, 20000); }
  /// Looking things up happens beside this thread.
  static void AwaitCard(OperatorRig& at) {
    ASSERT_TRUE(Await([&at] {
      at.Settle();
      return !at.Card().empty();
    }));
  }

  ScratchFolder folder_;
  int kept_ = 0;
};

TEST_F(OperatorStore, AUnitThatPassedIsNotRunAgainUnasked) {
  Keep("A-17", "PASS");
  OperatorRig at({}, OperatorRig::VirtualOptions(), {.store = Place()});
  at.InitializeInstruments();
  at.Settle();
  at.Type("A-17");
  at.Press(Qt::Key_Return);
  AwaitCard(at);
  EXPECT_THAT(at.Card(), testing::MatchesRegex("This unit passed on [A-Z][a-z]+day, .*\\."));
  EXPECT_TRUE(at.station.Nest().Idle());
  at.Press(Qt::Key_Escape);
  at.Settle();
  EXPECT_EQ(at.Of<QLineEdit>("serial").text(), "");

  at.Type("A-17");
  at.Press(Qt::Key_Return);
  AwaitCard(at);
  at.Press(Qt::Key_Return);
  EXPECT_TRUE(at.UntilCovered());
  EXPECT_EQ(at.Text("verdictSerial"), "A-17");
}

TEST_F(OperatorStore, AUnitThatFailedRunsAgainUnasked) {
  Keep("A-17", "FAIL");
  OperatorRig at({}, OperatorRig::VirtualOptions(), {.store = Place()});
  at.InitializeInstruments();
  at.Settle();
  at.Type("A-17");
  at.Press(Qt::Key_Return);
  ASSERT_TRUE(Await([&at] {
    at.Settle();
    return at.status.Running() || at.Covered();
  }));
  EXPECT_TRUE(at.UntilCovered());
}

void SayWord(OperatorRig& at, const char* word) {
  EXPECT_EQ(at.Focus(), "cardTyped");
  EXPECT_EQ(at.Of<QLineEdit>("cardTyped").echoMode(), QLineEdit::Password);
  at.Type(word);
  at.Press(Qt::Key_Return);
  at.Settle();
}

TEST(OperatorCards, ThePanelsOpenBehindTheRightWordAlone) {
  OperatorRig at({}, OperatorRig::VirtualOptions(), {.hasWord = true});
  bool isOpen = false;
  at.view->openPanels = [&] { isOpen = true; };
  at.Settle();
  const auto tryWord = [&](const char* word) {
    QTest::mouseClick(&at.Of("engineer"), Qt::LeftButton);
    at.Settle();
    SayWord(at, word);
  };
  for (int i = 0; i < 3; ++i) {
    tryWord("sesame");
    EXPECT_FALSE(isOpen);
    EXPECT_EQ(at.Text("hint"), "That is not the word.");
  }
  tryWord("open sesame");
  EXPECT_FALSE(isOpen);
  EXPECT_THAT(at.Text("hint"), testing::MatchesRegex("Too many wrong words: wait [0-9]+ seconds\\."));
  at.loop.Yield(at.loop.Now() + std::chrono::seconds(31));
  ASSERT_TRUE(at.Until([&at] { return at.word.SecondsToWait() == 0; }));
  tryWord("open sesame");
  EXPECT_TRUE(isOpen);
}

TEST(OperatorCards, WhileTheGoldenUnitIsDueNoOtherOneIsRunUnlessAnEngineerSaysWhy) {
  OperatorRig at({}, OperatorRig::VirtualOptions(), {.hasWord = true, .goldenSerial = "G-001"});
  at.InitializeInstruments();
  at.Settle();
  EXPECT_THAT(at.Text("station"), HasSubstr("golden unit is due"));
  at.Type("A-17");
  at.Press(Qt::Key_Return);
  at.Settle();
  EXPECT_EQ(at.Card(), "The golden unit G-001 is due: run it first.");
  EXPECT_TRUE(at.station.Nest().Idle());
  QTest::mouseClick(&at.Of("cardAnswer1"), Qt::LeftButton);
  at.Settle();
  SayWord(at, "open sesame");
  EXPECT_EQ(at.Card(), "Why may units be run all the same?");
  at.Type("the golden unit is at the calibration laboratory");
  at.Press(Qt::Key_Return);
  EXPECT_TRUE(at.UntilCovered());
  EXPECT_EQ(at.Text("verdictSerial"), "A-17");
  EXPECT_THAT(at.Text("station"), HasSubstr("golden unit excused until"));
}

TEST(OperatorCards, TheGoldenUnitItselfIsRunAndACheckThatIsOutsideSaysWhatItPointsTo) {
  OperatorRig at({}, OperatorRig::VirtualOptions(), {.goldenSerial = "G-001"});
  at.InitializeInstruments();
  at.Settle();
  at.Type("G-001");
  at.Press(Qt::Key_Return);
  ASSERT_TRUE(at.Until([&at] { return at.Covered() && at.station.Nest().Idle(); }));
  RunRecord run = GoldenRun({.gsmLoss = 0.8, .dcsLoss = 0.8});
  run.identity.serial = "G-001";
  at.golden->Take(run);
  at.Settle();
  EXPECT_EQ(at.Text("cardTitle"), "The golden unit is outside its limits");
  EXPECT_THAT(at.Text("cardMeans"), HasSubstr("cable"));
  EXPECT_THAT(at.Text("station"), HasSubstr("golden unit was outside"));
}

TEST(OperatorCards, WithoutAWordThereIsNoWayToThePanels) {
  OperatorRig at;
  at.Settle();
  EXPECT_FALSE(at.Seen("engineer"));
}

TEST(OperatorCards, WhatLiesBeneathACardTakesNoKeys) {
  OperatorRig at;
  at.Settle();
  at.Press(Qt::Key_Return);
  at.Settle();
  ASSERT_NE(at.Card(), "");
  for (int i = 0; i < 6; ++i) {
    at.Press(Qt::Key_Tab);
    EXPECT_TRUE(at.Focus().startsWith("cardAnswer")) << at.Focus().toStdString();
  }
}

}  // namespace
}  // namespace orvane::test
