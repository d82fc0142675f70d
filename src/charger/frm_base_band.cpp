#include "charger/frm_base_band.h"

#include "platform/gpib.h"
#include "platform/number_items.h"

namespace orvane {
namespace {

std::vector<std::string> SecondaryAddresses() {
  auto items = NumberItems(96, 126);
  items.insert(items.begin(), "None");
  return items;
}

}  // namespace

FrmBaseBand::FrmBaseBand()
    : Panel("frmBaseBand", "BaseBand"),
      supply{{*this, "txtPSBoardNumber", "0"},
             {*this, "cboPSPrimAddress", "2", NumberItems(0, 14)},
             {*this, "cboPSSecAddress", "None", SecondaryAddresses()},
             {*this, "cboPSTimeOut", "10s", GpibTimeOutTexts()},
             {*this, "TxtPSBufferSize", "1000"},
             {*this, "cmdPSInitialize", "Initialize"},
             {*this, "cmdPSReset", "Reset"}},
      load{{*this, "txtLoaderBoardNumber", "0"},
           {*this, "cboLoaderPrimAddress", "5", NumberItems(0, 14)},
           {*this, "cboLoaderSecAddress", "None", SecondaryAddresses()},
           {*this, "cboLoaderTimeOut", "10s", GpibTimeOutTexts()},
           {*this, "TxtLoaderBufferSize", "1000"},
           {*this, "cmdLoaderInitialize", "Initialize"},
           {*this, "cmdLoaderReset", "Reset"}},
      cboDelay(*this, "cboDelay", "400", NumberItems(100, 1500, 100)) {}

}  // namespace orvane
