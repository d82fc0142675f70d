#include "adapters/qt/pictures.h"

namespace orvane {
namespace {

// The words are drawn, not written: no machine lacks their type. Each letter is 80 high.
constexpr auto kPass = R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="350" height="200">
  <rect width="350" height="200" rx="14" fill="#1b7f3a"/>
  <g fill="none" stroke="#ffffff" stroke-linecap="round" stroke-linejoin="round">
    <path d="M139 56 L163 80 L211 29" stroke-width="17"/>
    <g stroke-width="15">
      <path transform="translate(53 107)" d="M8 72 V8 H26 A18 18 0 0 1 26 44 H12"/>
      <path transform="translate(116 107)" d="M6 72 L25 8 L44 72 M13 51 H37"/>
      <path transform="translate(180 107)" d="M42 19 C38 10 32 8 25 8 C15 8 8 14 8 23 C8 33 16 37 25 40
            C35 43 43 47 43 57 C43 66 35 72 25 72 C17 72 10 69 7 60"/>
      <path transform="translate(247 107)" d="M42 19 C38 10 32 8 25 8 C15 8 8 14 8 23 C8 33 16 37 25 40
            C35 43 43 47 43 57 C43 66 35 72 25 72 C17 72 10 69 7 60"/>
    </g>
  </g>
</svg>)svg";

constexpr auto kFail = R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="350" height="200">
  <rect width="350" height="200" rx="14" fill="#c62828"/>
  <g fill="none" stroke="#ffffff" stroke-linecap="round" stroke-linejoin="round">
    <path d="M148 28 L202 82 M202 28 L148 82" stroke-width="17"/>
    <g stroke-width="15">
      <path transform="translate(67 107)" d="M8 72 V8 H42 M8 40 H36"/>
      <path transform="translate(127 107)" d="M6 72 L25 8 L44 72 M13 51 H37"/>
      <path transform="translate(192 107)" d="M10 8 V72"/>
      <path transform="translate(228 107)" d="M8 8 V72 H42"/>
    </g>
  </g>
</svg>)svg";

// A value beyond the upper one of its two limits. Its ground is dark: nobody takes it for the other one of its
// colour.
constexpr auto kOutOfTolerance = R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="350" height="200">
  <rect width="350" height="200" rx="14" fill="#201800"/>
  <path d="M95 50 H255 M95 92 H255" fill="none" stroke="#ffbf00" stroke-width="8" stroke-linecap="round"/>
  <circle cx="175" cy="24" r="14" fill="#ffbf00"/>
  <g fill="none" stroke="#ffbf00" stroke-width="14" stroke-linecap="round" stroke-linejoin="round">
    <path transform="translate(96 112) scale(0.45)" d="M25 8 C12 8 8 20 8 40 C8 60 12 72 25 72 C38 72 42 60
            42 40 C42 20 38 8 25 8 Z"/>
    <path transform="translate(123 112) scale(0.45)" d="M8 8 V52 C8 66 14 72 25 72 C36 72 42 66 42 52 V8"/>
    <path transform="translate(150 112) scale(0.45)" d="M6 8 H44 M25 8 V72"/>
    <path transform="translate(204 112) scale(0.45)" d="M25 8 C12 8 8 20 8 40 C8 60 12 72 25 72 C38 72 42 60
            42 40 C42 20 38 8 25 8 Z"/>
    <path transform="translate(231 112) scale(0.45)" d="M8 72 V8 H42 M8 40 H36"/>
  </g>
  <g fill="none" stroke="#ffbf00" stroke-width="14" stroke-linecap="round" stroke-linejoin="round">
    <path transform="translate(56 155) scale(0.45)" d="M6 8 H44 M25 8 V72"/>
    <path transform="translate(83 155) scale(0.45)" d="M25 8 C12 8 8 20 8 40 C8 60 12 72 25 72 C38 72 42 60
            42 40 C42 20 38 8 25 8 Z"/>
    <path transform="translate(110 155) scale(0.45)" d="M8 8 V72 H42"/>
    <path transform="translate(137 155) scale(0.45)" d="M42 8 H8 V72 H42 M8 40 H36"/>
    <path transform="translate(164 155) scale(0.45)" d="M8 72 V8 H26 A16 16 0 0 1 26 42 H8 M24 42 L42 72"/>
    <path transform="translate(191 155) scale(0.45)" d="M6 72 L25 8 L44 72 M13 51 H37"/>
    <path transform="translate(218 155) scale(0.45)" d="M8 72 V8 L42 72 V8"/>
    <path transform="translate(245 155) scale(0.45)" d="M42 18 C38 11 33 8 27 8 C14 8 8 20 8 40 C8 60 14 72
            27 72 C33 72 38 69 42 62"/>
    <path transform="translate(272 155) scale(0.45)" d="M42 8 H8 V72 H42 M8 40 H36"/>
  </g>
