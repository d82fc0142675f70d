#pragma once

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/operator/operator_view.h"
#include "bench/virtual_bench.h"
#include "platform/virtual_event_loop.h"
#include "station/virtual_station.h"
#include "support/memory_files.h"

namespace orvane::test {

/// What a station may have beyond its bench.
struct OperatorExtras {
  /// The profile has an engineers' word: "open sesame".
  bool hasWord = false;
  /// Of a golden unit that was never run; empty: there is none.
  std::string goldenSerial{};
  /// Of its records, as OpenStore takes it; empty: none are kept.
  std::string store{};
};

/// A station on the virtual bench in virtual time, behind the operator's page; the test has the operator's eyes, keys
/// and mouse. The page is looked at and painted twenty times a second of the station's time.
class OperatorRig {
 public:
  explicit OperatorRig(const std::vector<std::string>& faults = {}, Options options = VirtualOptions(),
                       OperatorExtras extras = {});
  ~OperatorRig();

  static Options VirtualOptions();

  void InitializeInstruments();
  /// Lets time pass until it holds. @return whether it did, within so many seconds of the station's time.
  bool Until(const std::function<bool()>& condition, int seconds = 300);
  /// Does it once, from within whatever goes on, as soon as the condition holds.
  void When(std::function<bool()> condition, std::function<void()> act);
  /// Lets what was typed or clicked take place.
  void Settle();

  /// What whoever has the keyboard is given.
  void Type(const std::string& keys);
  void Press(Qt::Key key);
  [[nodiscard]] QString Focus() const;

  template <class Widget = QWidget>
  [[nodiscard]] Widget& Of(const char* name) {
    auto* widget = view->Page().findChild<Widget*>(QString::fromLatin1(name));
    if (widget == nullptr) throw std::runtime_error(std::string("There is no ") + name + " on the page.");
    return *widget;
  }
  /// The text of a label; empty where it cannot be seen.
  [[nodiscard]] std::string Text(const char* name);
  [[nodiscard]] bool Seen(const char* name);
  /// A card lies there; its own text.
  [[nodiscard]] std::string Card() { return Seen("cardFrame") ? Text("cardText") : ""; }
  [[nodiscard]] bool Covered() { return Seen("verdictCover"); }
  bool UntilCovered() {
    return Until([this] { return Covered(); });
  }

  VirtualEventLoop loop;
  MemoryFiles files;
  bench::VirtualBench bench;
  Desk desk{loop, "/"};
  Options options;
  UnitIdentity unit;
  Station station;
  StationStatus status;
  RecordNews news;
  std::optional<PastRuns> runs;
  EngineerWord word{loop, [this](const std::string& said, const auto& told) {
                      loop.Post([told, isRight = said == "open sesame"] { told(isRight); });
                    }};
  std::unique_ptr<GoldenUnit> golden;
  LongWaits waits;
  std::unique_ptr<OperatorView> view;

 private:
  void Begin();
  void HaveGoldenUnit();
  void Tick();

  struct Waiting {
    std::function<bool()> condition;
    std::function<void()> act;
  };
  OperatorExtras extras_;
  std::vector<Waiting> waiting_;
};

}  // namespace orvane::test
