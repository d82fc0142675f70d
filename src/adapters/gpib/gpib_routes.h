#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>

#include "adapters/gpib/native_gpib.h"
#include "adapters/gpib/route_session.h"
#include "platform/gpib.h"

namespace orvane {

class ControllerAdapter;

/// The system's NI-488.2 style library.
struct NativeRoute {};
/// A GPIB controller adapter that speaks the `++` commands, over TCP or on a serial device.
struct PrologixTcpRoute {
  std::string host;
  int port = 1234;
};
struct PrologixSerialRoute {
  std::string device;
};
/// A LAN/GPIB gateway; the instrument at address N is its device `gpib0,N`, behind a secondary address 96 + S its
/// device `gpib0,N,S`. Without a port the host's portmapper is asked.
struct GatewayRoute {
  std::string host;
  std::optional<int> port = {};
};
/// The way to every instrument that has none of its own.
using BusRoute = std::variant<NativeRoute, PrologixTcpRoute, PrologixSerialRoute, GatewayRoute>;

/// SCPI over a raw TCP socket.
struct TcpRoute {
  std::string host;
  int port = 0;
};
/// VXI-11. Without a port the host's portmapper is asked.
struct Vxi11Route {
  std::string host;
  std::optional<int> port = {};
  std::string device = "inst0";
};
/// The way to one instrument.
using InstrumentRoute = std::variant<TcpRoute, Vxi11Route>;

struct GpibRoutes {
  BusRoute bus = NativeRoute{};
  /// By primary address.
  std::map<int, InstrumentRoute> instruments;
};

/// "tcp:bench7:5025": the route in the words of the command line.
[[nodiscard]] std::string RouteText(const BusRoute& route);
[[nodiscard]] std::string RouteText(const InstrumentRoute& route);

/// The instruments of this machine, each on its route. No session may outlive it.
class RoutedGpibBus final : public GpibBus {
 public:
  /// @param waits whom the waits of its sessions are told; null for nobody.
  explicit RoutedGpibBus(GpibRoutes routes, const LongWaits* waits = nullptr);
  [[nodiscard]] std::unique_ptr<GpibSession> Open(const GpibAddress& address) override;
  [[nodiscard]] std::string RouteOf(const GpibAddress& address) const override;
  /// Leaves what the sessions share, and what serves one client alone, to somebody else. A message that needs it
  /// takes it back.
  void LetGo();

 private:
  /// Null where the way goes over this machine's own board.
  [[nodiscard]] std::unique_ptr<RouteSession> RouteTo(const GpibAddress& address) const;

  GpibRoutes routes_;
  const LongWaits* waits_;
  NativeGpib native_;
  /// What the sessions share when the bus is behind a `++` adapter.
  std::shared_ptr<ControllerAdapter> adapter_;
};

}  // namespace orvane
