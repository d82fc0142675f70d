#include "instruments/dialect.h"

namespace orvane {
namespace {

constexpr DialectText TextOf(Dialect dialect, Purpose purpose) {
  const DialectRow& row = kDialectRows[static_cast<std::size_t>(purpose)];
  switch (dialect) {
    case Dialect::Hp8922M:
      return row.hp8922M;
    case Dialect::Hp8960:
      return row.hp8960;
    case Dialect::None:
      break;
  }
  return {};
}

}  // namespace

std::string LineFor(Dialect dialect, Purpose purpose, std::string_view value) {
  const DialectText text = TextOf(dialect, purpose);
  if (!text.head.ends_with(' ')) return std::string(text.head);
  std::string line;
  line.reserve(text.head.size() + value.size() + text.unit.size());
  return line.append(text.head).append(value).append(text.unit);
}

std::string LineForEveryKind(Purpose purpose, std::string_view value) {
  return LineFor(Dialect::Hp8960, purpose, value);
}

}  // namespace orvane
