// The operator's page through a run, by keys alone: each verdict, stop, and what must not start or stop one.

#include <gmock/gmock.h>

#include "operator/operator_rig.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// A page whose instruments are ready.
class OperatorPageTest : public testing::Test {
 protected:
  OperatorRig& With(const std::vector<std::string>& faults, Options options = OperatorRig::VirtualOptions()) {
    rig_.emplace(faults, std::move(options));
    rig_->InitializeInstruments();
    rig_->Settle();
    return *rig_;
  }
  /// What a scanner does.
  static void Scan(OperatorRig& at, const std::string& serial) {
    at.Type(serial);
    at.Press(Qt::Key_Return);
  }
  static void AnswerBoxes(OperatorRig& at) {
    at.When([&at] { return !at.Card().empty(); },
            [&at] {
              at.Press(Qt::Key_Return);
              AnswerBoxes(at);
            });
  }

  std::optional<OperatorRig> rig_;
};

TEST_F(OperatorPageTest, AScannedUnitRunsToItsPassAndEnterGoesOnToTheNext) {
  OperatorRig& at = With({});
  EXPECT_EQ(at.Focus(), "serial");
  Scan(at, "A-17");
  ASSERT_TRUE(at.UntilCovered());
  EXPECT_EQ(at.Text("verdictWord"), "PASS");
  EXPECT_EQ(at.Text("verdictSerial"), "A-17");
  EXPECT_EQ(at.Text("verdictWhy"), "Every step was completed and everything is within its limits.");
  EXPECT_EQ(at.Text("verdictDetails"), "");
  ASSERT_TRUE(at.Until([&] { return at.station.Nest().Idle(); }));

  at.Press(Qt::Key_Return);
  at.Settle();
  EXPECT_FALSE(at.Covered());
  EXPECT_FALSE(at.station.Panels().pass.Visible()) << "its own button was pressed";
  EXPECT_EQ(at.Focus(), "serial");
  EXPECT_EQ(at.Of<QLineEdit>("serial").text(), "");
  EXPECT_EQ(at.Text("shiftUnits"), "1");
  EXPECT_EQ(at.Text("shiftYield"), "100.0 %");
  EXPECT_THAT(at.Text("lastUnit0"), HasSubstr("PASS  A-17"));

  Scan(at, "A-18");
  ASSERT_TRUE(at.UntilCovered());
  EXPECT_EQ(at.Text("verdictSerial"), "A-18");
}

TEST_F(OperatorPageTest, TheStepsSayWhatGoesOnAndHowEachEnded) {
  OperatorRig& at = With({});
  const auto tile = [&at](const char* step) { return at.Of(step).accessibleName().toStdString(); };
  std::string inTransmit;
  at.When([&] { return tile("steptransmitGSM").find("level 1") != std::string::npos; },
          [&] { inTransmit = tile("steptransmitGSM") + "; " + tile("stepreceive") + "; " + tile("stepsave"); });
  Scan(at, "A-17");
  ASSERT_TRUE(at.UntilCovered());
  EXPECT_THAT(inTransmit, testing::MatchesRegex(
                              "Transmitter GSM: level 1[0-9], pass [0-9]+, [0-9.]+ s; Receiver: complete, [0-9.]+ s; "
                              "Save: waits"));
  EXPECT_THAT(tile("stepcharger"), StartsWith("Battery: complete, "));
}

TEST_F(OperatorPageTest, AWornBatteryShowsItsBoxesAsCardsAndFailsWithReasonAndRemedy) {
  OperatorRig& at = With({"battery"});
  std::string means;
  at.When([&] { return !at.Card().empty(); },
          [&] {
            EXPECT_EQ(at.Card(), "Battery Calibration ERROR.");
            EXPECT_EQ(at.Focus(), "cardAnswer0");
            means = at.Text("cardMeans") + " " + at.Text("cardToDo");
            AnswerBoxes(at);
            at.Press(Qt::Key_Return);
          });
  Scan(at, "A-17");
  ASSERT_TRUE(at.UntilCovered());
  EXPECT_EQ(means,
            "The battery voltage that the phone counts is out of its window: FAIL follows. Check the battery "
            "contacts, then run this phone again.");
  EXPECT_EQ(at.Text("verdictWord"), "FAIL");
  EXPECT_EQ(at.Text("verdictWhy"), "The unit failed in the step \"Battery\".");
  EXPECT_THAT(at.Text("verdictDetails"), HasSubstr("limits"));
  EXPECT_THAT(at.Text("verdictToDo"), HasSubstr("repair"));
  ASSERT_TRUE(at.Until([&] { return at.station.Nest().Idle(); }));
  at.Press(Qt::Key_Return);
  at.Settle();
  EXPECT_FALSE(at.station.Panels().fail.Visible());
  EXPECT_EQ(at.Text("shiftYield"), "0.0 %");
}

