#include "app/automation/line_cutter.h"

#include <algorithm>

namespace orvane {

void LineCutter::Feed(std::string_view bytes, const std::function<void(const std::string&)>& take) {
  while (!bytes.empty()) {
    const auto end = bytes.find('\n');
    line_.append(bytes.substr(0, std::min(end, kLongest - line_.size())));
    if (end == std::string_view::npos) return;
    take(line_);
    line_.clear();
    bytes.remove_prefix(end + 1);
  }
}

}  // namespace orvane
