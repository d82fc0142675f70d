#pragma once

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

class TraceFault : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// What is to be read as a trace is none.
class NoTrace : public TraceFault {
  using TraceFault::TraceFault;
};

/// Sizes of a trace on the disk: the newest part has the name that was asked for, the others a number behind it, the
/// oldest the highest.
struct TraceLimits {
  std::size_t partBytes = std::size_t{16} << 20;
  int parts = 4;
};

/// The parts of the trace of that name that are there, the oldest first.
[[nodiscard]] std::vector<std::string> PartsOf(const std::string& path, int parts = TraceLimits{}.parts);

/// A file of lines in parts. Lines are kept until a flush, or until 64 KiB of them have gathered. When the disk takes
/// no more, that is told once and everything from there on is dropped: no caller ever fails.
class TraceFile {
 public:
  /// Begins a new part; what an earlier run left is kept as older parts. `head` gives the first line of part N.
  /// @throws TraceFault when the file cannot be made, or one of that name is no trace.
  TraceFile(std::string path, TraceLimits limits, std::function<std::string(int part)> head);
  TraceFile(const TraceFile&) = delete;
  TraceFile& operator=(const TraceFile&) = delete;
  ~TraceFile();

  /// The disk takes no more; `text` is the system's word for it.
  std::function<void(const std::string& text)> onBroken;

  void Append(std::string_view line);
  void Flush();

 private:
  void Begin();
  /// Makes room for a new part. @return false when the system would not rename.
  [[nodiscard]] bool Shift();
  void Break(int error);

  std::string path_;
  TraceLimits limits_;
  std::function<std::string(int part)> head_;
  int descriptor_ = -1;
  /// A device or a pipe is written on and on.
  bool rotates_ = true;
  int part_ = 0;
  std::size_t written_ = 0;
  std::string waiting_;
};

}  // namespace orvane
