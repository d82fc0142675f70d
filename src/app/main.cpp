#include <unistd.h>

#include <QCoreApplication>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>

#include "app/program_main.h"

namespace {

constexpr int kNoWindows = 69;  // EX_UNAVAILABLE of sysexits.h.

/// The program with windows lies beside this one. This one links no widget library, so that a bench without a screen
/// needs none.
int BecomeWindows(char** argv) {
  std::error_code unknown;
  const auto self = std::filesystem::read_symlink("/proc/self/exe", unknown);
  const std::string windows = (self.parent_path() / "orvane-windows").string();
  ::execv(windows.c_str(), argv);
  std::cerr << "orvane: no windows: " << windows << ": " << std::strerror(errno)
            << ". With --headless it runs without them." << std::endl;
  return kNoWindows;
}

}  // namespace

int main(int argc, char** argv) {
  orvane::Screen screen;
  screen.application = [](int& count, char** words) { return std::make_unique<QCoreApplication>(count, words); };
  screen.elsewhere = &BecomeWindows;
  return orvane::RunProgram(argc, argv, screen);
}
