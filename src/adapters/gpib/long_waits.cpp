#include "adapters/gpib/long_waits.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace orvane {
namespace {

TimePoint Now() { return std::chrono::steady_clock::now().time_since_epoch(); }

class WaitedSession final : public GpibSession {
 public:
  WaitedSession(std::unique_ptr<GpibSession> session, LongWaits& waits, Integer address)
      : session_(std::move(session)), waits_(waits), address_(address) {}

  void Write(std::string_view text, TimePoint timeOut) override {
    const LongWaits::Message message(waits_, address_, timeOut);
    session_->Write(text, timeOut);
  }
  [[nodiscard]] std::string Read(std::size_t size, TimePoint timeOut) override {
    const LongWaits::Message message(waits_, address_, timeOut);
    return session_->Read(size, timeOut);
  }
  void Local() override {
    const LongWaits::Message message(waits_, address_, TimePoint::zero());
    session_->Local();
  }
  [[nodiscard]] bool TryLock() override { return session_->TryLock(); }
  void Unlock() override { session_->Unlock(); }

 private:
  std::unique_ptr<GpibSession> session_;
  LongWaits& waits_;
  Integer address_;
};

}  // namespace

LongWaits::Message::Message(LongWaits& waits, Integer address, TimePoint limit) : waits_(waits) {
  waits_.begun_ = {address, Now(), limit};
}

std::optional<LongWaits::Wait> LongWaits::UnderWay() const {
  if (!begun_) return std::nullopt;
  return Wait{begun_->address, Now() - begun_->at, begun_->limit};
}

TimePoint LongWaits::UntilGlance() const {
  if (!onWait) return TimePoint::max();
  const TimePoint lasts = begun_ ? Now() - begun_->at : kUntold;
  return lasts < kUntold ? kUntold - lasts : TimePoint(kGlance);
}

void LongWaits::Glance() const {
  if (onWait && begun_ && Now() - begun_->at >= kUntold) onWait();
}

void LongWaits::Sleep(TimePoint span) const {
  const TimePoint end = Now() + span;
  for (TimePoint left = span; left > TimePoint::zero(); left = end - Now()) {
    std::this_thread::sleep_for(std::min(left, UntilGlance()));
    Glance();
  }
}

std::unique_ptr<GpibSession> WaitedBus::Open(const GpibAddress& address) {
  return std::make_unique<WaitedSession>(bus_.Open(address), waits_, address.primary);
}

}  // namespace orvane
