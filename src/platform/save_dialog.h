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
    Failed,     ///< The file could not be replaced; a box has shown the system's text.
  };
  End end = End::Cancelled;
  /// What the operator answered for the file that stands there.
  OldFile old = OldFile::IsOverlaid;
  /// The name chosen last, however it ended; empty when there never was one.
  std::string path;

  [[nodiscard]] bool Chosen() const { return end == End::Chosen; }
};

/// Shows the dialog for saving. A file that exists is asked about with `question`, its name and "?": after Yes it is
/// to go, after No the new bytes are to overlay the old ones, Cancel shows the dialog again. No answer touches the
/// file; after Yes it has been tried whether one can be put in its place. The folder of a chosen name is where the
/// dialog opens next.
[[nodiscard]] SaveName ChooseSaveName(FileDialogs& dialogs, FileDialog& dialog, Files& files, Boxes& boxes,
                                      std::string_view question);

}  // namespace orvane
