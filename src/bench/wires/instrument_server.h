#pragma once

#include <map>
#include <string>

#include "bench/instrument_line.h"
#include "bench/wires/listener.h"
#include "bench/wires/reactor.h"

namespace orvane::bench {

/// One instrument as SCPI over a raw TCP socket: a line feed ends each message in both directions. Several clients
/// may be connected; each gets the answers to its own lines.
class InstrumentServer {
 public:
  /// @param place "PORT" or "HOST:PORT", HOST a numeric IPv4 address; port 0 is any free one.
  /// @throws std::system_error, or BenchOptionError when `place` is none.
  InstrumentServer(Reactor& reactor, InstrumentLine& instrument, const std::string& place);
  InstrumentServer(const InstrumentServer&) = delete;
  InstrumentServer& operator=(const InstrumentServer&) = delete;
  ~InstrumentServer();

  /// "127.0.0.1:41001"
  [[nodiscard]] const std::string& Address() const { return listener_.Address(); }

 private:
  struct Client {
    FileDescriptor socket;
    std::string pending;
  };

  void Accept();
  void Read(int fd);
  [[nodiscard]] bool Serve(Client& client);
  void Drop(int fd);
  void Vanish();

  Reactor& reactor_;
  InstrumentLine& instrument_;
  Listener listener_;
  std::map<int, Client> clients_;
};

}  // namespace orvane::bench
