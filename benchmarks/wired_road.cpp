#include "wired_road.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "adapters/disk_files.h"
#include "adapters/gpib/gpib_routes.h"
#include "adapters/qt_event_loop.h"
#include "adapters/qt_serial_control.h"
#include "app/desk.h"
#include "app/route_text.h"
#include "app/station.h"
#include "app/trace/trace_file.h"
#include "app/trace/traced_bus.h"
#include "app/trace/traced_serial.h"
#include "figures.h"
#include "platform/operator.h"
#include "program/wired_bench.h"
#include "tapped_wires.h"

namespace orvane::test {
namespace {

constexpr double kByteUs = 10 * 1e6 / 115200;
/// From the last byte of a command to the first of its reply, on the virtual bench.
constexpr double kTurnAroundUs = 300;

/// The line, with a watch on it.
class WatchedLine final : public SerialControl {
 public:
  WatchedLine(EventLoop& loop, SerialControl& line) : loop_(loop), line_(line) {
    line_.onComm = [this](int event) {
      if (onComm) onComm(event);
      if (reply_ != nullptr && reply_->ReplyDone && bytesIn_ > 0) Note();
    };
  }
  void WatchReplies(const ReplyState& reply) { reply_ = &reply; }
  [[nodiscard]] const std::vector<WiredExchange>& Exchanges() const { return exchanges_; }

  [[nodiscard]] bool PortOpen() const override { return line_.PortOpen(); }
  void Open() override {
    line_.setup = setup;
    line_.Open();
  }
  void Close() override { line_.Close(); }
  void OutputWithNext(std::string_view bytes) override {
    start_ = loop_.Now();
    bytesOut_ = bytes.size();
    bytesIn_ = 0;
    line_.OutputWithNext(bytes);
  }
  void Output(std::string_view bytes) override {
    bytesOut_ += bytes.size();
    line_.Output(bytes);
  }
  [[nodiscard]] std::string Input() override {
    std::string bytes = line_.Input();
    bytesIn_ += bytes.size();
    return bytes;
  }

 private:
  void Note() {
    const double took = std::chrono::duration<double, std::micro>(loop_.Now() - start_).count();
    exchanges_.push_back({took, static_cast<double>(bytesOut_ + bytesIn_) * kByteUs + kTurnAroundUs});
    bytesIn_ = 0;
  }

  EventLoop& loop_;
  SerialControl& line_;
  const ReplyState* reply_ = nullptr;
  TimePoint start_{0};
  std::size_t bytesOut_ = 0;
  std::size_t bytesIn_ = 0;
  std::vector<WiredExchange> exchanges_;
};

/// The loop, with the time that its paces take.
class PacedLoop final : public EventLoop {
 public:
  explicit PacedLoop(EventLoop& loop) : loop_(loop) {}
  [[nodiscard]] TimePoint Now() const override { return loop_.Now(); }
  void Yield(TimePoint until) override { loop_.Yield(until); }
  void Spin(std::int64_t turns) override {
    const TimePoint start = loop_.Now();
    loop_.Spin(turns);
    spun_ += loop_.Now() - start;
  }
  void PostAt(TimePoint when, std::function<void()> event) override { loop_.PostAt(when, std::move(event)); }
  [[nodiscard]] double Seconds() const { return std::chrono::duration<double>(spun_).count(); }

 private:
  EventLoop& loop_;
  TimePoint spun_{0};
};

/// What stands between a station and its wires.
struct Wires {
  Wires(PacedLoop& loop, const std::string& target, const GpibRoutes& routes, const std::optional<std::string>& trace)
      : device(loop, {target, "", "", ""}), plainBus(routes) {
    if (!trace) return;
    record.emplace(loop, *trace);
    tracedLine.emplace(device, *record);
    tracedBus.emplace(plainBus, *record);
  }
  SerialControl& Line() { return tracedLine ? static_cast<SerialControl&>(*tracedLine) : device; }
  GpibBus& Bus() { return tracedBus ? static_cast<GpibBus&>(*tracedBus) : plainBus; }

  QtSerialControl device;
  RoutedGpibBus plainBus;
  std::optional<Trace> record;
  std::optional<TracedSerial> tracedLine;
  std::optional<TracedBus> tracedBus;
};

GpibRoutes RoutesTo(const WiredBench& bench, const std::string& testSet) {
  GpibRoutes routes;
  for (const std::string& route :
       {"1=tcp:" + testSet, "2=tcp:" + bench.Place("supply"), "5=tcp:" + bench.Place("load")})
    routes.instruments.insert(ParseInstrumentRoute(route));
  return routes;
}

}  // namespace

double WiredRoad::WireSeconds() const {
  double us = 0;
  for (const WiredExchange& exchange : exchanges) us += exchange.wireUs;
  return us * 1e-6;
}

std::vector<double> WiredRoad::Ratios() const {
  std::vector<double> ratios;
  for (const WiredExchange& exchange : exchanges) ratios.push_back(exchange.tookUs / exchange.wireUs);
  return ratios;
}

WiredRoad DriveWiredRoad(const RoadWishes& wishes) {
  const WiredBench bench;
  std::optional<TappedWires> tap;
  if (wishes.reading) tap.emplace(bench.Place("target"), bench.Place("testset"), *wishes.reading);
  QtEventLoop plainLoop;
  PacedLoop loop(plainLoop);
  std::ostringstream boxes;
  Desk desk(loop, std::filesystem::current_path());
  desk.LeaveUnattended(boxes);
  DiskFiles files(BENCHMARK_DATA_FOLDER, "/nonexistent");
  Wires wires(loop, tap ? tap->Target() : bench.Place("target"),
              RoutesTo(bench, tap ? tap->TestSet() : bench.Place("testset")), wishes.trace);
  WatchedLine line(loop, wires.Line());
  orvane::Station station({loop, line, wires.Bus(), files, desk, desk});
  line.WatchReplies(station.State().reply);
  station.Start();

  Operator hand(station.Nest());
  StationPanels& panels = station.Panels();
  hand.Click(panels.main.cmdInstrumentInitialize);
  hand.Click(panels.main.cmdPSInitialize);
  hand.Click(panels.baseBand.load.initialize);
  const double spunAhead = loop.Seconds();
  const int readAhead = tap ? tap->Readings() : 0;
  const TimePoint start = loop.Now();
  const double processorStart = ProcessorSeconds();
  hand.Click(panels.main.cmdTargetInitialize);
  WiredRoad road{.verdict = station.State().report.Concluded().value_or(Verdict::None),
                 .seconds = std::chrono::duration<double>(loop.Now() - start).count(),
                 .processorSeconds = ProcessorSeconds() - processorStart,
                 .paceSeconds = loop.Seconds() - spunAhead,
                 .instrumentSeconds = 0,
                 .exchanges = line.Exchanges(),
                 .gapsUs = {},
                 .boxes = boxes.str()};
  if (tap) {
    tap->End();
    road.instrumentSeconds = std::chrono::duration<double>(*wishes.reading).count() * (tap->Readings() - readAhead);
    road.gapsUs = tap->GapsUs();
  }
  if (road.verdict != Verdict::Pass || road.exchanges.empty())
    throw std::runtime_error("a good unit does not pass: " + road.boxes);
  return road;
}

}  // namespace orvane::test
