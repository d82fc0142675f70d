#include "app/keeping/run_documents.h"

#include <string_view>
#include <type_traits>

#include "app/keeping/panel_document.h"
#include "app/keeping/station_snapshot.h"
#include "base/failure.h"
#include "ramp/ramp_file.h"
#include "rfparams/rf_text_file.h"
#include "txcal/side_tables.h"

namespace orvane {
namespace {

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

const std::string& RunDocuments::ParameterText() {
  if (!text_.empty() && BytesOf(told_) == BytesOf(state_.rf.RFParams)) return text_;
  told_ = state_.rf.RFParams;
  RFState shown = state_.rf;
  RFParamsToDataConvert(shown);
  text_ = ParameterFileText(shown);
  return text_;
}

std::string RunDocuments::State() { return SnapshotText(state_, panels_, verifiesEeprom_); }

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
