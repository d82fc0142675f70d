#include "bench/wires/gateway.h"

#include <netinet/in.h>
#include <rpc/pmap_clnt.h>

#include <stdexcept>

namespace orvane::bench {

Gateway::Gateway(Reactor& reactor, std::vector<GatewayDevice> devices, const std::string& place)
    : core_(std::move(devices)),
      coreServer_(reactor, {DEVICE_CORE, DEVICE_CORE_VERSION}, core_, place),
      abort_(core_, [this] { coreServer_.PutAgain(); }),
      abortServer_(reactor, {DEVICE_ASYNC, DEVICE_ASYNC_VERSION}, abort_, coreServer_.Place().Host() + ":0") {
  core_.SetAbortPort(abortServer_.Place().Port());
}

PortmapperEntry::PortmapperEntry(int port) {
  pmap_unset(DEVICE_CORE, DEVICE_CORE_VERSION);
  if (pmap_set(DEVICE_CORE, DEVICE_CORE_VERSION, IPPROTO_TCP, static_cast<u_short>(port)) == FALSE) {
    throw std::runtime_error("the portmapper takes no entry: is rpcbind running, and may this user make entries?");
  }
}

PortmapperEntry::~PortmapperEntry() { pmap_unset(DEVICE_CORE, DEVICE_CORE_VERSION); }

}  // namespace orvane::bench
