#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace orvane::test {

/// 32-bit numbers as they stand on the wire, most significant byte first.
using Words = std::vector<std::uint32_t>;
[[nodiscard]] std::string BytesOf(const Words& words);

/// One connection to the scripted gateway.
class GatewayConnection {
 public:
  explicit GatewayConnection(int socket) : socket_(socket) {}

  /// The next call without its mark, as words; no value when the client has hung up.
  [[nodiscard]] std::optional<Words> NextCall();
  /// A reply to the last call: an accepted one, with this result.
  [[nodiscard]] std::string Reply(const Words& result, const std::string& data = {}) const;
  /// A reply to the last call with this header behind its number, and nothing else.
  [[nodiscard]] std::string ReplyHeader(const Words& header) const;
  void Send(const std::string& bytes) const;
  void Answer(const Words& result, const std::string& data = {}) const { Send(Reply(result, data)); }
  /// Byte by byte, with a pause before each.
  void Dribble(const std::string& bytes, std::chrono::milliseconds pause) const;
  void AwaitHangUp() const;

 private:
  [[nodiscard]] bool ReceiveWhole(char* place, std::size_t count) const;

  int socket_;
  std::uint32_t xid_ = 0;
};

/// A server on the loopback that does what its script says, for each connection in turn, in a thread of its own that
/// never outlives five seconds of silence. It knows no codec: its bytes are typed from the documents of the protocol.
class ScriptedGateway {
 public:
  using Script = std::function<void(GatewayConnection&)>;
  explicit ScriptedGateway(std::vector<Script> scripts);
  ScriptedGateway(const ScriptedGateway&) = delete;
  ScriptedGateway& operator=(const ScriptedGateway&) = delete;
  ~ScriptedGateway() { Join(); }

  [[nodiscard]] int Port() const { return port_; }
  /// Until all scripts have been played.
  void Join();

 private:
  int listener_ = -1;
  int port_ = 0;
  std::thread thread_;
};

}  // namespace orvane::test
