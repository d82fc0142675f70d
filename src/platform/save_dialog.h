#pragma once

#include <string>
#include <string_view>

#include "platform/boxes.h"
#include "platform/file_dialogs.h"
#include "platform/files.h"

namespace orvane {

/// How the choice of a name to save under ended.
struct SaveName {
  enum class End {
    Chosen,     ///< `path` may be written.
    Cancelled,  ///< The dialog was cancelled.
    Failed,     ///< The file could not be looked up or deleted; a box has shown the system's text.
  };
  End end = End::Cancelled;
  /// The name chosen last, however it ended; empty when there never was one.
  std::string path;

  [[nodiscard]] bool Chosen() const { return end == End::Chosen; }
};

/// Shows the dialog for saving. A file that exists is asked about with `question`, its name and "?": Yes deletes it,
/// No leaves it, so that the new bytes overlay the old ones, Cancel shows the dialog again. The folder of a chosen
/// name is where the dialog opens next.
[[nodiscard]] SaveName ChooseSaveName(FileDialogs& dialogs, FileDialog& dialog, Files& files, Boxes& boxes,
                                      std::string_view question);

}  // namespace orvane
