// Installed data files that open and are damaged: the road goes on as it always did, and no PASS of it is complete.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "adapters/sha256.h"
#include "base/decimal4.h"
#include "station/virtual_station.h"
#include "txcal/side_tables.h"

namespace orvane::test {
namespace {

using ::testing::HasSubstr;

/// A bench that loses 1 dB in its cable, and the file that says so.
bench::BenchOptions CableOf1Db() {
  bench::BenchOptions options;
  options.cableLossDb = 1;
  return options;
}

std::string LossFileOf1Db() {
  CalState cal;
  for (std::size_t i = 0; i < 4; ++i) cal.LossTable[i] = -1;
  cal.LossTable[4] = "0.01"_d4;
  return LossRecords(cal);
}

int StrongestGsmDac(VirtualStation& station) { return station.State().rf.RFParams.BAND[0].tx_Level[5].apc; }

/// "receive transmitDCS": the steps whose reason names the file, in their words.
std::string StepsThatName(VirtualStation& station, const std::string& words) {
  std::string names;
  for (const StepRecord& step : station.State().report.Steps()) {
    if (step.complete || step.reason.find(words) == std::string::npos) continue;
    if (!names.empty()) names += " ";
    names += StepName(step.step);
  }
  return names;
}

TEST(DamagedData, ASoundLossFileOfTheCableInUseCalibratesTheUnit) {
  VirtualStation station(CableOf1Db(), {{"Cable.loss", LossFileOf1Db()}});
  station.TakeTargetThrough();
  EXPECT_EQ(station.Concluded(), Verdict::Pass);
  EXPECT_TRUE(station.State().report.AllComplete()) << station.Steps();
  EXPECT_EQ(StrongestGsmDac(station), 584);
}

TEST(DamagedData, OfAFileIsToldByEachStepThatStandsOnIt) {
  const std::string losses = LossFileOf1Db();
  const std::string& ramps = InstalledFile("RampTable.dat");
  const std::string& parameters = InstalledFile("TI532.epm");
  const std::string measuring = "receive transmitDCS transmitGSM charger";
  const struct {
    std::string name;
    std::string content;
    std::string words;
    std::string steps;
  } rows[] = {
      {"Cable.loss", "", "/system/Cable.loss is 0 bytes long, not 640.", measuring},
      {"Cable.loss", std::string(640, '\0'), "/system/Cable.loss holds nothing but zero bytes.", measuring},
      {"Cable.loss", losses.substr(0, 320), "/system/Cable.loss is 320 bytes long, not 640.", measuring},
      {"RampTable.dat", ramps + "x", "/system/RampTable.dat is 126977 bytes long, not 126976.",
       "transmitDCS transmitGSM"},
      {"TI532.epm", parameters + "more = 1\r\n", "/system/TI532.epm holds 1858 values, not 1857.", "save"},
      {"TI532.epm", parameters.substr(0, 30000), "/system/TI532.epm holds ", "save"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.words);
    VirtualStation::OtherFiles others{{"Cable.loss", losses}};
    others[row.name] = row.content;
    VirtualStation station(CableOf1Db(), others);
    station.TakeTargetThrough();
    EXPECT_EQ(station.Concluded(), Verdict::Pass);
    EXPECT_FALSE(station.State().report.AllComplete());
    EXPECT_EQ(StepsThatName(station, row.words), row.steps) << station.Steps();
    EXPECT_THAT(station.boxes.shown, testing::IsEmpty()) << "as it always was";
  }
}

/// A station whose files are all damaged, and a unit behind the load of sound ones by hand, each with such a tail.
void ExpectHealed(const std::string& tail, const std::string& moreLines) {
  VirtualStation station(CableOf1Db(), {{"Cable.loss", ""}, {"RampTable.dat", "short"}, {"TI532.epm", ""}});
  station.files.content["/home/sound.loss"] = LossFileOf1Db() + tail;
  station.files.content["/home/sound.dat"] = InstalledFile("RampTable.dat") + tail;
  station.files.content["/home/sound.epm"] = InstalledFile("TI532.epm") + moreLines;
  station.dialogs.answers = {"/home/sound.loss", "/home/sound.dat", "/home/sound.epm"};
  station.op.Click(station.Panels().autoCal.cmdRxLossLoad);
  station.op.Click(station.Panels().main.ramp.cmdRampLoad);
  station.Panels().downLoad.Touch();
  station.op.Select(station.Panels().downLoad.optDownloadFileLoad);
  station.op.Click(station.Panels().downLoad.cmdEepromDownLoad);
  station.TakeTargetThrough();
  EXPECT_EQ(station.Concluded(), Verdict::Pass);
  EXPECT_TRUE(station.State().report.AllComplete()) << station.Steps();
  EXPECT_EQ(StrongestGsmDac(station), 584);
}

TEST(DamagedData, HealsWithASoundFileThatIsLoadedByHand) { ExpectHealed("", ""); }

/// Where an operator lets a shorter file lie over a longer one, the longer one's tail stays behind it.
TEST(DamagedData, HealsWithALongerFileThatIsLoadedByHand) { ExpectHealed("tail", "more\t=\t1\r\n"); }

TEST(DamagedData, LossesThatWereNotLoadedAreToldWhateverElseIsLoadedByHand) {
  const std::optional<std::string> missing;
  const std::string tooLong(kLargestRecordFile + 1, 'x');
  const std::string losses = LossFileOf1Db();
  const VirtualStation::OtherFiles disks[] = {
      {{"Cable.loss", missing}},
      {{"Cable.loss", tooLong}},
      {{"Cable.loss", losses}, {"RampTable.dat", missing}},
      {{"Cable.loss", losses}, {"TI532.epm", missing}},
  };
  for (const auto& others : disks) {
    VirtualStation station(CableOf1Db(), others);
    station.files.content["/home/sound.dat"] = InstalledFile("RampTable.dat");
    station.files.content["/home/sound.epm"] = InstalledFile("TI532.epm");
    station.dialogs.answers = {"/home/sound.dat", "/home/sound.epm"};
    station.op.Select(station.Panels().main.ramp.optFile);
    station.op.Click(station.Panels().main.ramp.cmdRampLoad);
    station.Panels().downLoad.Touch();
    station.op.Select(station.Panels().downLoad.optDownloadFileLoad);
    station.op.Click(station.Panels().downLoad.cmdEepromDownLoad);
    station.TakeTargetThrough();
    EXPECT_FALSE(station.State().report.AllComplete()) << "at DAC " << StrongestGsmDac(station);
    EXPECT_EQ(StepsThatName(station, "Cable.loss was not loaded."), "receive transmitDCS transmitGSM charger")
        << station.Steps();
  }
}

TEST(DamagedData, ThatIsLoadedByHandIsToldAsWell) {
  VirtualStation station(CableOf1Db(), {{"Cable.loss", LossFileOf1Db()}});
  station.files.content["/home/zero.loss"] = std::string(640, '\0');
  station.files.content["/home/cut.dat"] = InstalledFile("RampTable.dat").substr(0, 60000);
  station.dialogs.answers = {"/home/zero.loss", "/home/cut.dat"};
  station.op.Click(station.Panels().autoCal.cmdRxLossLoad);
  station.op.Click(station.Panels().main.ramp.cmdRampLoad);
  station.TakeTargetThrough();
  EXPECT_FALSE(station.State().report.AllComplete()) << "at DAC " << StrongestGsmDac(station);
  EXPECT_EQ(StepsThatName(station, "/home/zero.loss holds nothing but zero bytes."),
            "receive transmitDCS transmitGSM charger");
  EXPECT_EQ(StepsThatName(station, "/home/cut.dat is 60000 bytes long, not 126976."), "transmitDCS transmitGSM");
}

/// As sha256sum tells them.
constexpr const char* kZeros640 = "9e132485d5107211de325a45e7917cbe3e4b5b9cde3e4ee91d7d2102317759ee";
constexpr const char* kNothing = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";

StationWishes Expecting(const char* name, const std::string& digest) {
  return {.tables = {{name, digest}}, .digestOf = &Sha256Of};
}

TEST(ExpectedTables, AFileOfAnotherContentIsToldByEachStepThatStandsOnIt) {
  const struct {
    const char* name;
    std::string steps;
  } rows[] = {{"Cable.loss", "receive transmitDCS transmitGSM charger"},
              {"RampTable.dat", "transmitDCS transmitGSM"},
              {"TI532.epm", "save"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    VirtualStation station({}, {}, Expecting(row.name, kZeros640));
    station.TakeTargetThrough();
    EXPECT_EQ(station.Concluded(), Verdict::Pass);
    EXPECT_FALSE(station.State().report.AllComplete());
    EXPECT_THAT(station.boxes.shown, testing::IsEmpty());
    const std::string words = std::string("/system/") + row.name + " has the SHA-256 " +
                              Sha256Of(InstalledFile(row.name)).substr(0, 12) +
                              "..., not 9e132485d510... as the profile says.";
    EXPECT_EQ(StepsThatName(station, words), row.steps) << station.Steps();
  }
}

TEST(ExpectedTables, TheFileThatIsExpectedIsSound) {
  for (const char* name : {"Cable.loss", "RampTable.dat", "TI532.epm"}) {
    VirtualStation station({}, {}, Expecting(name, Sha256Of(InstalledFile(name))));
    station.TakeTargetThrough();
    EXPECT_EQ(station.Concluded(), Verdict::Pass);
    EXPECT_TRUE(station.State().report.AllComplete()) << station.Steps();
  }
}

TEST(ExpectedTables, ZerosThatAreExpectedAreSound) {
  VirtualStation station({}, {{"Cable.loss", std::string(640, '\0')}}, Expecting("Cable.loss", kZeros640));
  EXPECT_EQ(station.State().cal.lossDamage, "");
  station.TakeTargetThrough();
  EXPECT_EQ(station.Concluded(), Verdict::Pass);
  EXPECT_TRUE(station.State().report.AllComplete()) << station.Steps();
}

TEST(ExpectedTables, AFileThatIsTooShortIsDamagedThoughItIsTheOneThatIsExpected) {
  VirtualStation station({}, {{"Cable.loss", ""}}, Expecting("Cable.loss", kNothing));
  EXPECT_EQ(station.State().cal.lossDamage, "/system/Cable.loss is 0 bytes long, not 640.");
  station.TakeTargetThrough();
  EXPECT_FALSE(station.State().report.AllComplete());
}

TEST(ExpectedTables, AFileThatIsNotThereWasNotLoaded) {
  VirtualStation station({}, {{"Cable.loss", std::nullopt}}, Expecting("Cable.loss", kZeros640));
  EXPECT_EQ(station.State().cal.lossDamage, "Cable.loss was not loaded.");
}

}  // namespace
}  // namespace orvane::test
