#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <clocale>
#include <csignal>
#include <iostream>

#include "app/command_line.h"
#include "app/program.h"
#include "app/route_text.h"

namespace {

/// A standard stream that the caller left closed would be the next thing opened, a serial line among them, and what
/// this program prints would go there.
void OpenClosedStandardStreams() {
  int descriptor = 0;
  while (descriptor >= 0 && descriptor <= STDERR_FILENO) descriptor = ::open("/dev/null", O_RDWR);
  if (descriptor >= 0) ::close(descriptor);
}

int RunWith(const orvane::Options& options) {
  try {
    orvane::Program program(options);
    return program.Run();
  } catch (const orvane::OptionFault& fault) {
    std::cerr << "orvane: " << fault.what() << std::endl;
  } catch (const orvane::bench::BenchOptionError& fault) {
    std::cerr << "orvane: --bench: " << fault.what() << std::endl;
  }
  return orvane::kBadOptions;
}

}  // namespace

int main(int argc, char** argv) {
  OpenClosedStandardStreams();
  // A peer that has gone and a disk that is full are failures of the write that meets them, not the program's end.
  (void)std::signal(SIGPIPE, SIG_IGN);
  (void)std::signal(SIGXFSZ, SIG_IGN);

  const auto parsed = orvane::ParseCommandLine(argc, argv);
  if (const auto* end = std::get_if<orvane::EndAtOnce>(&parsed)) {
    (end->status == 0 ? std::cout : std::cerr) << end->text << (end->status == 0 ? "" : "\n") << std::flush;
    return end->status;
  }

  const QCoreApplication application(argc, argv);
  // The toolkit takes up the user's locale; the station's numbers have a point in every country.
  (void)std::setlocale(LC_NUMERIC, "C");
  const auto& options = std::get<orvane::Options>(parsed);
  if (!options.headless) {
    std::cerr << "orvane: --headless is missing: this build has no windows." << std::endl;
    return orvane::kBadOptions;
  }
  return RunWith(options);
}
