#include "app/automation/unit_json.h"

#include <algorithm>
#include <array>

namespace orvane {
namespace {

struct TextRow {
  std::string_view member;
  std::string UnitTexts::*text;
  std::optional<std::string> UnitChange::*change;
};
constexpr std::array kTexts{
    TextRow{"serial", &UnitTexts::serial, &UnitChange::serial},
    TextRow{"operator", &UnitTexts::operatorName, &UnitChange::operatorName},
    TextRow{"part", &UnitTexts::part, &UnitChange::part},
};
constexpr std::string_view kTags = "tags";

[[noreturn]] void Fail(const std::string& text) { throw RpcFailure(RpcError::InvalidParams, text); }

/// No value for null.
std::optional<std::string> TextOrNull(const std::string& name, const Json& value) {
  if (value.is_null()) return std::nullopt;
  if (!value.is_string()) Fail("\"" + name + "\" must be a text.");
  return value.get<std::string>();
}

}  // namespace

UnitChange UnitChangeOf(const Json& params) {
  UnitChange change;
  for (const auto& [member, value] : params.items()) {
    const auto* row =
        std::find_if(kTexts.begin(), kTexts.end(), [&name = member](const TextRow& r) { return r.member == name; });
    if (row != kTexts.end()) {
      change.*row->change = TextOrNull(member, value).value_or("");
    } else if (member != kTags) {
      Fail("A unit has no \"" + member + "\".");
    } else if (!value.is_object()) {
      Fail("\"tags\" must be an object of texts.");
    } else {
      for (const auto& [key, text] : value.items()) change.tags[key] = TextOrNull("tags." + key, text);
    }
  }
  return change;
}

Json UnitObject(const UnitTexts& texts) {
  Json object = Json::object();
  for (const TextRow& row : kTexts) {
    const std::string& text = texts.*row.text;
    object[std::string(row.member)] = text.empty() ? Json() : Json(text);
  }
  Json tags = Json::object();
  for (const auto& [key, value] : texts.tags) tags[key] = value;
  object[std::string(kTags)] = tags;
  return object;
}

}  // namespace orvane
