#include "app/command_line.h"

#include <gtest/gtest.h>

#include <sstream>

#include "app/route_text.h"

namespace orvane {
namespace {

using testing::HasSubstr;

std::variant<Options, EndAtOnce> Parse(std::vector<const char*> arguments) {
  arguments.insert(arguments.begin(), "orvane");
  return ParseCommandLine(static_cast<int>(arguments.size()), arguments.data());
}

Options Accepted(const std::vector<const char*>& arguments) {
  auto result = Parse(arguments);
  if (const auto* end = std::get_if<EndAtOnce>(&result)) {
    ADD_FAILURE() << end->text;
    return {};
  }
  return std::get<Options>(result);
}

TEST(CommandLine, HasTheDefaultsOfALineWithRealDevices) {
  const Options options = Accepted({});
  EXPECT_FALSE(options.bench);
  EXPECT_EQ(options.com, (ComDevices{"/dev/ttyS0", "/dev/ttyS1", "/dev/ttyS2", "/dev/ttyS3"}));
  EXPECT_EQ(RouteText(options.gpib.bus), "native");
  EXPECT_TRUE(options.gpib.instruments.empty());
  EXPECT_FALSE(options.systemFolder || options.tempFolder);
  EXPECT_TRUE(std::holds_alternative<NoAutomation>(options.automation));
  EXPECT_FALSE(options.headless || options.initialize);
}

TEST(CommandLine, TakesDevicesFoldersAndFlags) {
  const Options options = Accepted({"--com1", "/dev/ttyUSB0", "--com4=/dev/pts/3", "--system-dir", "/srv/data",
                                    "--temp-dir", "/srv/tmp", "--headless", "--initialize"});
  EXPECT_EQ(options.com, (ComDevices{"/dev/ttyUSB0", "/dev/ttyS1", "/dev/ttyS2", "/dev/pts/3"}));
  EXPECT_EQ(options.systemFolder, "/srv/data");
  EXPECT_EQ(options.tempFolder, "/srv/tmp");
  EXPECT_TRUE(options.headless && options.initialize);
}

TEST(CommandLine, ListsWhatTheRoutesOfTheSameLineLeadTo) {
  const Options options = Accepted({"--list", "--com1", "/dev/ttyUSB0", "--gpib", "vxi11:gateway", "--instrument",
                                    "2=tcp:bench7:5025", "--headless"});
  EXPECT_TRUE(options.list);
  EXPECT_EQ(options.com[0], "/dev/ttyUSB0");
  EXPECT_FALSE(Accepted({}).list);
}

TEST(CommandLine, TakesTheDesktopsColoursUnlessATheme) {
  EXPECT_EQ(Accepted({}).theme, std::nullopt);
  EXPECT_EQ(Accepted({"--theme", "light"}).theme, Theme::Light);
  EXPECT_EQ(Accepted({"--theme=dark"}).theme, Theme::Dark);
}

TEST(CommandLine, ThePanelsAreOnTheScreenUnlessTheOperatorsPageIsAskedFor) {
  EXPECT_EQ(Accepted({}).view, View::Panels);
  EXPECT_EQ(Accepted({"--view", "operator"}).view, View::Operator);
  const OperatorWishes nothing = Accepted({}).operating;
  EXPECT_EQ(nothing.language, std::nullopt);
  EXPECT_EQ(nothing.serialPattern, "");
  EXPECT_TRUE(nothing.shiftStarts.empty());
  EXPECT_EQ(nothing.lossesDays, std::nullopt);
  const OperatorWishes all =
      Accepted({"--language", "ko", "--serial-pattern", "A-[0-9]+", "--shifts", "14:00,06:30", "--losses-days", "90"})
          .operating;
  EXPECT_EQ(all.language, Language::Korean);
  EXPECT_EQ(all.serialPattern, "A-[0-9]+");
  EXPECT_EQ(all.shiftStarts, (std::vector<int>{390, 840})) << "in the order of the day";
  EXPECT_EQ(all.lossesDays, 90);
}

TEST(CommandLine, WithoutAWordNothingIsKnownOfTheUnitAndNothingIsAsked) {
  const Options options = Accepted({});
  EXPECT_EQ(options.unit, UnitTexts{});
  EXPECT_FALSE(options.askSerial || options.verifyEeprom || options.safeOff || options.printProfile);
  EXPECT_TRUE(options.tables.empty() && options.panels.empty());
  EXPECT_EQ(options.records, std::nullopt) << "nobody knows the user's folder";
}

TEST(CommandLine, TakesWhatGoesIntoRecords) {
  const Options options = Accepted({"--records", "sqlite:/srv/records.sqlite", "--station", "Line 3", "--serial",
                                    "A-1", "--operator", "김", "--part", "T9300", "--tag", "line=A",
                                    "--tag=shift=2=late", "--tag", "empty=", "--ask-serial", "--verify-eeprom"});
  EXPECT_EQ(options.records, "/srv/records.sqlite");
  EXPECT_EQ(options.station, "Line 3");
  EXPECT_EQ(options.unit, (UnitTexts{"A-1", "김", "T9300", {{"line", "A"}, {"shift", "2=late"}, {"empty", ""}}}));
  EXPECT_TRUE(options.askSerial && options.verifyEeprom);
}

TEST(CommandLine, TakesTheWishForASafeBench) {
  EXPECT_TRUE(Accepted({"--safe-off"}).safeOff);
  EXPECT_TRUE(Accepted({"--safe-off", "--bench", "virtual"}).safeOff);
}

TEST(CommandLine, KeepsTheWordsThatItWasGiven) {
  const Options options = Accepted({"--headless", "--bench", "virtual:seed=7,fault=battery", "--tag", "a=b"});
  EXPECT_EQ(options.Given("bench"), "virtual:seed=7,fault=battery");
  EXPECT_EQ(options.Given("headless"), "true");
  EXPECT_EQ(options.Given("tag"), "a=b");
  EXPECT_EQ(options.Given("com1"), std::nullopt);
}

TEST(CommandLine, TakesABenchWithItsKeys) {
  EXPECT_EQ(Accepted({"--bench", "virtual"}).bench->seed, 1U);
  const Options options = Accepted({"--bench", "virtual:seed=7,fault=pa-dead"});
  EXPECT_EQ(options.bench->seed, 7U);
  ASSERT_EQ(options.bench->faults.size(), 1U);
  EXPECT_EQ(options.bench->faults[0].kind, bench::FaultKind::kPaDead);
}

TEST(CommandLine, TakesTheAutomationPort) {
  EXPECT_TRUE(std::holds_alternative<StdioAutomation>(Accepted({"--automation", "stdio"}).automation));
  EXPECT_EQ(std::get<UnixAutomation>(Accepted({"--automation", "unix:/run/orvane.sock"}).automation).path,
            "/run/orvane.sock");
}

TEST(CommandLine, TakesRoutesToTheBusAndToSingleInstruments) {
  const std::pair<const char*, const char*> buses[] = {
      {"native", "native"},
      {"prologix:adapter", "prologix:adapter:1234"},
      {"prologix:10.0.0.7:4321", "prologix:10.0.0.7:4321"},
      {"prologix:/dev/ttyUSB0", "prologix:/dev/ttyUSB0"},
      {"prologix:/run/bench/adapter", "prologix:/run/bench/adapter"},
      {"prologix:[fe80::1]", "prologix:[fe80::1]:1234"},
      {"vxi11:[::1]", "vxi11:[::1]"},
      {"vxi11:gateway", "vxi11:gateway"},
      {"vxi11:10.0.0.8:5000", "vxi11:10.0.0.8:5000"},
  };
  for (const auto& [text, route] : buses) {
    EXPECT_EQ(RouteText(Accepted({"--gpib", text}).gpib.bus), route) << text;
  }
  const auto instruments =
      Accepted({"--instrument", "1=tcp:bench7:5025", "--instrument", "2=vxi11:psu", "--instrument=0=vxi11:a,inst1",
                "--instrument", "5=vxi11:b:5000,gpib0,5", "--instrument", "30=tcp:[::1]:5026", "--headless"})
          .gpib.instruments;
  ASSERT_EQ(instruments.size(), 5U);
  EXPECT_EQ(RouteText(instruments.at(1)), "tcp:bench7:5025");
  EXPECT_EQ(RouteText(instruments.at(2)), "vxi11:psu,inst0");
  EXPECT_EQ(RouteText(instruments.at(0)), "vxi11:a,inst1");
  EXPECT_EQ(RouteText(instruments.at(5)), "vxi11:b:5000,gpib0,5");
  EXPECT_EQ(std::get<TcpRoute>(instruments.at(30)).host, "::1");
  EXPECT_EQ(RouteText(instruments.at(30)), "tcp:[::1]:5026");
}

struct BadOption {
  std::vector<const char*> arguments;
  /// The option at fault, and a word of the fault.
  const char* option;
  const char* fault;
};

TEST(CommandLine, ABadOptionIsOneLineThatNamesItAndItsFault) {
  const BadOption rows[] = {
      {{"--windows"}, "--windows", "not expected"},
      {{"stdio"}, "stdio", "not expected"},
      {{"--com1"}, "--com1", "missing"},
      {{"--com1", ""}, "--com1", "empty"},
      {{"--com5", "/dev/ttyS4"}, "--com5", "not expected"},
      {{"--com1", "a", "--com1", "b"}, "--com1", "1"},
      {{"--bench", "real"}, "--bench", "real"},
      {{"--bench", "virtual:seed=x"}, "--bench", "seed"},
      {{"--bench", "virtual:fault=coffee"}, "--bench", "coffee"},
      {{"--bench", "virtual", "--com1", "/dev/ttyUSB0"}, "--com1", "--bench"},
      {{"--bench", "virtual", "--gpib", "native"}, "--gpib", "--bench"},
      {{"--gpib", "usb"}, "--gpib", "no route"},
      {{"--gpib", "prologix:"}, "--gpib", "host"},
      {{"--gpib", "prologix:host:0"}, "--gpib", "port"},
      {{"--gpib", "prologix:host:99999"}, "--gpib", "port"},
      {{"--gpib", "vxi11:"}, "--gpib", "host"},
      {{"--gpib", "vxi11:h:x"}, "--gpib", "port"},
      {{"--instrument", "1"}, "--instrument", "="},
      {{"--instrument", "31=tcp:h:1"}, "--instrument", "primary address"},
      {{"--instrument", "-1=tcp:h:1"}, "--instrument", "primary address"},
      {{"--instrument", "x=tcp:h:1"}, "--instrument", "primary address"},
      {{"--instrument", "1=tcp:h"}, "--instrument", "port"},
      {{"--instrument", "1=tcp::5025"}, "--instrument", "host"},
      {{"--instrument", "1=tcp:h:5025x"}, "--instrument", "port"},
      {{"--instrument", "1=usb:h"}, "--instrument", "no route"},
      {{"--instrument", "1=vxi11:h:0"}, "--instrument", "port"},
      {{"--instrument", "1=vxi11:h,"}, "--instrument", "device"},
      {{"--instrument", "1=tcp:h:1", "2=tcp:h:2"}, "2=tcp:h:2", "not expected"},
      {{"--instrument", "1=tcp:h:1", "--instrument", "1=tcp:h:2"}, "--instrument", "already"},
      {{"--automation", "tcp"}, "--automation", "tcp"},
      {{"--list=no"}, "--list", "no value"},
      {{"--list", "--bench", "virtual"}, "--list", "--bench"},
      {{"--list", "--initialize"}, "--list", "--initialize"},
      {{"--list", "--automation", "stdio"}, "--list", "--automation"},
      {{"--list", "--system-dir", "/srv/data"}, "--list", "--system-dir"},
      {{"--list", "--temp-dir", "/srv/tmp"}, "--list", "--temp-dir"},
      {{"--records", "none", "--records", "none"}, "--records", "1"},
      {{"--records", "postgresql:host=a"}, "--records", "sqlite:PATH"},
      {{"--records", "sqlite:"}, "--records", "sqlite:PATH"},
      {{"--records", "/srv/records.sqlite"}, "--records", "sqlite:PATH"},
      {{"--station", "a", "--station", "b"}, "--station", "1"},
      {{"--station", "a\tb"}, "--station", "control character"},
      {{"--serial", ""}, "--serial", "empty"},
      {{"--serial", "a", "--serial", "a"}, "--serial", "1"},
      {{"--serial",
        "A\x1D"
        "1"},
       "--serial",
       "control character"},
      {{"--serial", "A\x7F"}, "--serial", "control character"},
      {{"--serial", "A\xC2\x85"}, "--serial", "control character"},
      {{"--serial", "A\xFF"}, "--serial", "UTF-8"},
      {{"--serial", "A\xED\xA0\x80"}, "--serial", "UTF-8"},
      {{"--operator", "a", "--operator", "b"}, "--operator", "1"},
      {{"--operator", "a\nb"}, "--operator", "control character"},
      {{"--part", "a", "--part", "b"}, "--part", "1"},
      {{"--part", "\x1b[31m"}, "--part", "control character"},
      {{"--tag", "line"}, "--tag", "KEY=VALUE"},
      {{"--tag", "=A"}, "--tag", "KEY=VALUE"},
      {{"--tag", "line=A\r"}, "--tag", "control character"},
      {{"--tag", "line=A", "--tag", "line=B"}, "--tag", "already"},
      {{"--tag", "line=A", "shift=B"}, "shift=B", "not expected"},
      {{"--ask-serial=no"}, "--ask-serial", "no value"},
      {{"--safe-off=1"}, "--safe-off", "no value"},
      {{"--verify-eeprom=1"}, "--verify-eeprom", "no value"},
      {{"--profile", "a", "--profile", "b"}, "--profile", "1"},
      {{"--profile", "/nonexistent/profile.toml"}, "/nonexistent/profile.toml", "No such file"},
      {{"--automation", "unix:"}, "--automation", "unix:"},
      {{"--automation", "stdio", "--nothing"}, "--nothing", "not expected"},
  };
  for (const BadOption& row : rows) {
    const auto result = Parse(row.arguments);
    ASSERT_TRUE(std::holds_alternative<EndAtOnce>(result)) << row.option << " " << row.fault;
    const EndAtOnce& end = std::get<EndAtOnce>(result);
    EXPECT_EQ(end.status, 64);
    EXPECT_THAT(end.text, HasSubstr(row.option));
    EXPECT_THAT(end.text, HasSubstr(row.fault));
    EXPECT_EQ(end.text.find('\n'), std::string::npos);
  }
}

TEST(CommandLine, HelpNamesEveryOption) {
  const auto result = Parse({"--help"});
  ASSERT_TRUE(std::holds_alternative<EndAtOnce>(result));
  const EndAtOnce& end = std::get<EndAtOnce>(result);
  EXPECT_EQ(end.status, 0);
  for (const char* option :
       {"--bench",    "--com1",       "--com4",       "--gpib",          "--instrument",    "--system-dir",
        "--temp-dir", "--headless",   "--automation", "--initialize",    "--list",          "--help",
        "--version",  "--records",    "--station",    "--serial",        "--operator",      "--part",
        "--tag",      "--ask-serial", "--profile",    "--verify-eeprom", "--print-profile", "--safe-off"}) {
    EXPECT_THAT(end.text, HasSubstr(option));
  }
}

TEST(CommandLine, VersionIsOneLine) {
  const auto result = Parse({"--version"});
  ASSERT_TRUE(std::holds_alternative<EndAtOnce>(result));
  EXPECT_EQ(std::get<EndAtOnce>(result).status, 0);
  EXPECT_THAT(std::get<EndAtOnce>(result).text, testing::MatchesRegex("orvane [0-9.]+\n"));
}

}  // namespace
}  // namespace orvane
