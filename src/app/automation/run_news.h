#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/automation/json_rpc.h"
#include "state/run_report.h"

namespace orvane {

/// What a client that asked for it is told of a run as it goes: its steps and its readings. It looks on and lives as
/// long as the station.
class RunNews {
 public:
  using Tell = std::function<void(std::string_view topic, const Json& params)>;

  RunNews(RunReport& report, Tell tell);
  RunNews(const RunNews&) = delete;
  RunNews& operator=(const RunNews&) = delete;

  /// The parameters of the method `subscribe`: what the client is told from now on, and nothing else of this.
  /// @return the topics as they hold. @throws RpcFailure for what is no topic; nothing is changed then.
  Json Subscribe(const Json& params);
  /// The client has gone.
  void Forget() { topics_.clear(); }

 private:
  [[nodiscard]] bool Wanted(std::string_view topic) const;
  void Entered(RunStep step);
  void Left(const StepRecord& step);
  /// A step that nothing ended is over with what it stands in.
  void EndOpenStep();
  void Read(const Reading& reading);

  RunReport& report_;
  Tell tell_;
  std::vector<std::string> topics_;
  std::optional<RunStep> open_;
};

}  // namespace orvane
