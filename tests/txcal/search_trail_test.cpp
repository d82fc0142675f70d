#include "txcal/tx_desk.h"

namespace orvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// What an observer sees of the searches, a line an event.
struct SearchTrailOfARun : test::TxDesk {
  SearchTrailOfARun() {
    trail.bandBegan.Connect([this](std::size_t band) { told.push_back("band " + std::to_string(band)); });
    trail.began.Connect([this](const SearchStory& search) {
      told.push_back(search.subject.name + " to " + search.target.Text() + " +-" + search.tolerance.Text());
    });
    trail.passed.Connect([this](const SearchPass& pass) {
      told.push_back(std::to_string(pass.dac) + ": " + pass.power.Text() + " +-" + pass.tolerance.Text());
    });
    trail.ended.Connect([this](const SearchStory& search) { told.push_back("end of " + search.subject.name); });
  }

  SearchTrail& trail = state.searchTrail;
  std::vector<std::string> told;
};

TEST_F(SearchTrailOfARun, TellsEachPassWithItsTargetAndTheToleranceInForce) {
  cal.InitValueIndex[14] = 45;
  reading = [this] {
    return levelWord == 19 ? std::map<int, std::string>{{45, "6.5"}, {46, "6.7"}, {47, "6.85"}}[dac] : "7.9";
  };
  during["txpw 1 18"] = [this] { cal.CalStopRequested = true; };
  ClickGsm();
  EXPECT_THAT(told,
              ElementsAre("band 0", "GSM level 19 to 7 +-0.25", "45: 6.5 +-0.2", "46: 6.7 +-0.2", "47: 6.85 +-0.2",
                          "end of GSM level 19", "GSM level 18 to 8 +-0.2", "end of GSM level 18"));
  ASSERT_THAT(trail.Found(0), SizeIs(1));
  const FoundValue& found = trail.Found(0)[0];
  EXPECT_EQ(found.subject.number, 19);
  EXPECT_EQ(found.dac, 47);
  EXPECT_EQ(found.power, "6.85"_d4);
  EXPECT_EQ(found.target, 7);
  EXPECT_TRUE(found.onTarget);
}

TEST_F(SearchTrailOfARun, HasALevelForEachRowOfTheResultsAndThenTheChannels) {
  ClickDcs();
  ASSERT_THAT(trail.Found(1), SizeIs(16 + 3));
  EXPECT_THAT(trail.Found(0), IsEmpty());
  for (std::size_t i = 0; i < 16; ++i) {
    const FoundValue& found = trail.Found(1)[i];
    EXPECT_EQ(results.listPowerLevel.Items()[i + 1],
              std::to_string(found.dac) + "\t" + std::to_string(found.subject.number) + "\t" + found.power.Text());
    EXPECT_EQ(found.subject.kind, SearchSubject::Kind::Level);
  }
  EXPECT_EQ(trail.Found(1)[16].subject.name, "DCS channel 512");
  EXPECT_EQ(trail.Found(1)[18].subject.number, 885);
  EXPECT_EQ(trail.Found(1)[18].subject.kind, SearchSubject::Kind::Channel);
}

TEST_F(SearchTrailOfARun, BeginsABandAnewAndKeepsTheOtherOne) {
  ClickDcs();
  ClickGsm();
  during["txpw 1 119"] = during["txpw 1 115"] = [this] { cal.CalStopRequested = true; };
  ClickDcs();
  EXPECT_THAT(trail.Found(0), SizeIs(15 + 3));
  EXPECT_THAT(trail.Found(1), IsEmpty());
}

TEST_F(SearchTrailOfARun, EndsWithAFailureInTheMiddleOfASearch) {
  reading = [] { return std::string("no power"); };
  ClickGsm();
  ASSERT_TRUE(outcome);
  EXPECT_FALSE(trail.UnderWay());
  EXPECT_THAT(told, ElementsAre("band 0", "GSM level 19 to 7 +-0.25", "end of GSM level 19"));
  EXPECT_THAT(trail.Found(0), IsEmpty());
}

TEST_F(SearchTrailOfARun, AValueAcceptedAtALimitIsNotOnTarget) {
  reading = [] { return std::string("-20"); };
  during["txpw 1 18"] = [this] { cal.CalStopRequested = true; };
  ClickGsm();
  ASSERT_THAT(trail.Found(0), SizeIs(1));
  EXPECT_EQ(trail.Found(0)[0].dac, 1020);
  EXPECT_FALSE(trail.Found(0)[0].onTarget);
}

}  // namespace
}  // namespace orvane
