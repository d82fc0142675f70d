#include "adapters/qt/hands.h"

namespace orvane {
namespace {

/// Runs its work at the end of its scope, however that ends.
class AtEnd {
 public:
  explicit AtEnd(const std::function<void()>& work) : work_(work) {}
  AtEnd(const AtEnd&) = delete;
  AtEnd& operator=(const AtEnd&) = delete;
  ~AtEnd() {
    if (work_) work_();
  }

 private:
  const std::function<void()>& work_;
};

}  // namespace

void Hands::Do(std::function<void(Operator&)> act, std::function<void()> shownAnew) {
  loop_.Post([this, act = std::move(act), shownAnew = std::move(shownAnew)] {
    const AtEnd showAnew(shownAnew);
    if (!mayAct_()) return;
    try {
      act(hand_);
    } catch (const ControlDisabled&) {
      // The control was disabled between the act and its turn: as if the mouse had come too late.
    }
  });
}

}  // namespace orvane
