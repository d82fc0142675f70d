#include <unistd.h>

#include <QCoreApplication>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>

#include "app/program_main.h"

namespace {

namespace fs = std::filesystem;

/// Beside this program as it is built; where it is installed, among the programs that nobody starts by hand.
fs::path WindowsProgram() {
  std::error_code unknown;
  const fs::path here = fs::read_symlink("/proc/self/exe", unknown).parent_path();
  const fs::path beside = here / "orvane-windows";
  return fs::exists(beside, unknown) ? beside
                                     : fs::weakly_canonical(here / ORVANE_WINDOWS_FOLDER, unknown) / "orvane-windows";
}

/// This program links no widget library, so that a bench without a screen needs none.
int BecomeWindows(char** argv) {
  const std::string windows = WindowsProgram().string();
  ::execv(windows.c_str(), argv);
  std::cerr << "orvane: no windows: " << windows << ": " << std::strerror(errno)
            << ". With --headless it runs without them." << std::endl;
  return orvane::kNoWindows;
}

}  // namespace

int main(int argc, char** argv) {
  orvane::Screen screen;
  screen.application = [](const orvane::Options&, int& count, char** words) {
    return std::make_unique<QCoreApplication>(count, words);
  };
  screen.elsewhere = &BecomeWindows;
  return orvane::RunProgram(argc, argv, screen);
}
