#include "panels/orvane_main_layout.h"

#include "panels/orvane_main.h"
#include "panels/ramp_editor_layout.h"

namespace orvane {

using namespace lay;

namespace {

constexpr int kListCharacters = 14;
/// The groups of the first tab stand one below the other: their captions are of one width.
constexpr int kCaptionCharacters = 15;

Layout TargetSystem(OrvaneMain& panel) {
  return Group(
      panel.fraTargetSystem,
      {Form(kCaptionCharacters,
            {
                Field(panel.lblComPort, {Of(panel.cboPort).Wide(kListCharacters)}),
                Field(panel.lblTarget, {Of(panel.cboTarget).Wide(kListCharacters)}),
                Field(panel.lblSyncDelay, {Spin(panel.txtSyncDelay, panel.updSyncDelay).Wide(9), View("paceTime")}),
                Field("", {Of(panel.cmdTargetInitialize).Main(), Of(panel.cmdTargetReset), Of(panel.shpTargetOnOff)}),
            })});
}

Layout Instrument(OrvaneMain& panel) {
  return Group(panel.fraInstrument,
               {Form(kCaptionCharacters,
                     {
                         Field(panel.lblInstrumentList, {Of(panel.cboInstrumentList).Wide(kListCharacters)}),
                         Field(panel.lblPrimaryAddress, {Of(panel.cboPrimaryAddress).Wide(kListCharacters)}),
                         Field(panel.lblTimeOut, {Of(panel.cboTimeOut).Wide(kListCharacters)}),
                         Field("", {Of(panel.cmdInstrumentInitialize), Of(panel.cmdInsturmentReset),
                                    Of(panel.shpInstrumentOnOff)}),
                     })});
}

Layout PowerSupply(OrvaneMain& panel) {
  return Group(panel.Frame5, {Form(kCaptionCharacters,
                                   {
                                       Field("Voltage (V)", {Of(panel.txtPSVoltage), Of(panel.cmdPSVoltageSet)}),
                                       Field("Voltage loss (V)", {Of(panel.txtVoltageLoss)}),
                                       Field("", {Of(panel.cmdPSInitialize), Of(panel.cmdPSReset)}),
                                   })});
}

Layout SystemPage(OrvaneMain& panel) {
  return Column({TargetSystem(panel), Instrument(panel), PowerSupply(panel), Space()});
}

/// A group of one line. In groups one below the other the boxes stand in one line.
Layout Line(Frame& frame, const char* caption, Parts parts) {
  constexpr int kCharacters = 7;
  parts.push_back(Space());
  return Group(frame, {Field(caption, std::move(parts)).Wide(kCharacters)});
}

Layout RxPage(OrvaneMain& panel) {
  return Column({
      Grid(2,
           {
               Line(panel.fraBeacon, "ARFCN", {Of(panel.txtBeacon), Of(panel.cmdBeaconSet)}),
               Line(panel.fraServing, "ARFCN", {Of(panel.txtServing), Of(panel.cmdServingSet)}),
               Line(panel.fraAGCValue, "AGC", {Of(panel.txtAGCValue), Of(panel.cmdAGCValue), Of(panel.chkLNAOnOff)}),
               Line(panel.fraAFCValue, "AFC", {Of(panel.txtAFCValue), Of(panel.cmdAFCValueSet)}),
               Line(panel.fraRxTargetRFMode, "Band", {Of(panel.cboRxTargetRFMode), Of(panel.RXTargetSet)}),
               Line(panel.fraAGCPowerLevel, "dBm",
                    {Spin(panel.txtAGCPowerLevel, panel.updAGCPowerLevel), Of(panel.cmdAGCPowerLevelSet)}),
               Line(panel.fraFBTest, "Frames",
                    {Of(panel.txtFBFrame), Text("Mode"), Of(panel.cboFBMode), Of(panel.cmdFBTest)}),
               Line(panel.fraPMStart, "Frames", {Of(panel.txtPMFrame), Of(panel.cmdPMStart)}),
               Line(panel.fraAGCPM, "PM",
                    {Of(panel.txtAGCPM), Text("Deviation"), Of(panel.txtAGCPMStandardDeviation)}),
           }),
      Space(),
  });
}

Layout TargetPowerLevel(OrvaneMain& panel) {
  return Group(panel.fraTxLevel,
               {
                   Row({Of(panel.optTxLevelGSM), Of(panel.optTxLevelDCS), Space()}),
                   Form({
                       Field(panel.lblTxLevelIndex,
                             {Spin(panel.txtTxLevelIndex, panel.updTxLevelIndex).Wide(5), Of(panel.Command4)}),
                       Field(panel.lblPowerLevel,
                             {Spin(panel.txtPowerLevel, panel.updPowerLevel).Wide(5), Of(panel.cmdPowerlevelSet)}),
                   }),
               });
}

Layout UplinkBurst(OrvaneMain& panel) {
  return Group(panel.fraULTest, {
                                    Form({
                                        Field(panel.lblULPattern, {Of(panel.cboULPattern)}),
                                        Field(panel.lblULSlot, {Of(panel.cboULSlot)}),
                                    }),
                                    Row({Space(), Of(panel.cmdULTest)}),
                                });
}

Layout RampDelay(OrvaneMain& panel) {
  return Group("Ramp delay", {Row({Text("Up"), Of(panel.cboDELU).Wide(4), Text("Down"), Of(panel.cboDELD).Wide(4),
                                   Of(panel.cmdRampDelaySet), Space()})})
      .Stretched();
}

Layout TxPage(OrvaneMain& panel) {
  return Column({
      Row({
          TargetPowerLevel(panel),
          UplinkBurst(panel),
          Column({
                     Line(panel.fraTxTargetRFMode, "Band", {Of(panel.cboTxTargetRFMode), Of(panel.TXTargetSet)}),
                     Line(panel.fraAPCLoss, "dB", {Spin(panel.txtAPCLoss, panel.updAPCLoss), Of(panel.cmdAPCLoss)}),
                 })
              .Stretched(),
      }),
      LayOut(panel.ramp, RampDelay(panel)).Stretched(),
  });
}

Layout Console(OrvaneMain& panel) {
  return Column({
      Row({Of(panel.lblResults), Space(), Of(panel.cmdLogOn), Of(panel.cmdResultClear)}),
      Of(panel.txtResults).Lines(20).Wide(52).FixedPitch().Stretched(),
      Row({Of(panel.lblUserCommand), Of(panel.txtUserCommand).FixedPitch().Stretched()}),
  });
}

}  // namespace

Layout LayOut(OrvaneMain& panel) {
  return Row({
      Console(panel).Stretched(),
      Column({
          Tabs(panel.SSTab1, {SystemPage(panel), RxPage(panel), TxPage(panel)}).Stretched(),
          Row({Of(panel.cmdAutoCal), Of(panel.Command1), Of(panel.Command2), Space(), Of(panel.cmdExit)}),
      }),
  });
}

}  // namespace orvane
