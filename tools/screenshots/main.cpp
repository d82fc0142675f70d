// Draws every window of the station after a run on a virtual bench, the verdicts and boxes each after a run that
// brings them up. No screen is needed.
//
//   screenshots FOLDER [light|dark]
//
// QT_SCALE_FACTOR=2 doubles the pictures.

#include <QApplication>
#include <QMessageBox>
#include <clocale>
#include <filesystem>
#include <iostream>
#include <set>
#include <stdexcept>
#include <utility>

#include "app/program.h"
#include "app/windows/front_end.h"
#include "app/windows/status_strip.h"
#include "app/windows/theme.h"

namespace {

using orvane::Desk;
using orvane::FrontEnd;
using orvane::Operator;
using orvane::Panel;
using orvane::Program;
using orvane::StationPanels;

/// Works one station on one bench as an operator does, and keeps what the screen shows.
class Photographer {
 public:
  Photographer(const orvane::bench::BenchOptions& bench, std::filesystem::path folder)
      : program_(OptionsOf(bench)),
        status_(program_.TheWorld().loop, program_.TheWorld().Ports().mscomTarget, program_.TheStation().State(),
                program_.TheStation().Panels()),
        frontEnd_(program_.TheWorld().loop, program_.TheWorld().desk, program_.TheStation()),
        folder_(std::move(folder)),
        hand_(program_.TheStation().Nest()) {
    program_.TheWorld().desk.boxOpened.Connect([this](const Desk::OpenBox& open) {
      program_.TheWorld().loop.Post([this, id = open.id, box = open.box] { AnswerBox(id, box); });
    });
    frontEnd_.belowMain = [this](QWidget* parent) {
      return new orvane::StatusStrip(status_, orvane::SurroundingsOf(program_.TheOptions()), parent);
    };
    program_.TheStation().Start();
  }

  [[nodiscard]] StationPanels& Panels() { return program_.TheStation().Panels(); }
  void InitializeInstruments() {
    hand_.Click(Panels().main.cmdInstrumentInitialize);
    hand_.Click(Panels().main.cmdPSInitialize);
    program_.TheStation().Nest().Run([&] { Panels().baseBand.Touch(); });
    hand_.Click(Panels().baseBand.load.initialize);
  }
  /// The windows of a run, while it looks for that level.
  void TakeInRun(const std::string& level) {
    program_.TheStation().State().searchTrail.passed.Connect([this, level, taken = false](const auto&) mutable {
      if (taken || program_.TheStation().State().searchTrail.Last()->subject.name != level) return;
      taken = true;
      program_.TheWorld().loop.Post([this] {
        Take(Panels().main, "OrvaneMain-in-a-run");
        Take(Panels().autoCal, "frmAutoCal-in-a-run");
      });
    });
  }
  void RunTarget() { hand_.Click(Panels().main.cmdTargetInitialize); }

  /// The window of a panel as it stands, or shown for the picture.
  void Take(Panel& panel, const std::string& name) {
    if (!panel.Visible()) program_.TheStation().Nest().Run([&] { panel.Show(); });
    orvane::PanelWindow& window = *frontEnd_.WindowOf(panel);
    // The screen in memory may be a smaller one.
    window.TakeItsSize();
    Save(window, name);
  }
  void TakeTabs(orvane::OrvaneMain& main) {
    const auto& tabs = main.SSTab1.Tabs();
    for (std::size_t i = 0; i < tabs.size(); ++i) {
      main.SSTab1.Select(static_cast<int>(i));
      Take(main, main.Name() + "-" + tabs[i]);
    }
    main.SSTab1.Select(0);
  }

  /// From now on each box is kept under that name and a number.
  void NameBoxes(std::string name) { boxName_ = std::move(name); }

 private:
  static orvane::Options OptionsOf(const orvane::bench::BenchOptions& bench) {
    orvane::Options options;
    options.bench = bench;
    return options;
  }
  /// Of boxes that come again and again one picture is enough.
  void AnswerBox(Desk::Id id, const orvane::Box& box) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      const bool isBox = qobject_cast<QMessageBox*>(window) != nullptr;
      if (isBox && !boxName_.empty() && seen_.insert(box.text).second) {
        Save(*window, boxName_ + "-" + std::to_string(seen_.size()));
      }
    }
    program_.TheWorld().desk.Press(id, orvane::ButtonText(box.buttons.front()));
  }
  void Save(QWidget& window, const std::string& name) {
    QApplication::processEvents();
    const std::string file = (folder_ / (name + ".png")).string();
    if (!window.grab().save(QString::fromStdString(file))) throw std::runtime_error("Cannot write " + file);
    std::cout << file << ": " << window.width() << " x " << window.height() << std::endl;
  }

  Program program_;
  orvane::StationStatus status_;
  FrontEnd frontEnd_;
  std::filesystem::path folder_;
  Operator hand_;
  std::string boxName_;
  std::set<std::string> seen_;
};

void TakeAll(const std::filesystem::path& folder) {
  Photographer good({}, folder);
  good.InitializeInstruments();
  good.TakeInRun("GSM level 12");
  good.RunTarget();
  good.TakeTabs(good.Panels().main);
  for (Panel* panel : good.Panels().All()) {
    const bool onceMore = panel == &good.Panels().main || panel == &good.Panels().fail;
    if (!onceMore) good.Take(*panel, panel->Name());
  }

  Photographer withoutInstruments({}, folder);
  withoutInstruments.NameBoxes("box-no-instruments");
  withoutInstruments.RunTarget();
  withoutInstruments.Take(withoutInstruments.Panels().pass, "frmFailPass-incomplete");

  orvane::bench::BenchOptions broken;
  orvane::bench::SetBenchOption(broken, "fault=battery");
  Photographer failing(broken, folder);
  failing.NameBoxes("box-battery");
  failing.InitializeInstruments();
  failing.RunTarget();
  failing.Take(failing.Panels().fail, "frmFail");

  orvane::bench::BenchOptions dead;
  orvane::bench::SetBenchOption(dead, "fault=silent");
  Photographer silent(dead, folder);
  silent.NameBoxes("box-no-target");
  silent.InitializeInstruments();
  silent.RunTarget();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::cerr << "screenshots FOLDER [light|dark]" << std::endl;
    return orvane::kBadOptions;
  }
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  (void)std::setlocale(LC_NUMERIC, "C");
  const bool dark = argc > 2 && std::string_view(argv[2]) == "dark";
  orvane::Wear(dark ? orvane::Theme::Dark : orvane::Theme::Light);

  std::filesystem::create_directories(argv[1]);
  TakeAll(argv[1]);
}
