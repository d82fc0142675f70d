#include "platform/save_dialog.h"

#include "base/failure.h"

namespace orvane {
namespace {

/// Whether the name may be written; no value when the operator wants to choose again.
std::optional<bool> Settled(const std::string& path, Files& files, Boxes& boxes, std::string_view question) {
  try {
    if (!files.Exists(path)) return true;
    const BoxButton answer = boxes.AskOverwrite(std::string(question) + path + "?");
    if (answer == BoxButton::Cancel) return std::nullopt;
    if (answer == BoxButton::Yes) files.Delete(path);
    return true;
  } catch (const StationFailure& failure) {
    boxes.SystemText(failure.what());
    return false;
  }
}

}  // namespace

SaveName ChooseSaveName(FileDialogs& dialogs, FileDialog& dialog, Files& files, Boxes& boxes,
                        std::string_view question) {
  SaveName name;
  for (;;) {
    const auto path = dialogs.ShowSave(dialog);
    if (!path) {
      name.end = SaveName::End::Cancelled;
      return name;
    }
    name.path = *path;
    dialog.initialFolder = FolderOf(*path);
    if (const auto usable = Settled(*path, files, boxes, question)) {
      name.end = *usable ? SaveName::End::Chosen : SaveName::End::Failed;
      return name;
    }
  }
}

}  // namespace orvane
