#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>

#include "bench/wires/listener.h"
#include "bench/wires/reactor.h"
#include "bench/wires/record_reader.h"

namespace orvane::bench {

struct RpcCall {
  std::uint32_t procedure = 0;
  std::string arguments;
  int caller = 0;  ///< the connection that it came on; never used twice
  Reactor::Time arrived{0};
};

/// What becomes of a call.
struct RpcResult {
  std::string bytes;
};
struct RpcNoSuchProcedure {};
struct RpcBadArguments {};
/// Not yet: the call is put again when something has happened, and at that time.
struct RpcLater {
  Reactor::Time until;
};
using RpcOutcome = std::variant<RpcResult, RpcNoSuchProcedure, RpcBadArguments, RpcLater>;

/// What a program of remote procedures does.
class RpcProgram {
 public:
  RpcProgram() = default;
  RpcProgram(const RpcProgram&) = delete;
  RpcProgram& operator=(const RpcProgram&) = delete;
  virtual ~RpcProgram() = default;
  /// Procedure 0, which answers nothing, never comes here.
  virtual RpcOutcome Answer(const RpcCall& call) = 0;
  /// A connection has ended.
  virtual void Gone(int caller) = 0;
};

/// Remote procedure calls over TCP (RFC 5531): one program in one version, on a port of its own. Answers of a
/// connection come in the order of its calls.
class RpcServer {
 public:
  struct Identity {
    std::uint32_t number;
    std::uint32_t version;
  };

  /// @param place as that of a Listener.
  RpcServer(Reactor& reactor, Identity identity, RpcProgram& program, const std::string& place);
  RpcServer(const RpcServer&) = delete;
  RpcServer& operator=(const RpcServer&) = delete;
  ~RpcServer();

  [[nodiscard]] const Listener& Place() const { return listener_; }
  /// Something has happened that a call may have waited for.
  void PutAgain();

 private:
  static constexpr std::size_t kLongestMessage = 1U << 20U;

  struct Client {
    FileDescriptor socket;
    RecordReader records{kLongestMessage};
    std::optional<RpcCall> waiting;
    std::uint32_t waitingXid = 0;
    Reactor::Time waitingUntil{0};
  };

  void Accept();
  void Read(int caller);
  /// @return false when the client has to go: it sends no calls, or does not read.
  [[nodiscard]] bool Serve(int caller, Client& client);
  [[nodiscard]] bool Take(int caller, Client& client, const std::string& message);
  [[nodiscard]] bool Answer(Client& client, const RpcCall& call, std::uint32_t xid);
  void Drop(int caller);

  Reactor& reactor_;
  Identity identity_;
  RpcProgram& program_;
  Listener listener_;
  std::map<int, Client> clients_;
  int callers_ = 0;
};

}  // namespace orvane::bench
