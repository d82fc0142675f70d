#include "adapters/gpib/gpib_routes.h"

#include "adapters/gpib/tcp_gpib_session.h"

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

}  // namespace

std::string RouteText(const BusRoute& route) {
  return std::visit(Overloaded{
                        [](const NativeRoute&) { return std::string("native"); },
                        [](const PrologixTcpRoute& r) { return "prologix:" + r.host + ":" + std::to_string(r.port); },
                        [](const PrologixSerialRoute& r) { return "prologix:" + r.device; },
                        [](const GatewayRoute& r) { return "vxi11:" + r.host; },
                    },
                    route);
}

std::string RouteText(const InstrumentRoute& route) {
  return std::visit(Overloaded{
                        [](const TcpRoute& r) { return "tcp:" + r.host + ":" + std::to_string(r.port); },
                        [](const Vxi11Route& r) { return "vxi11:" + r.host + "," + r.device; },
                    },
                    route);
}

std::unique_ptr<GpibSession> RoutedGpibBus::Open(const GpibAddress& address) {
  const auto own = routes_.instruments.find(address.primary);
  if (own == routes_.instruments.end()) {
    if (std::holds_alternative<NativeRoute>(routes_.bus)) return native_.Open(address);
    return Unreachable(address.primary, RouteText(routes_.bus));
  }
  if (const auto* tcp = std::get_if<TcpRoute>(&own->second)) {
    return std::make_unique<TcpGpibSession>(address.primary, tcp->host, tcp->port);
  }
  return Unreachable(address.primary, RouteText(own->second));
}

}  // namespace orvane
