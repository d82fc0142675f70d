#include "app/profile/panel_settings.h"

#include <algorithm>
#include <limits>

#include "base/numbers.h"
#include "platform/operator.h"

namespace orvane {
namespace {

using Type = PanelRow::Type;

/// Beyond the range of the spin button beside it, which holds nobody who types.
constexpr double kLongestPace = std::numeric_limits<Long>::max();
/// Beyond any cable, attenuator or amplifier of a bench.
constexpr double kLargestLossDb = 200;

PanelRow Combo(std::string_view name, std::string_view means, Type type, Control& (*control)(StationPanels&),
               std::string_view usual) {
  return {.name = name, .means = means, .type = type, .control = control, .usual = usual};
}

PanelRow Number(std::string_view name, std::string_view means, Type type, Control& (*control)(StationPanels&),
                std::string_view usual, double least, double most) {
  return {
      .name = name, .means = means, .type = type, .control = control, .usual = usual, .least = least, .most = most};
}

PanelRow Loss(std::string_view name, std::string_view means, Control& (*control)(StationPanels&)) {
  return Number(name, means, Type::Decimal, control, "-0.5", -kLargestLossDb, kLargestLossDb);
}

/// A control by the way to it: panel, and member of the panel.
template <auto... Path>
Control& ControlAt(StationPanels& panels) {
  return (panels.*....*Path);
}
template <auto Member>
OptionButton& CalOption(StationPanels& panels) {
  return panels.autoCal.*Member;
}
template <auto Member>
OptionButton& LoadOption(StationPanels& panels) {
  return panels.baseBand.*Member;
}

constexpr auto kMain = &StationPanels::main;
constexpr auto kCal = &StationPanels::autoCal;
constexpr auto kBase = &StationPanels::baseBand;

std::vector<PanelRow> SystemRows() {
  return {
      Combo("port", "Port Setting", Type::Word, &ControlAt<kMain, &OrvaneMain::cboPort>, "COM1"),
      Combo("target", "Target", Type::Word, &ControlAt<kMain, &OrvaneMain::cboTarget>, "T9300"),
      Number("pace", "Sync Delay: turns of a counting loop", Type::Whole,
             &ControlAt<kMain, &OrvaneMain::txtSyncDelay>, "20000", 0, kLongestPace),
      Combo("dialect", "Which test set: HP8922M, HP8960 or 4400M(WaveTek)", Type::Word,
            &ControlAt<kMain, &OrvaneMain::cboInstrumentList>, "HP8960"),
      Combo("test_set_address", "Primary Address of the test set", Type::Whole,
            &ControlAt<kMain, &OrvaneMain::cboPrimaryAddress>, "1"),
      Combo("test_set_time_out", "Time Out of the test set", Type::Word, &ControlAt<kMain, &OrvaneMain::cboTimeOut>,
            "10s"),
      Combo("supply_address", "Prim Addr of the supply", Type::Whole,
            &ControlAt<kBase, &FrmBaseBand::supply, &BenchSessionFace::primAddress>, "2"),
      Combo("supply_time_out", "Time Out of the supply", Type::Word,
            &ControlAt<kBase, &FrmBaseBand::supply, &BenchSessionFace::timeOut>, "10s"),
      Combo("load_address", "Prim Addr of the load", Type::Whole,
            &ControlAt<kBase, &FrmBaseBand::load, &BenchSessionFace::primAddress>, "5"),
      Combo("load_time_out", "Time Out of the load", Type::Word,
            &ControlAt<kBase, &FrmBaseBand::load, &BenchSessionFace::timeOut>, "10s"),
  };
}

std::vector<PanelRow> CalibrationRows() {
  return {
      Loss("tx_loss_gsm", "Tx loss (dB), GSM; else as Cable.loss has it", &ControlAt<kCal, &FrmAutoCal::txtLoss>),
      Loss("tx_loss_dcs", "Tx loss (dB), DCS; else as Cable.loss has it", &ControlAt<kCal, &FrmAutoCal::txtDCSLoss>),
      Loss("rx_loss_gsm", "Rx loss (dB), GSM; else as Cable.loss has it",
           &ControlAt<kCal, &FrmAutoCal::txtRxCableLossGSM>),
      Loss("rx_loss_dcs", "Rx loss (dB), DCS; else as Cable.loss has it",
           &ControlAt<kCal, &FrmAutoCal::txtRxCableLossDCS>),
      Number("voltage_loss", "Voltage Loss (V) of the supply's lead; else as Cable.loss has it", Type::Decimal,
             &ControlAt<kMain, &OrvaneMain::txtVoltageLoss>, "0.01", 0, 10),
      Number("tolerance", "Tolerance (dB) of the power search", Type::Decimal,
             &ControlAt<kCal, &FrmAutoCal::txtErrorRate>, "0.1", 0, 10),
      {.name = "channel_calibration",
       .means = "Execute CHN CAL",
       .type = Type::Switch,
       .control = nullptr,
       .usual = "false",
       .choices = {{"true", &CalOption<&FrmAutoCal::optChanCal>}, {"false", &CalOption<&FrmAutoCal::optNoChanCal>}}},
      {.name = "save_mode",
       .means = "Where a result is saved: EEPROM, File or EEPROMFile",
       .type = Type::Word,
       .control = nullptr,
       .usual = "EEPROM",
       .choices = {{"EEPROM", &CalOption<&FrmAutoCal::optSaveModeEEPROM>},
                   {"File", &CalOption<&FrmAutoCal::optSaveModeFile>},
                   {"EEPROMFile", &CalOption<&FrmAutoCal::optSaveModeEEPROMFile>}}},
      {.name = "auto_save",
       .means = "Auto: a run saves its result by itself",
       .type = Type::Switch,
       .control = &ControlAt<kCal, &FrmAutoCal::chkAutoSaveMode>,
       .usual = "true"},
      {.name = "use_loader",
       .means = "Use Loader",
       .type = Type::Switch,
       .control = nullptr,
       .usual = "true",
       .choices = {{"true", &LoadOption<&FrmBaseBand::optLoaderUse>},
                   {"false", &LoadOption<&FrmBaseBand::optLoaderDisuse>}}},
  };
}

std::string ListOf(const std::vector<std::string>& words) {
  std::string list;
  for (const std::string& word : words) list += (list.empty() ? "" : ", ") + word;
  return list;
}

/// What the control shows of a setting.
std::string Shown(const PanelRow& row, StationPanels& panels) {
  for (const PanelRow::Choice& choice : row.choices) {
    if (choice.option(panels).Selected()) return std::string(choice.word);
  }
  if (row.control == nullptr) return "";
  Control& control = row.control(panels);
  if (const auto* box = dynamic_cast<const TextBox*>(&control)) return box->Text();
  if (const auto* combo = dynamic_cast<const ComboBox*>(&control)) return combo->Text();
  const auto* check = dynamic_cast<const CheckBox*>(&control);
  return check != nullptr && check->Checked() ? "true" : "false";
}

Operator::Outcome ActFor(Operator& hand, const PanelRow& row, const std::string& text, StationPanels& panels) {
  for (const PanelRow::Choice& choice : row.choices) {
    OptionButton& option = choice.option(panels);
    if (choice.word == text) return option.Selected() ? std::nullopt : hand.Select(option);
  }
  Control& control = row.control(panels);
  if (auto* box = dynamic_cast<TextBox*>(&control)) return hand.Type(*box, text);
  if (auto* check = dynamic_cast<CheckBox*>(&control)) return hand.Check(*check, text == "true");
  auto& combo = dynamic_cast<ComboBox&>(control);
  const auto& items = combo.Items();
  const auto entry = std::find(items.begin(), items.end(), text);
  return hand.Pick(combo, static_cast<std::size_t>(entry - items.begin()));
}

Panel& PanelOf(const PanelRow& row, StationPanels& panels) {
  return row.control != nullptr ? row.control(panels).Owner() : row.choices.front().option(panels).Owner();
}

void ApplyOne(const PanelRow& row, const PanelSetting& setting, StationPanels& panels, OperationNest& nest,
              const std::function<void(const std::string&)>& tell) {
  Operator hand(nest);
  const auto refused = [&](const std::string& why) { tell(setting.where + ": " + setting.name + ": " + why); };
  try {
    Panel& panel = PanelOf(row, panels);
    if (!panel.Created()) nest.Run([&] { panel.Touch(); });
    if (const auto failure = ActFor(hand, row, setting.text, panels)) return refused(*failure);
  } catch (const ControlDisabled& disabled) {
    return refused(disabled.what());
  }
  const std::string shown = Shown(row, panels);
  if (shown != setting.text) refused("the station does not take " + setting.text + "; it has " + shown + ".");
}

}  // namespace

std::optional<std::string> PanelRow::FaultOf(const std::string& text) const {
  if (type == Type::Switch) return std::nullopt;
  std::vector<std::string> words;
  for (const Choice& choice : choices) words.emplace_back(choice.word);
  if (control != nullptr) {
    // The entries of a list are its face's.
    static StationPanels faces;
    if (const auto* combo = dynamic_cast<const ComboBox*>(&control(faces))) words = combo->Items();
  }
  if (!words.empty()) {
    if (std::find(words.begin(), words.end(), text) != words.end()) return std::nullopt;
    return "\"" + text + "\" is none of " + ListOf(words);
  }
  const double value = ToDouble(text);
  if (value >= least && value <= most) return std::nullopt;
  return text + " is not between " + NumberText(least) + " and " + NumberText(most);
}

std::span<const PanelRow> PanelRows() {
  static const std::vector<PanelRow> rows = [] {
    std::vector<PanelRow> all = SystemRows();
    for (PanelRow& row : CalibrationRows()) all.push_back(std::move(row));
    return all;
  }();
  return rows;
}

const PanelRow* FindPanelRow(std::string_view name) {
  const auto rows = PanelRows();
  const auto hit = std::find_if(rows.begin(), rows.end(), [&](const PanelRow& row) { return row.name == name; });
  return hit == rows.end() ? nullptr : &*hit;
}

void Apply(const std::vector<PanelSetting>& settings, StationPanels& panels, OperationNest& nest,
           const std::function<void(const std::string& text)>& tell) {
  for (const PanelRow& row : PanelRows()) {
    const auto setting = std::find_if(settings.begin(), settings.end(),
                                      [&](const PanelSetting& each) { return each.name == row.name; });
    if (setting != settings.end()) ApplyOne(row, *setting, panels, nest, tell);
  }
}

}  // namespace orvane
