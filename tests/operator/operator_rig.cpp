#include "operator/operator_rig.h"

#include <utility>

#include "golden/golden_runs.h"

namespace orvane::test {
namespace {

constexpr std::chrono::milliseconds kTick{50};

}  // namespace

Options OperatorRig::VirtualOptions() {
  Options options;
  options.bench = bench::BenchOptions();
  options.station = "line 3";
  options.view = View::Operator;
  return options;
}

OperatorRig::OperatorRig(const std::vector<std::string>& faults, Options wishes, OperatorExtras extras)
    : bench(loop, OptionsOf(7, faults)),
      options(std::move(wishes)),
      station(StationPorts{loop, bench.Serial(), bench.Bus(), files, desk, desk}),
      status(loop, bench.Serial(), station.State(), station.Panels()),
      extras_(std::move(extras)) {
  if (!extras_.store.empty()) runs.emplace(extras_.store);
  Begin();
}

void OperatorRig::Begin() {
  for (const char* name : {"TI532.epm", "RampTable.dat", "Cable.loss"}) {
    files.content[files.SystemPath(name)] = InstalledFile(name);
  }
  unit.Follow(station.Panels());
  if (!extras_.goldenSerial.empty()) HaveGoldenUnit();
  view = std::make_unique<OperatorView>(
      OperatorWorld{loop, station, desk, unit, files, status, options, runs ? &news : nullptr,
                    runs ? &*runs : nullptr, extras_.hasWord ? &word : nullptr, golden.get(), &waits},
      options.theme == Theme::Dark);
  station.Start();
  view->Page().resize(1280, 720);
  view->Page().show();
  Tick();
}

void OperatorRig::HaveGoldenUnit() {
  GoldenBook book{GoldenRun()};
  book.reference.identity.serial = extras_.goldenSerial;
  golden = std::make_unique<GoldenUnit>(GoldenOptions{.serial = extras_.goldenSerial}, std::move(book), loop,
                                        [] { return kFirstRunMs; });
  station.Nest().refusal = [this](const Control& button) {
    return &button == &station.Panels().main.cmdTargetInitialize ? golden->NextUnitRefusal(unit.Texts().serial)
                                                                 : std::nullopt;
  };
}

OperatorRig::~OperatorRig() {
  // Nobody is left waiting in a box.
  while (!desk.Clear()) {
    if (!desk.OpenBoxes().empty()) {
      const auto& open = desk.OpenBoxes().back();
      (void)desk.Press(open.id, ButtonText(open.box.buttons.back()));
    }
    loop.Yield(loop.Now() + kTick);
  }
}

void OperatorRig::Tick() {
  QCoreApplication::processEvents();
  view->Look();
  for (std::size_t i = 0; i < waiting_.size(); ++i) {
    if (!waiting_[i].condition()) continue;
    const auto act = std::move(waiting_[i].act);
    waiting_.erase(waiting_.begin() + static_cast<std::ptrdiff_t>(i));
    act();
    break;
  }
  QCoreApplication::processEvents();
  loop.PostAt(loop.Now() + kTick, [this] { Tick(); });
}

void OperatorRig::InitializeInstruments() {
  Operator hand(station.Nest());
  hand.Click(station.Panels().main.cmdInstrumentInitialize);
  hand.Click(station.Panels().main.cmdPSInitialize);
  station.Nest().Run([this] { station.Panels().baseBand.Touch(); });
  hand.Click(station.Panels().baseBand.load.initialize);
}

bool OperatorRig::Until(const std::function<bool()>& condition, int seconds) {
  const TimePoint end = loop.Now() + std::chrono::seconds(seconds);
  while (!condition()) {
    if (loop.Now() > end) return false;
    loop.Yield(loop.Now() + kTick);
  }
  return true;
}

void OperatorRig::When(std::function<bool()> condition, std::function<void()> act) {
  waiting_.push_back({std::move(condition), std::move(act)});
}

void OperatorRig::Settle() {
  for (int turn = 0; turn < 4; ++turn) {
    QCoreApplication::processEvents();
    loop.Yield(loop.Now() + kTick);
  }
}

void OperatorRig::Type(const std::string& keys) {
  QWidget* to = view->Page().focusWidget();
  QTest::keyClicks(to == nullptr ? &view->Page() : to, QString::fromStdString(keys));
}

void OperatorRig::Press(Qt::Key key) {
  QWidget* to = view->Page().focusWidget();
  QTest::keyClick(to == nullptr ? &view->Page() : to, key);
}

QString OperatorRig::Focus() const {
  const QWidget* to = view->Page().focusWidget();
  return to == nullptr ? QString() : to->objectName();
}

bool OperatorRig::Seen(const char* name) {
  auto* widget = view->Page().findChild<QWidget*>(QString::fromLatin1(name));
  return widget != nullptr && widget->isVisible();
}

std::string OperatorRig::Text(const char* name) { return Seen(name) ? Of<QLabel>(name).text().toStdString() : ""; }

}  // namespace orvane::test
