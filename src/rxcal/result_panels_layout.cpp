#include "rxcal/result_panels_layout.h"

#include "rxcal/result_panels.h"

namespace orvane {

using namespace lay;

Layout LayOut(FrmAutoCalTxResult& panel) {
  return Column({
      Row({Group(panel.fraCalResults, {Of(panel.listPeakPower).FixedPitch().Stretched()}).Stretched(),
           Group(panel.fraPowerLevel, {Of(panel.listPowerLevel).FixedPitch().Stretched()}).Stretched()})
          .Stretched(),
      Row({Group(panel.fraCHANNELCAL, {Of(panel.listChanCalPeakPower).FixedPitch().Stretched()}).Stretched(),
           Group(panel.fraChanCalPowerLevel, {Of(panel.listChanCalPowerLevel).FixedPitch().Stretched()}).Stretched()})
          .Stretched(),
      Row({Space(), Of(panel.cmdTxcalClose)}),
  });
}

Layout LayOut(FrmAutoCalRxResult& panel) {
  return Column({
      Row({Group(panel.fraRawRxResults, {Of(panel.lstRawRxResults).FixedPitch().Stretched()}).Stretched(),
           Group(panel.fraConvertedRxResults, {Of(panel.lstConvertedRxResults).FixedPitch().Stretched()})
               .Stretched()})
          .Stretched(),
      Row({Group(panel.fraRxChannelCompensation, {Of(panel.lstRxChannelCompensation).FixedPitch().Stretched()})
               .Stretched(),
           Group(panel.fraRxTemperatureCompensation, {Of(panel.lstRxCalChannelBands).FixedPitch().Stretched()})
               .Stretched()})
          .Stretched(),
      Row({Space(), Of(panel.cmdAutoCalRxResutlsClose)}),
  });
}

Layout LayOut(FrmFail& panel) {
  return Column({
      Of(panel.Image1).Large().Stretched(),
      Row({Space(), Of(panel.Command1).Large().Main(), Space()}),
  });
}

Layout LayOut(FrmFailPass& panel) {
  return Column({
      Of(panel.Image1).Large().Stretched(),
      Of(panel.lblIncomplete).Large(),
      Of(panel.lstIncomplete),
      Row({Space(), Of(panel.Command1).Large().Main(), Space()}),
  });
}

}  // namespace orvane
