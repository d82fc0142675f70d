#include "app/sharing/share_rows.h"

#include <charconv>

#include "app/route_text.h"

namespace orvane {
namespace {

/// Digits alone. @throws OptionFault
int WholeOf(const std::string& text, int least, int most) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || value < least || value > most) {
    throw OptionFault("\"" + text + "\" is no whole number from " + std::to_string(least) + " to " +
                      std::to_string(most));
  }
  return value;
}

void TakeAddress(Options& options, const std::string& text) {
  constexpr int kLastAddress = 30;
  if (!options.share.addresses.insert(WholeOf(text, 0, kLastAddress)).second) {
    throw OptionFault("address " + text + " was given already");
  }
}

void TakeWait(Options& options, const std::string& text) {
  constexpr int kDay = 86400;
  options.share.wait = std::chrono::seconds(WholeOf(text, 0, kDay));
}

}  // namespace

void AddSharing(std::vector<OptionRow>& rows) {
  rows.push_back(
      {.name = "share",
       .kind = OptionRow::Kind::List,
       .what = "ADDR",
       .means = "Primary address of an instrument that other stations use too: each has it for the whole of a run; "
                "may be repeated",
       .take = &TakeAddress});
  rows.push_back({.name = "share-wait",
                  .what = "SECONDS",
                  .means = "How long to wait for a shared instrument [120]",
                  .take = &TakeWait});
  rows.push_back({.name = "share-dir",
                  .what = "DIR",
                  .means = "Folder of the locks of shared instruments, the same one for all stations [/run/lock, or "
                           "else /tmp]",
                  .take = [](Options& options, const std::string& text) { options.share.folder = text; }});
  rows.push_back({.name = "desk",
                  .what = "NUMBER@SOCKET",
                  .means = "Which station of orvane-desk this is, and where that listens; given by it",
                  .take = [](Options& options, const std::string& text) { options.desk = text; },
                  .onCommandLineOnly = true});
}

}  // namespace orvane
