#pragma once

#include <QCoreApplication>
#include <functional>
#include <memory>

#include "app/program.h"

namespace orvane {

/// What a program puts between the station and its operator.
struct Screen {
  /// The toolkit's application object.
  std::function<std::unique_ptr<QCoreApplication>(const Options&, int& argc, char** argv)> application;
  /// Opens the front end of a program that is not headless; what it returns lives as long as the program runs.
  std::function<std::shared_ptr<void>(Program&)> open{};
  /// For a program that has no front end: hands a command line that asks for windows on. @return the exit status, if
  /// it comes back at all.
  std::function<int(char** argv)> elsewhere{};
};

/// The whole of a main function: command line, signals, one Program. @return the exit status.
[[nodiscard]] int RunProgram(int argc, char** argv, const Screen& screen);

}  // namespace orvane
