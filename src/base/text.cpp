#include "base/text.h"

#include <algorithm>

namespace orvane {
namespace {

template <class IsDropped>
std::string_view Trimmed(std::string_view text, IsDropped isDropped) {
  while (!text.empty() && isDropped(text.front())) text.remove_prefix(1);
  while (!text.empty() && isDropped(text.back())) text.remove_suffix(1);
  return text;
}

bool IsBlank(char c) { return c == ' '; }
bool IsBlankOrLineEnd(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

void AppendUtf8(std::string& out, char32_t c) {
  const auto byte = [&](char32_t value) { out += static_cast<char>(value); };
  if (c < 0x80) {
    byte(c);
  } else if (c < 0x800) {
    byte(0xC0 | (c >> 6));
    byte(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    byte(0xE0 | (c >> 12));
    byte(0x80 | ((c >> 6) & 0x3F));
    byte(0x80 | (c & 0x3F));
  } else {
    byte(0xF0 | (c >> 18));
    byte(0x80 | ((c >> 12) & 0x3F));
    byte(0x80 | ((c >> 6) & 0x3F));
    byte(0x80 | (c & 0x3F));
  }
}

}  // namespace

std::string_view Trim(std::string_view text) { return Trimmed(text, IsBlank); }

std::string_view TrimBlanksAndLineEnds(std::string_view text) { return Trimmed(text, IsBlankOrLineEnd); }

std::string_view TakeWord(std::string_view& text) {
  const std::string_view trimmed = Trim(text);
  const std::string_view word = trimmed.substr(0, trimmed.find(' '));
  text = trimmed.substr(word.size());
  return word;
}

std::string ExtractWord(std::string& text) {
  std::string_view rest = text;
  std::string word(TakeWord(rest));
  text = std::string(rest);
  return word;
}

std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view with) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t at = 0;;) {
    const auto hit = text.find(what, at);
    out.append(text.substr(at, hit - at));
    if (hit == std::string_view::npos) return out;
    out.append(with);
    at = hit + what.size();
  }
}

std::string WithStandardLineEnds(std::string_view text) {
  std::string out;
  out.reserve(text.size() + 2);
  const auto isLineEnd = [](char c) { return c == '\r' || c == '\n'; };
  for (const auto* at = text.begin(); at != text.end(); ++at) {
    const auto* const piece = at;
    at = std::find_if(at, text.end(), isLineEnd);
    out.append(piece, at);
    if (at == text.end()) break;
    if (*at == '\n') out += kLineEnd;
  }
  return out;
}

std::size_t CharacterCount(std::string_view utf8) {
  return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char c) { return !IsContinuation(c); }));
}

std::size_t CharacterOffset(std::string_view utf8, std::size_t index) {
  std::size_t at = 0;
  for (; at < utf8.size(); ++at) {
    if (IsContinuation(utf8[at])) continue;
    if (index == 0) break;
    --index;
  }
  return at;
}

std::string_view Characters(std::string_view utf8, std::size_t index, std::size_t count) {
  const std::string_view from = utf8.substr(CharacterOffset(utf8, index));
  return from.substr(0, CharacterOffset(from, count));
}

void DropLastCharacter(std::string& utf8) {
  while (utf8.size() > 1 && IsContinuation(utf8.back())) utf8.pop_back();
  if (!utf8.empty()) utf8.pop_back();
}

std::u32string DecodeUtf8(std::string_view utf8) {
  constexpr char32_t kReplacement = 0xFFFD;
  std::u32string out;
  out.reserve(utf8.size());
  for (std::size_t at = 0; at < utf8.size();) {
    const auto lead = static_cast<unsigned char>(utf8[at++]);
    const int more = lead < 0x80 ? 0 : lead < 0xC0 ? -1 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : lead < 0xF8 ? 3 : -1;
    char32_t c = more <= 0 ? lead : lead & (0x3FU >> more);
    bool whole = more >= 0;
    for (int i = 0; i < more && whole; ++i) {
      whole = at < utf8.size() && IsContinuation(utf8[at]);
      if (whole) c = (c << 6) | (static_cast<unsigned char>(utf8[at++]) & 0x3F);
    }
    out += whole ? c : kReplacement;
  }
  return out;
}

std::string EncodeUtf8(std::u32string_view characters) {
  std::string out;
  out.reserve(characters.size());
  for (const char32_t c : characters) AppendUtf8(out, c);
  return out;
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string TextOfBytes(std::string_view bytes) {
  if (IsAscii(bytes)) return std::string(bytes);
  std::string out;
  for (const char c : bytes) AppendUtf8(out, static_cast<unsigned char>(c));
  return out;
}

std::string BytesOfText(std::string_view utf8) {
  if (IsAscii(utf8)) return std::string(utf8);
  std::string out;
  for (const char32_t c : DecodeUtf8(utf8)) {
    if (c < 0x100) {
      out += static_cast<char>(c);
    } else {
      AppendUtf8(out, c);
    }
  }
  return out;
}

}  // namespace orvane
