// What a client says of the next unit.

#include "app/port_rig.h"

namespace orvane::test {
namespace {

TEST_F(Port, TellsWhatHoldsForTheNextRun) {
  EXPECT_EQ(Ask("unit")["result"], Json::parse(R"({"serial":null,"operator":null,"part":null,"tags":{}})"));
  EXPECT_EQ(Ask("unit", Json::parse(R"({"serial":"A-1","operator":"김","tags":{"line":"A","shift":"2"}})"))["result"],
            Json::parse(R"({"serial":"A-1","operator":"김","part":null,"tags":{"line":"A","shift":"2"}})"));
  EXPECT_EQ(unit_.Texts().serial, "A-1");
  EXPECT_EQ(
      Ask("unit", Json::parse(R"({"part":"T9300","tags":{"line":"B","cell":""}})"))["result"],
      Json::parse(R"({"serial":"A-1","operator":"김","part":"T9300","tags":{"cell":"","line":"B","shift":"2"}})"))
      << "merged with what holds";
}

TEST_F(Port, TakesBackWhatNoLongerHolds) {
  Ask("unit", Json::parse(R"({"serial":"A-1","part":"T9300","tags":{"line":"A","shift":"2"}})"));
  EXPECT_EQ(Ask("unit", Json::parse(R"({"serial":null,"part":"","tags":{"line":null}})"))["result"],
            Json::parse(R"({"serial":null,"operator":null,"part":null,"tags":{"shift":"2"}})"));
}

TEST_F(Port, OddSerialNumbersAreKeptAsTheyAre) {
  for (const std::string& serial : {std::string(10000, 'x'), std::string("'; drop table run; --"),
                                    std::string("<b>\"&amp;\\"), std::string("일련번호 7")}) {
    EXPECT_EQ(Ask("unit", {{"serial", serial}})["result"]["serial"], serial);
    EXPECT_EQ(unit_.Texts().serial, serial);
  }
}

TEST_F(Port, RefusesATextThatNoRecordCanHoldAndChangesNothing) {
  Ask("unit", {{"serial", "A-1"}});
  const char* rows[] = {
      R"({"serial":"A\n2"})",
      R"({"serial":"A\u00002"})",
      R"({"serial":"A\u007f"})",
      R"({"serial":"A\u0085"})",
      R"({"operator":"\t"})",
      R"({"part":"\u001b[31m"})",
      R"({"tags":{"line":"\r"}})",
      R"({"tags":{"li\ne":"A"}})",
      R"({"tags":{"":"A"}})",
      R"({"tags":["line"]})",
      R"({"tags":{"line":7}})",
      R"({"tags":null})",
      R"({"serial":7})",
      R"({"operator":true})",
      R"({"Serial":"A-2"})",
      R"({"serial":"A-2","station":"3"})",
      R"({"serial":"A-2","part":"\u0001"})",
  };
  for (const char* params : rows) {
    EXPECT_EQ(ErrorOf("unit", Json::parse(params)), -32602) << params;
    EXPECT_EQ(unit_.Texts(), (UnitTexts{.serial = "A-1"})) << params;
  }
}

TEST_F(Port, SpeaksOfTheUnitWhileABoxIsOpen) {
  AskLater(1ms, 7, "unit", {{"serial", "A-1"}});
  AskLater(2ms, 8, "answer", {{"id", 1}, {"button", "OK"}});
  desk_.Warning("Battery Calibration ERROR.");
  EXPECT_EQ(AnswerTo(7)["result"]["serial"], "A-1");
}

}  // namespace
}  // namespace orvane::test
