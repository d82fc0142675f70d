#include "txcal/frm_auto_cal_layout.h"

#include "txcal/frm_auto_cal.h"

namespace orvane {

using namespace lay;

namespace {

Layout Runs(FrmAutoCal& panel) {
  return Row({
      Group("Run", {Row({
                       Of(panel.cmdAllCalStart).Main(),
                       Of(panel.Command1),
                       Of(panel.cmdTxAllCal),
                       Of(panel.cmdGSM),
                       Of(panel.cmdDCS),
                       Space(),
                       Of(panel.cmdAutoCalStop).Wide(14),
                   })})
          .Stretched(),
      Group("Show", {Row({
                        Of(panel.cmdTxResults),
                        Of(panel.cmdRxAutoCalResults),
                        Of(panel.cmdMP),
                        Of(panel.cmdRampShape),
                    })}),
  });
}

Layout Channels(FrmAutoCal& panel) {
  return Group("Channels and losses", {
                                          Grid(3,
                                               {
                                                   Text(""),
                                                   Text("GSM"),
                                                   Text("DCS"),
                                                   Text("Channel (ARFCN)"),
                                                   Spin(panel.txtARFCN, panel.UpDownARFCN),
                                                   Spin(panel.txtdcsarfcn, panel.UpDowndcs),
                                                   Text("Tx loss (dB)"),
                                                   Spin(panel.txtLoss, panel.updLoss),
                                                   Spin(panel.txtDCSLoss, panel.updDCSLoss),
                                                   Text("Rx loss (dB)"),
                                                   Spin(panel.txtRxCableLossGSM, panel.updRxCableLossGSM),
                                                   Spin(panel.txtRxCableLossDCS, panel.updRxCableLossDCS),
                                               }),
                                          Row({Of(panel.optNoChanCal), Of(panel.optChanCal), Space()}),
                                      });
}

Layout Measurement(FrmAutoCal& panel) {
  return Group("Measurement",
               {Form({
                   Field("Tolerance (dB)", {Of(panel.txtErrorRate)}),
                   Field("Last power (dBm)", {Of(panel.txtPeakPower).Wide(14)}),
                   Field("Power status", {Of(panel.txtTXP).Wide(14)}),
                   Field("AFC", {Spin(panel.txtAutoCalAFC, panel.updAutoCalAFC), Of(panel.cmdAutoCalSet)}),
               })});
}

Layout ReceiveRun(FrmAutoCal& panel) {
  return Group("Receive run",
               {Form({
                   Field("Function", {Of(panel.ComboFunction)}),
                   Field("Offset", {Of(panel.comboOffset)}),
                   Field("Frequency offset (kHz)", {Of(panel.txtfreqOffset)}),
                   Field("Set point (dBm)", {Spin(panel.txtAutocalSetPointIL, panel.updAutocalSetPointIL)}),
               })});
}

Layout Save(FrmAutoCal& panel) {
  return Group(
      "Result save",
      {
          Row({Of(panel.optSaveModeEEPROM), Of(panel.optSaveModeFile), Of(panel.optSaveModeEEPROMFile), Space()}),
          Row({Of(panel.chkAutoSaveMode), Of(panel.cmdAutoCalResultSave), Space()}),
          Of(panel.prgAutoCalDownload),
      });
}

Layout PowerIndex(FrmAutoCal& panel) {
  return Group(
      panel.fraPowerIndex,
      {
          Row({Of(panel.optPowerIndexGSM), Of(panel.optPowerIndexDCS), Space()}),
          Row({Text("Level"), Spin(panel.txtPowerIndex, panel.updPowerIndex).Wide(4), Text("dBm"),
               Spin(panel.txtPowerIndexLevel, panel.updPowerIndexLevel).Wide(6), Space()}),
          Row({Of(panel.cmdPowerIndexSet), Of(panel.cmdPowerIndexSave), Of(panel.cmdPowerIndexLoad), Space()}),
      });
}

Layout InitialValue(FrmAutoCal& panel) {
  return Group(panel.fraInitialValue,
               {
                   Row({Of(panel.optinitialGSM), Of(panel.optinitialDCS), Space()}),
                   Row({Text("Level"), Spin(panel.txtinitialLevel, panel.updinitialLevel).Wide(4), Text("DAC"),
                        Spin(panel.txtinitialDAC, panel.updinitialDAC).Wide(6), Space()}),
                   Row({Of(panel.cmdinitialSet), Of(panel.cmdinitialSave), Of(panel.cmdinitialLoad), Space()}),
               });
}

Layout CableLoss(FrmAutoCal& panel) {
  return Group(panel.fraCableLoss,
               {Row({Of(panel.cmdRxLossSet), Of(panel.cmdRxLossSave), Of(panel.cmdRxLossLoad), Space()})});
}

/// Nothing stands behind these: the receive run lives on frmMPAutoCal.
Layout WithoutEffect(FrmAutoCal& panel) {
  return Group("Without effect (the receive run is on MP Auto Cal)",
               {
                   Row({Of(panel.cmdAutoCalAGCStart), Of(panel.cmdAutoCalGMAGICStart), Of(panel.cmdRxAllAutoCal),
                        Of(panel.cmdChannel), Of(panel.cmdTempCal), Of(panel.cmdCompensationChannel),
                        Of(panel.cmdCompensationTemperature), Space()}),
                   Row({Text("AGC ARFCN"), Of(panel.txtAutoCalAGCARFCN), Text("PM"), Of(panel.txtAutoCalPM),
                        Text("DCS PM"), Of(panel.txtAutoCalDCSPM), Space()}),
                   Row({Text("G-MAGIC ARFCN"), Of(panel.txtAutoCalGMAGICARFCN), Text("GSM900 F 7.1"),
                        Of(panel.txtGMAGICGSM900F71), Text("DCS1800 F 7.1"), Of(panel.txtGMAGICDCS1800F71), Space()}),
               });
}

}  // namespace

Layout LayOut(FrmAutoCal& panel) {
  return Column({
      Runs(panel),
      Row({
              Column({Channels(panel), Measurement(panel), ReceiveRun(panel), Space()}),
              Column({Save(panel), PowerIndex(panel), InitialValue(panel), CableLoss(panel), Space()}),
              Column({View("searchConvergence").Stretched(), WithoutEffect(panel)}).Stretched(),
          })
          .Stretched(),
      Row({Space(), Of(panel.cmdAutoCalClose)}),
  });
}

}  // namespace orvane
