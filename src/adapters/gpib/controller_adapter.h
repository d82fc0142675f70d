#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>

#include "adapters/gpib/byte_stream.h"
#include "platform/gpib.h"

namespace orvane {

/// A GPIB controller adapter that speaks the `++` commands. One connection serves all instruments of the bus; each
/// message goes to the address that it names. Members throw RouteFailure; whoever meets one calls Abandon.
///
/// The adapter does what it is told in order, and marks nothing: neither whose reply it sends nor that it has none.
/// So each read is sent behind a question whose answer is known, and what comes ahead of that answer is no part of
/// the reply.
class ControllerAdapter {
 public:
  /// Opens the wire to the adapter.
  using Opener = std::function<ByteStream(const Deadline& deadline)>;
  explicit ControllerAdapter(Opener open) : open_(std::move(open)) {}

  /// Sessions come and go. The connection is made by the first message, and closed behind the last session.
  void Attach() { ++sessions_; }
  void Detach();
  /// Leaves the adapter to somebody else. The next message makes the connection anew.
  void LetGo() { stream_.Close(); }

  /// Sends one message, its last byte with EOI.
  void Write(const GpibAddress& address, std::string_view text, const Deadline& deadline);
  /// One message, up to its line feed.
  [[nodiscard]] std::string Read(const GpibAddress& address, const Deadline& deadline);
  void GoToLocal(const GpibAddress& address, const Deadline& deadline);

  /// A message failed, and its reply may still come. Ends the connection, and has the instrument's output cleared
  /// ahead of its next message.
  void Abandon(const GpibAddress& address);

 private:
  [[nodiscard]] bool StillOpen();
  void Open(const Deadline& deadline);
  void Greet(const Deadline& deadline);
  [[nodiscard]] std::string NextGreeting();
  void Address(const GpibAddress& address, const Deadline& deadline);
  void SetReadTimeOut(const Deadline& deadline);
  /// What to do with bytes that came ahead of the adapter's answer.
  enum class Ahead { kDrop, kKeep };
  /// Waits for the answer to `++ver` and takes it out of what was heard.
  void AwaitAnswer(std::string& heard, Ahead ahead, const Deadline& deadline);

  Opener open_;
  ByteStream stream_;
  int sessions_ = 0;
  int greetings_ = 0;
  /// The adapter's answer to `++ver`.
  std::string version_;
  /// What the adapter was told last.
  std::string address_;
  long readTimeOutMs_ = 0;
  /// Instruments, as `++addr` takes them, with a reply that nobody waits for any more.
  std::set<std::string> abandoned_;
};

}  // namespace orvane
