#pragma once

#include <span>
#include <string>
#include <string_view>

#include "bench/fixture.h"
#include "bench/scpi.h"

namespace orvane::bench {

/// The bench supply that stands in for the battery.
class Supply : public ScpiInstrument<Supply> {
 public:
  explicit Supply(Fixture& fixture) : fixture_(fixture) {}
  [[nodiscard]] static std::span<const Row> Rows();

 private:
  std::string Identify(std::string_view);
  std::string Reset(std::string_view);
  std::string SetVoltage(std::string_view argument);
  std::string SetLimit(std::string_view argument);
  std::string SetOutput(std::string_view argument);
  std::string TellVoltage(std::string_view);
  std::string TellLimit(std::string_view);
  std::string TellOutput(std::string_view);
  std::string MeasureVoltage(std::string_view);
  std::string MeasureCurrent(std::string_view);

  Fixture& fixture_;
  double limitAmps_ = kStartLimitAmps;
  static constexpr double kStartLimitAmps = 3;
};

/// The electronic load at the charger's output.
class Load : public ScpiInstrument<Load> {
 public:
  [[nodiscard]] static std::span<const Row> Rows();

 private:
  std::string Identify(std::string_view);
  std::string Reset(std::string_view);
  std::string SetCurrent(std::string_view argument);
  std::string SetResistance(std::string_view argument);
  std::string SetInput(std::string_view argument);
  std::string TellCurrent(std::string_view);
  std::string TellResistance(std::string_view);
  std::string TellInput(std::string_view);

  double amps_ = 0;
  double ohms_ = kStartOhms;
  bool inputOn_ = true;
  static constexpr double kStartOhms = 4000;
};

}  // namespace orvane::bench
