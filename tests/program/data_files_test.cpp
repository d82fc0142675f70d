// Installed data files that are missing, doubled or broken when the station starts.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "program/programs.h"

namespace orvane::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFiles[] = {"TI532.epm", "RampTable.dat", "Cable.loss"};

/// The two places, with stations that look there.
class DataFiles : public testing::Test {
 protected:
  DataFiles() {
    fs::create_directory(first_);
    fs::create_directory(second_);
  }
  static std::string Installed(const std::string& file) { return ORVANE_DATA_DIR "/" + file; }
  static void InstallAll(const std::string& place) {
    for (const char* file : kFiles) fs::copy_file(Installed(file), fs::path(place) / file);
  }
  void Start() {
    station_ =
        std::make_unique<Station>(Arguments{"--bench", "virtual", "--system-dir", first_, "--temp-dir", second_});
  }
  /// The boxes of the start. What is asked behind the last of them is served.
  std::vector<Json> StartBoxes(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) station_->Await("box");
    EXPECT_EQ(station_->ErrorOf("click", {{"control", "OrvaneMain.cmdResultClear"}}), 0);
    EXPECT_EQ(station_->Heard("box").size(), count);
    return station_->Heard("box");
  }

  TempFolder folder_;
  std::string first_ = folder_ / "first";
  std::string second_ = folder_ / "second";
  std::unique_ptr<Station> station_;
};

struct MissingFile {
  const char* name;
  const char* title;
  bool ramp;
  bool record;
};

TEST_F(DataFiles, AMissingOneCostsTwoBoxesAndAllThatStandsBehindIt) {
  const MissingFile rows[] = {{"TI532.epm", "Alarm", false, false},
                              {"RampTable.dat", "Caution", false, false},
                              {"Cable.loss", "Caution", true, false}};
  InstallAll(second_);
  for (const MissingFile& row : rows) {
    SCOPED_TRACE(row.name);
    fs::remove(second_ + "/" + row.name);
    Start();
    const auto boxes = StartBoxes(2);
    EXPECT_EQ(boxes[0]["text"], std::string("There is not ") + row.name + " in Windows\\System directory.");
    EXPECT_EQ(boxes[0]["title"], row.title);
    EXPECT_EQ(boxes[0]["icon"], "information");
    EXPECT_EQ(boxes[1]["text"], "No such file or directory: " + second_ + "/" + row.name);
    EXPECT_EQ(boxes[1]["icon"], "exclamation");
    EXPECT_EQ(station_->State("RampTable")[0][0] != "", row.ramp);
    EXPECT_EQ(station_->State("RFParams")["il2agc_pwr(0)"] != 0, row.record);
    EXPECT_EQ(station_->State("RampStorageMode"), "");
    fs::copy_file(Installed(row.name), second_ + "/" + row.name);
  }
}

TEST_F(DataFiles, AFileInBothPlacesIsTakenFromTheFirst) {
  InstallAll(first_);
  InstallAll(second_);
  Fill(first_ + "/TI532.epm", "rf_revision = RF_PASCAL_20\r\nlow_agc_noise_thr = -77\r\n");
  Fill(second_ + "/TI532.epm", "rf_revision = RF_PASCAL_20\r\nlow_agc_noise_thr = -88\r\n");
  Start();
  StartBoxes(0);
  EXPECT_EQ(station_->State("RFParams")["low_agc_noise_thr"], -77);
  EXPECT_EQ(station_->State("RFParamCount"), 2);
  EXPECT_EQ(station_->State("RampStorageMode"), "File");
}

TEST_F(DataFiles, BrokenOnesLeaveAStationThatWorks) {
  InstallAll(first_);
  std::string noise;
  for (unsigned i = 0; i < 200000; ++i) noise += static_cast<char>(i * 2654435761U >> 24);
  struct Row {
    const char* file;
    std::string content;
  };
  const Row rows[] = {
      {"TI532.epm", noise},
      {"TI532.epm", ""},
      {"TI532.epm", std::string(3000, '\n') + std::string(100000, '=')},
      {"RampTable.dat", ContentOf(Installed("RampTable.dat")).substr(0, 5000)},
      {"RampTable.dat", noise},
      {"RampTable.dat", ""},
      {"Cable.loss", ContentOf(Installed("Cable.loss")).substr(0, 130)},
      {"Cable.loss", noise},
      {"Cable.loss", ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.file + std::string(" of ") + std::to_string(row.content.size()) + " bytes");
    Fill(first_ + "/" + row.file, row.content);
    Start();
    EXPECT_EQ(station_->State("TargetMode"), "TestMode");
    EXPECT_EQ(station_->State("RFParams").size(), 1857U);
    EXPECT_EQ(station_->State("RampTable").size(), 31U);
    EXPECT_EQ(station_->ErrorOf("show", {{"panel", "frmDownLoad"}}), 0);
    EXPECT_TRUE(station_->Heard("failure").empty());
    station_->Process().CloseInput();
    EXPECT_EQ(station_->Process().WaitForEnd().status, 0);
    fs::copy_file(Installed(row.file), first_ + "/" + row.file, fs::copy_options::overwrite_existing);
  }
}

TEST_F(DataFiles, TruncatedRampTablesKeepTheRowsThatTheyHave) {
  InstallAll(first_);
  Fill(first_ + "/RampTable.dat", ContentOf(Installed("RampTable.dat")).substr(0, 2 * 32 * 128));
  Start();
  StartBoxes(0);
  const Json table = station_->State("RampTable");
  EXPECT_NE(table[1][31], "");
  EXPECT_EQ(table[2][0], "");
}

TEST_F(DataFiles, WhatIsNoFileOfItsKindIsAFailedOpen) {
  InstallAll(second_);
  const std::string path = first_ + "/TI532.epm";
  fs::create_directory(path);
  Start();
  EXPECT_EQ(StartBoxes(1)[0]["text"], "Is a directory: " + path);

  fs::remove(path);
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  Start();
  EXPECT_EQ(StartBoxes(1)[0]["text"], "Not a regular file: " + path) << "and no hang";

  fs::remove(path);
  Fill(path, "");
  fs::resize_file(path, std::uintmax_t{64} << 30);
  Start();
  EXPECT_EQ(StartBoxes(1)[0]["text"], "File too large: " + path);
}

TEST_F(DataFiles, APlaceThatCannotBeLookedUpIsNoPlaceAndTheSecondIsTried) {
  InstallAll(second_);
  fs::remove(first_);
  fs::create_symlink("first", first_);  // A loop: a folder without rights would be open to root.
  Start();
  StartBoxes(0);
  EXPECT_EQ(station_->State("RFParamCount"), 1857);
  EXPECT_EQ(station_->State("RampStorageMode"), "File");
}

}  // namespace
}  // namespace orvane::test
