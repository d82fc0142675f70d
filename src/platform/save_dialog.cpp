#include "platform/save_dialog.h"

#include "base/failure.h"

namespace orvane {
namespace {

/// How the choice of this name ends; no value when the operator wants to choose again.
std::optional<SaveName> Settled(const std::string& path, Files& files, Boxes& boxes, std::string_view question) {
  SaveName name{SaveName::End::Chosen, OldFile::IsOverlaid, path};
  if (!files.Exists(path)) return name;
  const BoxButton answer = boxes.AskOverwrite(std::string(question) + path + "?");
  if (answer == BoxButton::Cancel) return std::nullopt;
  if (answer == BoxButton::Yes) {
    name.old = OldFile::Goes;
    PassOver([&] { static_cast<void>(files.BeginDraft(path, name.old)); },
             [&](const StationFailure& failure) {
               name.end = SaveName::End::Failed;
               boxes.SystemText(failure.Text());
             });
  }
  return name;
}

}  // namespace

SaveName ChooseSaveName(FileDialogs& dialogs, FileDialog& dialog, Files& files, Boxes& boxes,
                        std::string_view question) {
  std::string last;
  for (;;) {
    const auto path = dialogs.ShowSave(dialog);
    if (!path) return {SaveName::End::Cancelled, OldFile::IsOverlaid, last};
    last = *path;
    dialog.initialFolder = FolderOf(*path);
    if (const auto name = Settled(*path, files, boxes, question)) return *name;
  }
}

}  // namespace orvane
