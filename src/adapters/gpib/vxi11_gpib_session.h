#pragma once

#include <optional>
#include <string>

#include "adapters/gpib/route_session.h"
#include "adapters/gpib/rpc_client.h"

namespace orvane {

/// Where a VXI-11 device is.
struct Vxi11Place {
  std::string host;
  /// Of the core channel; the host's portmapper is asked when none is given.
  std::optional<int> port;
  std::string device;
  /// Who answers there, in words: "the gateway", "the instrument".
  std::string server;
  int portmapperPort = 111;
};

/// VXI-11: END ends each message in both directions. A session has a connection and a link of its own, so that a
/// failure of one instrument lets go of nothing that another one's session holds.
///
/// The server is told the message's time-out and keeps it; the station waits a twentieth longer for it to say so. A
/// new link begins with a device clear: nothing that an earlier session left unread is ever taken for an answer.
class Vxi11GpibSession final : public RouteSession {
 public:
  /// @param route in the words of the command line
  Vxi11GpibSession(int primary, const std::string& route, Vxi11Place place);

 private:
  void Send(std::string_view text, const Deadline& deadline) override;
  std::string Receive(std::size_t size, const Deadline& deadline) override;
  void GoLocal(const Deadline& deadline) override;
  void HangUp() override { core_.Close(); }
  bool Lock(const Deadline& deadline) override;
  void LetGo(const Deadline& deadline) override;

  void Open(const Deadline& deadline);
  void Connect(const Deadline& deadline);
  [[nodiscard]] int AskPort(const Deadline& deadline) const;
  void CreateLink(const Deadline& deadline);
  /// device_clear or device_local. A server that knows no such thing has done it.
  void Order(std::uint32_t procedure, const Deadline& deadline);
  void Check(int error, const std::string& inVain, const Deadline& deadline) const;

  Vxi11Place place_;
  RpcClient core_;
  int link_ = 0;
  std::size_t longestPiece_ = 0;
  /// On this link.
  bool isCleared_ = false;
};

}  // namespace orvane
