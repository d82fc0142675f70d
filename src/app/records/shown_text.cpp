#include "app/records/shown_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "app/records/utf8_walk.h"

namespace orvane {
namespace {

using Range = std::pair<char32_t, char32_t>;

/// East Asian wide and fullwidth characters, by their blocks.
constexpr std::array kWide{Range{0x1100, 0x115F},  Range{0x2E80, 0x303E},   Range{0x3041, 0x4DBF},
                           Range{0x4E00, 0xA4CF},  Range{0xA960, 0xA97F},   Range{0xAC00, 0xD7A3},
                           Range{0xF900, 0xFAFF},  Range{0xFE30, 0xFE6F},   Range{0xFF00, 0xFF60},
                           Range{0xFFE0, 0xFFE6},  Range{0x1F300, 0x1F64F}, Range{0x1F900, 0x1F9FF},
                           Range{0x20000, 0x3FFFD}};
/// Marks that combine, the second and third parts of Hangul, joiners.
constexpr std::array kNarrowless{Range{0x0300, 0x036F}, Range{0x1160, 0x11FF}, Range{0x200B, 0x200D},
                                 Range{0x20D0, 0x20FF}, Range{0xD7B0, 0xD7FF}, Range{0xFE00, 0xFE0F},
                                 Range{0xFE20, 0xFE2F}, Range{0xFEFF, 0xFEFF}};

template <std::size_t N>
bool IsIn(const std::array<Range, N>& ranges, char32_t code) {
  return std::any_of(ranges.begin(), ranges.end(),
                     [code](const Range& range) { return code >= range.first && code <= range.second; });
}

/// Most texts are of nothing else, and a list has a hundred thousand lines.
bool IsPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

std::size_t ColumnsOf(const WalkedCharacter& character) {
  if (!character.code) return 1;
  if (IsIn(kNarrowless, *character.code)) return 0;
  return IsIn(kWide, *character.code) ? 2 : 1;
}

void AppendSpelt(std::string& text, char kind, unsigned code, std::size_t digits) {
  std::array<char, 8> buffer{};
  const auto end = std::to_chars(buffer.begin(), buffer.end(), code, 16).ptr;
  const auto size = static_cast<std::size_t>(end - buffer.begin());
  text += '\\';
  text += kind;
  if (size < digits) text.append(digits - size, '0');
  text.append(buffer.begin(), end);
}

template <class... Format>
std::string Digits(double value, Format... format) {
  std::array<char, 400> buffer{};
  const auto result = std::to_chars(buffer.begin(), buffer.end(), value, format...);
  return {buffer.begin(), result.ptr};
}

}  // namespace

std::string Harmless(std::string_view text) {
  if (IsPlain(text)) return std::string(text);
  std::string shown;
  while (!text.empty()) {
    if (text.starts_with("\r\n")) text.remove_prefix(1);
    const WalkedCharacter next = TakeCharacter(text);
    if (next.bytes == "\n") {
      if (!text.empty()) shown += " / ";
    } else if (!next.code) {
      AppendSpelt(shown, 'x', static_cast<unsigned char>(next.bytes.front()), 2);
    } else if (IsObeyed(*next.code)) {
      *next.code < 0x100 ? AppendSpelt(shown, 'x', *next.code, 2) : AppendSpelt(shown, 'u', *next.code, 4);
    } else {
      shown += next.bytes;
    }
  }
  return shown;
}

std::size_t ColumnsOf(std::string_view text) {
  if (IsPlain(text)) return text.size();
  std::size_t columns = 0;
  while (!text.empty()) columns += ColumnsOf(TakeCharacter(text));
  return columns;
}

std::string CutTo(std::string_view text, std::size_t columns) {
  if (ColumnsOf(text) <= columns) return std::string(text);
  if (columns == 0) return {};
  std::string kept;
  std::size_t taken = 1;
  while (!text.empty()) {
    const WalkedCharacter next = TakeCharacter(text);
    taken += ColumnsOf(next);
    if (taken > columns) break;
    kept += next.bytes;
  }
  return kept + "…";
}

std::string PlainNumber(double value) {
  if (!std::isfinite(value)) return {};
  const double size = std::abs(value);
  const bool isPlain = size == 0 || (size >= 1e-9 && size < 1e16);
  return isPlain ? Digits(value, std::chars_format::fixed) : Digits(value);
}

std::string ShortNumber(double value) {
  if (!std::isfinite(value)) return {};
  if (std::abs(value) >= 1e16) return PlainNumber(value);
  std::string digits = Digits(value, std::chars_format::fixed, 4);
  digits.erase(digits.find_last_not_of('0') + 1);
  if (digits.back() == '.') digits.pop_back();
  return digits == "-0" ? "0" : digits;
}

std::string SecondsText(double seconds) {
  if (!std::isfinite(seconds)) return {};
  return Digits(seconds, std::chars_format::fixed, 2) + " s";
}

}  // namespace orvane
