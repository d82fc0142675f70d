#include <QApplication>
#include <QDesktopServices>
#include <QIcon>
#include <QUrl>
#include <optional>

#include "adapters/qt/appearance.h"
#include "adapters/qt/display_watch.h"
#include "app/program_main.h"
#include "app/stations/desk_link.h"
#include "app/windows/front_end.h"
#include "app/windows/record_views.h"
#include "app/windows/serial_field.h"
#include "app/windows/status_strip.h"
#include "app/windows/stop_button.h"
#include "app/windows/theme.h"

namespace {

/// The windows of a program, and the status below the main one.
struct Windows {
  explicit Windows(orvane::Program& program)
      : status(program.TheWorld().loop, program.TheWorld().Ports().mscomTarget, program.TheStation().State(),
               program.TheStation().Panels()),
        frontEnd(program.TheWorld().loop, program.TheWorld().desk, program.TheStation()) {
    frontEnd.belowMain = [this, &program](QWidget* parent) {
      auto* strip = new orvane::StatusStrip(status, orvane::SurroundingsOf(program.TheOptions()), parent);
      strip->AddField(new orvane::SerialField(program.TheUnit(), strip));
      orvane::ShowInTitle(program.TheUnit(), *frontEnd.WindowOf(program.TheStation().Panels().main));
      if (records) records->AddTo(*strip);
      strip->AddAtEnd(new orvane::StopButton(
          status, [this, &program] { PressStop(program); }, strip));
      return strip;
    };
    if (program.TheOptions().desk) LinkToDesk(program);
    if (program.TheRecords() == nullptr) return;
    records.emplace(*program.TheRecords(), "sqlite:" + program.TheOptions().records->string());
    frontEnd.belowVerdict = [this](QWidget* parent) { return records->Button(parent); };
  }

  void LinkToDesk(orvane::Program& program) {
    desk.emplace(orvane::ToQt(*program.TheOptions().desk));
    const auto tell = [this, &unit = program.TheUnit()] { desk->TellUnit(orvane::ToQt(unit.Texts().serial)); };
    program.TheUnit().changed.Connect(tell);
    tell();
  }

  void PressStop(orvane::Program& program) {
    frontEnd.TheHands().Do(
        [&stop = program.TheStation().Panels().autoCal.cmdAutoCalStop](orvane::Operator& hand) { hand.Click(stop); });
  }

  /// Where the records are, and the way to look at them.
  struct Records {
    Records(orvane::RecordNews& told, const std::string& store) : news(told), runs(store) {}

    QWidget* Button(QWidget* parent) { return new orvane::RecordButton(news, reports, parent); }
    void AddTo(orvane::StatusStrip& strip) {
      strip.AddField(new orvane::UnitsButton(runs, reports, &strip));
      strip.AddAtEnd(Button(&strip));
    }

    orvane::RecordNews& news;
    orvane::PastRuns runs;
    orvane::ReportOpener reports{
        runs, [](const std::string& file) { QDesktopServices::openUrl(QUrl::fromLocalFile(orvane::ToQt(file))); }};
  };

  orvane::StationStatus status;
  /// Ahead of the windows: they are gone first.
  std::optional<Records> records;
  orvane::FrontEnd frontEnd;
  /// The way back to the desk that has started this station.
  std::optional<orvane::DeskLink> desk;
};

std::unique_ptr<QCoreApplication> OpenDisplay(const orvane::Options& options, int& count, char** words) {
  auto application = std::make_unique<QApplication>(count, words);
  orvane::Wear(options.theme);
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setDesktopFileName("orvane");
  QApplication::setWindowIcon(QIcon(":/orvane.svg"));
  return application;
}

std::shared_ptr<void> OpenWindows(orvane::Program& program) {
  auto windows = std::make_shared<Windows>(program);
  program.TheWorld().loop.onFreeTime = [front = &windows->frontEnd](orvane::TimePoint until) {
    front->UseFreeTime(until);
  };
  program.TheWorld().loop.onDisplayGone = [&program, front = &windows->frontEnd] {
    front->Abandon();
    program.GoOnWithoutScreen();
  };
  return windows;
}

}  // namespace

int main(int argc, char** argv) {
  orvane::DisplayWatch watch(orvane::kNoWindows);
  orvane::Screen screen;
  screen.application = [&watch](const orvane::Options& options, int& count, char** words) {
    auto application =
        options.headless ? std::make_unique<QCoreApplication>(count, words) : OpenDisplay(options, count, words);
    watch.Opened();
    return application;
  };
  screen.open = &OpenWindows;
  return orvane::RunProgram(argc, argv, screen);
}
