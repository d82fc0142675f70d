#include "app/automation/control_json.h"

namespace orvane {
namespace {

std::string_view KindText(ControlKind kind) {
  switch (kind) {
    case ControlKind::Button:
      return "button";
    case ControlKind::Text:
      return "text";
    case ControlKind::Combo:
      return "combo";
    case ControlKind::List:
      return "list";
    case ControlKind::Option:
      return "option";
    case ControlKind::Check:
      return "check";
    case ControlKind::Label:
      return "label";
    case ControlKind::Frame:
      return "frame";
    case ControlKind::UpDown:
      return "updown";
    case ControlKind::Lamp:
      return "lamp";
    case ControlKind::Progress:
      return "progress";
    case ControlKind::Tab:
      return "tab";
    case ControlKind::Image:
      return "image";
  }
  return "";
}

void AddOwn(Json& object, const TextBox& box) { object["text"] = box.Text(); }

void AddOwn(Json& object, const ComboBox& combo) {
  object["text"] = combo.Text();
  object["items"] = combo.Items();
  object["selected"] = combo.Selected();
}

void AddOwn(Json& object, const ListBox& list) {
  object["items"] = list.Items();
  object["selected"] = list.Selected();
}

void AddOwn(Json& object, const TabControl& tabs) {
  object["items"] = tabs.Tabs();
  object["selected"] = tabs.Selected();
}

void AddOwn(Json& object, const UpDown& upDown) {
  object["value"] = upDown.Value();
  object["min"] = upDown.Min();
  object["max"] = upDown.Max();
  object["step"] = upDown.Step();
}

void AddOwn(Json& object, const ProgressBar& bar) {
  object["value"] = bar.Value();
  object["min"] = 0;
  object["max"] = bar.Max();
}

/// Adds what the control's kind has, if it is of that class.
template <class Kind>
void AddIfIs(Json& object, const Control& control) {
  if (const auto* own = dynamic_cast<const Kind*>(&control)) AddOwn(object, *own);
}

}  // namespace

Json ControlObject(const Control& control) {
  Json object{
      {"name", control.Owner().Name() + "." + control.Name()},
      {"kind", KindText(control.Kind())},
      {"enabled", control.EnabledForOperator()},
      {"visible", control.Visible()},
  };
  if (const auto* captioned = dynamic_cast<const CaptionedControl*>(&control)) {
    object["caption"] = captioned->Caption();
  }
  AddIfIs<TextBox>(object, control);
  AddIfIs<ComboBox>(object, control);
  AddIfIs<ListBox>(object, control);
  AddIfIs<TabControl>(object, control);
  AddIfIs<UpDown>(object, control);
  AddIfIs<ProgressBar>(object, control);
  if (const auto* option = dynamic_cast<const OptionButton*>(&control)) object["checked"] = option->Selected();
  if (const auto* check = dynamic_cast<const CheckBox*>(&control)) object["checked"] = check->Checked();
  object["foreColor"] = control.ForeColor();
  object["backColor"] = control.BackColor();
  return object;
}

Json PanelObject(const Panel& panel) {
  return Json{{"name", panel.Name()},
              {"caption", panel.Caption()},
              {"created", panel.Created()},
              {"visible", panel.Visible()}};
}

}  // namespace orvane
