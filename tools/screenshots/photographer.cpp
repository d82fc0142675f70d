#include "photographer.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QMessageBox>
#include <algorithm>
#include <iostream>
#include <stdexcept>
#include <utility>

#include "adapters/qt/appearance.h"
#include "adapters/qt/views/chart_view.h"
#include "app/windows/serial_field.h"

namespace orvane {
namespace {

Options OptionsOf(const bench::BenchOptions& bench) {
  Options options;
  options.bench = bench;
  return options;
}

template <class Window>
Window* OpenWindow() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (auto* found = qobject_cast<Window*>(window); found != nullptr && found->isVisible()) return found;
  }
  return nullptr;
}

/// A chart rests between two drawings: what has changed since is drawn later.
void ServeUntilDrawn(const QWidget& window) {
  const auto charts = window.findChildren<QWidget*>();
  const auto isDue = [](const QWidget* widget) {
    const auto* chart = dynamic_cast<const ChartView*>(widget);
    return chart != nullptr && chart->isVisible() && chart->Due();
  };
  do {
    QApplication::processEvents();
  } while (std::any_of(charts.begin(), charts.end(), isDue));
  // A chart's title finds its place in the turn after.
  QApplication::processEvents();
}

}  // namespace

Photographer::Photographer(const bench::BenchOptions& bench, std::filesystem::path folder)
    : program_(OptionsOf(bench)),
      status_(program_.TheWorld().loop, program_.TheWorld().Ports().mscomTarget, State(), Panels()),
      frontEnd_(program_.TheWorld().loop, TheDesk(), program_.TheStation()),
      folder_(std::move(folder)),
      hand_(program_.TheStation().Nest()) {
  TheDesk().boxOpened.Connect(
      [this](const Desk::OpenBox& open) { program_.TheWorld().loop.Post([this, open] { Answer(open); }); });
  TheDesk().dialogOpened.Connect(
      [this](const Desk::OpenDialog& open) { program_.TheWorld().loop.Post([this, open] { Answer(open); }); });
  frontEnd_.belowMain = [this](QWidget* parent) {
    strip_ = new StatusStrip(status_, SurroundingsOf(program_.TheOptions()), parent);
    strip_->AddField(new SerialField(program_.TheUnit(), strip_));
    return strip_;
  };
  program_.TheStation().Start();
}

void Photographer::InitializeInstruments() {
  Click(Panels().main.cmdInstrumentInitialize);
  Click(Panels().main.cmdPSInitialize);
  program_.TheStation().Nest().Run([&] { Panels().baseBand.Touch(); });
  Click(Panels().baseBand.load.initialize);
}

void Photographer::WhenLevelIsSearched(const std::string& level, std::function<void()> act) {
  State().searchTrail.passed.Connect([this, level, act = std::move(act), done = false](const auto&) mutable {
    if (done || State().searchTrail.Last()->subject.name != level) return;
    done = true;
    program_.TheWorld().loop.Post(act);
  });
}

void Photographer::When(Control& control, std::function<bool()> condition, std::function<void()> act) {
  control.changed.Connect([this, condition = std::move(condition), act = std::move(act), done = false]() mutable {
    if (done || !condition()) return;
    done = true;
    program_.TheWorld().loop.Post(act);
  });
}

PanelWindow& Photographer::WindowOf(Panel& panel) {
  if (!panel.Visible()) program_.TheStation().Nest().Run([&] { panel.Show(); });
  return *frontEnd_.WindowOf(panel);
}

void Photographer::Take(Panel& panel, const std::string& name) {
  PanelWindow& window = WindowOf(panel);
  // The screen in memory may be a smaller one.
  window.TakeItsSize();
  if (strip_ != nullptr) strip_->Look();
  Save(window, name);
}

void Photographer::TakeTabs(OrvaneMain& main) {
  const auto& tabs = main.SSTab1.Tabs();
  for (std::size_t i = 0; i < tabs.size(); ++i) {
    main.SSTab1.Select(static_cast<int>(i));
    Take(main, main.Name() + "-" + tabs[i]);
  }
  main.SSTab1.Select(0);
}

void Photographer::TakeList(ComboBox& box, const std::string& name) {
  auto* widget = WindowOf(box.Owner()).findChild<QComboBox*>(ToQt(box.Name()));
  widget->showPopup();
  Save(*widget->view()->window(), name);
  widget->hidePopup();
}

void Photographer::TakeStatusOf(const Surroundings& surroundings, const std::string& name) {
  StatusStrip strip(status_, surroundings, nullptr);
  strip.resize(WindowOf(Panels().main).width(), strip.sizeHint().height());
  strip.show();
  Save(strip, name);
}

void Photographer::Answer(const Desk::OpenBox& open) {
  // Of boxes that come again and again one picture is enough.
  if (auto* box = OpenWindow<QMessageBox>();
      box != nullptr && !boxName_.empty() && seen_.insert(open.box.text).second) {
    Save(*box, boxName_ + "-" + std::to_string(seen_.size()));
  }
  TheDesk().Press(open.id, ButtonText(open.box.buttons.back()));
}

void Photographer::Answer(const Desk::OpenDialog& open) {
  if (auto* dialog = OpenWindow<QFileDialog>(); dialog != nullptr && !dialogName_.empty()) {
    Save(*dialog, dialogName_ + (open.mode == Desk::Mode::Save ? "-save" : "-open"));
  }
  TheDesk().Choose(open.id, std::nullopt);
}

void Photographer::Save(QWidget& window, const std::string& name) {
  ServeUntilDrawn(window);
  const std::string file = (folder_ / (name + ".png")).string();
  if (!window.grab().save(QString::fromStdString(file))) throw std::runtime_error("Cannot write " + file);
  std::cout << file << ": " << window.width() << " x " << window.height() << std::endl;
}

}  // namespace orvane
