#include <CLI/CLI.hpp>
#include <iostream>

#include "bench/bench.h"
#include "bench/wires/adapter_wire.h"
#include "bench/wires/gateway.h"
#include "bench/wires/instrument_server.h"
#include "bench/wires/pseudo_terminal.h"

/// virtual-bench: the bench on wires, for any client that speaks to a serial device and to sockets.
namespace orvane::bench {
namespace {

constexpr int kBadOptions = 64;
constexpr int kNoWires = 1;

struct Places {
  std::string testSet = "0";
  std::string supply = "0";
  std::string load = "0";
  std::string gateway = "0";
  bool portmapper = false;
  std::string adapter = "0";
  std::string target;
  std::string adapterTty;
};

void ListFaults() {
  for (const FaultRow& row : FaultTable()) {
    std::cout << row.name << "\t" << row.description;
    if (!row.valueMeans.empty()) std::cout << " (/" << row.valueMeans << ", usually " << row.value << ")";
    std::cout << "\n";
  }
}

/// A name of the caller's choice for the pseudo-terminal, gone with the program.
class Link {
 public:
  Link(std::string name, const std::string& target) : name_(std::move(name)) {
    if (name_.empty()) return;
    if (std::filesystem::is_symlink(name_)) std::filesystem::remove(name_);
    std::filesystem::create_symlink(target, name_);
  }
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;
  ~Link() {
    std::error_code ignored;
    if (!name_.empty()) std::filesystem::remove(name_, ignored);
  }

 private:
  std::string name_;
};

void TellLink(const char* link, const LinkCounters& counters) {
  std::cout << "counters " << link << " commands " << counters.commands << " in " << counters.bytesIn << " out "
            << counters.bytesOut;
}
void Tell(const char* link, const LinkCounters& counters) {
  TellLink(link, counters);
  std::cout << "\n";
}
void TellAdapter(const char* link, const BusController& controller) {
  TellLink(link, controller.Counters());
  std::cout << " saved " << controller.Saved() << "\n";
}

/// As a gateway names them, by board and primary address; the test set also as the one instrument of a LAN.
std::vector<GatewayDevice> DevicesOf(Bench& bench, const BenchOptions& options) {
  const auto named = [](int primary) { return "gpib0," + std::to_string(primary); };
  return {{{named(options.testSetAddress), "inst0"}, bench.testSet},
          {{named(options.supplyAddress)}, bench.supply},
          {{named(options.loadAddress)}, bench.load}};
}

void Run(const BenchOptions& options, const Places& places) {
  Reactor reactor;
  Bench bench(options);
  const InstrumentServer testSet(reactor, bench.testSet, places.testSet);
  const InstrumentServer supply(reactor, bench.supply, places.supply);
  const InstrumentServer load(reactor, bench.load, places.load);
  const Gateway gateway(reactor, DevicesOf(bench, options), places.gateway);
  std::optional<PortmapperEntry> entry;
  if (places.portmapper) entry.emplace(gateway.Port());
  const std::map<int, InstrumentLine*> bus{{options.testSetAddress, &bench.testSet},
                                           {options.supplyAddress, &bench.supply},
                                           {options.loadAddress, &bench.load}};
  BusController onSocket(bus);
  BusController onTerminal(bus);
  const AdapterServer adapter(reactor, onSocket, places.adapter);
  const AdapterTerminal adapterTty(reactor, onTerminal);
  const PseudoTerminal target(reactor, bench.target);
  const Link targetLink(places.target, target.Path());
  const Link adapterLink(places.adapterTty, adapterTty.Path());
  std::cout << "target " << target.Path() << "\ntestset " << testSet.Address() << "\nsupply " << supply.Address()
            << "\nload " << load.Address() << "\nvxi11 " << gateway.Address() << "\nadapter " << adapter.Address()
            << "\nadapter-tty " << adapterTty.Path() << "\nready" << std::endl;
  reactor.Run();
  Tell("target", bench.target.Counters());
  Tell("testset", bench.testSet.Counters());
  Tell("supply", bench.supply.Counters());
  Tell("load", bench.load.Counters());
  TellAdapter("adapter", onSocket);
  TellAdapter("adapter-tty", onTerminal);
}

}  // namespace
}  // namespace orvane::bench

int main(int argc, char** argv) {
  using namespace orvane::bench;
  BenchOptions options;
  Places places;
  std::vector<std::string> faults;
  std::string store;
  CLI::App app{"A virtual handset, radio test set, bench supply and electronic load on wires", "virtual-bench"};
  app.add_option("--seed", options.seed, "Which unit is under test");
  app.add_option("--fault", faults, "NAME[-WORD][@N[+]][/VALUE]; may be repeated")->expected(1)->take_all();
  app.add_option("--store", store, "Directory where the Target keeps its EEPROM and flash table 100");
  app.add_option("--loss", options.cableLossDb, "Loss of the RF cable in dB");
  app.add_option("--lead", options.leadLossVolts, "Loss of the supply's leads in V");
  app.add_option("--testset", places.testSet, "[HOST:]PORT of the test set; 0 is any free port");
  app.add_option("--supply", places.supply, "[HOST:]PORT of the supply");
  app.add_option("--load", places.load, "[HOST:]PORT of the load");
  app.add_option("--vxi11", places.gateway, "[HOST:]PORT of the LAN gateway to all three");
  app.add_flag("--portmapper", places.portmapper, "Enter the LAN gateway with this machine's portmapper");
  app.add_option("--adapter", places.adapter, "[HOST:]PORT of the GPIB adapter that speaks the ++ commands");
  app.add_option("--target", places.target, "A name to make for the Target's pseudo-terminal");
  app.add_option("--adapter-tty", places.adapterTty, "A name to make for the pseudo-terminal of a GPIB adapter");
  bool list = false;
  app.add_flag("--list-faults", list, "Name the faults and end");
  try {
    app.parse(argc, argv);
    for (const std::string& fault : faults) SetBenchOption(options, "fault=" + fault);
    if (!store.empty()) options.store = store;
    if (list) {
      ListFaults();
    } else {
      Run(options, places);
    }
    return 0;
  } catch (const CLI::CallForHelp& help) {
    return app.exit(help);
  } catch (const CLI::ParseError& error) {
    std::cerr << "virtual-bench: " << error.what() << "\n";
    return kBadOptions;
  } catch (const BenchOptionError& error) {
    std::cerr << "virtual-bench: " << error.what() << "\n";
    return kBadOptions;
  } catch (const std::exception& error) {
    std::cerr << "virtual-bench: " << error.what() << "\n";
    return kNoWires;
  }
}
