#include "state/reply_state.h"

namespace orvane {

bool Gathering(const ReplyState& state) {
  return !state.ReplyDone && state.ReplySpin > 0 && state.ReplySpin < kGatheredSpin;
}

int StatusOf(const ReplyState& state) { return state.TMStatus.empty() ? kNothingCame : ToLong(state.TMStatus); }

}  // namespace orvane
