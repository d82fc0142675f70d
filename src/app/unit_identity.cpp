#include "app/unit_identity.h"

#include <algorithm>

#include "base/text.h"
#include "panels/run_guard.h"

namespace orvane {
namespace {

bool IsControl(char32_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }
bool IsSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }

void Require(const std::string& name, std::string_view text) {
  if (const auto fault = FaultOfUnitText(text)) throw UnitFault(name + " " + *fault);
}

void Put(std::string& text, const std::optional<std::string>& given) {
  if (given) text = *given;
}

}  // namespace

std::optional<std::string> FaultOfUnitText(std::string_view text) {
  const std::u32string characters = DecodeUtf8(text);
  if (std::any_of(characters.begin(), characters.end(), &IsSurrogate) || EncodeUtf8(characters) != text) {
    return "is not in UTF-8";
  }
  if (std::any_of(characters.begin(), characters.end(), &IsControl)) return "holds a control character";
  return std::nullopt;
}

std::pair<std::string, std::string> ParseTag(std::string_view text) {
  const auto sign = text.find('=');
  if (sign == std::string_view::npos || sign == 0) throw UnitFault("a tag is KEY=VALUE");
  Require("it", text);
  return {std::string(text.substr(0, sign)), std::string(text.substr(sign + 1))};
}

void UnitIdentity::Follow(StationPanels& panels) {
  // While a run is under way, whatever it is, the buttons that start one are held.
  const Button& start = panels.autoCal.cmdAllCalStart;
  panels.autoCal.cmdAllCalStart.changed.Connect([this, &start] {
    if (inRun_ == !start.Enabled()) return;
    inRun_ = !start.Enabled();
    if (!inRun_) texts_.serial.clear();
    changed.Emit();
  });
}

void UnitIdentity::Change(const UnitChange& change) {
  if (change.serial) Require("The serial number", *change.serial);
  if (change.operatorName) Require("The operator", *change.operatorName);
  if (change.part) Require("The part", *change.part);
  for (const auto& [key, value] : change.tags) {
    if (key.empty()) throw UnitFault("A tag has no name");
    Require("The name of a tag", key);
    if (value) Require("The tag \"" + key + "\"", *value);
  }
  Put(texts_.serial, change.serial);
  Put(texts_.operatorName, change.operatorName);
  Put(texts_.part, change.part);
  for (const auto& [key, value] : change.tags) {
    if (value) {
      texts_.tags[key] = *value;
    } else {
      texts_.tags.erase(key);
    }
  }
  changed.Emit();
}

bool StartsARun(StationPanels& panels, const Control& pressed) {
  const auto starters = RunStarters(panels.autoCal, panels.mpAutoCal, panels.baseBand);
  // The bring-up goes on into the whole run by itself.
  return &pressed == &panels.main.cmdTargetInitialize ||
         std::find(starters.begin(), starters.end(), &pressed) != starters.end();
}

std::optional<std::string> SerialRefusal(const UnitIdentity& unit, StationPanels& panels, const Control& pressed) {
  if (!unit.LacksSerial() || !StartsARun(panels, pressed)) return std::nullopt;
  return std::string(kSerialNeeded);
}

}  // namespace orvane
