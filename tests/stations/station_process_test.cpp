// The process of a station, with stand-ins for it: how its end is told, and that it ends when it has to.

#include "app/stations/station_process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <QTest>
#include <csignal>

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr int kLongMs = 60000;

struct Watched {
  explicit Watched(const QString& itsScript) : script(itsScript) {
    process.onEnded = [this] { ++ends; };
    process.onSaid = [this](const QString& line) { said.push_back(line.toStdString()); };
  }
  [[nodiscard]] std::string EndingOf() {
    Start();
    EXPECT_TRUE(QTest::qWaitFor([this] { return ends > 0; }, kLongMs));
    return process.Ending().toStdString();
  }

  void Start() { process.Start({"/bin/sh", "-c", script}); }

  QString script;
  StationProcess process;
  int ends = 0;
  std::vector<std::string> said;
};

TEST(StationProcess, TellsItsStatusWithItsLastWords) {
  Watched watched("echo first >&2; echo 'orvane: bench.toml:3: com9: there is no such key' >&2; exit 64");
  EXPECT_EQ(watched.EndingOf(), "It ended with status 64. orvane: bench.toml:3: com9: there is no such key");
  EXPECT_THAT(watched.said, ElementsAre("first", "orvane: bench.toml:3: com9: there is no such key"));
  EXPECT_FALSE(watched.process.Runs());
}

TEST(StationProcess, TellsTheSignalThatEndedIt) {
  EXPECT_THAT(Watched("kill -KILL $$").EndingOf(), StartsWith("It was ended by signal 9 ("));
  EXPECT_THAT(Watched("kill -SEGV $$").EndingOf(), StartsWith("It was ended by signal 11 ("));
}

TEST(StationProcess, OneThatCannotBeStartedSaysWhy) {
  StationProcess process;
  int ends = 0;
  process.onEnded = [&] { ++ends; };
  process.Start({"/nowhere/orvane"});
  ASSERT_TRUE(QTest::qWaitFor([&] { return ends > 0; }, kLongMs));
  EXPECT_THAT(process.Ending().toStdString(), StartsWith("It could not be started: "));
}

TEST(StationProcess, NeverStartsAgainByItselfAndDoesWhenItIsAsked) {
  Watched watched("exit 3");
  EXPECT_EQ(watched.EndingOf(), "It ended with status 3.");
  QTest::qWait(200);
  EXPECT_EQ(watched.ends, 1);
  EXPECT_FALSE(watched.process.Runs());
  watched.Start();
  EXPECT_EQ(watched.process.Ending(), "");
  EXPECT_TRUE(QTest::qWaitFor([&] { return watched.ends == 2; }, kLongMs));
}

TEST(StationProcess, EndsWhenItIsAsked) {
  Watched watched("echo ready >&2; exec sleep 1000");
  watched.Start();
  ASSERT_TRUE(QTest::qWaitFor([&] { return !watched.said.empty(); }, kLongMs));
  watched.process.Stop();
  ASSERT_TRUE(QTest::qWaitFor([&] { return watched.ends == 1; }, kLongMs));
  EXPECT_THAT(watched.process.Ending().toStdString(), HasSubstr("signal 15"));
}

TEST(StationProcess, OneThatDoesNotIsEndedAllTheSame) {
  Watched watched("trap '' TERM; echo ready >&2; while :; do sleep 0.1; done");
  watched.Start();
  ASSERT_TRUE(QTest::qWaitFor([&] { return !watched.said.empty(); }, kLongMs));
  watched.process.Stop();
  watched.process.Stop();
  ASSERT_TRUE(QTest::qWaitFor([&] { return watched.ends == 1; }, kLongMs));
  EXPECT_THAT(watched.process.Ending().toStdString(), HasSubstr("signal 9"));
}

TEST(StationProcess, EndsWithWhoHoldsIt) {
  pid_t pid = 0;
  {
    Watched watched("echo $$ >&2; exec sleep 1000");
    watched.Start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !watched.said.empty(); }, kLongMs));
    pid = std::stoi(watched.said.front());
    EXPECT_EQ(::kill(pid, 0), 0);
  }
  EXPECT_NE(::kill(pid, 0), 0);
}

TEST(StationProcess, ALineWithoutAnEndIsNotGatheredForGood) {
  Watched watched("head -c 1000000 /dev/zero | tr '\\0' x >&2; echo >&2; echo last >&2; exit 1");
  EXPECT_THAT(watched.EndingOf(), HasSubstr("last"));
  for (const std::string& line : watched.said) EXPECT_LE(line.size(), 4096U);
}

}  // namespace
}  // namespace orvane::test
