#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "bench/fixture.h"
#include "bench/random.h"
#include "bench/scpi.h"

namespace orvane::bench {

/// The radio test set: it generates the downlink and measures the uplink, and understands the lines of the HP8922M
/// and of the HP8960 side by side.
class TestSet : public ScpiInstrument<TestSet> {
 public:
  TestSet(Fixture& fixture, std::uint64_t seed);

  /// What is measured when there is no burst to measure.
  static constexpr double kNothing = 9.91E+37;

  [[nodiscard]] static std::span<const Row> Rows();

 private:
  std::string Identify(std::string_view);
  std::string Reset(std::string_view);
  std::string SetBand(std::string_view argument);
  std::string SetRadioType(std::string_view argument);
  std::string Accept(std::string_view);

  std::string SetAutoTune(std::string_view argument);
  std::string SetAnalyserChannel(std::string_view argument);
  std::string SetAnalyserAndCell(std::string_view argument);
  std::string SetBroadcastChannel(std::string_view argument);
  std::string SetTrafficChannel(std::string_view argument);
  std::string SetExpectedPower(std::string_view argument);
  std::string SetMobileLevel(std::string_view argument);

  std::string SetFunction(std::string_view argument);
  std::string SetAmplitude(std::string_view argument);
  std::string SetFrequency(std::string_view argument);
  std::string SetCorrection(std::string_view argument);

  std::string SetContinuous(std::string_view argument);
  std::string SetSamples(std::string_view argument);
  std::string StartPower(std::string_view);
  std::string FetchPower(std::string_view);
  std::string MeasurePower(std::string_view);
  std::string StartPhase(std::string_view);
  std::string FetchPhase(std::string_view);
  std::string WhatIsDone(std::string_view);

  void TakeChannel(int& channel, std::string_view argument);
  void TakeSwitch(bool& state, std::string_view argument);
  void Generate();
  [[nodiscard]] const Burst* Received() const;
  [[nodiscard]] double Power();

  struct Settings {
    Band band = Band::kGsm;
    bool autoTune = true;  ///< the analyser follows the traffic channel
    int analyserChannel = 30;
    int broadcastChannel = 20;
    int trafficChannel = 30;
    double expectedDbm = 0;
    double mobileLevel = 15;
    bool cw = false;
    double cwMHz = 0;
    double amplitudeDbm = -85;
    double correctionDb = 0;  ///< gain of the cable as the user states it; a loss is negative
    bool continuous = true;
    double samples = 1;
  };

  Fixture& fixture_;
  Random noise_;
  Settings settings_;
  double power_ = kNothing;
  std::string phase_;
  std::string done_ = "NONE";
};

}  // namespace orvane::bench
