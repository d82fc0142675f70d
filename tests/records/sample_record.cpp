#include "records/sample_record.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <random>

namespace orvane::test {
namespace {

constexpr std::int64_t kMinuteMs = 60'000;

RunIdentity IdentityOf(int number) {
  RunIdentity run{.id = IdOf(number),
                  .station = "line-3",
                  .bench = "virtual",
                  .benchSetup = "seed=7",
                  .program = "orvane 0.1.0",
                  .kind = "whole",
                  .serial = "SN-" + std::to_string(number),
                  .part = "P-100",
                  .operatorName = "Kim",
                  .tags = {{"line", "A"}, {"shift", "late"}},
                  .beganMs = kFirstBeganMs + number * kMinuteMs};
  return run;
}

RunEnd EndOf(const RunIdentity& run) {
  return {.endedMs = run.beganMs + 31'415,
          .seconds = 31.415,
          .verdict = "PASS",
          .complete = true,
          .ending = Ending::Verdict,
          .reason = "",
          .commands = 373,
          .bytesOut = 19769,
          .bytesIn = 3906};
}

/// Lines like those of a file of parameters or of a trace: words that come again and numbers that do not.
std::string LinesOf(std::mt19937& chance, std::size_t lines) {
  std::string text;
  for (std::size_t i = 0; i < lines; ++i) {
    text += "{\"at\":" + std::to_string(i * 817) + ",\"link\":\"target\",\"event\":\"out\",\"hex\":\"0214" +
            std::to_string(chance() % 100000) + "\"}\n";
  }
  return text;
}

std::string BytesFrom(std::mt19937& chance, std::size_t size) {
  std::string bytes(size, '\0');
  for (char& byte : bytes) byte = static_cast<char>(chance());
  return bytes;
}

void AddSearches(RunRecord& record, std::mt19937& chance) {
  double atS = 3.5;
  for (int level = 0; level < 42; ++level) {
    const std::string band = level < 21 ? "gsm" : "dcs";
    const std::string search = "tx." + band + ".level." + std::to_string(level % 21);
    const double target = 5.0 + 1.3 * level;
    double dbm = target - 4;
    for (int pass = 0; pass < 10; ++pass) {
      atS += 0.0417;
      dbm += (target - dbm) / 2 + static_cast<double>(chance() % 1000) / 1e5;
      record.passes.push_back({search, pass, static_cast<int>(chance() % 1024), dbm, 0.3, atS});
    }
    record.readings.push_back({"transmit", search + ".power", dbm, "dBm", target - 0.3, target + 0.3, atS});
    record.readings.push_back(
        {"transmit", search + ".dac", static_cast<double>(chance() % 1024), "count", 0, 1023, atS});
  }
}

}  // namespace

std::string IdOf(int number) {
  std::array<char, 37> id{};
  std::snprintf(id.data(), id.size(), "%08x-%04x-7%03x-8%03x-%012x", 0x019ab000U, 0U, 0U, 0U,
                static_cast<unsigned>(number));
  return id.data();
}

RunRecord TypicalRecord(int number) {
  std::mt19937 chance(static_cast<unsigned>(number));
  RunRecord record;
  record.identity = IdentityOf(number);
  record.end = EndOf(record.identity);
  for (const char* const step : {"receive", "transmitDCS", "transmitGSM", "save", "charger"}) {
    record.steps.push_back({step, static_cast<double>(record.steps.size()) * 6.1, 6.1, true, ""});
  }
  for (int channel = 0; channel < 26; ++channel) {
    const std::string name = "rx." + std::to_string(512 + channel * 15);
    record.readings.push_back(
        {"receive", name + ".level", -600.0 - static_cast<double>(chance() % 90), "0.1 dB", {}, {}, 0.1 * channel});
  }
  AddSearches(record, chance);
  record.boxes.push_back({"Orvane", "Is the cable on?", "Yes", 0.25, 1.75});
  std::mt19937 shared(1);
  for (const char* const role :
       {"cable_loss", "initial_value", "power_index", "ramp_table", "parameters.before", "tables.a", "tables.b"}) {
    record.documents.push_back({role, "text", LinesOf(shared, 60)});
  }
  record.documents.push_back({"eeprom.sent", "bytes", BytesFrom(chance, 4096)});
  record.documents.push_back({"flash.100", "bytes", BytesFrom(chance, 300)});
  record.documents.push_back({"panel", "json", LinesOf(shared, 200) + std::to_string(number)});
  record.documents.push_back({"parameters.after", "text", LinesOf(chance, 120)});
  record.documents.push_back({"trace", "trace", LinesOf(chance, 3000)});
  std::sort(record.documents.begin(), record.documents.end(),
            [](const auto& a, const auto& b) { return a.role < b.role; });
  return record;
}

RunRecord SmallRecord(int number) {
  RunRecord record;
  record.identity = IdentityOf(number);
  record.end = EndOf(record.identity);
  record.steps = {{"receive", 0, 0.6, true, ""}, {"transmitGSM", 0.6, 1.2, false, "Level 5 is 0.4 dB high."}};
  record.readings = {{"receive", "rx.512.level", -601.0 - number, "0.1 dB", {}, {}, 0.1},
                     {"receive", "rx.512.compensation", -6, "half dB", -5.0, 5.0, 0.2},
                     {"", "road.seconds", 31.415, "second", {}, {}, 31.4}};
  record.passes = {{"tx.gsm.level.5", 0, 512, 31.1, 0.3, 1.0}, {"tx.gsm.level.5", 1, 584, 32.0015, 0.3, 1.5}};
  record.boxes = {{"Orvane", "Is the cable on?", "Yes", 0.25, 1.75}, {"Orvane", "Ready.", "", 2.0, {}}};
  record.documents = {{"cable_loss", "text", "900 0.5\r\n1800 0.9\r\n"},
                      {"trace", "trace", std::string(4000, 'x') + std::to_string(number)}};
  return record;
}

}  // namespace orvane::test
