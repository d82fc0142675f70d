/// How long an exchange with the Target takes beside what its bytes take on the line, and how much of a processor a
/// whole road of a production Target costs: the station in this process, the virtual bench on a pseudo-terminal and
/// sockets in another one.

#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>
#include <vector>

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
#include "platform/operator.h"

namespace orvane {
namespace {

using namespace std::chrono_literals;

constexpr double kByteUs = 10 * 1e6 / 115200;
/// From the last byte of a command to the first of its reply, on the virtual bench.
constexpr double kTurnAroundUs = 300;
constexpr double kAllowedRatio = 1.10;
/// What a trace may add to an exchange.
constexpr double kAllowedTrace = 0.02;

struct Exchange {
  double tookUs;
  double wireUs;
  [[nodiscard]] double Ratio() const { return tookUs / wireUs; }
};

/// The line, with a watch on it: from the first byte of a command to the end of its reply's decoding.
class WatchedLine final : public SerialControl {
 public:
  WatchedLine(EventLoop& loop, SerialControl& line) : loop_(loop), line_(line) {
    line_.onComm = [this](int event) {
      if (onComm) onComm(event);
      if (reply_ != nullptr && reply_->ReplyDone && bytesIn_ > 0) Note();
    };
  }
  void WatchReplies(const ReplyState& reply) { reply_ = &reply; }
  [[nodiscard]] const std::vector<Exchange>& Exchanges() const { return exchanges_; }

  [[nodiscard]] bool PortOpen() const override { return line_.PortOpen(); }
  void Open() override {
    line_.setup = setup;
    line_.Open();
  }
  void Close() override { line_.Close(); }
  void Output(std::string_view bytes) override {
    constexpr std::size_t kSync = 2;
    if (bytes.size() == kSync) {
      start_ = loop_.Now();
      bytesOut_ = bytesIn_ = 0;
    }
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
  std::vector<Exchange> exchanges_;
};

/// The virtual bench on wires, as a program of its own.
class BenchProgram {
 public:
  explicit BenchProgram(const std::filesystem::path& program) {
    std::array<int, 2> output{};
    if (::pipe(output.data()) != 0) throw std::runtime_error("no pipe");
    process_ = ::fork();
    if (process_ == 0) {
      ::dup2(output[1], STDOUT_FILENO);
      ::execl(program.c_str(), program.c_str(), nullptr);
      ::_exit(127);
    }
    ::close(output[1]);
    FILE* lines = ::fdopen(output[0], "r");
    std::array<char, 256> line{};
    while (std::fgets(line.data(), line.size(), lines) != nullptr) {
      std::istringstream words(line.data());
      std::string what;
      std::string where;
      words >> what >> where;
      if (what == "ready") return;
      places_[what] = where;
    }
    throw std::runtime_error("the virtual bench does not start: " + program.string());
  }
  BenchProgram(const BenchProgram&) = delete;
  BenchProgram& operator=(const BenchProgram&) = delete;
  ~BenchProgram() {
    ::kill(process_, SIGTERM);
    ::waitpid(process_, nullptr, 0);
  }

  [[nodiscard]] const std::string& Place(const std::string& what) { return places_[what]; }

