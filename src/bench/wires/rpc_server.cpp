#include "bench/wires/rpc_server.h"

#include <rpc/rpc_msg.h>
#include <sys/socket.h>

#include <array>
#include <vector>

#include "vxi11/xdr_message.h"

namespace orvane::bench {
namespace {

/// A record of one fragment: its length, whose top bit says that it is the last one, and the message.
std::string Marked(const std::string& message) {
  constexpr std::uint32_t kLastFragment = 0x80000000U;
  const auto mark = static_cast<std::uint32_t>(message.size()) | kLastFragment;
  std::string record;
  for (int shift = 24; shift >= 0; shift -= 8)
    record += static_cast<char>(mark >> static_cast<unsigned>(shift) & 0xFFU);
  return record + message;
}

/// Results stand behind the header in bytes.
bool_t NoResult(XDR*, ...) { return TRUE; }

std::string Reply(std::uint32_t xid, accept_stat status, const std::string& result, std::uint32_t version) {
  rpc_msg reply{};
  reply.rm_xid = xid;
  reply.rm_direction = REPLY;
  reply.rm_reply.rp_stat = MSG_ACCEPTED;
  reply.acpted_rply.ar_verf = _null_auth;
  reply.acpted_rply.ar_stat = status;
  if (status == SUCCESS) {
    reply.acpted_rply.ar_results.proc = &NoResult;
  } else {
    reply.acpted_rply.ar_vers = {version, version};
  }
  XdrWriter writer;
  writer.Put(&xdr_replymsg, reply);
  return Marked(writer.Bytes() + result);
}

}  // namespace

RpcServer::RpcServer(Reactor& reactor, Identity identity, RpcProgram& program, const std::string& place)
    : reactor_(reactor), identity_(identity), program_(program), listener_(place) {
  reactor_.WhenReadable(listener_.Get(), [this] { Accept(); });
}

RpcServer::~RpcServer() {
  while (!clients_.empty()) Drop(clients_.begin()->first);
  reactor_.Forget(listener_.Get());
}

void RpcServer::Accept() {
  FileDescriptor socket = listener_.Accept();
  if (!socket.Open()) return;
  const int caller = ++callers_;
  reactor_.WhenReadable(socket.Get(), [this, caller] { Read(caller); });
  clients_[caller].socket = std::move(socket);
}

void RpcServer::Read(int caller) {
  Client& client = clients_.at(caller);
  std::array<char, 4096> buffer{};
  const ssize_t count = read(client.socket.Get(), buffer.data(), buffer.size());
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (count > 0) client.records.Feed({buffer.data(), static_cast<std::size_t>(count)});
  if (count <= 0 || !Serve(caller, client)) Drop(caller);
  PutAgain();
}

bool RpcServer::Serve(int caller, Client& client) {
  while (!client.waiting) {
    const auto message = client.records.Next();
    if (!message) break;
    if (!Take(caller, client, *message)) return false;
  }
  return !client.records.Spoilt();
}

bool RpcServer::Take(int caller, Client& client, const std::string& message) {
  XdrReader reader(message);
  auto header = reader.Take<rpc_msg>(&xdr_callmsg);
  if (!header) return false;
  const std::uint32_t xid = (*header)->rm_xid;
  const call_body& body = (*header)->rm_call;
  if (body.cb_prog != identity_.number || body.cb_vers != identity_.version) {
    const accept_stat fault = body.cb_prog != identity_.number ? PROG_UNAVAIL : PROG_MISMATCH;
    const std::string reply = Reply(xid, fault, {}, identity_.version);
    return send(client.socket.Get(), reply.data(), reply.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(reply.size());
  }
  return Answer(client, {body.cb_proc, std::string(reader.Rest()), caller, Reactor::Now()}, xid);
}

bool RpcServer::Answer(Client& client, const RpcCall& call, std::uint32_t xid) {
  const RpcOutcome outcome = call.procedure == NULLPROC ? RpcOutcome(RpcResult{}) : program_.Answer(call);
  if (const auto* later = std::get_if<RpcLater>(&outcome)) {
    client.waiting = call;
    client.waitingXid = xid;
    if (std::exchange(client.waitingUntil, later->until) != later->until) {
      reactor_.At(later->until, [this] { PutAgain(); });
    }
    return true;
  }
  const auto* result = std::get_if<RpcResult>(&outcome);
  const accept_stat status = result != nullptr                                     ? SUCCESS
                             : std::holds_alternative<RpcNoSuchProcedure>(outcome) ? PROC_UNAVAIL
                                                                                   : GARBAGE_ARGS;
  const std::string reply = Reply(xid, status, result != nullptr ? result->bytes : std::string(), identity_.version);
  return send(client.socket.Get(), reply.data(), reply.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(reply.size());
}

void RpcServer::PutAgain() {
  std::vector<int> callers;
  for (const auto& [caller, client] : clients_) {
    if (client.waiting) callers.push_back(caller);
  }
  bool moved = false;
  for (const int caller : callers) {
    Client& client = clients_.at(caller);
    const RpcCall call = *std::exchange(client.waiting, std::nullopt);
    const bool stays = Answer(client, call, client.waitingXid) && Serve(caller, client);
    moved = moved || !client.waiting;
    if (!stays) Drop(caller);
  }
  // One call's end may be what another one, asked before it, waits for.
  if (moved) PutAgain();
}

void RpcServer::Drop(int caller) {
  reactor_.Forget(clients_.at(caller).socket.Get());
  clients_.erase(caller);
  program_.Gone(caller);
}

}  // namespace orvane::bench
