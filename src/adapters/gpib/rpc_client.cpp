#include "adapters/gpib/rpc_client.h"

#include <rpc/rpc_msg.h>

#include <cstring>
#include <type_traits>

#include "adapters/gpib/route_session.h"

namespace orvane {
namespace {

// Record marking: each fragment follows its length, whose top bit says that it is the last one of its message.
constexpr std::size_t kMarkSize = 4;
constexpr std::uint32_t kLastFragment = 0x80000000U;
/// The longest header of a reply, with the longest verifier.
constexpr std::size_t kLongestHeader = 6 * 4 + MAX_AUTH_BYTES;

std::string BytesOfMark(std::uint32_t mark) { return XdrWriter().Put(&xdr_u_int32_t, mark).Bytes(); }

/// Where a result begins, the codec of its type goes on.
bool_t NoResult(XDR*, ...) { return TRUE; }

bool_t ReplyHeader(XDR* stream, rpc_msg* message) {
  if (stream->x_op == XDR_DECODE) message->acpted_rply.ar_results.proc = &NoResult;
  return xdr_replymsg(stream, message);
}

const char* Refusal(const reply_body& reply) {
  if (reply.rp_stat == MSG_DENIED) {
    return reply.rp_rjct.rj_stat == AUTH_ERROR ? "asks for credentials" : "speaks another version of RPC";
  }
  // Any number may stand there, and the codec lets each pass.
  std::underlying_type_t<accept_stat> number = 0;
  std::memcpy(&number, &reply.rp_acpt.ar_stat, sizeof number);
  switch (number) {
    case SUCCESS:
      return nullptr;
    case PROG_UNAVAIL:
      return "does not serve this protocol";
    case PROG_MISMATCH:
      return "serves another version of this protocol";
    case PROC_UNAVAIL:
      return "does not know this call";
    case GARBAGE_ARGS:
      return "does not understand this call";
    default:
      return "could not carry out this call";
  }
}

}  // namespace

RpcClient::RpcClient(ByteStream stream, Program program, std::string peer)
    : stream_(std::move(stream)), program_(program), peer_(std::move(peer)) {}

std::string RpcClient::Exchange(std::uint32_t procedure, const std::string& arguments, std::size_t longestResult,
                                const Deadline& deadline) {
  stream_.ReceiveArrived(received_);
  if (!received_.empty()) FailMeaningless();
  rpc_msg call{};
  call.rm_xid = ++lastXid_;
  call.rm_direction = CALL;
  call.rm_call = {RPC_MSG_VERSION, program_.number, program_.version, procedure, _null_auth, _null_auth};
  const std::string message = XdrWriter().Put(&xdr_callmsg, call).Bytes() + arguments;
  stream_.Send(BytesOfMark(static_cast<std::uint32_t>(message.size()) | kLastFragment) + message, deadline);
  return ResultOf(ReceiveMessage(kLongestHeader + longestResult, deadline));
}

std::string RpcClient::ReceiveMessage(std::size_t longest, const Deadline& deadline) {
  std::string message;
  for (bool begun = false, last = false; !last; begun = true) {
    AwaitBytes(kMarkSize, begun, deadline);
    const std::uint32_t mark = **XdrReader(received_).Take(&xdr_u_int32_t);
    last = (mark & kLastFragment) != 0;
    const std::size_t size = mark & ~kLastFragment;
    if (message.size() + size > longest) FailAbsent(peer_ + " answered more than it was asked for.");
    AwaitBytes(kMarkSize + size, true, deadline);
    message.append(received_, kMarkSize, size);
    received_.erase(0, kMarkSize + size);
  }
  return message;
}

void RpcClient::AwaitBytes(std::size_t count, bool begun, const Deadline& deadline) {
  while (received_.size() < count) {
    if (!stream_.Receive(received_, deadline)) {
      begun = begun || !received_.empty();
      FailTimeOut(peer_ + (begun ? " did not finish its answer within " : " did not answer within ") +
                  deadline.Text() + ".");
    }
  }
}

std::string RpcClient::ResultOf(const std::string& message) const {
  XdrReader reader(message);
  auto header = reader.Take(&ReplyHeader);
  if (!header || (*header)->rm_xid != lastXid_) FailMeaningless();
  if (const char* refusal = Refusal((*header)->rm_reply)) FailAbsent(peer_ + " " + refusal + ".");
  return std::string(reader.Rest());
}

void RpcClient::FailMeaningless() const { FailAbsent(peer_ + " sent something that is no answer."); }

}  // namespace orvane
