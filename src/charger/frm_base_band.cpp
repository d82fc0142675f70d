#include "charger/frm_base_band.h"

#include "platform/gpib.h"

namespace orvane {
namespace {

std::vector<std::string> Numbers(int first, int last, int step = 1) {
  std::vector<std::string> texts;
  for (int i = first; i <= last; i += step) texts.push_back(std::to_string(i));
  return texts;
}

std::vector<std::string> SecondaryAddresses() {
  auto texts = Numbers(96, 126);
  texts.insert(texts.begin(), "None");
  return texts;
}

}  // namespace

FrmBaseBand::FrmBaseBand()
    : Panel("frmBaseBand", "BaseBand"),
      supply{{*this, "txtPSBoardNumber", "0"},
             {*this, "cboPSPrimAddress", "2", Numbers(0, 14)},
             {*this, "cboPSSecAddress", "None", SecondaryAddresses()},
             {*this, "cboPSTimeOut", "10s", GpibTimeOutTexts()},
             {*this, "TxtPSBufferSize", "1000"},
             {*this, "cmdPSInitialize", "Initialize"},
             {*this, "cmdPSReset", "Reset"}},
      load{{*this, "txtLoaderBoardNumber", "0"},
           {*this, "cboLoaderPrimAddress", "5", Numbers(0, 14)},
           {*this, "cboLoaderSecAddress", "None", SecondaryAddresses()},
           {*this, "cboLoaderTimeOut", "10s", GpibTimeOutTexts()},
           {*this, "TxtLoaderBufferSize", "1000"},
           {*this, "cmdLoaderInitialize", "Initialize"},
           {*this, "cmdLoaderReset", "Reset"}},
      cboDelay(*this, "cboDelay", "400", Numbers(100, 1500, 100)) {}

}  // namespace orvane
