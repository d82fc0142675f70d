// A run with a trace, and the story told from it.

#include <gtest/gtest.h>

#include <sstream>

#include "app/trace/trace_record.h"
#include "program/wired_bench.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;

Child::End ExplanationOf(const std::string& path) { return Child({ORVANE_PROGRAM, "--explain", path}).WaitForEnd(); }

/// Everything in a trace, each line of which must be a record.
std::vector<TraceRecord> RecordsIn(const std::string& path) {
  std::vector<TraceRecord> records;
  std::istringstream file(ContentOf(path));
  std::string line;
  std::getline(file, line);
  EXPECT_TRUE(TraceHeadOf(line)) << line;
  while (std::getline(file, line)) {
    const auto record = TraceRecordOf(line);
    EXPECT_TRUE(record) << line;
    if (record) records.push_back(*record);
  }
  return records;
}

std::size_t BytesOf(const std::vector<TraceRecord>& records, const std::string& link, const std::string& event) {
  std::size_t bytes = 0;
  for (const auto& record : records) bytes += record.link == link && record.event == event ? record.bytes.size() : 0;
  return bytes;
}

TEST(TracedRun, HasEveryByteOfAWholeRoadAndIsToldWithoutAnyTrouble) {
  const TempFolder folder;
  const std::string trace = folder / "run.trace";
  WiredBench bench;
  Arguments arguments = bench.Options();
  arguments.insert(arguments.end(), {"--initialize", "--trace", trace});
  const auto run = RunOrvane(arguments);
  EXPECT_EQ(run.status, 0);
  const auto records = RecordsIn(trace);
  // The station's own sum leaves out what stands before and behind the run: "ti", "tms 1" and the last "tms 0".
  constexpr std::size_t kOutside = 3;
  constexpr std::size_t kCommandSize = 53;
  constexpr std::size_t kReplySize = 9;
  EXPECT_THAT(
      run.output,
      HasSubstr(" " + std::to_string(BytesOf(records, "COM1", "out") - kOutside * kCommandSize) + " bytes out, " +
                std::to_string(BytesOf(records, "COM1", "in") - kOutside * kReplySize) + " bytes in"));
  for (const char* link : {"GPIB 1", "GPIB 2", "GPIB 5"}) EXPECT_GT(BytesOf(records, link, "out"), 0U) << link;

  const auto told = ExplanationOf(trace);
  EXPECT_EQ(told.status, 0);
  EXPECT_EQ(told.errors, "");
  EXPECT_THAT(told.output, HasSubstr("-> Target: tms 1 (tm_mode_set)\n"));
  EXPECT_THAT(told.output, HasSubstr("<- Target: tms: status 0, after "));
  EXPECT_THAT(told.output, HasSubstr("-> GPIB 1: SYSTEM:PRESET3\n"));
  EXPECT_THAT(told.output, Not(HasSubstr("!!")));
  EXPECT_THAT(told.output, Not(HasSubstr("??")));
}

TEST(TracedRun, MarksWaitsWithoutAReplyAndFailures) {
  const TempFolder folder;
  const std::string silent = folder / "silent.trace";
  const std::string unplugged = folder / "unplugged.trace";
  const auto ends = InitializeOnEach({{"--bench", "virtual:fault=silent@1", "--trace", silent},
                                      {"--bench", "virtual:fault=unplugged@4", "--trace", unplugged}});
  for (const auto& end : ends) EXPECT_EQ(end.status, 2);
  const std::string story = ExplanationOf(silent).output;
  EXPECT_THAT(story, HasSubstr("!! Target: no reply to \"ti (tm_init)\" for 2.5"));
  EXPECT_THAT(story, HasSubstr("!! Target: no reply to \"tms 1 (tm_mode_set)\" for 2.5"));
  EXPECT_THAT(ExplanationOf(unplugged).output,
              HasSubstr("!! station: failure: The virtual bench's serial device is gone.\n"));
}

TEST(TracedRun, OnAFullDiskGoesOnAndSaysSoOnce) {
  const auto run = RunOrvane({"--initialize", "--bench", "virtual", "--trace", "/dev/full"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.errors,
            "orvane: --trace: /dev/full: No space left on device. The trace ends here; the station goes on.\n");
}

TEST(TracedRun, EndsAtOnceWhereNoTraceCanBeWrittenOrTold) {
  const auto written = RunOrvane({"--initialize", "--bench", "virtual", "--trace", "/nonexistent/run.trace"});
  EXPECT_EQ(written.status, 64);
  EXPECT_EQ(written.errors, "orvane: --trace: /nonexistent/run.trace: No such file or directory\n");
  const auto told = ExplanationOf("/nonexistent/run.trace");
  EXPECT_EQ(told.status, 66);
  EXPECT_EQ(told.errors, "orvane: --explain: /nonexistent/run.trace: No such file or directory\n");
}

TEST(Explanation, OfWhatIsNoTraceEndsWithOneLineAndAStatusOfItsOwn) {
  const TempFolder folder;
  Fill(folder / "notes.txt", "Bench 7:\nthe supply is on loan\n");
  const auto told = ExplanationOf(folder / "notes.txt");
  EXPECT_EQ(told.status, 65);
  EXPECT_EQ(told.output, "");
  EXPECT_EQ(told.errors, "orvane: --explain: " + folder / "notes.txt" + ": it is no trace\n");
}

TEST(TracedRun, ThatIsKilledHasAllButItsLastMoments) {
  const TempFolder folder;
  const std::string trace = folder / "run.trace";
  Child station(Orvane({"--initialize", "--bench", "virtual", "--trace", trace}));
  ASSERT_TRUE(station.Says("transmitGSM ..."));
  station.Kill();
  const auto told = ExplanationOf(trace);
  EXPECT_EQ(told.status, 0);
  EXPECT_THAT(told.output, HasSubstr("-> Target: txpw ")) << "what was said in the step before";
}

}  // namespace
}  // namespace orvane::test
