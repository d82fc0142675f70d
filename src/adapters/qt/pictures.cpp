#include "adapters/qt/pictures.h"

namespace orvane {
namespace {

constexpr auto kPass = R"(<svg xmlns="http://www.w3.org/2000/svg" width="350" height="200">
  <rect width="350" height="200" rx="14" fill="#1b7f3a"/>
  <path d="M105 104 L153 152 L247 50" fill="none" stroke="#ffffff" stroke-width="30" stroke-linecap="round"
        stroke-linejoin="round"/>
</svg>)";

constexpr auto kFail = R"(<svg xmlns="http://www.w3.org/2000/svg" width="350" height="200">
  <rect width="350" height="200" rx="14" fill="#c62828"/>
  <path d="M123 48 L227 152 M227 48 L123 152" fill="none" stroke="#ffffff" stroke-width="30"
        stroke-linecap="round"/>
</svg>)";

constexpr auto kIncomplete = R"(<svg xmlns="http://www.w3.org/2000/svg" width="350" height="200">
  <rect width="350" height="200" rx="14" fill="#ffbf00"/>
  <path d="M175 42 L175 118" fill="none" stroke="#000000" stroke-width="30" stroke-linecap="round"/>
  <circle cx="175" cy="160" r="17" fill="#000000"/>
</svg>)";

}  // namespace

QByteArray PictureNamed(std::string_view name) {
  if (name == "pass") return kPass;
  if (name == "fail") return kFail;
  if (name == "incomplete") return kIncomplete;
  return {};
}

}  // namespace orvane
