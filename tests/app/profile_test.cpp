// The profile: what it may hold, what the command line leaves of it, and that it is printed as it was read.

#include "app/profile/profile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "app/route_text.h"
#include "support/scratch_folder.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

const std::string kDigest(64, 'a');

class ProfileTest : public testing::Test {
 protected:
  std::string Write(const std::string& content, const std::string& name = "bench.toml") const {
    const std::filesystem::path path = folder_.Path(name);
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
    return path.string();
  }
  std::variant<Options, EndAtOnce> Parse(std::vector<std::string> words) const {
    words.insert(words.begin(), "orvane");
    std::vector<const char*> argv;
    for (const std::string& word : words) argv.push_back(word.c_str());
    return ParseCommandLine(static_cast<int>(argv.size()), argv.data(), machine_);
  }
  Options Accepted(const std::vector<std::string>& words) const {
    auto result = Parse(words);
    if (const auto* end = std::get_if<EndAtOnce>(&result)) {
      ADD_FAILURE() << end->text;
      return {};
    }
    return std::get<Options>(result);
  }
  /// The options that a profile of that content gives, beside those of the command line.
  Options With(const std::string& content, std::vector<std::string> words = {}) const {
    words.insert(words.begin(), {"--profile", Write(content)});
    return Accepted(words);
  }
  /// The line on standard error, without "orvane: " and the file's name.
  std::string FaultOf(const std::string& content, std::vector<std::string> words = {}) const {
    const std::string file = Write(content);
    words.insert(words.begin(), {"--profile", file});
    const auto result = Parse(words);
    const auto* end = std::get_if<EndAtOnce>(&result);
    if (end == nullptr) return "no fault";
    EXPECT_EQ(end->status, 64);
    EXPECT_EQ(end->text.find('\n'), std::string::npos);
    EXPECT_THAT(end->text, StartsWith("orvane: " + file + ":"));
    return end->text.substr(std::min(end->text.size(), ("orvane: " + file + ":").size()));
  }

  ScratchFolder folder_;
  MachineDefaults machine_{folder_.Path("config"), folder_.Path("state"), "desk7"};
};

TEST_F(ProfileTest, HasEveryOptionOfTheCommandLineUnderItsName) {
  const Options options = With(R"(
com1 = "/dev/ttyUSB0"
com4 = "/dev/pts/3"
gpib = "prologix:adapter"
system-dir = "/srv/data"
temp_dir = "/srv/tmp"
automation = "unix:/run/orvane.sock"
trace = "/var/log/trace"
theme = "dark"
records = "sqlite:/srv/records.sqlite"
station = "Line 3"
serial = "A-1"
operator = "김"
part = "T9300"
askserial = true
verify_eeprom = true
safe_off = true
headless = true
initialize = true
share = [1, 5]
share_wait = "30"
share_dir = "/srv/locks"
[instrument]
1 = "tcp:bench7:5025"
5 = "vxi11:load"
[tag]
line = "A"
"two words" = "x=y"
)");
  EXPECT_EQ(options.com, (ComDevices{"/dev/ttyUSB0", "/dev/ttyS1", "/dev/ttyS2", "/dev/pts/3"}));
  EXPECT_EQ(RouteText(options.gpib.bus), "prologix:adapter:1234");
  EXPECT_EQ(RouteText(options.gpib.instruments.at(1)), "tcp:bench7:5025");
  EXPECT_EQ(RouteText(options.gpib.instruments.at(5)), "vxi11:load,inst0");
  EXPECT_EQ(options.systemFolder, "/srv/data");
  EXPECT_EQ(options.tempFolder, "/srv/tmp");
  EXPECT_EQ(std::get<UnixAutomation>(options.automation).path, "/run/orvane.sock");
  EXPECT_EQ(options.trace, "/var/log/trace");
  EXPECT_EQ(options.theme, Theme::Dark);
  EXPECT_EQ(options.records, "/srv/records.sqlite");
  EXPECT_EQ(options.station, "Line 3");
  EXPECT_EQ(options.unit, (UnitTexts{"A-1", "김", "T9300", {{"line", "A"}, {"two words", "x=y"}}}));
  EXPECT_TRUE(options.askSerial && options.verifyEeprom && options.headless && options.initialize);
  EXPECT_EQ(options.share.addresses, (std::set<int>{1, 5}));
  EXPECT_EQ(options.share.wait, std::chrono::seconds(30));
  EXPECT_EQ(options.share.folder, "/srv/locks");
  EXPECT_EQ(With("bench = \"virtual:seed=7\"\n").bench->seed, 7U);
  EXPECT_FALSE(With("headless = false\n").headless);
}

