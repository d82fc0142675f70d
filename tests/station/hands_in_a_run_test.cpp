// What an operator changes while a whole run is under way keeps its effect, and no run that reads it is taken for one
// with the settings that it began with.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "panels/station_layouts.h"
#include "platform/layout_captions.h"
#include "rfparams/rf_text_file.h"
#include "station/virtual_station.h"
#include "txcal/run_inputs.h"

namespace orvane::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* kByHand = " was changed by hand during the run.";

using Act = std::function<void(VirtualStation&)>;

/// A road with an act of an operator at the begin of a step.
struct ActedRoad {
  ActedRoad(RunStep when, const Act& act) {
    on.State().report.entered.Connect([this, when, &act, done = false](RunStep step) mutable {
      if (step != when || std::exchange(done, true)) return;
      on.loop.Post([this, &act] { act(on); });
    });
    failure = on.TakeTargetThrough();
  }
  /// Whether it is a complete one.
  [[nodiscard]] bool Green() {
    return !failure && on.Concluded() == Verdict::Pass && on.State().report.AllComplete();
  }
  /// All that went out, and all that was found.
  [[nodiscard]] std::vector<std::string> Outcome() {
    std::vector<std::string> lines = on.journal.Lines();
    // A bad entry has its own.
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("box: "); });
    RFParamsToDataConvert(on.State().rf);
    lines.push_back(ParameterFileText(on.State().rf));
    lines.push_back(on.State().charger.CC2CVADCSaved + " " + on.State().charger.ShutDownADCSaved);
    return lines;
  }

  VirtualStation on{1};
  std::optional<std::string> failure;
};

template <class Kind>
Kind* As(Control& control) {
  return dynamic_cast<Kind*>(&control);
}

/// Changes a control as an operator does. @return false for one that takes no entry, or none now.
bool ChangeByHand(Operator& op, Control& control) {
  try {
    if (auto* box = As<TextBox>(control)) {
      std::string text = box->Text() + "1";
      PassOver([&] { text = NumberText(ToDouble(box->Text()) + 1); });
      op.Type(*box, text);
    } else if (auto* combo = As<ComboBox>(control)) {
      if (combo->Items().size() < 2) return false;
      op.Pick(*combo, static_cast<std::size_t>(combo->Selected() + 1) % combo->Items().size());
    } else if (auto* option = As<OptionButton>(control)) {
      op.Select(*option);
    } else if (auto* check = As<CheckBox>(control)) {
      op.Check(*check, !check->Checked());
    } else if (auto* upDown = As<UpDown>(control)) {
      op.Step(*upDown, upDown->Value() < upDown->Max() ? 1 : -1);
    } else {
      return false;
    }
  } catch (const ControlDisabled&) {
    return false;
  }
  return true;
}

class EveryEntry : public testing::TestWithParam<RunStep> {};

// Whatever a run reads has its row among the run's inputs: were one missing, a changed run would come to a green PASS
// here, or to one that does not say why it differs.
TEST_P(EveryEntry, ThatChangesARunIsToldWithIt) {
  ActedRoad reference(GetParam(), [](VirtualStation&) {});
  ASSERT_TRUE(reference.Green()) << reference.on.Steps();
  const auto expected = reference.Outcome();
  std::set<std::string> told;
  const auto panels = reference.on.Panels().All();
  for (std::size_t p = 0; p < panels.size(); ++p) {
    for (std::size_t c = 0; c < panels[p]->Controls().size(); ++c) {
      const Control& named = *panels[p]->Controls()[c];
      // Its text is a command that waits for its Enter; each command of the run takes its place.
      if (named.Name() == "txtUserCommand") continue;
      bool changed = false;
      ActedRoad road(GetParam(), [&](VirtualStation& on) {
        Panel& panel = *on.Panels().All()[p];
        panel.Touch();
        changed = ChangeByHand(on.op, *panel.Controls()[c]);
      });
      if (!changed) continue;
      const std::string name = panels[p]->Name() + "." + named.Name();
      const std::string steps = road.on.Steps();
      const bool flawed = steps.find(" by hand during the run.") != std::string::npos;
      if (flawed) told.insert(name);
      EXPECT_FALSE(flawed && road.Green()) << name;
      const bool differs = road.Outcome() != expected && !road.failure;
      EXPECT_TRUE(!differs || flawed) << name << "\n" << steps;
    }
  }
  if (GetParam() == RunStep::Receive) {
    EXPECT_TRUE(told.contains("frmMPAutoCal.txtGSMArfcn1"));
    EXPECT_TRUE(told.contains("frmMPAutoCal.updGSMArfcn1"));
    EXPECT_TRUE(told.contains("OrvaneMain.txtVoltageLoss")) << "the twin of the panel that the charger run reads";
  }
}

INSTANTIATE_TEST_SUITE_P(HandsInARun, EveryEntry, testing::ValuesIn(kRunSteps),
                         [](const auto& each) { return std::string(StepName(each.param)); });

