// Draws every window of the station after one run on a virtual bench. No screen is needed.
//
//   screenshots FOLDER [light|dark]
//
// QT_SCALE_FACTOR=2 doubles the pictures.

#include <QApplication>
#include <QMessageBox>
#include <QStyleFactory>
#include <clocale>
#include <filesystem>
#include <iostream>
#include <utility>

#include "app/program.h"
#include "app/windows/front_end.h"

namespace {

using orvane::Desk;
using orvane::FrontEnd;
using orvane::Operator;
using orvane::Panel;
using orvane::Program;
using orvane::StationPanels;

/// The colours of a desktop that is set to dark.
QPalette DarkPalette() {
  const QColor text(0xe6, 0xe6, 0xe6);
  const QColor faded(0x80, 0x80, 0x80);
  QPalette palette(QColor(0x3a, 0x3d, 0x41), QColor(0x2b, 0x2d, 0x30));
  palette.setColor(QPalette::Base, QColor(0x1e, 0x1f, 0x22));
  palette.setColor(QPalette::Highlight, QColor(0x2f, 0x65, 0xca));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, text);
    palette.setColor(QPalette::Disabled, role, faded);
  }
  return palette;
}

/// Works the station as an operator does, and keeps what the screen shows.
class Photographer {
 public:
  Photographer(Program& program, const FrontEnd& frontEnd, std::filesystem::path folder)
      : program_(program), frontEnd_(frontEnd), folder_(std::move(folder)), hand_(program.TheStation().Nest()) {
    program_.TheWorld().desk.boxOpened.Connect([this](const Desk::OpenBox& open) {
      program_.TheWorld().loop.Post([this, id = open.id, box = open.box] { AnswerBox(id, box); });
    });
  }

  void RunOneTarget() {
    StationPanels& panels = program_.TheStation().Panels();
    hand_.Click(panels.main.cmdInstrumentInitialize);
    hand_.Click(panels.main.cmdPSInitialize);
    program_.TheStation().Nest().Run([&] { panels.baseBand.Touch(); });
    hand_.Click(panels.baseBand.load.initialize);
    hand_.Click(panels.main.cmdTargetInitialize);
  }
  void TakeAll() {
    StationPanels& panels = program_.TheStation().Panels();
    TabControl(panels.main);
    for (Panel* panel : panels.All()) {
      if (panel != &panels.main) Take(*panel, panel->Name());
    }
  }

 private:
  void TabControl(orvane::OrvaneMain& main) {
    for (const std::string& tab : main.SSTab1.Tabs()) {
      main.SSTab1.Select(static_cast<int>(&tab - main.SSTab1.Tabs().data()));
      Take(main, main.Name() + "-" + tab);
    }
  }
  void Take(Panel& panel, const std::string& name) {
    program_.TheStation().Nest().Run([&] { panel.Show(); });
    Save(*frontEnd_.WindowOf(panel), name);
  }
  void AnswerBox(Desk::Id id, const orvane::Box& box) {
    ++boxes_;
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (qobject_cast<QMessageBox*>(window) != nullptr) Save(*window, "box-" + std::to_string(boxes_));
    }
    program_.TheWorld().desk.Press(id, orvane::ButtonText(box.buttons.front()));
  }
  void Save(QWidget& window, const std::string& name) {
    QApplication::processEvents();
    const std::string file = (folder_ / (name + ".png")).string();
    window.grab().save(QString::fromStdString(file));
    std::cout << file << ": " << window.width() << " x " << window.height() << std::endl;
  }

  Program& program_;
  const FrontEnd& frontEnd_;
  std::filesystem::path folder_;
  Operator hand_;
  int boxes_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::cerr << "screenshots FOLDER [light|dark]" << std::endl;
    return orvane::kBadOptions;
  }
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  (void)std::setlocale(LC_NUMERIC, "C");
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  if (argc > 2 && std::string_view(argv[2]) == "dark") QApplication::setPalette(DarkPalette());

  std::filesystem::create_directories(argv[1]);
  orvane::Options options;
  options.bench.emplace();
  Program program(options);
  const FrontEnd frontEnd(program.TheWorld().loop, program.TheWorld().desk, program.TheStation());
  Photographer photographer(program, frontEnd, argv[1]);
  program.TheStation().Start();
  photographer.RunOneTarget();
  photographer.TakeAll();
}
