#include "bench/supply.h"

#include <array>
#include <optional>

namespace orvane::bench {
namespace {

/// "ON", "1", "OFF", "0"; no value for anything else.
std::optional<bool> SwitchOf(std::string_view argument) {
  const std::string word = CapitalsOf(argument);
  if (word == "ON" || word == "1") return true;
  if (word == "OFF" || word == "0") return false;
  return std::nullopt;
}

}  // namespace

std::span<const Supply::Row> Supply::Rows() {
  using S = Supply;
  static constexpr std::array kRows{
      Row{"*IDN?", false, &S::Identify},
      Row{"*RST", false, &S::Reset},
      Row{"*CLS", false, &S::ClearErrors},
      Row{"*OPC?", false, &S::OperationComplete},
      Row{"SYSTem:ERRor?", false, &S::NextError},
      Row{"VOLTage", true, &S::SetVoltage},
      Row{"VOLTage?", false, &S::TellVoltage},
      Row{"CURRent", true, &S::SetLimit},
      Row{"CURRent?", false, &S::TellLimit},
      Row{"OUTPut", true, &S::SetOutput},
      Row{"OUTPut?", false, &S::TellOutput},
      Row{"MEASure?", false, &S::MeasureVoltage, true},
      Row{"MEASure:VOLTage?", false, &S::MeasureVoltage, true},
      Row{"MEASure:CURRent?", false, &S::MeasureCurrent, true},
  };
  return kRows;
}

std::string Supply::Identify(std::string_view) { return "ORVANE,VIRTUAL SUPPLY,0,1.0"; }

std::string Supply::Reset(std::string_view) {
  fixture_.Feed(false, 0);
  limitAmps_ = kStartLimitAmps;
  return {};
}

std::string Supply::SetVoltage(std::string_view argument) {
  constexpr double kHighestVolts = 20;
  double volts = fixture_.supplyVolts;
  Take(volts, argument, 0, kHighestVolts);
  fixture_.Feed(fixture_.supplyOn, volts);
  return {};
}

std::string Supply::SetLimit(std::string_view argument) {
  Take(limitAmps_, argument, 0, kStartLimitAmps);
  return {};
}

std::string Supply::SetOutput(std::string_view argument) {
  if (const auto on = SwitchOf(argument)) {
    fixture_.Feed(*on, fixture_.supplyVolts);
  } else {
    Refuse();
  }
  return {};
}

std::string Supply::TellVoltage(std::string_view) { return ReadingText(fixture_.supplyVolts); }
std::string Supply::TellLimit(std::string_view) { return ReadingText(limitAmps_); }
std::string Supply::TellOutput(std::string_view) { return fixture_.supplyOn ? "1" : "0"; }
std::string Supply::MeasureVoltage(std::string_view) {
  return ReadingText(fixture_.supplyOn ? fixture_.supplyVolts : 0);
}
std::string Supply::MeasureCurrent(std::string_view) {
  return ReadingText(fixture_.supplyOn ? fixture_.targetAmps : 0);
}

std::span<const Load::Row> Load::Rows() {
  using L = Load;
  static constexpr std::array kRows{
      Row{"*IDN?", false, &L::Identify},
      Row{"*RST", false, &L::Reset},
      Row{"*CLS", false, &L::ClearErrors},
      Row{"*OPC?", false, &L::OperationComplete},
      Row{"SYSTem:ERRor?", false, &L::NextError},
      Row{"CURRent", true, &L::SetCurrent},
      Row{"CURRent?", false, &L::TellCurrent},
      Row{"RESistance", true, &L::SetResistance},
      Row{"RESistance?", false, &L::TellResistance},
      Row{"INPut", true, &L::SetInput},
      Row{"INPut?", false, &L::TellInput},
  };
  return kRows;
}

std::string Load::Identify(std::string_view) { return "ORVANE,VIRTUAL LOAD,0,1.0"; }

std::string Load::Reset(std::string_view) {
  amps_ = 0;
  ohms_ = kStartOhms;
  inputOn_ = true;
  return {};
}

std::string Load::SetCurrent(std::string_view argument) {
  constexpr double kHighestAmps = 60;
  Take(amps_, argument, 0, kHighestAmps);
  return {};
}

std::string Load::SetResistance(std::string_view argument) {
  Take(ohms_, argument, 0, kStartOhms);
  return {};
}

std::string Load::SetInput(std::string_view argument) {
  if (const auto on = SwitchOf(argument)) {
    inputOn_ = *on;
  } else {
    Refuse();
  }
  return {};
}

std::string Load::TellCurrent(std::string_view) { return ReadingText(amps_); }
std::string Load::TellResistance(std::string_view) { return ReadingText(ohms_); }
std::string Load::TellInput(std::string_view) { return inputOn_ ? "1" : "0"; }

}  // namespace orvane::bench