 private:
  pid_t process_ = -1;
  std::map<std::string, std::string> places_;
};

double ProcessorSeconds() {
  timespec time{};
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

template <class Value>
double Quantile(std::vector<Exchange> all, double part, Value value) {
  const auto at = all.begin() + static_cast<std::ptrdiff_t>(part * static_cast<double>(all.size() - 1));
  std::nth_element(all.begin(), at, all.end(),
                   [&](const Exchange& a, const Exchange& b) { return value(a) < value(b); });
  return value(*at);
}

/// One road of a production Target.
struct Road {
  Verdict verdict = Verdict::None;
  double seconds = 0;
  double processorSeconds = 0;
  std::string boxes;
  std::vector<Exchange> exchanges;
};

/// With a trace of all that passes, if `trace` names a file for it.
Road Drive(const std::filesystem::path& folder, const std::optional<std::string>& trace) {
  BenchProgram bench(folder / "virtual-bench");
  GpibRoutes routes;
  for (const auto& [address, what] : std::map<int, std::string>{{1, "testset"}, {2, "supply"}, {5, "load"}}) {
    routes.instruments.insert(ParseInstrumentRoute(std::to_string(address) + "=tcp:" + bench.Place(what)));
  }

  QtEventLoop loop;
  std::ostringstream boxes;
  Desk desk(loop, std::filesystem::current_path());
  desk.LeaveUnattended(boxes);
  DiskFiles files(folder / ".." / "share" / "orvane", "/nonexistent");
  RoutedGpibBus plainBus(routes);
  QtSerialControl device(loop, {bench.Place("target"), "", "", ""});
  std::optional<Trace> record;
  std::optional<TracedSerial> tracedLine;
  std::optional<TracedBus> tracedBus;
  if (trace) {
    record.emplace(loop, *trace);
    tracedLine.emplace(device, *record);
    tracedBus.emplace(plainBus, *record);
  }
  WatchedLine line(loop, trace ? static_cast<SerialControl&>(*tracedLine) : device);
  GpibBus& bus = trace ? static_cast<GpibBus&>(*tracedBus) : plainBus;
  Station station({loop, line, bus, files, desk, desk});
  line.WatchReplies(station.State().reply);
  station.Start();

  Operator hand(station.Nest());
  StationPanels& panels = station.Panels();
  hand.Click(panels.main.cmdInstrumentInitialize);
  hand.Click(panels.main.cmdPSInitialize);
  hand.Click(panels.baseBand.load.initialize);
  const TimePoint start = loop.Now();
  const double processorStart = ProcessorSeconds();
  hand.Click(panels.main.cmdTargetInitialize);
  return {.verdict = station.State().report.Concluded().value_or(Verdict::None),
          .seconds = std::chrono::duration<double>(loop.Now() - start).count(),
          .processorSeconds = ProcessorSeconds() - processorStart,
          .boxes = boxes.str(),
          .exchanges = line.Exchanges()};
}

double Took(const Exchange& exchange) { return exchange.tookUs; }

int Measure(const std::filesystem::path& folder) {
  const Road plain = Drive(folder, std::nullopt);
  const auto& exchanges = plain.exchanges;
  std::cout << "road            " << VerdictText(plain.verdict) << " in " << plain.seconds << " s\n" << plain.boxes;
  if (exchanges.empty()) return 1;
  const double ratio = Quantile(exchanges, 0.5, [](const Exchange& e) { return e.Ratio(); });
  const auto wire = [](const Exchange& e) { return e.wireUs; };
  std::cout << "exchanges       " << exchanges.size() << "\n"
            << "took            " << Quantile(exchanges, 0.5, Took) << " us median\n"
            << "on the wire     " << Quantile(exchanges, 0.5, wire) << " us median\n"
            << "ratio           " << ratio << " median, "
            << Quantile(exchanges, 0.9, [](const Exchange& e) { return e.Ratio(); }) << " of nine in ten, "
            << kAllowedRatio << " allowed\n"
            << "processor       " << 100 * plain.processorSeconds / plain.seconds << " % of the road's time"
            << std::endl;

  const std::string trace = (std::filesystem::temp_directory_path() / "orvane_bench.trace").string();
  const Road traced = Drive(folder, trace);
  for (const std::string& part : PartsOf(trace)) std::filesystem::remove(part);
  if (traced.exchanges.empty()) return 1;
  const auto each = [](const Road& road) {
    return 1e6 * road.processorSeconds / static_cast<double>(road.exchanges.size());
  };
  const double slower = Quantile(traced.exchanges, 0.5, Took) / Quantile(exchanges, 0.5, Took) - 1;
  std::cout << "with a trace    " << Quantile(traced.exchanges, 0.5, Took) << " us median: " << 100 * slower
            << " % more, " << 100 * kAllowedTrace << " % allowed; " << each(traced) - each(plain)
            << " us more of the processor for each exchange" << std::endl;
  const bool good = plain.verdict == Verdict::Pass && traced.verdict == Verdict::Pass;
  return good && ratio <= kAllowedRatio && slower <= kAllowedTrace ? 0 : 1;
}

}  // namespace
}  // namespace orvane

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  try {
    return orvane::Measure(QCoreApplication::applicationDirPath().toStdString());
  } catch (const std::exception& failure) {
    std::cerr << "exchange: " << failure.what() << std::endl;
    return 1;
  }
}
