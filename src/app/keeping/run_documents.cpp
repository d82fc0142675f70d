#include "app/keeping/run_documents.h"

#include <algorithm>
#include <string_view>
#include <type_traits>

#include "app/automation/state_reader.h"
#include "base/failure.h"
#include "platform/controls.h"
#include "ramp/ramp_file.h"
#include "rfparams/rf_text_file.h"
#include "txcal/side_tables.h"

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

/// A table that has no form as a file is left out: the run will say so by itself when it comes to it.
template <class Make>
void Add(std::vector<RecordedDocument>& documents, const char* role, Make make) {
  PassOver([&] { documents.push_back({role, "bytes", make()}); });
}

std::string_view BytesOf(const RFParameter& record) {
  static_assert(std::is_trivially_copyable_v<RFParameter>);
  return {reinterpret_cast<const char*>(&record), sizeof record};
}

/// The losses in force stand in their boxes.
CalState WithLossesOf(const CalState& state, StationPanels& panels) {
  CalState now = state;
  const auto boxes = LossBoxes(panels.autoCal, panels.main);
  for (std::size_t i = 0; i < boxes.size(); ++i) now.LossTable.at(i) = Decimal4::FromText(boxes[i]->Text());
  return now;
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

const std::string& RunDocuments::ParameterText() {
  if (!text_.empty() && BytesOf(told_) == BytesOf(state_.rf.RFParams)) return text_;
  told_ = state_.rf.RFParams;
  RFState shown = state_.rf;
  RFParamsToDataConvert(shown);
  text_ = ParameterFileText(shown);
  return text_;
}

std::string RunDocuments::State() {
  Json state = ReadPlainStates(state_);
  Json seen = Json::array();
  for (const Panel* panel : panels_.All()) {
    if (panel->Created()) seen.push_back(panel->Name());
  }
  return Json{{"seen", std::move(seen)}, {"state", std::move(state)}}.dump(-1, ' ', false,
                                                                           Json::error_handler_t::replace);
}

std::vector<RecordedDocument> RunDocuments::Before() {
  std::vector<RecordedDocument> documents;
  documents.push_back({"parameters.before", "text", ParameterText()});
  Add(documents, "ramp_table", [&] { return RampRecords(state_.ramp); });
  Add(documents, "power_index", [&] { return PowerRecords(state_.cal); });
  Add(documents, "initial_value", [&] { return InitialRecords(state_.cal); });
  if (panels_.autoCal.Created() && panels_.main.Created()) {
    Add(documents, "cable_loss", [&] { return LossRecords(WithLossesOf(state_.cal, panels_)); });
  }
  documents.push_back({"panel", "json", PanelDocument(panels_.All())});
  return documents;
}

std::vector<RecordedDocument> RunDocuments::After() { return {{"parameters.after", "text", ParameterText()}}; }

}  // namespace orvane
