#include "app/trace/story.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <map>
#include <optional>
#include <ostream>
#include <streambuf>
#include <utility>
#include <vector>

#include "app/trace/trace_file.h"
#include "app/trace/trace_record.h"
#include "link/frame.h"

namespace orvane {
namespace {

constexpr std::size_t kLongestLine = std::size_t{1} << 20;

template <class... Values>
std::string Formatted(const char* format, Values... values) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), format, values...);
  return text.data();
}

double Seconds(TimePoint time) { return std::chrono::duration<double>(time).count(); }

/// Bytes of an instrument for a terminal: control characters as escapes.
std::string Readable(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\n') {
      text += "\\n";
    } else if (c == '\r') {
      text += "\\r";
    } else if (byte < 0x20 || byte >= 0x7F) {
      text += Formatted("\\x%02X", static_cast<unsigned>(byte));
    } else {
      text += c;
    }
  }
  return text;
}

/// A text of the file itself: a damaged one must not move a terminal's cursor.
std::string Still(std::string_view text) {
  std::string still;
  for (const char c : text) {
    const bool control = static_cast<unsigned char>(c) < 0x20 || c == '\x7F';
    still += control ? Readable({&c, 1}) : std::string(1, c);
  }
  return still;
}

/// A status in words that is not "status 0".
bool TellsFailure(const std::string& reply) {
  const auto status = reply.find(": status ");
  return status != std::string::npos && reply.compare(status, 11, ": status 0,") != 0 &&
         !reply.ends_with(": status 0");
}

class Story {
 public:
  explicit Story(std::ostream& out) : out_(out) {}

  void Begin(const TraceHead& head) {
    if (head.part == 1) {
      End();
      out_ << Still(head.program) << ", trace of a run that began at " << Still(head.started) << "\n";
      last_ = TimePoint{0};
    }
  }
  void Tell(const TraceRecord& record);
  void End() {
    while (!open_.empty()) GiveUp(open_.begin()->first, "up to the end of the trace");
  }

 private:
  struct Question {
    std::string words;
    TimePoint asked;
    /// What came and is no whole reply.
    std::string came{};
  };

  static std::string Name(const std::string& link) { return IsSerial(link) ? "Target" : link; }
  void Line(TimePoint at, const std::string& text) {
    out_ << Formatted("%12.4f s  ", Seconds(at)) << Still(text) << "\n";
  }
  void Sent(const TraceRecord& record);
  void Received(const TraceRecord& record);
  /// The question of that link, if there is one, is over without a reply.
  void GiveUp(const std::string& link, const std::string& when);
  void GiveUpAt(const TraceRecord& record);

  std::ostream& out_;
  TimePoint last_{0};
  std::map<std::string, Question> open_;
};

void Story::GiveUp(const std::string& link, const std::string& when) {
  const auto open = open_.find(link);
  if (open == open_.end()) return;
  const auto& [words, asked, came] = open->second;
  const std::string rest = came.empty() ? "" : "; bytes that are no whole reply came: " + HexOf(came);
  Line(last_, "!! " + Name(link) + ": no reply to \"" + words + "\" " + when + rest);
  open_.erase(open);
}

void Story::GiveUpAt(const TraceRecord& record) {
  const auto open = open_.find(record.link);
  if (open == open_.end()) return;
  GiveUp(record.link, Formatted("for %.3f s", Seconds(record.at - open->second.asked)));
}

void Story::Sent(const TraceRecord& record) {
  if (!IsSerial(record.link)) return Line(record.at, "-> " + record.link + ": " + Readable(record.bytes));
  // The sync bytes are half of a command, which is told with its other half.
  if (record.bytes == kSync) return;
  if (record.says.empty()) return Line(record.at, "-> Target: bytes " + HexOf(record.bytes));
  GiveUpAt(record);
  Line(record.at, "-> Target: " + record.says);
  open_[record.link] = {record.says, record.at};
}

