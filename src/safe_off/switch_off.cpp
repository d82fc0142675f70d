#include "safe_off/switch_off.h"

#include <algorithm>
#include <memory>

#include "base/text.h"

namespace orvane {
namespace {

using namespace std::chrono_literals;

/// An instrument that has taken a question answers by then, or does not.
constexpr TimePoint kAnswerTime = 1s;
constexpr TimePoint kPause = 200ms;
/// With less than that left a new try could only end in the middle.
constexpr TimePoint kShortestTry = 300ms;
/// The longest that an instrument's way back to local takes.
constexpr TimePoint kFarewell = 1s;
constexpr std::size_t kLongestAnswer = 200;
constexpr std::size_t kLongestShown = 40;

struct PartRow {
  std::string_view off;
  std::string_view ask;
};
constexpr PartRow RowOf(OffPart part) {
  return part == OffPart::Supply ? PartRow{"OUTPUT OFF", "OUTPUT?"} : PartRow{"INPUT OFF", "INPUT?"};
}

bool CountsAsOff(std::string_view answer) { return answer == "0" || answer == "OFF"; }

/// What it answered, fit for a sentence.
std::string Shown(std::string_view answer) {
  std::string shown(answer.substr(0, kLongestShown));
  std::replace_if(
      shown.begin(), shown.end(), [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, ' ');
  return TextOfBytes(shown);
}

/// One instrument.
class Part {
 public:
  Part(GpibBus& bus, const OffJob& job, const OffClock& clock, const OffLimits& limits)
      : bus_(bus), job_(job), row_(RowOf(job.part)), clock_(clock), limits_(limits) {}

  [[nodiscard]] bool IsOff() const { return why_.empty(); }
  [[nodiscard]] const std::string& Why() const { return why_; }

  void Try(TimePoint until) {
    const auto left = [&](TimePoint most) { return std::clamp(until - clock_.now(), TimePoint{1ms}, most); };
    try {
      if (!session_) session_ = bus_.Open(job_.address);
      session_->Write(row_.off, left(limits_.message));
      session_->Write(row_.ask, left(limits_.message));
      const std::string reply = session_->Read(kLongestAnswer, left(std::min(limits_.message, kAnswerTime)));
      const std::string_view answer = TrimBlanksAndLineEnds(reply);
      why_ = CountsAsOff(answer) ? "" : "it answers \"" + Shown(answer) + "\".";
    } catch (const GpibError& error) {
      session_.reset();
      why_ = WithoutName(error.Text());
    }
  }

  void GoLocal() {
    try {
      if (IsOff()) session_->Local();
    } catch (const GpibError&) {
      // It is off, which is what was asked.
    }
  }

 private:
  /// Who it is stands in the sentence that this goes into.
  [[nodiscard]] std::string WithoutName(const std::string& text) const {
    const std::string route = ", route " + bus_.RouteOf(job_.address) + ": ";
    const auto at = text.find(route);
    return at == std::string::npos ? text : text.substr(at + route.size());
  }

  GpibBus& bus_;
  OffJob job_;
  PartRow row_;
  const OffClock& clock_;
  const OffLimits& limits_;
  std::unique_ptr<GpibSession> session_;
  std::string why_ = "there was no time for it.";
};

}  // namespace

std::vector<std::string> SwitchOff(GpibBus& bus, const std::vector<OffJob>& jobs, const OffClock& clock,
                                   const OffLimits& limits) {
  const TimePoint end = clock.now() + limits.whole;
  std::vector<Part> parts;
  parts.reserve(jobs.size());
  for (const OffJob& job : jobs) parts.emplace_back(bus, job, clock, limits);
  const auto open = [&] {
    return std::count_if(parts.begin(), parts.end(), [](const Part& p) { return !p.IsOff(); });
  };
  while (true) {
    auto left = open();
    for (Part& part : parts) {
      if (part.IsOff()) continue;
      const TimePoint now = clock.now();
      part.Try(now + (end - now) / left--);
    }
    if (open() == 0 || end - clock.now() < kPause + kShortestTry) break;
    clock.sleep(kPause);
  }
  std::vector<std::string> why;
  for (Part& part : parts) {
    if (end - clock.now() >= kFarewell) part.GoLocal();
    why.push_back(part.Why());
  }
  return why;
}

}  // namespace orvane
