#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvane {

/// Texts are UTF-8. A byte that came from an instrument or an 8-bit file is held as the character of its number,
/// so that it can be written back as the same byte.

inline constexpr std::string_view kLineEnd = "\r\n";

/// Without the blanks at both ends (blanks only).
[[nodiscard]] std::string_view Trim(std::string_view text);

/// Without blanks, tabs, carriage returns and line feeds at both ends.
[[nodiscard]] std::string_view TrimBlanksAndLineEnds(std::string_view text);

/// Takes the first word off: trims `text`; with a blank in it, returns the trimmed part up to that blank and
/// leaves the rest in `text`; otherwise returns all of it and empties `text`.
[[nodiscard]] std::string ExtractWord(std::string& text);
/// The same on a part of a longer-lived text.
[[nodiscard]] std::string_view TakeWord(std::string_view& text);

[[nodiscard]] std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view with);

/// Every line end becomes one standard pair: carriage returns go, each line feed becomes the pair.
[[nodiscard]] std::string WithStandardLineEnds(std::string_view text);

/// Number of characters (code points).
[[nodiscard]] std::size_t CharacterCount(std::string_view utf8);

/// Byte offset of the character with that index, or the text's size if it has fewer.
[[nodiscard]] std::size_t CharacterOffset(std::string_view utf8, std::size_t index);

/// At most `count` characters from the one with that index on.
[[nodiscard]] std::string_view Characters(std::string_view utf8, std::size_t index, std::size_t count);

/// Takes the last character off; an empty text stays empty.
void DropLastCharacter(std::string& utf8);

[[nodiscard]] std::u32string DecodeUtf8(std::string_view utf8);
[[nodiscard]] std::string EncodeUtf8(std::u32string_view characters);

[[nodiscard]] bool IsAscii(std::string_view text);

/// One character per byte, and back. A character above 255 goes back as its UTF-8 bytes.
[[nodiscard]] std::string TextOfBytes(std::string_view bytes);
[[nodiscard]] std::string BytesOfText(std::string_view utf8);

}  // namespace orvane
