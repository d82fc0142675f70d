#pragma once

#include <string>

#include "platform/gpib.h"

namespace orvane {

/// SCPI over a raw TCP socket. The connection is made at the first message, since configuring a session never
/// touches the instrument. A message that fails ends the connection: a reply that comes too late could otherwise be
/// taken for the next one's. The next Configure opens a new one.
class TcpGpibSession final : public GpibSession {
 public:
  TcpGpibSession(int primary, std::string host, int port);
  ~TcpGpibSession() override { Disconnect(); }

  void Write(std::string_view text, TimePoint timeOut) override;
  [[nodiscard]] std::string Read(std::size_t size, TimePoint timeOut) override;
  void Local() override { Disconnect(); }

 private:
  /// A moment up to which a message may take.
  class Deadline;

  void Connect();
  void Disconnect();
  void AwaitReady(short event, const Deadline& deadline, const std::string& inVain);
  void RefuseIfClosed();
  [[noreturn]] void FailAbsent(const std::string& what);
  [[noreturn]] void FailTimeOut(const std::string& what);

  std::string name_;
  std::string host_;
  std::string service_;
  int socket_ = -1;
  /// What ended the connection, if something did.
  std::string ended_;
  /// Received and not yet read.
  std::string pending_;
};

}  // namespace orvane
