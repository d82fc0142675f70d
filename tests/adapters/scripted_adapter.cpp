#include "adapters/scripted_adapter.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

template <class Condition>
bool Await(const Condition& condition) {
  const auto limit = std::chrono::steady_clock::now() + 5s;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > limit) return false;
    std::this_thread::sleep_for(1ms);
  }
  return true;
}

}  // namespace

ScriptedAdapter::ScriptedAdapter(Script script, Wire wire) : script_(std::move(script)) {
  if (::pipe(wake_) != 0) return;
  if (wire == Wire::kTerminal) {
    peer_ = pty_.Master();
  } else {
    listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in any{};
    any.sin_family = AF_INET;
    any.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ::bind(listener_, reinterpret_cast<const sockaddr*>(&any), sizeof any);
    ::listen(listener_, 4);
    socklen_t size = sizeof any;
    ::getsockname(listener_, reinterpret_cast<sockaddr*>(&any), &size);
    port_ = ntohs(any.sin_port);
  }
  thread_ = std::thread([this] { Serve(); });
}

ScriptedAdapter::~ScriptedAdapter() {
  (void)!::write(wake_[1], "", 1);
  if (thread_.joinable()) thread_.join();
  HangUp();
  for (const int file : {listener_, wake_[0], wake_[1]}) {
    if (file >= 0) ::close(file);
  }
}

void ScriptedAdapter::Send(const std::string& bytes) const {
  for (std::size_t sent = 0; sent < bytes.size();) {
    const auto count = listener_ < 0 ? ::write(peer_, bytes.data() + sent, bytes.size() - sent)
                                     : ::send(peer_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (count <= 0) return;
    sent += static_cast<std::size_t>(count);
  }
}

void ScriptedAdapter::Greet(const std::string& bytes) {
  const std::lock_guard lock(guard_);
  greeting_ = bytes;
}

void ScriptedAdapter::HangUp() {
  if (listener_ < 0) {
    pty_.HangUp();
  } else if (peer_ >= 0) {
    ::close(peer_);
  }
  peer_ = -1;
  pending_.clear();
  const std::lock_guard lock(guard_);
  alone_ = true;
}

std::vector<std::string> ScriptedAdapter::Lines() const {
  const std::lock_guard lock(guard_);
  return lines_;
}

int ScriptedAdapter::Clients() const {
  const std::lock_guard lock(guard_);
  return clients_;
}

bool ScriptedAdapter::Hears(const std::string& line) const {
  return Await([&] {
    const auto lines = Lines();
    return std::find(lines.begin(), lines.end(), line) != lines.end();
  });
}

bool ScriptedAdapter::IsAlone() const {
  return Await([&] {
    const std::lock_guard lock(guard_);
    return alone_;
  });
}

void ScriptedAdapter::Accept() {
  peer_ = ::accept(listener_, nullptr, nullptr);
  const std::lock_guard lock(guard_);
  Send(std::exchange(greeting_, {}));
  ++clients_;
  alone_ = false;
}

void ScriptedAdapter::Serve() {
  while (true) {
    std::array<pollfd, 2> files{pollfd{wake_[0], POLLIN, 0}, pollfd{peer_ >= 0 ? peer_ : listener_, POLLIN, 0}};
    ::poll(files.data(), files.size(), -1);
    if (files[0].revents != 0) return;
    if (files[1].revents == 0) continue;
    if (peer_ < 0) {
      Accept();
      continue;
    }
    std::array<char, 4096> bytes;
    const auto count = ::read(peer_, bytes.data(), bytes.size());
    if (count > 0) {
      Take({bytes.data(), static_cast<std::size_t>(count)});
    } else if (listener_ >= 0) {
      HangUp();
    } else {
      std::this_thread::sleep_for(1ms);  // a terminal that no program has open
    }
  }
}

void ScriptedAdapter::Take(std::string bytes) {
  pending_ += bytes;
  for (std::size_t at = 0; at < pending_.size();) {
    if (pending_[at] == '\x1b') {
      at += 2;
    } else if (pending_[at] != '\n') {
      ++at;
    } else {
      const std::string line = pending_.substr(0, at);
      pending_.erase(0, at + 1);
      at = 0;
      Obey(line);
    }
  }
}

void ScriptedAdapter::Obey(const std::string& line) {
  {
    const std::lock_guard lock(guard_);
    lines_.push_back(line);
  }
  if (script_ && script_(*this, line)) return;
  if (line == "++ver") Send("Scripted adapter, version 1\r\n");
  if (line == "++addr") Send(address_ + "\r\n");
  if (line.starts_with("++addr ")) address_ = line.substr(7);
}

}  // namespace orvane::test
