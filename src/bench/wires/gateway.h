#pragma once

#include "bench/wires/gateway_core.h"

namespace orvane::bench {

/// The bench's instruments behind a LAN gateway that speaks VXI-11.
class Gateway {
 public:
  /// @param place of the core channel, as that of a Listener; the abort channel takes a free port of that host.
  Gateway(Reactor& reactor, std::vector<GatewayDevice> devices, const std::string& place);

  /// "127.0.0.1:41004"
  [[nodiscard]] const std::string& Address() const { return coreServer_.Place().Address(); }
  [[nodiscard]] int Port() const { return coreServer_.Place().Port(); }

 private:
  GatewayCore core_;
  RpcServer coreServer_;
  GatewayAbort abort_;
  RpcServer abortServer_;
};

/// The entry of a gateway with this machine's portmapper, for clients that ask there; gone with its owner. It takes
/// the place of an entry that is there already: of a gateway that was killed, as a rule.
class PortmapperEntry {
 public:
  /// @throws std::runtime_error when the portmapper takes no entry.
  explicit PortmapperEntry(int port);
  PortmapperEntry(const PortmapperEntry&) = delete;
  PortmapperEntry& operator=(const PortmapperEntry&) = delete;
  ~PortmapperEntry();
};

}  // namespace orvane::bench
