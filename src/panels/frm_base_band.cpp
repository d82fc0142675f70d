#include "panels/frm_base_band.h"

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
      supply{{*this, "lblPSBoardNumber", "Board No"},   {*this, "txtPSBoardNumber", "0"},
             {*this, "lblPSPrimAddress", "Prim Addr"},  {*this, "cboPSPrimAddress", "2", NumberItems(0, 14)},
             {*this, "lblPSSecAddress", "Sec Addr"},    {*this, "cboPSSecAddress", "None", SecondaryAddresses()},
             {*this, "lblPSTimeOut", "Time Out"},       {*this, "cboPSTimeOut", "10s", GpibTimeOutTexts()},
             {*this, "lblPSBufferSize", "Buffer Size"}, {*this, "TxtPSBufferSize", "1000"},
             {*this, "cmdPSInitialize", "Initialize"},  {*this, "cmdPSReset", "Reset"}},
      load{
          {*this, "lblLoaderBoardNumber", "Board No"},   {*this, "txtLoaderBoardNumber", "0"},
          {*this, "lblLoaderPrimAddress", "Prim Addr"},  {*this, "cboLoaderPrimAddress", "5", NumberItems(0, 14)},
          {*this, "lblLoaderSecAddress", "Sec Addr"},    {*this, "cboLoaderSecAddress", "None", SecondaryAddresses()},
          {*this, "lblLoaderTimeOut", "Time Out"},       {*this, "cboLoaderTimeOut", "10s", GpibTimeOutTexts()},
          {*this, "lblLoaderBufferSize", "Buffer Size"}, {*this, "TxtLoaderBufferSize", "1000"},
          {*this, "cmdLoaderInitialize", "Initialize"},  {*this, "cmdLoaderReset", "Reset"}},
      cboDelay(*this, "cboDelay", "400", NumberItems(100, 1500, 100)) {}

}  // namespace orvane
