#include <fcntl.h>
#include <unistd.h>

#include <QApplication>
#include <QIcon>
#include <QSocketNotifier>
#include <array>
#include <clocale>
#include <csignal>
#include <filesystem>
#include <iostream>

#include "app/route_text.h"
#include "app/stations/stations_desk.h"
#include "app/windows/theme.h"

namespace {

namespace fs = std::filesystem;

std::array<int, 2> signalPipe{-1, -1};

/// What came is read by the event loop.
void NoteSignal(int /*number*/) {
  const char mark = 1;
  (void)!::write(signalPipe[1], &mark, 1);
}

void CatchSignals() {
  if (::pipe2(signalPipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) (void)std::signal(number, &NoteSignal);
}

/// The station's own program, which lies beside this one.
std::string StationProgram() {
  std::error_code unknown;
  return (fs::read_symlink("/proc/self/exe", unknown).parent_path() / "orvane").string();
}

int RunDesk(const orvane::DeskOptions& options) {
  orvane::StationsDesk desk(StationProgram(), options.profiles, orvane::DefaultsOfThisMachine());
  QSocketNotifier signalled(signalPipe[0], QSocketNotifier::Read);
  QObject::connect(&signalled, &QSocketNotifier::activated, &desk, [&] {
    signalled.setEnabled(false);
    desk.Stop();
  });
  desk.onEnded = [] { QApplication::exit(0); };
  desk.Page().showFullScreen();
  desk.Start();
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  const auto parsed = orvane::ParseDeskLine(argc, argv);
  if (const auto* end = std::get_if<orvane::EndAtOnce>(&parsed)) {
    (end->status == 0 ? std::cout : std::cerr) << end->text << (end->status == 0 ? "" : "\n") << std::flush;
    return end->status;
  }
  CatchSignals();
  const auto& options = std::get<orvane::DeskOptions>(parsed);
  const QApplication application(argc, argv);
  (void)std::setlocale(LC_NUMERIC, "C");
  orvane::Wear(options.theme);
  // The stations go first, and the desk behind them.
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setDesktopFileName("orvane");
  QApplication::setWindowIcon(QIcon(":/orvane.svg"));
  try {
    return RunDesk(options);
  } catch (const orvane::OptionFault& fault) {
    std::cerr << "orvane-desk: " << fault.what() << std::endl;
    return orvane::kBadOptions;
  }
}
