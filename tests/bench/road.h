#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "bench/bench.h"
#include "bench/bytes_of.h"
#include "bench/radio.h"

namespace orvane::bench::test {

/// A unit on the bench, with the few commands that a power calibration sends.
class Road {
 public:
  explicit Road(std::uint64_t seed, std::vector<Fault> faults = {}) : bench(OptionsOf(seed, std::move(faults))) {
    for (const char* line :
         {"RFAN:CONT:AUTO OFF", "CALL:OPERATING:MODE TEST", "SYST:CORR:SGA -0.5", "SETUP:TXPOWER:CONTINUOUS OFF"}) {
      Tell(line);
    }
  }

  void Tell(const std::string& line) { EXPECT_TRUE(bench.testSet.Take(line)) << line; }
  std::string Ask(const std::string& line) {
    Tell(line);
    return bench.testSet.TakeReply().value_or("");
  }
  /// A command of the common form: item and value, low byte first. @return the values of its reply
  Bytes Command(std::uint8_t operation, int item, int value) {
    Bytes frame{0x02, 0x14, operation};
    std::uint8_t checksum = operation;
    const auto put = [&](int byte) {
      if (byte == 0x02 || byte == 0x10) {
        frame.push_back(0x10);
      }
      frame.push_back(static_cast<std::uint8_t>(byte));
    };
    for (const int byte : {item & 0xFF, 0, value & 0xFF, value >> 8}) {
      put(byte);
      checksum = static_cast<std::uint8_t>(checksum ^ byte);
    }
    put(checksum);
    frame.push_back(0x02);
    frame.resize(53);
    const std::vector<Transmission> sent = bench.target.Receive(frame);
    return sent.empty() ? Bytes{} : Unpadded(sent[0].bytes);
  }
  void Transmit(bool on) {
    (void)bench.target.Receive(CommandBytes(on ? "02 14 23 10 02 00 21 02" : "02 14 23 00 00 23 02"));
  }
  void Tune(Band band, int arfcn, int samples) {
    Tell(band == Band::kGsm ? "CALL:CELL:BAND EGSM" : "CALL:CELL:BAND DCS");
    Tell("RFAN:MAN:CHAN:SELECTED " + std::to_string(arfcn));
    Tell("SETUP:TXPOWER:COUNT:SNUMBER " + std::to_string(samples));
    (void)Command(48, 2, arfcn);
  }
  double PowerAt(int dac) {
    (void)Command(54, 4, dac);
    Tell("INITIATE:TXPOWER");
    return std::stod(Ask("FETC:TXP:POW?"));
  }

  static BenchOptions OptionsOf(std::uint64_t seed, std::vector<Fault> faults) {
    BenchOptions options;
    options.seed = seed;
    options.faults = std::move(faults);
    return options;
  }

  Bench bench;
};

}  // namespace orvane::bench::test
