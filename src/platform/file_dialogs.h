#pragma once

#include <optional>
#include <string>

namespace orvane {

/// A panel's file dialog: what it is set up with, and the name that it had last.
struct FileDialog {
  std::string title;
  std::string filter;
  std::string defaultExtension;
  std::string fileName;
  std::string initialFolder;
};

/// Shows file dialogs. Modal as boxes are.
class FileDialogs {
 public:
  FileDialogs() = default;
  FileDialogs(const FileDialogs&) = delete;
  FileDialogs& operator=(const FileDialogs&) = delete;
  virtual ~FileDialogs() = default;

  /// The path chosen, with the dialog's default extension where the name had none; also stored in
  /// `dialog.fileName`. No value: the dialog was cancelled, `dialog` is as it was.
  virtual std::optional<std::string> ShowOpen(FileDialog& dialog) = 0;
  virtual std::optional<std::string> ShowSave(FileDialog& dialog) = 0;
};

}  // namespace orvane
