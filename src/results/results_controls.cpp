#include "results/results_controls.h"

#include "base/failure.h"

namespace orvane {
namespace {

/// Runs a statement whose failure the operator is shown in the system's own words. @return whether it ran.
template <class Statement>
bool OrShowFailure(Boxes& boxes, Statement&& statement) {
  try {
    statement();
    return true;
  } catch (const StationFailure& failure) {
    boxes.SystemText(failure.Text());
    return false;
  }
}

}  // namespace

ResultsControls::ResultsControls(PanelRef<OrvaneMain> main, ResultsConsole& console, ConsoleState& state,
                                 const ReplyState& reply, Files& files, FileDialogs& dialogs, Boxes& boxes)
    : main_(main), console_(console), state_(state), reply_(reply), files_(files), dialogs_(dialogs), boxes_(boxes) {}

void ResultsControls::Connect() {
  main_.Untouched().cmdLogOn.onClick = [this] { OnLogOn(); };
  main_.Untouched().cmdResultClear.onClick = [this] { OnResultClear(); };
}

// The button stays green when the log is closed.
void ResultsControls::OnLogOn() {
  if (!state_.LogOffState) {
    console_.LogOff();
    return;
  }
  const auto path = AskForPath();
  if (!path || !OrShowFailure(boxes_, [&] { console_.OpenLog(*path); })) return;
  if (reply_.TargetMode == "TestMode") main_->SetCaption("ORVANE416_0402" + FileNameOf(*path));
  main_->cmdLogOn.SetBackColor(kGreen);
  state_.LogOffState = false;
}

void ResultsControls::OnResultClear() { main_->txtResults.SetText(""); }

std::optional<std::string> ResultsControls::AskForPath() {
  while (true) {
    main_->dlgOpenLog.fileName.clear();
    auto path = dialogs_.ShowSave(main_->dlgOpenLog);
    if (!path) return std::nullopt;
    state_.LogFileName = *path;
    if (!files_.Exists(*path)) return path;
    const BoxButton answer = boxes_.AskOverwrite("Do you want to change with " + *path + "?");
    if (answer == BoxButton::No) continue;
    if (answer != BoxButton::Yes || !OrShowFailure(boxes_, [&] { WriteWhole(files_, *path, OldFile::Goes, ""); })) {
      return std::nullopt;
    }
    return path;
  }
}

}  // namespace orvane
