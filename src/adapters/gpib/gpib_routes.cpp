#include "adapters/gpib/gpib_routes.h"

#include "adapters/gpib/tcp_gpib_session.h"
#include "adapters/gpib/vxi11_gpib_session.h"

namespace orvane {
namespace {

template <class... Visitors>
struct Overloaded : Visitors... {
  using Visitors::operator()...;
};
template <class... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

/// An instrument that no route of this build reaches: it fails as an absent one does.
class UnreachableSession final : public GpibSession {
 public:
  explicit UnreachableSession(std::string text) : text_(std::move(text)) {}
  void Write(std::string_view, TimePoint) override { throw GpibAbsent(text_); }
  std::string Read(std::size_t, TimePoint) override { throw GpibAbsent(text_); }
  void Local() override {}

 private:
  std::string text_;
};

std::unique_ptr<GpibSession> Unreachable(int primary, const std::string& route) {
  return std::make_unique<UnreachableSession>("Instrument at address " + std::to_string(primary) + ", route " +
                                              route + ": this route is not available in this build.");
}

std::string PortText(std::optional<int> port) { return port ? ":" + std::to_string(*port) : std::string(); }

/// The name that a gateway gives to the instrument at an address. Panels give a secondary address as it goes over the
/// bus, 96 to 126; its name there is 0 to 30.
std::string GatewayDevice(const GpibAddress& address) {
  constexpr int kFirstSecondary = 96;
  std::string device = "gpib" + std::to_string(address.board) + "," + std::to_string(address.primary);
  if (address.secondary >= kFirstSecondary) device += "," + std::to_string(address.secondary - kFirstSecondary);
  return device;
}

std::unique_ptr<GpibSession> Vxi11Session(int primary, const Vxi11Route& route, const char* server) {
  return std::make_unique<Vxi11GpibSession>(primary, RouteText(route),
                                            Vxi11Place{route.host, route.port, route.device, server});
}

}  // namespace

std::string RouteText(const BusRoute& route) {
  return std::visit(Overloaded{
                        [](const NativeRoute&) { return std::string("native"); },
                        [](const PrologixTcpRoute& r) { return "prologix:" + r.host + ":" + std::to_string(r.port); },
                        [](const PrologixSerialRoute& r) { return "prologix:" + r.device; },
                        [](const GatewayRoute& r) { return "vxi11:" + r.host + PortText(r.port); },
                    },
                    route);
}

std::string RouteText(const InstrumentRoute& route) {
  return std::visit(Overloaded{
                        [](const TcpRoute& r) { return "tcp:" + r.host + ":" + std::to_string(r.port); },
                        [](const Vxi11Route& r) { return "vxi11:" + r.host + PortText(r.port) + "," + r.device; },
                    },
                    route);
}

std::unique_ptr<GpibSession> RoutedGpibBus::Open(const GpibAddress& address) {
  const auto own = routes_.instruments.find(address.primary);
  if (own == routes_.instruments.end()) {
    if (std::holds_alternative<NativeRoute>(routes_.bus)) return native_.Open(address);
    if (const auto* gateway = std::get_if<GatewayRoute>(&routes_.bus)) {
      return Vxi11Session(address.primary, {gateway->host, gateway->port, GatewayDevice(address)}, "the gateway");
    }
    return Unreachable(address.primary, RouteText(routes_.bus));
  }
  if (const auto* tcp = std::get_if<TcpRoute>(&own->second)) {
    return std::make_unique<TcpGpibSession>(address.primary, tcp->host, tcp->port);
  }
  return Vxi11Session(address.primary, std::get<Vxi11Route>(own->second), "the instrument");
}

}  // namespace orvane
