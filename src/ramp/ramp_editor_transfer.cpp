#include "base/failure.h"
#include "platform/save_dialog.h"
#include "ramp/ramp_boxes.h"
#include "ramp/ramp_editor.h"
#include "ramp/ramp_file.h"
#include "ramp/ramp_record.h"

namespace orvane {

// Nothing is read back from the Target here: only a "ttr" typed by hand fills rows of the table. What stands in the
// table goes into the record in any mode, over what a calibration may have put there.
void RampEditor::Load() {
  if (ports_.ramp.RampStorageMode == "File" && !LoadFile()) return;
  if (ports_.ramp.RampStorageMode == "Target" && row_.flagsPlainReplies) {
    ports_.reply.PlainReplyMode = true;
    ports_.reply.PlainReplyMode = false;
  }
  PassOver([&] { ShowRampTable(ports_.ramp, ToInteger(face_.txtRampTableIndex.Text()), face_); });
  PassOver([&] { CopyRampTablesToRFParams(ports_.ramp, ports_.rf.RFParams); });
}

/// Whether a file was read.
bool RampEditor::LoadFile() {
  face_.dlgRampSave.title = "Open Ramp Table";
  const auto path = ports_.dialogs.ShowOpen(face_.dlgRampSave);
  if (!path) return false;
  face_.dlgRampSave.initialFolder = FolderOf(*path);
  try {
    const auto file = ports_.files.OpenForReading(*path, kLargestRecordFile);
    ReadRampRecords(*file, ports_.ramp);
    const std::string damage = DamageOfRecords(*file, kRampRecords, Tail::MayBe);
    ports_.ramp.damage = damage.empty() ? "" : *path + " " + damage + ".";
    return true;
  } catch (const StationFailure& failure) {
    ports_.boxes.SystemText(failure.Text());
    return false;
  }
}

void RampEditor::Save() {
  if (ports_.ramp.RampStorageMode == "File") {
    SaveToFile();
  } else if (ports_.ramp.RampStorageMode == "Target" && ports_.link.InTestMode()) {
    SaveToTarget();
  }
}

void RampEditor::SaveToFile() {
  face_.dlgRampSave.title = "Save Ramp Table";
  const SaveName name =
      ChooseSaveName(ports_.dialogs, face_.dlgRampSave, ports_.files, ports_.boxes, row_.overwriteQuestion);
  if (!name.Chosen()) return;
  try {
    WriteWhole(ports_.files, name.path, name.old, RampRecords(ports_.ramp));
    if (const auto side = SideFileOf(name.path)) {
      WriteWhole(ports_.files, *side, OldFile::IsOverlaid, RampSideText(ports_.ramp));
    }
  } catch (const StationFailure& failure) {
    ports_.boxes.SystemText(failure.Text());
  }
}

// Sends the stored tables, not the boxes. A failed table is not sent again, whatever its box says; the third failure
// leaves the tables behind it unsent.
void RampEditor::SaveToTarget() {
  constexpr int kToleratedFailures = 2;
  int failures = 0;
  for (int t = 0; t < kRampTables; ++t) {
    const std::string number = std::to_string(t);
    std::string line = "ttw " + number + " ";
    for (const std::string& value : ports_.ramp.RampTable[static_cast<std::size_t>(t)]) {
      line.append(value).append(",");
    }
    PassOver([&] { ports_.link.RunTargetCommand(line); });
    if (ports_.link.Succeeded()) continue;
    ++failures;
    std::string words = number;
    words.append(row_.notSaved).append(number).append(row_.saveAgain);
    ports_.boxes.Warning(words);
    if (failures > kToleratedFailures) {
      ports_.boxes.Alarm(std::string(row_.tooManyFailures));
      return;
    }
  }
  ports_.boxes.Alarm(std::string(row_.allSaved));
}

}  // namespace orvane
