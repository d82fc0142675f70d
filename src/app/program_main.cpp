#include "app/program_main.h"

#include <fcntl.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <iostream>

#include "app/command_line.h"
#include "app/device_list.h"
#include "app/engineer/make_secret.h"
#include "app/profile/profile.h"
#include "app/route_text.h"
#include "app/trace/story.h"
#include "app/trace/trace_file.h"

namespace orvane {
namespace {

/// A standard stream that the caller left closed would be the next thing opened, a serial line among them, and what
/// this program prints would go there.
void OpenClosedStandardStreams() {
  int descriptor = 0;
  while (descriptor >= 0 && descriptor <= STDERR_FILENO) descriptor = ::open("/dev/null", O_RDWR);
  if (descriptor >= 0) ::close(descriptor);
}

/// Behind a list of devices: an instrument that the command line leads to did not answer.
constexpr int kNotAll = 1;

int Explain(const std::string& path) {
  try {
    TellStory(path, std::cout);
    std::cout << std::flush;
    return 0;
  } catch (const NoTrace& fault) {
    std::cerr << "orvane: --explain: " << fault.what() << std::endl;
    return kNotThatInput;
  } catch (const TraceFault& fault) {
    std::cerr << "orvane: --explain: " << fault.what() << std::endl;
    return kNoInput;
  }
}

int TellProfile(const Options& options) {
  try {
    std::cout << PrintProfile(options) << std::flush;
    return 0;
  } catch (const OptionFault& fault) {
    std::cerr << "orvane: --print-profile: " << fault.what() << std::endl;
    return kBadOptions;
  }
}

int RunWith(const Options& options, const Screen& screen) {
  try {
    Program program(options);
    const std::shared_ptr<void> windows = options.headless ? nullptr : screen.open(program);
    return program.Run();
  } catch (const OptionFault& fault) {
    std::cerr << "orvane: " << fault.what() << std::endl;
  } catch (const TraceFault& fault) {
    std::cerr << "orvane: --trace: " << fault.what() << std::endl;
  } catch (const bench::BenchOptionError& fault) {
    std::cerr << "orvane: --bench: " << fault.what() << std::endl;
  }
  return kBadOptions;
}

}  // namespace

int RunProgram(int argc, char** argv, const Screen& screen) {
  OpenClosedStandardStreams();
  // A peer that has gone and a disk that is full are failures of the write that meets them, not the program's end.
  (void)std::signal(SIGPIPE, SIG_IGN);
  (void)std::signal(SIGXFSZ, SIG_IGN);

  const auto parsed = ParseCommandLine(argc, argv, DefaultsOfThisMachine());
  if (const auto* end = std::get_if<EndAtOnce>(&parsed)) {
    (end->status == 0 ? std::cout : std::cerr) << end->text << (end->status == 0 ? "" : "\n") << std::flush;
    return end->status;
  }
  const auto& options = std::get<Options>(parsed);
  if (options.makeEngineerSecret) return MakeEngineerSecret(std::cout, std::cerr);
  if (options.printProfile) return TellProfile(options);
  if (options.list) {
    const DeviceList list = ListDevices(options);
    std::cout << (options.json ? list.JsonText() : list.Text()) << std::flush;
    return list.AllNamedAnswer() ? 0 : kNotAll;
  }
  if (options.explain) return Explain(*options.explain);
  if (options.headless && options.view == View::Operator) {
    std::cerr << "orvane: --view operator needs a screen: leave --headless out." << std::endl;
    return kBadOptions;
  }
  if (!options.headless && !screen.open) return screen.elsewhere(argv);

  const std::unique_ptr<QCoreApplication> application = screen.application(options, argc, argv);
  // The toolkit takes up the user's locale; the station's numbers have a point in every country.
  (void)std::setlocale(LC_NUMERIC, "C");
  return RunWith(options, screen);
}

}  // namespace orvane
