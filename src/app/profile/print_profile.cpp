#include <algorithm>
#include <array>
#include <cstdio>

#include "app/profile/profile.h"
#include "app/route_text.h"
#include "base/numbers.h"

namespace orvane {
namespace {

constexpr std::string_view kMark = "# ";

/// A text in quotes. @throws OptionFault when no TOML file can hold it.
std::string Quoted(const std::string& name, const std::string& text) {
  if (const auto fault = FaultOfUnitText(text)) throw OptionFault(name + " " + *fault);
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + "\"";
}

std::string Key(const std::string& name) {
  constexpr std::string_view kBare = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-";
  const bool bare = !name.empty() && name.find_first_not_of(kBare) == std::string::npos;
  return bare ? name : Quoted("the name of a tag", name);
}

/// What is not set, to be filled in.
std::string CommentedOut(const std::string& key, const std::string& value) {
  return std::string(kMark).append(key).append(" = ").append(value).append("\n");
}

void PrintOption(std::string& text, const OptionRow& row, const Options& options) {
  const std::string key = ProfileKey(row.name);
  const auto given = options.Given(row.name);
  text += "\n# " + row.means + "\n";
  if (row.kind == OptionRow::Kind::List) {
    std::string list;
    for (const auto& [name, value] : options.given) {
      if (name == row.name) list += (list.empty() ? "" : ", ") + value;
    }
    text += given ? key + " = [" + list + "]\n" : CommentedOut(key, "[]");
  } else if (row.kind == OptionRow::Kind::Flag) {
    text += given ? key + " = true\n" : CommentedOut(key, "false");
  } else {
    text += given ? key + " = " + Quoted("--" + row.name, *given) + "\n" : CommentedOut(key, "\"" + row.what + "\"");
  }
}

void PrintRepeated(std::string& text, const OptionRow& row, const Options& options) {
  text += "\n# " + row.means + "\n[" + row.name + "]\n";
  bool any = false;
  for (const auto& [name, value] : options.given) {
    if (name != row.name) continue;
    const auto sign = value.find('=');
    text += Key(value.substr(0, sign)) + " = " + Quoted("--" + row.name, value.substr(sign + 1)) + "\n";
    any = true;
  }
  const auto sign = row.what.find('=');
  if (!any) text += CommentedOut(row.what.substr(0, sign), "\"" + row.what.substr(sign + 1) + "\"");
}

void PrintTables(std::string& text, const Options& options) {
  text +=
      "\n# The SHA-256 that installed data files have to have: a run that stands on another one is not complete\n"
      "[tables]\n";
  for (const std::string_view name : {kRFParameterFileName, kRampTableFileName, kCableLossFileName}) {
    const auto digest = options.tables.find(name);
    const std::string key = Key(std::string(name));
    text += digest == options.tables.end() ? CommentedOut(key, "\"64 hexadecimal digits in lower case\"")
                                           : key + " = \"" + digest->second + "\"\n";
  }
}

void PrintGoldenLimits(std::string& text, const Options& options) {
  text +=
      "\n# How far a reading of the golden unit may be from its reference: the first line that fits counts, and "
      "behind "
      "them these\n[golden_limits]\n";
  for (const GoldenLimit& limit : options.golden.limits) {
    text += Quoted("golden_limits", limit.pattern) + " = " + NumberText(limit.allowed) + "\n";
  }
  for (const GoldenDefault& usual : GoldenDefaults()) {
    text += "# " + std::string(usual.because) + "\n" +
            CommentedOut(Quoted("golden_limits", std::string(usual.pattern)), NumberText(usual.allowed));
  }
}

void PrintPanels(std::string& text, const Options& options) {
  text += "\n# What is set on the panels as the station starts, in this order\n[panel]\n";
  for (const PanelRow& row : PanelRows()) {
    const auto setting = std::find_if(options.panels.begin(), options.panels.end(),
                                      [&](const PanelSetting& each) { return each.name == row.name; });
    const bool set = setting != options.panels.end();
    const std::string value = set ? setting->text : std::string(row.usual);
    const std::string written = row.type == PanelRow::Type::Word ? Quoted(std::string(row.name), value) : value;
    const std::string key(row.name);
    text += "\n# ";
    text += row.means;
    text += "\n";
    text += CommentedOut(key, written).substr(set ? kMark.size() : 0);
  }
}

}  // namespace

std::string PrintProfile(const Options& options) {
  std::string text =
      "# The settings of an orvane station: orvane --profile FILE, or orvane/profile.toml in the folder for "
      "settings.\n"
      "# What is said on the command line wins over it. What is commented out is not set.\n";
  for (const OptionRow& row : OptionRows()) {
    if (row.kind != OptionRow::Kind::Repeated && !row.onCommandLineOnly) PrintOption(text, row, options);
  }
  for (const OptionRow& row : OptionRows()) {
    if (row.kind == OptionRow::Kind::Repeated) PrintRepeated(text, row, options);
  }
  PrintTables(text, options);
  PrintGoldenLimits(text, options);
  PrintPanels(text, options);
  return text;
}

}  // namespace orvane
