#pragma once

#include <string>

#include "bench/wires/file_descriptor.h"

namespace orvane::bench {

/// A TCP socket that listens.
class Listener {
 public:
  /// @param place "PORT" or "HOST:PORT", HOST a numeric IPv4 address; port 0 is any free one.
  /// @throws std::system_error, or BenchOptionError when `place` is none.
  explicit Listener(const std::string& place);

  /// The next client's socket, which does not block; none when nobody waits.
  [[nodiscard]] FileDescriptor Accept() const;
  /// "127.0.0.1:41001"
  [[nodiscard]] const std::string& Address() const { return address_; }
  [[nodiscard]] std::string Host() const { return address_.substr(0, address_.rfind(':')); }
  [[nodiscard]] int Port() const { return std::stoi(address_.substr(address_.rfind(':') + 1)); }

  [[nodiscard]] int Get() const { return socket_.Get(); }
  [[nodiscard]] bool Open() const { return socket_.Open(); }
  void Close() { socket_.Close(); }

 private:
  FileDescriptor socket_;
  std::string address_;
};

}  // namespace orvane::bench
