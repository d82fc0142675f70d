#include "bench/supply.h"

#include <array>

namespace orvane::bench {

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
  const std::string word = CapitalsOf(argument);
  if (word == "ON" || word == "1") {
    fixture_.Feed(true, fixture_.supplyVolts);
  } else if (word == "OFF" || word == "0") {
    fixture_.Feed(false, fixture_.supplyVolts);
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
  };
  return kRows;
}

std::string Load::Identify(std::string_view) { return "ORVANE,VIRTUAL LOAD,0,1.0"; }

std::string Load::Reset(std::string_view) {
  amps_ = 0;
  ohms_ = kStartOhms;
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

std::string Load::TellCurrent(std::string_view) { return ReadingText(amps_); }
std::string Load::TellResistance(std::string_view) { return ReadingText(ohms_); }

}  // namespace orvane::bench
