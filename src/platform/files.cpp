#include "platform/files.h"

#include "base/failure.h"
#include "base/text.h"

namespace orvane {

void WriteWhole(Files& files, const std::string& path, OldFile old, std::string_view content) {
  files.BeginDraft(path, old)->Finish(content);
}

std::string ReadWhole(File& file) { return file.Read(0, file.Size()); }

std::string_view TakeLine(std::string_view& content) {
  const auto end = content.find('\n');
  std::string_view line = content.substr(0, end);
  content.remove_prefix(end == std::string_view::npos ? content.size() : end + 1);
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

std::vector<std::string> LinesOf(std::string_view content) {
  std::vector<std::string> lines;
  while (!content.empty()) lines.emplace_back(TakeLine(content));
  return lines;
}

std::string FileNameOf(std::string_view path) {
  const auto slash = path.rfind('/');
  return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

std::string FolderOf(std::string_view path) {
  const auto slash = path.rfind('/');
  if (slash == std::string_view::npos) return "";
  return std::string(path.substr(0, slash == 0 ? 1 : slash));
}

std::optional<std::string> SideFileOf(std::string_view path) {
  constexpr std::size_t kExtension = 4;
  const std::size_t folder = path.size() - FileNameOf(path).size();
  const std::string_view name = path.substr(folder);
  const std::size_t characters = CharacterCount(name);
  if (characters < kExtension) return std::nullopt;
  return std::string(path.substr(0, folder + CharacterOffset(name, characters - kExtension))) + ".xls";
}

std::string RecordOf(std::string_view content) {
  std::string record(content.substr(0, kRecordSize));
  record.resize(kRecordSize, '\0');
  return record;
}

std::string ReadRecord(File& file, int number, std::size_t needed) {
  std::string record = file.Read(static_cast<std::uint64_t>(number - 1) * kRecordSize, kRecordSize);
  if (record.size() < needed) {
    throw StationFailure("Input past end of file: there is no record " + std::to_string(number) + ".");
  }
  return record;
}

std::string DamageOfRecords(File& file, int records, Tail tail) {
  std::string damage;
  PassOver(
      [&] {
        const std::uint64_t whole = static_cast<std::uint64_t>(records) * kRecordSize;
        const bool isLonger = file.Size() > whole;
        if (file.Size() < whole || (isLonger && tail == Tail::None)) {
          damage = "is " + std::to_string(file.Size()) + " bytes long, not " + std::to_string(whole);
        } else if (ReadWhole(file).find_first_not_of('\0') == std::string::npos) {
          damage = kNothingButZeros;
        }
      },
      [&](const StationFailure& failure) { damage = "cannot be read: " + failure.Text(); });
  return damage;
}

}  // namespace orvane
