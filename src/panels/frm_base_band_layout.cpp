#include "panels/frm_base_band_layout.h"

#include "panels/frm_base_band.h"

namespace orvane {

using namespace lay;

namespace {

constexpr int kSessionCharacters = 7;
constexpr int kCaptionCharacters = 15;

/// One instrument's GPIB session.
Layout Session(BenchSessionFace& session) {
  return Column({
      Form(kCaptionCharacters,
           {
               Field(session.boardNumberLabel, {Of(session.boardNumber).Wide(kSessionCharacters)}),
               Field(session.primAddressLabel, {Of(session.primAddress).Wide(kSessionCharacters)}),
               Field(session.secAddressLabel, {Of(session.secAddress).Wide(kSessionCharacters)}),
               Field(session.timeOutLabel, {Of(session.timeOut).Wide(kSessionCharacters)}),
               Field(session.bufferSizeLabel, {Of(session.bufferSize).Wide(kSessionCharacters)}),
               Field("", {Of(session.initialize), Of(session.reset)}),
           }),
  });
}

Layout PowerSupply(FrmBaseBand& panel) {
  return Group(panel.fraPowerSupply,
               {
                   Session(panel.supply),
                   Form(kCaptionCharacters,
                        {
                            Field("Voltage (V)", {Of(panel.txtPSVoltage), Of(panel.cmdPSVoltageSet)}),
                            Field(panel.lblVoltageLoss, {Of(panel.txtVoltageLoss), Text("V")}),
                            Field("Output", {Of(panel.cmdPSVoltageEnable)}),
                        }),
                   Space(),
               });
}

Layout Loader(FrmBaseBand& panel) {
  return Group(panel.fraLoader,
               {
                   Session(panel.load),
                   Form(kCaptionCharacters,
                        {
                            Field("Current (A)", {Of(panel.TxtLoaderCurrent), Of(panel.cmdLoaderCurrentSet)}),
                            Field("Resistance (ohm)", {Of(panel.txtLoaderResister), Of(panel.cmdLoaderResisterSet)}),
                            Field("", {Of(panel.optLoaderUse), Of(panel.optLoaderDisuse)}),
                        }),
                   Space(),
               });
}

/// The battery thresholds: the whole run, and its steps by hand, each with what it found.
Layout Charger(FrmBaseBand& panel) {
  return Group(
      "Battery calibration",
      {
          Row({Of(panel.cmdChargerAutoCal).Main(), Space(), Of(panel.cmdBatCalEnable), Of(panel.cmdBatCalDisable),
               Of(panel.shpBatCalOnOff)}),
          Row({
              Of(panel.lblShutDownVoltage),
              Of(panel.cboShutDownVoltage),
              Of(panel.lblShutDownVoltageUnit),
              Space(),
              Of(panel.lblDelay),
              Of(panel.cboDelay),
          }),
          Row({
              Grid(2, {Of(panel.cmdCC2CVADC), Of(panel.txtCC2CVADC), Of(panel.cmdShutDownADC),
                       Of(panel.txtShutDownADC), Of(panel.cmdZeroCal), Of(panel.txtZeroCal), Of(panel.cmdCVDAC),
                       Of(panel.txtCVDACResult), Of(panel.lblLoopTime), Of(panel.txtLoopTime)}),
              Space(),
              Column({
                  Group(panel.fraCalculatedResults, {Form({Field(panel.lblCCDACResult, {Of(panel.txtCCDACResult)}),
                                                           Field(panel.lblCVCutValue, {Of(panel.TxtCVCutValue)})})}),
                  Of(panel.cmdCalculateParameter),
                  Of(panel.cmdWriteChargerEEPROM),
                  Space(),
              }),
          }),
          Group(panel.fraChargerDisplay, {Of(panel.txtChargerDisplay).Lines(7).Wide(40).FixedPitch().Stretched()})
              .Stretched(),
      });
}

}  // namespace

Layout LayOut(FrmBaseBand& panel) {
  return Column({
      Row({PowerSupply(panel), Loader(panel), Charger(panel).Stretched()}).Stretched(),
      Row({Space(), Of(panel.cmdBaseBandClose)}),
  });
}

}  // namespace orvane
