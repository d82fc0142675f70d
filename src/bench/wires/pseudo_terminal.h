#pragma once

#include <string>

#include "bench/target_line.h"
#include "bench/wires/reactor.h"
#include "bench/wires/terminal_pair.h"

namespace orvane::bench {

/// The Target's line on a pseudo-terminal, at the pace of 115200 baud in both directions.
class PseudoTerminal {
 public:
  /// @throws std::system_error
  PseudoTerminal(Reactor& reactor, TargetLine& target);
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;
  ~PseudoTerminal();

  /// The device that a client opens.
  [[nodiscard]] const std::string& Path() const { return pair_.Path(); }

 private:
  void Arrived();
  void Carry(const Bytes& bytes, Reactor::Time commandEnd);
  void Send(const Transmission& reply, Reactor::Time commandEnd);
  void Write(const Bytes& reply);
  void Unplug();

  Reactor& reactor_;
  TargetLine& target_;
  TerminalPair pair_;
  Reactor::Time outgoingFree_{0};
  Reactor::Time incomingFree_{0};
};

}  // namespace orvane::bench
