#pragma once

#include <string>

#include "adapters/gpib/byte_stream.h"
#include "adapters/gpib/route_session.h"

namespace orvane {

/// SCPI over a raw TCP socket: a line feed ends each message in both directions.
class TcpGpibSession final : public RouteSession {
 public:
  /// @param route in the words of the command line
  TcpGpibSession(int primary, const std::string& route, const std::string& host, int port);

 private:
  void Send(std::string_view text, const Deadline& deadline) override;
  std::string Receive(std::size_t size, const Deadline& deadline) override;
  void HangUp() override { stream_.Close(); }
  void LetGo(const Deadline& deadline) override;

  void Connect(const Deadline& deadline);
  void DropRestOfReply();

  std::string host_;
  int port_;
  ByteStream stream_;
  /// Received and not yet read.
  std::string pending_;
  /// The last Read had only the first bytes of its reply, as many as the read size.
  bool insideReply_ = false;
  /// What is left of that reply is nobody's any more: another message was written.
  bool dropsRest_ = false;
};

}  // namespace orvane
