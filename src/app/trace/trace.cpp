#include "app/trace/trace.h"

#include <array>
#include <ctime>

namespace orvane {
namespace {

constexpr TimePoint kFlushAfter = std::chrono::milliseconds(250);

std::string UtcNow() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  ::gmtime_r(&now, &parts);
  std::array<char, 32> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
  return text.data();
}

}  // namespace

Trace::Trace(EventLoop& loop, const std::string& path, TraceLimits limits)
    : loop_(loop),
      start_(loop.Now()),
      file_(std::make_shared<TraceFile>(path, limits, [started = UtcNow()](int part) {
        return LineOf(TraceHead{"orvane " ORVANE_VERSION, started, part});
      })) {
  file_->onBroken = [this](const std::string& text) {
    if (onBroken) onBroken(text);
  };
}

void Trace::Note(std::string_view link, std::string_view event, std::string_view bytes, std::string_view says) {
  file_->Append(LineOf(TraceRecord{loop_.Now() - start_, std::string(link), std::string(event), std::string(bytes),
                                   std::string(says)}));
  if (event == "failure") file_->Flush();
  if (flushPosted_) return;
  flushPosted_ = true;
  loop_.PostAt(loop_.Now() + kFlushAfter, [this, held = std::weak_ptr(file_)] {
    const auto file = held.lock();
    if (!file) return;
    flushPosted_ = false;
    file->Flush();
  });
}

}  // namespace orvane