TEST_F(ProfileTest, HasTheDigestsOfTablesAndWhatIsSetOnThePanels) {
  const Options options = With("[tables]\n\"Cable.loss\" = \"" + kDigest +
                               "\"\n[panel]\npace = 35000\nsave_mode = \"File\"\nauto_save = false\n"
                               "rx_loss_gsm = -0.75\ntx_loss_gsm = -1\ntest_set_address = 7\n");
  EXPECT_EQ(options.tables, (TableDigests{{"Cable.loss", kDigest}}));
  std::vector<std::string> settings;
  for (const PanelSetting& setting : options.panels) {
    settings.push_back(setting.name + "=" + setting.text + setting.where.substr(setting.where.rfind(':')));
  }
  EXPECT_THAT(settings, ElementsAre("pace=35000:4", "save_mode=File:5", "auto_save=false:6", "rx_loss_gsm=-0.75:7",
                                    "tx_loss_gsm=-1:8", "test_set_address=7:9"));
}

TEST_F(ProfileTest, HasTheGoldenUnitAndItsLimitsInTheOrderOfTheFile) {
  const GoldenOptions golden =
      With(
          "golden = \"G-001\"\ngolden_reference = \"01a2\"\ncheck_every = \"90m\"\n[golden_limits]\n"
          "\"tx.gsm.level.*.power\" = 0.3\n\"battery.*\" = 8\n\"a*\" = 0\n",
          {"--golden-reference", "01a3"})
          .golden;
  EXPECT_EQ(golden.serial, "G-001");
  EXPECT_EQ(golden.reference, "01a3") << "the command line wins";
  EXPECT_EQ(golden.checkEvery, std::chrono::minutes(90));
  const std::string file = folder_.Path("bench.toml");
  EXPECT_EQ(golden.limits,
            (GoldenLimits{
                {"tx.gsm.level.*.power", 0.3, file + ":5"}, {"battery.*", 8, file + ":6"}, {"a*", 0, file + ":7"}}));
  const GoldenOptions inOneLine = With("golden_limits = { \"b*\" = 1, \"a*\" = 2 }\n").golden;
  EXPECT_EQ(inOneLine.limits, (GoldenLimits{{"b*", 1, file + ":1"}, {"a*", 2, file + ":1"}}));
  EXPECT_EQ(Accepted({}).golden.checkEvery, std::chrono::hours(12));
}

