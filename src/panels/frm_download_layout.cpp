#include "panels/frm_download_layout.h"

#include "panels/frm_download.h"

namespace orvane {

using namespace lay;

namespace {

Layout Transfer(FrmDownLoad& panel) {
  return Column({
      Group(panel.fraDownloadOption,
            {
                Row({Of(panel.optDownloadFileLoad), Of(panel.optDownloadRAM), Of(panel.optDownloadFlash), Space()}),
                Row({Of(panel.cmdEepromDownLoad).Main(), Of(panel.cmdUpLoad), Space()}),
            }),
      Row({
          Group(panel.fraDownloadMode, {Row({Of(panel.optFullDownload), Of(panel.optPartialDownload), Space()})})
              .Stretched(),
          Group(panel.fraBBOption, {Of(panel.chkChargerParam)}),
          Group(panel.fraFlashTest, {Of(panel.cmdse)}),
      }),
  });
}

/// A hand test of the Target's EEPROM.
Layout EepromTest(FrmDownLoad& panel) {
  return Group(
      panel.fraEepromTest,
      {
          Row({
              Group(panel.fraActionMode, {Row({Of(panel.optEepromRead), Of(panel.optEepromWrite), Space()})})
                  .Stretched(),
              Group(panel.fraBytePageMode, {Row({Of(panel.optEepromByte), Of(panel.optEepromPage), Space()})})
                  .Stretched(),
          }),
          Group(panel.fraStratAddresLength,
                {Row({Field(panel.lblEepromAddress, {Spin(panel.txtEepromStartAddress, panel.updEepromStartAddress)}),
                      Field(panel.lblEepromLength, {Spin(panel.txtEepromLength, panel.updEepromLength)}), Space()})}),
          Group(panel.fraEepromDataWrite,
                {Row({Field(panel.lblDisplayAddress, {Of(panel.txtEepromDataWriteAddress)}),
                      Field(panel.lblEepromData, {Of(panel.txtEepromDataWrite)}), Space()})}),
          Row({Of(panel.cmdEepromTest), Of(panel.cmdEepromErase), Space()}),
      });
}

}  // namespace

Layout LayOut(FrmDownLoad& panel) {
  return Row({
      Column({Transfer(panel), EepromTest(panel), Of(panel.prgDownload), Space()}),
      Group(panel.fraEepromDataRead, {Of(panel.lstDataReadWindow).Wide(26).Lines(20).FixedPitch().Stretched()})
          .Stretched(),
  });
}

}  // namespace orvane
