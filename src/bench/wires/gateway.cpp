#include "bench/wires/gateway.h"

#include <netconfig.h>
#include <netinet/in.h>
#include <rpc/pmap_clnt.h>
#include <rpc/rpc.h>

#include <memory>
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
  sockaddr_in place{};
  place.sin_family = AF_INET;
  place.sin_port = htons(static_cast<std::uint16_t>(port));
  const netbuf address{sizeof place, sizeof place, &place};
  const std::unique_ptr<netconfig, void (*)(netconfig*)> tcp(::getnetconfigent("tcp"), &::freenetconfigent);
  ::pmap_unset(DEVICE_CORE, DEVICE_CORE_VERSION);
  // pmap_set would do the same and leaks the address that it makes.
  if (tcp == nullptr || ::rpcb_set(DEVICE_CORE, DEVICE_CORE_VERSION, tcp.get(), &address) == FALSE) {
    throw std::runtime_error("the portmapper takes no entry: is rpcbind running, and may this user make entries?");
  }
}

PortmapperEntry::~PortmapperEntry() { ::pmap_unset(DEVICE_CORE, DEVICE_CORE_VERSION); }

}  // namespace orvane::bench
