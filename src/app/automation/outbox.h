#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace orvane {

/// Where a client's lines go. Writing there never waits, whoever else holds the same descriptor.
class Outlet {
 public:
  explicit Outlet(int descriptor) : descriptor_(descriptor) {}
  Outlet(const Outlet&) = delete;
  Outlet& operator=(const Outlet&) = delete;
  virtual ~Outlet() = default;

  [[nodiscard]] int Descriptor() const { return descriptor_; }
  /// How many of the bytes it took; below zero with `errno` as a write that would not wait leaves it.
  [[nodiscard]] virtual ssize_t Write(std::string_view bytes) = 0;

 protected:
  int descriptor_;
};

/// A connected socket, which stays its owner's.
[[nodiscard]] std::unique_ptr<Outlet> SocketOutlet(int socket);
/// The standard output, whatever it is.
[[nodiscard]] std::unique_ptr<Outlet> StandardOutlet();

/// What is said to a client and was not taken yet. It never waits: what the client does not take now goes out when it
/// does. A client that is 8 MiB behind has gone for the station: that is some hundred answers of the longest kind.
class Outbox {
 public:
  enum class Sent { Yes, Gone, TooFarBehind };

  explicit Outbox(std::unique_ptr<Outlet> outlet);
  Outbox(const Outbox&) = delete;
  Outbox& operator=(const Outbox&) = delete;
  ~Outbox() { writable_.setEnabled(false); }

  Sent Send(const std::string& line);
  [[nodiscard]] std::size_t Unsent() const { return unsent_.size() - taken_; }
  /// Whether the client has taken something since this was asked last.
  [[nodiscard]] bool WasTaken() { return std::exchange(wasTaken_, false); }
  /// It takes something.
  std::function<void()> onTaken;
  /// Forgets what was not taken, and takes no more.
  void Close();
  /// The station ends: what is unsent goes out as long as the client takes it without a pause of half a second.
  void Farewell();

 private:
  /// @return whether the client is there.
  bool Flush();

  std::unique_ptr<Outlet> outlet_;
  QSocketNotifier writable_;
  std::string unsent_;
  /// So much of it has gone.
  std::size_t taken_ = 0;
  bool wasTaken_ = false;
  bool closed_ = false;
};

}  // namespace orvane