</svg>)svg";

constexpr auto kNotMeasured = R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="350" height="200">
  <rect width="350" height="200" rx="14" fill="#ffbf00"/>
  <path d="M175 20 V68" fill="none" stroke="#000000" stroke-width="22" stroke-linecap="round"/>
  <circle cx="175" cy="96" r="12" fill="#000000"/>
  <g fill="none" stroke="#000000" stroke-width="14" stroke-linecap="round" stroke-linejoin="round">
    <path transform="translate(141 118) scale(0.4)" d="M8 72 V8 L42 72 V8"/>
    <path transform="translate(165 118) scale(0.4)" d="M25 8 C12 8 8 20 8 40 C8 60 12 72 25 72 C38 72 42 60
            42 40 C42 20 38 8 25 8 Z"/>
    <path transform="translate(189 118) scale(0.4)" d="M6 8 H44 M25 8 V72"/>
  </g>
  <g fill="none" stroke="#000000" stroke-width="14" stroke-linecap="round" stroke-linejoin="round">
    <path transform="translate(81 156) scale(0.4)" d="M6 72 V8 L25 48 L44 8 V72"/>
    <path transform="translate(105 156) scale(0.4)" d="M42 8 H8 V72 H42 M8 40 H36"/>
    <path transform="translate(129 156) scale(0.4)" d="M6 72 L25 8 L44 72 M13 51 H37"/>
    <path transform="translate(153 156) scale(0.4)" d="M42 19 C38 10 32 8 25 8 C15 8 8 14 8 23 C8 33 16 37 25
            40 C35 43 43 47 43 57 C43 66 35 72 25 72 C17 72 10 69 7 60"/>
    <path transform="translate(177 156) scale(0.4)" d="M8 8 V52 C8 66 14 72 25 72 C36 72 42 66 42 52 V8"/>
    <path transform="translate(201 156) scale(0.4)" d="M8 72 V8 H26 A16 16 0 0 1 26 42 H8 M24 42 L42 72"/>
    <path transform="translate(225 156) scale(0.4)" d="M42 8 H8 V72 H42 M8 40 H36"/>
    <path transform="translate(249 156) scale(0.4)" d="M8 8 V72 H20 C36 72 42 60 42 40 C42 20 36 8 20 8 Z"/>
  </g>
</svg>)svg";

// The icons of boxes, each told by its shape as well as by its colour.
constexpr auto kStop = R"svg(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 32 32">
  <circle cx="16" cy="16" r="15" fill="#d93030"/>
  <path d="M10 10 L22 22 M22 10 L10 22" stroke="#ffffff" stroke-width="4" stroke-linecap="round"/>
</svg>)svg";

constexpr auto kExclamation = R"svg(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 32 32">
  <path d="M16 3.5 L29.5 28 H2.5 Z" fill="#ffbf00" stroke="#ffbf00" stroke-width="3" stroke-linejoin="round"/>
  <path d="M16 11 V19" stroke="#201800" stroke-width="3.6" stroke-linecap="round"/>
  <circle cx="16" cy="24.8" r="2.1" fill="#201800"/>
</svg>)svg";

constexpr auto kInformation = R"svg(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 32 32">
  <circle cx="16" cy="16" r="15" fill="#2f65ca"/>
  <circle cx="16" cy="9" r="2.3" fill="#ffffff"/>
  <path d="M16 15 V24" stroke="#ffffff" stroke-width="4" stroke-linecap="round"/>
</svg>)svg";

constexpr auto kQuestion = R"svg(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 32 32">
  <circle cx="16" cy="16" r="15" fill="#2f65ca"/>
  <path d="M11 12 C11 5.5 21 5.5 21 12 C21 15.5 16 15.5 16 19.5" fill="none" stroke="#ffffff" stroke-width="3.4"
        stroke-linecap="round"/>
  <circle cx="16" cy="25" r="2.2" fill="#ffffff"/>
</svg>)svg";

}  // namespace

QByteArray PictureNamed(std::string_view name) {
  if (name == "pass") return kPass;
  if (name == "fail") return kFail;
  if (name == "out of tolerance") return kOutOfTolerance;
  if (name == "not measured") return kNotMeasured;
  if (name == "stop") return kStop;
  if (name == "exclamation") return kExclamation;
  if (name == "information") return kInformation;
  if (name == "question") return kQuestion;
  return {};
}

}  // namespace orvane
