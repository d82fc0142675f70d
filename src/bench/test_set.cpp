#include "bench/test_set.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace orvane::bench {
namespace {

constexpr std::uint64_t kNoiseStream = 2;
constexpr double kSingleBurstNoiseDb = 0.02;
constexpr double kFaintestDbm = -50;

/// A phase value as the set writes it: two decimals.
std::string Fixed(double value, int decimals) {
  std::array<char, 64> text{};
  const auto [end, fault] =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
  return {text.data(), end};
}

}  // namespace

TestSet::TestSet(Fixture& fixture, std::uint64_t seed) : fixture_(fixture), noise_(seed, kNoiseStream) { Generate(); }

std::string TestSet::Identify(std::string_view) { return "ORVANE,VIRTUAL TEST SET,0,1.0"; }

std::string TestSet::Reset(std::string_view) {
  settings_ = {};
  power_ = kNothing;
  phase_.clear();
  done_ = "NONE";
  Generate();
  return {};
}

/// A setting that changes nothing that could be measured here.
std::string TestSet::Accept(std::string_view) { return {}; }

std::string TestSet::SetBand(std::string_view argument) {
  const std::string band = CapitalsOf(argument);
  if (band == "EGSM" || band == "PGSM") {
    settings_.band = Band::kGsm;
  } else if (band == "DCS") {
    settings_.band = Band::kDcs;
  } else {
    Refuse();
  }
  return {};
}

std::string TestSet::SetRadioType(std::string_view argument) {
  const std::string type = CapitalsOf(argument);
  if (type == "'E-GSM'") {
    settings_.band = Band::kGsm;
  } else if (type == "'DCS1800'") {
    settings_.band = Band::kDcs;
  } else {
    Refuse();
  }
  return {};
}

void TestSet::TakeChannel(int& channel, std::string_view argument) {
  constexpr int kLastChannel = 1023;
  double number = channel;
  Take(number, argument, 0, kLastChannel);
  channel = static_cast<int>(std::lround(number));
  Generate();
}

void TestSet::TakeSwitch(bool& state, std::string_view argument) {
  const std::string word = CapitalsOf(argument);
  if (word == "ON" || word == "1") {
    state = true;
  } else if (word == "OFF" || word == "0") {
    state = false;
  } else {
    Refuse();
  }
}

std::string TestSet::SetAutoTune(std::string_view argument) {
  TakeSwitch(settings_.autoTune, argument);
  return {};
}

std::string TestSet::SetAnalyserChannel(std::string_view argument) {
  TakeChannel(settings_.analyserChannel, argument);
  return {};
}

std::string TestSet::SetAnalyserAndCell(std::string_view argument) {
  // The HP8922M has no switch between the two ways of tuning: its channel is the analyser's.
  settings_.autoTune = false;
  return SetAnalyserChannel(argument);
}

std::string TestSet::SetBroadcastChannel(std::string_view argument) {
  TakeChannel(settings_.broadcastChannel, argument);
  return {};
}

std::string TestSet::SetTrafficChannel(std::string_view argument) {
  TakeChannel(settings_.trafficChannel, argument);
  return {};
}

std::string TestSet::SetExpectedPower(std::string_view argument) {
  Take(settings_.expectedDbm, argument, -60, 60);
  return {};
}

std::string TestSet::SetMobileLevel(std::string_view argument) {
  Take(settings_.mobileLevel, argument, 0, 31);
  return {};
}

std::string TestSet::SetFunction(std::string_view argument) {
  const std::string function = CapitalsOf(argument);
  if (function != "CW" && function != "BCHTCH") {
    Refuse();
    return {};
  }
  settings_.cw = function == "CW";
  Generate();
  return {};
}

std::string TestSet::SetAmplitude(std::string_view argument) {
  Take(settings_.amplitudeDbm, argument, -127, -7);
  Generate();
  return {};
}

std::string TestSet::SetFrequency(std::string_view argument) {
  Take(settings_.cwMHz, argument, 100, 2700);
  Generate();
  return {};
}

std::string TestSet::SetCorrection(std::string_view argument) {
  Take(settings_.correctionDb, argument, -100, 100);
  Generate();
  return {};
}

std::string TestSet::SetContinuous(std::string_view argument) {
  TakeSwitch(settings_.continuous, argument);
  return {};
}

std::string TestSet::SetSamples(std::string_view argument) {
  Take(settings_.samples, argument, 1, 999);
  return {};
}

/// The level is meant for the far end of the cable, so the generator gives what the stated loss will take.
void TestSet::Generate() {
  const bool tuned = settings_.cw && settings_.cwMHz > 0;
  fixture_.generator = {tuned ? settings_.cwMHz : DownlinkMHz(settings_.broadcastChannel),
                        settings_.amplitudeDbm - settings_.correctionDb};
}

const Burst* TestSet::Received() const {
  const int channel = settings_.autoTune ? settings_.trafficChannel : settings_.analyserChannel;
  const bool tuned = fixture_.uplink && fixture_.uplink->arfcn == channel && BandOf(channel) == settings_.band;
  return tuned && fixture_.uplink->powerDbm > kFaintestDbm ? &*fixture_.uplink : nullptr;
}

double TestSet::Power() {
  const Burst* burst = Received();
  if (burst == nullptr) {
    return kNothing;
  }
  const double noise = noise_.Bell(kSingleBurstNoiseDb / std::sqrt(settings_.samples));
  return burst->powerDbm - fixture_.cableLossDb - settings_.correctionDb + noise;
}

std::string TestSet::StartPower(std::string_view) {
  power_ = Power();
  done_ = "TXP";
  return {};
}

std::string TestSet::FetchPower(std::string_view) {
  if (settings_.continuous) {
    power_ = Power();
  }
  return ReadingText(power_);
}

std::string TestSet::MeasurePower(std::string_view) { return ReadingText(Power()); }

std::string TestSet::StartPhase(std::string_view) {
  const Burst* burst = Received();
  if (burst == nullptr) {
    phase_.clear();
  } else {
    const double rms = burst->rmsPhaseDeg + noise_.Bell(0.1);
    const double peak = burst->peakPhaseDeg + noise_.Bell(0.3);
    const double frequency = burst->frequencyErrorHz + noise_.Bell(2);
    phase_ = "0," + Fixed(rms, 2) + "," + Fixed(peak, 2) + "," + Fixed(frequency, 1);
  }
  done_ = "PFER";
  return {};
}

std::string TestSet::FetchPhase(std::string_view) {
  // The first field tells whether the rest can be trusted.
  return phase_.empty() ? "1,9.91E+37,9.91E+37,9.91E+37" : phase_;
}

std::string TestSet::WhatIsDone(std::string_view) { return done_; }

}  // namespace orvane::bench
