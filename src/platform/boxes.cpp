#include "platform/boxes.h"

namespace orvane {

std::string_view ButtonText(BoxButton button) {
  switch (button) {
    case BoxButton::Ok:
      return "OK";
    case BoxButton::Cancel:
      return "Cancel";
    case BoxButton::Yes:
      return "Yes";
    case BoxButton::No:
      return "No";
    case BoxButton::Retry:
      return "Retry";
  }
  return "";
}

}  // namespace orvane
