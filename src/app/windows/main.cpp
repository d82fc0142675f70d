#include <QApplication>
#include <QIcon>

#include "app/program_main.h"
#include "app/windows/front_end.h"
#include "app/windows/status_strip.h"

namespace {

/// The windows of a program, and the status below the main one.
struct Windows {
  explicit Windows(orvane::Program& program)
      : status(program.TheWorld().loop, program.TheWorld().Ports().mscomTarget, program.TheStation().State(),
               program.TheStation().Panels()),
        frontEnd(program.TheWorld().loop, program.TheWorld().desk, program.TheStation()) {
    frontEnd.belowMain = [this, &program](QWidget* parent) {
      return new orvane::StatusStrip(status, orvane::SurroundingsOf(program.TheOptions()), parent);
    };
  }

  orvane::StationStatus status;
  orvane::FrontEnd frontEnd;
};

}  // namespace

int main(int argc, char** argv) {
  orvane::Screen screen;
  screen.application = [](int& count, char** words) -> std::unique_ptr<QCoreApplication> {
    auto application = std::make_unique<QApplication>(count, words);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setDesktopFileName("orvane");
    QApplication::setWindowIcon(QIcon(":/orvane.svg"));
    return application;
  };
  screen.open = [](orvane::Program& program) -> std::shared_ptr<void> { return std::make_shared<Windows>(program); };
  return orvane::RunProgram(argc, argv, screen);
}
