#include "txcal/cal_panel_inputs.h"

#include "base/numbers.h"
#include "platform/input_filter.h"

namespace orvane {
namespace {

struct BoxRule {
  TextBox FrmAutoCal::*box;
  std::string_view allowed;
  /// Not always the box's default.
  std::string_view resetText;
};

constexpr std::array kBoxRules{
    BoxRule{&FrmAutoCal::txtARFCN, "", "62"},
    BoxRule{&FrmAutoCal::txtdcsarfcn, "", "699"},
    BoxRule{&FrmAutoCal::txtfreqOffset, "", "699"},
    BoxRule{&FrmAutoCal::txtAutoCalAGCARFCN, "", "40"},
    BoxRule{&FrmAutoCal::txtAutoCalGMAGICARFCN, "", "700"},
    BoxRule{&FrmAutoCal::txtinitialDAC, "", "750"},
    BoxRule{&FrmAutoCal::txtAutoCalAFC, "-", "-1180"},
    BoxRule{&FrmAutoCal::txtAutocalSetPointIL, "-.", "-48"},
    BoxRule{&FrmAutoCal::txtLoss, "-.", "-0.5"},
    BoxRule{&FrmAutoCal::txtDCSLoss, "-.", "-0.5"},
    BoxRule{&FrmAutoCal::txtRxCableLossGSM, "-.", "-0.5"},
    BoxRule{&FrmAutoCal::txtRxCableLossDCS, "-.", "-0.5"},
    BoxRule{&FrmAutoCal::txtErrorRate, "-.", "0.1"},
    BoxRule{&FrmAutoCal::txtPowerIndexLevel, "./", "13"},
};

constexpr double kTenths = 10;

}  // namespace

void CalPanelInputs::Connect() {
  FrmAutoCal& panel = panel_.Untouched();
  for (const BoxRule& rule : kBoxRules) {
    TextBox& box = panel.*rule.box;
    box.onChange = [this, &box, &rule] { FilterInput(box, {rule.allowed}, rule.resetText, boxes_); };
  }
  for (ComboBox* list : {&panel.ComboFunction, &panel.comboOffset}) {
    // Picking is checked; typing is not, so that odd texts reach the runs.
    list->onClick = [this, list] {
      FilterItem(*list, list->Items(), list->Items().front(), boxes_, "Input a item in the list.");
    };
  }
  const auto showTenths = [](UpDown& spin, TextBox& box) {
    spin.onChange = [&spin, &box] { box.SetText(NumberText(spin.Value() / kTenths)); };
  };
  showTenths(panel.updRxCableLossGSM, panel.txtRxCableLossGSM);
  showTenths(panel.updRxCableLossDCS, panel.txtRxCableLossDCS);
}

}  // namespace orvane
