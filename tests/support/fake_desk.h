#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/boxes.h"
#include "platform/file_dialogs.h"
#include "support/journal.h"

namespace orvane::test {

/// Boxes that are answered at once: by the script, or else with their first button.
class FakeBoxes final : public Boxes {
 public:
  explicit FakeBoxes(Journal& journal) : journal_(journal) {}

  BoxButton Show(const Box& box) override;

  std::vector<Box> shown;
  std::deque<BoxButton> answers;
  /// Runs while the box is open.
  std::function<void(const Box&)> whileOpen;

  [[nodiscard]] std::vector<std::string> Texts() const;

 private:
  Journal& journal_;
};

/// File dialogs that are answered by the script, or else cancelled.
class FakeDialogs final : public FileDialogs {
 public:
  struct Shown {
    bool save;
    FileDialog dialog;
  };

  std::optional<std::string> ShowOpen(FileDialog& dialog) override { return Answer(dialog, false); }
  std::optional<std::string> ShowSave(FileDialog& dialog) override { return Answer(dialog, true); }

  std::vector<Shown> shown;
  std::deque<std::optional<std::string>> answers;

 private:
  std::optional<std::string> Answer(FileDialog& dialog, bool save);
};

}  // namespace orvane::test