TEST(HandsInARun, AStrayKeyIsAFlawOfTheStepThatReadsIt) {
  ActedRoad road(RunStep::Receive, [](VirtualStation& on) {
    for (const char32_t key : {U'3', U'0'}) on.op.Key(on.Panels().mpAutoCal.txtGSMArfcn1, key);
  });
  EXPECT_EQ(road.on.Concluded(), Verdict::Pass);
  EXPECT_THAT(road.on.Steps(),
              HasSubstr("receive: GBand1 was changed by hand during the run.\ntransmitDCS: complete\n"));
  EXPECT_EQ(road.on.State().report.Doubt(), FlawKind::NotMeasured);
  EXPECT_EQ(road.on.Panels().mpAutoCal.txtGSMArfcn1.Text(), "030") << "it keeps its effect";

  // The next unit's run begins with it.
  EXPECT_EQ(road.on.InitializeTarget(), std::nullopt);
  EXPECT_THAT(road.on.Steps(), Not(HasSubstr(kByHand)));
}

TEST(HandsInARun, AChangeThatNoStepReadsAnyMoreIsNone) {
  ActedRoad road(RunStep::TransmitDcs,
                 [](VirtualStation& on) { on.op.Type(on.Panels().mpAutoCal.txtGSMArfcn1, "30"); });
  EXPECT_TRUE(road.Green()) << road.on.Steps();
}

TEST(HandsInARun, AChangeThatIsTakenBackWasOneAllTheSame) {
  ActedRoad road(RunStep::Receive, [](VirtualStation& on) {
    TextBox& loss = on.Panels().autoCal.txtDCSLoss;
    const std::string before = loss.Text();
    on.op.Type(loss, "-2");
    on.op.Type(loss, before);
  });
  EXPECT_THAT(road.on.Steps(),
              HasSubstr("receive: complete\ntransmitDCS: Tx loss (dB), DCS was changed by hand during "
                        "the run.\ntransmitGSM: complete\n"));
}

TEST(HandsInARun, ATableThatIsSetOrLoadedByHandCountsLikeABox) {
  const struct {
    Act act;
    const char* step;
  } rows[] = {{[](VirtualStation& on) {
                 on.op.Type(on.Panels().autoCal.txtPowerIndexLevel, "31");
                 on.op.Click(on.Panels().autoCal.cmdPowerIndexSet);
               },
               "transmitDCS: Power Index"},
              {[](VirtualStation& on) {
                 on.op.Type(on.Panels().autoCal.txtinitialDAC, "501");
                 on.op.Click(on.Panels().autoCal.cmdinitialSet);
               },
               "transmitGSM: Initial Value"},
              {[](VirtualStation& on) {
                 on.dialogs.answers.emplace_back(on.files.SystemPath("TI532.epm"));
                 on.Panels().downLoad.Touch();
                 on.op.Select(on.Panels().downLoad.optDownloadFileLoad);
                 on.State().rf.RFParams.guard_bits = 77;
                 on.op.Click(on.Panels().downLoad.cmdEepromDownLoad);
               },
               "save: RF Parameter"}};
  for (const auto& row : rows) {
    ActedRoad road(RunStep::Receive, row.act);
    EXPECT_THAT(road.on.Steps(), HasSubstr(std::string(row.step) + kByHand));
  }
}

TEST(HandsInARun, ACommandOrAMessageByHandIsAFlawOfItsStep) {
  ActedRoad road(RunStep::Charger, [](VirtualStation& on) { on.op.Click(on.Panels().baseBand.cmdPSVoltageSet); });
  EXPECT_THAT(road.on.Steps(),
              HasSubstr("save: complete\ncharger: The Target or an instrument was given a command by hand"));
}

TEST(HandsInARun, ASettingIsCalledByWhatStandsBesideItOnItsPanel) {
  VirtualStation on(1);
  StationPanels& panels = on.Panels();
  StationState& state = on.State();
  std::map<const Control*, std::string> beside;
  for (const auto& [panel, layout] : LayOutAll(panels)) {
    for (const auto& [control, caption] : CaptionsBeside(layout)) beside[control] = caption;
  }
  const auto inputs = RunInputsOf({panels.main, panels.autoCal, panels.mpAutoCal, panels.baseBand, state.cal,
                                   state.rf, state.ramp, state.testSet});
  for (const RunInput& input : inputs) {
    if (input.control == nullptr) continue;
    const std::string& caption = beside[input.control];
    // Behind its group, where that is not all that is said.
    const auto group = caption.find(": ");
    EXPECT_EQ(input.name, group == std::string::npos ? caption : caption.substr(group + 2)) << input.control->Name();
  }
}

TEST(HandsInARun, ChangesAheadOfTheRunFlawNothing) {
  VirtualStation on(1);
  on.InitializeInstruments();
  on.op.Type(on.Panels().mpAutoCal.txtGSMArfcn1, "1");
  on.op.Type(on.Panels().autoCal.txtErrorRate, "0.12");
  EXPECT_EQ(on.InitializeTarget(), std::nullopt);
  EXPECT_TRUE(on.State().report.AllComplete()) << on.Steps();
}

}  // namespace
}  // namespace orvane::test
