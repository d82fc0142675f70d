#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "app/records/csv_export.h"
#include "app/records/junit_export.h"
#include "app/records/record_json.h"
#include "records_program/sample_records.h"

namespace orvane::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

TEST(CsvExport, IsTheTableOfReadingsWithWhatTellsTheRun) {
  const std::string ofRun = ",'=K7-0001,단말기,bench3,2026-11-22T03:04:05.678Z,FAIL\r\n";
  const std::string id = "019aa9a2-5c2e-7b11-8f3a-2b9d8c1e4f60,";
  EXPECT_EQ(ReadingsCsv({SmallRun()}),
            "run,position,step,name,value,unit,low,high,inside,at_s,serial,part,station,began,verdict\r\n" + id +
                "0,receive,rx.975.level,-580,0.1 dB,,,,0.75" + ofRun + id +
                "1,receive,rx.975.compensation,-3,half dB,-5,5,1,0.75" + ofRun + id +
                "2,transmitGSM,tx.gsm.level.5.power,30.5015,dBm,31.75,32.25,0,2" + ofRun + id +
                "3,transmitGSM,tx.gsm.level.5.dac,584,count,0,1023,1,2" + ofRun + id +
                "4,,road.seconds,2.25,second,,,,2.25" + ofRun);
}

struct Field {
  std::string serial;
  std::string written;
};

TEST(CsvExport, MakesTextsHarmlessAndQuotesThem) {
  const Field rows[] = {
      {"plain", "plain"},
      {"=1+2", "'=1+2"},
      {"+1", "'+1"},
      {"-1", "'-1"},
      {"@A1", "'@A1"},
      {"\t=1", "'\t=1"},
      {" =1", "' =1"},
      {"\r=1", "\"'\r=1\""},
      {"a=1", "a=1"},
      {"a,b", "\"a,b\""},
      {"say \"x\"", "\"say \"\"x\"\"\""},
      {"two\r\nlines", "\"two\r\nlines\""},
      {"=\"x\",1", "\"'=\"\"x\"\",1\""},
      {"\xff\xfe", "\uFFFD\uFFFD"},
      {std::string("a\0b", 3), "a\uFFFDb"},
      {"단말", "단말"},
  };
  for (const Field& row : rows) {
    RunRecord record = SmallRun();
    record.identity.serial = row.serial;
    record.readings.resize(1);
    EXPECT_THAT(ReadingsCsv({record}),
                testing::EndsWith(",0.75," + row.written + ",단말기,bench3,2026-11-22T03:04:05.678Z,FAIL\r\n"));
  }
}

TEST(CsvExport, NumbersKeepAllTheirDigitsAndTheirSigns) {
  const std::pair<double, const char*> rows[] = {{-580, "-580"},
                                                 {28.9596, "28.9596"},
                                                 {0.1 + 0.2, "0.30000000000000004"},
                                                 {100000, "100000"},
                                                 {1e22, "1e+22"},
                                                 {-0.0001, "-0.0001"},
                                                 {0, "0"}};
  for (const auto& [value, text] : rows) {
    RunRecord record = SmallRun();
    record.readings.resize(1);
    record.readings[0].value = value;
    EXPECT_THAT(ReadingsCsv({record}), HasSubstr(std::string("rx.975.level,") + text + ",0.1 dB,"));
  }
}

TEST(JunitExport, ARunIsASuiteAndEachStepThatBeganACase) {
  EXPECT_EQ(JunitXml({SmallRun()}),
            R"(<?xml version="1.0" encoding="UTF-8"?>
<testsuites name="orvane" tests="2" failures="1" errors="0" time="2.25">
  <testsuite name="=K7-0001" id="019aa9a2-5c2e-7b11-8f3a-2b9d8c1e4f60" timestamp="2026-11-22T03:04:05" hostname="bench3" tests="2" failures="1" errors="0" skipped="0" time="2.25">
    <properties>
      <property name="run" value="019aa9a2-5c2e-7b11-8f3a-2b9d8c1e4f60"/>
      <property name="serial" value="=K7-0001"/>
      <property name="part" value="단말기"/>
      <property name="operator" value="Kim \x1b[31m"/>
      <property name="bench" value="virtual"/>
      <property name="bench_setup" value="seed=7"/>
      <property name="program" value="orvane 0.1.0"/>
      <property name="kind" value="whole"/>
      <property name="tag.line" value="A"/>
      <property name="tag.lot" value="7, &quot;b&quot;"/>
      <property name="verdict" value="FAIL"/>
      <property name="complete" value="0"/>
      <property name="ending" value="verdict"/>
    </properties>
    <testcase classname="orvane.whole" name="receive" time="1.25"/>
    <testcase classname="orvane.whole" name="transmitGSM" time="0.5">
      <failure message="level 5 is &lt;outside&gt; &amp; &quot;far&quot;" type="incomplete">level 5 is &lt;outside&gt; &amp; &quot;far&quot;</failure>
    </testcase>
    <system-out>FAIL: level 5 is &lt;outside&gt; &amp; &quot;far&quot;</system-out>
  </testsuite>
</testsuites>
)");
}

TEST(JunitExport, ACompletePassHasNoFailure) {
  const std::string xml = JunitXml({LaterPass()});
  EXPECT_THAT(xml, HasSubstr("tests=\"2\" failures=\"0\""));
  EXPECT_THAT(xml, Not(HasSubstr("<failure")));
}

TEST(JunitExport, ARunThatFailedWithAllStepsCompleteFailsInItsLastStep) {
  RunRecord record = LaterPass();
  record.end->verdict = "FAIL";
  record.end->reason = "the verdict is FAIL";
  EXPECT_THAT(JunitXml({record}),
              HasSubstr("name=\"save\" time=\"1.25\">\n      <failure message=\"the verdict is FAIL\" "
                        "type=\"failed\">"));
}

