#include "app/profile/stray_letter.h"

#include <string>

namespace orvane {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsBeyondAscii(char c) { return static_cast<unsigned char>(c) >= 0x80; }

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

/// Goes through a TOML text and knows where in it a character stands.
class Walk {
 public:
  explicit Walk(std::string_view rest) : rest_(rest) {}

  std::optional<long> Go() {
    while (!rest_.empty()) {
      const char c = rest_.front();
      if (IsBeyondAscii(c)) return line_;
      if (c == '#') {
        while (!rest_.empty() && rest_.front() != '\n') Step();
      } else if (c == '"' || c == '\'') {
        if (const auto stray = Text(c)) return stray;
      } else {
        Step();
      }
    }
    return std::nullopt;
  }

 private:
  void Step(std::size_t count = 1) {
    for (; count > 0 && !rest_.empty(); --count) {
      line_ += rest_.front() == '\n' ? 1 : 0;
      rest_.remove_prefix(1);
    }
  }

  /// From its quotes to their like.
  std::optional<long> Text(char quote) {
    constexpr std::size_t kLong = 3;
    const std::string longOnes(kLong, quote);
    const bool isLong = rest_.starts_with(longOnes);
    const std::string_view end = isLong ? std::string_view(longOnes) : std::string_view(longOnes).substr(0, 1);
    Step(end.size());
    while (!rest_.empty() && !rest_.starts_with(end)) {
      // A text of one line that has no end is left to the reader, which says so.
      if (!isLong && rest_.front() == '\n') return std::nullopt;
      const bool escapes = quote == '"' && rest_.front() == '\\';
      Step();
      if (!escapes || rest_.empty()) continue;
      const bool folds = isLong && IsBlank(rest_.front());
      while (folds && !rest_.empty() && IsBlank(rest_.front())) Step();
      if (!rest_.empty() && IsBeyondAscii(rest_.front())) return line_;
      if (!folds) Step();
    }
    Step(end.size());
    return std::nullopt;
  }

  std::string_view rest_;
  long line_ = 1;
};

}  // namespace

std::optional<long> LineOfStrayLetter(std::string_view content) {
  if (content.starts_with(kByteOrderMark)) content.remove_prefix(kByteOrderMark.size());
  return Walk(content).Go();
}

}  // namespace orvane
