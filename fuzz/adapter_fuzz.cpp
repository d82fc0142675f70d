// What a `++` adapter sends. Behind a sound one, whose instruments answer what and when the input says, no question
// ever gets another one's reply, and one that is answered in time gets its own. Behind one that sends anything at
// all, a message takes its time-out and no longer, and gives one line or a failure.

#include <array>
#include <memory>
#include <optional>
#include <utility>

#include "adapters/gpib/adapter_session.h"
#include "portion.h"
#include "require.h"
#include "scripted_wire.h"

namespace {

using namespace orvane;
using namespace std::chrono_literals;
using fuzz::Portions;
using fuzz::Require;
using fuzz::Wire;

constexpr std::size_t kReadSize = 1000;
constexpr std::size_t kShortRead = 3;
constexpr std::array<Integer, 2> kAddresses{2, 5};
constexpr std::string_view kVersion = "GPIB adapter 6.95";

struct Instrument {
  std::string answer;     ///< to its next query
  TimePoint delay{0};     ///< of that answer
  bool saysMore = false;  ///< a second line behind it
  std::string output;     ///< not read yet
  TimePoint readyAt{0};
};

/// An adapter as its manual describes it: one command after the other, a read as long as its time-out.
class SoundAdapter {
 public:
  std::array<Instrument, kAddresses.size()> instruments;
  std::size_t pieceSize = 0;

  void Restart() {
    line_.clear();
    escaped_ = false;
    address_ = "0";
    busyUntil_ = Wire().now;
  }

  /// Whether it could answer at once; it may have reads to do that nobody waits for any more.
  [[nodiscard]] bool Idle() const { return busyUntil_ <= Wire().now; }

  void Take(std::string_view bytes) {
    for (const char c : bytes) {
      const bool escaped = std::exchange(escaped_, false);
      if (!escaped && c == '\x1B') {
        escaped_ = true;
      } else if (!escaped && c == '\n') {
        Obey(std::exchange(line_, {}));
      } else {
        if (line_.empty()) isCommand_ = !escaped && c == '+';
        line_ += c;
      }
    }
  }

 private:
  void Answer(std::string_view text) { Wire().Say(std::string(text) + "\r\n", busyUntil_ - Wire().now, pieceSize); }

  Instrument* Addressed() {
    for (std::size_t i = 0; i < kAddresses.size(); ++i) {
      if (address_ == std::to_string(kAddresses[i])) return &instruments[i];
    }
    return nullptr;
  }

  void Obey(const std::string& line) {
    busyUntil_ = std::max(busyUntil_, Wire().now);
    Instrument* instrument = Addressed();
    if (!isCommand_) {
      if (instrument == nullptr) return;
      instrument->output = instrument->answer;
      instrument->readyAt = busyUntil_ + instrument->delay;
    } else if (line == "++ver") {
      Answer(kVersion);
    } else if (line == "++addr") {
      Answer(address_);
    } else if (line.starts_with("++addr ")) {
      address_ = line.substr(7);
    } else if (line.starts_with("++read_tmo_ms ")) {
      readTimeOut_ = std::chrono::milliseconds(std::stol(line.substr(14)));
    } else if (line == "++clr" && instrument != nullptr) {
      instrument->output.clear();
    } else if (line == "++read eoi") {
      Read(instrument);
    }
  }

  void Read(Instrument* instrument) {
    const bool has = instrument != nullptr && !instrument->output.empty();
    if (!has || instrument->readyAt > busyUntil_ + readTimeOut_) {
      busyUntil_ += readTimeOut_;
      return;
    }
    busyUntil_ = std::max(busyUntil_, instrument->readyAt);
    Wire().Say(std::exchange(instrument->output, {}), busyUntil_ - Wire().now, pieceSize);
    if (!instrument->saysMore) return;
    busyUntil_ += 50ms;
    Wire().Say("nobody asked\n", busyUntil_ - Wire().now, pieceSize);
  }

  std::string line_;
  bool escaped_ = false;
  bool isCommand_ = false;
  std::string address_;
  TimePoint readTimeOut_ = 1s;
  TimePoint busyUntil_{0};
};

class Bench {
 public:
  Bench() {
    Wire() = {};
    for (std::size_t i = 0; i < kAddresses.size(); ++i) Open(i);
  }

  void Open(std::size_t i) {
    sessions_[i].reset();
    sessions_[i] = std::make_unique<AdapterSession>(GpibAddress{0, kAddresses[i], 0}, "prologix:", adapter_);
  }

  /// One message; no value when it failed, which makes the session a new one.
  template <class Message>
  auto Said(std::size_t i, TimePoint timeOut, const Message& message) -> std::optional<std::string> {
    const TimePoint begun = Wire().now;
    std::optional<std::string> reply;
    try {
      reply = message(*sessions_[i]);
    } catch (const GpibError&) {
      Open(i);
    }
    Require(Wire().now - begun <= timeOut, "a message took longer than its time-out");
    return reply;
  }

