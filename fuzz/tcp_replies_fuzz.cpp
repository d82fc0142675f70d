// What an instrument on a raw socket sends. A message gives what a plain reading of the bytes on the wire says, byte
// by byte: one reply up to its line feed or as much as was asked for, and nothing that came before the question; or
// it fails as they say, a closed connection at once and silence when its time is over, and takes the time that they
// take.

#include <optional>
#include <utility>

#include "adapters/gpib/tcp_gpib_session.h"
#include "portion.h"
#include "require.h"
#include "scripted_wire.h"

namespace {

using namespace orvane;
using namespace std::chrono_literals;
using fuzz::Portions;
using fuzz::Require;
using fuzz::Wire;

/// What became of a message, and when.
struct Outcome {
  enum class Kind { kWritten, kRead, kClosed, kTimeOut } kind;
  std::string reply;
  TimePoint at;
  friend bool operator==(const Outcome&, const Outcome&) = default;
};

/// The bytes of one connection as they arrive, taken one at a time.
class PlainConnection {
 public:
  void Say(std::string_view bytes, TimePoint at) {
    for (const char c : bytes) coming_.push_back({at, c});
  }
  void Close(TimePoint at) { coming_.push_back({at, std::nullopt}); }

  /// What is there already answers no question, nor does the rest of a line of which something was there.
  Outcome Write(TimePoint now) {
    while (!coming_.empty() && coming_.front().at <= now) {
      if (!coming_.front().byte) return {Outcome::Kind::kClosed, "", now};
      Take();
    }
    dropping_ = insideLine_;
    return {Outcome::Kind::kWritten, "", now};
  }

  Outcome Read(std::size_t size, TimePoint now, TimePoint until) {
    std::string reply;
    while (true) {
      if (coming_.empty() || coming_.front().at >= until) return {Outcome::Kind::kTimeOut, "", until};
      now = std::max(now, coming_.front().at);
      if (!coming_.front().byte) return {Outcome::Kind::kClosed, "", now};
      const char c = Take();
      if (!dropping_) reply += c;
      dropping_ = dropping_ && insideLine_;
      if (reply.ends_with('\n') || reply.size() == size) return {Outcome::Kind::kRead, reply, now};
    }
  }

 private:
  struct Arrival {
    TimePoint at;
    std::optional<char> byte;  ///< none: the connection is closed
  };

  char Take() {
    const char c = *coming_.front().byte;
    coming_.pop_front();
    insideLine_ = c != '\n';
    return c;
  }

  std::deque<Arrival> coming_;
  bool insideLine_ = false;
  bool dropping_ = false;
};

/// An instrument that answers each message as the next bytes of the input say.
class Instrument {
 public:
  explicit Instrument(Portions& input) : input_(input) {}

  std::string heard;

  PlainConnection& Connected() {
    closed_ = false;
    last_ = Wire().now;
    return plain_ = {};
  }

  void Take(std::string_view bytes) {
    heard += bytes;
    if (!bytes.ends_with('\n')) return;
    const std::uint8_t how = input_.Byte();
    const std::size_t pieceSize = (how & 8) != 0 ? 1U + input_.Byte() % 16U : 0;
    for (std::uint8_t line = 0; line < how % 4; ++line) {
      const TimePoint delay = (how & 16) != 0 ? 20ms * input_.Byte() : 0ms;
      Say(std::string(input_.Until('\n')) + ((how & 32) != 0 && line == 0 ? "" : "\n"), delay, pieceSize);
    }
    if ((how & 0xC4) == 0xC4) Close();
  }

 private:
  void Say(const std::string& bytes, TimePoint delay, std::size_t pieceSize) {
    if (closed_) return;
    last_ = std::max(last_, Wire().now) + delay;
    Wire().Say(bytes, last_ - Wire().now, pieceSize);
    plain_.Say(bytes, last_);
  }
  void Close() {
    if (std::exchange(closed_, true)) return;
    Wire().coming.push_back({last_, "", true});
    plain_.Close(last_);
  }

  Portions& input_;
  PlainConnection plain_;
  TimePoint last_{0};
  bool closed_ = false;
};

/// How the session says it.
template <class Message>
Outcome OutcomeOf(Outcome::Kind done, const Message& message) {
  constexpr int kTimeOut = 6;
  try {
    const std::string reply = message();
    return {done, reply, Wire().now};
  } catch (const GpibError& error) {
    return {error.iberr == kTimeOut ? Outcome::Kind::kTimeOut : Outcome::Kind::kClosed, "", Wire().now};
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  Portions input(bytes, size);
  Instrument instrument(input);
  Wire() = {};
  Wire().onSent = [&](std::string_view message) { instrument.Take(message); };
  for (int sessions = 0; sessions < 4 && !input.Empty(); ++sessions) {
    TcpGpibSession session(5, "tcp:", "", 5025);
    PlainConnection& plain = instrument.Connected();
    Wire().coming.clear();
    while (!input.Empty()) {
      const std::uint8_t act = input.Byte();
      const TimePoint timeOut = GpibTimeOutOf(static_cast<Integer>(5 + act % 11));
      Wire().now += 10ms * (act & 16);
      const TimePoint begun = Wire().now;
      const bool reads = (act & 32) != 0;
      const std::size_t asked = (act & 64) != 0 ? 1000 : 1 + act % 7;
      // What the instrument says to the message comes behind all that is looked at here.
      const Outcome expected =
          reads ? plain.Read(asked, begun, begun + std::max<TimePoint>(timeOut, 1ms)) : plain.Write(begun);
      const std::string message = "FETC" + std::to_string(act) + "?";
      instrument.heard.clear();
      const Outcome outcome = OutcomeOf(expected.kind, [&] {
        if (reads) return session.Read(asked, timeOut);
        session.Write(message, timeOut);
        return std::string();
      });
      Require(outcome == expected, "a message ended otherwise than the bytes on the wire say");
      const bool written = outcome.kind == Outcome::Kind::kWritten;
      Require(instrument.heard == (written ? message + "\n" : ""), "another message went out");
      if (!written && outcome.kind != Outcome::Kind::kRead) break;
    }
  }
  return 0;
}