TEST_F(ProfileTest, AFaultIsOneLineWithFileLineAndKey) {
  const std::pair<std::string, std::string> rows[] = {
      {"com1 = \"/dev/ttyUSB0\"\n\ncom9 = \"/dev/x\"\n", "3: com9: there is no such key"},
      {"[bench]\nseed = 7\n", "1: bench: it must be a text in quotes"},
      {"\"a\\u001b[31m\\nb\" = 1\n", "1: a?[31m / b: there is no such key"},
      {"[pannel]\n", "1: pannel: there is no such key"},
      {"com1 = 7\n", "1: com1: it must be a text in quotes"},
      {"com1 = \"\"\n", "1: com1: the value is empty"},
      {"com1 = \"/dev/a\\u0000b\"\n", "1: com1: it holds a control character"},
      {"headless = \"true\"\n", "1: headless: it must be true or false"},
      {"headless = 1\n", "1: headless: it must be true or false"},
      {"gpib = \"usb\"\n", "1: gpib: \"usb\" is no route"},
      {"theme = \"blue\"\n", "1: theme: \"blue\" is neither light nor dark"},
      {"records = \"postgresql:x\"\n",
       "1: records: a station keeps its records on its own disk: sqlite:PATH or none"},
      {"serial = \"A\\tB\"\n", "1: serial: it holds a control character"},
      {"ask_serial = true\nask-serial = true\n", "2: ask-serial: it was given above under another spelling"},
      {"profile = \"x\"\n", "1: profile: it is an option of the command line alone"},
      {"list = true\n", "1: list: it is an option of the command line alone"},
      {"instrument = \"1=tcp:h:1\"\n", "1: instrument: it must be a table"},
      {"[instrument]\n31 = \"tcp:h:1\"\n", "2: instrument.31: \"31\" is no primary address"},
      {"[instrument]\n1 = 5025\n", "2: instrument.1: it must be a text in quotes"},
      {"share = 1\n", "1: share: it must be a list of whole numbers"},
      {"share = [\"1\"]\n", "1: share: it must be a list of whole numbers"},
      {"share = [1, 31]\n", "1: share: \"31\" is no whole number from 0 to 30"},
      {"share = [1, 1]\n", "1: share: address 1 was given already"},
      {"share_wait = \"soon\"\n", "1: share_wait: \"soon\" is no whole number from 0 to 86400"},
      {"[tag]\nline = 7\n", "2: tag.line: it must be a text in quotes"},
      {"[tables]\n\"Other.loss\" = \"" + kDigest + "\"\n", "2: tables.Other.loss: there is no such key"},
      {"[tables]\n\"Cable.loss\" = \"" + std::string(64, 'A') + "\"\n",
       "2: tables.Cable.loss: it must be the SHA-256 of the file in lower-case hexadecimal"},
      {"[tables]\n\"Cable.loss\" = \"abc\"\n",
       "2: tables.Cable.loss: it must be the SHA-256 of the file in lower-case hexadecimal"},
      {"golden_excuse = \"why\"\n", "1: golden_excuse: it is an option of the command line alone"},
      {"check_every = \"12\"\n", "1: check_every: \"12\" is no time like 90m, 12h or 7d, up to 366d"},
      {"check_every = 12\n", "1: check_every: it must be a text in quotes"},
      {"golden_limits = 5\n", "1: golden_limits: it must be a table"},
      {"[golden_limits]\nbattery.full = 5\n", "2: golden_limits.battery: a name with points in it stands in quotes"},
      {"[golden_limits]\n\"rx.*\" = 1\n\"battery.*\" = -1\n", "3: golden_limits.battery.*: it must not be negative"},
      {"[golden_limits]\n\"battery.*\" = \"5\"\n", "2: golden_limits.battery.*: it must be a number"},
      {"\nengineer_secret = \"$argon2id$v=19$m=65536,t=2,p=1$abc\"\n",
       "2: engineer_secret: it is nothing that --make-engineer-secret has made"},
      {"make_engineer_secret = true\n", "1: make_engineer_secret: it is an option of the command line alone"},
      {"[panel]\npaces = 1\n", "2: panel.paces: there is no such key"},
      {"[panel]\npace = \"20000\"\n", "2: panel.pace: it must be a whole number"},
      {"[panel]\npace = 20000.0\n", "2: panel.pace: it must be a whole number"},
      {"[panel]\npace = -1\n", "2: panel.pace: -1 is not between 0 and 2147483647"},
      {"[panel]\ntest_set_address = 31\n", "2: panel.test_set_address: \"31\" is none of 0, 1, 2"},
      {"[panel]\ndialect = \"HP9999\"\n", "2: panel.dialect: \"HP9999\" is none of HP8922M, HP8960, 4400M(WaveTek)"},
      {"[panel]\nsave_mode = \"Flash\"\n", "2: panel.save_mode: \"Flash\" is none of EEPROM, File, EEPROMFile"},
      {"[panel]\nauto_save = \"yes\"\n", "2: panel.auto_save: it must be true or false"},
      {"[panel]\nrx_loss_gsm = \"-0.5\"\n", "2: panel.rx_loss_gsm: it must be a number"},
      {"[panel]\nrx_loss_gsm = -0.12345\n", "2: panel.rx_loss_gsm: -0.12345 has more than four decimals"},
      {"[panel]\nrx_loss_gsm = nan\n", "2: panel.rx_loss_gsm: the number is too large"},
      {"[panel]\nrx_loss_gsm = 201\n", "2: panel.rx_loss_gsm: 201 is not between -200 and 200"},
  };
  for (const auto& [content, fault] : rows) EXPECT_THAT(FaultOf(content), StartsWith(fault)) << content;
}

