#pragma once

#include <functional>
#include <utility>
#include <vector>

namespace orvane {

/// Tells whoever looks on that something was shown anew. Observers must outlive the signal or not be there at all:
/// they are front ends that live as long as the station. An observer reads; it never acts on the station.
template <class... Args>
class Signal {
 public:
  void Connect(std::function<void(Args...)> observer) { observers_.push_back(std::move(observer)); }
  /// Somebody listens: what would be made for a listener alone need not be made otherwise.
  [[nodiscard]] bool Heard() const { return !observers_.empty(); }
  void Emit(Args... args) const {
    for (const auto& observer : observers_) observer(args...);
  }

 private:
  std::vector<std::function<void(Args...)>> observers_;
};

}  // namespace orvane
