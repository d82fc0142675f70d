#include "bench/virtual_bench.h"

#include <algorithm>
#include <array>
#include <deque>
#include <span>
#include <utility>

#include "base/failure.h"

namespace orvane::bench {

/// The serial line. What the station writes is on its way for a while, and the Target acts when it has arrived, not
/// before; `CatchUp` lets it act as far as time has come, also when the loop had no turn meanwhile.
class VirtualBench::Line final : public SerialControl, public std::enable_shared_from_this<Line> {
 public:
  Line(EventLoop& loop, TargetLine& target) : loop_(loop), target_(target) {}

  [[nodiscard]] bool PortOpen() const override { return open_; }

  void Open() override {
    if (target_.Unplugged()) throw StationFailure("The virtual bench's serial device is missing.");
    open_ = true;
    openedAt_ = loop_.Now();
  }

  void Close() override {
    open_ = false;
    received_.clear();
    kept_.clear();
  }

  void OutputWithNext(std::string_view bytes) override { kept_.insert(kept_.end(), bytes.begin(), bytes.end()); }

  void Output(std::string_view bytes) override {
    CatchUp();
    if (!open_) {
      kept_.clear();
      throw StationFailure("The virtual bench's serial port is closed.");
    }
    if (target_.Unplugged()) {
      // A device that is gone takes its open port with it.
      Close();
      throw StationFailure("The virtual bench's serial device is gone.");
    }
    const std::size_t count = kept_.size() + bytes.size();
    outgoingFree_ = std::max(outgoingFree_, loop_.Now()) + kByteTime * count;
    travelling_.push_back({outgoingFree_, count});
    outgoing_.insert(outgoing_.end(), kept_.begin(), kept_.end());
    outgoing_.insert(outgoing_.end(), bytes.begin(), bytes.end());
    kept_.clear();
    At(outgoingFree_, [](Line& line) { line.CatchUp(); });
  }

  [[nodiscard]] std::string Input() override { return std::exchange(received_, {}); }

  void CatchUp() {
    while (!travelling_.empty() && travelling_.front().arrives <= loop_.Now()) {
      const Travelling bytes = travelling_.front();
      travelling_.pop_front();
      std::vector<Transmission> replies = target_.Receive(std::span(outgoing_).first(bytes.count));
      outgoing_.erase(outgoing_.begin(), outgoing_.begin() + static_cast<std::ptrdiff_t>(bytes.count));
      for (Transmission& reply : replies) {
        Send(std::move(reply), bytes.arrives);
      }
    }
  }

 private:
  struct Travelling {
    TimePoint arrives;
    std::size_t count;
  };

  template <class Act>
  void At(TimePoint when, Act act) {
    loop_.PostAt(when, [weak = weak_from_this(), act = std::move(act)] {
      if (const auto line = weak.lock()) act(*line);
    });
  }

  /// A reply comes in as a serial port hands it over: as many bytes at once as its buffer collects.
  void Send(Transmission reply, TimePoint commandEnd) {
    const TimePoint start = std::max(incomingFree_, commandEnd + reply.delay);
    for (std::size_t at = 0; at < reply.bytes.size(); at += kReceiveFifo) {
      const std::size_t end = std::min(reply.bytes.size(), at + kReceiveFifo);
      std::string piece(reply.bytes.begin() + static_cast<std::ptrdiff_t>(at),
                        reply.bytes.begin() + static_cast<std::ptrdiff_t>(end));
      const TimePoint arrives = start + kByteTime * end;
      At(arrives, [piece = std::move(piece), arrives](Line& line) { line.Receive(piece, arrives); });
    }
    incomingFree_ = start + kByteTime * reply.bytes.size();
  }

  /// What came while the port was closed is lost, also when this event is served after the next opening.
  void Receive(const std::string& piece, TimePoint arrived) {
    if (!open_ || arrived < openedAt_) return;
    received_ += piece;
    if (setup.rThreshold > 0 && onComm) onComm(kCommReceive);
  }

  EventLoop& loop_;
  TargetLine& target_;
  bool open_ = false;
  TimePoint openedAt_{0};
  std::string received_;
  /// What waits for the next output.
  Bytes kept_;
  std::deque<Travelling> travelling_;
  /// The bytes of all that travel, in one buffer.
  Bytes outgoing_;
  TimePoint outgoingFree_{0};
  TimePoint incomingFree_{0};
};

/// One instrument, open for messages.
class VirtualBench::Session final : public GpibSession {
 public:
  Session(Line& line, InstrumentLine* instrument, Integer address, const Block& block)
      : line_(line), instrument_(instrument), address_(address), block_(block) {}

  void Write(std::string_view text, TimePoint) override {
    line_.CatchUp();
    rest_.clear();
    if (instrument_ == nullptr || !instrument_->Take(text)) {
      throw GpibAbsent("No instrument listens at address " + std::to_string(address_) + " of the virtual bench.");
    }
  }

  [[nodiscard]] std::string Read(std::size_t size, TimePoint timeOut) override {
    line_.CatchUp();
    if (rest_.empty() && instrument_ != nullptr) {
      rest_ = instrument_->TakeReply().value_or(std::string{});
    }
    if (rest_.empty()) {
      block_(timeOut);
      throw GpibTimeOut("The instrument at address " + std::to_string(address_) +
                        " of the virtual bench said nothing within the time-out.");
    }
    std::string taken = rest_.substr(0, size);
    rest_.erase(0, taken.size());
    return taken;
  }

  void Local() override {}

 private:
  Line& line_;
  InstrumentLine* instrument_;
  Integer address_;
  const Block& block_;
  std::string rest_;
};

class VirtualBench::Bus488 final : public GpibBus {
 public:
  Bus488(Bench& models, Line& line, Block block, const BenchOptions& options)
      : line_(line),
        block_(std::move(block)),
        places_{{{options.testSetAddress, &models.testSet},
                 {options.supplyAddress, &models.supply},
                 {options.loadAddress, &models.load}}} {}

  [[nodiscard]] std::string RouteOf(const GpibAddress& /*address*/) const override { return "virtual"; }
  [[nodiscard]] std::unique_ptr<GpibSession> Open(const GpibAddress& address) override {
    const bool mine = address.board == 0 && address.secondary == 0;
    const auto place = std::find_if(places_.begin(), places_.end(),
                                    [&](const auto& p) { return mine && p.first == address.primary; });
    InstrumentLine* instrument = place == places_.end() ? nullptr : place->second;
    return std::make_unique<Session>(line_, instrument, address.primary, block_);
  }

 private:
  Line& line_;
  Block block_;
  std::array<std::pair<int, InstrumentLine*>, 3> places_;
};

VirtualBench::VirtualBench(EventLoop& loop, Block block, const BenchOptions& options)
    : models_(options),
      line_(std::make_shared<Line>(loop, models_.target)),
      bus_(std::make_unique<Bus488>(models_, *line_, std::move(block), options)) {}

VirtualBench::~VirtualBench() = default;

SerialControl& VirtualBench::Serial() { return *line_; }
GpibBus& VirtualBench::Bus() { return *bus_; }

}  // namespace orvane::bench
