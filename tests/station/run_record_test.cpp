// What a run leaves in its record, held against what the bench, the line and the desk saw of it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "station/recorded_station.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using namespace std::chrono_literals;

const RecordedReading& ReadingOf(const RunRecord& record, const std::string& name) {
  const auto hit = std::find_if(record.readings.begin(), record.readings.end(),
                                [&](const RecordedReading& reading) { return reading.name == name; });
  if (hit == record.readings.end()) throw std::logic_error("There is no reading " + name);
  return *hit;
}

/// What went out and came in over a link, as the record has it.
std::vector<std::string> BytesOf(const RunRecord& record, const std::string& link, WireEvent event) {
  std::vector<std::string> found;
  for (const WireNote& note : ReadWireLog(record.Document("trace")->content).notes) {
    if (note.link == link && note.event == event) found.push_back(note.bytes);
  }
  return found;
}

std::vector<std::string> NamesOf(const std::vector<RecordedStep>& steps) {
  std::vector<std::string> names;
  for (const RecordedStep& step : steps) names.push_back(step.name);
  return names;
}

class ARecordedRoad : public testing::Test {
 protected:
  const RunRecord& TakenThrough() {
    EXPECT_EQ(recorded_.station.TakeTargetThrough(), std::nullopt);
    return recorded_.TheRecord();
  }

  RecordedStation recorded_{1};
  const RunRecord& record_ = TakenThrough();
};

TEST_F(ARecordedRoad, EndsWithItsVerdictAndTheTallyOfItsLink) {
  EXPECT_EQ(record_.identity.kind, "whole");
  ASSERT_TRUE(record_.end);
  EXPECT_EQ(record_.end->verdict, "PASS");
  EXPECT_TRUE(record_.end->complete);
  EXPECT_EQ(record_.end->ending, Ending::Verdict);
  EXPECT_EQ(record_.end->reason, "");
  // The bring-up, ahead of the run, has two commands of its own.
  EXPECT_EQ(record_.end->commands, recorded_.station.State().tally.commands - 2);
  EXPECT_EQ(record_.end->bytesOut, record_.end->commands * 53);
}

TEST_F(ARecordedRoad, BeginsAheadOfItsFirstByte) {
  ASSERT_THAT(recorded_.begun, SizeIs(1));
  EXPECT_EQ(recorded_.begun.front(), 2U) << "the commands of the bring-up alone";
}

TEST_F(ARecordedRoad, HasItsStepsBehindEachOther) {
  EXPECT_THAT(NamesOf(record_.steps), ElementsAre("receive", "transmitDCS", "transmitGSM", "save", "charger"));
  double last = 0;
  for (const RecordedStep& step : record_.steps) {
    EXPECT_TRUE(step.complete) << step.name;
    EXPECT_EQ(step.reason, "") << step.name;
    EXPECT_GE(step.beganS, last) << step.name;
    EXPECT_GT(step.seconds, 0) << step.name;
    last = step.beganS + step.seconds;
  }
  EXPECT_LE(last, record_.end->seconds);
}

/// Typed from what the bench's test set and Target answered in this road.
TEST_F(ARecordedRoad, HasEveryReadingAsItWasReadWithTheLimitsOfTheRun) {
  const auto expect = [&](const char* name, double value, const char* unit, std::optional<double> low,
                          std::optional<double> high) {
    const RecordedReading& reading = ReadingOf(record_, name);
    EXPECT_DOUBLE_EQ(reading.value, value) << name;
    EXPECT_EQ(reading.unit, unit) << name;
    EXPECT_EQ(reading.low, low) << name;
    EXPECT_EQ(reading.high, high) << name;
  };
  expect("rx.0.level", 574, "0.1 dB", std::nullopt, std::nullopt);
  expect("rx.1023.level", 574, "0.1 dB", std::nullopt, std::nullopt);
  expect("rx.512.compensation", -3, "half dB", -5, 5);
  expect("rx.999.compensation", 0, "half dB", -5, 5);
  expect("rx.gsm.gmagic", 184, "half dB", 171, 191);
  expect("rx.dcs.gmagic", 178, "half dB", 171, 191);
  expect("tx.dcs.level.15.power", 2.9556, "dBm", 2.8, 3.2);
  expect("tx.dcs.level.15.dac", 48, "count", 0, 1020);
  expect("tx.dcs.level.0.power", 28.9596, "dBm", 28.95, 29.05);
  expect("tx.gsm.level.5.power", 32.0015, "dBm", 31.95, 32.05);
  expect("tx.gsm.level.5.dac", 584, "count", 0, 1020);
  expect("tx.gsm.channel.975.power", 32.0473, "dBm", 31.95, 32.05);
  expect("tx.gsm.channel.975.code", 129, "count", std::nullopt, std::nullopt);
  expect("tx.dcs.phase.rms", 1.87, "degree", std::nullopt, 5);
  expect("tx.dcs.phase.peak", 4.54, "degree", std::nullopt, 20);
  expect("tx.gsm.frequency_error", 30.4, "hertz", std::nullopt, std::nullopt);
  expect("battery.full", 627, "count", 619, 631);
  expect("battery.shutdown", 498, "count", 489, 503);
  // 12 levels and 17 compensations, two gains, 31 levels and 6 channels, phases and errors, two counts, three times.
  EXPECT_EQ(record_.readings.size(), 12U + 17 + 2 + 31 * 2 + 6 * 3 + 6 + 2 + 3);
}

