#pragma once

#include <functional>
#include <string>
#include <string_view>

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

}  // namespace orvane
