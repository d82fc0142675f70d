// What the desk's command line takes, and what it starts its stations with.

#include "app/stations/desk_plan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/scratch_folder.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;

std::variant<DeskOptions, EndAtOnce> Parse(std::vector<const char*> words) {
  words.insert(words.begin(), "orvane-desk");
  return ParseDeskLine(static_cast<int>(words.size()), words.data());
}

std::string FaultOf(const std::vector<const char*>& words) {
  const auto parsed = Parse(words);
  const auto* end = std::get_if<EndAtOnce>(&parsed);
  if (end == nullptr) return "no fault";
  EXPECT_EQ(end->status, 64);
  return end->text;
}

TEST(DeskLine, TakesOneToEightProfiles) {
  EXPECT_EQ(std::get<DeskOptions>(Parse({"a", "b"})).profiles, (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(std::get<DeskOptions>(Parse({"1", "2", "3", "4", "5", "6", "7", "8"})).profiles.size(), 8U);
  EXPECT_EQ(std::get<DeskOptions>(Parse({"a", "--theme", "dark"})).theme, Theme::Dark);
  EXPECT_EQ(FaultOf({}), "orvane-desk: It takes the profiles of one to eight stations, and was given none.");
  EXPECT_EQ(FaultOf({"1", "2", "3", "4", "5", "6", "7", "8", "9"}),
            "orvane-desk: It takes the profiles of one to eight stations, and was given 9.");
  EXPECT_THAT(FaultOf({"a", "--view", "panels"}), HasSubstr("--view"));
  EXPECT_THAT(FaultOf({"a", "--theme", "blue"}), HasSubstr("--theme"));
}

TEST(DeskLine, HelpAndVersionAreNoFault) {
  for (const char* word : {"--help", "--version", "-h"}) {
    const auto end = std::get<EndAtOnce>(Parse({word}));
    EXPECT_EQ(end.status, 0);
    EXPECT_THAT(end.text, HasSubstr("orvane-desk"));
  }
}

class DeskPlanTest : public testing::Test {
 protected:
  QString CommandFor(const std::string& profile) {
    folder_.Put("left bench.toml", profile);
    plan_ = PlanStation("/usr/bin/orvane", folder_.Path("left bench.toml"), 2, "/tmp/d", {});
    return plan_.command.join("|");
  }
  ScratchFolder folder_;
  PlannedStation plan_;
};

TEST_F(DeskPlanTest, AStationHasItsPageItsPortAndItsWayBack) {
  const QString profile = QString::fromStdString(folder_.Path("left bench.toml"));
  EXPECT_EQ(
      CommandFor("station = \"Line 7\"\n"),
      "/usr/bin/orvane|--profile|" + profile + "|--automation|unix:/tmp/d/2|--view|operator|--desk|2@/tmp/d/desk");
  EXPECT_EQ(plan_.name, "Line 7");
  EXPECT_EQ(plan_.socket, "/tmp/d/2");
}

TEST_F(DeskPlanTest, OneWithoutWindowsHasNoPage) {
  EXPECT_FALSE(CommandFor("headless = true\n").contains("--view"));
  EXPECT_EQ(plan_.name, "left bench") << "the profile's name, where no other is given";
}

TEST_F(DeskPlanTest, AProfileThatCannotBeTakenIsTheStationsToTell) {
  EXPECT_TRUE(CommandFor("com9 = 1\n").contains("--profile"));
  EXPECT_EQ(plan_.name, "left bench");
}

}  // namespace
}  // namespace orvane::test
