#include "app/records/utf8_walk.h"

#include <array>

namespace orvane {
namespace {

/// What the first byte says: how many follow it, its own bits, and the least code that needs so many.
struct Lead {
  unsigned char mask;
  unsigned char mark;
  std::size_t following;
  char32_t least;
};
constexpr std::array kLeads{Lead{0x80, 0x00, 0, 0}, Lead{0xE0, 0xC0, 1, 0x80}, Lead{0xF0, 0xE0, 2, 0x800},
                            Lead{0xF8, 0xF0, 3, 0x10000}};

bool IsSound(char32_t code, char32_t least) {
  return code >= least && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

std::optional<char32_t> CodeOf(std::string_view text, std::size_t& size) {
  const auto first = static_cast<unsigned char>(text.front());
  for (const Lead& lead : kLeads) {
    if ((first & lead.mask) != lead.mark) continue;
    if (text.size() <= lead.following) return std::nullopt;
    char32_t code = first & static_cast<unsigned char>(~lead.mask);
    for (std::size_t i = 1; i <= lead.following; ++i) {
      const auto next = static_cast<unsigned char>(text[i]);
      if ((next & 0xC0U) != 0x80U) return std::nullopt;
      code = code << 6U | (next & 0x3FU);
    }
    if (!IsSound(code, lead.least)) return std::nullopt;
    size = lead.following + 1;
    return code;
  }
  return std::nullopt;
}

}  // namespace

WalkedCharacter TakeCharacter(std::string_view& rest) {
  std::size_t size = 1;
  const auto code = CodeOf(rest, size);
  const WalkedCharacter taken{code, rest.substr(0, size)};
  rest.remove_prefix(size);
  return taken;
}

bool IsObeyed(char32_t code) {
  return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x061C || code == 0x200E || code == 0x200F ||
         (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

}  // namespace orvane