  std::function<void()> onConnected = [] {};

 private:
  std::shared_ptr<ControllerAdapter> adapter_ = std::make_shared<ControllerAdapter>([this](const Deadline& deadline) {
    ByteStream stream = ConnectTcp("", 0, deadline, "the adapter");
    onConnected();
    return stream;
  });
  std::array<std::unique_ptr<AdapterSession>, kAddresses.size()> sessions_;
};

TimePoint TimeOutOf(std::uint8_t byte) { return GpibTimeOutOf(static_cast<Integer>(5 + byte % 11)); }

/// @param onDevice what was on its way when a connection ends still comes in the next one
void SoundlyAnswered(Portions& input, bool onDevice) {
  Bench bench;
  SoundAdapter adapter;
  adapter.Restart();
  Wire().keepsOld = onDevice;
  bench.onConnected = [&] {
    if (!onDevice) adapter.Restart();
  };
  Wire().onSent = [&](std::string_view bytes) { adapter.Take(bytes); };
  for (int question = 0; !input.Empty(); ++question) {
    const std::uint8_t act = input.Byte();
    const std::size_t which = act % kAddresses.size();
    const TimePoint timeOut = TimeOutOf(input.Byte());
    Instrument& instrument = adapter.instruments[which];
    instrument.delay = std::chrono::milliseconds(20 * input.Byte());
    instrument.saysMore = (act & 16) != 0;
    adapter.pieceSize = input.Byte();
    instrument.answer = std::to_string(question) + " " + std::string(input.Until('\n')) + "\n";
    if (act & 2) Wire().Close();
    const bool wasSound = (act & 2) == 0 && timeOut >= 10s && adapter.Idle();

    const std::string query = (act & 4) != 0 ? "+\r\x1B?" : "FETC?";
    const bool written = bench
                             .Said(which, timeOut,
                                   [&](GpibSession& session) {
                                     session.Write(query, timeOut);
                                     return std::string();
                                   })
                             .has_value();
    if (act & 8) continue;  // nobody reads it
    const std::size_t size = (act & 32) != 0 ? kShortRead : kReadSize;
    const std::string expected = instrument.answer.substr(0, size);
    const auto reply = bench.Said(which, timeOut, [&](GpibSession& session) { return session.Read(size, timeOut); });
    if (reply) Require(written && *reply == expected, "another question's reply");
    const bool tellsVersion = instrument.answer.find(kVersion) != std::string::npos;
    Require(reply || !wasSound || tellsVersion, "a reply that came in time was not read");
    if (!reply && tellsVersion) return;
  }
}

void AnsweredAnyhow(Portions& input) {
  Bench bench;
  const bool greets = (input.Byte() & 1) != 0;
  const auto say = [&] {
    const std::uint8_t how = input.Byte();
    if ((how & 7) == 7) return Wire().Close();
    if (greets && (how & 8) != 0) Wire().Say(std::string(kVersion).append("\r\n"));
    Wire().Say(input.Text(how >> 4U), std::chrono::milliseconds((how & 3) * 100));
  };
  Wire().onSent = [&](std::string_view bytes) {
    // Its own two addresses back, and the version: without them nothing goes on.
    if (greets && bytes.starts_with("++savecfg")) {
      std::string greeting;
      for (std::size_t at = bytes.find("++addr "); at != bytes.npos; at = bytes.find("++addr ", at + 1)) {
        greeting += bytes.substr(at + 7, bytes.find('\n', at) - at - 6);
      }
      Wire().Say(greeting.append(kVersion).append("\n"));
      return;
    }
    say();
  };
  for (int message = 0; message < 8 && !input.Empty(); ++message) {
    const std::uint8_t act = input.Byte();
    const TimePoint timeOut = TimeOutOf(act >> 4U);
    const std::size_t which = act % kAddresses.size();
    (void)bench.Said(which, timeOut, [&](GpibSession& session) {
      session.Write("FETC?", timeOut);
      return std::string();
    });
    const std::size_t size = (act & 2) != 0 ? kReadSize : kShortRead;
    const auto reply = bench.Said(which, timeOut, [&](GpibSession& session) { return session.Read(size, timeOut); });
    if (!reply) continue;
    const auto end = reply->find('\n');
    Require(reply->size() <= size && !reply->empty(), "more than was asked for, or nothing");
    Require(end == reply->size() - 1 || (end == reply->npos && reply->size() == size), "a reply is no line");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Portions input(data, size);
  const std::uint8_t how = input.Byte() % 4;
  if (how < 2) {
    SoundlyAnswered(input, how == 1);
  } else {
    AnsweredAnyhow(input);
  }
  return 0;
}
