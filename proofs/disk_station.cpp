#include "disk_station.h"

#include <algorithm>

namespace orvane::test {
namespace {

bench::BenchOptions UnitOf(std::uint64_t seed) {
  bench::BenchOptions options;
  options.seed = seed;
  return options;
}

}  // namespace

DiskStation::DiskStation(std::uint64_t unit)
    : disk_(new FaultyDisk),
      files_(ORVANE_DATA_DIR, "/nonexistent", std::unique_ptr<DiskCalls>(disk_)),
      bench_(loop_, UnitOf(unit)),
      station_({loop_, bench_.Serial(), bench_.Bus(), files_, boxes_, dialogs_}),
      op_(station_.Nest()) {
  station_.State().report.concluded.Connect([this](Verdict verdict) { verdict_ = verdict; });
  station_.Start();
}

void DiskStation::Save(std::size_t way, OldState old, const std::string& path, const FaultyDisk::Fault& fault) {
  constexpr int kEnoughCancels = 100;
  dialogs_.answers = {path};
  boxes_.shown.clear();
  boxes_.answers.clear();
  if (old != OldState::Nothing) boxes_.answers.push_back(old == OldState::Yes ? BoxButton::Yes : BoxButton::No);
  // A log that is not written is tried again twice, then given up.
  boxes_.answers.insert(boxes_.answers.end(), {BoxButton::Retry, BoxButton::Retry});
  boxes_.answers.insert(boxes_.answers.end(), kEnoughCancels, BoxButton::Cancel);
  disk_->Set(fault);
  Click(way);
  struck_ = disk_->Struck();
  unlinkFailed_ = disk_->UnlinkFailed();
  disk_->Set({});
}

void DiskStation::Click(std::size_t way) {
  StationPanels& p = station_.Panels();
  const std::string_view name = SavePathNames().at(way);
  const auto click = [&](Button& button) {
    if (const auto failure = op_.Click(button)) failures_ += *failure + "\n";
  };
  p.autoCal.Touch();
  p.downLoad.Touch();
  if (name == "upload") {
    bench_.Serial().setup.rThreshold = 1;
    if (!bench_.Serial().PortOpen()) bench_.Serial().Open();
    click(p.downLoad.cmdUpLoad);
  } else if (name == "ramp-main") {
    click(p.main.ramp.cmdRampSave);
  } else if (name == "ramp-dialog") {
    p.rampTable.Show();
    click(p.rampTable.editor.cmdRampSave);
  } else if (name == "initial") {
    click(p.autoCal.cmdinitialSave);
  } else if (name == "power") {
    click(p.autoCal.cmdPowerIndexSave);
  } else if (name == "loss") {
    click(p.autoCal.cmdRxLossSave);
  } else if (name == "result") {
    op_.Check(p.autoCal.chkAutoSaveMode, false);
    op_.Select(p.autoCal.optSaveModeFile);
    click(p.autoCal.cmdAutoCalResultSave);
  } else if (name == "run") {
    TakeTargetThrough();
  } else {
    Log();
  }
}

void DiskStation::TakeTargetThrough() {
  StationPanels& p = station_.Panels();
  ran_ = true;
  op_.Select(p.autoCal.optSaveModeEEPROMFile);
  op_.Click(p.main.cmdInstrumentInitialize);
  p.baseBand.Touch();
  op_.Click(p.baseBand.supply.initialize);
  op_.Click(p.baseBand.load.initialize);
  if (const auto failure = op_.Click(p.main.cmdTargetInitialize)) failures_ += *failure + "\n";
}

// Lines that are told apart, each by a command that lacks its number: one that is lost, doubled or out of its place
// shows.
void DiskStation::Log() {
  OrvaneMain& main = station_.Panels().main;
  op_.Click(main.cmdLogOn);
  for (const std::string_view word : {"rfpw", "rxpw", "txpw", "mpw", "spw", "rfpr", "rxpr", "txpr", "mpr", "spr"}) {
    op_.Type(main.txtUserCommand, word);
    op_.Key(main.txtUserCommand, U'\r');
  }
  if (!station_.State().console.LogOffState) op_.Click(main.cmdLogOn);
}

bool DiskStation::ToldOfAFailure() const {
  return !failures_.empty() || std::any_of(boxes_.shown.begin(), boxes_.shown.end(),
                                           [](const Box& box) { return box.icon == BoxIcon::Exclamation; });
}

bool DiskStation::Complete() { return !ran_ || station_.State().report.AllComplete(); }

std::string DiskStation::Boxes() const {
  std::string text = failures_;
  for (const Box& box : boxes_.shown) text += "[" + box.text + "]";
  return text;
}

}  // namespace orvane::test
