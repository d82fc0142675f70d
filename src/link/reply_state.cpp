#include "link/reply_state.h"

namespace orvane {

int StatusOf(const ReplyState& state) {
  constexpr int kNothingCame = 255;
  return state.TMStatus.empty() ? kNothingCame : ToLong(state.TMStatus);
}

}  // namespace orvane
