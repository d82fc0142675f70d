// A profile as a text editor left it. It gives settings that are what they are said to be, or one line that says what
// is wrong with it.

#include <algorithm>

#include "app/profile/profile.h"
#include "require.h"

namespace {

using namespace orvane;
using fuzz::Require;

bool HasControl(std::string_view text) {
  return std::any_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; });
}

void Check(const Profile& profile) {
  for (const Profile::Option& option : profile.options) {
    Require(option.row != nullptr && !option.row->onCommandLineOnly && option.line > 0, "an option that is none");
    const bool word = option.value == "true" || option.value == "false";
    Require(option.row->kind != OptionRow::Kind::Flag || word, "a flag of another value");
    Require(option.row->kind == OptionRow::Kind::Repeated || !HasControl(option.value), "a control character");
  }
  for (const auto& [name, digest] : profile.tables) {
    Require(digest.size() == 64 && digest.find_first_not_of("0123456789abcdef") == std::string::npos, "no digest");
  }
  for (const PanelSetting& setting : profile.panels) {
    const PanelRow* row = FindPanelRow(setting.name);
    Require(row != nullptr && !row->FaultOf(setting.text), "a setting that no panel takes");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view content(reinterpret_cast<const char*>(data), size);
  try {
    Check(ParseProfile("bench.toml", content));
  } catch (const ProfileFault& fault) {
    const std::string_view text = fault.what();
    Require(text.starts_with("bench.toml:") && !HasControl(text), "a fault is not one line of its file");
  }
  return 0;
}