void Story::Received(const TraceRecord& record) {
  if (!IsSerial(record.link)) return Line(record.at, "<- " + record.link + ": " + Readable(record.bytes));
  const auto question = open_.find(record.link);
  if (record.says.empty() && question != open_.end()) {
    question->second.came += record.bytes;
    return;
  }
  if (record.says.empty()) return Line(record.at, "!! Target: bytes that nobody asked for: " + HexOf(record.bytes));
  std::string after = ", which nobody asked for";
  if (question != open_.end()) {
    after = Formatted(", after %.1f ms", 1000 * Seconds(record.at - question->second.asked));
    open_.erase(question);
  }
  Line(record.at, (TellsFailure(record.says) ? "!! Target: " : "<- Target: ") + record.says + after);
}

void Story::Tell(const TraceRecord& record) {
  last_ = record.at;
  if (record.event == "out") return Sent(record);
  if (record.event == "in") return Received(record);
  if (record.event == "close") GiveUpAt(record);
  const bool failed = record.event == "failure";
  const std::string what = failed ? "failure" : record.event == "line" ? "the line" : record.event;
  Line(record.at, (failed ? "!! " : "   ") + Name(record.link) + ": " + what +
                      (record.says.empty() ? "" : ": " + Readable(record.says)));
  if (failed) open_.erase(record.link);
}

/// The next line, of which no more is kept than a record may be long. @return false behind the last one.
bool NextLine(std::istream& file, std::string& line) {
  line.clear();
  std::streambuf& bytes = *file.rdbuf();
  int byte = bytes.sbumpc();
  if (byte == std::char_traits<char>::eof()) return false;
  for (; byte != '\n' && byte != std::char_traits<char>::eof(); byte = bytes.sbumpc()) {
    if (line.size() <= kLongestLine) line += static_cast<char>(byte);
  }
  return true;
}

/// Lines that are no records of a trace. Those ahead of the first record are kept back: where none comes, what was
/// read is no trace at all, and nothing is told of it.
class DamagedLines {
 public:
  explicit DamagedLines(std::ostream& out) : out_(out) {}

  void Met(const std::string& part, int number) {
    if (sound_) return Name(part, number);
    if (ahead_.empty() || ahead_.back().first != part) ahead_.emplace_back(part, 0);
    ahead_.back().second = number;
  }
  void MetRecord() {
    if (std::exchange(sound_, true)) return;
    for (const auto& [part, count] : ahead_) {
      for (int number = 1; number <= count; ++number) Name(part, number);
    }
  }
  [[nodiscard]] bool AreAll() const { return !sound_ && !ahead_.empty(); }

 private:
  void Name(const std::string& part, int number) {
    out_ << "?? line " << number << " of " << part << " is damaged and passed over\n";
  }

  std::ostream& out_;
  bool sound_ = false;
  /// So many in each part.
  std::vector<std::pair<std::string, int>> ahead_;
};

void TellPart(const std::string& part, Story& story, DamagedLines& damaged) {
  std::ifstream file(part, std::ios::binary);
  if (!file || file.peek() == std::ifstream::traits_type::eof()) {
    if (!file.eof()) throw TraceFault(part + ": " + std::strerror(errno));
    return;
  }
  int number = 0;
  for (std::string line; NextLine(file, line);) {
    ++number;
    const auto record = line.size() <= kLongestLine ? TraceRecordOf(line) : std::nullopt;
    const auto head = record ? std::nullopt : TraceHeadOf(line);
    if (!record && !head) {
      damaged.Met(part, number);
      continue;
    }
    damaged.MetRecord();
    if (record) {
      story.Tell(*record);
    } else {
      story.Begin(*head);
    }
  }
}

}  // namespace

void TellStory(const std::string& path, std::ostream& out) {
  const auto parts = PartsOf(path);
  if (parts.empty() || parts.back() != path) throw TraceFault(path + ": " + std::strerror(ENOENT));
  Story story(out);
  DamagedLines damaged(out);
  for (const std::string& part : parts) TellPart(part, story, damaged);
  if (damaged.AreAll()) throw NoTrace(path + ": it is no trace");
  story.End();
}

}  // namespace orvane
