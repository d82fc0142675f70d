#pragma once

#include <sys/types.h>

#include <QSocketNotifier>
#include <memory>
#include <string>

#include "adapters/gpib/gpib_routes.h"
#include "app/safe_off/off_hand.h"
#include "platform/event_loop.h"

namespace orvane {

/// The process `orvane-safe-off`, which does it: in a session of its own, so that what is sent to the station's group
/// does not reach it, with a pipe to the station that ends with the station and with nothing else. One that dies is
/// started anew. It needs a QCoreApplication.
class OffProcess final : public OffHand {
 public:
  /// @throws OptionFault when it cannot be started.
  OffProcess(EventLoop& loop, GpibRoutes routes);
  /// The process takes the station for dead, unless it was dismissed.
  ~OffProcess() override;

  void Tell(const OffPlaces& places) override;
  void Note(const std::string& file) override;
  void SwitchOff(std::function<void(const OffOutcome&)> answered) override;
  void Dismiss() override;

  /// Whether there is one now.
  [[nodiscard]] bool Runs() const { return pipe_ >= 0; }
  /// Something is the matter with the process itself, as a sentence. As an event of the loop.
  std::function<void(const std::string& text)> onTrouble;

 private:
  void Start();
  void Say(const OffWord& word) const;
  void Hear();
  void StartAnew();
  void Settle(const OffOutcome& outcome);
  /// Of everything that was to be switched off.
  [[nodiscard]] OffOutcome NotSure(const std::string& why) const;
  void HangUp();

  EventLoop& loop_;
  GpibRoutes routes_;
  OffPlaces places_ = kUsualOffPlaces;
  std::string note_;
  int starts_ = 0;
  pid_t process_ = -1;
  int pipe_ = -1;
  std::unique_ptr<QSocketNotifier> arrived_;
  std::string received_;
  long number_ = 0;
  /// Of the order that is open.
  std::function<void(const OffOutcome&)> answered_;
};

}  // namespace orvane
