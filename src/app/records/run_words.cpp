#include "app/records/run_words.h"

#include <algorithm>

#include "app/records/shown_text.h"

namespace orvane {
namespace {

/// A UUID's first two groups are its time.
constexpr std::size_t kShortId = 13;

std::size_t CommonBeginning(std::string_view a, std::string_view b) {
  return static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin());
}

}  // namespace

Outcome OutcomeOf(const std::optional<RunEnd>& end) {
  if (!end) return Outcome::Open;
  if (end->verdict == "FAIL" || end->ending == Ending::Failure) return Outcome::Bad;
  if (end->verdict == "PASS") return end->complete ? Outcome::Good : Outcome::Doubtful;
  return end->ending == Ending::Verdict ? Outcome::Good : Outcome::Open;
}

std::string OutcomeText(const std::optional<RunEnd>& end) {
  if (!end) return "under way";
  if (end->verdict == "PASS" && !end->complete) return "PASS, not complete";
  if (end->verdict != "NONE") return end->verdict;
  return end->ending == Ending::Verdict ? "done" : std::string(EndingText(end->ending));
}

std::string TookText(const std::optional<RunEnd>& end) {
  return end && end->ending != Ending::Abandoned ? SecondsText(end->seconds) : std::string();
}

std::string_view ShortId(std::string_view id) { return id.substr(0, kShortId); }

std::size_t TellingLength(const std::vector<RunSummary>& runs) {
  std::vector<std::string_view> ids;
  for (const RunSummary& run : runs) ids.emplace_back(run.identity.id);
  std::sort(ids.begin(), ids.end());
  std::size_t length = kShortId;
  for (std::size_t i = 1; i < ids.size(); ++i) length = std::max(length, CommonBeginning(ids[i - 1], ids[i]) + 1);
  return length;
}

std::string ClockText(std::int64_t milliseconds) {
  std::string text = UtcText(milliseconds);
  std::replace(text.begin(), text.end(), 'T', ' ');
  return text.substr(0, text.find('.'));
}

}  // namespace orvane