TEST(JunitExport, ARunThatStoppedAheadOfItsFirstStepHasNoCaseAndSaysWhy) {
  RunRecord record = LaterPass();
  record.steps.clear();
  record.end = RunEnd{record.identity.beganMs, 0, "NONE", false, Ending::Stopped, "Stop was pressed.", 0, 0, 0};
  const std::string xml = JunitXml({record});
  EXPECT_THAT(xml, HasSubstr("tests=\"0\" failures=\"0\""));
  EXPECT_THAT(xml, HasSubstr("<system-out>stopped: Stop was pressed.</system-out>"));
}

TEST(RecordJson, HasTheColumnsOfTheTableRunByNameAndInOrder) {
  const auto run = RunJson(SmallRun().identity, SmallRun().end);
  EXPECT_EQ(
      run.dump(),
      R"({"id":"019aa9a2-5c2e-7b11-8f3a-2b9d8c1e4f60","station":"bench3","bench":"virtual","bench_setup":"seed=7",)"
      R"("program":"orvane 0.1.0","kind":"whole","serial":"=K7-0001","part":"단말기","operator":"Kim \u001b[31m",)"
      R"("began":"2026-11-22T03:04:05.678Z","ended":"2026-11-22T03:04:07.928Z","seconds":2.25,"verdict":"FAIL",)"
      R"("complete":0,"ending":"verdict","reason":"level 5 is <outside> & \"far\"","commands":12,"bytes_out":636,)"
      R"("bytes_in":108})");
}

TEST(RecordJson, WhatIsNotKnownIsNull) {
  RunIdentity unknown = LaterPass().identity;
  unknown.serial = unknown.part = unknown.operatorName = unknown.benchSetup = "";
  const auto underWay = RunJson(unknown, {});
  for (const char* name : {"bench_setup", "serial", "part", "operator", "ended", "seconds", "verdict", "complete",
                           "ending", "reason", "commands", "bytes_out", "bytes_in"}) {
    ASSERT_TRUE(underWay.contains(name)) << name;
    EXPECT_TRUE(underWay[name].is_null()) << name;
  }
  EXPECT_TRUE(RunJson(unknown, LaterPass().end)["reason"].is_null()) << "a complete PASS has none";
  RunEnd abandoned;
  abandoned.ending = Ending::Abandoned;
  for (const char* name : {"seconds", "commands", "bytes_out", "bytes_in"}) {
    EXPECT_TRUE(RunJson(unknown, abandoned)[name].is_null()) << "nobody counted: " << name;
  }
}

TEST(RecordJson, IsTheWholeRecordByTablesAndColumns) {
  const json whole = json::parse(JsonText(RecordJson(SmallRun())));
  EXPECT_EQ(whole["id"], "019aa9a2-5c2e-7b11-8f3a-2b9d8c1e4f60");
  EXPECT_EQ(whole["tags"], (json{{"line", "A"}, {"lot", "7, \"b\""}}));
  EXPECT_EQ(whole["steps"][1], (json{{"position", 1},
                                     {"name", "transmitGSM"},
                                     {"began_s", 1.75},
                                     {"seconds", 0.5},
                                     {"complete", 0},
                                     {"reason", "level 5 is <outside> & \"far\""}}));
  EXPECT_EQ(whole["readings"][2], (json{{"position", 2},
                                        {"step", "transmitGSM"},
                                        {"name", "tx.gsm.level.5.power"},
                                        {"value", 30.5015},
                                        {"unit", "dBm"},
                                        {"low", 31.75},
                                        {"high", 32.25},
                                        {"inside", 0},
                                        {"at_s", 2.0}}));
  EXPECT_TRUE(whole["readings"][0]["low"].is_null() && whole["readings"][0]["inside"].is_null());
  EXPECT_EQ(whole["passes"][1], (json{{"reading", "tx.gsm.level.5"},
                                      {"position", 1},
                                      {"dac", 584},
                                      {"dbm", 30.5015},
                                      {"tolerance", 0.25},
                                      {"at_s", 2.0}}));
  EXPECT_EQ(whole["boxes"][0], (json{{"position", 0},
                                     {"title", "ORVANE"},
                                     {"text", "Level 5 fails.\r\nGo on?"},
                                     {"answer", "Yes"},
                                     {"at_s", 2.0},
                                     {"answered_s", 2.125}}));
  EXPECT_TRUE(whole["boxes"][1]["answer"].is_null() && whole["boxes"][1]["answered_s"].is_null());
}

TEST(RecordJson, DocumentsHaveTheirDigestAndTheirContentButForTraces) {
  const json documents = json::parse(JsonText(RecordJson(SmallRun())))["documents"];
  EXPECT_EQ(documents[0], (json{{"role", "cable_loss"},
                                {"kind", "text"},
                                {"sha256", "d584dd52cd085d5e67a449e4759e2699c663a77ca87975a6e91d149db3112e14"},
                                {"bytes", 11},
                                {"text", "0.5\r\n0.75\r\n"}}));
  EXPECT_EQ(documents[1]["base64"], "AP8Q");
  EXPECT_EQ(documents[2]["bytes"], SmallRun().Document("trace")->content.size());
  EXPECT_FALSE(documents[2].contains("text") || documents[2].contains("base64"));
}

TEST(RecordJson, BytesThatAreNoUtf8AreReplaced) {
  RunRecord record = SmallRun();
  record.identity.serial = "K\xff";
  EXPECT_EQ(json::parse(JsonText(RecordJson(record)))["serial"], "K\uFFFD");
}

}  // namespace
}  // namespace orvane::test
