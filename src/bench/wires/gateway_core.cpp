#include "bench/wires/gateway_core.h"

#include <algorithm>
#include <array>

namespace orvane::bench {
namespace {

using namespace vxi11;

constexpr u_int kMaxReceiveSize = 4096;
constexpr std::size_t kLongestMessage = 65536;
constexpr std::size_t kMostLinks = 256;
/// IEEE 488.2: the output queue holds something.
constexpr unsigned char kMessageAvailable = 0x10;

Reactor::Time Ms(unsigned ms) { return std::chrono::milliseconds(ms); }

template <class Reply>
Reply Refused(Error error) {
  Reply reply{};
  reply.error = error;
  return reply;
}

}  // namespace

struct GatewayCore::ProcedureRow {
  std::uint32_t number;
  RpcOutcome (*serve)(GatewayCore& core, const RpcCall& call);
};

/// A procedure as a row has it: its parameters are read, it is run, its result is written.
template <auto take, auto put, auto run>
RpcOutcome GatewayCore::Serve(GatewayCore& core, const RpcCall& call) {
  auto parameters = XdrReader(call.arguments).Take(take);
  if (!parameters) return RpcBadArguments{};
  const auto answered = (core.*run)(call, **parameters);
  if (const auto* later = std::get_if<RpcLater>(&answered)) return *later;
  return RpcResult{XdrWriter().Put(put, std::get<0>(answered)).Bytes()};
}

/// A procedure that this gateway does not carry out, whatever it is asked.
template <int error>
RpcOutcome GatewayCore::Refuse(GatewayCore&, const RpcCall&) {
  return RpcResult{XdrWriter().Put(&xdr_Device_Error, Device_Error{error}).Bytes()};
}

RpcOutcome GatewayCore::Answer(const RpcCall& call) {
  using Core = GatewayCore;
  static constexpr std::array kRows{
      ProcedureRow{CREATE_LINK, &Serve<&xdr_Create_LinkParms, &xdr_Create_LinkResp, &Core::CreateLink>},
      ProcedureRow{DEVICE_WRITE, &Serve<&xdr_Device_WriteParms, &xdr_Device_WriteResp, &Core::Write>},
      ProcedureRow{DEVICE_READ, &Serve<&xdr_Device_ReadParms, &xdr_Device_ReadResp, &Core::Read>},
      ProcedureRow{DEVICE_READSTB, &Serve<&xdr_Device_GenericParms, &xdr_Device_ReadStbResp, &Core::ReadStatus>},
      ProcedureRow{DEVICE_CLEAR, &Serve<&xdr_Device_GenericParms, &xdr_Device_Error, &Core::Clear>},
      ProcedureRow{DEVICE_REMOTE, &Serve<&xdr_Device_GenericParms, &xdr_Device_Error, &Core::RemoteOrLocal>},
      ProcedureRow{DEVICE_LOCAL, &Serve<&xdr_Device_GenericParms, &xdr_Device_Error, &Core::RemoteOrLocal>},
      ProcedureRow{DEVICE_LOCK, &Serve<&xdr_Device_LockParms, &xdr_Device_Error, &Core::Lock>},
      ProcedureRow{DEVICE_UNLOCK, &Serve<&xdr_Device_Link, &xdr_Device_Error, &Core::Unlock>},
      ProcedureRow{DESTROY_LINK, &Serve<&xdr_Device_Link, &xdr_Device_Error, &Core::DestroyLink>},
      // The bench's instruments know no trigger and request no service.
      ProcedureRow{DEVICE_TRIGGER, &Refuse<kNotSupported>},
      ProcedureRow{DEVICE_ENABLE_SRQ, &Refuse<kNotSupported>},
      ProcedureRow{DEVICE_DOCMD, &RefuseCommand},
      ProcedureRow{CREATE_INTR_CHAN, &Refuse<kNotSupported>},
      ProcedureRow{DESTROY_INTR_CHAN, &Refuse<kNoChannel>},
  };
  for (const ProcedureRow& row : kRows) {
    if (row.number == call.procedure) return row.serve(*this, call);
  }
  return RpcNoSuchProcedure{};
}

RpcOutcome GatewayCore::RefuseCommand(GatewayCore&, const RpcCall&) {
  return RpcResult{XdrWriter().Put(&xdr_Device_DocmdResp, Refused<Device_DocmdResp>(kNotSupported)).Bytes()};
}

/// What keeps an operation from its device: an error, or a lock that may still be waited for.
template <class Reply>
std::optional<GatewayCore::Answered<Reply>> GatewayCore::Obstacle(const RpcCall& call, Device_Link link,
                                                                  Device_Flags flags, unsigned lockTimeOutMs) {
  const auto found = links_.find(link);
  if (found == links_.end()) return Refused<Reply>(kInvalidLink);
  Link& asking = found->second;
  asking.waits = false;
  if (std::exchange(asking.aborted, false)) return Refused<Reply>(kAborted);
  if (asking.device->lockedBy == 0 || asking.device->lockedBy == link) return std::nullopt;
  const Reactor::Time until = call.arrived + Ms(lockTimeOutMs);
  if ((flags & kWaitForLock) == 0 || Reactor::Now() >= until) return Refused<Reply>(kLockedByAnother);
  asking.waits = true;
  return RpcLater{until};
}

GatewayCore::Answered<Create_LinkResp> GatewayCore::CreateLink(const RpcCall& call, const Create_LinkParms& wanted) {
  const auto device = std::find_if(devices_.begin(), devices_.end(), [&](const GatewayDevice& candidate) {
    return std::find(candidate.names.begin(), candidate.names.end(), wanted.device) != candidate.names.end();
  });
  if (device == devices_.end() || device->instrument.Absent()) return Refused<Create_LinkResp>(kNotAccessible);
  if (links_.size() >= kMostLinks) return Refused<Create_LinkResp>(kOutOfResources);
  if (wanted.lockDevice != FALSE && device->lockedBy != 0) {
    const Reactor::Time until = call.arrived + Ms(wanted.lock_timeout);
    if (Reactor::Now() >= until) return Refused<Create_LinkResp>(kLockedByAnother);
    return RpcLater{until};
  }
  links_.emplace(++lastLink_, Link{call.caller, &*device});
  if (wanted.lockDevice != FALSE) device->lockedBy = lastLink_;
  return Create_LinkResp{kNoError, lastLink_, abortPort_, kMaxReceiveSize};
}

void GatewayCore::Forget(Device_Link link) {
  GatewayDevice& device = *links_.at(link).device;
  if (device.lockedBy == link) device.lockedBy = 0;
  links_.erase(link);
}

GatewayCore::Answered<Device_Error> GatewayCore::DestroyLink(const RpcCall&, const Device_Link& link) {
  if (!links_.contains(link)) return Device_Error{kInvalidLink};
  Forget(link);
  return Device_Error{kNoError};
}

void GatewayCore::Gone(int caller) {
  std::vector<Device_Link> orphans;
  for (const auto& [number, link] : links_) {
    if (link.caller == caller) orphans.push_back(number);
  }
  for (const Device_Link orphan : orphans) Forget(orphan);
}

GatewayCore::Answered<Device_WriteResp> GatewayCore::Write(const RpcCall& call, const Device_WriteParms& wanted) {
  if (const auto obstacle = Obstacle<Device_WriteResp>(call, wanted.lid, wanted.flags, wanted.lock_timeout)) {
    return *obstacle;
  }
  Link& link = links_.at(wanted.lid);
  link.input.append(wanted.data.data_val, wanted.data.data_len);
  if (link.input.size() > kLongestMessage) {
    link.input.clear();
    return Device_WriteResp{kOutOfResources, 0};
  }
  if ((wanted.flags & kEnd) != 0 && !Hand(*link.device, std::exchange(link.input, {}))) {
    return Device_WriteResp{kIoError, 0};
  }
  return Device_WriteResp{kNoError, wanted.data.data_len};
}

/// A whole message to its instrument: a line, or several with line feeds between them.
bool GatewayCore::Hand(GatewayDevice& device, const std::string& message) {
  for (std::size_t start = 0; start < message.size();) {
    const std::size_t end = std::min(message.find('\n', start), message.size());
    if (!std::exchange(device.output, {}).empty()) device.instrument.Report(-410, "Query INTERRUPTED");
    if (!device.instrument.Take(message.substr(start, end - start))) return false;
    device.output = device.instrument.TakeReply().value_or("");
    start = end + 1;
  }
  return true;
}

GatewayCore::Answered<Device_ReadResp> GatewayCore::Read(const RpcCall& call, const Device_ReadParms& wanted) {
  if (const auto obstacle = Obstacle<Device_ReadResp>(call, wanted.lid, wanted.flags, wanted.lock_timeout)) {
    return *obstacle;
  }
  Link& link = links_.at(wanted.lid);
  std::string& output = link.device->output;
  if (output.empty()) {
    if (link.device->instrument.Absent()) return Refused<Device_ReadResp>(kIoError);
    // Both time-outs count from the call: whoever waited for the lock has waited for the answer as well.
    const Reactor::Time until = call.arrived + Ms(wanted.io_timeout);
    if (Reactor::Now() >= until) return Refused<Device_ReadResp>(kIoTimeOut);
    link.waits = true;
    return RpcLater{until};
  }
  std::size_t count = std::min<std::size_t>(wanted.requestSize, output.size());
  int reason = 0;
  if ((wanted.flags & kTermCharSet) != 0) {
    const std::size_t found = output.find(wanted.termChar);
    if (found < count) {
      count = found + 1;
      reason |= kReasonTermChar;
    }
  }
  if (count == wanted.requestSize) reason |= kReasonCount;
  if (count == output.size()) reason |= kReasonEnd;
  read_ = output.substr(0, count);
  output.erase(0, count);
  return Device_ReadResp{kNoError, reason, {static_cast<u_int>(read_.size()), read_.data()}};
}

GatewayCore::Answered<Device_ReadStbResp> GatewayCore::ReadStatus(const RpcCall& call,
                                                                  const Device_GenericParms& wanted) {
  if (const auto obstacle = Obstacle<Device_ReadStbResp>(call, wanted.lid, wanted.flags, wanted.lock_timeout)) {
    return *obstacle;
  }
  const GatewayDevice& device = *links_.at(wanted.lid).device;
  if (device.instrument.Absent()) return Device_ReadStbResp{kIoError, 0};
  return Device_ReadStbResp{kNoError, device.output.empty() ? static_cast<u_char>(0) : kMessageAvailable};
}

GatewayCore::Answered<Device_Error> GatewayCore::Clear(const RpcCall& call, const Device_GenericParms& wanted) {
  if (const auto obstacle = Obstacle<Device_Error>(call, wanted.lid, wanted.flags, wanted.lock_timeout)) {
    return *obstacle;
  }
  GatewayDevice& device = *links_.at(wanted.lid).device;
  if (device.instrument.Absent()) return Device_Error{kIoError};
  device.output.clear();
  for (auto& [number, link] : links_) {
    if (link.device == &device) link.input.clear();
  }
  return Device_Error{kNoError};
}

GatewayCore::Answered<Device_Error> GatewayCore::RemoteOrLocal(const RpcCall& call,
                                                               const Device_GenericParms& wanted) {
  if (const auto obstacle = Obstacle<Device_Error>(call, wanted.lid, wanted.flags, wanted.lock_timeout)) {
    return *obstacle;
  }
  return Device_Error{links_.at(wanted.lid).device->instrument.Absent() ? kIoError : kNoError};
}

GatewayCore::Answered<Device_Error> GatewayCore::Lock(const RpcCall& call, const Device_LockParms& wanted) {
  if (const auto obstacle = Obstacle<Device_Error>(call, wanted.lid, wanted.flags, wanted.lock_timeout)) {
    return *obstacle;
  }
  GatewayDevice& device = *links_.at(wanted.lid).device;
  if (device.lockedBy == wanted.lid) return Device_Error{kLockedByAnother};
  device.lockedBy = wanted.lid;
  return Device_Error{kNoError};
}

GatewayCore::Answered<Device_Error> GatewayCore::Unlock(const RpcCall&, const Device_Link& link) {
  const auto found = links_.find(link);
  if (found == links_.end()) return Device_Error{kInvalidLink};
  GatewayDevice& device = *found->second.device;
  if (device.lockedBy != link) return Device_Error{kNoLockHeld};
  device.lockedBy = 0;
  return Device_Error{kNoError};
}

bool GatewayCore::Abort(Device_Link link) {
  const auto found = links_.find(link);
  if (found == links_.end()) return false;
  found->second.aborted = found->second.waits;
  return true;
}

RpcOutcome GatewayAbort::Answer(const RpcCall& call) {
  if (call.procedure != DEVICE_ABORT) return RpcNoSuchProcedure{};
  auto link = XdrReader(call.arguments).Take(&xdr_Device_Link);
  if (!link) return RpcBadArguments{};
  const bool known = core_.Abort(**link);
  aborted_();
  return RpcResult{XdrWriter().Put(&xdr_Device_Error, Device_Error{known ? kNoError : kInvalidLink}).Bytes()};
}

}  // namespace orvane::bench
