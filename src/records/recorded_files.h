#pragma once

#include <memory>
#include <string>

#include "platform/files.h"
#include "records/recorded_wires.h"

namespace orvane {

/// The disk itself, heard, as the link "file": what was looked for and found, what was read, and what failed. What is
/// written stands in the record's documents, or is a log's.
class RecordedFiles final : public Files {
 public:
  RecordedFiles(Files& files, WireListener& listener) : files_(files), listener_(listener) {}

  /// Asked: the path. Answered: "there" or nothing.
  [[nodiscard]] bool Exists(const std::string& path) override;
  /// Open: the path; In: the file's size; each read is another In.
  [[nodiscard]] std::unique_ptr<File> OpenForReading(const std::string& path, std::uint64_t most) override;
  /// Open: the path. An append is told where it fails.
  [[nodiscard]] std::unique_ptr<GrowingFile> OpenForAppending(const std::string& path) override;
  /// Out: the path. Close, when it is finished.
  [[nodiscard]] std::unique_ptr<Draft> BeginDraft(const std::string& path, OldFile old) override;
  [[nodiscard]] std::string SystemPath(std::string_view name) override { return files_.SystemPath(name); }
  [[nodiscard]] std::string TempPath(std::string_view name) override { return files_.TempPath(name); }

 private:
  Files& files_;
  WireListener& listener_;
};

/// The name of the disk as a link.
inline constexpr std::string_view kFileLink = "file";

}  // namespace orvane
