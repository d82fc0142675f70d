#pragma once

#include <filesystem>
#include <memory>

#include "adapters/disk_calls.h"
#include "platform/files.h"

namespace orvane {

/// The disk of this machine. Failures read like "No space left on device: /home/op/unit7.epm".
class DiskFiles final : public Files {
 public:
  /// `system` and `temp`: the two places of the installed data files.
  DiskFiles(std::filesystem::path system, std::filesystem::path temp,
            std::unique_ptr<DiskCalls> calls = std::make_unique<DiskCalls>())
      : system_(std::move(system)), temp_(std::move(temp)), calls_(std::move(calls)) {}

  [[nodiscard]] bool Exists(const std::string& path) override;
  [[nodiscard]] std::unique_ptr<File> OpenForReading(const std::string& path, std::uint64_t most) override;
  [[nodiscard]] std::unique_ptr<GrowingFile> OpenForAppending(const std::string& path) override;
  [[nodiscard]] std::unique_ptr<Draft> BeginDraft(const std::string& path, OldFile old) override;

  [[nodiscard]] std::string SystemPath(std::string_view name) override { return (system_ / name).string(); }
  [[nodiscard]] std::string TempPath(std::string_view name) override { return (temp_ / name).string(); }

 private:
  std::filesystem::path system_;
  std::filesystem::path temp_;
  std::unique_ptr<DiskCalls> calls_;
};

}  // namespace orvane
