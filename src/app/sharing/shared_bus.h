#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "app/sharing/lock_file.h"
#include "app/sharing/shared_instruments.h"
#include "platform/gpib.h"
#include "state/instrument_wait.h"

namespace orvane {

/// A bus some of whose instruments other stations use too. The first message to one takes it, and waits for it where
/// another station has it; the loop is served meanwhile. It is kept until the outermost operation is over, a whole
/// run with all that stands around it: a station holds an instrument to the band, channel and level that it has told
/// it, so that another one may come between two runs and nowhere else.
class SharedBus final : public GpibBus {
 public:
  /// `station` is what others are told of who has it.
  SharedBus(GpibBus& bus, EventLoop& loop, SharedInstruments wishes, std::string station);
  ~SharedBus() override;

  [[nodiscard]] std::unique_ptr<GpibSession> Open(const GpibAddress& address) override;
  [[nodiscard]] std::string RouteOf(const GpibAddress& address) const override { return bus_.RouteOf(address); }

  /// Told by whoever knows the station.
  void OperationIsOver();

  /// How often an operator has asked for a stop: one more ends a wait.
  std::function<long()> stopsAsked = [] { return 0L; };
  /// Whether it waits at all.
  std::function<bool()> mayWait = [] { return true; };
  /// What is waited for; no value behind a wait.
  std::function<void(const std::optional<InstrumentWait>& wait)> onWait = [](const auto&) {};

  /// How long was waited since this was asked last.
  [[nodiscard]] TimePoint TakeWaited();

 private:
  class Session;
  class Wait;
  /// Something that can be lent, with all its instruments here.
  struct Lent {
    std::unique_ptr<LockFile> lock;
    std::set<Session*> sessions;
    /// Why it was not to be had: what follows in the same operation does not wait once more.
    std::string refused;
  };

  [[nodiscard]] std::string PlaceOf(const GpibAddress& address) const;
  [[nodiscard]] bool IsShared(const GpibAddress& address) const;
  /// The instrument is this station's when it comes back. @throws GpibError
  void Take(Session& session);
  [[nodiscard]] bool TryTake(Lent& lent, Session& session);
  [[nodiscard]] static std::string HolderOf(const Lent& lent);
  [[noreturn]] static void Refuse(Lent& lent, const Session& session, const std::string& why);
  static void GiveBack(Lent& lent);

  GpibBus& bus_;
  EventLoop& loop_;
  SharedInstruments wishes_;
  std::string holder_;
  std::map<std::string, Lent> lents_;
  TimePoint waited_{0};
  /// Told ones that are on the stack.
  int waits_ = 0;
};

}  // namespace orvane