TEST_F(OperatorPageTest, AWeakTransmitterIsOutOfToleranceAndSaysWhichReading) {
  OperatorRig& at = With({"pa-weak"});
  AnswerBoxes(at);
  Scan(at, "A-17");
  ASSERT_TRUE(at.UntilCovered());
  EXPECT_EQ(at.Text("verdictWord"), "OUT OF TOLERANCE");
  EXPECT_THAT(at.Text("verdictDetails"), HasSubstr("dBm, limits"));
}

TEST_F(OperatorPageTest, AValueThatHandsChangedInTheRunIsNotMeasured) {
  OperatorRig& at = With({});
  at.When([&] { return at.station.State().report.UnderWay() == RunStep::Receive; },
          [&] { Operator(at.station.Nest()).Type(at.station.Panels().autoCal.txtfreqOffset, "0"); });
  Scan(at, "A-17");
  ASSERT_TRUE(at.UntilCovered());
  EXPECT_EQ(at.Text("verdictWord"), "NOT MEASURED");
  EXPECT_THAT(at.Text("verdictDetails"), HasSubstr("was changed by hand during the run."));
  EXPECT_THAT(at.Text("verdictToDo"), StartsWith("Never ship it"));
}

TEST_F(OperatorPageTest, F12StopsARunAndTheUnitCountsAsNotTested) {
  OperatorRig& at = With({});
  std::string hint;
  at.When([&] { return at.station.State().report.UnderWay() == RunStep::TransmitDcs && at.status.Running(); },
          [&] {
            hint = at.Text("hint");
            at.Press(Qt::Key_F12);
          });
  Scan(at, "A-17");
  ASSERT_TRUE(at.UntilCovered());
  EXPECT_EQ(hint, "Stop (F12): stops behind this level");
  EXPECT_EQ(at.Text("verdictWord"), "NO RESULT");
  EXPECT_EQ(at.Text("verdictWhy"), "The run was stopped: this unit was not tested.");
  ASSERT_TRUE(at.Until([&] { return at.station.Nest().Idle(); }));
  at.Press(Qt::Key_Return);
  at.Settle();
  EXPECT_FALSE(at.Covered());
  EXPECT_EQ(at.Text("shiftUnits"), "0");

  // The unit is still connected: the page lets it go by itself.
  Scan(at, "A-17");
  ASSERT_TRUE(at.UntilCovered());
  EXPECT_EQ(at.Text("verdictWord"), "PASS");
}

TEST_F(OperatorPageTest, ACableThatIsPulledIsABoxAndAUnitThatWasNotTested) {
  OperatorRig& at = With({"unplugged@150"});
  AnswerBoxes(at);
  Scan(at, "A-17");
  ASSERT_TRUE(at.UntilCovered());
  EXPECT_NE(at.Text("verdictWord"), "PASS");
}

TEST_F(OperatorPageTest, AnInstrumentThatGoesInTheRunNeverLeavesAGreenPage) {
  for (const char* fault : {"testset-silent@20", "supply-absent@6"}) {
    OperatorRig& at = With({fault});
    AnswerBoxes(at);
    Scan(at, "A-17");
    ASSERT_TRUE(at.Until([&] { return at.Covered() && at.station.Nest().Idle(); })) << fault;
    EXPECT_NE(at.Text("verdictWord"), "PASS") << fault;
    EXPECT_NE(at.Text("verdictDetails"), "") << fault;
  }
}

TEST_F(OperatorPageTest, APhoneThatIsOffIsACardAndTheNumberStaysForTheNextTry) {
  OperatorRig& at = With({"silent"});
  std::string text;
  std::string toDo;
  at.When([&] { return !at.Card().empty(); },
          [&] {
            text = at.Card();
            toDo = at.Text("cardToDo");
            at.Press(Qt::Key_Return);
          });
  Scan(at, "A-17");
  ASSERT_TRUE(at.Until([&] { return !text.empty() && at.station.Nest().Idle(); }));
  at.Settle();
  EXPECT_THAT(text, HasSubstr("Power On"));
  EXPECT_THAT(toDo, StartsWith("Switch it on."));
  EXPECT_EQ(at.Card(), "");
  EXPECT_EQ(at.Of<QLineEdit>("serial").text(), "A-17");
  EXPECT_EQ(at.Focus(), "serial");
}

TEST_F(OperatorPageTest, ANumberThatIsNoneOfThisProductStartsNothing) {
  Options options = OperatorRig::VirtualOptions();
  options.operating.serialPattern = "A-[0-9]{2}";
  OperatorRig& at = With({}, options);
  Scan(at, "A-173");
  at.Settle();
  EXPECT_EQ(at.Text("hint"), "\"A-173\" is no serial number of this product. Scan it again.");
  EXPECT_TRUE(at.station.Nest().Idle());
  Scan(at, "A-17");
  ASSERT_TRUE(at.UntilCovered()) << "the wrong one was marked, so that this one took its place";
  EXPECT_EQ(at.Text("verdictSerial"), "A-17");
}

