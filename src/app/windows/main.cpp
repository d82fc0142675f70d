#include <QApplication>
#include <QDesktopServices>
#include <QIcon>
#include <QUrl>
#include <optional>

#include "adapters/qt/appearance.h"
#include "adapters/qt/display_watch.h"
#include "app/operator/operator_view.h"
#include "app/operator/page_language.h"
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
      strip->AddAtEnd(new orvane::StopButton(status, frontEnd.TheHands(),
                                             program.TheStation().Panels().autoCal.cmdAutoCalStop, strip));
      if (page) strip->AddAtEnd(ButtonToPage(strip));
      strip->Follow(program.TheWorld().Waits());
      return strip;
    };
    if (program.TheRecords() != nullptr) {
      records.emplace(*program.TheRecords(), "sqlite:" + program.TheOptions().records->string());
      frontEnd.belowVerdict = [this](QWidget* parent) { return records->Button(parent); };
    }
    if (program.TheOptions().desk) LinkToDesk(program);
    if (program.TheOptions().view == orvane::View::Operator) GiveToOperator(program);
  }

  /// The panels' windows rest while the operator's page has the screen.
  void GiveToOperator(orvane::Program& program) {
    frontEnd.Rest();
    const orvane::Options& options = program.TheOptions();
    orvane::World& world = program.TheWorld();
    page.emplace(
        orvane::OperatorWorld{world.loop, program.TheStation(), world.desk, program.TheUnit(), world.Ports().files,
                              status, options, program.TheRecords(), records ? &records->runs : nullptr,
                              program.TheEngineersWord(), program.TheGoldenUnit(), &world.Waits()},
        orvane::IsDark(options.theme));
    page->openPanels = [this] {
      page->Hide();
      frontEnd.Wake();
    };
    page->Show();
  }

  QWidget* ButtonToPage(QWidget* parent) {
    auto* button = new QToolButton(parent);
    button->setObjectName("statusOperatorsPage");
    button->setText(QToolButton::tr("Operator's page"));
    button->setFocusPolicy(Qt::NoFocus);
    QObject::connect(button, &QToolButton::clicked, button, [this] {
      frontEnd.Rest();
      page->Show();
    });
    return button;
  }

  void UseFreeTime(orvane::TimePoint until, orvane::TimePoint now) {
    frontEnd.UseFreeTime(until);
    if (page) page->Page().UseFreeTime(until - now);
  }

  void Abandon() {
    frontEnd.Abandon();
    if (page) page->Abandon();
  }

  void LinkToDesk(orvane::Program& program) {
    desk.emplace(orvane::ToQt(*program.TheOptions().desk));
    const auto tell = [this, &unit = program.TheUnit()] { desk->TellUnit(orvane::ToQt(unit.Texts().serial)); };
    program.TheUnit().changed.Connect(tell);
    tell();
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
  std::optional<orvane::OperatorView> page;
  /// The way back to the desk that has started this station.
  std::optional<orvane::DeskLink> desk;
};

std::unique_ptr<QCoreApplication> OpenDisplay(const orvane::Options& options, int& count, char** words) {
  auto application = std::make_unique<QApplication>(count, words);
  orvane::Wear(options.theme);
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setDesktopFileName("orvane");
  QApplication::setWindowIcon(QIcon(":/orvane.svg"));
  if (options.view == orvane::View::Operator) orvane::Speak(options.operating.language);
  return application;
}

std::shared_ptr<void> OpenWindows(orvane::Program& program) {
  auto windows = std::make_shared<Windows>(program);
  program.TheWorld().loop.onFreeTime = [&program, all = windows.get()](orvane::TimePoint until) {
    all->UseFreeTime(until, program.TheWorld().loop.Now());
  };
  program.TheWorld().Waits().onWait = [&program] { program.TheWorld().loop.ServeWindows(); };
  program.TheWorld().loop.onDisplayGone = [&program, all = windows.get()] {
    all->Abandon();
    program.GoOnWithoutScreen();
  };
  return windows;
}

}  // namespace

int main(int argc, char** argv) {
  orvane::DisplayWatch watch(orvane::kNoWindows);
  orvane::Screen screen;
  screen.application = [&watch](const orvane::Options& options, int& count, char** words) {
    if (options.view == orvane::View::Operator) {
      watch.WithoutDisplay(orvane::kBadOptions, "--view operator needs a screen.");
    }
    auto application =
        options.headless ? std::make_unique<QCoreApplication>(count, words) : OpenDisplay(options, count, words);
    watch.Opened();
    return application;
  };
  screen.open = &OpenWindows;
  return orvane::RunProgram(argc, argv, screen);
}
