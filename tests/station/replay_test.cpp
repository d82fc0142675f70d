// Runs that are run again on a bench that consists of their record: the same where nothing was touched, and whatever
// was touched is named.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "app/replay/replayed_run.h"
#include "station/recorded_station.h"

namespace orvane::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using namespace std::chrono_literals;

void ExpectSame(const RunRecord& record) {
  const ReplayedRun run = RunAgain(record);
  EXPECT_TRUE(run.Same()) << run.Text();
  EXPECT_EQ(run.Text(), "");
}

RunRecord RecordOf(RecordedStation& recorded) {
  (void)recorded.station.TakeTargetThrough();
  return recorded.TheRecord();
}
RunRecord RecordOf(std::uint64_t seed, const std::vector<std::string>& faults = {}) {
  RecordedStation recorded(seed, faults);
  return RecordOf(recorded);
}

/// The record with the notes of its trace changed by `change`.
RunRecord WithNotes(RunRecord record, const std::function<void(std::vector<WireNote>& notes)>& change) {
  const auto trace = std::find_if(record.documents.begin(), record.documents.end(),
                                  [](const RecordedDocument& document) { return document.role == "trace"; });
  auto notes = ReadWireLog(trace->content).notes;
  change(notes);
  WireLog log;
  for (const WireNote& note : notes) log.Note(note.at, note.link, note.event, note.bytes);
  trace->content = log.Content();
  return record;
}

/// The n-th note of that link and event, from 0.
WireNote& NoteOf(std::vector<WireNote>& notes, std::string_view link, WireEvent event, int n) {
  for (WireNote& note : notes) {
    if (note.link == link && note.event == event && n-- == 0) return note;
  }
  throw std::logic_error("The trace has not so many of them");
}

TEST(Replay, OfAUnitThatPassedIsTheSame) {
  const RunRecord record = RecordOf(1);
  ASSERT_EQ(record.end->verdict, "PASS");
  ExpectSame(record);
}

TEST(Replay, OfUnitsThatFailedIsTheSame) {
  for (const char* fault : {"battery", "pa-dead", "pa-weak", "phase", "receiver", "status-txpw@7", "status@40",
                            "late@60", "garbage@50", "short@70", "supply-absent@2"}) {
    SCOPED_TRACE(fault);
    const RunRecord record = RecordOf(1, {fault});
    ASSERT_FALSE(record.end->complete);
    ExpectSame(record);
  }
}

TEST(Replay, OfAFailureThatEndedTheRunIsTheSame) {
  for (const char* fault : {"testset-nan@3", "testset-silent@20", "testset-absent@30", "unplugged@100"}) {
    SCOPED_TRACE(fault);
    const RunRecord record = RecordOf(1, {fault});
    ASSERT_EQ(record.end->ending, Ending::Failure);
    ExpectSame(record);
  }
}

TEST(Replay, OfARunThatAnOperatorStoppedPressesStopAgain) {
  RecordedStation recorded(1);
  VirtualStation& station = recorded.station;
  station.loop.PostAt(1500ms, [&] { station.op.Click(station.Panels().autoCal.cmdAutoCalStop); });
  const RunRecord record = RecordOf(recorded);
  ASSERT_EQ(record.end->ending, Ending::Stopped);
  ExpectSame(record);
}

TEST(Replay, OfAStationThatWasEndedInMidRunEndsThere) {
  RecordedStation recorded(1);
  recorded.station.loop.PostAt(1500ms, [] { throw StationEnded(); });
  EXPECT_THROW((void)recorded.station.TakeTargetThrough(), StationEnded);
  recorded.kept->ports.recorder.Flush();
  const RunRecord& record = recorded.TheRecord();
  ASSERT_EQ(record.end->ending, Ending::Stopped);
  ExpectSame(record);
}

TEST(Replay, OfHandsThatChangedSettingsChangesThemAgain) {
  RecordedStation recorded(1);
  VirtualStation& station = recorded.station;
  station.loop.PostAt(1200ms, [&] { station.op.Type(station.Panels().autoCal.txtErrorRate, "0.3"); });
  station.loop.PostAt(1300ms, [&] { station.op.Select(station.Panels().autoCal.optSaveModeFile); });
  station.loop.PostAt(1400ms, [&] { station.op.Check(station.Panels().autoCal.chkAutoSaveMode, false); });
  const RunRecord record = RecordOf(recorded);
  EXPECT_THAT(record.end->reason, HasSubstr("changed by hand"));
  ExpectSame(record);
}

