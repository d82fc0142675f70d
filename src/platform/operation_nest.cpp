#include "platform/operation_nest.h"

#include "base/counted.h"

namespace orvane {

std::optional<std::string> OperationNest::RunGuarded(const std::function<void()>& operation) {
  const Counted entered(depth_);
  try {
    operation();
    return std::nullopt;
  } catch (const StationFailure& failure) {
    if (depth_ > 1) throw NestStopped(failure.Text());
    return failure.Text();
  } catch (const NestStopped& stopped) {
    if (depth_ > 1) throw;
    return stopped.Text();
  }
}

std::optional<std::string> OperationNest::Run(const std::function<void()>& operation) {
  auto failure = RunGuarded(operation);
  if (Idle() && onIdle) onIdle();
  if (!failure) return failure;
  for (const auto& rest : onStopped) rest();
  for (const auto& tell : onFailure) tell(*failure);
  boxes_.Show({*failure, std::string(kStationTitle), BoxIcon::Stop, {BoxButton::Ok}});
  return failure;
}

std::string OperationNest::Refuse(const std::string& why) {
  const auto failure = Run([&] { boxes_.Show({why, std::string(kStationTitle), BoxIcon::Stop, {BoxButton::Ok}}); });
  return failure.value_or(why);
}

}  // namespace orvane
