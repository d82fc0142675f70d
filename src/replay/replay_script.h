#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/virtual_event_loop.h"
#include "records/wire_log.h"

namespace orvane {

/// Words for what passed on a wire: "rfpw 1 62 (rf_param_write)".
using WireWords = std::function<std::string(std::string_view link, WireEvent event, std::string_view bytes)>;

/// The notes of a run's trace as a script. What the station said then it is held to, note by note; what came to it
/// then comes again: an answer to the call that asked for it, and what came of itself (bytes on the line, an
/// operator's act, the answer to a box) as an event of the loop, as long behind the station's last word as it came
/// then. Where the station says something else the difference is told, and the script goes on where that can be found
/// in it, or as if the right thing had been said.
class ReplayScript {
 public:
  ReplayScript(VirtualEventLoop& loop, std::vector<WireNote> notes, WireWords words);

  /// Something comes of itself.
  std::function<void(const WireNote& note)> onOutside;
  /// The record ends in the middle of the run: so does the station, as if it were ended, behind the last of it.
  bool endsInTheMiddle = false;
  /// Where the run stands, for whoever reads of a difference: "transmitGSM". Empty between two steps.
  std::function<std::string()> step;

  /// The run begins now, and is over: what the record has behind that was not said.
  void Begin();
  void End();
  [[nodiscard]] bool Running() const { return running_; }

  /// The station says this. @return whether the record has it, or something that stands for it.
  bool Say(std::string_view link, WireEvent event, std::string_view bytes);
  /// The station goes on behind a box or dialog that was answered; what came of itself behind that is on its way.
  void GoOn();
  /// What came next, when it came to a call on this link: takes it, and lets the time pass that it took. No value
  /// where something else stands there.
  [[nodiscard]] std::optional<WireNote> Take(std::string_view link, WireEvent event);
  /// What came on this link to the last words that were the same. No value when there never were any.
  [[nodiscard]] std::optional<std::string> EarlierAnswer(std::string_view link, std::string_view said) const;
  /// Whether everything that the record has was said and came.
  [[nodiscard]] bool AtEnd() const { return place_ == notes_.size(); }

  /// Of any kind: where the run stands is put in front of it.
  void TellDifference(const std::string& text);
  /// In the order in which they were met; the first ones where there are very many.
  [[nodiscard]] const std::vector<std::string>& Differences() const { return differences_; }
  [[nodiscard]] std::size_t DifferenceCount() const { return differenceCount_; }

 private:
  /// The note stands for what has happened now; what came of itself behind it is on its way.
  void Pass(std::size_t place);
  /// Up to the first answer to a box: what is behind it comes to a station that has gone on.
  void SendOutsideNotes();
  [[nodiscard]] bool Is(std::size_t place, std::string_view link, WireEvent event) const;
  [[nodiscard]] std::optional<std::size_t> FindAhead(std::string_view link, WireEvent event,
                                                     std::string_view bytes) const;
  [[nodiscard]] std::string Told(const WireNote& note) const;
  [[nodiscard]] std::string Where() const;

  VirtualEventLoop& loop_;
  const std::vector<WireNote> notes_;
  WireWords words_;
  bool running_ = false;
  /// The first note that neither happened nor is on its way: one that comes of itself only behind an answer.
  std::size_t place_ = 0;
  /// When the last note happened, then and now.
  TimePoint saidAt_{0};
  TimePoint now_{0};
  TimePoint began_{0};
  long commands_ = 0;
  std::vector<std::string> differences_;
  std::size_t differenceCount_ = 0;
};

/// Whether a note comes of itself, and not to a call of the station.
[[nodiscard]] bool ComesOfItself(const WireNote& note);

}  // namespace orvane
