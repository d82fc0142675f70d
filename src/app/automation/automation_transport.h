#pragma once

#include <sys/types.h>

#include <QSocketNotifier>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "app/automation/automation_port.h"
#include "app/automation/outbox.h"
#include "platform/event_loop.h"

namespace orvane {

/// Where a client's bytes come in: when there is room for them, and at the pace at which the client takes what it is
/// told. One that takes nothing for a second is not waited for; how far it may fall behind is its outbox's matter.
class Intake {
 public:
  Intake(EventLoop& loop, int descriptor, Outbox& out, std::function<void()> onReadable);
  Intake(const Intake&) = delete;
  Intake& operator=(const Intake&) = delete;
  ~Intake() { readable_.setEnabled(false); }

  /// The next bytes are welcome; told once for each piece of them.
  void Open();
  void Close() { readable_.setEnabled(false); }

 private:
  void OpenUnlessMoreIsTaken(int wait);
  void OpenNow();

  EventLoop& loop_;
  Outbox& out_;
  QSocketNotifier readable_;
  bool waits_ = false;
  /// Counts the waits: what lies in the loop for one that is over is void.
  int wait_ = 0;
  /// Gone with this object.
  std::shared_ptr<int> here_ = std::make_shared<int>(0);
};

/// Requests on standard input, everything else on standard output. The end of the input ends the station.
class StdioTransport {
 public:
  /// `onLost`: the client does not take what is said to it, and is not served any more. It comes as an event, once.
  StdioTransport(EventLoop& loop, AutomationPort& port, std::function<void()> onLost);
  StdioTransport(const StdioTransport&) = delete;
  StdioTransport& operator=(const StdioTransport&) = delete;
  ~StdioTransport();

 private:
  void ReadSome();
  void Send(const std::string& line);

  EventLoop& loop_;
  AutomationPort& port_;
  std::function<void()> onLost_;
  Outbox out_;
  Intake in_;
  bool ended_ = false;
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
  std::pair<dev_t, ino_t> file_;
};

/// Serves a socket's clients, one at a time: another one waits until the first has gone. One that does not take what
/// is said to it is dropped.
class UnixSocketTransport {
 public:
  UnixSocketTransport(EventLoop& loop, AutomationPort& port, std::unique_ptr<ListeningSocket> listener);
  UnixSocketTransport(const UnixSocketTransport&) = delete;
  UnixSocketTransport& operator=(const UnixSocketTransport&) = delete;
  ~UnixSocketTransport();

 private:
  struct Client;

  void Listen();
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
