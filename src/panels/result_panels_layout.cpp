#include "panels/result_panels_layout.h"

#include "panels/result_panels.h"

namespace orvane {

using namespace lay;

namespace {

/// A frame around the list that it captions.
Layout Rows(Frame& frame, ListBox& list) {
  return Group(frame, {Of(list).Wide(30).Lines(8).FixedPitch().Stretched()}).Stretched();
}

}  // namespace

Layout LayOut(FrmAutoCalTxResult& panel) {
  return Column({
      Row({
              Column(
                  {Rows(panel.fraCalResults, panel.listPeakPower), Rows(panel.fraPowerLevel, panel.listPowerLevel)})
                  .Stretched(),
              Column({Rows(panel.fraCHANNELCAL, panel.listChanCalPeakPower),
                      Rows(panel.fraChanCalPowerLevel, panel.listChanCalPowerLevel)})
                  .Stretched(),
              View("channelCodes").Wide(64).Stretched(2),
          })
          .Stretched(),
      Row({Space(), Of(panel.cmdTxcalClose)}),
  });
}

Layout LayOut(FrmAutoCalRxResult& panel) {
  return Column({
      Grid(2,
           {
               Rows(panel.fraRawRxResults, panel.lstRawRxResults),
               Rows(panel.fraConvertedRxResults, panel.lstConvertedRxResults),
               Rows(panel.fraRxChannelCompensation, panel.lstRxChannelCompensation),
               Rows(panel.fraRxTemperatureCompensation, panel.lstRxCalChannelBands),
           })
          .Stretched(),
      Row({Space(), Of(panel.cmdAutoCalRxResutlsClose)}),
  });
}

Layout LayOut(FrmFail& panel) {
  return Column({
      Of(panel.Image1).Large().Stretched(),
      View("verdictReasons"),
      Row({Space(), Of(panel.Command1).Large().Main().Wide(26), Space()}),
  });
}

Layout LayOut(FrmFailPass& panel) {
  return Column({
      Of(panel.Image1).Large().Stretched(),
      Of(panel.lblDoubt).Large(),
      Of(panel.lblIncomplete).Large(),
      Of(panel.lstIncomplete).Wide(72).Lines(5),
      View("verdictReasons"),
      Of(panel.lblRemedy).Lines(2),
      Row({Space(), Of(panel.Command1).Large().Main().Wide(26), Space()}),
  });
}

}  // namespace orvane
