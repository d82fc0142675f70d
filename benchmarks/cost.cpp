/// What an exchange with the Target costs: calls of the system, and time of the processor beside a straightforward
/// program that does the same exchanges by pyserial.

#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "adapters/disk_files.h"
#include "adapters/gpib/gpib_routes.h"
#include "adapters/qt_event_loop.h"
#include "adapters/qt_serial_control.h"
#include "app/desk.h"
#include "app/station.h"
#include "figures.h"
#include "platform/operator.h"
#include "played_target.h"
#include "system_calls.h"

namespace orvane::test {
namespace {

constexpr const char* kPython = "/usr/bin/python3";

/// A station with its Target's line open.
class ExchangingStation {
 public:
  explicit ExchangingStation(const std::string& device) : line_(loop_, {device, "", "", ""}) {
    desk_.LeaveUnattended(boxes_);
    station_.Start();
    line_.setup.settings = "115200,N,8,1";
    line_.setup.rThreshold = 1;
    line_.Open();
  }

  /// Command lines from the operator's box to their decoded replies, so many.
  void Exchange(int count) {
    TextBox& box = station_.Panels().main.txtUserCommand;
    Operator hand(station_.Nest());
    for (int i = 0; i < count; ++i) {
      hand.Click(box);
      box.SetText("rfpw 1 62");
      hand.Key(box, 13);
      if (StatusOf(station_.State().reply) != 0) throw std::runtime_error("the Target did not answer");
    }
  }

 private:
  QtEventLoop loop_;
  std::ostringstream boxes_;
  Desk desk_{loop_, std::filesystem::current_path()};
  DiskFiles files_{BENCHMARK_DATA_FOLDER, "/nonexistent"};
  RoutedGpibBus bus_{GpibRoutes{}};
  QtSerialControl line_;
  Station station_{{loop_, line_, bus_, files_, desk_, desk_}};
};

void MeasureCalls(Table& table) {
  const auto callsFor = [](int exchanges) {
    const PlayedTarget target;
    return SystemCallsOf([&] { ExchangingStation(target.Device()).Exchange(exchanges); });
  };
  constexpr int kFew = 20;
  constexpr int kMany = 120;
  const auto more = static_cast<double>(callsFor(kMany) - callsFor(kFew));
  table.Add("calls of the system for an exchange", more / (kMany - kFew), "", 5);
}

void MeasureProcessor(Table& table) {
  if (std::system((std::string(kPython) + " -c 'import serial' 2>/dev/null").c_str()) != 0) {
    std::printf("no comparison with pyserial: %s has none (Debian: python3-serial)\n", kPython);
    return;
  }
  // Many short turns: what else runs on the machine changes what a processor's second is worth.
  constexpr int kTurns = 21;
  constexpr int kExchanges = 100;
  const PlayedTarget target;
  const auto station = [&] {
    ExchangingStation exchanging(target.Device());
    exchanging.Exchange(1);
    const double start = ProcessorSeconds();
    exchanging.Exchange(kExchanges);
    return ProcessorSeconds() - start;
  };
  const auto pyserial = [&] {
    const std::string command = std::string(kPython) + " " + PYSERIAL_EXCHANGES + " " + target.Device() + " ";
    FILE* const output = ::popen((command + std::to_string(kExchanges)).c_str(), "r");
    double seconds = 0;
    const bool told = output != nullptr && std::fscanf(output, "%lf", &seconds) == 1;
    if (output == nullptr || ::pclose(output) != 0 || !told) throw std::runtime_error("pyserial's program failed");
    return seconds;
  };
  std::printf("an exchange takes %.0f us of the processor, by pyserial %.0f us\n", station() / kExchanges * 1e6,
              pyserial() / kExchanges * 1e6);
  table.Add("processor time of exchanges over pyserial's", ByTurns(kTurns, station, pyserial), 0.4);
}

}  // namespace
}  // namespace orvane::test

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  try {
    orvane::test::Table table;
    orvane::test::MeasureCalls(table);
    orvane::test::MeasureProcessor(table);
    return table.Status();
  } catch (const std::exception& failure) {
    std::cerr << "cost: " << failure.what() << std::endl;
    return 1;
  }
}
