#include "txcal/run_inputs.h"

#include <array>
#include <type_traits>
#include <utility>

namespace orvane {
namespace {

constexpr unsigned kReceive = RunInput::BitOf(RunStep::Receive);
constexpr unsigned kDcs = RunInput::BitOf(RunStep::TransmitDcs);
constexpr unsigned kGsm = RunInput::BitOf(RunStep::TransmitGsm);
constexpr unsigned kTransmit = kDcs | kGsm;
constexpr unsigned kSave = RunInput::BitOf(RunStep::Save);
constexpr unsigned kCharger = RunInput::BitOf(RunStep::Charger);
constexpr unsigned kAll = kReceive | kTransmit | kSave | kCharger;
/// The channel step stands on the level that the record holds, and what no step calibrates is saved as it stands.
constexpr unsigned kRecord = kTransmit | kSave;

template <class Values>
std::string Joined(const Values& values) {
  std::string text;
  for (const std::string& value : values) text.append(value).append(",");
  return text;
}

/// The bytes of plain numbers, to be compared.
template <class Plain>
std::string BytesOf(const Plain& plain) {
  static_assert(std::is_trivially_copyable_v<Plain>);
  return {reinterpret_cast<const char*>(&plain), sizeof plain};
}

class Rows {
 public:
  template <class Box>
  void Add(const char* name, unsigned steps, const Box& box) {
    rows_.push_back({name, steps, false, &box, box.Text()});
  }
  /// A box that the steps themselves fill, and take their values from a wait later.
  void AddFilled(const char* name, unsigned steps, const TextBox& box) {
    rows_.push_back({name, steps, true, &box, box.Text()});
  }
  void AddValue(const char* name, unsigned steps, std::string value, bool setByStep = false) {
    rows_.push_back({name, steps, setByStep, nullptr, std::move(value)});
  }
  [[nodiscard]] std::vector<RunInput> Take() { return std::move(rows_); }

 private:
  std::vector<RunInput> rows_;
};

void AddReceive(Rows& rows, const FrmAutoCal& autoCal, const FrmMPAutoCal& channels) {
  const std::array names{"GBand1", "GBand2", "GBand3", "Band1", "Band2",  "Band3",
                         "Band4",  "Band5",  "Band6",  "Band7", "EBand1", "EBand2"};
  const auto boxes = channels.ArfcnBoxes();
  for (std::size_t i = 0; i < boxes.size(); ++i) rows.Add(names.at(i), kReceive, *boxes[i]);
  rows.Add("Rx loss (dB), GSM", kReceive, autoCal.txtRxCableLossGSM);
  rows.Add("Rx loss (dB), DCS", kReceive, autoCal.txtRxCableLossDCS);
  rows.Add("Function", kReceive, autoCal.ComboFunction);
  rows.Add("Offset", kReceive, autoCal.comboOffset);
  rows.Add("Frequency offset (kHz)", kReceive, autoCal.txtfreqOffset);
  rows.Add("Set point (dBm)", kReceive, autoCal.txtAutocalSetPointIL);
}

void AddTransmit(Rows& rows, const FrmAutoCal& autoCal) {
  rows.Add("Channel (ARFCN), GSM", kGsm, autoCal.txtARFCN);
  rows.Add("Channel (ARFCN), DCS", kDcs, autoCal.txtdcsarfcn);
  rows.Add("Tx loss (dB), GSM", kGsm, autoCal.txtLoss);
  rows.Add("Tx loss (dB), DCS", kDcs, autoCal.txtDCSLoss);
  rows.Add("Tolerance (dB)", kTransmit, autoCal.txtErrorRate);
  rows.AddFilled("Last power (dBm)", kTransmit, autoCal.txtPeakPower);
}

void AddTables(Rows& rows, const RunInputSources& from) {
  rows.AddValue("Power Index", kTransmit, BytesOf(from.cal.PowerIndex));
  rows.AddValue("Initial Value", kTransmit, BytesOf(from.cal.InitValueIndex));
  std::string ramps;
  for (const auto& table : from.ramp.RampTable) ramps += Joined(table);
  rows.AddValue("Ramp Table", kTransmit, ramps);
  rows.AddValue("RF Parameter", kRecord, BytesOf(from.rf.RFParams));
}

void AddSave(Rows& rows, const RunInputSources& from) {
  rows.AddValue("Result save", kSave,
                from.cal.SaveMode + (from.autoCal.chkAutoSaveMode.Checked() ? " by itself" : ""));
  rows.AddValue("The name of the file", kSave, from.cal.CalSaveFileName + (from.cal.CalSaveFileOk ? "" : "?"));
  rows.AddValue("The EEPROM image", kSave, Joined(from.rf.EepromImage), true);
}

void AddCharger(Rows& rows, const FrmBaseBand& baseBand) {
  rows.Add("Voltage Loss", kCharger, baseBand.txtVoltageLoss);
  rows.Add("ShutDown", kCharger, baseBand.cboShutDownVoltage);
  rows.Add("Delay", kCharger, baseBand.cboDelay);
  rows.AddFilled("4.2 V", kCharger, baseBand.txtCC2CVADC);
  rows.AddFilled("ShutDown", kCharger, baseBand.txtShutDownADC);
  rows.AddFilled("Data to write in Flash", kCharger, baseBand.txtChargerDisplay);
}

}  // namespace

std::vector<RunInput> RunInputsOf(const RunInputSources& from) {
  Rows rows;
  rows.Add("Sync Delay", kAll, from.main.txtSyncDelay);
  rows.AddValue("Instruments", kAll, from.testSet.TestSetKind + (from.testSet.TestSetReady ? "" : "?"));
  AddReceive(rows, from.autoCal, from.mpAutoCal);
  AddTransmit(rows, from.autoCal);
  AddTables(rows, from);
  AddSave(rows, from);
  AddCharger(rows, from.baseBand);
  return rows.Take();
}

}  // namespace orvane
