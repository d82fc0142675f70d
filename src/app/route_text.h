#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include "adapters/gpib/gpib_routes.h"

namespace orvane {

/// An option has a value that it cannot have. The text says what is wrong with it.
class OptionFault : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// `native`, `prologix:HOST[:PORT]`, `prologix:/dev/NAME`, `vxi11:HOST[:PORT]`. @throws OptionFault
[[nodiscard]] BusRoute ParseBusRoute(const std::string& text);

/// `ADDR=tcp:HOST:PORT`, `ADDR=vxi11:HOST[:PORT][,DEVICE]`, with a primary address 0..30. @throws OptionFault
[[nodiscard]] std::pair<int, InstrumentRoute> ParseInstrumentRoute(const std::string& text);

}  // namespace orvane
