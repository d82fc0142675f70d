#include "bench/wires/instrument_server.h"

#include <sys/socket.h>

#include <array>

namespace orvane::bench {
namespace {

constexpr std::size_t kLongestLine = 65536;

}  // namespace

InstrumentServer::InstrumentServer(Reactor& reactor, InstrumentLine& instrument, const std::string& place)
    : reactor_(reactor), instrument_(instrument), listener_(place) {
  reactor_.WhenReadable(listener_.Get(), [this] { Accept(); });
  if (instrument_.Absent()) Vanish();
}

InstrumentServer::~InstrumentServer() { Vanish(); }

void InstrumentServer::Accept() {
  FileDescriptor socket = listener_.Accept();
  if (!socket.Open()) return;
  const int fd = socket.Get();
  clients_[fd].socket = std::move(socket);
  reactor_.WhenReadable(fd, [this, fd] { Read(fd); });
}

void InstrumentServer::Read(int fd) {
  std::array<char, 4096> buffer{};
  const ssize_t count = read(fd, buffer.data(), buffer.size());
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
  Client& client = clients_.at(fd);
  if (count > 0) client.pending.append(buffer.data(), static_cast<std::size_t>(count));
  if (count <= 0 || !Serve(client) || client.pending.size() > kLongestLine) Drop(fd);
  if (instrument_.Absent()) Vanish();
}

/// @return false when the client has to go: it does not read, or the instrument is gone.
bool InstrumentServer::Serve(Client& client) {
  for (;;) {
    const std::size_t end = client.pending.find('\n');
    if (end == std::string::npos) return true;
    const std::string line = client.pending.substr(0, end);
    client.pending.erase(0, end + 1);
    if (!instrument_.Take(line)) return false;
    const std::string reply = instrument_.TakeReply().value_or("");
    const ssize_t sent = send(client.socket.Get(), reply.data(), reply.size(), MSG_NOSIGNAL);
    if (sent != static_cast<ssize_t>(reply.size())) return false;
  }
}

void InstrumentServer::Drop(int fd) {
  reactor_.Forget(fd);
  clients_.erase(fd);
}

void InstrumentServer::Vanish() {
  while (!clients_.empty()) Drop(clients_.begin()->first);
  if (!listener_.Open()) return;
  reactor_.Forget(listener_.Get());
  listener_.Close();
}

}  // namespace orvane::bench
