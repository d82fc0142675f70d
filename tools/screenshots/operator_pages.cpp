#include "operator_pages.h"

#include <QDateTime>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "adapters/qt/views/chart_view.h"
#include "app/operator/page_language.h"
#include "operator/operator_rig.h"

namespace orvane {
namespace {

using test::OperatorRig;

/// One station at a time, whose page is kept under names.
class PageTaker {
 public:
  PageTaker(std::filesystem::path folder, Theme theme) : folder_(std::move(folder)), theme_(theme) {}

  OperatorRig& With(const std::vector<std::string>& faults, bool isReady = true, const std::string& pattern = "",
                    const std::string& golden = "") {
    Options options = OperatorRig::VirtualOptions();
    options.theme = theme_;
    options.operating.serialPattern = pattern;
    rig_.emplace(faults, std::move(options), test::OperatorExtras{.hasWord = true, .goldenSerial = golden});
    if (isReady) rig_->InitializeInstruments();
    rig_->Settle();
    return *rig_;
  }

  void Scan(const std::string& serial) {
    rig_->Type(serial);
    rig_->Press(Qt::Key_Return);
    rig_->Settle();
  }

  void Save(const std::string& name) {
    QCoreApplication::processEvents();
    for (auto* chart : rig_->view->Page().findChildren<QWidget*>()) {
      auto* view = dynamic_cast<ChartView*>(chart);
      while (view != nullptr && view->isVisible() && view->Due()) QCoreApplication::processEvents();
    }
    QCoreApplication::processEvents();
    const auto file = folder_ / (name + ".png");
    if (!rig_->view->Page().grab().save(QString::fromStdString(file.string()))) {
      throw std::runtime_error("cannot write " + file.string());
    }
    std::cout << file.string() << std::endl;
  }

  /// Each box once under that name, answered by its first button.
  void AnswerBoxes(const std::string& name) {
    rig_->When([this] { return !rig_->Card().empty(); },
               [this, name] {
                 if (!name.empty()) Save(name);
                 rig_->Press(Qt::Key_Return);
                 AnswerBoxes("");
               });
  }

  void UntilVerdict(const std::string& name) {
    if (!rig_->Until([this] { return rig_->Covered() && rig_->station.Nest().Idle(); })) {
      throw std::runtime_error(name + ": there is no verdict");
    }
    Save(name);
  }

 private:
  std::filesystem::path folder_;
  Theme theme_;
  std::optional<OperatorRig> rig_;
};

void TakeGood(PageTaker& taker) {
  OperatorRig& at = taker.With({});
  taker.Save("operator-idle");
  at.When([&at] { return at.station.State().searchTrail.Found(0).size() > 6; },
          [&taker] { taker.Save("operator-in-a-run"); });
  taker.Scan("A-17");
  taker.UntilVerdict("operator-pass");
  at.Press(Qt::Key_Return);
  at.Settle();
  taker.Save("operator-after-a-unit");
}

void TakeBad(PageTaker& taker) {
  taker.With({"battery"});
  taker.AnswerBoxes("operator-box");
  taker.Scan("A-17");
  taker.UntilVerdict("operator-fail");

  taker.With({"pa-weak"});
  taker.AnswerBoxes("");
  taker.Scan("A-17");
  taker.UntilVerdict("operator-out-of-tolerance");

  taker.With({"testset-silent@20"});
  taker.AnswerBoxes("");
  taker.Scan("A-17");
  taker.UntilVerdict("operator-instrument-gone");

  taker.With({"unplugged@150"});
  taker.AnswerBoxes("operator-unplugged");
  taker.Scan("A-17");
  taker.UntilVerdict("operator-broken-off");
}

void TakeHands(PageTaker& taker) {
  OperatorRig& changed = taker.With({});
  changed.When(
      [&changed] { return changed.station.State().report.UnderWay() == RunStep::Receive; },
      [&changed] { Operator(changed.station.Nest()).Type(changed.station.Panels().autoCal.txtfreqOffset, "0"); });
  taker.Scan("A-17");
  taker.UntilVerdict("operator-not-measured");

  OperatorRig& stopped = taker.With({});
  stopped.When([&stopped] { return stopped.station.State().report.UnderWay() == RunStep::TransmitDcs; },
               [&stopped] { stopped.Press(Qt::Key_F12); });
  taker.Scan("A-17");
  taker.UntilVerdict("operator-stopped");
}

void TakeQuestions(PageTaker& taker) {
  taker.With({}, false);
  taker.Scan("A-17");
  taker.Save("operator-not-ready");
  taker.With({}, true, "A-[0-9]{2}");
  taker.Scan("B-1");
  taker.Save("operator-wrong-number");
  taker.With({}, true, "", "G-001");
  taker.Scan("A-17");
  taker.Save("operator-golden-due");
  OperatorRig& at = taker.With({});
  QTest::mouseClick(&at.Of("engineer"), Qt::LeftButton);
  at.Settle();
  taker.Save("operator-engineers-word");
}

}  // namespace

void TakeOperatorsPages(const std::filesystem::path& folder, Theme theme, Language language) {
  std::filesystem::create_directories(folder);
  Speak(language);
  PageTaker taker(folder, theme);
  TakeGood(taker);
  TakeBad(taker);
  TakeHands(taker);
  TakeQuestions(taker);
  Speak(Language::English);
}

}  // namespace orvane
