#include "bench/wires/adapter_wire.h"

#include <sys/socket.h>
#include <unistd.h>

#include <array>

namespace orvane::bench {

void AdapterWork::Hear(std::string_view bytes) {
  controller_.Hear(bytes);
  Work();
}

void AdapterWork::Work() {
  while (!busy_) {
    const auto done = controller_.Next();
    if (!done) return;
    if (!done->output.empty()) send_(done->output);
    if (done->busy == decltype(done->busy)::zero()) continue;
    busy_ = true;
    reactor_.At(Reactor::Now() + done->busy, [this] {
      busy_ = false;
      Work();
    });
  }
}

AdapterServer::AdapterServer(Reactor& reactor, BusController& controller, const std::string& place)
    : reactor_(reactor),
      listener_(place),
      work_(reactor, controller, [this](const std::string& bytes) { Send(bytes); }) {
  AwaitClient();
}

AdapterServer::~AdapterServer() {
  reactor_.Forget(listener_.Get());
  if (client_.Open()) reactor_.Forget(client_.Get());
}

void AdapterServer::AwaitClient() {
  if (client_.Open()) reactor_.Forget(client_.Get());
  client_.Close();
  reactor_.WhenReadable(listener_.Get(), [this] { Accept(); });
}

void AdapterServer::Accept() {
  client_ = listener_.Accept();
  if (!client_.Open()) return;
  reactor_.Forget(listener_.Get());
  reactor_.WhenReadable(client_.Get(), [this] { Read(); });
}

void AdapterServer::Read() {
  std::array<char, 4096> buffer{};
  const ssize_t count = read(client_.Get(), buffer.data(), buffer.size());
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (count > 0) {
    work_.Hear({buffer.data(), static_cast<std::size_t>(count)});
  } else {
    AwaitClient();
  }
}

/// A client that does not read is let go; what nobody hears is lost.
void AdapterServer::Send(const std::string& bytes) {
  if (!client_.Open()) return;
  const ssize_t sent = send(client_.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
  if (sent != static_cast<ssize_t>(bytes.size())) AwaitClient();
}

AdapterTerminal::AdapterTerminal(Reactor& reactor, BusController& controller)
    : reactor_(reactor), work_(reactor, controller, [this](const std::string& bytes) {
        [[maybe_unused]] const ssize_t written = write(pair_.Get(), bytes.data(), bytes.size());
      }) {
  reactor_.WhenReadable(pair_.Get(), [this] { Read(); });
}

void AdapterTerminal::Read() {
  std::array<char, 4096> buffer{};
  const ssize_t count = read(pair_.Get(), buffer.data(), buffer.size());
  if (count > 0) work_.Hear({buffer.data(), static_cast<std::size_t>(count)});
}

}  // namespace orvane::bench
