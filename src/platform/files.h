#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// One file, open for reading. Closed when destroyed. Bytes, not characters.
class File {
 public:
  File() = default;
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  virtual ~File() = default;

  /// Up to `size` bytes from `offset`; fewer at the end of the file. @throws StationFailure with the system's text.
  [[nodiscard]] virtual std::string Read(std::uint64_t offset, std::size_t size) = 0;
  [[nodiscard]] virtual std::uint64_t Size() = 0;
};

/// One file that only grows: whatever fails, it keeps all that it has.
class GrowingFile {
 public:
  GrowingFile() = default;
  GrowingFile(const GrowingFile&) = delete;
  GrowingFile& operator=(const GrowingFile&) = delete;
  virtual ~GrowingFile() = default;

  /// Writes behind what stands in the file, and takes off `bytes` what it has written.
  /// @throws StationFailure with the system's text; `bytes` is then what is still to be written.
  virtual void Append(std::string& bytes) = 0;
};

/// The new content of a file. The file is as it was until `Finish` puts it there in one step, and stays so when that
/// fails or never comes.
class Draft {
 public:
  Draft() = default;
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;
  virtual ~Draft() = default;

  /// At most once. @throws StationFailure with the system's text.
  virtual void Finish(std::string_view content) = 0;
};

/// What becomes of the file that a draft is laid over.
enum class OldFile {
  Goes,       ///< Nothing of it is left.
  IsOverlaid  ///< What is longer than the new content stays behind it.
};

/// The disk. Names of files are UTF-8. Every failure is a StationFailure with the system's own words, the file's
/// name in them. What is no regular file (a folder, a device, a pipe) is neither read nor written nor replaced.
class Files {
 public:
  Files() = default;
  Files(const Files&) = delete;
  Files& operator=(const Files&) = delete;
  virtual ~Files() = default;

  /// Whether something stands there. A path that cannot be looked up counts as one where nothing is: who opens it
  /// hears why.
  [[nodiscard]] virtual bool Exists(const std::string& path) = 0;
  /// Never creates a file. One of more than `most` bytes is refused.
  [[nodiscard]] virtual std::unique_ptr<File> OpenForReading(const std::string& path, std::uint64_t most) = 0;
  /// Creates the file if it is not there.
  [[nodiscard]] virtual std::unique_ptr<GrowingFile> OpenForAppending(const std::string& path) = 0;
  /// @throws StationFailure when the file may not be written, or none can be made in its folder.
  [[nodiscard]] virtual std::unique_ptr<Draft> BeginDraft(const std::string& path, OldFile old) = 0;

  /// The path of an installed data file in the first or the second place, by the file's name.
  [[nodiscard]] virtual std::string SystemPath(std::string_view name) = 0;
  [[nodiscard]] virtual std::string TempPath(std::string_view name) = 0;
};

/// Puts a file there, whole or not at all. @throws StationFailure with the system's text.
void WriteWhole(Files& files, const std::string& path, OldFile old, std::string_view content);

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

/// The longest has 992 records, 124 KiB. One that was written over a longer file may still have that one's tail.
inline constexpr std::uint64_t kLargestRecordFile = 4 << 20;

/// The bytes of a record that begins with `content`, filled with zeros. `content` has at most 128 bytes.
[[nodiscard]] std::string RecordOf(std::string_view content);

/// One record as it stands in the file. @throws StationFailure when the file ends before the record's first
/// `needed` bytes.
[[nodiscard]] std::string ReadRecord(File& file, int number, std::size_t needed);

/// What may stand behind the records of a file.
enum class Tail {
  None,
  /// That of a longer file which it was written over.
  MayBe
};

/// The damage of a file that a power cut left.
inline constexpr std::string_view kNothingButZeros = "holds nothing but zero bytes";

/// What shows that a file is not one of `records` whole records, as the end of a sentence that its name begins: "is 0
/// bytes long, not 640". Empty when nothing does.
[[nodiscard]] std::string DamageOfRecords(File& file, int records, Tail tail);

}  // namespace orvane
