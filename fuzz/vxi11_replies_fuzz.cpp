// What a VXI-11 server sends. Behind one whose answers are sound calls and results, a reply is what its pieces say up
// to END, or as much as was asked for; behind one that sends anything at all, a message ends in its time with a
// failure or with no more than was asked for.

#include <optional>

#include "adapters/gpib/vxi11_gpib_session.h"
#include "portion.h"
#include "require.h"
#include "scripted_wire.h"
#include "vxi11/vxi11_codes.h"

namespace {

using namespace orvane;
using namespace std::chrono_literals;
using fuzz::Portions;
using fuzz::Require;
using fuzz::Wire;

std::string Word(std::uint32_t value) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift & 0xFF);
  return bytes;
}

std::uint32_t WordAt(std::string_view bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    value = value * 256 + (at + i < bytes.size() ? static_cast<unsigned char>(bytes[at + i]) : 0U);
  }
  return value;
}

std::string Opaque(std::string_view data) {
  return Word(static_cast<std::uint32_t>(data.size())) + std::string(data) +
         std::string((4 - data.size() % 4) % 4, '\0');
}

/// A server that answers each call as the next bytes of the input say.
class Server {
 public:
  explicit Server(Portions& input) : input_(input) {}

  /// All answers since the last look were sound ones, in time and without an error.
  bool sound = true;
  /// Of the instrument, not read yet.
  std::string output;
  /// All of it was read: an instrument that is asked for more has nothing to say, up to the time-out.
  bool ended = false;

  void Take(std::string_view call) {
    const std::uint8_t how = input_.Byte();
    pieceSize_ = (how & 8) != 0 ? 1U + input_.Byte() % 16U : 0;
    switch (how & 7) {
      case 0:
        sound = false;
        return Say(Record(Header(call) + std::string(input_.Text(input_.Byte()))));
      case 1:
        sound = false;
        return Say(Record(std::string(input_.Text(input_.Byte()))));
      case 2:
        sound = false;
        return Say(std::string(input_.Text(input_.Byte())));
      case 3:
        sound = false;
        return Wire().Close();
      case 4:
        sound = false;
        return;
      default:
        return Say(Record(Header(call) + SoundResult(call)));
    }
  }

 private:
  // Of a call on the wire: its mark, number, direction, RPC version, program, version, procedure, no credentials.
  static constexpr std::size_t kNumber = 4;
  static constexpr std::size_t kProcedure = 24;
  static constexpr std::size_t kArguments = 44;

  void Say(const std::string& bytes) { Wire().Say(bytes, 0ms, pieceSize_); }

  /// In one fragment, or with its last byte in a second one.
  std::string Record(const std::string& message) {
    const auto size = static_cast<std::uint32_t>(message.size());
    if (pieceSize_ % 2 == 0 || size == 0) return Word(size | 0x80000000U) + message;
    return Word(size - 1) + message.substr(0, size - 1) + Word(0x80000001U) + message.back();
  }

  static std::string Header(std::string_view call) {
    return Word(WordAt(call, kNumber)) + Word(1) + Word(0) + Word(0) + Word(0) + Word(0);
  }

  std::string SoundResult(std::string_view call) {
    const std::string_view arguments = call.substr(kArguments);
    switch (WordAt(call, kProcedure)) {
      case CREATE_LINK:
        return Word(0) + Word(input_.Byte()) + Word(0) + Word(1 + input_.Byte());
      case DEVICE_WRITE:
        return Word(0) + Word(WordAt(arguments, 16));
      case DEVICE_READ: {
        constexpr std::uint32_t kAsManyAsAsked = 1;
        constexpr std::uint32_t kEnd = 4;
        if (ended) return Word(vxi11::kIoTimeOut) + Word(0) + Opaque("");
        const std::size_t asked = WordAt(arguments, 4);
        const std::string piece =
            output.substr(0, input_.Empty() ? asked : std::min<std::size_t>(asked, input_.Byte()));
        output.erase(0, piece.size());
        ended = output.empty();
        return Word(0) + Word((ended ? kEnd : 0) + (piece.size() == asked ? kAsManyAsAsked : 0)) + Opaque(piece);
      }
      default:
        return Word(0);
    }
  }

  Portions& input_;
  std::size_t pieceSize_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  Portions input(bytes, size);
  Server server(input);
  Wire() = {};
  Wire().onSent = [&](std::string_view call) { server.Take(call); };
  for (int session = 0; session < 4 && !input.Empty(); ++session) {
    Vxi11GpibSession link(5, "vxi11:", {"", 1024, "gpib0,5", "the gateway", 111});
    Wire().coming.clear();
    for (int message = 0; message < 4 && !input.Empty(); ++message) {
      const std::uint8_t act = input.Byte();
      const TimePoint timeOut = GpibTimeOutOf(static_cast<Integer>(5 + act % 11));
      const std::size_t asked = (act & 16) != 0 ? 1000 : 7;
      const TimePoint begun = Wire().now;
      server.sound = true;
      const std::string output(input.Until('\n'));
      server.output = output;
      server.ended = false;
      std::optional<std::string> reply;
      const bool done = fuzz::Done<GpibError>([&] {
        if ((act & 32) != 0) return link.Write("FETCH:POWER? 12345678901234567890", timeOut);
        reply = link.Read(asked, timeOut);
      });
      // The server's own time-out has passed by then, and a twentieth more.
      Require(Wire().now - begun <= timeOut + timeOut / 20 + 1ms, "a message took longer than its time-out");
      Require(done || !server.sound, "a sound answer was refused");
      if (reply) Require(reply->size() <= asked, "more than was asked for");
      if (reply && server.sound) Require(*reply == output.substr(0, asked), "another reply");
      if (!done) break;
    }
    if ((input.Byte() & 1) != 0) (void)fuzz::Done<GpibError>([&] { link.Local(); });
  }
  return 0;
}
