#pragma once

#include <functional>
#include <string>

#include "bench/bus_controller.h"
#include "bench/wires/listener.h"
#include "bench/wires/reactor.h"
#include "bench/wires/terminal_pair.h"

namespace orvane::bench {

/// A `++` adapter in time: while it reads in vain, the lines behind wait.
class AdapterWork {
 public:
  AdapterWork(Reactor& reactor, BusController& controller, std::function<void(const std::string&)> send)
      : reactor_(reactor), controller_(controller), send_(std::move(send)) {}

  void Hear(std::string_view bytes);

 private:
  void Work();

  Reactor& reactor_;
  BusController& controller_;
  std::function<void(const std::string&)> send_;
  bool busy_ = false;
};

/// A `++` adapter on a TCP socket. It serves one client at a time, as such adapters do; the next one waits.
class AdapterServer {
 public:
  /// @param place as a Listener takes it
  AdapterServer(Reactor& reactor, BusController& controller, const std::string& place);
  AdapterServer(const AdapterServer&) = delete;
  AdapterServer& operator=(const AdapterServer&) = delete;
  ~AdapterServer();

  [[nodiscard]] const std::string& Address() const { return listener_.Address(); }

 private:
  void AwaitClient();
  void Accept();
  void Read();
  void Send(const std::string& bytes);

  Reactor& reactor_;
  Listener listener_;
  FileDescriptor client_;
  AdapterWork work_;
};

/// A `++` adapter on a pseudo-terminal. Like one on USB it knows no pace.
class AdapterTerminal {
 public:
  AdapterTerminal(Reactor& reactor, BusController& controller);
  AdapterTerminal(const AdapterTerminal&) = delete;
  AdapterTerminal& operator=(const AdapterTerminal&) = delete;
  ~AdapterTerminal() { reactor_.Forget(pair_.Get()); }

  [[nodiscard]] const std::string& Path() const { return pair_.Path(); }

 private:
  void Read();

  Reactor& reactor_;
  TerminalPair pair_;
  AdapterWork work_;
};

}  // namespace orvane::bench
