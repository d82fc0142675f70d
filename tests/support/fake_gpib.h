#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/gpib.h"
#include "platform/virtual_event_loop.h"
#include "support/journal.h"

namespace orvane::test {

/// One instrument on the fake bus.
struct FakeInstrument {
  bool absent = false;
  /// Never answers: a read lasts its time-out, also from an absent one.
  bool silent = false;
  /// Does not let itself be returned to local.
  bool clings = false;
  std::vector<std::string> lines;
  /// Replies for the next reads, in order; ahead of `answer`.
  std::deque<std::string> readings;
  /// Reply to the last line; read when `readings` is empty.
  std::function<std::string(const std::string& lastLine)> answer = [](const std::string& line) {
    return line == "*IDN?" ? std::string("FAKE,INSTRUMENT,0,1\n") : std::string("0\n");
  };
  int sessions = 0;
  int locals = 0;
  TimePoint lastTimeOut{0};
};

/// A bus whose instruments are scripted; a silent one costs its time-out on the virtual clock.
class FakeGpibBus final : public GpibBus {
 public:
  FakeGpibBus(VirtualEventLoop& loop, Journal& journal) : loop_(loop), journal_(journal) {}

  [[nodiscard]] std::unique_ptr<GpibSession> Open(const GpibAddress& address) override;
  [[nodiscard]] std::string RouteOf(const GpibAddress& address) const override {
    return "fake:" + std::to_string(address.primary);
  }
  /// The instrument at a primary address; made when first asked for.
  [[nodiscard]] FakeInstrument& At(int primary) { return instruments_[primary]; }
  [[nodiscard]] const std::vector<GpibAddress>& Opened() const { return opened_; }

 private:
  VirtualEventLoop& loop_;
  Journal& journal_;
  std::map<int, FakeInstrument> instruments_;
  std::vector<GpibAddress> opened_;
};

}  // namespace orvane::test