TEST_F(ARecordedRoad, PutsEachReadingIntoItsStepAndWithinItsLimits) {
  EXPECT_EQ(ReadingOf(record_, "rx.0.level").step, "receive");
  EXPECT_EQ(ReadingOf(record_, "tx.dcs.level.3.power").step, "transmitDCS");
  EXPECT_EQ(ReadingOf(record_, "tx.gsm.phase.rms").step, "transmitGSM");
  EXPECT_EQ(ReadingOf(record_, "battery.full").step, "charger");
  EXPECT_EQ(ReadingOf(record_, "road.seconds").step, "");
  for (const RecordedReading& reading : record_.readings)
    EXPECT_TRUE(reading.Inside().value_or(true)) << reading.name;
}

/// The powers are what the test set sent: each reply of it to a power query stands in the record's own trace.
TEST_F(ARecordedRoad, PowersAreTheLastRepliesOfTheTestSetBeforeThem) {
  const auto replies = BytesOf(record_, "GPIB 1", WireEvent::In);
  ASSERT_FALSE(replies.empty());
  std::size_t passes = 0;
  std::size_t next = 0;
  for (const RecordedPass& pass : record_.passes) {
    while (next < replies.size() && std::abs(std::stod(replies[next]) - pass.dbm) > 5e-5) ++next;
    ASSERT_LT(next, replies.size()) << pass.reading << " pass " << pass.position;
    ++next;
    ++passes;
  }
  EXPECT_EQ(passes, record_.passes.size());
}

TEST_F(ARecordedRoad, HasEachPassOfASearchAndTheLastOneIsWhatWasFound) {
  std::vector<RecordedPass> search;
  for (const RecordedPass& pass : record_.passes) {
    if (pass.reading == "tx.gsm.level.19") search.push_back(pass);
  }
  ASSERT_FALSE(search.empty());
  for (std::size_t i = 0; i < search.size(); ++i) EXPECT_EQ(search[i].position, static_cast<int>(i));
  EXPECT_EQ(search.back().dac, ReadingOf(record_, "tx.gsm.level.19.dac").value);
  EXPECT_EQ(search.back().dbm, ReadingOf(record_, "tx.gsm.level.19.power").value);
}

TEST_F(ARecordedRoad, KeepsWhatWentIntoTheEepromAndTheFlash) {
  // The unit's own memory, as the bench's model holds it.
  const RecordedDocument* const sent = record_.Document("eeprom.sent");
  ASSERT_NE(sent, nullptr);
  const auto kept = recorded_.station.bench.Models().Target().Kept().Eeprom();
  EXPECT_EQ(sent->content, std::string(kept.begin(), kept.end()));
  const RecordedDocument* const flash = record_.Document("flash.100");
  ASSERT_NE(flash, nullptr);
  EXPECT_EQ(flash->content, std::string("\x73\x02\0\0\0\0\0\0\xF2\x01", 10)) << "627 and 498, low byte first";
}

TEST_F(ARecordedRoad, TraceHasEveryByteOfTheTargetsLine) {
  std::size_t out = 0;
  for (const std::string& bytes : BytesOf(record_, "COM1", WireEvent::Out)) out += bytes.size();
  std::size_t in = 0;
  for (const std::string& bytes : BytesOf(record_, "COM1", WireEvent::In)) in += bytes.size();
  EXPECT_EQ(static_cast<std::int64_t>(out), record_.end->bytesOut);
  EXPECT_EQ(static_cast<std::int64_t>(in), record_.end->bytesIn);
  EXPECT_EQ(ReadWireLog(record_.Document("trace")->content).damage, "");
  EXPECT_THAT(BytesOf(record_, "station", WireEvent::State), ElementsAre(HasSubstr("\"LogFileNumber\":0")))
      << "ahead of all";
}

