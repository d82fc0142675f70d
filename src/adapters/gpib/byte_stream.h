#pragma once

#include <string>
#include <string_view>

#include "adapters/gpib/deadline.h"

struct addrinfo;

namespace orvane {

/// Bytes to and from another end, over a socket or a serial device. Nothing here blocks beyond its deadline.
/// Failures are RouteFailures, in words that speak of `peer`: "the instrument".
class ByteStream {
 public:
  ByteStream() = default;
  /// @param descriptor open and non-blocking; closed with the stream
  ByteStream(int descriptor, std::string peer);
  ByteStream(ByteStream&& other) noexcept;
  ByteStream& operator=(ByteStream&& other) noexcept;
  ByteStream(const ByteStream&) = delete;
  ByteStream& operator=(const ByteStream&) = delete;
  ~ByteStream() { Close(); }

  [[nodiscard]] bool IsOpen() const { return descriptor_ >= 0; }
  void Close();
  /// The same without what the other end did not take yet: the system would wait 30 s for a serial device's.
  void Drop();

  /// All of the bytes.
  void Send(std::string_view bytes, const Deadline& deadline);
  /// Waits for what comes next and appends it. `reply` is what has come of the reply so far: an end behind its first
  /// bytes is another failure than one ahead of them. @return false when the deadline passed first.
  [[nodiscard]] bool Receive(std::string& reply, const Deadline& deadline);
  /// Appends what has come already, if anything has. Notices an end that the peer made since the last message.
  void ReceiveArrived(std::string& bytes);

 private:
  enum class Found { kBytes, kNothing };
  Found Take(std::string& reply);
  [[nodiscard]] bool AwaitReady(short event, const Deadline& deadline);
  [[noreturn]] void FailGone(int error, bool insideReply) const;

  int descriptor_ = -1;
  bool socket_ = false;
  std::string peer_;
};

/// A connection. Tries all addresses of the host within 3 s, or up to the deadline when that is sooner.
[[nodiscard]] ByteStream ConnectTcp(const std::string& host, int port, const Deadline& deadline,
                                    const std::string& peer);
/// A connection to the first of these addresses that takes it up. Each has its share of the time that is left.
[[nodiscard]] ByteStream ConnectToOneOf(const addrinfo* addresses, const Deadline& deadline, const std::string& peer);

/// A serial device, raw, 115200 baud, 8 data bits, no parity, for this program alone.
[[nodiscard]] ByteStream OpenSerialDevice(const std::string& device, const std::string& peer);

}  // namespace orvane
