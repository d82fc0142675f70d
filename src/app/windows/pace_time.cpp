#include "app/windows/pace_time.h"

#include <QLabel>
#include <algorithm>
#include <charconv>

#include "adapters/qt/appearance.h"

namespace orvane {
namespace {

/// So many turns are tried that the clock can tell them, and so few that nobody waits.
constexpr std::int64_t kTriedTurns = 100'000;
constexpr int kTries = 5;

/// Turns of one pace; none for a text that is no count.
std::int64_t CountIn(const std::string& text) {
  std::int64_t count = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), count);
  return fault == std::errc() && end == text.data() + text.size() && count > 0 ? count : 0;
}

/// The shortest of some tries: a busy machine only lengthens them.
double NanosecondsATurn(EventLoop& loop) {
  auto shortest = TimePoint::max();
  for (int i = 0; i < kTries; ++i) {
    const TimePoint before = loop.Now();
    loop.Spin(kTriedTurns);
    shortest = std::min(shortest, loop.Now() - before);
  }
  return static_cast<double>(shortest.count()) / kTriedTurns;
}

}  // namespace

QWidget* MakePaceTime(TextBox& turns, EventLoop& loop, QWidget* parent) {
  auto* label = new QLabel(parent);
  const auto show = [&turns, label, perTurn = NanosecondsATurn(loop)] {
    const auto count = CountIn(turns.Text());
    const double milliseconds = static_cast<double>(count) * perTurn / 1e6;
    label->setText(count == 0 ? QString() : QString("a pace: %1 ms").arg(milliseconds, 0, 'g', 2));
  };
  show();
  turns.changed.Connect(show);
  return label;
}

}  // namespace orvane