TEST_F(ARecordedRoad, TellsItsTraceAsItGrows) {
  const std::string& whole = record_.Document("trace")->content;
  EXPECT_EQ(recorded_.kept->grown, whole.substr(0, recorded_.kept->grown.size()));
  EXPECT_GT(ReadWireLog(recorded_.kept->grown).notes.back().at, 2s) << "all but the last quarter of a second";
}

TEST(RunRecord, OfAUnitThatFailedSaysWhy) {
  RecordedStation recorded(1, {"battery"});
  (void)recorded.station.TakeTargetThrough();
  const RunRecord& record = recorded.TheRecord();
  EXPECT_EQ(record.end->verdict, "FAIL");
  EXPECT_FALSE(record.end->complete);
  EXPECT_EQ(record.end->ending, Ending::Verdict);
  EXPECT_THAT(record.end->reason, HasSubstr("Battery Calibration ERROR."));
  EXPECT_EQ(ReadingOf(record, "battery.full").Inside(), false);
  ASSERT_FALSE(record.boxes.empty());
  EXPECT_THAT(record.boxes.back().text, HasSubstr("Battery Calibration ERROR."));
  EXPECT_EQ(record.boxes.back().answer, "OK");
  EXPECT_TRUE(record.boxes.back().answeredS);
}

TEST(RunRecord, OfARunThatWasStoppedSaysSoAndHowFarItCame) {
  RecordedStation recorded(1);
  VirtualStation& station = recorded.station;
  station.loop.PostAt(station.loop.Now() + 1500ms,
                      [&] { station.op.Click(station.Panels().autoCal.cmdAutoCalStop); });
  (void)station.TakeTargetThrough();
  const RunRecord& record = recorded.TheRecord();
  EXPECT_EQ(record.end->verdict, "NONE");
  EXPECT_EQ(record.end->ending, Ending::Stopped);
  EXPECT_THAT(record.end->reason, HasSubstr("Stopped"));
  EXPECT_FALSE(record.steps.back().complete);
  EXPECT_THAT(BytesOf(record, "hand", WireEvent::Act), ElementsAre("frmAutoCal.cmdAutoCalStop\nclick\n"));
}

TEST(RunRecord, OfAFailureThatEndedTheRunHasItsText) {
  RecordedStation recorded(1, {"testset-nan@3"});
  const auto failure = recorded.station.TakeTargetThrough();
  ASSERT_TRUE(failure);
  const RunRecord& record = recorded.TheRecord();
  EXPECT_EQ(record.end->ending, Ending::Failure);
  EXPECT_EQ(record.end->verdict, "NONE");
  EXPECT_EQ(record.end->reason, *failure);
}

TEST(RunRecord, OfABandStartedByHandHasItsReadingsAndNoVerdict) {
  RecordedStation recorded(1);
  VirtualStation& station = recorded.station;
  (void)station.TakeTargetThrough();
  (void)recorded.TheRecord();
  recorded.kept->records.clear();
  (void)station.op.Click(station.Panels().autoCal.cmdGSM);
  const RunRecord& record = recorded.TheRecord();
  EXPECT_EQ(record.identity.kind, "GSM");
  EXPECT_EQ(record.end->verdict, "NONE");
  EXPECT_THAT(record.steps, IsEmpty());
}

TEST(RunRecord, OfAVerifiedSaveHasWhatTheEepromReadBack) {
  StationWishes wishes;
  wishes.verifyEeprom = true;
  RecordedStation recorded(OptionsOf(1, {}), {}, wishes);
  (void)recorded.station.TakeTargetThrough();
  const RunRecord& record = recorded.TheRecord();
  ASSERT_NE(record.Document("eeprom.read"), nullptr);
  EXPECT_EQ(record.Document("eeprom.read")->content, record.Document("eeprom.sent")->content);
}

TEST(RunRecord, OfARunWithAnotherOneInItsMiddleGoesIntoAStore) {
  RecordedStation recorded(1);
  VirtualStation& station = recorded.station;
  station.loop.PostAt(1500ms, [&] {
    station.op.Click(station.Panels().main.cmdTargetReset);
    station.op.Click(station.Panels().main.cmdTargetInitialize);
  });
  (void)station.TakeTargetThrough();
  const RunRecord& record = recorded.TheRecord();
  std::map<std::string, int> next;
  bool isMadeTwice = false;
  for (std::size_t i = 1; i < record.passes.size(); ++i) {
    const RecordedPass& pass = record.passes[i];
    isMadeTwice = isMadeTwice || (pass.reading != record.passes[i - 1].reading && next.contains(pass.reading));
    next.try_emplace(pass.reading, pass.position);
    EXPECT_EQ(pass.position, next[pass.reading]++) << pass.reading;
  }
  EXPECT_TRUE(isMadeTwice) << "a search of the first run comes again in the second one";
}

