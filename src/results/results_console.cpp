#include "results/results_console.h"

#include <utility>

#include "base/failure.h"
#include "base/text.h"

namespace orvane {
namespace {

constexpr std::size_t kConsoleLimit = 16000;
constexpr std::size_t kDropped = 4096;
constexpr char kBackspace = 8;

/// No text has more characters than bytes, so a text is counted only when its bytes pass the limit.
bool IsTooLong(const std::string& text) {
  return text.size() > kConsoleLimit && CharacterCount(text) > kConsoleLimit;
}

void DropOldest(TextBox& box) {
  if (IsTooLong(box.Text())) box.DropFrontQuietly(CharacterOffset(box.Text(), kDropped));
}

struct Backspaced {
  std::string text;
  /// The text began with backspaces: what it is appended to loses its last character, once however many they were.
  bool takesBackOne = false;
};

Backspaced WithoutBackspaces(std::string_view text) {
  Backspaced result;
  std::string& kept = result.text;
  for (const char c : text) {
    if (c != kBackspace) {
      kept += c;
    } else if (kept.empty()) {
      result.takesBackOne = true;
    } else {
      DropLastCharacter(kept);
    }
  }
  return result;
}

}  // namespace

ResultsConsole::ResultsConsole(PanelRef<OrvaneMain> main, ConsoleState& state, Files& files, Boxes& boxes)
    : main_(main), state_(state), files_(files), boxes_(boxes) {}

void ResultsConsole::AppendConsole(TextBox& box, std::string_view text) {
  DropOldest(box);
  Insert(box, text);
}

void ResultsConsole::Append(std::string_view text) { AppendConsole(main_->txtResults, text); }

void ResultsConsole::ShowData(TextBox& box, std::string_view text) {
  DropOldest(box);
  const Backspaced backspaced = WithoutBackspaces(text);
  if (backspaced.takesBackOne) box.DropLastCharacterQuietly();
  Insert(box, backspaced.text);
}

void ResultsConsole::Insert(TextBox& box, std::string_view text) {
  const std::string standard = WithStandardLineEnds(text);
  box.AppendQuietly(standard);
  if (state_.LogFileNumber != 0) WriteToLog(standard);
}

// The log may be closed, or written by others, while the box of a failure stands open: what is shown meanwhile goes
// behind what failed.
void ResultsConsole::WriteToLog(std::string_view text) {
  unlogged_ += BytesOfText(text);
  while (log_ != nullptr && !unlogged_.empty()) {
    try {
      log_->Append(unlogged_);
    } catch (const StationFailure& failure) {
      const BoxButton answer = boxes_.Show(
          {failure.Text(), std::string(kStationTitle), BoxIcon::Exclamation, {BoxButton::Retry, BoxButton::Cancel}});
      if (answer != BoxButton::Retry) LogOff();
    }
  }
}

void ResultsConsole::OpenLog(const std::string& path) {
  log_ = files_.OpenForAppending(path);
  state_.LogFileNumber = 1;
}

void ResultsConsole::LogOff() {
  log_.reset();
  unlogged_.clear();
  state_.LogFileNumber = 0;
  state_.LogOffState = true;
  main_->SetCaption("ORVANE_up");
}

}  // namespace orvane
