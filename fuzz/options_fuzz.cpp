// A whole command line, one argument a line. It gives options, or one line that says what is wrong with it, or the
// help; and the same kind of end twice.

#include <vector>

#include "app/command_line.h"
#include "require.h"

namespace {

using namespace orvane;
using fuzz::Require;

std::variant<Options, EndAtOnce> Parsed(const std::vector<std::string>& arguments) {
  std::vector<const char*> argv;
  for (const std::string& argument : arguments) argv.push_back(argument.c_str());
  return ParseCommandLine(static_cast<int>(argv.size()), argv.data());
}

void CheckEnd(const EndAtOnce& end) {
  Require(end.status == 0 || end.status == kBadOptions, "another status");
  Require(!end.text.empty(), "an end without a word");
  const bool oneLine = end.text.find_first_of("\r\n") == std::string::npos && end.text.starts_with("orvane: ");
  Require(end.status == 0 || oneLine, "a fault is not one line");
}

void CheckOptions(const Options& options) {
  for (const auto& [address, route] : options.gpib.instruments) {
    Require(address >= 0 && address <= 30, "no primary address");
  }
  for (const std::string& device : options.com) Require(!device.empty(), "a device without a name");
  Require(!options.bench || options.gpib.instruments.empty(), "a virtual bench with a real instrument");
  const bool automated = !std::holds_alternative<NoAutomation>(options.automation);
  Require(!options.list || !(options.initialize || options.bench || automated), "a list that runs");
  const auto* socket = std::get_if<UnixAutomation>(&options.automation);
  Require(socket == nullptr || !socket->path.empty(), "a socket without a name");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string> arguments{"orvane"};
  std::string argument;
  for (std::size_t i = 0; i < size; ++i) {
    if (data[i] != '\n') argument += static_cast<char>(data[i]);
    if (data[i] == '\n' || i + 1 == size) arguments.push_back(std::exchange(argument, {}));
  }
  const auto parsed = Parsed(arguments);
  if (const auto* end = std::get_if<EndAtOnce>(&parsed)) {
    CheckEnd(*end);
    const auto again = Parsed(arguments);
    const auto* other = std::get_if<EndAtOnce>(&again);
    // The library names what excludes an option in the order of addresses.
    Require(other != nullptr && other->status == end->status, "another end");
  } else {
    CheckOptions(std::get<Options>(parsed));
  }
  return 0;
}