TEST(RunRecord, OfARunThatWasStoppedInAStepThatCameToItsEndSaysSo) {
  RecordedStation recorded(1);
  VirtualStation& station = recorded.station;
  station.loop.PostAt(400ms, [&] { station.op.Click(station.Panels().autoCal.cmdAutoCalStop); });
  (void)station.TakeTargetThrough();
  const RunRecord& record = recorded.TheRecord();
  EXPECT_THAT(NamesOf(record.steps), ElementsAre("receive"));
  EXPECT_TRUE(record.steps.front().complete);
  EXPECT_EQ(record.end->ending, Ending::Stopped);
  EXPECT_EQ(record.end->reason, "The run was stopped.");
}

TEST(RunRecord, OfAChargerRunByHandThatCameToItsEndIsNotStoppedByAStopFromBefore) {
  RecordedStation recorded(1);
  VirtualStation& station = recorded.station;
  station.loop.PostAt(1500ms, [&] { station.op.Click(station.Panels().autoCal.cmdAutoCalStop); });
  (void)station.TakeTargetThrough();
  EXPECT_EQ(recorded.TheRecord().end->ending, Ending::Stopped);
  recorded.kept->records.clear();
  (void)station.op.Click(station.Panels().baseBand.cmdChargerAutoCal);
  EXPECT_TRUE(station.State().cal.CalStopRequested);
  EXPECT_EQ(recorded.TheRecord().end->ending, Ending::Verdict);
}

TEST(RunRecord, OfARunByHandHasNoneOfTheChangesThatHandsMadeInTheWholeRunBeforeIt) {
  RecordedStation recorded(1);
  VirtualStation& station = recorded.station;
  station.loop.PostAt(2100ms, [&] { station.op.Type(station.Panels().autoCal.txtErrorRate, "0.2"); });
  (void)station.TakeTargetThrough();
  (void)recorded.TheRecord();
  recorded.kept->records.clear();
  station.bench.Serial().Open();
  (void)station.op.Click(station.Panels().autoCal.cmdTxAllCal);
  EXPECT_THAT(recorded.TheRecord().end->reason, Not(HasSubstr("by hand")));
}

TEST(RunRecord, HasTheFlashTableAsItWentOutWhateverStandsInTheBoxes) {
  RecordedStation recorded(1);
  VirtualStation& station = recorded.station;
  FrmBaseBand& panel = station.Panels().baseBand;
  // Behind the charger run's last reading, ahead of the table's write.
  panel.txtShutDownADC.changed.Connect([&] { panel.txtCC2CVADC.SetText("62"); });
  (void)station.TakeTargetThrough();
  const RunRecord& record = recorded.TheRecord();
  ASSERT_NE(record.Document("flash.100"), nullptr);
  EXPECT_EQ(record.Document("flash.100")->content.substr(0, 2), std::string("\x3E\0", 2));
  EXPECT_THAT(station.boxes.Texts(), IsEmpty()) << "the record is in nobody's way";
}

TEST(RunRecord, OfARunInWhichTheClockOnTheWallWasSetBackHasItsTimesAllTheSame) {
  RecordedStation recorded(1);
  recorded.station.loop.PostAt(1500ms, [&] { recorded.kept->clockOff = -std::chrono::hours(2); });
  (void)recorded.station.TakeTargetThrough();
  const RunRecord& record = recorded.TheRecord();
  EXPECT_LT(record.end->endedMs, 0) << "as the clock said";
  EXPECT_GT(record.end->seconds, 2);
  double last = 0;
  for (const RecordedReading& reading : record.readings) {
    EXPECT_GE(reading.atS, last) << reading.name;
    last = reading.atS;
  }
  EXPECT_EQ(ReadWireLog(record.Document("trace")->content).damage, "");
}

TEST(RunRecord, ChangesNoByteOnAnyWire) {
  VirtualStation plain(7);
  (void)plain.TakeTargetThrough();
  RecordedStation recorded(7);
  (void)recorded.station.TakeTargetThrough();
  EXPECT_EQ(plain.journal.Lines(), recorded.station.journal.Lines());
  EXPECT_EQ(plain.journal.Times(), recorded.station.journal.Times());
}

}  // namespace
}  // namespace orvane::test
