#pragma once

#include <string>

#include "bench/target_line.h"
#include "bench/wires/reactor.h"

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
  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  void Arrived();
  void Carry(const Bytes& bytes, Reactor::Time commandEnd);
  void Send(const Transmission& reply, Reactor::Time commandEnd);
  void Write(const Bytes& reply);
  void Unplug();

  Reactor& reactor_;
  TargetLine& target_;
  FileDescriptor master_;
  FileDescriptor ownEnd_;  ///< kept open, so that the line outlives the clients that come and go
  std::string path_;
  Reactor::Time outgoingFree_{0};
  Reactor::Time incomingFree_{0};
};

}  // namespace orvane::bench
