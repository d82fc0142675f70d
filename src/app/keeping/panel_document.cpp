#include "app/keeping/panel_document.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "app/automation/json_rpc.h"
#include "base/failure.h"
#include "platform/controls.h"

namespace orvane {
namespace {

/// Of a text that is a console the end says what a reader wants to know.
constexpr std::size_t kLongestText = 4096;

void AppendText(std::string& json, std::string_view text) {
  if (text.size() > kLongestText) text.remove_prefix(text.size() - kLongestText);
  const auto isPlain = [](char c) { return c >= ' ' && c < 0x7F && c != '"' && c != '\\'; };
  if (std::all_of(text.begin(), text.end(), isPlain)) {
    json.append("\"").append(text).append("\"");
    return;
  }
  json += Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

void AppendValue(std::string& json, const Control& control) {
  switch (control.Kind()) {
    case ControlKind::Text:
      return AppendText(json, static_cast<const TextBox&>(control).Text());
    case ControlKind::Combo:
      return AppendText(json, static_cast<const ComboBox&>(control).Text());
    case ControlKind::List:
      json += std::to_string(static_cast<const ListBox&>(control).Selected());
      return;
    case ControlKind::Tab:
      json += std::to_string(static_cast<const TabControl&>(control).Selected());
      return;
    case ControlKind::UpDown:
      json += std::to_string(static_cast<const UpDown&>(control).Value());
      return;
    case ControlKind::Progress:
      json += std::to_string(static_cast<const ProgressBar&>(control).Value());
      return;
    case ControlKind::Option:
      json += static_cast<const OptionButton&>(control).Selected() ? "true" : "false";
      return;
    case ControlKind::Check:
      json += static_cast<const CheckBox&>(control).Checked() ? "true" : "false";
      return;
    case ControlKind::Lamp:
    case ControlKind::Image:
      json += std::to_string(control.BackColor());
      return;
    case ControlKind::Button:
    case ControlKind::Label:
    case ControlKind::Frame:
      return AppendText(json, dynamic_cast<const CaptionedControl&>(control).Caption());
  }
}

/// As a statement of the station that nobody hears.
template <class Handled, class Act>
void Quietly(Handled& handler, Act act) {
  const Handled kept = std::exchange(handler, nullptr);
  PassOver(act);
  handler = kept;
}

void ShowValue(Control& control, const Json& value) {
  switch (control.Kind()) {
    case ControlKind::Text: {
      auto& box = static_cast<TextBox&>(control);
      return Quietly(box.onChange, [&] { box.SetText(value.get<std::string>()); });
    }
    case ControlKind::Combo: {
      auto& combo = static_cast<ComboBox&>(control);
      return Quietly(combo.onChange, [&] { combo.SetText(value.get<std::string>()); });
    }
    case ControlKind::List: {
      auto& list = static_cast<ListBox&>(control);
      const int row = value.get<int>();
      if (row < static_cast<int>(list.Items().size())) list.Select(row);
      return;
    }
    case ControlKind::Tab:
      static_cast<TabControl&>(control).Select(value.get<int>());
      return;
    case ControlKind::UpDown: {
      auto& upDown = static_cast<UpDown&>(control);
      return Quietly(upDown.onChange, [&] { upDown.SetValue(value.get<Long>()); });
    }
    case ControlKind::Progress:
      PassOver([&] { static_cast<ProgressBar&>(control).SetValue(value.get<Long>()); });
      return;
    case ControlKind::Option: {
      auto& option = static_cast<OptionButton&>(control);
      if (value.get<bool>()) Quietly(option.onClick, [&] { option.Select(); });
      return;
    }
    case ControlKind::Check: {
      auto& check = static_cast<CheckBox&>(control);
      return Quietly(check.onClick, [&] { check.SetChecked(value.get<bool>()); });
    }
    case ControlKind::Lamp:
    case ControlKind::Image:
      return control.SetBackColor(value.get<Colour>());
    case ControlKind::Button:
    case ControlKind::Label:
    case ControlKind::Frame:
      return dynamic_cast<CaptionedControl&>(control).SetCaption(value.get<std::string>());
  }
}

}  // namespace

std::string PanelDocument(const std::vector<Panel*>& panels) {
  constexpr std::size_t kTypical = 24 << 10;
  std::string json;
  json.reserve(kTypical);
  for (const Panel* panel : panels) {
    json.append(json.empty() ? "{" : ",\n").append("\"").append(panel->Name()).append("\":{");
    bool isFirst = true;
    for (const Control* control : panel->Controls()) {
      json.append(isFirst ? "\"" : ",\"").append(control->Name()).append("\":");
      isFirst = false;
      AppendValue(json, *control);
    }
    json += "}";
  }
  return json + "}\n";
}

void ShowPanelDocument(std::string_view document, const std::vector<Panel*>& panels,
                       const std::function<bool(const Control&)>& isMeant) {
  const Json values = Json::parse(document);
  for (const Panel* panel : panels) {
    const auto of = values.find(panel->Name());
    if (of == values.end() || !panel->Created()) continue;
    // Names stand in the document in the order of the panel's controls, as a rule: each is looked for from there on.
    const auto& named = of->get_ref<const Json::object_t&>();
    auto at = named.begin();
    for (Control* control : panel->Controls()) {
      const auto isIts = [&](const auto& pair) { return pair.first == control->Name(); };
      auto hit = std::find_if(at, named.end(), isIts);
      if (hit == named.end()) hit = std::find_if(named.begin(), at, isIts);
      if (hit == named.end()) continue;
      if (isMeant(*control)) ShowValue(*control, hit->second);
      at = hit;
    }
  }
}

}  // namespace orvane
