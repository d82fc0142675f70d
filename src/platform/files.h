#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// One open file. Closed when destroyed. Bytes, not characters.
class File {
 public:
  File() = default;
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  virtual ~File() = default;

  /// Up to `size` bytes from `offset`; fewer at the end of the file. @throws StationFailure with the system's text.
  [[nodiscard]] virtual std::string Read(std::uint64_t offset, std::size_t size) = 0;
  /// @throws StationFailure with the system's text when not all bytes could be written.
  virtual void Write(std::uint64_t offset, std::string_view bytes) = 0;
  [[nodiscard]] virtual std::uint64_t Size() = 0;
};

/// The disk. Names of files are UTF-8. Every failure is a StationFailure with the system's own words, the file's
/// name in them.
class Files {
 public:
  Files() = default;
  Files(const Files&) = delete;
  Files& operator=(const Files&) = delete;
  virtual ~Files() = default;

  [[nodiscard]] virtual bool Exists(const std::string& path) = 0;
  virtual void Delete(const std::string& path) = 0;
  /// Never creates a file.
  [[nodiscard]] virtual std::unique_ptr<File> OpenForReading(const std::string& path) = 0;
  /// Creates the file if it is not there; never cuts one that is.
  [[nodiscard]] virtual std::unique_ptr<File> OpenForWriting(const std::string& path) = 0;

  /// The path of an installed data file in the first or the second place, by the file's name.
  [[nodiscard]] virtual std::string SystemPath(std::string_view name) = 0;
  [[nodiscard]] virtual std::string TempPath(std::string_view name) = 0;
};

/// The whole content of a file.
[[nodiscard]] std::string ReadWhole(File& file);

/// Takes the first line off a text: it ends with CR LF or LF, or with the text. Without that end.
[[nodiscard]] std::string_view TakeLine(std::string_view& content);

/// The lines of a text file; a last line without an end counts.
[[nodiscard]] std::vector<std::string> LinesOf(std::string_view content);

/// Name without folder; its folder, without the last separator ("" if there is none).
[[nodiscard]] std::string FileNameOf(std::string_view path);
[[nodiscard]] std::string FolderOf(std::string_view path);

/// The companion for a spreadsheet: the file's name less its last four characters, plus ".xls", in the same folder.
/// No value for a name of fewer than four characters.
[[nodiscard]] std::optional<std::string> SideFileOf(std::string_view path);

/// Numbered records of 128 bytes, counted from 1.
inline constexpr std::size_t kRecordSize = 128;

/// The bytes of a record that begins with `content`, filled with zeros. `content` has at most 128 bytes.
[[nodiscard]] std::string RecordOf(std::string_view content);

/// One record as it stands in the file. @throws StationFailure when the file ends before the record's first
/// `needed` bytes.
[[nodiscard]] std::string ReadRecord(File& file, int number, std::size_t needed);

}  // namespace orvane
