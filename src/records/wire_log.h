#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/event_loop.h"

namespace orvane {

/// What can happen on a link, or in front of the station.
enum class WireEvent : std::uint8_t {
  /// `bytes` are the line's settings.
  Open = 1,
  /// Without `bytes` the station's own act; with them the device vanished, or the station was ended, and they say
  /// why.
  Close = 2,
  Out = 3,
  In = 4,
  /// `bytes` are the event code of the serial control, as a number's text.
  Line = 5,
  /// `bytes` are the failure's text; of an instrument "ibsta iberr text".
  Failure = 6,
  /// A box, or a file dialog: `bytes` are its title, a line end, and its text or nothing.
  Asked = 7,
  /// `bytes` are the caption of the button, the path chosen, or nothing.
  Answered = 8,
  /// What an operator did: `bytes` are the control, how, and with what, each on a line.
  Act = 9,
  /// What the station knew when the run began.
  State = 10,
};

/// Links that are no wires: what stands for the station itself, and for whoever sits in front of it.
inline constexpr std::string_view kStationLink = "station";
inline constexpr std::string_view kHandLink = "hand";
inline constexpr std::string_view kBoxLink = "box";
inline constexpr std::string_view kDialogLink = "dialog";

struct WireNote {
  /// Since the log began.
  TimePoint at{0};
  /// "COM1", "GPIB 5", "file", "box", "dialog", "hand", "station".
  std::string link;
  WireEvent event = WireEvent::Out;
  std::string bytes;
  friend bool operator==(const WireNote&, const WireNote&) = default;
};

/// Everything that passed over every link in a run, each with its time, in a form that costs next to nothing to
/// write: a note is the nanoseconds since the one before, the event, the link and the bytes, numbers in groups of
/// seven bits, the lowest first, the eighth bit set in all but the last. A link is told by name where it first comes.
class WireLog {
 public:
  WireLog();

  /// @param at must not lie ahead of the note before; one that does counts as of the same time.
  void Note(TimePoint at, std::string_view link, WireEvent event, std::string_view bytes);
  [[nodiscard]] const std::string& Content() const { return content_; }

 private:
  void Number(std::uint64_t number);

  std::string content_;
  std::vector<std::string> links_;
  TimePoint last_{0};
};

/// All notes of a log. A log that was cut off gives those that are whole.
struct WireNotes {
  std::vector<WireNote> notes;
  /// What is wrong, and where; empty when nothing is.
  std::string damage;
};
[[nodiscard]] WireNotes ReadWireLog(std::string_view content);

}  // namespace orvane
