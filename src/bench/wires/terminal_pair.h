#pragma once

#include <string>

#include "bench/wires/file_descriptor.h"

namespace orvane::bench {

/// A pseudo-terminal: this program's side, and a device for clients that come and go.
class TerminalPair {
 public:
  /// @throws std::system_error
  TerminalPair();

  /// The device that a client opens.
  [[nodiscard]] const std::string& Path() const { return path_; }
  /// This program's side, which does not block.
  [[nodiscard]] int Get() const { return master_.Get(); }
  [[nodiscard]] bool Open() const { return master_.Open(); }
  /// The device is gone.
  void Close();

 private:
  FileDescriptor master_;
  FileDescriptor ownEnd_;  ///< kept open, so that the line outlives its clients
  std::string path_;
};

}  // namespace orvane::bench
