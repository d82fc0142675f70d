#include "console/orvane_main.h"

#include "platform/gpib.h"

namespace orvane {
namespace {

std::vector<std::string> Numbers(int first, int last) {
  std::vector<std::string> texts;
  for (int i = first; i <= last; ++i) texts.push_back(std::to_string(i));
  return texts;
}

}  // namespace

OrvaneMain::OrvaneMain()
    : Panel("OrvaneMain", ""),
      cboPrimaryAddress(*this, "cboPrimaryAddress", "1", Numbers(0, 30)),
      cboTimeOut(*this, "cboTimeOut", "10s", GpibTimeOutTexts()) {}

}  // namespace orvane
