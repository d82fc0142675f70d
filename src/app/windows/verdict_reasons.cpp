#include "app/windows/verdict_reasons.h"

#include <algorithm>

#include "adapters/qt/appearance.h"
#include "state/reading_words.h"

namespace orvane {
namespace {

constexpr int kCharacters = 60;

std::string FailedSteps(const RunReport& report) {
  std::string text;
  for (const StepRecord& step : report.Steps()) {
    if (!step.complete) text.append(StepName(step.step)).append(": ").append(step.reason).append("\n");
  }
  return text;
}

/// The first ones: the button beneath them stays in sight, and the report has all.
std::string Outside(const RunReport& report) {
  constexpr std::size_t kMost = 3;
  std::string text;
  const std::vector<Reading>& outside = report.Outside();
  for (std::size_t i = 0; i < std::min(outside.size(), kMost); ++i) text.append(LimitsText(outside[i])).append("\n");
  if (outside.size() > kMost) text.append("and ").append(std::to_string(outside.size() - kMost)).append(" more\n");
  return text;
}

}  // namespace

VerdictReasons::VerdictReasons(Of verdict, RunReport& report, QWidget* parent)
    : QLabel(parent), verdict_(verdict), report_(report) {
  setObjectName("verdictReasons");
  setTextFormat(Qt::PlainText);
  setTextInteractionFlags(Qt::TextSelectableByMouse);
  setWordWrap(true);
  setMinimumWidth(fontMetrics().horizontalAdvance(u'0') * kCharacters);
  // Within a statement of the station nothing may reach for the display, which may have gone.
  const auto soon = ShownSoon(*this, [this] { Look(); });
  report.concluded.Connect([soon](Verdict) { soon(); });
  report.began.Connect(soon);
  Look();
}

void VerdictReasons::Look() {
  const auto verdict = report_.Concluded();
  std::string text;
  if (verdict == Verdict::Fail && verdict_ == Of::Fail) {
    text = FailedSteps(report_) + Outside(report_) +
           "Take the unit through once more. If it fails again, it goes to repair.";
  } else if (verdict == Verdict::Pass && verdict_ == Of::Pass && report_.Doubt()) {
    text = Outside(report_);
  }
  if (text.ends_with("\n")) text.pop_back();
  setText(ToQt(text));
  setVisible(!text.empty());
}

}  // namespace orvane
