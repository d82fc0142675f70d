#pragma once

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <list>
#include <optional>
#include <string>
#include <string_view>

#include "platform/boxes.h"
#include "platform/event_loop.h"
#include "platform/file_dialogs.h"
#include "platform/signal.h"

namespace orvane {

/// A text of several lines in one, for a log: " / " in place of each line end.
[[nodiscard]] std::string OneLine(std::string_view text);

/// The boxes and file dialogs that lie open before the operator. The operation that raised one waits in the event
/// loop until a front end answers it. Boxes and dialogs share their ids.
class Desk final : public Boxes, public FileDialogs {
 public:
  using Id = std::int64_t;
  enum class Mode { Open, Save };
  struct OpenBox {
    Id id;
    Box box;
    std::optional<BoxButton> answer{};
  };
  struct OpenDialog {
    Id id;
    Mode mode;
    FileDialog dialog;
    bool answered = false;
    std::optional<std::string> path{};
  };
  /// `DoesNotFit`: a button that the box has not, a path without a file's name, a button for a dialog.
  enum class Answered { Yes, NoSuchId, DoesNotFit };

  /// `workingFolder`: where relative paths start.
  Desk(EventLoop& loop, std::filesystem::path workingFolder)
      : loop_(loop), workingFolder_(std::move(workingFolder)) {}

  BoxButton Show(const Box& box) override;
  std::optional<std::string> ShowOpen(FileDialog& dialog) override { return Ask(Mode::Open, dialog); }
  std::optional<std::string> ShowSave(FileDialog& dialog) override { return Ask(Mode::Save, dialog); }

  /// For front ends. Boxes and dialogs nest; the last one opened lies on top.
  [[nodiscard]] const std::list<OpenBox>& OpenBoxes() const { return boxes_; }
  [[nodiscard]] const std::list<OpenDialog>& OpenDialogs() const { return dialogs_; }
  [[nodiscard]] bool Clear() const { return boxes_.empty() && dialogs_.empty(); }
  /// What lies on top was answered, and its operation has not gone on yet.
  [[nodiscard]] bool Settling() const;
  Signal<const OpenBox&> boxOpened;
  Signal<const OpenDialog&> dialogOpened;
  /// The box or dialog of that id is gone.
  Signal<Id> closed;

  /// Answers the box of that id with one of its buttons.
  Answered Press(Id id, std::string_view button);
  /// Answers the dialog of that id; no path is Cancel. A name without extension gets the dialog's default one.
  Answered Choose(Id id, const std::optional<std::string>& path);

  /// From now on nobody sits at the desk: each box is told on `log` and answered with its first button, each dialog
  /// with Cancel.
  void LeaveUnattended(std::ostream& log) { unattendedLog_ = &log; }
  /// Whoever sat at the desk was torn away: each box, those that lie open too, is told on `log` and answered with its
  /// last button, which is the one that asks for nothing; each dialog with Cancel.
  void Abandon(std::ostream& log);

 private:
  /// Tells of it. @return its answer.
  BoxButton AnswerUnattended(const Box& box);
  void CancelUnattended(const FileDialog& dialog);
  std::optional<std::string> Ask(Mode mode, FileDialog& dialog);
  [[nodiscard]] std::string FullPath(const std::string& name, const std::string& defaultExtension) const;

  EventLoop& loop_;
  std::filesystem::path workingFolder_;
  Id lastId_ = 0;
  std::list<OpenBox> boxes_;
  std::list<OpenDialog> dialogs_;
  std::ostream* unattendedLog_ = nullptr;
  bool abandoned_ = false;
};

}  // namespace orvane
