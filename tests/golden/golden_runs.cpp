#include "golden/golden_runs.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace orvane::test {
namespace {

/// A transmitter gives less and less for a step of the DAC, as real ones do.
double PowerAt(double dac) { return 8.5 * std::log(dac) - 22.5; }

void AddSearch(RunRecord& run, const std::string& name, double target, double loss, double tilt) {
  const double dac = std::round(std::exp((target + loss - tilt + 22.5) / 8.5));
  run.readings.push_back(
      {"transmit", name + ".power", PowerAt(dac) + tilt - loss, "dBm", target - 0.2, target + 0.2});
  run.readings.push_back({"transmit", name + ".dac", dac, "count", 0, 1020});
}

void AddBand(RunRecord& run, const std::string& band, int first, int last, double highest, double loss) {
  for (int level = last; level >= first; --level) {
    AddSearch(run, "tx." + band + ".level." + std::to_string(level), highest - 2.0 * (level - first), loss, 0);
  }
  const int channels[] = {band == "gsm" ? 975 : 512, band == "gsm" ? 62 : 700, band == "gsm" ? 124 : 885};
  for (int i = 0; i < 3; ++i) {
    const std::string name = "tx." + band + ".channel." + std::to_string(channels[i]);
    AddSearch(run, name, highest, loss, 0.2 * (i - 1));
    run.readings.push_back({"transmit", name + ".code", 129, "count"});
  }
  run.readings.push_back({"transmit", "tx." + band + ".phase.rms", 1.87, "degree", {}, 5});
  run.readings.push_back({"transmit", "tx." + band + ".phase.peak", 4.54, "degree", {}, 20});
}

}  // namespace

RunRecord GoldenRun(const BenchChange& change) {
  RunRecord run;
  run.identity.id = "019aa9a2-5c2e-7b11-8f3a-2b9d8c1e4f60";
  run.identity.station = "bench3";
  run.identity.bench = "real";
  run.identity.kind = "whole";
  run.identity.serial = kGolden;
  run.identity.beganMs = kFirstRunMs;
  run.end = RunEnd{kFirstRunMs + 30000, 30, "PASS", true, Ending::Verdict, "", 373, 19769, 3906};
  for (const char* const channel : {"0", "62", "124", "512", "700", "885", "975", "1023"}) {
    const std::string name = std::string("rx.") + channel;
    run.readings.push_back({"receive", name + ".level", 574 - std::round(10 * change.receiveLoss), "0.1 dB"});
    run.readings.push_back({"receive", name + ".compensation", -3, "half dB", -5, 5});
  }
  run.readings.push_back({"receive", "rx.gsm.gmagic", 184, "half dB", 171, 191});
  AddBand(run, "dcs", 0, 15, 30, change.dcsLoss);
  AddBand(run, "gsm", 5, 19, 33, change.gsmLoss);
  run.readings.push_back({"transmit", "tx.gsm.frequency_error", 30.4 + change.hertz, "hertz"});
  run.readings.push_back({"charger", "battery.full", 627 + change.batteryCounts, "count", 600, 660});
  run.readings.push_back({"charger", "battery.shutdown", 498 + change.batteryCounts, "count", 470, 530});
  run.readings.push_back({"", "road.seconds", 30, "second"});
  return run;
}

RecordedReading& ReadingIn(RunRecord& run, const std::string& name) {
  const auto hit = std::find_if(run.readings.begin(), run.readings.end(),
                                [&](const RecordedReading& reading) { return reading.name == name; });
  if (hit == run.readings.end()) throw std::logic_error("There is no reading " + name);
  return *hit;
}

}  // namespace orvane::test
