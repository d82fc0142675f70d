#include "app/world.h"

#include <unistd.h>

#include <QCoreApplication>
#include <iostream>
#include <utility>

#include "base/failure.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

/// The data files that lie beside the program, wherever the whole was put: `bin` is one step off the root, the folder
/// of the program with windows two.
fs::path DataFolder() {
  const fs::path program = QCoreApplication::applicationDirPath().toStdString();
  for (const char* const up : {"..", "../.."}) {
    std::error_code unknown;
    fs::path beside = fs::weakly_canonical(program / up / "share" / "orvane", unknown);
    if (fs::is_directory(beside, unknown)) return beside;
  }
  return ORVANE_INSTALLED_DATA;
}

/// Its name bears the user, since everybody may write to the folder for temporary files.
fs::path UserTempFolder() { return fs::temp_directory_path() / ("orvane-" + std::to_string(::getuid())); }

}  // namespace

World::World(const Options& options)
    : desk(loop, fs::current_path()),
      files_(options.systemFolder.value_or(DataFolder()), options.tempFolder.value_or(UserTempFolder())),
      line_(loop, options.com),
      bus_(options.gpib, &waits_),
      bench_(MakeBench(options)),
      waitedBus_(bench_ ? bench_->Bus() : bus_, waits_) {
  if (options.trace) traced_.emplace(loop, *options.trace, Serial(), Bus());
  if (options.records) recorded_.emplace(PlainPorts());
  if (!options.share.addresses.empty()) shared_.emplace(Ports().bus, loop, options.share, options.station);
}

StationPorts World::Ports() {
  const StationPorts ports = recorded_ ? recorded_->Ports() : PlainPorts();
  if (!shared_) return ports;
  return {ports.loop, ports.mscomTarget, *shared_, ports.files, ports.boxes, ports.dialogs};
}

std::unique_ptr<bench::VirtualBench> World::MakeBench(const Options& options) {
  if (!options.bench) return nullptr;
  return std::make_unique<bench::VirtualBench>(
      loop, [this](TimePoint span) { waits_.Sleep(span); }, *options.bench);
}

World::TracedWires::TracedWires(EventLoop& loop, const std::string& path, SerialControl& plainLine, GpibBus& plainBus)
    : trace(loop, path), line(plainLine, trace), bus(plainBus, trace) {
  trace.onBroken = [](const std::string& text) {
    std::cerr << "orvane: --trace: " << text << ". The trace ends here; the station goes on." << std::endl;
  };
}

SerialControl& World::Serial() {
  if (traced_) return traced_->line;
  if (bench_) return bench_->Serial();
  return line_;
}

GpibBus& World::Bus() {
  if (traced_) return traced_->bus;
  return waitedBus_;
}

void World::Share(Station& station) {
  if (!shared_) return;
  StationState& state = station.State();
  shared_->mayWait = [this] { return isUp_; };
  shared_->stopsAsked = [&state] { return state.cal.stopsAsked; };
  shared_->onWait = [&state](const std::optional<InstrumentWait>& wait) {
    if (wait && !state.instrumentWait) {
      std::cerr << "orvane: waits for the instrument at address " << wait->address << ", which " << wait->holder
                << " has." << std::endl;
    }
    state.instrumentWait = wait;
  };
  // A wait belongs to the run that the same button has started, if it has.
  state.report.runBegan.Connect([this](RunKind) { hasRun_ = true; });
  station.Nest().onIdle = [this] {
    shared_->OperationIsOver();
    if (!std::exchange(hasRun_, false)) (void)shared_->TakeWaited();
  };
}

void World::Watch(OperationNest& nest) {
  line_.onGone = [this, &nest](const std::string& text) {
    if (recorded_) recorded_->line.TellGone(text);
    nest.Run([&] { throw StationFailure(text); });
  };
  if (!traced_) return;
  nest.onFailure.emplace_back(
      [this](const std::string& text) { traced_->trace.Note("station", "failure", {}, text); });
}

}  // namespace orvane
