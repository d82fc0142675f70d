#include "adapters/gpib/vxi11_gpib_session.h"

#include <netinet/in.h>
#include <rpc/pmap_prot.h>

#include <algorithm>
#include <array>

#include "vxi11/vxi11_codes.h"

namespace orvane {
namespace {

using namespace vxi11;

constexpr std::size_t kLongestShortResult = 64;

struct ErrorText {
  int error;
  const char* text;
};
constexpr std::array kErrorTexts{
    ErrorText{kSyntaxError, "the device's name is none"},
    ErrorText{kNotAccessible, "the device is not accessible"},
    ErrorText{kInvalidLink, "the link is gone"},
    ErrorText{kParameterError, "a parameter is out of range"},
    ErrorText{kNoChannel, "there is no such channel"},
    ErrorText{kNotSupported, "the operation is not supported"},
    ErrorText{kOutOfResources, "there are no resources left"},
    ErrorText{kLockedByAnother, "the device is locked by another client"},
    ErrorText{kNoLockHeld, "there is no lock"},
    ErrorText{kIoError, "input or output failed at the device"},
    ErrorText{kInvalidAddress, "the address is none"},
    ErrorText{kAborted, "the operation was aborted"},
    ErrorText{kChannelExists, "the channel is there already"},
};

/// By when the server has said that its own time-out, of the same span, is over.
Deadline BoundOf(const Deadline& deadline) { return deadline.LaterBy(deadline.Span() / 20); }

u_int TimeOutMs(const Deadline& deadline) { return static_cast<u_int>(std::max(deadline.LeftMs(), 1)); }

}  // namespace

Vxi11GpibSession::Vxi11GpibSession(int primary, const std::string& route, Vxi11Place place)
    : RouteSession(primary, route), place_(std::move(place)) {}

void Vxi11GpibSession::Check(int error, const std::string& inVain, const Deadline& deadline) const {
  if (error == kNoError) return;
  if (error == kIoTimeOut) FailTimeOut(inVain + " within " + deadline.Text() + ".");
  const auto* row =
      std::find_if(kErrorTexts.begin(), kErrorTexts.end(), [&](const auto& r) { return r.error == error; });
  FailAbsent(place_.server + " reports error " + std::to_string(error) +
             (row == kErrorTexts.end() ? "" : std::string(", ") + row->text) + ".");
}

void Vxi11GpibSession::Open(const Deadline& deadline) {
  Connect(deadline);
  if (isCleared_) return;
  Order(DEVICE_CLEAR, deadline);
  isCleared_ = true;
}

void Vxi11GpibSession::Connect(const Deadline& deadline) {
  if (core_.IsOpen()) return;
  isCleared_ = false;
  const int port = place_.port ? *place_.port : AskPort(deadline);
  core_ = RpcClient(ConnectTcp(place_.host, port, deadline, place_.server), {DEVICE_CORE, DEVICE_CORE_VERSION},
                    place_.server);
  CreateLink(deadline);
}

/// The link is made and not cleared yet: that would go into whatever the one who has the lock is measuring. A server
/// without locks leaves it to the stations' own.
bool Vxi11GpibSession::Lock(const Deadline& deadline) {
  Connect(deadline);
  constexpr Device_Flags kAtOnce = 0;
  const Device_LockParms wanted{link_, kAtOnce, 0};
  auto done = core_.Call(DEVICE_LOCK, &xdr_Device_LockParms, wanted, &xdr_Device_Error, kLongestShortResult,
                         BoundOf(deadline));
  if (done->error == kLockedByAnother) return false;
  if (done->error != kNotSupported) Check(done->error, "no lock on the device", deadline);
  return true;
}

/// The next link begins with a device clear: what the next station leaves unread is not taken for an answer.
void Vxi11GpibSession::LetGo(const Deadline& deadline) {
  if (!core_.IsOpen()) return;
  for (const std::uint32_t procedure : std::array<std::uint32_t, 2>{DEVICE_UNLOCK, DESTROY_LINK}) {
    (void)core_.Call(procedure, &xdr_Device_Link, link_, &xdr_Device_Error, kLongestShortResult, BoundOf(deadline));
  }
  HangUp();
}

int Vxi11GpibSession::AskPort(const Deadline& deadline) const {
  const std::string portmapper = "the portmapper";
  RpcClient client(ConnectTcp(place_.host, place_.portmapperPort, deadline, portmapper), {PMAPPROG, PMAPVERS},
                   portmapper);
  const pmap wanted{DEVICE_CORE, DEVICE_CORE_VERSION, IPPROTO_TCP, 0};
  auto port = client.Call(PMAPPROC_GETPORT, &xdr_pmap, wanted, &xdr_u_int32_t, kLongestShortResult, deadline);
  if (*port == 0 || *port > 0xFFFF) FailAbsent("the portmapper knows of no VXI-11 server there.");
  return static_cast<int>(*port);
}

void Vxi11GpibSession::CreateLink(const Deadline& deadline) {
  const Create_LinkParms wanted{0, FALSE, TimeOutMs(deadline), place_.device.data()};
  auto link = core_.Call(CREATE_LINK, &xdr_Create_LinkParms, wanted, &xdr_Create_LinkResp, kLongestShortResult,
                         BoundOf(deadline));
  Check(link->error, "no link to the device", deadline);
  if (link->maxRecvSize == 0) FailAbsent(place_.server + " takes no bytes.");
  link_ = link->lid;
  longestPiece_ = std::min<std::size_t>(link->maxRecvSize, VXI11_LONGEST_DATA);
}

void Vxi11GpibSession::Order(std::uint32_t procedure, const Deadline& deadline) {
  const Device_GenericParms wanted{link_, kWaitForLock, TimeOutMs(deadline), TimeOutMs(deadline)};
  auto done = core_.Call(procedure, &xdr_Device_GenericParms, wanted, &xdr_Device_Error, kLongestShortResult,
                         BoundOf(deadline));
  if (done->error != kNotSupported) Check(done->error, "the instrument did not obey", deadline);
}

void Vxi11GpibSession::Send(std::string_view text, const Deadline& deadline) {
  Open(deadline);
  bool ended = false;
  while (!ended) {
    std::string piece(text.substr(0, longestPiece_));
    ended = piece.size() == text.size();
    const u_int left = TimeOutMs(deadline);
    const Device_WriteParms wanted{
        link_, left, left, kWaitForLock | (ended ? kEnd : 0), {static_cast<u_int>(piece.size()), piece.data()}};
    auto written = core_.Call(DEVICE_WRITE, &xdr_Device_WriteParms, wanted, &xdr_Device_WriteResp,
                              kLongestShortResult, BoundOf(deadline));
    Check(written->error, "the instrument did not take all bytes", deadline);
    if (written->size != piece.size()) FailAbsent(place_.server + " did not take all bytes.");
    text.remove_prefix(piece.size());
  }
}

std::string Vxi11GpibSession::Receive(std::size_t size, const Deadline& deadline) {
  Open(deadline);
  std::string reply;
  for (bool ended = false; !ended && reply.size() < size;) {
    const std::size_t left = std::min<std::size_t>(size - reply.size(), VXI11_LONGEST_DATA);
    const u_int leftMs = TimeOutMs(deadline);
    const Device_ReadParms wanted{link_, static_cast<u_int>(left), leftMs, leftMs, kWaitForLock, 0};
    auto read = core_.Call(DEVICE_READ, &xdr_Device_ReadParms, wanted, &xdr_Device_ReadResp,
                           left + kLongestShortResult, BoundOf(deadline));
    Check(read->error, reply.empty() ? "no reply" : "no end behind the reply's first bytes", deadline);
    if (read->data.data_len > left) FailAbsent(place_.server + " answered more than it was asked for.");
    if (read->data.data_len > 0) reply.append(read->data.data_val, read->data.data_len);
    ended = (read->reason & kReasonEnd) != 0;
  }
  return reply;
}

void Vxi11GpibSession::GoLocal(const Deadline& deadline) {
  if (!core_.IsOpen()) return;
  Order(DEVICE_LOCAL, deadline);
  auto gone =
      core_.Call(DESTROY_LINK, &xdr_Device_Link, link_, &xdr_Device_Error, kLongestShortResult, BoundOf(deadline));
  Check(gone->error, "the link was not let go", deadline);
}

}  // namespace orvane
