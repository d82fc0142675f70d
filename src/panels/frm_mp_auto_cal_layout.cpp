#include "panels/frm_mp_auto_cal_layout.h"

#include "panels/frm_mp_auto_cal.h"

namespace orvane {

using namespace lay;

namespace {

constexpr int kArfcnCharacters = 5;

Layout Channel(Label& caption, TextBox& box, UpDown& spin) {
  return Field(caption, {Spin(box, spin).Wide(kArfcnCharacters)});
}

Layout Channels(FrmMPAutoCal& panel) {
  return Row({
      Column({
          Group(panel.frmGSMRxCal, {Form({
                                       Channel(panel.lblGBand1, panel.txtGSMArfcn1, panel.updGSMArfcn1),
                                       Channel(panel.lblGBand2, panel.txtGSMArfcn2, panel.updGSMArfcn2),
                                       Channel(panel.lblGBand3, panel.txtGSMArfcn3, panel.updGSMArfcn3),
                                       Channel(panel.lblEBand1, panel.txtEGSMArfcn1, panel.updEGSMArfcn1),
                                       Channel(panel.lblEBand2, panel.txtEGSMArfcn2, panel.updEGSMArfcn2),
                                   })}),
          Space(),
      }),
      Column({
          Group(panel.frmDCSRxCal, {Form({
                                       Channel(panel.lblBand1, panel.txtDCSArfcn1, panel.updDCSArfcn1),
                                       Channel(panel.lblBand2, panel.txtDCSArfcn2, panel.updDCSArfcn2),
                                       Channel(panel.lblBand3, panel.txtDCSArfcn3, panel.updDCSArfcn3),
                                       Channel(panel.lblBand4, panel.txtDCSArfcn4, panel.updDCSArfcn4),
                                       Channel(panel.lblBand5, panel.txtDCSArfcn5, panel.updDCSArfcn5),
                                       Channel(panel.lblBand6, panel.txtDCSArfcn6, panel.updDCSArfcn6),
                                       Channel(panel.lblBand7, panel.txtDCSArfcn7, panel.updDCSArfcn7),
                                   })}),
          Space(),
      }),
  });
}

Layout GMagic(FrmMPAutoCal& panel) {
  return Group(panel.frmMPAutoCalGMAGIC,
               {Grid(3, {
                            Of(panel.lblMPGMAGICGSM900),
                            Field(panel.lblMPGMAGICGSM900F80, {Of(panel.txtMPGMAGICGSM900F80)}),
                            Field(panel.lblMPGMAGICGSM900F71, {Of(panel.txtMPGMAGICGSM900F71)}),
                            Of(panel.lblMPGMAGICDCS1800),
                            Field(panel.lblMPGMAGICDCS1800F80, {Of(panel.txtMPGMAGICDCS1800F80)}),
                            Field(panel.lblMPGMAGICDCS1800F71, {Of(panel.txtMPGMAGICDCS1800F71)}),
                        })});
}

Layout RxPart(FrmMPAutoCal& panel) {
  return Group(
      panel.frmMPAutoCalRx,
      {Row({
               Column({Channels(panel), GMagic(panel), Space()}),
               Column({
                          Group(panel.fraMPRxResults,
                                {Of(panel.lstMPRxChannelCalResult).Wide(36).Lines(8).FixedPitch().Stretched()})
                              .Stretched(),
                          View("receiveCompensation").Wide(56).Stretched(),
                      })
                   .Stretched(),
           })
           .Stretched()});
}

Layout TargetLevels(FrmMPAutoCal& panel) {
  constexpr int kCharacters = 4;
  return Group(panel.fraTargetLevel, {Grid(5, {
                                                  Text(""),
                                                  Of(panel.lblTargetLevel1),
                                                  Of(panel.lblTargetLevel2),
                                                  Of(panel.lblTargetLevel3),
                                                  Of(panel.lblTargetLevel4),
                                                  Of(panel.lblTargetLevelGSM),
                                                  Of(panel.txtTargetLevel1).Wide(kCharacters),
                                                  Of(panel.txtTargetLevel2).Wide(kCharacters),
                                                  Of(panel.txtTargetLevel3).Wide(kCharacters),
                                                  Of(panel.txtTargetLevel4).Wide(kCharacters),
                                                  Of(panel.lblTargetLevelDCS),
                                                  Of(panel.txtTargetLevel5).Wide(kCharacters),
                                                  Of(panel.txtTargetLevel6).Wide(kCharacters),
                                                  Of(panel.txtTargetLevel7).Wide(kCharacters),
                                                  Of(panel.txtTargetLevel8).Wide(kCharacters),
                                              })});
}

Layout DacOrSlope(FrmMPAutoCal& panel) {
  return Group(panel.fraDACUse, {Grid(2, {
                                             Field(panel.lblDACUseGSM1, {Of(panel.txtDACUseGSM1)}).Wide(5),
                                             Field(panel.lblDACUseGSM2, {Of(panel.txtDACUseGSM2)}).Wide(5),
                                             Field(panel.lblDACUseDCS1, {Of(panel.txtDACUseDCS1)}).Wide(5),
                                             Field(panel.lblDACUseDCS2, {Of(panel.txtDACUseDCS2)}).Wide(5),
                                         })});
}

Layout Pattern(FrmMPAutoCal& panel) {
  return Group(panel.fraAPCDACPattern,
               {
                   Row({Of(panel.optGSMPattern), Of(panel.optDCSPattern), Space()}),
                   Row({
                       Field(panel.lblMPPattern, {Spin(panel.txtMPPattern, panel.updMPPattern).Wide(3)}),
                       Field(panel.lblMPLevel, {Spin(panel.txtMPLevel, panel.updMPLevel).Wide(3)}),
                       Field(panel.lblMPDAC, {Spin(panel.txtMPDAC, panel.updMPDAC).Wide(5)}),
                       Space(),
                   }),
                   Row({Of(panel.cmdMPSet), Of(panel.cmdPatternLoad), Space()}),
               });
}

Layout TxPart(FrmMPAutoCal& panel) {
  return Group(
      panel.frmMPAutoCalTx,
      {
          Row({Of(panel.cmdMPTxAutoCal), Of(panel.cmdSlopeUse), Of(panel.cmdDACuse), Space()}),
          Pattern(panel),
          DacOrSlope(panel),
          TargetLevels(panel),
          Group(panel.fraMPTxResults, {Of(panel.listMPTxResults).Lines(3).FixedPitch().Stretched()}).Stretched(),
      });
}

}  // namespace

Layout LayOut(FrmMPAutoCal& panel) {
  return Column({
      Row({RxPart(panel).Stretched(), TxPart(panel)}).Stretched(),
      Row({Of(panel.cmdMPRxAllAutoCal).Main(), Space(), Of(panel.cmdMPAutoCalClose)}),
  });
}

}  // namespace orvane
