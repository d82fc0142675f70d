#include "app/profile/profile.h"

// What the library asserts of a file in a debug build it tells as a fault of that file otherwise.
#define TOML_ASSERT(expression) static_cast<void>(0)
#include <toml++/toml.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "adapters/disk_files.h"
#include "app/desk.h"
#include "app/profile/stray_letter.h"
#include "base/decimal4.h"
#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"

namespace orvane {
namespace {

/// One entry of a table, with the place to tell of it.
struct Entry {
  std::string key;
  const toml::node* node;
  long line;
};

/// Reads one file: every fault of it names the file, the line and the key.
class Reader {
 public:
  explicit Reader(Profile& profile) : profile_(profile) {}

  void Read(const toml::table& top) {
    for (const Entry& entry : EntriesOf(top, "")) {
      if (entry.key == "tables") {
        ReadTables(entry);
      } else if (entry.key == "golden_limits") {
        ReadGoldenLimits(entry);
      } else if (entry.key == "panel") {
        ReadPanels(entry);
      } else {
        ReadOption(entry);
      }
    }
  }

 private:
  [[noreturn]] void Fail(const Entry& entry, const std::string& what) const {
    throw ProfileFault(profile_.file, entry.line, entry.key, what);
  }

  /// In the order of the file, so that its first fault is the one that is told.
  static std::vector<Entry> EntriesOf(const toml::table& table, const std::string& head) {
    std::vector<std::pair<toml::source_position, Entry>> placed;
    for (const auto& [key, node] : table) {
      const toml::source_position begin = key.source().begin;
      placed.push_back({begin, {head + std::string(key.str()), &node, static_cast<long>(begin.line)}});
    }
    std::stable_sort(placed.begin(), placed.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<Entry> entries;
    for (auto& [begin, entry] : placed) entries.push_back(std::move(entry));
    return entries;
  }

  std::vector<Entry> EntriesIn(const Entry& entry) const {
    const toml::table* table = entry.node->as_table();
    if (table == nullptr) Fail(entry, "it must be a table");
    return EntriesOf(*table, entry.key + ".");
  }

  std::string TextOf(const Entry& entry) const {
    const auto* text = entry.node->as_string();
    if (text == nullptr) Fail(entry, "it must be a text in quotes");
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; };
    if (std::any_of(text->get().begin(), text->get().end(), isControl)) Fail(entry, "it holds a control character");
    return text->get();
  }
  std::string FlagOf(const Entry& entry) const {
    const auto* flag = entry.node->as_boolean();
    if (flag == nullptr) Fail(entry, "it must be true or false");
    return flag->get() ? "true" : "false";
  }
  std::string WholeOf(const Entry& entry) const {
    const auto* number = entry.node->as_integer();
    if (number == nullptr) Fail(entry, "it must be a whole number");
    return std::to_string(number->get());
  }
  std::vector<std::string> WholesOf(const Entry& entry) const {
    const auto* list = entry.node->as_array();
    if (list == nullptr) Fail(entry, "it must be a list of whole numbers");
    std::vector<std::string> numbers;
    for (const toml::node& each : *list) {
      const auto* number = each.as_integer();
      if (number == nullptr) Fail(entry, "it must be a list of whole numbers");
      numbers.push_back(std::to_string(number->get()));
    }
    return numbers;
  }
  std::string DecimalOf(const Entry& entry) const;

  void ReadOption(const Entry& entry);
  void ReadTables(const Entry& entry);
  void ReadGoldenLimits(const Entry& entry);
  void ReadPanels(const Entry& entry);
  void AddOption(const OptionRow& row, const Entry& entry, std::string value);

