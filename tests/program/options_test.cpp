#include <gtest/gtest.h>

#include <algorithm>

#include "program/programs.h"

namespace orvane::test {
namespace {

struct BadOption {
  Arguments arguments;
  const char* named;
};

TEST(Options, ABadOneIsOneLineThatNamesItAndStatus64) {
  const BadOption rows[] = {
      {{"--colour"}, "--colour"},
      {{"--com5", "/dev/null"}, "--com5"},
      {{"/dev/ttyS0"}, "/dev/ttyS0"},
      {{"--com1"}, "--com1"},
      {{"--com1="}, "--com1"},
      {{"--com1", "/dev/ttyS0", "--com1", "/dev/ttyS1"}, "--com1"},
      {{"--headless=perhaps"}, "--headless"},
      {{"--initialize=no"}, "--initialize"},
      {{"--bench"}, "--bench"},
      {{"--bench", "real"}, "--bench"},
      {{"--bench", "virtual:"}, "--bench"},
      {{"--bench", "virtual:seed=x"}, "seed=x"},
      {{"--bench", "virtual:seed=-1"}, "seed=-1"},
      {{"--bench", "virtual:colour=red"}, "colour=red"},
      {{"--bench", "virtual:fault=wrong"}, "fault=wrong"},
      {{"--bench", "virtual:fault=late@x"}, "fault=late@x"},
      {{"--bench", "virtual:store=/dev/null/x"}, "store=/dev/null/x"},
      {{"--bench", "virtual", "--com1", "/dev/ttyS0"}, "--com1"},
      {{"--bench", "virtual", "--instrument", "1=tcp:localhost:1"}, "--instrument"},
      {{"--gpib", "usb"}, "--gpib"},
      {{"--gpib", "prologix:"}, "--gpib"},
      {{"--gpib", "prologix:host:port"}, "--gpib"},
      {{"--gpib", "vxi11:"}, "--gpib"},
      {{"--instrument", "tcp:localhost:1"}, "--instrument"},
      {{"--instrument", "31=tcp:localhost:1"}, "--instrument"},
      {{"--instrument", "one=tcp:localhost:1"}, "--instrument"},
      {{"--instrument", "1=tcp:localhost"}, "--instrument"},
      {{"--instrument", "1=tcp::1"}, "--instrument"},
      {{"--instrument", "1=tcp:localhost:65536"}, "--instrument"},
      {{"--instrument", "1=udp:localhost:1"}, "--instrument"},
      {{"--instrument", "1=tcp:a:1", "--instrument", "1=tcp:b:1"}, "--instrument"},
      {{"--list", "--bench", "virtual"}, "--list"},
      {{"--list", "--initialize"}, "--list"},
      {{"--system-dir"}, "--system-dir"},
      {{"--temp-dir", ""}, "--temp-dir"},
      {{"--records", "postgresql:host=line"}, "--records"},
      {{"--serial", "A\tB"}, "--serial"},
      {{"--serial", "A", "--serial", "B"}, "--serial"},
      {{"--tag", "line"}, "--tag"},
      {{"--profile", "/nonexistent/bench.toml"}, "/nonexistent/bench.toml"},
      {{"--view", "page"}, "--view"},
      {{"--view", "operator", "--headless"}, "--view operator needs a screen"},
      {{"--language", "kr"}, "--language"},
      {{"--serial-pattern", "A-["}, "--serial-pattern"},
      {{"--shifts", "06:00,25:00"}, "--shifts"},
      {{"--losses-days", "0"}, "--losses-days"},
      {{"--losses-days", "many"}, "--losses-days"},
      {{"--automation", "tcp:7"}, "--automation"},
      {{"--automation", "unix:"}, "--automation"},
      {{"--automation", "unix:/nonexistent/socket"}, "--automation"},
      {{"--automation", "unix:" + std::string(200, 'x')}, "--automation"},
  };
  for (const BadOption& row : rows) {
    const auto end = RunOrvane(row.arguments);
    SCOPED_TRACE(testing::PrintToString(row.arguments) + "\n" + end.errors);
    EXPECT_EQ(end.status, 64);
    EXPECT_EQ(end.output, "");
    EXPECT_THAT(end.errors, testing::StartsWith("orvane: "));
    EXPECT_THAT(end.errors, testing::HasSubstr(row.named));
    EXPECT_EQ(std::count(end.errors.begin(), end.errors.end(), '\n'), 1);
    EXPECT_THAT(end.errors, testing::EndsWith("\n"));
  }
}

TEST(Options, ABadOneOpensNothing) {
  const TempFolder folder;
  const Arguments good{"--bench", "virtual:store=" + folder / "unit", "--trace", folder / "trace"};
  const Arguments rows[] = {
      {"--automation", "unix:" + folder / "socket", "--gpib", "usb"},
      {"--automation", "unix:" + folder / "none/socket"},
  };
  for (const Arguments& bad : rows) {
    Arguments all = good;
    all.insert(all.end(), bad.begin(), bad.end());
    EXPECT_EQ(RunOrvane(all).status, 64);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path())) << testing::PrintToString(bad);
  }
}

TEST(Options, AStoreThatCannotBeUsedLeavesNoSocketAndNoTrace) {
  const TempFolder folder;
  const auto end = RunOrvane({"--bench", "virtual:store=/dev/null/x", "--automation", "unix:" + folder / "socket",
                              "--trace", folder / "trace"});
  EXPECT_EQ(end.status, 64);
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(Options, HelpAndVersionGoToStandardOutputAndEndWithSuccess) {
  const auto help = RunOrvane({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.errors, "");
  for (const char* option :
       {"--bench", "--com1", "--com2", "--com3", "--com4", "--gpib", "--instrument", "--system-dir", "--temp-dir",
        "--headless", "--automation", "--initialize", "--list", "--help", "--version"}) {
    EXPECT_THAT(help.output, testing::HasSubstr(option));
  }
  const auto version = RunOrvane({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_THAT(version.output, testing::MatchesRegex("orvane [0-9.]+\n"));
}

}  // namespace
}  // namespace orvane::test