TEST_F(ProfileTest, WhatIsNoTomlIsAFaultOfItsLine) {
  EXPECT_THAT(FaultOf("com1 = \"/dev/ttyUSB0\"\ncom2 = /dev/ttyUSB1\n"), StartsWith("2: com2: "));
  EXPECT_THAT(FaultOf("com1 = \"a\"\ncom1 = \"b\"\n"), StartsWith("2: com1: "));
  EXPECT_THAT(FaultOf("com1 = \"a\n"), StartsWith("1: com1: "));
  EXPECT_THAT(FaultOf("\ncom1 = \"\xFF\"\n"), StartsWith("2: com1: "));
  EXPECT_THAT(FaultOf(std::string(100000, '[')), StartsWith("1: "));
  EXPECT_THAT(FaultOf("tag = " + std::string(100000, '[')), StartsWith("1: tag: "));
}

TEST_F(ProfileTest, ALetterBeyondAsciiIsAFaultWhereItStandsInNoText) {
  const std::string fault = "A letter beyond ASCII stands outside of a text.";
  for (const char* content : {"com1 \u00E4 = 1", "\u02F8", "com1 = \"a\" \u00E4", "com1 = 'a'\u3000# b", "[\u00E4]",
                              "operator = \"\"\"\\\n  \u00E4\"\"\"\n"}) {
    EXPECT_THAT(FaultOf(content), HasSubstr(fault)) << content;
  }
  EXPECT_EQ(FaultOf("# a\n\nstation = \"b\"\noperator = 'c' \u00E4\n"), "4: operator: " + fault);
  for (const char* content :
       {"# \u00E4\n", "\uFEFFstation = 'a'\n", "operator = \"\u00E4 # \\\" \u00E4\"  # \u00E4\n",
        "operator = '\u00E4\\' # \u00E4", "operator = '''a'\u00E4'''", "operator = \"\"\"a\"\u00E4\"\"\"",
        "operator = \"\"\"\u00E4 \\\n  a\u00E4\"\"\"", "part = \"\"\"abc\\\n\"\"\"\noperator = \"\"\"\u00E4\"\"\""}) {
    EXPECT_EQ(FaultOf(content), "no fault") << content;
  }
}

TEST_F(ProfileTest, AFileThatCannotBeReadIsOneSentence) {
  const auto fault = [this](const std::string& file) {
    const auto result = Parse({"--profile", file});
    const auto* end = std::get_if<EndAtOnce>(&result);
    return end == nullptr ? "no fault" : end->text;
  };
  const std::string missing = folder_.Path("none.toml");
  EXPECT_EQ(fault(missing), "orvane: the profile cannot be read: No such file or directory: " + missing);
  EXPECT_THAT(fault(folder_.Path()), StartsWith("orvane: the profile cannot be read: "));
  const std::string large = Write("# " + std::string(10 << 20, 'x') + "\n");
  EXPECT_EQ(fault(large), "orvane: " + large + ": a profile has at most 1048576 bytes, not 10485763");
  EXPECT_THAT(fault(Write("# " + std::string((1 << 20) - 3, 'x') + "\n")), "no fault") << "the largest";
}

TEST_F(ProfileTest, TheCommandLineWins) {
  const std::string profile =
      "com1 = \"/dev/a\"\ngpib = \"vxi11:a\"\nstation = \"a\"\nrecords = \"sqlite:/a\"\ntheme = \"light\"\n"
      "[instrument]\n1 = \"tcp:a:1\"\n2 = \"tcp:a:2\"\n[tag]\nline = \"a\"\ncell = \"a\"\n";
  const Options options = With(profile, {"--com1", "/dev/b", "--gpib", "native", "--station", "b", "--records",
                                         "none", "--theme", "dark", "--instrument", "2=tcp:b:2", "--tag", "line=b"});
  EXPECT_EQ(options.com[0], "/dev/b");
  EXPECT_EQ(RouteText(options.gpib.bus), "native");
  EXPECT_EQ(options.station, "b");
  EXPECT_EQ(options.records, std::nullopt);
  EXPECT_EQ(options.theme, Theme::Dark);
  EXPECT_EQ(RouteText(options.gpib.instruments.at(1)), "tcp:a:1") << "what is not said stays the profile's";
  EXPECT_EQ(RouteText(options.gpib.instruments.at(2)), "tcp:b:2");
  EXPECT_EQ(options.unit.tags, (std::map<std::string, std::string>{{"line", "b"}, {"cell", "a"}}));
}

