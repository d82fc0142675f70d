#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// One character off the front of a text. Texts of a record come from instruments, scanners and other stores, so they
/// are not trusted to be UTF-8.
struct WalkedCharacter {
  /// No value for a byte that is no part of a sound character.
  std::optional<char32_t> code;
  /// Its bytes, in the text.
  std::string_view bytes;
};

/// Takes it off; the text must not be empty.
[[nodiscard]] WalkedCharacter TakeCharacter(std::string_view& rest);

/// A control character of either set, or one that turns the direction of what stands around it.
[[nodiscard]] bool IsObeyed(char32_t code);

}  // namespace orvane
