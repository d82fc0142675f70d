#include "program/error_box.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace orvane::test {
namespace {

using testing::HasSubstr;

constexpr const char* kConsole = "OrvaneMain.txtResults";

/// What was told of a failure ahead of the box that has been heard.
Json LastTold(Station& station) {
  const auto& told = station.Heard("instrument");
  return told.empty() ? Json{{"address", 0}, {"route", ""}, {"text", "nothing was told"}} : told.back();
}

}  // namespace

const Instrument& InstrumentAt(int address) {
  return *std::find_if(kInstruments.begin(), kInstruments.end(),
                       [&](const Instrument& instrument) { return instrument.address == address; });
}

Json ClickIntoErrorBox(Station& station, const std::string& control, const ErrorEvent& event,
                       const std::function<void(const std::string& line)>& atBox) {
  station.answersBoxes = false;
  const int click = station.SendClick(control);
  const Json box = station.Await("box");
  const Json told = LastTold(station);
  const std::string line = told["text"];
  atBox(line);
  EXPECT_THAT(event.who, testing::StartsWith("Instrument at address " + told["address"].dump()));
  EXPECT_THAT(event.who, HasSubstr("route " + std::string(told["route"]) + ": "));
  EXPECT_THAT(std::string(station.Get(kConsole)["text"]), testing::Not(HasSubstr("Instrument at address")));
  EXPECT_EQ(box["text"], event.timedOut ? "Unable to open device\ribsta = &HC000\riberr = 6"
                                        : "Unable to open device\ribsta = &H8000\riberr = 2");
  EXPECT_EQ(box["title"], "Error");
  EXPECT_EQ(box["icon"], "stop");
  EXPECT_THAT(line, testing::StartsWith(event.who));
  EXPECT_THAT(line, HasSubstr(event.says));
  station.answersBoxes = true;
  station.Send("answer", {{"id", box["id"]}, {"button", box["buttons"][0]}});
  return station.AnswerTo(click);
}

void ExpectInitializeTakesTheErrorAway(Station& station, const Instrument& instrument) {
  const std::size_t boxes = station.Heard("box").size();
  station.Set(kConsole, "text", "");
  EXPECT_TRUE(station.Click(instrument.initialize).contains("result"));
  EXPECT_EQ(station.Heard("box").size(), boxes);
  EXPECT_EQ(station.Get(kConsole)["text"], "");
}

void ExpectInstrumentsReady(Station& station) {
  station.Set(kConsole, "text", "");
  station.InitializeInstruments();
  const std::string console = station.Get(kConsole)["text"];
  for (const Instrument& instrument : kInstruments) {
    EXPECT_EQ(station.State(instrument.ready), true) << instrument.ready;
    EXPECT_THAT(console, HasSubstr(instrument.identity));
  }
}

}  // namespace orvane::test