TEST_F(OperatorPageTest, WhereANumberIsAskedForEnterAloneStartsNothing) {
  Options options = OperatorRig::VirtualOptions();
  options.askSerial = true;
  OperatorRig& at = With({}, options);
  at.Press(Qt::Key_Return);
  at.Settle();
  EXPECT_EQ(at.Text("hint"), "Scan the serial number of the unit first.");
  EXPECT_TRUE(at.station.Nest().Idle());
}

TEST_F(OperatorPageTest, WhereNoneIsAskedForAPedalRunsUnitAfterUnit) {
  OperatorRig& at = With({});
  at.Press(Qt::Key_Return);
  ASSERT_TRUE(at.UntilCovered());
  ASSERT_TRUE(at.Until([&] { return at.station.Nest().Idle(); }));
  at.Press(Qt::Key_Return);
  at.Settle();
  at.Press(Qt::Key_Return);
  ASSERT_TRUE(at.UntilCovered());
  EXPECT_EQ(at.Text("shiftUnits"), "2");
}

TEST_F(OperatorPageTest, APedalThatIsPressedAgainNeitherStopsNorStartsOne) {
  OperatorRig& at = With({});
  at.When([&] { return at.status.Running(); },
          [&] {
            at.Press(Qt::Key_Return);
            at.Press(Qt::Key_Space);
            at.Type("A-18");
            at.Press(Qt::Key_Return);
          });
  Scan(at, "A-17");
  ASSERT_TRUE(at.UntilCovered());
  EXPECT_EQ(at.Text("verdictWord"), "PASS");
  EXPECT_EQ(at.Text("verdictSerial"), "A-17");
}

TEST_F(OperatorPageTest, AUnitThatIsScannedOverAVerdictDoesNotTakeItAway) {
  OperatorRig& at = With({"battery"});
  AnswerBoxes(at);
  Scan(at, "A-17");
  ASSERT_TRUE(at.Until([&] { return at.Covered() && at.station.Nest().Idle(); }));
  Scan(at, "A-18");
  at.Settle();
  EXPECT_TRUE(at.Covered());
  EXPECT_THAT(at.Text("verdictHint"), StartsWith("Nothing was taken up."));
  at.Press(Qt::Key_Return);
  at.Settle();
  EXPECT_FALSE(at.Covered());
}

TEST_F(OperatorPageTest, ThePagePressesItsButtonsByMouseToo) {
  OperatorRig& at = With({});
  at.Type("A-17");
  QTest::mouseClick(&at.Of("start"), Qt::LeftButton);
  at.When([&] { return at.station.State().report.UnderWay() == RunStep::TransmitDcs; },
          [&] { QTest::mouseClick(&at.Of("stop"), Qt::LeftButton); });
  ASSERT_TRUE(at.Until([&] { return at.Covered() && at.station.Nest().Idle(); }));
  EXPECT_EQ(at.Text("verdictWord"), "NO RESULT");
  QTest::mouseClick(&at.Of("verdictNext"), Qt::LeftButton);
  at.Settle();
  EXPECT_FALSE(at.Covered());
}

TEST_F(OperatorPageTest, AnInstrumentThatIsWaitedForIsNamed) {
  OperatorRig& at = With({});
  InstrumentWait lent{.address = 1, .holder = "line 2", .since = at.loop.Now()};
  at.station.State().instrumentWait = lent;
  at.Settle();
  EXPECT_EQ(at.Text("hint"), "Waiting for the instrument at address 1, which line 2 has: 0 s");
  at.station.State().instrumentWait.reset();
  at.Settle();
  EXPECT_EQ(at.Text("hint"), "");

  std::string words;
  at.waits.onWait = [&] {
    at.view->Look();
    words = at.Text("hint");
  };
  {
    const LongWaits::Message message(at.waits, 5, std::chrono::seconds(10));
    at.waits.Sleep(std::chrono::milliseconds(150));
  }
  at.Settle();
  EXPECT_EQ(words, "Waiting for the instrument at address 5: 0 s");
  EXPECT_EQ(at.Text("hint"), "");
}

TEST_F(OperatorPageTest, ExitAsksAsTheStationDoes) {
  OperatorRig& at = With({});
  std::string text;
  at.When([&] { return !at.Card().empty(); },
          [&] {
            text = at.Card();
            at.Press(Qt::Key_Escape);
          });
  QTest::mouseClick(&at.Of("exit"), Qt::LeftButton);
  ASSERT_TRUE(at.Until([&] { return !text.empty() && at.station.Nest().Idle(); })) << "Escape is Cancel";
  at.Settle();
  EXPECT_EQ(text, "Do you want to finish ORVANE?");
  EXPECT_EQ(at.Card(), "");
}

}  // namespace
}  // namespace orvane::test
