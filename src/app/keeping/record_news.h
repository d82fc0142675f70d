#pragma once

#include <optional>
#include <utility>

#include "app/keeping/record_keeper.h"
#include "platform/signal.h"

namespace orvane {

/// What became of the last run's record, or of the store since, for whoever shows it.
class RecordNews {
 public:
  /// No value while a run is under way, and ahead of the first one.
  [[nodiscard]] const std::optional<Kept>& Last() const { return last_; }
  void Tell(Kept kept) {
    last_ = std::move(kept);
    changed.Emit();
  }
  void Forget() {
    last_.reset();
    changed.Emit();
  }

  Signal<> changed;

 private:
  std::optional<Kept> last_;
};

}  // namespace orvane