TEST(Replay, OfSettingsThatWereMadeAheadOfTheRunHasThem) {
  RecordedStation recorded(3);
  FrmAutoCal& panel = recorded.station.Panels().autoCal;
  panel.Touch();
  recorded.station.op.Type(panel.txtErrorRate, "0.3");
  recorded.station.op.Type(panel.txtLoss, "-0.7");
  recorded.station.op.Type(panel.comboOffset, "+offset");
  recorded.station.op.Select(panel.optSaveModeFile);
  recorded.station.dialogs.answers = {"/out/unit.epm"};
  recorded.station.files.content["/out/unit.epm"] = "an old one";
  recorded.station.boxes.answers = {BoxButton::Yes};
  const RunRecord record = RecordOf(recorded);
  ASSERT_EQ(record.end->verdict, "PASS");
  ExpectSame(record);
}

TEST(Replay, OfAResultThatCouldNotBeWrittenFailsAgain) {
  RecordedStation recorded(3);
  FrmAutoCal& panel = recorded.station.Panels().autoCal;
  panel.Touch();
  recorded.station.op.Select(panel.optSaveModeFile);
  recorded.station.dialogs.answers = {"/out/unit.epm"};
  recorded.station.files.unopenable = {"/out/unit.epm"};
  const RunRecord record = RecordOf(recorded);
  ASSERT_FALSE(record.end->complete);
  ExpectSame(record);
}

TEST(Replay, OfALogThatFillsItsDiskAsksAgain) {
  RecordedStation recorded(1);
  VirtualStation& station = recorded.station;
  station.dialogs.answers = {"/log.txt"};
  station.Panels().main.Touch();
  station.op.Click(station.Panels().main.cmdLogOn);
  station.files.room = 2000;
  station.boxes.answers = {BoxButton::Retry, BoxButton::Retry, BoxButton::Cancel};
  const RunRecord record = RecordOf(recorded);
  ASSERT_THAT(record.boxes, Not(IsEmpty()));
  ExpectSame(record);
}

TEST(Replay, OfARunWithAnotherOneInItsMiddleIsTheSame) {
  RecordedStation recorded(1);
  VirtualStation& station = recorded.station;
  station.loop.PostAt(1500ms, [&] {
    station.op.Click(station.Panels().main.cmdTargetReset);
    station.op.Click(station.Panels().main.cmdTargetInitialize);
  });
  ExpectSame(RecordOf(recorded));
}

TEST(Replay, OfALossThatIsNoNumberIsTheSame) {
  RecordedStation recorded(1);
  VirtualStation& station = recorded.station;
  station.Panels().baseBand.Touch();
  station.Panels().autoCal.Touch();
  station.op.Type(station.Panels().autoCal.txtLoss, "");
  ExpectSame(RecordOf(recorded));
}

TEST(Replay, OfADialogThatHadAnotherTitleHasThatTitle) {
  RecordedStation recorded(1);
  VirtualStation& station = recorded.station;
  station.Panels().downLoad.Touch();
  station.op.Click(station.Panels().downLoad.cmdUpLoad);
  station.Panels().autoCal.Touch();
  station.op.Select(station.Panels().autoCal.optSaveModeFile);
  station.dialogs.answers = {"/out/unit.epm"};
  ExpectSame(RecordOf(recorded));
}

TEST(Replay, OfASessionWhoseBoxesWereChangedSinceHasItsOwnAddress) {
  RecordedStation recorded(1);
  VirtualStation& station = recorded.station;
  station.InitializeInstruments();
  station.op.Type(station.Panels().baseBand.supply.primAddress, "3");
  station.op.Type(station.Panels().baseBand.supply.timeOut, "");
  (void)station.InitializeTarget();
  ExpectSame(recorded.TheRecord());
}