TEST_F(ProfileTest, AListOnTheCommandLineIsTheWholeList) {
  EXPECT_EQ(With("share = [1, 2]\n", {"--share", "5"}).share.addresses, std::set<int>{5});
  EXPECT_EQ(With("share = [1, 2]\n").share.addresses, (std::set<int>{1, 2}));
  EXPECT_EQ(With("share = []\n").share.addresses, std::set<int>{});
  EXPECT_THAT(PrintProfile(With("share = [2, 1]\n")), HasSubstr("\nshare = [2, 1]\n"));
  EXPECT_THAT(PrintProfile(Accepted({})), HasSubstr("\n# share = []\n"));
}

TEST_F(ProfileTest, ABenchOnTheCommandLineLeavesTheProfilesDevicesOut) {
  const std::string devices = "com1 = \"/dev/a\"\nstation = \"a\"\n[instrument]\n1 = \"tcp:a:1\"\n";
  const Options options = With(devices, {"--bench", "virtual"});
  EXPECT_TRUE(options.bench);
  EXPECT_TRUE(options.gpib.instruments.empty());
  EXPECT_EQ(options.station, "a");
  EXPECT_EQ(FaultOf("bench = \"virtual\"\ncom1 = \"/dev/a\"\n"),
            "2: com1: there are no devices beside a virtual bench");
  EXPECT_EQ(FaultOf("bench = \"virtual\"\n", {"--com1", "/dev/a"}), "1: bench: there is none beside devices");
}

TEST_F(ProfileTest, AListTakesTheRoutesAndNothingThatRuns) {
  const Options options =
      With("com1 = \"/dev/a\"\ninitialize = true\nsystem_dir = \"/srv\"\nautomation = \"stdio\"\n", {"--list"});
  EXPECT_TRUE(options.list);
  EXPECT_EQ(options.com[0], "/dev/a");
  EXPECT_FALSE(options.initialize || options.systemFolder);
  EXPECT_TRUE(std::holds_alternative<NoAutomation>(options.automation));
}

TEST_F(ProfileTest, TheUsersOwnIsReadWhereNoBenchIsGiven) {
  EXPECT_EQ(Accepted({}).station, "desk7") << "there is none yet";
  Write("station = \"Line 3\"\n", "config/orvane/profile.toml");
  EXPECT_EQ(Accepted({}).station, "Line 3");
  EXPECT_EQ(Accepted({"--bench", "virtual"}).station, "desk7");
  EXPECT_EQ(With("part = \"x\"\n").station, "desk7") << "another one was named";
  Write("stations = \"Line 3\"\n", "config/orvane/profile.toml");
  const auto faulty = Parse({});
  ASSERT_TRUE(std::holds_alternative<EndAtOnce>(faulty));
  EXPECT_EQ(std::get<EndAtOnce>(faulty).text,
            "orvane: " + folder_.Path("config/orvane/profile.toml") + ":1: stations: there is no such key");
}

TEST_F(ProfileTest, RecordsGoToTheUsersStateFolderUnlessTheBenchIsVirtual) {
  EXPECT_EQ(Accepted({}).records, folder_.Path("state/orvane/records.sqlite"));
  EXPECT_EQ(Accepted({"--bench", "virtual"}).records, std::nullopt);
  EXPECT_EQ(Accepted({"--bench", "virtual", "--records", "sqlite:r.sqlite"}).records, "r.sqlite");
  EXPECT_EQ(Accepted({"--records", "none"}).records, std::nullopt);
  EXPECT_EQ(With("records = \"none\"\n").records, std::nullopt);
}

