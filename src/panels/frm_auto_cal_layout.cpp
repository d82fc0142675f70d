#include "panels/frm_auto_cal_layout.h"

#include "panels/frm_auto_cal.h"

namespace orvane {

using namespace lay;

namespace {

constexpr int kRunCharacters = 14;
constexpr int kCaptionCharacters = 19;

/// Stop takes the height of all the others: it is to be hit without aiming.
Layout Runs(FrmAutoCal& panel) {
  return Group("Run",
               {Row({
                   Column({
                       Row({Of(panel.cmdAllCalStart).Main().Wide(kRunCharacters),
                            Of(panel.Command1).Wide(kRunCharacters), Of(panel.cmdTxAllCal).Wide(kRunCharacters)}),
                       Row({Of(panel.cmdGSM).Wide(kRunCharacters), Of(panel.cmdDCS).Wide(kRunCharacters), Space()}),
                   }),
                   Of(panel.cmdAutoCalStop).Large().Stretched(),
               })});
}

Layout Shows(FrmAutoCal& panel) {
  return Group(
      "Show",
      {Grid(2, {Of(panel.cmdTxResults), Of(panel.cmdRxAutoCalResults), Of(panel.cmdMP), Of(panel.cmdRampShape)})});
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
               {Form(kCaptionCharacters,
                     {
                         Field("Tolerance (dB)", {Of(panel.txtErrorRate)}),
                         Field("Last power (dBm)", {Of(panel.txtPeakPower).Wide(14)}),
                         Field("Power status", {Of(panel.txtTXP).Wide(14)}),
                         Field("AFC", {Spin(panel.txtAutoCalAFC, panel.updAutoCalAFC), Of(panel.cmdAutoCalSet)}),
                     })});
}

Layout ReceiveRun(FrmAutoCal& panel) {
  return Group("Receive run",
               {Form(kCaptionCharacters,
                     {
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
          Row({Of(panel.chkAutoSaveMode), Of(panel.cmdAutoCalResultSave), Of(panel.prgAutoCalDownload).Stretched(8),
               Space()}),
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
  constexpr int kCharacters = 14;
  return Group("Without effect: the receive run is on MP Auto Cal",
               {
                   Grid(4, {Of(panel.cmdAutoCalAGCStart), Of(panel.cmdAutoCalGMAGICStart), Of(panel.cmdRxAllAutoCal),
                            Text(""), Of(panel.cmdChannel), Of(panel.cmdTempCal), Of(panel.cmdCompensationChannel),
                            Of(panel.cmdCompensationTemperature)}),
                   Grid(2, {Field("AGC ARFCN", {Of(panel.txtAutoCalAGCARFCN)}).Wide(kCharacters),
                            Field("G-MAGIC ARFCN", {Of(panel.txtAutoCalGMAGICARFCN)}).Wide(kCharacters),
                            Field("GSM PM", {Of(panel.txtAutoCalPM)}).Wide(kCharacters),
                            Field("GSM900 F 7.1", {Of(panel.txtGMAGICGSM900F71)}).Wide(kCharacters),
                            Field("DCS PM", {Of(panel.txtAutoCalDCSPM)}).Wide(kCharacters),
                            Field("DCS1800 F 7.1", {Of(panel.txtGMAGICDCS1800F71)}).Wide(kCharacters)}),
               });
}

}  // namespace

Layout LayOut(FrmAutoCal& panel) {
  return Column({
      Row({Runs(panel).Stretched(), Save(panel), Shows(panel)}),
      Row({
              Column({Channels(panel), Measurement(panel), ReceiveRun(panel), Space()}),
              Column({PowerIndex(panel), InitialValue(panel), CableLoss(panel), Space()}),
              Column({View("searchConvergence").Stretched(), WithoutEffect(panel)}).Stretched(),
          })
          .Stretched(),
      Row({Space(), Of(panel.cmdAutoCalClose)}),
  });
}

}  // namespace orvane