TEST(Replay, OfAKeyInTheMiddleOfATextLeavesTheSameText) {
  RecordedStation recorded(1);
  VirtualStation& station = recorded.station;
  TextBox& box = station.Panels().autoCal.txtErrorRate;
  station.loop.PostAt(1200ms, [&] { station.op.Key(box, U'2', [] { return std::string("0.12"); }); });
  TextBox& command = station.Panels().main.txtUserCommand;
  station.loop.PostAt(1900ms, [&] { station.op.Key(command, U'x', [] { return std::string("xyz"); }); });
  const RunRecord record = RecordOf(recorded);
  EXPECT_THAT(record.end->reason, HasSubstr("changed by hand"));
  ExpectSame(record);
}

TEST(Replay, OfRunsByHandIsTheSame) {
  RecordedStation recorded(1);
  VirtualStation& station = recorded.station;
  (void)station.TakeTargetThrough();
  (void)recorded.TheRecord();
  StationPanels& panels = station.Panels();
  panels.main.cboPort.SetText("COM1");
  for (Button* const button :
       {&panels.mpAutoCal.cmdMPRxAllAutoCal, &panels.autoCal.cmdGSM, &panels.autoCal.cmdDCS,
        &panels.autoCal.cmdTxAllCal, &panels.autoCal.Command1, &panels.baseBand.cmdChargerAutoCal}) {
    SCOPED_TRACE(button->Name());
    for (const bool open : {false, true}) {
      recorded.kept->records.clear();
      if (open != station.bench.Serial().PortOpen()) {
        if (open) {
          station.bench.Serial().Open();
        } else {
          station.bench.Serial().Close();
        }
      }
      (void)station.op.Click(*button);
      ExpectSame(recorded.TheRecord());
    }
  }
}

TEST(Replay, OfAVerifiedSaveReadsTheEepromBack) {
  StationWishes wishes;
  wishes.verifyEeprom = true;
  RecordedStation recorded(OptionsOf(1, {}), {}, wishes);
  const RunRecord record = RecordOf(recorded);
  ASSERT_NE(record.Document("eeprom.read"), nullptr);
  ExpectSame(record);
}

TEST(Replay, OfDamagedTablesKnowsOfTheDamage) {
  RecordedStation recorded(OptionsOf(1, {}), {{"Cable.loss", ""}});
  const RunRecord record = RecordOf(recorded);
  EXPECT_THAT(record.end->reason, HasSubstr("Cable.loss"));
  ExpectSame(record);
}

TEST(Replay, OfARunThatWasAbandonedGoesAsFarAsItsTraceDoes) {
  RunRecord record = RecordOf(1);
  RecordedDocument& trace = record.documents.back();
  ASSERT_EQ(trace.role, "trace");
  for (const std::size_t size : {trace.content.size() / 2, trace.content.size() / 3}) {
    RunRecord left;
    left.identity = record.identity;
    left.end.emplace().ending = Ending::Abandoned;
    left.documents = record.documents;
    left.documents.back().content.resize(size);
    const ReplayedRun run = RunAgain(left);
    EXPECT_TRUE(run.Same()) << run.Text();
    EXPECT_GT(run.now.readings.size(), 3U) << "it went on until there";
  }
}

TEST(Replay, AReplyOfTheTestSetThatWasChangedIsNamed) {
  const RunRecord record = WithNotes(RecordOf(1), [](std::vector<WireNote>& notes) {
    // A power in a search: the DAC that comes next is another one.
    NoteOf(notes, "GPIB 1", WireEvent::In, 30).bytes = "33.0\n";
  });
  const ReplayedRun run = RunAgain(record);
  EXPECT_FALSE(run.Same());
  EXPECT_THAT(run.Text(), HasSubstr("in step transmitDCS: the record has COM1 \"txpw"));
  EXPECT_THAT(run.Text(), HasSubstr("Search tx.dcs.channel."));
}

