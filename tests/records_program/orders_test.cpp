#include "app/records/orders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace orvane::test {
namespace {

using testing::HasSubstr;
using Words = std::vector<std::string>;

std::variant<RecordsOrder, NoOrder> Parse(const Words& words, const std::string& defaultStore = "sqlite:/default") {
  std::vector<const char*> argv{"orvane-records"};
  for (const std::string& word : words) argv.push_back(word.c_str());
  return ParseRecordsOrder(static_cast<int>(argv.size()), argv.data(), defaultStore);
}

template <class Order>
Order Accepted(const Words& words) {
  const auto parsed = Parse(words);
  if (const auto* none = std::get_if<NoOrder>(&parsed)) {
    ADD_FAILURE() << none->text;
    return {};
  }
  return std::get<Order>(std::get<RecordsOrder>(parsed).verb);
}

struct BadLine {
  Words words;
  const char* named;
};

TEST(RecordsOrders, ABadLineIsOneLineThatNamesItAndStatus64) {
  const BadLine rows[] = {
      {{}, "a verb is missing"},
      {{"erase"}, "no verb or option \"erase\""},
      {{"--erase"}, "--erase"},
      {{"list", "--colour"}, "--colour"},
      {{"list", "last"}, "last"},
      {{"list", "--verdict", "GOOD"}, "--verdict"},
      {{"list", "--since", "yesterday"}, "yesterday"},
      {{"list", "--since", "2026-13-01"}, "2026-13-01"},
      {{"list", "--until", "2026-11-22T25:00"}, "2026-11-22T25:00"},
      {{"list", "--limit", "-1"}, "--limit"},
      {{"list", "--limit", "many"}, "--limit"},
      {{"list", "--json=no"}, "--json"},
      {{"list", "--serial", "a", "--serial", "b"}, "--serial"},
      {{"list", "--store", "sqlite:"}, "sqlite:"},
      {{"--store", "mysql:x", "list"}, "mysql:x"},
      {{"--store", "sqlite:a", "--store", "sqlite:b", "list"}, "--store"},
      {{"show"}, "RUN"},
      {{"show", ""}, "RUN"},
      {{"show", "a", "b"}, "b"},
      {{"export", "last"}, "--to"},
      {{"export", "--to", "a.csv"}, "RUN"},
      {{"export", "last", "--to", "a.pdf"}, "a.pdf"},
      {{"export", "last", "--to", ".csv"}, ".csv"},
      {{"import"}, "FILE"},
      {{"replay"}, "RUN or --all"},
      {{"replay", "last", "--all"}, "--all"},
      {{"replay", "last", "--jobs", "0"}, "--jobs"},
      {{"replay", "last", "--jobs", "two"}, "--jobs"},
      {{"replay", "last", "--system-dir", ""}, "--system-dir"},
      {{"prune"}, "--before"},
      {{"prune", "--before", "soon"}, "soon"},
      {{"prune", "--before", "2026-01-01", "--keep-failed=no"}, "--keep-failed"},
      {{"forward"}, "--to"},
      {{"forward", "--to", "there"}, "there"},
      {{"list", "show"}, "show"},
      {{"list", "\x1b[2J"}, "\\x1b[2J"},
  };
  for (const BadLine& row : rows) {
    const auto parsed = Parse(row.words);
    const auto* none = std::get_if<NoOrder>(&parsed);
    ASSERT_NE(none, nullptr) << testing::PrintToString(row.words);
    EXPECT_EQ(none->status, 64) << testing::PrintToString(row.words);
    EXPECT_THAT(none->text, testing::StartsWith("orvane-records: "));
    EXPECT_THAT(none->text, HasSubstr(row.named));
    EXPECT_EQ(std::count(none->text.begin(), none->text.end(), '\n'), 0) << none->text;
  }
}

TEST(RecordsOrders, TheStoreMayStandAheadOfTheVerbOrBehindIt) {
  for (const Words& words : {Words{"--store", "sqlite:/a", "list"}, Words{"list", "--store", "sqlite:/a"}}) {
    EXPECT_EQ(std::get<RecordsOrder>(Parse(words)).store, "sqlite:/a");
  }
  EXPECT_EQ(std::get<RecordsOrder>(Parse({"list"})).store, "sqlite:/default");
  EXPECT_EQ(std::get<NoOrder>(Parse({"list"}, "")).status, 64) << "whoever has no home has no default";
}

TEST(RecordsOrders, TakeWhatEachVerbTakes) {
  const auto list = Accepted<ListOrder>({"list", "--serial", "S", "--station", "B", "--verdict", "PASS", "--since",
                                         "2026-11-22", "--until", "2026-11-23T01:02", "--limit", "7", "--json"});
  EXPECT_EQ(list.query.serial, "S");
  EXPECT_EQ(list.query.station, "B");
  EXPECT_EQ(list.query.verdict, "PASS");
  EXPECT_EQ(list.query.since, 1795305600000);
  EXPECT_EQ(list.query.until, 1795395720000);
  EXPECT_EQ(list.query.limit, 7U);
  EXPECT_TRUE(list.json);

  EXPECT_EQ(Accepted<ExportOrder>({"export", "a", "b", "--to", "c.html"}).runs, (Words{"a", "b"}));
  EXPECT_EQ(Accepted<ImportOrder>({"import", "a", "b"}).files, (Words{"a", "b"}));
  EXPECT_EQ(Accepted<VerifyOrder>({"verify"}).runs, Words{});
  EXPECT_EQ(Accepted<VerifyOrder>({"verify", "a"}).runs, Words{"a"});

  const auto replay = Accepted<ReplayOrder>({"replay", "--all", "--system-dir", "/tables", "--jobs", "3"});
  EXPECT_EQ(replay.runs, Words{});
  EXPECT_EQ(replay.options.systemFolder, "/tables");
  EXPECT_EQ(replay.jobs, 3);
  EXPECT_GE(Accepted<ReplayOrder>({"replay", "last"}).jobs, 1);

  const auto prune = Accepted<PruneOrder>({"prune", "--before", "2026-11-22", "--keep-failed"});
  EXPECT_EQ(prune.beforeMs, 1795305600000);
  EXPECT_TRUE(prune.keepFailed);
  EXPECT_FALSE(prune.keepRecords);

  EXPECT_FALSE(Accepted<ForwardOrder>({"forward", "--to", "postgresql:dbname=line"}).follow);
  EXPECT_TRUE(Accepted<ForwardOrder>({"forward", "--to", "postgresql:dbname=line", "--follow"}).follow);
}

TEST(RecordsOrders, HelpAndVersionAreNoFaults) {
  for (const Words& words : {Words{"--help"}, Words{"list", "--help"}, Words{"--version"}, Words{"--help-all"}}) {
    EXPECT_EQ(std::get<NoOrder>(Parse(words)).status, 0) << testing::PrintToString(words);
  }
  EXPECT_THAT(std::get<NoOrder>(Parse({"--help"})).text, HasSubstr("forward"));
  EXPECT_THAT(std::get<NoOrder>(Parse({"prune", "--help"})).text, HasSubstr("--keep-failed"));
  EXPECT_THAT(std::get<NoOrder>(Parse({"--version"})).text, testing::MatchesRegex("orvane-records [0-9.]+\n"));
}

class Home : public testing::Test {
 protected:
  static void Set(const char* name, const char* value) {
    value == nullptr ? ::unsetenv(name) : ::setenv(name, value, 1);
  }
  Home() : states_(Kept("XDG_STATE_HOME")), home_(Kept("HOME")) {}
  ~Home() override {
    Set("XDG_STATE_HOME", states_ ? states_->c_str() : nullptr);
    Set("HOME", home_ ? home_->c_str() : nullptr);
  }

 private:
  static std::optional<std::string> Kept(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
  }
  std::optional<std::string> states_;
  std::optional<std::string> home_;
};

TEST_F(Home, HasTheRecordsAmongTheUsersStates) {
  Set("HOME", "/home/op");
  Set("XDG_STATE_HOME", "/states");
  EXPECT_EQ(DefaultRecords(), "sqlite:/states/orvane/records.sqlite");
  for (const char* none : {static_cast<const char*>(nullptr), "", "relative"}) {
    Set("XDG_STATE_HOME", none);
    EXPECT_EQ(DefaultRecords(), "sqlite:/home/op/.local/state/orvane/records.sqlite");
  }
  Set("HOME", nullptr);
  EXPECT_EQ(DefaultRecords(), "");
}

}  // namespace
}  // namespace orvane::test
