#include <QApplication>

#include "app/program_main.h"
#include "app/windows/front_end.h"

int main(int argc, char** argv) {
  orvane::Screen screen;
  screen.application = [](int& count, char** words) -> std::unique_ptr<QCoreApplication> {
    auto application = std::make_unique<QApplication>(count, words);
    QApplication::setQuitOnLastWindowClosed(false);
    return application;
  };
  screen.open = [](orvane::Program& program) -> std::shared_ptr<void> {
    return std::make_shared<orvane::FrontEnd>(program.TheWorld().loop, program.TheWorld().desk, program.TheStation());
  };
  return orvane::RunProgram(argc, argv, screen);
}
