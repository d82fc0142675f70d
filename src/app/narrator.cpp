#include "app/narrator.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <vector>

namespace orvane {
namespace {

using namespace std::chrono_literals;

constexpr TimePoint kTick = 100ms;
constexpr std::string_view kEraseLine = "\r\x1b[K";

std::vector<std::string> Columns(const std::string& row) {
  std::vector<std::string> columns;
  std::istringstream cells(row);
  for (std::string cell; std::getline(cells, cell, '\t');) columns.push_back(cell);
  return columns;
}

bool IsNumber(const std::string& cell) {
  return !cell.empty() && cell.find_first_not_of("-0123456789.") == std::string::npos;
}

/// A row of the receive results: the name of a band, or channel and compensation.
std::string CompensationText(const std::string& row) {
  const auto columns = Columns(row);
  if (columns.size() != 2) return row;
  return IsNumber(columns[1]) ? "channel " + columns[0] + ": compensation " + columns[1] : "";
}

/// A row of the transmit results: DAC value, level, measured power. Heads of the lists say nothing new.
std::string LevelText(const std::string& row) {
  const auto columns = Columns(row);
  if (columns.size() != 3 || !IsNumber(columns[0])) return "";
  return "level " + columns[1] + ": DAC " + columns[0] + ", " + columns[2] + " dBm";
}

/// A row of the channel calibration: DAC value, channel, code; or a phase error of that name and channel.
std::string ChannelText(const std::string& row) {
  const auto columns = Columns(row);
  if (columns.size() != 3 || !IsNumber(columns[2])) return "";
  if (!IsNumber(columns[0])) return columns[0] + " phase error: " + columns[2] + " degrees";
  return "channel " + columns[1] + ": DAC " + columns[0] + ", code " + columns[2];
}

}  // namespace

Narrator::Narrator(std::ostream& out, NarratorStyle style, EventLoop& loop, StationState& state,
                   StationPanels& panels, Desk& desk, std::string unitStore)
    : out_(out), style_(style), loop_(loop), state_(state), unitStore_(std::move(unitStore)), start_(loop.Now()) {
  state.report.entered.Connect([this](RunStep step) { TellStart(step); });
  state.report.left.Connect([this](const StepRecord& record) { TellEnd(record); });
  state.report.concluded.Connect([this](Verdict verdict) { TellVerdict(verdict); });
  if (style.boxes) desk.boxOpened.Connect([this](const Desk::OpenBox& open) { TellBox(open); });
  Follow(panels);
}

void Narrator::Follow(StationPanels& panels) {
  const auto follow = [this](ListBox& list, std::string (*textOf)(const std::string&)) {
    list.rowAdded.Connect([this, textOf](const std::string& row) {
      const std::string text = textOf(row);
      if (!text.empty()) Say("  " + text);
    });
  };
  follow(panels.txResult.listPowerLevel, &LevelText);
  follow(panels.txResult.listChanCalPowerLevel, &ChannelText);
  follow(panels.mpAutoCal.lstMPRxChannelCalResult, &CompensationText);
}

std::string Narrator::Elapsed() const {
  std::ostringstream text;
  text << std::fixed << std::setprecision(1) << std::setw(7)
       << std::chrono::duration<double>(loop_.Now() - start_).count() << " s";
  return text.str();
}

void Narrator::Say(std::string_view text, Tone tone) {
  constexpr std::string_view kCodes[] = {"", "\x1b[32m", "\x1b[33m", "\x1b[31m"};
  const auto code = kCodes[static_cast<std::size_t>(tone)];
  const bool coloured = style_.colour && !code.empty();
  if (style_.terminal) out_ << kEraseLine;
  out_ << Elapsed() << "  " << (coloured ? code : "") << text << (coloured ? "\x1b[0m" : "") << std::endl;
}

void Narrator::Tick() {
  const auto step = state_.report.UnderWay();
  if (!step) {
    ticking_ = false;
    out_ << kEraseLine << std::flush;
    return;
  }
  out_ << kEraseLine << Elapsed() << "  " << StepName(*step) << " ... "
       << state_.tally.commands - startTally_.commands << " commands" << std::flush;
  loop_.PostAt(loop_.Now() + kTick, [this] { Tick(); });
}

void Narrator::TellStart(RunStep step) {
  if (!running_) {
    running_ = true;
    start_ = loop_.Now();
    startTally_ = state_.tally;
  }
  Say(std::string(StepName(step)) + " ...");
  if (style_.terminal && !ticking_) {
    ticking_ = true;
    Tick();
  }
}

void Narrator::TellEnd(const StepRecord& record) {
  const std::string name(StepName(record.step));
  if (record.complete) {
    Say(name + " complete", Tone::Good);
  } else {
    Say(name + " left early: " + record.reason, Tone::Doubtful);
  }
}

void Narrator::TellVerdict(Verdict verdict) {
  running_ = false;
  const std::optional<FlawKind> doubt = state_.report.Doubt();
  switch (verdict) {
    case Verdict::Pass:
      Say(doubt ? "PASS, but not every step was completed:" : "PASS", doubt ? Tone::Doubtful : Tone::Good);
      break;
    case Verdict::Fail:
      Say("FAIL", Tone::Bad);
      break;
    case Verdict::None:
      Say("The run ended without a verdict.", Tone::Bad);
      break;
  }
  for (const StepRecord& step : state_.report.Steps()) {
    Say("  " + std::string(StepName(step.step)) + (step.complete ? ": complete" : ": " + step.reason));
  }
  if (verdict == Verdict::Pass && doubt) {
    Say(std::string(FlawText(*doubt)) + ". " + std::string(RemedyText(*doubt)), Tone::Doubtful);
  }
  TellSum();
}

void Narrator::TellSum() {
  const LinkTally& now = state_.tally;
  std::ostringstream sum;
  sum << now.commands - startTally_.commands << " commands, " << now.bytesOut - startTally_.bytesOut << " bytes out, "
      << now.bytesIn - startTally_.bytesIn << " bytes in";
  Say(sum.str());
  TellSaved();
}

void Narrator::TellSaved() {
  const auto& steps = state_.report.Steps();
  const auto save = std::find_if(steps.begin(), steps.end(), [](const auto& s) { return s.step == RunStep::Save; });
  if (save == steps.end() || !save->complete) return;
  const std::string& mode = state_.cal.SaveMode;
  if (mode == "File" || mode == "EEPROMFile") Say("RF parameters saved in " + state_.cal.CalSaveFileName);
  if (mode == "EEPROM" || mode == "EEPROMFile") {
    Say("RF parameters saved in the Target's EEPROM" + (unitStore_.empty() ? "" : ", " + unitStore_));
  }
}

void Narrator::TellBox(const Desk::OpenBox& open) {
  Say("[" + open.box.title + "] " + OneLine(open.box.text), Tone::Doubtful);
}

NarratorStyle StandardOutputStyle() {
  const bool terminal = ::isatty(STDOUT_FILENO) != 0;
  const char* noColour = std::getenv("NO_COLOR");
  struct stat out {};
  struct stat errors {};
  const bool errorsBeside = ::fstat(STDOUT_FILENO, &out) == 0 && ::fstat(STDERR_FILENO, &errors) == 0 &&
                            out.st_dev == errors.st_dev && out.st_ino == errors.st_ino;
  return {terminal && (noColour == nullptr || *noColour == '\0'), terminal, !errorsBeside};
}

LineClearing::LineClearing(std::ostream& errors, std::ostream& out)
    : errors_(errors), out_(out), plain_(errors.rdbuf(this)) {}

LineClearing::~LineClearing() { errors_.rdbuf(plain_); }

int LineClearing::overflow(int character) {
  if (character == traits_type::eof()) return traits_type::not_eof(character);
  const char byte = traits_type::to_char_type(character);
  return xsputn(&byte, 1) == 1 ? character : traits_type::eof();
}

std::streamsize LineClearing::xsputn(const char* bytes, std::streamsize count) {
  if (count > 0 && atLineStart_) out_ << kEraseLine << std::flush;
  if (count > 0) atLineStart_ = bytes[count - 1] == '\n';
  return plain_->sputn(bytes, count);
}

int LineClearing::sync() { return plain_->pubsync(); }

}  // namespace orvane
