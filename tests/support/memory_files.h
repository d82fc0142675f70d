#pragma once

#include <map>
#include <set>
#include <string>

#include "platform/files.h"

namespace orvane::test {

/// A disk in memory.
class MemoryFiles final : public Files {
 public:
  [[nodiscard]] bool Exists(const std::string& path) override { return content.contains(path); }
  [[nodiscard]] std::unique_ptr<File> OpenForReading(const std::string& path, std::uint64_t most) override;
  [[nodiscard]] std::unique_ptr<GrowingFile> OpenForAppending(const std::string& path) override;
  [[nodiscard]] std::unique_ptr<Draft> BeginDraft(const std::string& path, OldFile old) override;
  [[nodiscard]] std::string SystemPath(std::string_view name) override { return "/system/" + std::string(name); }
  [[nodiscard]] std::string TempPath(std::string_view name) override { return "/temp/" + std::string(name); }

  std::map<std::string, std::string> content;
  /// Paths that cannot be replaced, opened, or, once open, read or written to.
  std::set<std::string> irreplaceable;
  std::set<std::string> unopenable;
  std::set<std::string> unreadable;
  std::set<std::string> unwritable;
  /// What a growing file still takes before it cannot be written to.
  std::size_t room = std::string::npos;
};

}  // namespace orvane::test
