#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// A text as the content of an element or of an attribute, in XML and in HTML. What XML has no place for and what
/// would turn the direction of the text around it is spelt ("\x00").
[[nodiscard]] std::string Escaped(std::string_view text);

/// ` name="value"`.
[[nodiscard]] std::string Attribute(std::string_view name, std::string_view value);

/// `<name>text</name>`, the text escaped.
[[nodiscard]] std::string Element(std::string_view name, std::string_view text);

}  // namespace orvane
