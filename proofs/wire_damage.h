#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "platform/serial_control.h"
#include "platform/virtual_event_loop.h"

namespace orvane::proofs {

enum class Way { ToTarget, ToStation };
enum class Harm { Lost, Doubled, Flipped, Delayed, Exchanged };

/// What becomes of one byte on its way.
struct Damage {
  Way way = Way::ToStation;
  std::uint64_t byte = 0;  ///< counted from 0 since `Harm`
  Harm harm = Harm::Lost;
  unsigned value = 0;  ///< of a flipped byte the bits, of a delayed one the milliseconds
};

/// "in:1204:flipped:64", "out:17:lost"
[[nodiscard]] std::string TextOf(const Damage& damage);
/// No value for a text that is no damage.
[[nodiscard]] std::optional<Damage> DamageOf(std::string_view text);

/// A line between the station and the Target's line, on which one byte comes to harm. Bytes keep their order but for
/// an exchanged one; what follows a delayed byte waits behind it.
class WireDamage final : public SerialControl {
 public:
  WireDamage(VirtualEventLoop& loop, SerialControl& line);
  ~WireDamage() override { line_.onComm = nullptr; }

  /// From now on the bytes of both ways are counted anew, and `damage` strikes when its byte comes.
  void Strike(const std::optional<Damage>& damage);
  [[nodiscard]] bool HasStruck() const { return struck_; }
  /// Two bytes of one frame have changed places: an exclusive-or over the frame is what it was, so whoever goes by it
  /// takes the frame for sound.
  [[nodiscard]] bool SwappedWithinAFrame() const { return swapped_; }
  /// Bytes since the last `Strike`.
  [[nodiscard]] std::uint64_t Count(Way way) const { return (way == Way::ToTarget ? out_ : in_).count; }

  [[nodiscard]] bool PortOpen() const override { return line_.PortOpen(); }
  void Open() override;
  void Close() override;
  void Output(std::string_view bytes) override;
  [[nodiscard]] std::string Input() override;

 private:
  /// One way's bytes: how many have passed, and what does not pass yet.
  struct Lane {
    std::uint64_t count = 0;
    std::string waiting;      ///< behind a delayed byte, or ahead of its exchange
    bool exchanging = false;  ///< the next byte overtakes the one that waits
    TimePoint since{0};
    std::optional<TimePoint> until;  ///< nothing passes before
  };

  /// What passes now of the bytes that came.
  [[nodiscard]] std::string Pass(Lane& lane, Way way, std::string_view bytes);
  void Strike(Lane& lane, char byte, std::string& passed);
  void Release(Way way);
  void Received();

  VirtualEventLoop& loop_;
  SerialControl& line_;
  std::optional<Damage> damage_;
  bool struck_ = false;
  bool swapped_ = false;
  Lane out_;
  Lane in_;
  std::string received_;
  /// Events of a time that was forgotten since do nothing.
  std::uint64_t era_ = 0;
};

}  // namespace orvane::proofs