  Profile& profile_;
};

std::string Reader::DecimalOf(const Entry& entry) const {
  if (entry.node->is_integer()) return WholeOf(entry);
  const auto* number = entry.node->as_floating_point();
  if (number == nullptr) Fail(entry, "it must be a number");
  const double value = number->get() == 0 ? 0 : number->get();
  constexpr double kLargest = 1e9;
  if (!(std::abs(value) < kLargest)) Fail(entry, "the number is too large");
  std::string text = NumberText(value);
  std::string kept;
  PassOver([&] { kept = Decimal4::FromText(text).Text(); });
  if (kept != text) Fail(entry, text + " has more than four decimals");
  return text;
}

/// "ask_serial" and "askserial" become "ask-serial".
const OptionRow* RowOf(const std::string& key) {
  const auto spelled = [&key](const OptionRow& row) {
    std::string bare = row.name;
    std::erase(bare, '-');
    return key == row.name || key == ProfileKey(row.name) || key == bare;
  };
  const auto& rows = OptionRows();
  const auto hit = std::find_if(rows.begin(), rows.end(), spelled);
  return hit == rows.end() ? nullptr : &*hit;
}

void Reader::AddOption(const OptionRow& row, const Entry& entry, std::string value) {
  const bool isOnce = row.kind == OptionRow::Kind::Value || row.kind == OptionRow::Kind::Flag;
  const auto same = [&](const Profile::Option& option) { return option.row == &row && isOnce; };
  if (std::any_of(profile_.options.begin(), profile_.options.end(), same)) {
    Fail(entry, "it was given above under another spelling");
  }
  profile_.options.push_back({&row, entry.key, std::move(value), entry.line});
}

void Reader::ReadOption(const Entry& entry) {
  const OptionRow* row = RowOf(entry.key);
  if (row == nullptr) Fail(entry, "there is no such key");
  if (row->onCommandLineOnly) Fail(entry, "it is an option of the command line alone");
  switch (row->kind) {
    case OptionRow::Kind::Value:
      return AddOption(*row, entry, TextOf(entry));
    case OptionRow::Kind::Flag:
      return AddOption(*row, entry, FlagOf(entry));
    case OptionRow::Kind::List:
      for (std::string& number : WholesOf(entry)) AddOption(*row, entry, std::move(number));
      return;
    case OptionRow::Kind::Repeated:
      for (const Entry& part : EntriesIn(entry)) {
        const std::string name = part.key.substr(entry.key.size() + 1);
        AddOption(*row, part, name + "=" + TextOf(part));
      }
      return;
  }
}

void Reader::ReadTables(const Entry& entry) {
  for (const Entry& part : EntriesIn(entry)) {
    const std::string name = part.key.substr(entry.key.size() + 1);
    if (name != kRFParameterFileName && name != kRampTableFileName && name != kCableLossFileName) {
      Fail(part, "there is no such key");
    }
    const std::string digest = TextOf(part);
    constexpr std::size_t kDigits = 64;
    if (digest.size() != kDigits || digest.find_first_not_of("0123456789abcdef") != std::string::npos) {
      Fail(part, "it must be the SHA-256 of the file in lower-case hexadecimal");
    }
    profile_.tables[name] = digest;
  }
}

void Reader::ReadGoldenLimits(const Entry& entry) {
  for (const Entry& part : EntriesIn(entry)) {
    const std::string pattern = part.key.substr(entry.key.size() + 1);
    if (part.node->is_table()) Fail(part, "a name with points in it stands in quotes");
    const double allowed = ToDouble(DecimalOf(part));
    if (allowed < 0) Fail(part, "it must not be negative");
    profile_.goldenLimits.push_back({pattern, allowed, profile_.file + ":" + std::to_string(part.line)});
  }
}

void Reader::ReadPanels(const Entry& entry) {
  for (const Entry& part : EntriesIn(entry)) {
    const PanelRow* row = FindPanelRow(part.key.substr(entry.key.size() + 1));
    if (row == nullptr) Fail(part, "there is no such key");
    const std::string text = row->type == PanelRow::Type::Word     ? TextOf(part)
                             : row->type == PanelRow::Type::Whole  ? WholeOf(part)
                             : row->type == PanelRow::Type::Switch ? FlagOf(part)
                                                                   : DecimalOf(part);
    if (const auto fault = row->FaultOf(text)) Fail(part, *fault);
    profile_.panels.push_back({std::string(row->name), text, profile_.file + ":" + std::to_string(part.line)});
  }
}

std::string ContentOf(const std::string& file) {
  try {
    DiskFiles disk("", "");
    const std::unique_ptr<File> opened = disk.OpenForReading(file, std::numeric_limits<std::uint64_t>::max());
    if (opened->Size() <= kLargestProfile) return ReadWhole(*opened);
    throw ProfileFault(
        file, 0, "",
        "a profile has at most " + std::to_string(kLargestProfile) + " bytes, not " + std::to_string(opened->Size()));
  } catch (const StationFailure& failure) {
    throw ProfileFault("the profile cannot be read", 0, "", failure.Text());
  }
}

/// One line that does nothing to a terminal: a key may hold anything.
std::string Printable(const std::string& text) {
  std::u32string characters = DecodeUtf8(OneLine(text));
  for (char32_t& c : characters) {
    if (c < 0x20 || (c >= 0x7F && c < 0xA0)) c = '?';
  }
  return EncodeUtf8(characters);
}

/// What stands in front of a fault that the parser met, so far as it can be told: the key of its line.
std::string KeyOfLine(std::string_view content, long line) {
  for (long i = 1; i < line; ++i) (void)TakeLine(content);
  const std::string_view text = TakeLine(content);
  const auto sign = text.find('=');
  if (sign == std::string_view::npos) return "";
  std::string key(TrimBlanksAndLineEnds(text.substr(0, sign)));
  const bool printable = std::all_of(key.begin(), key.end(), [](char c) { return c > ' ' && c < '\x7F'; });
  return printable ? key : "";
}

}  // namespace

ProfileFault::ProfileFault(const std::string& file, long line, const std::string& key, const std::string& what)
    : std::runtime_error(Printable(file + (line > 0 ? ":" + std::to_string(line) : "") +
                                   (key.empty() ? "" : ": " + key) + (what.empty() ? "" : ": " + what))) {}

std::string ProfileKey(std::string_view option) {
  std::string key(option);
  std::replace(key.begin(), key.end(), '-', '_');
  return key;
}

Profile ReadProfile(const std::string& file) { return ParseProfile(file, ContentOf(file)); }

Profile ParseProfile(const std::string& file, std::string_view content) {
  Profile profile;
  profile.file = file;
  if (const auto line = LineOfStrayLetter(content)) {
    throw ProfileFault(file, *line, KeyOfLine(content, *line), "A letter beyond ASCII stands outside of a text.");
  }
  try {
    const toml::table top = toml::parse(content);
    Reader(profile).Read(top);
  } catch (const toml::parse_error& fault) {
    const auto line = static_cast<long>(fault.source().begin.line);
    throw ProfileFault(file, line, KeyOfLine(content, line), std::string(fault.description()));
  }
  return profile;
}

}  // namespace orvane
