#include "rfparams/rf_type.h"

#include <array>
#include <string>

#include "base/text.h"

namespace orvane {
namespace {

struct RFType {
  std::string_view name;
  Integer code;
};

constexpr std::array kRFTypes{
    RFType{"RF_PASCAL_20", 0x2030}, RFType{"RF_ATLAS_20B", 0x2020}, RFType{"RF_GAIA_20B", 0x2002},
    RFType{"RF_GAIA_20A", 0x2001},  RFType{"RF_GAIA_20X", 0x2000},  RFType{"RF_SL2", 0x1000},
    RFType{"RF_IGNORE", 0x0000},
};

}  // namespace

Integer RFTypeCode(std::string_view text) {
  for (const RFType& type : kRFTypes) {
    if (type.name == text) return type.code;
  }
  return ToInteger("&H" + std::string(text.substr(CharacterOffset(text, 2))));
}

std::optional<std::string_view> RFTypeName(Integer code) {
  for (const RFType& type : kRFTypes) {
    if (type.code == code) return type.name;
  }
  return std::nullopt;
}

}  // namespace orvane
