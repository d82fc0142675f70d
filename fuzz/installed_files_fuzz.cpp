// One of the three installed files, damaged, the other two sound: start-up takes it as far as it goes. The texts,
// tables and boxes behind it hold what each kind's own reader finds, or what they held before; nothing fails.

#include <optional>
#include <string>

#include "console/installed_data.h"
#include "content_file.h"
#include "panels/station_panels.h"
#include "ramp/ramp_file.h"
#include "require.h"
#include "rfparams/rf_text_file.h"
#include "state/station_state.h"
#include "support/fake_desk.h"
#include "support/memory_files.h"
#include "txcal/side_tables.h"

namespace {

using namespace orvane;
using fuzz::Require;

constexpr const char* kNames[] = {"/system/TI532.epm", "/system/RampTable.dat", "/system/Cable.loss"};

std::string SoundParameters() {
  std::string text = "rf_revision\t=\tRF_PASCAL_20\r\n";
  for (int i = 1; i < 1857; ++i) text += "label\t=\t" + std::to_string(i % 32) + "\r\n";
  return text;
}

std::string SoundRamps() {
  std::string content;
  for (int i = 1; i <= kRampTables * kRampValues; ++i) content += RampRecordOf("8", i);
  return content;
}

std::string SoundLosses() {
  CalState cal;
  cal.LossTable.fill(-1);
  return LossRecords(cal);
}

/// Built once: the panels have hundreds of controls, the record thousands of texts.
struct Station {
  test::Journal journal;
  test::FakeBoxes boxes{journal};
  test::MemoryFiles files;
  StationState state;
  StationPanels panels;
  InstalledData installed{panels.main, panels.autoCal, panels.downLoad, state.rf,
                          state.ramp,  state.cal,      files,           boxes};
};

void CheckTexts(const Station& station, const std::string& content) {
  RFState plain;
  ReadParameterLines(content, plain);
  Require(station.state.rf.RFParamCount == plain.RFParamCount, "another count of lines");
  const auto lines = std::min(static_cast<std::size_t>(plain.RFParamCount), plain.RFParamText.size());
  Require(station.panels.downLoad.lstDataReadWindow.Items().size() == lines + 1, "another list");
}

void CheckRamps(const Station& station, const std::string& content) {
  for (std::size_t i = 0; i < std::size_t{kRampTables} * kRampValues; ++i) {
    const auto record = std::string_view(content).substr(std::min(content.size(), i * kRecordSize), kRecordSize);
    const std::string& value = station.state.ramp.RampTable[i / kRampValues][i % kRampValues];
    Require(value == RampTextOf(record).value_or("kept"), "another ramp value");
  }
}

void CheckLosses(Station& station, const std::string& content) {
  const auto boxes = LossBoxes(station.panels.autoCal, station.panels.main);
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    CalState plain;
    fuzz::ContentFile file(content);
    const bool there = content.size() >= i * kRecordSize + 8;
    if (there) ReadLossRecord(file, i, plain);
    Require(boxes[i]->Text() == (there ? plain.LossTable[i].Text() : "kept"), "another loss");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  static const std::string sound[] = {SoundParameters(), SoundRamps(), SoundLosses()};
  static Station station;
  const std::size_t which = data[0] % 3;
  // The damaged one begins like the sound one as far as the input says.
  const std::size_t kept = size > 1 ? data[1] * 600U : 0;
  const std::string damaged =
      sound[which].substr(0, kept) + std::string(data + std::min<std::size_t>(size, 2), data + size);
  for (std::size_t i = 0; i < 3; ++i) station.files.content[kNames[i]] = i == which ? damaged : sound[i];
  for (auto& table : station.state.ramp.RampTable) table.fill("kept");
  for (TextBox* box : LossBoxes(station.panels.autoCal, station.panels.main)) box->SetText("kept");

  Require(station.installed.Load(), "three files that are there were not opened");
  Require(station.boxes.shown.empty(), "a box");
  CheckTexts(station, station.files.content[kNames[0]]);
  CheckRamps(station, station.files.content[kNames[1]]);
  CheckLosses(station, station.files.content[kNames[2]]);
  return 0;
}
