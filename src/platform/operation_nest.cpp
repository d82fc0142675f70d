#include "platform/operation_nest.h"

namespace orvane {
namespace {

/// Counts one operation for as long as it is on the stack.
class Entered {
 public:
  explicit Entered(int& depth) : depth_(depth) { ++depth_; }
  Entered(const Entered&) = delete;
  Entered& operator=(const Entered&) = delete;
  ~Entered() { --depth_; }

 private:
  int& depth_;
};

}  // namespace

std::optional<std::string> OperationNest::RunGuarded(const std::function<void()>& operation) {
  const Entered entered(depth_);
  try {
    operation();
    return std::nullopt;
  } catch (const StationFailure& failure) {
    if (depth_ > 1) throw NestStopped(failure.what());
    return failure.what();
  } catch (const NestStopped& stopped) {
    if (depth_ > 1) throw;
    return stopped.what();
  }
}

std::optional<std::string> OperationNest::Run(const std::function<void()>& operation) {
  auto failure = RunGuarded(operation);
  if (!failure) return failure;
  for (const auto& rest : onStopped) rest();
  for (const auto& tell : onFailure) tell(*failure);
  boxes_.Show({*failure, std::string(kStationTitle), BoxIcon::Stop, {BoxButton::Ok}});
  return failure;
}

}  // namespace orvane
