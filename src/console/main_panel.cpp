#include "console/main_panel.h"

#include "platform/operation_nest.h"

namespace orvane {

void MainPanel::Connect() {
  OrvaneMain& main = main_.Untouched();
  main.cmdAutoCal.onClick = [this] { autoCal_->Show(); };
  main.Command1.onClick = [this] { baseBand_->Show(); };
  main.Command2.onClick = [this] { downLoad_->Show(); };
  main.cmdExit.onClick = [this] { Exit(); };
  // The other panels hide; without this one the station would run on unseen.
  main.onClose = [this] { main_->cmdExit.Click(); };
  ConnectSupply(main);
}

void MainPanel::ConnectSupply(OrvaneMain& main) {
  main.cmdPSInitialize.onClick = [this] { baseBand_->supply.initialize.Click(); };
  main.cmdPSReset.onClick = [this] { baseBand_->supply.reset.Click(); };
  main.cmdPSVoltageSet.onClick = [this] { baseBand_->cmdPSVoltageSet.Click(); };
  // One way: frmBaseBand's own boxes may come to differ, and they are what counts.
  main.txtPSVoltage.onChange = [this] { baseBand_->txtPSVoltage.SetText(main_->txtPSVoltage.Text()); };
  main.txtVoltageLoss.onChange = [this] { baseBand_->txtVoltageLoss.SetText(main_->txtVoltageLoss.Text()); };
}

void MainPanel::Exit() {
  const Box question{
      "Do you want to finish ORVANE?", "Exit", BoxIcon::Exclamation, {BoxButton::Ok, BoxButton::Cancel}};
  if (boxes_.Show(question) == BoxButton::Ok) throw StationEnded();
}

}  // namespace orvane
