#include "app/golden/golden_unit.h"

#include <cstdlib>
#include <nlohmann/json.hpp>
#include <utility>

#include "app/unit_identity.h"

namespace orvane {
namespace {

using std::chrono::milliseconds;

template <class... Cases>
struct Each : Cases... {
  using Cases::operator()...;
};
template <class... Cases>
Each(Cases...) -> Each<Cases...>;

std::string DocumentOf(const GoldenFinding& finding, const RunRecord& reference) {
  nlohmann::ordered_json differences = nlohmann::ordered_json::array();
  for (const GoldenDifference& each : finding.differences) {
    nlohmann::ordered_json value = nullptr;
    if (each.value) value = *each.value;
    differences.push_back({{"reading", each.reading},
                           {"value", value},
                           {"expected", each.expected},
                           {"limit", each.allowed},
                           {"words", each.words}});
  }
  const nlohmann::ordered_json document{{"reference", reference.identity.id},
                                        {"inside", finding.Inside()},
                                        {"shortfall", finding.shortfall},
                                        {"differences", differences},
                                        {"pointsTo", finding.pointsTo}};
  return document.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace

GoldenUnit::GoldenUnit(GoldenOptions options, GoldenBook book, EventLoop& loop,
                       std::function<std::int64_t()> wallClock)
    : options_(std::move(options)),
      reference_(std::move(book.reference)),
      loop_(loop),
      wallClock_(std::move(wallClock)),
      excuse_(std::move(book.excuse)) {
  if (book.lastCheck) {
    finding_ = CheckGolden(reference_, *book.lastCheck, options_.limits);
    checkedMs_ = book.lastCheck->end ? book.lastCheck->end->endedMs : book.lastCheck->identity.beganMs;
    if (finding_->Inside()) TellAt(checkedMs_ + options_.checkEvery.count());
    // What the check began under has ended with it.
    if (finding_->Inside() && ExcuseIn(book.lastCheck->identity) == excuse_) excuse_.reset();
  }
  if (excuse_) TellAt(excuse_->untilMs);
}

GoldenState GoldenUnit::State() const {
  if (IsExcused()) return GoldenExcused{excuse_->why, excuse_->untilMs};
  return PlainState();
}

/// A clock that was set may have put the excuse's end far off.
bool GoldenUnit::IsExcused() const {
  if (!excuse_) return false;
  const std::int64_t left = excuse_->untilMs - wallClock_();
  return left > 0 && left <= options_.checkEvery.count();
}

GoldenState GoldenUnit::PlainState() const {
  if (!finding_) return GoldenNeverChecked{};
  if (!finding_->Inside()) return GoldenOutside{checkedMs_, *finding_};
  // A check that lies ahead is none that this clock has seen.
  if (std::abs(wallClock_() - checkedMs_) > options_.checkEvery.count()) return GoldenOverdue{checkedMs_};
  return GoldenGood{checkedMs_, checkedMs_ + options_.checkEvery.count()};
}

std::optional<std::string> GoldenUnit::NextUnitRefusal(const std::string& serial) const {
  if (serial == options_.serial) return std::nullopt;
  const std::string due = "The golden unit " + options_.serial + " is due: run it first.";
  using Refusal = std::optional<std::string>;
  return std::visit(Each{[&](const GoldenNeverChecked&) { return Refusal(due); },
                         [&](const GoldenOverdue&) { return Refusal(due); },
                         [&](const GoldenOutside& outside) {
                           return Refusal("The golden unit " + options_.serial +
                                          " was outside its limits: " + outside.finding.Text());
                         },
                         [](const auto&) { return Refusal(); }},
                    State());
}

bool GoldenUnit::Excuse(const std::string& why) {
  if (why.empty()) throw UnitFault("The reason is empty");
  if (const auto fault = FaultOfUnitText(why)) throw UnitFault("The reason " + *fault);
  if (std::holds_alternative<GoldenGood>(PlainState())) return false;
  excuse_ = GoldenExcuse{why, wallClock_() + options_.checkEvery.count()};
  TellAt(excuse_->untilMs);
  changed.Emit();
  return true;
}

/// Those tags are nobody else's.
void GoldenUnit::Mark(RunIdentity& run) const {
  run.tags.erase(kExcuseTag);
  run.tags.erase(kExcuseUntilTag);
  if (!IsExcused()) return;
  run.tags[kExcuseTag] = excuse_->why;
  run.tags[kExcuseUntilTag] = UtcText(excuse_->untilMs);
}

void GoldenUnit::Take(RunRecord& record) {
  if (record.identity.serial != options_.serial || record.identity.kind != "whole" || !record.end) return;
  finding_ = CheckGolden(reference_, record, options_.limits);
  checkedMs_ = record.end->endedMs;
  checkedHere_ = true;
  if (finding_->Inside()) {
    excuse_.reset();
    TellAt(checkedMs_ + options_.checkEvery.count());
  }
  record.readings.push_back({"", "golden.differences", static_cast<double>(finding_->Count()), "count", std::nullopt,
                             0, record.end->seconds});
  record.documents.push_back({"golden", "json", DocumentOf(*finding_, reference_)});
  checked.Emit(*finding_);
  changed.Emit();
}

/// Just behind that time, by the clock on the wall as it goes now.
void GoldenUnit::TellAt(std::int64_t ms) {
  const std::int64_t left = ms - wallClock_();
  if (left < 0 || left > options_.checkEvery.count()) return;
  loop_.PostAt(loop_.Now() + milliseconds(left + 1), [this, alive = std::weak_ptr(alive_)] {
    if (!alive.expired()) changed.Emit();
  });
}

}  // namespace orvane
