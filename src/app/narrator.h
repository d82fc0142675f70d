#pragma once

#include <iosfwd>
#include <streambuf>
#include <string>
#include <string_view>

#include "app/desk.h"
#include "panels/station_panels.h"
#include "platform/event_loop.h"
#include "state/station_state.h"

namespace orvane {

/// Where the narrator speaks.
struct NarratorStyle {
  /// Colours mark how steps and runs ended.
  bool colour = false;
  /// The last line moves on while a step is under way.
  bool terminal = false;
  /// Boxes are told too. Not needed where standard error, which has them anyway, goes to the same place.
  bool boxes = true;
};

/// Tells on an output how a run goes, for a station without windows: its steps, what each of them finds, and what the
/// verdict stands on. It looks on and never acts. It lives as long as the station.
class Narrator {
 public:
  /// `unitStore` names the files in which a virtual Target keeps its memories; empty for a real one.
  Narrator(std::ostream& out, NarratorStyle style, EventLoop& loop, StationState& state, StationPanels& panels,
           Desk& desk, std::string unitStore = "");
  Narrator(const Narrator&) = delete;
  Narrator& operator=(const Narrator&) = delete;

 private:
  enum class Tone { Plain, Good, Doubtful, Bad };

  void Follow(StationPanels& panels);
  void TellStart(RunStep step);
  void TellEnd(const StepRecord& record);
  void TellVerdict(Verdict verdict);
  void TellSum();
  void TellSaved();
  void TellBox(const Desk::OpenBox& open);

  /// One line, with the time since the start of the run.
  void Say(std::string_view text, Tone tone = Tone::Plain);
  /// Keeps the moving line moving until the step has ended.
  void Tick();
  [[nodiscard]] std::string Elapsed() const;

  std::ostream& out_;
  NarratorStyle style_;
  EventLoop& loop_;
  StationState& state_;
  std::string unitStore_;
  TimePoint start_;
  LinkTally startTally_;
  bool ticking_ = false;
  bool running_ = false;
};

/// Takes the moving line of `out` away ahead of each line of `errors`, for as long as it is there: both are the same
/// screen. The moving line comes again by itself.
class LineClearing final : private std::streambuf {
 public:
  LineClearing(std::ostream& errors, std::ostream& out);
  LineClearing(const LineClearing&) = delete;
  LineClearing& operator=(const LineClearing&) = delete;
  ~LineClearing() override;

 private:
  int overflow(int character) override;
  std::streamsize xsputn(const char* bytes, std::streamsize count) override;
  int sync() override;

  std::ostream& errors_;
  std::ostream& out_;
  std::streambuf* plain_;
  bool atLineStart_ = true;
};

/// The style for this process's standard output: a terminal has a moving line, and colours unless NO_COLOR is set.
[[nodiscard]] NarratorStyle StandardOutputStyle();

}  // namespace orvane