TEST(Replay, AByteOfAReplyOfTheTargetThatWasChangedIsNamed) {
  const RunRecord record = WithNotes(RecordOf(1), [](std::vector<WireNote>& notes) {
    // The status of the fifth reply.
    std::string& reply = NoteOf(notes, "COM1", WireEvent::In, 5).bytes;
    reply.at(reply.find('\x02') + 5) = 7;
  });
  const ReplayedRun run = RunAgain(record);
  EXPECT_FALSE(run.Same());
  EXPECT_THAT(run.Text(), HasSubstr("Verdict: FAIL, not PASS."));
}

TEST(Replay, AReadingThatWasChangedIsNamed) {
  RunRecord record = RecordOf(1);
  record.readings.at(4).value += 1;
  EXPECT_THAT(RunAgain(record).Text(), HasSubstr("Reading rx."));
  record = RecordOf(1);
  record.readings.erase(record.readings.begin() + 4);
  EXPECT_THAT(RunAgain(record).Text(), HasSubstr(" is new."));
}

TEST(Replay, ATableThatWasChangedIsNamed) {
  RunRecord record = RecordOf(1);
  const auto ramp = std::find_if(record.documents.begin(), record.documents.end(),
                                 [](const RecordedDocument& document) { return document.role == "ramp_table"; });
  ASSERT_EQ(ramp->content.at(2), '0') << "the first text";
  ramp->content.at(2) = '7';
  EXPECT_THAT(RunAgain(record).Text(), HasSubstr("the record has COM1 \"ttw 0 0 "));
}

TEST(Replay, AnAnswerThatIsLeftOutIsToldAndTheRestGoesOn) {
  const RunRecord record = WithNotes(RecordOf(1), [](std::vector<WireNote>& notes) {
    const WireNote* const reply = &NoteOf(notes, "COM1", WireEvent::In, 20);
    notes.erase(notes.begin() + (reply - notes.data()) - 1, notes.begin() + (reply - notes.data()) + 1);
  });
  const ReplayedRun run = RunAgain(record);
  EXPECT_FALSE(run.Same());
  EXPECT_THAT(run.Text(), HasSubstr("1 without a reply"));
  EXPECT_EQ(run.now.steps.size(), 5U);
}

TEST(Replay, WithOtherTablesTellsWhatChanges) {
  const RunRecord record = RecordOf(1);
  const OtherTable same = [](const std::string& name) { return InstalledFile(name); };
  EXPECT_EQ(RunAgain(record, same).Text(), "");
  const OtherTable noLoss = [](const std::string& name) {
    return name == "Cable.loss" ? std::nullopt : std::optional(InstalledFile(name));
  };
  const ReplayedRun run = RunAgain(record, noLoss);
  EXPECT_FALSE(run.Same());
  EXPECT_THAT(run.Text(), HasSubstr("Cable.loss"));
}

TEST(Replay, OfWhatIsNoRecordSaysWhatItLacks) {
  const auto textOf = [](const RunRecord& record) {
    try {
      (void)RunAgain(record);
      return std::string();
    } catch (const CannotReplay& fault) {
      return std::string(fault.what());
    }
  };
  const RunRecord whole = RecordOf(1);
  EXPECT_EQ(textOf(RunRecord{}), "It has no document \"trace\".");
  RunRecord record = whole;
  record.documents.back().content.resize(5000);
  EXPECT_THAT(textOf(record), HasSubstr("Its trace is damaged: "));
  record = WithNotes(whole, [](std::vector<WireNote>& notes) { notes.erase(notes.begin()); });
  EXPECT_EQ(textOf(record), "Its trace does not say what the station knew when the run began.");
  record = WithNotes(whole, [](std::vector<WireNote>& notes) { notes.front().bytes = "{"; });
  EXPECT_EQ(textOf(record), "What it says of the station when the run began cannot be read.");
  record = WithNotes(whole, [](std::vector<WireNote>& notes) { notes.front().bytes = "{}"; });
  EXPECT_EQ(textOf(record), "What it says of the station when the run began cannot be read.");
  record = whole;
  record.identity.kind = "dance";
  EXPECT_EQ(textOf(record), "There is no run of the kind \"dance\".");
  record = whole;
  std::erase_if(record.documents, [](const RecordedDocument& document) { return document.role == "panel"; });
  EXPECT_EQ(textOf(record), "It has no document \"panel\".");
}

}  // namespace
}  // namespace orvane::test