/// Everything that a profile can say.
const std::string kWhole = R"toml(
com1 = "/dev/ttyUSB0"
gpib = "vxi11:gateway"
records = "sqlite:/srv/a \"b\" \\ c.sqlite"
station = "Line 3"
operator = "김 <b>"
ask_serial = true
verify_eeprom = true
safe_off = true
golden = "G-001"
golden_reference = "/srv/golden.orvane"
check_every = "8h"
[instrument]
1 = "tcp:bench7:5025"
[tag]
line = "A"
"two = words" = "x=y"
[tables]
"Cable.loss" = "0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef"
[golden_limits]
"tx.gsm.*.power" = 0.25
"a \"b\" \\ *" = 8
[panel]
pace = 35000
dialect = "4400M(WaveTek)"
rx_loss_gsm = -0.75
tx_loss_gsm = -1
auto_save = false
channel_calibration = true
)toml";

TEST_F(ProfileTest, IsPrintedAsItWasRead) {
  const Options options = With(kWhole, {"--theme", "dark", "--tag", "shift=2"});
  const std::string printed = PrintProfile(options);
  const Options again = With(printed);
  EXPECT_EQ(PrintProfile(again), printed);
  EXPECT_EQ(again.com, options.com);
  EXPECT_EQ(RouteText(again.gpib.bus), "vxi11:gateway");
  EXPECT_EQ(RouteText(again.gpib.instruments.at(1)), "tcp:bench7:5025");
  EXPECT_EQ(again.records, "/srv/a \"b\" \\ c.sqlite");
  EXPECT_EQ(again.station, options.station);
  EXPECT_EQ(again.unit, options.unit);
  EXPECT_EQ(again.unit.tags.size(), 3U);
  EXPECT_EQ(again.theme, Theme::Dark);
  EXPECT_TRUE(again.askSerial && again.verifyEeprom);
  EXPECT_EQ(again.tables, options.tables);
  EXPECT_EQ(again.golden.serial, "G-001");
  EXPECT_EQ(again.golden.reference, "/srv/golden.orvane");
  EXPECT_EQ(again.golden.checkEvery, std::chrono::hours(8));
  ASSERT_EQ(again.golden.limits.size(), 2U);
  EXPECT_EQ(again.golden.limits[0].pattern, "tx.gsm.*.power");
  EXPECT_EQ(again.golden.limits[1].pattern, "a \"b\" \\ *");
  EXPECT_EQ(again.golden.limits[1].allowed, 8);
  ASSERT_EQ(again.panels.size(), options.panels.size());
  for (const PanelSetting& setting : options.panels) {
    const auto same = [&](const PanelSetting& each) {
      return each.name == setting.name && each.text == setting.text;
    };
    EXPECT_TRUE(std::any_of(again.panels.begin(), again.panels.end(), same)) << setting.name;
  }
}

TEST_F(ProfileTest, OneOfNothingIsAllComments) {
  const std::string printed = PrintProfile(Accepted({"--print-profile"}));
  std::istringstream lines(printed);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_TRUE(line.empty() || line[0] == '#' || line[0] == '[') << line;
  }
  for (const OptionRow& row : OptionRows()) {
    EXPECT_EQ(printed.find("# " + row.means + "\n") == std::string::npos, row.onCommandLineOnly) << row.name;
  }
  EXPECT_EQ(PrintProfile(With(printed)), printed);
}

/// Each line that is commented out is a setting once its mark is taken away, unless it waits for a value.
TEST_F(ProfileTest, ASettingThatIsCommentedOutNeedsItsMarkTakenAwayAlone) {
  std::string text = PrintProfile(Accepted({}));
  std::string active;
  std::istringstream lines(text);
  bool inPanel = false;
  int settings = 0;
  for (std::string line; std::getline(lines, line);) {
    inPanel = inPanel || line == "[panel]";
    const bool setting = line.starts_with("# ") && line.find(" = ") != std::string::npos;
    const bool ready = inPanel || line.ends_with("= false");
    if (setting && ready) {
      line.erase(0, 2);
      ++settings;
    }
    active += line + "\n";
  }
  EXPECT_EQ(settings, static_cast<int>(PanelRows().size()) + 5);
  EXPECT_EQ(With(active).panels.size(), PanelRows().size());
}

TEST_F(ProfileTest, AValueThatNoFileOfTextCanHoldIsNotPrinted) {
  EXPECT_THROW((void)PrintProfile(Accepted({"--com1", "/dev/\xFF"})), OptionFault);
}

}  // namespace
}  // namespace orvane::test
