#include "app/records/markup.h"

#include "app/records/shown_text.h"
#include "app/records/utf8_walk.h"

namespace orvane {
namespace {

std::string_view EntityOf(std::string_view character) {
  if (character == "<") return "&lt;";
  if (character == ">") return "&gt;";
  if (character == "&") return "&amp;";
  if (character == "\"") return "&quot;";
  if (character == "'") return "&#39;";
  // A reader takes them for blanks in an attribute, or two of them for one.
  if (character == "\n") return "&#10;";
  if (character == "\r") return "&#13;";
  if (character == "\t") return "&#9;";
  return {};
}

/// XML 1.0 has no place for them, escaped or not.
bool IsForbidden(const WalkedCharacter& character) {
  return !character.code || IsObeyed(*character.code) || (*character.code & 0xFFFEU) == 0xFFFE;
}

}  // namespace

std::string Escaped(std::string_view text) {
  std::string escaped;
  while (!text.empty()) {
    const WalkedCharacter next = TakeCharacter(text);
    if (const std::string_view entity = EntityOf(next.bytes); !entity.empty()) {
      escaped += entity;
    } else {
      escaped += IsForbidden(next) ? Harmless(next.bytes) : std::string(next.bytes);
    }
  }
  return escaped;
}

std::string Attribute(std::string_view name, std::string_view value) {
  return " " + std::string(name) + "=\"" + Escaped(value) + "\"";
}

std::string Element(std::string_view name, std::string_view text) {
  const std::string tag(name);
  return "<" + tag + ">" + Escaped(text) + "</" + tag + ">";
}

}  // namespace orvane
