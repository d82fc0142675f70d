#include "adapters/gpib/tcp_gpib_session.h"

#include <algorithm>

namespace orvane {

TcpGpibSession::TcpGpibSession(int primary, const std::string& route, const std::string& host, int port)
    : RouteSession(primary, route), host_(host), port_(port) {}

void TcpGpibSession::Connect(const Deadline& deadline) {
  if (!stream_.IsOpen()) stream_ = ConnectTcp(host_, port_, deadline, "the instrument");
}

void TcpGpibSession::Send(std::string_view text, const Deadline& deadline) {
  Connect(deadline);
  // What came beyond the last reply answers no question, and what is left of a line that has begun is none either.
  stream_.ReceiveArrived(pending_);
  dropsRest_ = pending_.empty() ? insideReply_ || dropsRest_ : !pending_.ends_with('\n');
  pending_.clear();
  insideReply_ = false;
  stream_.Send(std::string(text) + "\n", deadline);
}

void TcpGpibSession::DropRestOfReply() {
  if (!dropsRest_) return;
  const auto lineEnd = pending_.find('\n');
  dropsRest_ = lineEnd == std::string::npos;
  pending_.erase(0, dropsRest_ ? pending_.size() : lineEnd + 1);
}

/// What was left of a reply is gone with the connection.
void TcpGpibSession::LetGo(const Deadline& /*deadline*/) {
  HangUp();
  pending_.clear();
  insideReply_ = false;
  dropsRest_ = false;
}

std::string TcpGpibSession::Receive(std::size_t size, const Deadline& deadline) {
  Connect(deadline);
  while (true) {
    DropRestOfReply();
    const auto lineEnd = pending_.find('\n');
    if (lineEnd != std::string::npos || pending_.size() >= size) {
      std::string reply = pending_.substr(0, std::min(lineEnd == std::string::npos ? size : lineEnd + 1, size));
      pending_.erase(0, reply.size());
      insideReply_ = !reply.ends_with('\n');
      return reply;
    }
    if (!stream_.Receive(pending_, deadline)) {
      FailTimeOut((pending_.empty() ? "no reply" : "no line end behind the reply's first bytes") +
                  (" within " + deadline.Text()) + ".");
    }
  }
}

}  // namespace orvane
