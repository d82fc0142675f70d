#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "bench/instrument_line.h"
#include "bench/wires/rpc_server.h"
#include "vxi11/vxi11_codes.h"
#include "vxi11/xdr_message.h"

namespace orvane::bench {

/// An instrument behind the gateway, under one name or several.
struct GatewayDevice {
  std::vector<std::string> names;
  InstrumentLine& instrument;
  std::string output = {};  ///< of the instrument, not yet read
  Device_Link lockedBy = 0;
};

/// The core channel of a LAN gateway: links to the instruments, and what goes over them.
class GatewayCore final : public RpcProgram {
 public:
  explicit GatewayCore(std::vector<GatewayDevice> devices) : devices_(std::move(devices)) {}

  /// Told to those who make a link: where the abort channel is.
  void SetAbortPort(int port) { abortPort_ = static_cast<u_short>(port); }
  /// The operation that this link waits in ends with an error. @return whether there is such a link.
  bool Abort(Device_Link link);

  RpcOutcome Answer(const RpcCall& call) override;
  void Gone(int caller) override;

 private:
  struct Link {
    int caller;
    GatewayDevice* device;
    std::string input = {};  ///< of a message that has not ended yet
    bool waits = false;
    bool aborted = false;
  };
  template <class Reply>
  using Answered = std::variant<Reply, RpcLater>;
  struct ProcedureRow;

  template <auto take, auto put, auto run>
  static RpcOutcome Serve(GatewayCore& core, const RpcCall& call);
  template <int error>
  static RpcOutcome Refuse(GatewayCore& core, const RpcCall& call);
  static RpcOutcome RefuseCommand(GatewayCore& core, const RpcCall& call);
  template <class Reply>
  std::optional<Answered<Reply>> Obstacle(const RpcCall& call, Device_Link link, Device_Flags flags,
                                          unsigned lockTimeOutMs);

  Answered<Create_LinkResp> CreateLink(const RpcCall& call, const Create_LinkParms& wanted);
  Answered<Device_Error> DestroyLink(const RpcCall& call, const Device_Link& link);
  Answered<Device_WriteResp> Write(const RpcCall& call, const Device_WriteParms& wanted);
  Answered<Device_ReadResp> Read(const RpcCall& call, const Device_ReadParms& wanted);
  Answered<Device_ReadStbResp> ReadStatus(const RpcCall& call, const Device_GenericParms& wanted);
  Answered<Device_Error> Clear(const RpcCall& call, const Device_GenericParms& wanted);
  Answered<Device_Error> RemoteOrLocal(const RpcCall& call, const Device_GenericParms& wanted);
  Answered<Device_Error> Lock(const RpcCall& call, const Device_LockParms& wanted);
  Answered<Device_Error> Unlock(const RpcCall& call, const Device_Link& link);
  void Forget(Device_Link link);
  [[nodiscard]] bool Hand(GatewayDevice& device, const std::string& message);

  std::vector<GatewayDevice> devices_;
  std::map<Device_Link, Link> links_;
  Device_Link lastLink_ = 0;
  std::string read_;  ///< what the answer under way points to
  u_short abortPort_ = 0;
};

/// The abort channel beside it.
class GatewayAbort final : public RpcProgram {
 public:
  /// @param aborted called when an operation may have ended.
  GatewayAbort(GatewayCore& core, std::function<void()> aborted) : core_(core), aborted_(std::move(aborted)) {}
  RpcOutcome Answer(const RpcCall& call) override;
  void Gone(int) override {}

 private:
  GatewayCore& core_;
  std::function<void()> aborted_;
};

}  // namespace orvane::bench
