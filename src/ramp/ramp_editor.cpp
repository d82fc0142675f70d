#include "ramp/ramp_editor.h"

#include <algorithm>

#include "base/failure.h"
#include "base/subscript.h"
#include "base/text.h"
#include "ramp/ramp_boxes.h"
#include "ramp/ramp_record.h"

namespace orvane {

RampEditor::RampEditor(RampEditorFace& face, const RampEditorRow& row, const RampEditorPorts& ports)
    : face_(face), row_(row), ports_(ports) {}

void RampEditor::Connect() {
  face_.optFile.onClick = [this] { ports_.ramp.RampStorageMode = "File"; };
  face_.optTarget.onClick = [this] { ports_.ramp.RampStorageMode = "Target"; };
  face_.txtRampTableIndex.onChange = [this] { OnIndexChanged(); };
  for (const auto& box : face_.txtUP) {
    box->onChange = [this] { OnValueChanged(face_.txtUP, face_.txtRampUpStatus); };
  }
  for (const auto& box : face_.txtDN) {
    box->onChange = [this] { OnValueChanged(face_.txtDN, face_.txtRampDownStatus); };
  }
  face_.cmdRampIndexset.onClick = [this] { StoreBoxes(); };
  face_.setToTarget.onClick = [this] { SendBoxes(); };
  face_.cmdRampLoad.onClick = [this] { Load(); };
  face_.cmdRampSave.onClick = [this] { Save(); };
}

void RampEditor::Open() {
  opening_ = true;
  ShowRampTable(ports_.ramp, 0, face_);
  opening_ = false;
  ShowRampSumsAsOpened(face_);
}

void RampEditor::OnValueChanged(const ControlArray<TextBox>& boxes, TextBox& status) {
  if (opening_) return;
  // An edit in progress isn't judged.
  if (std::any_of(boxes.begin(), boxes.end(), [](const auto& box) { return box->Text().empty(); })) return;
  if (CountRampValues(boxes) < static_cast<int>(boxes.size())) {
    ports_.boxes.Warning("Input the number 0~31 without blank.");
    return;
  }
  const int sum = SumOf(boxes);
  status.SetText(std::to_string(sum));
  status.SetBackColor(sum == row_.greenSum ? kGreen : kRed);
}

void RampEditor::OnIndexChanged() {
  constexpr int kLastGsmTable = kFirstBandRampTables - 1;
  const std::string& text = face_.txtRampTableIndex.Text();
  if (text.empty()) return;
  if (!IsPlainNumber(text, 0, kRampTables - 1)) {
    ports_.boxes.Warning("Input the number 0~30 without blank.");
    face_.txtRampTableIndex.SetText("0");
    return;
  }
  const int index = ToInteger(text);
  face_.lblRampIndex.SetCaption(index <= kLastGsmTable ? "GSM" : "DCS");
  ShowRampTable(ports_.ramp, index, face_);
}

bool RampEditor::AllBoxesValid() const {
  return CountRampValues(face_.txtUP) + CountRampValues(face_.txtDN) == kRampValues;
}

void RampEditor::StoreBoxes() {
  const std::string& index = face_.txtRampTableIndex.Text();
  if (index.empty()) {
    ports_.boxes.Warning("Input Ramp Table Index.");
    return;
  }
  if (!AllBoxesValid()) {
    ports_.boxes.Warning(std::string(row_.badValue));
    return;
  }
  const int table = ToInteger(index);
  auto& values = At(ports_.ramp.RampTable, table);
  for (std::size_t k = 0; k < kRampUpValues; ++k) {
    values[k] = face_.txtUP[k]->Text();
    values[k + kRampUpValues] = face_.txtDN[k]->Text();
  }
  CopyRampTableToRFParams(ports_.ramp, table, ports_.rf.RFParams);
}

// Sends what is shown; the table itself keeps its values.
void RampEditor::SendBoxes() {
  if (!AllBoxesValid()) {
    ports_.boxes.Warning("There is a wrong Ramp value. Check again!");
    return;
  }
  std::string line = "ttw " + face_.txtRampTableIndex.Text() + " ";
  for (const auto& box : face_.txtUP) line += box->Text() + " ";
  for (const auto& box : face_.txtDN) line += box->Text() + " ";
  PassOver([&] { ports_.link.RunTargetCommand(line); });
  if (!ports_.link.Succeeded()) {
    ports_.boxes.Warning("Error with saving Ramp Table.");
    return;
  }
  ports_.console.Append("E_OK" + std::string(kLineEnd));
  ports_.reply.TMStatus.clear();
}

}  // namespace orvane
