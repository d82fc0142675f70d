#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "app/automation_port.h"
#include "platform/event_loop.h"

namespace orvane {

/// Cuts a stream of bytes into lines. A line of more than 1 MiB is cut there, and its rest dropped: it is no request.
class LineCutter {
 public:
  static constexpr std::size_t kLongest = 1 << 20;
  /// Calls `take` with each line that is complete, without its end.
  void Feed(std::string_view bytes, const std::function<void(const std::string& line)>& take);

 private:
  std::string line_;
};

/// Requests on standard input, everything else on standard output. Each line is an event of the loop; the end of the
/// input ends the station.
class StdioTransport {
 public:
  StdioTransport(EventLoop& loop, AutomationPort& port);

 private:
  void ReadSome();

  EventLoop& loop_;
  AutomationPort& port_;
  LineCutter lines_;
  QSocketNotifier readable_;
};

class SocketFailure : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A socket file that its owner alone may use, there as long as this object is. Who comes before anybody is served
/// waits.
class ListeningSocket {
 public:
  /// A socket file that nobody listens on any more is replaced.
  /// @throws SocketFailure when the path cannot be listened on.
  explicit ListeningSocket(std::string path);
  ListeningSocket(const ListeningSocket&) = delete;
  ListeningSocket& operator=(const ListeningSocket&) = delete;
  ~ListeningSocket();

  [[nodiscard]] int Descriptor() const { return descriptor_; }

 private:
  std::string path_;
  int descriptor_;
};

/// Serves a socket's clients, one at a time: another one waits until the first has gone.
/// A client that does not take what is said to it never holds up the station: 8 MiB are kept for it, then it is
/// dropped.
class UnixSocketTransport {
 public:
  UnixSocketTransport(EventLoop& loop, AutomationPort& port, std::unique_ptr<ListeningSocket> listener);
  UnixSocketTransport(const UnixSocketTransport&) = delete;
  UnixSocketTransport& operator=(const UnixSocketTransport&) = delete;
  ~UnixSocketTransport();

 private:
  struct Client;

  void Accept();
  void ReadSome();
  /// Ends the connection of that client, if it has not ended yet, as an event of the loop.
  void PostHangUp(const std::shared_ptr<Client>& client);

  EventLoop& loop_;
  AutomationPort& port_;
  std::unique_ptr<ListeningSocket> listener_;
  QSocketNotifier connecting_;
  std::shared_ptr<Client> client_;
};

}  // namespace orvane
