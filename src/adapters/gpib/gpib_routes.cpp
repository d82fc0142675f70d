#include "adapters/gpib/gpib_routes.h"

#include "adapters/gpib/adapter_session.h"
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

/// A host that has colons of its own stands in brackets, so that its port can be told.
std::string PlaceText(const std::string& host, std::optional<int> port) {
  return (host.find(':') == std::string::npos ? host : "[" + host + "]") + (port ? ":" + std::to_string(*port) : "");
}

/// The name that a gateway gives to the instrument at an address. Panels give a secondary address as it goes over the
/// bus, 96 to 126; its name there is 0 to 30. One that is none makes a name that no device has.
std::string GatewayDevice(const GpibAddress& address) {
  constexpr int kFirstSecondary = 96;
  std::string device = "gpib" + std::to_string(address.board) + "," + std::to_string(address.primary);
  if (address.secondary != 0) device += "," + std::to_string(address.secondary - kFirstSecondary);
  return device;
}

Vxi11Route DeviceOf(const GatewayRoute& gateway, const GpibAddress& address) {
  return {gateway.host, gateway.port, GatewayDevice(address)};
}

std::unique_ptr<RouteSession> Vxi11Session(int primary, const Vxi11Route& route, const char* server) {
  return std::make_unique<Vxi11GpibSession>(primary, RouteText(route),
                                            Vxi11Place{route.host, route.port, route.device, server});
}

std::unique_ptr<RouteSession> OpenByItself(const GpibAddress& address, const InstrumentRoute& route) {
  if (const auto* tcp = std::get_if<TcpRoute>(&route)) {
    return std::make_unique<TcpGpibSession>(address.primary, RouteText(route), tcp->host, tcp->port);
  }
  return Vxi11Session(address.primary, std::get<Vxi11Route>(route), "the instrument");
}

}  // namespace

std::string RouteText(const BusRoute& route) {
  return std::visit(Overloaded{
                        [](const NativeRoute&) { return std::string("native"); },
                        [](const PrologixTcpRoute& r) { return "prologix:" + PlaceText(r.host, r.port); },
                        [](const PrologixSerialRoute& r) { return "prologix:" + r.device; },
                        [](const GatewayRoute& r) { return "vxi11:" + PlaceText(r.host, r.port); },
                    },
                    route);
}

std::string RouteText(const InstrumentRoute& route) {
  return std::visit(Overloaded{
                        [](const TcpRoute& r) { return "tcp:" + PlaceText(r.host, r.port); },
                        [](const Vxi11Route& r) { return "vxi11:" + PlaceText(r.host, r.port) + "," + r.device; },
                    },
                    route);
}

RoutedGpibBus::RoutedGpibBus(GpibRoutes routes, const LongWaits* waits)
    : routes_(std::move(routes)), waits_(waits), native_(NativeGpib::kSystemsOwn, waits) {
  static constexpr const char* kPeer = "the adapter";
  if (const auto* tcp = std::get_if<PrologixTcpRoute>(&routes_.bus)) {
    adapter_ = std::make_shared<ControllerAdapter>(
        [route = *tcp](const Deadline& deadline) { return ConnectTcp(route.host, route.port, deadline, kPeer); });
  } else if (const auto* serial = std::get_if<PrologixSerialRoute>(&routes_.bus)) {
    adapter_ = std::make_shared<ControllerAdapter>(
        [route = *serial](const Deadline&) { return OpenSerialDevice(route.device, kPeer); });
  }
}

std::unique_ptr<GpibSession> RoutedGpibBus::Open(const GpibAddress& address) {
  auto session = RouteTo(address);
  if (!session) return native_.Open(address);
  session->TellWaitsTo(waits_);
  return session;
}

std::string RoutedGpibBus::RouteOf(const GpibAddress& address) const {
  if (const auto own = routes_.instruments.find(address.primary); own != routes_.instruments.end()) {
    return RouteText(own->second);
  }
  if (const auto* gateway = std::get_if<GatewayRoute>(&routes_.bus)) return RouteText(DeviceOf(*gateway, address));
  return RouteText(routes_.bus);
}

void RoutedGpibBus::LetGo() {
  if (adapter_) adapter_->LetGo();
}

std::unique_ptr<RouteSession> RoutedGpibBus::RouteTo(const GpibAddress& address) const {
  if (const auto own = routes_.instruments.find(address.primary); own != routes_.instruments.end()) {
    return OpenByItself(address, own->second);
  }
  if (adapter_) return std::make_unique<AdapterSession>(address, RouteText(routes_.bus), adapter_);
  if (const auto* gateway = std::get_if<GatewayRoute>(&routes_.bus)) {
    return Vxi11Session(address.primary, DeviceOf(*gateway, address), "the gateway");
  }
  return nullptr;
}

}  // namespace orvane
