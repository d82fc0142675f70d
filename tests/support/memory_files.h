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
  void Delete(const std::string& path) override;
  [[nodiscard]] std::unique_ptr<File> OpenForReading(const std::string& path) override;
  [[nodiscard]] std::unique_ptr<File> OpenForWriting(const std::string& path) override;
  [[nodiscard]] std::string SystemPath(std::string_view name) override { return "/system/" + std::string(name); }
  [[nodiscard]] std::string TempPath(std::string_view name) override { return "/temp/" + std::string(name); }

  std::map<std::string, std::string> content;
  /// Paths that cannot be deleted, opened, or, once open, read or written to.
  std::set<std::string> undeletable;
  std::set<std::string> unopenable;
  std::set<std::string> unreadable;
  std::set<std::string> unwritable;
};

}  // namespace orvane::test
