#pragma once

#include <filesystem>

#include "platform/files.h"

namespace orvane {

/// The disk of this machine. Failures read like "No space left on device: /home/op/unit7.epm".
class DiskFiles final : public Files {
 public:
  /// `system` and `temp`: the two places of the installed data files.
  DiskFiles(std::filesystem::path system, std::filesystem::path temp)
      : system_(std::move(system)), temp_(std::move(temp)) {}

  [[nodiscard]] bool Exists(const std::string& path) override;
  void Delete(const std::string& path) override;
  [[nodiscard]] std::unique_ptr<File> OpenForReading(const std::string& path) override;
  /// A file that is created here is removed again when a write to it fails: half a file is no result.
  [[nodiscard]] std::unique_ptr<File> OpenForWriting(const std::string& path) override;

  [[nodiscard]] std::string SystemPath(std::string_view name) override { return (system_ / name).string(); }
  [[nodiscard]] std::string TempPath(std::string_view name) override { return (temp_ / name).string(); }

 private:
  std::filesystem::path system_;
  std::filesystem::path temp_;
};

}  // namespace orvane
