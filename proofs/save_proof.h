#pragma once

#include <map>
#include <string>
#include <vector>

#include "save_case.h"
#include "support/scratch_folder.h"

namespace orvane::test {

/// Saves with something in the way, and looks at what is there afterwards: the old file or the new one, whole, a box
/// where the new one is not, nothing else in the folder, and a next save that goes through.
class SaveProof {
 public:
  struct Outcome {
    /// The fault was met: the save has that many calls.
    bool struck = false;
    /// What is wrong; empty when nothing is.
    std::string finding;
  };
  [[nodiscard]] Outcome Try(const SaveCase& save);

 private:
  /// Names in the folder with their contents; what a killed process left is not among them.
  using Contents = std::map<std::string, std::string>;
  struct Place {
    explicit Place(const SaveCase& save);
    void Lay() const;
    [[nodiscard]] Contents Now() const;
    [[nodiscard]] bool HasLeftovers() const;

    ScratchFolder folder;
    std::string file;
    Contents old;
  };

  [[nodiscard]] Contents Wanted(const SaveCase& save);
  [[nodiscard]] std::string WithoutFault(const SaveCase& save, const Place& place);
  [[nodiscard]] Outcome Alive(const SaveCase& save, const Place& place);
  [[nodiscard]] Outcome Killed(const SaveCase& save, const Place& place);
  [[nodiscard]] std::string Judge(const SaveCase& save, const Place& place, const Contents& now);
  [[nodiscard]] std::string TryAgain(const SaveCase& save, const Place& place);

  std::map<std::string, Contents> wanted_;
};

}  // namespace orvane::test
