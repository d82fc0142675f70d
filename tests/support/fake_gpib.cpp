#include "support/fake_gpib.h"

namespace orvane::test {
namespace {

class FakeSession final : public GpibSession {
 public:
  FakeSession(VirtualEventLoop& loop, Journal& journal, FakeInstrument& instrument, int primary)
      : loop_(loop), journal_(journal), instrument_(instrument), primary_(primary) {}

  void Write(std::string_view text, TimePoint timeOut) override {
    instrument_.lastTimeOut = timeOut;
    if (instrument_.absent) throw GpibAbsent("GPIB address " + std::to_string(primary_) + ": nobody answers.");
    instrument_.lines.emplace_back(text);
    journal_.Add(std::to_string(primary_) + ": " + std::string(text));
  }

  std::string Read(std::size_t size, TimePoint timeOut) override {
    if (instrument_.silent) {
      loop_.Block(timeOut);
      throw GpibTimeOut("GPIB address " + std::to_string(primary_) + ": no reply in time.");
    }
    if (instrument_.absent) throw GpibAbsent("GPIB address " + std::to_string(primary_) + ": nobody answers.");
    std::string reply;
    if (instrument_.readings.empty()) {
      reply = instrument_.answer(instrument_.lines.empty() ? "" : instrument_.lines.back());
    } else {
      reply = instrument_.readings.front();
      instrument_.readings.pop_front();
    }
    return reply.substr(0, size);
  }

  void Local() override {
    if (instrument_.clings) throw GpibTimeOut("GPIB address " + std::to_string(primary_) + ": it stays remote.");
    ++instrument_.locals;
  }

 private:
  VirtualEventLoop& loop_;
  Journal& journal_;
  FakeInstrument& instrument_;
  int primary_;
};

}  // namespace

std::unique_ptr<GpibSession> FakeGpibBus::Open(const GpibAddress& address) {
  opened_.push_back(address);
  FakeInstrument& instrument = At(address.primary);
  ++instrument.sessions;
  return std::make_unique<FakeSession>(loop_, journal_, instrument, address.primary);
}

}  // namespace orvane::test
