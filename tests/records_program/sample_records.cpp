#include "records_program/sample_records.h"

#include <cmath>

#include "records/wire_log.h"

namespace orvane::test {
namespace {

constexpr std::int64_t kDayMs = 24L * 60 * 60 * 1000;
/// 2026-11-22T03:04:05.678Z.
constexpr std::int64_t kBeganMs = 1795316645678;

double Rounded(double value) { return std::round(value * 10000) / 10000; }

std::string IdOfNumber(int number) {
  const std::string digits = std::to_string(100000000000 + number);
  return "019aa9a2-" + digits.substr(0, 4) + "-7000-8000-" + digits;
}

/// A search that comes nearer by halves, and what is read of it at its end.
void AddSearch(RunRecord& record, const std::string& step, const std::string& name, double targetDbm, int dac,
               double& atS) {
  double error = name.size() % 2 == 0 ? 3.1 : -2.3;
  int position = 0;
  for (; std::abs(error) > 0.2; error *= -0.37, ++position) {
    atS += 0.02;
    record.passes.push_back(
        {name, position, dac + static_cast<int>(error * 12), Rounded(targetDbm + error), 0.25, atS});
  }
  atS += 0.02;
  record.passes.push_back({name, position, dac, Rounded(targetDbm + error), 0.25, atS});
  record.readings.push_back({step, name + ".power", Rounded(targetDbm + error), "dBm", Rounded(targetDbm - 0.25),
                             Rounded(targetDbm + 0.25), atS});
  record.readings.push_back({step, name + ".dac", static_cast<double>(dac), "count", 0.0, 1023.0, atS});
}

void AddReceiver(RunRecord& record, double& atS) {
  for (int arfcn = 975, i = 0; i<61; ++i, arfcn = arfcn + 3> 1023 ? 1 : arfcn + 3) {
    if (i % 10 == 0) {
      record.readings.push_back(
          {"receive", "rx." + std::to_string(arfcn) + ".level", -580.0 + i % 7, "0.1 dB", {}, {}, atS += 0.05});
    }
    record.readings.push_back({"receive", "rx." + std::to_string(arfcn) + ".compensation",
                               std::round(-3 + 5.0 * i / 60), "half dB", -5.0, 5.0, atS});
  }
  for (int arfcn = 512; arfcn <= 885; arfcn += 62) {
    record.readings.push_back(
        {"receive", "rx." + std::to_string(arfcn) + ".level", -578.0, "0.1 dB", {}, {}, atS += 0.05});
    record.readings.push_back({"receive", "rx." + std::to_string(arfcn) + ".compensation",
                               std::round(2 - (arfcn - 512) / 120.0), "half dB", -5.0, 5.0, atS});
  }
  record.readings.push_back({"receive", "rx.gsm.gmagic", 181, "half dB", 171.0, 191.0, atS});
  record.readings.push_back({"receive", "rx.dcs.gmagic", 184, "half dB", 171.0, 191.0, atS});
}

void AddBand(RunRecord& record, const std::string& step, const std::string& band, int firstLevel, int lastLevel,
             const std::vector<int>& channels, double& atS) {
  const std::string prefix = "tx." + band;
  for (int level = lastLevel; level >= firstLevel; --level) {
    AddSearch(record, step, prefix + ".level." + std::to_string(level),
              42.0 - 2.0 * level + (band == "dcs" ? -13 : 0), 60 + (lastLevel - level) * 41, atS);
  }
  for (const int channel : channels) {
    const std::string name = prefix + ".channel." + std::to_string(channel);
    AddSearch(record, step, name, band == "dcs" ? 29 : 32, 590 + channel % 17, atS);
    record.readings.push_back({step, name + ".code", 124.0 + channel % 9, "count", {}, {}, atS});
  }
  record.readings.push_back({step, prefix + ".phase.rms", 1.87, "degree", 0.0, 5.0, atS += 0.1});
  record.readings.push_back({step, prefix + ".phase.peak", 5.2, "degree", 0.0, 20.0, atS});
  record.readings.push_back({step, prefix + ".frequency_error", -12.5, "hertz", {}, {}, atS});
}

std::string SmallTrace() {
  WireLog log;
  log.Note(TimePoint{0}, "COM1", WireEvent::Open, "115200,n,8,1");
  log.Note(TimePoint{1000}, "COM1", WireEvent::Out, "\x02\x14");
  return log.Content();
}

void AddSmallRunsContent(RunRecord& record) {
  record.steps = {{"receive", 0.5, 1.25, true, ""},
                  {"transmitGSM", 1.75, 0.5, false, "level 5 is <outside> & \"far\""}};
  record.readings = {{"receive", "rx.975.level", -580, "0.1 dB", {}, {}, 0.75},
                     {"receive", "rx.975.compensation", -3, "half dB", -5.0, 5.0, 0.75},
                     {"transmitGSM", "tx.gsm.level.5.power", 30.5015, "dBm", 31.75, 32.25, 2.0},
                     {"transmitGSM", "tx.gsm.level.5.dac", 584, "count", 0.0, 1023.0, 2.0},
                     {"", "road.seconds", 2.25, "second", {}, {}, 2.25}};
  record.passes = {{"tx.gsm.level.5", 0, 560, 29.25, 0.25, 1.875}, {"tx.gsm.level.5", 1, 584, 30.5015, 0.25, 2.0}};
  record.boxes = {{"ORVANE", "Level 5 fails.\r\nGo on?", "Yes", 2.0, 2.125}, {"Warning", "<b>&</b>", "", 2.25, {}}};
  record.documents = {{"cable_loss", "text", "0.5\r\n0.75\r\n"},
                      {"eeprom.sent", "bytes", std::string("\x00\xff\x10", 3)},
                      {"trace", "trace", SmallTrace()}};
}

}  // namespace

RunRecord SmallRun() {
  RunRecord record;
  record.identity = {"019aa9a2-5c2e-7b11-8f3a-2b9d8c1e4f60",
                     "bench3",
                     "virtual",
                     "seed=7",
                     "orvane 0.1.0",
                     "whole",
                     "=K7-0001",
                     "단말기",
                     "Kim \x1b[31m",
                     {{"line", "A"}, {"lot", "7, \"b\""}},
                     kBeganMs};
  record.end =
      RunEnd{kBeganMs + 2250, 2.25, "FAIL", false, Ending::Verdict, "level 5 is <outside> & \"far\"", 12, 636, 108};
  AddSmallRunsContent(record);
  return record;
}

RunRecord LaterPass() {
  RunRecord record = SmallRun();
  record.identity.id = "019aa9a2-6000-7b11-8f3a-000000000001";
  record.identity.beganMs += kDayMs;
  record.identity.serial = "K7-0002";
  record.end = RunEnd{record.identity.beganMs + 2000, 2, "PASS", true, Ending::Verdict, "", 373, 19769, 3906};
  record.steps = {{"receive", 0, 0.75, true, ""}, {"save", 0.75, 1.25, true, ""}};
  record.readings.clear();
  record.passes.clear();
  record.boxes.clear();
  return record;
}

RunRecord WholeRoad(int number) {
  RunRecord record;
  record.identity = {IdOfNumber(number),
                     "bench" + std::to_string(1 + number % 3),
                     "real",
                     "",
                     "orvane 0.1.0",
                     "whole",
                     "K7-" + std::to_string(10000 + number),
                     "HX-220",
                     "Kim",
                     {{"line", "A"}},
                     kBeganMs + number * 60'000L};
  double atS = 0.1;
  AddReceiver(record, atS);
  const double received = atS;
  AddBand(record, "transmitDCS", "dcs", 0, 15, {512, 577, 643, 700, 760, 820, 885}, atS);
  const double dcs = atS;
  AddBand(record, "transmitGSM", "gsm", 5, 19, {975, 1000, 1, 30, 62, 93, 124}, atS);
  const double gsm = atS;
  record.readings.push_back({"charger", "battery.full", 842, "count", 820.0, 870.0, gsm + 1});
  record.readings.push_back({"charger", "battery.shutdown", 618, "count", 600.0, 650.0, gsm + 1});
  record.readings.push_back({"", "road.seconds", gsm + 1.1, "second", {}, {}, gsm + 1.1});
  record.readings.push_back({"", "road.wire_seconds", 1.7226, "second", {}, {}, gsm + 1.1});
  record.steps = {{"receive", 0, received, true, ""},
                  {"transmitDCS", received, dcs - received, true, ""},
                  {"transmitGSM", dcs, gsm - dcs, true, ""},
                  {"save", gsm, 0.6, true, ""},
                  {"charger", gsm + 0.6, 0.5, true, ""}};
  record.boxes = {{"ORVANE", "Connect the battery.", "OK", gsm + 0.6, gsm + 0.7}};
  record.documents = {{"cable_loss", "text", "0.5\r\n0.75\r\n"}, {"eeprom.sent", "bytes", std::string(3714, '\x3e')}};
  record.end = RunEnd{record.identity.beganMs + static_cast<std::int64_t>((gsm + 1.1) * 1000),
                      Rounded(gsm + 1.1),
                      "PASS",
                      true,
                      Ending::Verdict,
                      "",
                      373,
                      19769,
                      3906};
  return record;
}

}  // namespace orvane::test
