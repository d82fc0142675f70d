// Draws the windows of the station after runs on a virtual bench, the verdicts and boxes each after a run that brings
// them up. No screen is needed.
//
//   screenshots FOLDER [light|dark] [large] [every|brief]
//       What the operator's guide shows. "large": the type 1.25 times as large; "every": all states of all windows;
//       "brief": each window, but no run that waits long.
//   screenshots --all FOLDER
//       Every state, light and dark, on screens of one and two dots a pixel, each set in a folder of its own.
//   screenshots --operator FOLDER
//       The operator's page in every state, light and dark, in each language, each set in a folder of its own.
//
// QT_SCALE_FACTOR=2 doubles the pictures.

#include <QApplication>
#include <QProcess>
#include <algorithm>
#include <clocale>
#include <iostream>

#include "app/windows/theme.h"
#include "operator_pages.h"
#include "photographer.h"

namespace {

using orvane::Panel;
using orvane::Photographer;
using std::filesystem::path;

orvane::bench::BenchOptions BenchWith(const char* fault) {
  orvane::bench::BenchOptions options;
  orvane::bench::SetBenchOption(options, std::string("fault=") + fault);
  return options;
}

void TakeGoodRun(const path& folder, bool every) {
  Photographer good({}, folder);
  orvane::StationPanels& panels = good.Panels();
  good.InitializeInstruments();
  good.WhenLevelIsSearched("GSM level 12", [&] {
    good.Take(panels.main, "OrvaneMain-in-a-run");
    good.Take(panels.autoCal, "frmAutoCal-in-a-run");
  });
  if (every) {
    auto& saved = panels.downLoad.prgDownload;
    good.When(
        saved, [&] { return saved.Value() > saved.Max() / 2; },
        [&] {
          good.Take(panels.main, "OrvaneMain-saving");
          good.Take(panels.autoCal, "frmAutoCal-saving");
          good.Take(panels.downLoad, "frmDownLoad-saving");
        });
    good.When(
        panels.baseBand.txtCC2CVADC, [&] { return !panels.baseBand.txtCC2CVADC.Text().empty(); },
        [&] { good.Take(panels.baseBand, "frmBaseBand-in-a-run"); });
  }
  good.RunTarget();
  good.TakeTabs(panels.main);
  for (Panel* panel : panels.All()) {
    const bool onceMore = panel == &panels.main || panel == &panels.fail;
    if (!onceMore) good.Take(*panel, panel->Name());
  }
}

void TakeRunWithoutInstruments(const path& folder) {
  Photographer withoutInstruments({}, folder);
  withoutInstruments.NameBoxes("box-no-instruments");
  withoutInstruments.RunTarget();
  withoutInstruments.Take(withoutInstruments.Panels().pass, "frmFailPass-not-measured");
}

void TakeWeakUnit(const path& folder) {
  Photographer weak(BenchWith("pa-weak"), folder);
  weak.InitializeInstruments();
  weak.RunTarget();
  weak.Take(weak.Panels().pass, "frmFailPass-out-of-tolerance");
}

void TakeFailingRun(const path& folder) {
  Photographer failing(BenchWith("battery"), folder);
  failing.NameBoxes("box-battery");
  failing.InitializeInstruments();
  failing.RunTarget();
  failing.Take(failing.Panels().fail, "frmFail");
}

void TakeSilentTarget(const path& folder, bool every) {
  Photographer silent(BenchWith("silent"), folder);
  silent.NameBoxes("box-no-target");
  silent.InitializeInstruments();
  silent.RunTarget();
  if (every) silent.Take(silent.Panels().main, "OrvaneMain-no-reply");
}

/// Windows that nothing has happened in, what comes up over them, and the Target worked by hand.
void TakeByHand(const path& folder) {
  Photographer idle({}, folder);
  orvane::StationPanels& panels = idle.Panels();
  idle.NameBoxes("box-by-hand");
  idle.NameDialogs("dialog");
  for (Panel* panel : panels.All()) idle.Take(*panel, panel->Name() + "-fresh");
  idle.TakeList(panels.main.cboInstrumentList, "list");
  idle.TakeStatusOf({.devices = {"/dev/serial/by-id/usb-serial-adapter-of-some-length-if00-port0"},
                     .instruments = "GPIB native, 1 by tcp:bench7:5025, 2 by tcp:bench7:5026, 5 by tcp:bench7:5027"},
                    "status-real-bench");
  idle.Click(panels.main.cmdExit);
  idle.Click(panels.main.cmdLogOn);
  idle.Click(panels.downLoad.cmdEepromDownLoad);
  (void)idle.TheDesk().AskOverwrite("run.log\nThis file already exists. Write over it?");
  idle.TheDesk().Alarm("The battery is connected.");
  idle.TheDesk().Warning(std::string(4000, 'x'));

  idle.InitializeInstruments();
  idle.Click(panels.main.cmdULTest);
  panels.main.SSTab1.Select(2);
  idle.Type(*panels.main.ramp.txtUP[3], "9");
  idle.Type(*panels.rampTable.editor.txtDN[3], "5");
  panels.downLoad.optEepromWrite.Select();
  idle.Take(panels.main, "OrvaneMain-by-hand");
  idle.Take(panels.rampTable, "frmRampTable-by-hand");
  idle.Take(panels.downLoad, "frmDownLoad-by-hand");
}

/// Charts of units that are not what they should be, and a run that is stopped.
void TakeBadUnits(const path& folder) {
  Photographer weak(BenchWith("pa-weak"), folder);
  weak.InitializeInstruments();
  weak.RunTarget();
  weak.Take(weak.Panels().autoCal, "frmAutoCal-weak");
  weak.Take(weak.Panels().txResult, "frmAutoCalTxResult-weak");

  Photographer deaf(BenchWith("receiver"), folder);
  deaf.InitializeInstruments();
  deaf.RunTarget();
  deaf.Take(deaf.Panels().mpAutoCal, "frmMPAutoCal-deaf");

  Photographer stopped({}, folder);
  stopped.InitializeInstruments();
  stopped.WhenLevelIsSearched("DCS level 3", [&] {
    stopped.Click(stopped.Panels().autoCal.cmdAutoCalStop);
    stopped.Take(stopped.Panels().autoCal, "frmAutoCal-stopped");
  });
  stopped.RunTarget();
}

void TakeSet(const path& folder, bool every, bool brief) {
  std::filesystem::create_directories(folder);
  TakeGoodRun(folder, every);
  TakeRunWithoutInstruments(folder);
  if (every || brief) TakeByHand(folder);
  if (brief) return;
  TakeFailingRun(folder);
  TakeWeakUnit(folder);
  TakeSilentTarget(folder, every);
  if (every) TakeBadUnits(folder);
}

/// A screen's dots are settled when a program begins: each set is taken by one of its own.
int TakeAllSets(const QString& program, const path& folder) {
  for (const char* dots : {"1", "2"}) {
    for (const char* theme : {"light", "dark"}) {
      const path set = folder / (std::string(dots) + "x-" + theme);
      QProcess taker;
      auto surroundings = QProcessEnvironment::systemEnvironment();
      surroundings.insert("QT_SCALE_FACTOR", dots);
      taker.setProcessEnvironment(surroundings);
      taker.setProcessChannelMode(QProcess::ForwardedChannels);
      taker.start(program, {QString::fromStdString(set.string()), theme, "every"});
      if (!taker.waitForFinished(-1) || taker.exitCode() != 0) return 1;
    }
  }
  return 0;
}

int TakeOperator(const path& folder) {
  using orvane::Language;
  using orvane::Theme;
  for (const auto& [theme, dress] : {std::pair(Theme::Light, "light"), std::pair(Theme::Dark, "dark")}) {
    orvane::Wear(theme);
    orvane::TakeOperatorsPages(folder / (std::string("en-") + dress), theme, Language::English);
    orvane::TakeOperatorsPages(folder / (std::string("ko-") + dress), theme, Language::Korean);
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string_view> words(argv + 1, argv + argc);
  const auto says = [&](std::string_view word) { return std::find(words.begin(), words.end(), word) != words.end(); };
  const bool isWhole = !words.empty() && (words[0] == "--all" || words[0] == "--operator");
  if (words.empty() || isWhole != (words.size() == 2 && (says("--all") || says("--operator")))) {
    std::cerr << "screenshots FOLDER [light|dark] [large] [every|brief], or screenshots --all|--operator FOLDER"
              << std::endl;
    return orvane::kBadOptions;
  }
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  (void)std::setlocale(LC_NUMERIC, "C");
  if (words[0] == "--operator") return TakeOperator(words[1]);
  if (words[0] == "--all") return TakeAllSets(QApplication::applicationFilePath(), words[1]);

  orvane::Wear(says("dark") ? orvane::Theme::Dark : orvane::Theme::Light);
  if (says("large")) {
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * 1.25);
    QApplication::setFont(font);
  }
  TakeSet(words[0], says("every"), says("brief"));
}
