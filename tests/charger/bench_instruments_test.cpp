#include "charger_rig.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr Colour kInitialized = 0x00FFC0C0;

struct BenchInstruments : ::testing::Test {
  std::vector<std::string> TextsOf(const std::function<void()>& act) {
    rig.boxes.shown.clear();
    rig.Act(act);
    return rig.boxes.Texts();
  }
  ChargerRig rig;
  FrmBaseBand& face = rig.panels.baseBand;
  ChargerState& state = rig.state.charger;
};

TEST_F(BenchInstruments, AnInitializedSupplyHasItsVoltageAndItsOutputOn) {
  face.supply.initialize.Click();
  EXPECT_THAT(rig.bus.At(2).lines, ElementsAre("*IDN?", "VOLT 4.21", "OUTPUT ON"));
  EXPECT_TRUE(state.PSReady);
  EXPECT_TRUE(state.PSVoltageSet);
  EXPECT_EQ(face.cmdPSVoltageEnable.Caption(), "Disable");
  EXPECT_EQ(face.supply.initialize.BackColor(), kInitialized);
  EXPECT_EQ(rig.panels.main.txtResults.Text(), "FAKE,INSTRUMENT,0,1\r\n");
}

TEST_F(BenchInstruments, AnInitializedLoadHasResistanceAndThenCurrent) {
  face.load.initialize.Click();
  EXPECT_THAT(rig.bus.At(5).lines, ElementsAre("*IDN?", "RES 2000", "CURR 0.1"));
  EXPECT_TRUE(state.LoaderReady);
  EXPECT_FALSE(state.PSReady);
  EXPECT_EQ(face.load.initialize.BackColor(), kInitialized);
}

TEST_F(BenchInstruments, ASecondInitializeTurnsTheOutputOnAgain) {
  face.supply.initialize.Click();
  rig.bus.At(2).lines.clear();
  face.supply.initialize.Click();
  EXPECT_THAT(rig.bus.At(2).lines, ElementsAre("*IDN?", "VOLT 4.21", "OUTPUT ON"));
  EXPECT_EQ(face.cmdPSVoltageEnable.Caption(), "Disable");
}

TEST_F(BenchInstruments, AnAbsentInstrumentShowsItsStatusAndStaysNotReady) {
  rig.bus.At(2).absent = true;
  face.supply.initialize.Click();
  ASSERT_EQ(rig.boxes.shown.size(), 1U);
  EXPECT_EQ(rig.boxes.shown[0].text, "Unable to open device\ribsta = &H8000\riberr = 2");
  EXPECT_EQ(rig.boxes.shown[0].title, "Error");
  EXPECT_EQ(rig.boxes.shown[0].icon, BoxIcon::Stop);
  EXPECT_FALSE(state.PSReady);
  EXPECT_FALSE(state.powerError);
  EXPECT_EQ(face.supply.initialize.BackColor(), kButtonFace);
  EXPECT_EQ(face.cmdPSVoltageEnable.Caption(), "Enable");
  rig.bus.At(2).absent = false;
  face.supply.initialize.Click();
  EXPECT_TRUE(state.PSReady);
}

TEST_F(BenchInstruments, AFailureIsToldWithItsRouteAheadOfItsBoxAndNotOnTheConsole) {
  std::vector<GpibFault> told;
  rig.state.charger.faults.told.Connect([&](const GpibFault& fault) {
    EXPECT_TRUE(rig.boxes.shown.empty());
    told.push_back(fault);
  });
  rig.bus.At(5).absent = true;
  face.load.initialize.Click();
  ASSERT_EQ(told.size(), 1U);
  EXPECT_EQ(told[0].address, 5);
  EXPECT_EQ(told[0].route, "fake:5");
  EXPECT_EQ(told[0].text, "GPIB address 5: nobody answers.");
  EXPECT_EQ(rig.panels.main.txtResults.Text(), "");
  EXPECT_EQ(rig.state.niGlobal.ibsta, 0x8000);
  EXPECT_EQ(rig.state.niGlobal.iberr, 2);
}

TEST_F(BenchInstruments, AFailureStandsUntilItsInstrumentIsInitializedAgain) {
  const auto& last = rig.state.charger.faults.Last();
  rig.bus.At(2).absent = true;
  face.supply.initialize.Click();
  face.load.initialize.Click();
  ASSERT_TRUE(last.has_value()) << "the load is not the supply";
  EXPECT_EQ(last->address, 2);
  rig.bus.At(2).absent = false;
  face.supply.initialize.Click();
  EXPECT_FALSE(last.has_value());
}

TEST_F(BenchInstruments, AFailedIdentificationMakesReadyAndEndsTheNextInitialize) {
  rig.bus.At(5).silent = true;
  face.load.initialize.Click();
  EXPECT_THAT(rig.boxes.Texts(), ElementsAre("Unable to open device\ribsta = &HC000\riberr = 6"));
  EXPECT_TRUE(state.LoaderReady);
  EXPECT_TRUE(state.loaderError);
  EXPECT_FALSE(state.powerError);
  EXPECT_THAT(rig.bus.At(5).lines, ElementsAre("*IDN?", "RES 2000", "CURR 0.1")) << "it goes on";
  EXPECT_EQ(face.load.initialize.BackColor(), kInitialized);
  rig.bus.At(5).silent = false;
  rig.bus.At(5).lines.clear();
  face.load.initialize.Click();
  EXPECT_THAT(rig.bus.At(5).lines, ElementsAre("*IDN?"));
  EXPECT_FALSE(state.loaderError);
}

/// Empties a box, past its filter.
template <class TextControl>
std::function<void()> Empty(TextControl& box) {
  return [&box] {
    box.onChange = nullptr;
    box.SetText("");
  };
}

TEST_F(BenchInstruments, EveryEmptyBoxHasItsWords) {
  const struct {
    std::function<void()> empty;
    Button& initialize;
    const char* words;
  } rows[] = {{Empty(face.txtPSVoltage), face.supply.initialize, "Input Voltage"},
              {Empty(face.supply.bufferSize), face.supply.initialize, "Input Buffer Size"},
              {Empty(face.supply.timeOut), face.supply.initialize, "Input Time Out"},
              {Empty(face.supply.secAddress), face.supply.initialize, "Select Secondary Address"},
              {Empty(face.supply.primAddress), face.supply.initialize, "Select Primary Address"},
              {Empty(face.supply.boardNumber), face.supply.initialize, "Input Board Number"},
              {Empty(face.TxtLoaderCurrent), face.load.initialize, "Input Current value"},
              {Empty(face.load.bufferSize), face.load.initialize, "Input Buffer Size"},
              {Empty(face.load.timeOut), face.load.initialize, "Select Time Out"},
              {Empty(face.load.secAddress), face.load.initialize, "Select Secondary Address"},
              {Empty(face.load.primAddress), face.load.initialize, "Select Primary Address"},
              {Empty(face.load.boardNumber), face.load.initialize, "Input Board Number"}};
  // From the last box to the first: each new one is told ahead of those that are empty already.
  for (const auto& row : rows) {
    row.empty();
    EXPECT_THAT(TextsOf([&] { row.initialize.Click(); }), ElementsAre(row.words));
    EXPECT_EQ(rig.boxes.shown.back().title, "Alarm");
    EXPECT_EQ(rig.boxes.shown.back().icon, BoxIcon::Information);
  }
  EXPECT_THAT(rig.bus.Opened(), IsEmpty());
}

TEST_F(BenchInstruments, TheSessionTakesWhatTheBoxesSay) {
  face.load.boardNumber.SetText("1");
  face.load.primAddress.Pick(7);
  face.load.secAddress.SetText("100");
  face.load.timeOut.SetText("30ms");
  face.load.bufferSize.SetText("12");
  face.load.initialize.Click();
  EXPECT_EQ(rig.bus.Opened().back(), (GpibAddress{1, 7, 100}));
  EXPECT_EQ(rig.CWGPIBLoader.timeOutCode, 8);
  EXPECT_EQ(rig.CWGPIBLoader.readSize, 12);
  EXPECT_FALSE(rig.CWGPIBLoader.optionFlag);
  EXPECT_EQ(rig.panels.main.txtResults.Text(), "FAKE,INSTRUM");
}

TEST_F(BenchInstruments, NoneIsSecondaryAddressZeroAndTimeOutCodeZero) {
  face.supply.timeOut.SetText("None");
  face.supply.initialize.Click();
  EXPECT_EQ(rig.bus.Opened().back(), (GpibAddress{0, 2, 0}));
  EXPECT_EQ(rig.CWGPIBPower.timeOutCode, 0);
}

TEST_F(BenchInstruments, ATimeOutOutsideTheTableLeavesTheControlsOwn) {
  rig.CWGPIBPower.timeOutCode = 12;
  face.supply.timeOut.onChange = nullptr;
  face.supply.timeOut.SetText("5s");
  face.supply.initialize.Click();
  EXPECT_EQ(rig.CWGPIBPower.timeOutCode, 12);
}

TEST_F(BenchInstruments, BadInputGoesBackToItsResetText) {
  struct Row {
    std::function<void(const char*)> type;
    std::function<std::string()> text;
    std::vector<const char*> bad;
    const char* good;
    const char* words;
    const char* reset;
  };
  const auto row = [](auto& box, std::vector<const char*> bad, const char* good, const char* words,
                      const char* reset) {
    return Row{[&box](const char* text) { box.SetText(text); },
               [&box] { return box.Text(); },
               std::move(bad),
               good,
               words,
               reset};
  };
  constexpr const char* kNumber = "Input the number without blank.";
  constexpr const char* kAddress = "Use Number between 96 and 126.";
  const std::vector<Row> rows{
      row(face.load.primAddress, {"1 ", "-1", "x", "1.5"}, "14", kNumber, "5"),
      row(face.supply.primAddress, {"a", "~"}, "0", kNumber, "6"),
      row(face.load.secAddress, {"95", "127", "none", "0"}, "96", kAddress, "None"),
      row(face.supply.secAddress, {"95", "96 "}, "126", kAddress, "None"),
      row(face.load.timeOut, {"2s", "10 s"}, "30us", "Select the Item.", "10s"),
      row(face.supply.timeOut, {"2s"}, "100s", "Select the Item.", "10s"),
      row(face.load.boardNumber, {"1.", "\u3131"}, "12", kNumber, "0"),
      row(face.supply.boardNumber, {"-1", "\u3163"}, "12", kNumber, "0"),
      row(face.load.bufferSize, {"1,000", "\u3140"}, "500", kNumber, "1000"),
      row(face.supply.bufferSize, {"1e3"}, "500", kNumber, "1000"),
      row(face.TxtLoaderCurrent, {"0,1", "\u3131"}, "0.25", kNumber, "0.1"),
      row(face.txtLoaderResister, {"2k", "-1"}, "1500.5", kNumber, "2000"),
      row(face.txtPSVoltage, {"4,2", " 4.2", "\u3131"}, "3.36", kNumber, "4.21"),
  };
  for (const Row& r : rows) {
    for (const char* bad : r.bad) {
      EXPECT_THAT(TextsOf([&] { r.type(bad); }), ElementsAre(r.words)) << bad;
      ASSERT_FALSE(rig.boxes.shown.empty());
      EXPECT_EQ(rig.boxes.shown.back().title, "Warning");
      EXPECT_EQ(r.text(), r.reset) << bad;
    }
    EXPECT_THAT(TextsOf([&] { r.type(r.good); }), IsEmpty()) << r.good;
    EXPECT_EQ(r.text(), r.good);
  }
}

TEST_F(BenchInstruments, ComboBoxesOfAddressesLetHangulPass) {
  EXPECT_THAT(TextsOf([&] { face.supply.primAddress.SetText("\u3131"); }), IsEmpty());
}

TEST_F(BenchInstruments, CommandsNeedTheirInstrument) {
  const struct {
    Button& button;
    const char* words;
  } rows[] = {{face.cmdPSVoltageSet, "Initialize Power Supply at first."},
              {face.cmdPSVoltageEnable, "Initialize Power Supply at first."},
              {face.cmdLoaderCurrentSet, "Loader를 먼저 초기화 해야 합니다."},
              {face.cmdLoaderResisterSet, "Initialize Loader."},
              {face.supply.reset, "Initialize Loader."},
              {face.load.reset, "Initialize Loader."}};
  for (const auto& row : rows) {
    EXPECT_THAT(TextsOf([&] { row.button.Click(); }), ElementsAre(row.words));
    EXPECT_EQ(rig.boxes.shown.back().title, "Warning");
    EXPECT_EQ(rig.boxes.shown.back().icon, BoxIcon::Stop);
  }
  EXPECT_FALSE(state.PSVoltageSet);
}

TEST_F(BenchInstruments, EachClickOfEnableDoesWhatItsCaptionSays) {
  face.supply.initialize.Click();
  rig.bus.At(2).lines.clear();
  face.cmdPSVoltageEnable.Click();
  EXPECT_EQ(face.cmdPSVoltageEnable.Caption(), "Enable");
  face.cmdPSVoltageEnable.Click();
  EXPECT_EQ(face.cmdPSVoltageEnable.Caption(), "Disable");
  EXPECT_THAT(rig.bus.At(2).lines, ElementsAre("OUTPUT OFF", "OUTPUT ON"));
}

TEST_F(BenchInstruments, EnableLooksAtTheVoltageFirstAndAtTheSetFlagLast) {
  face.txtPSVoltage.onChange = nullptr;
  for (const char* bad : {"4,2", "4 ", "4/2", "4v", "-4", "~"}) {
    face.txtPSVoltage.SetText(bad);
    EXPECT_THAT(TextsOf([&] { face.cmdPSVoltageEnable.Click(); }),
                ElementsAre("Input Integer which is higher then 0 and has not any blank."))
        << bad;
  }
  face.txtPSVoltage.SetText("4.2");
  state.PSReady = true;
  EXPECT_THAT(TextsOf([&] { face.cmdPSVoltageEnable.Click(); }), ElementsAre("Set Voltage at first."));
  EXPECT_EQ(face.cmdPSVoltageEnable.Caption(), "Enable");
}

TEST_F(BenchInstruments, ResetReleasesTheSessionAndForgetsWhatWasSet) {
  face.supply.initialize.Click();
  face.supply.reset.Click();
  EXPECT_EQ(rig.bus.At(2).lines.back(), "*RST");
  EXPECT_EQ(rig.bus.At(2).locals, 1);
  EXPECT_FALSE(rig.CWGPIBPower.HasSession());
  EXPECT_FALSE(state.PSReady);
  EXPECT_FALSE(state.PSVoltageSet);
  EXPECT_EQ(face.cmdPSVoltageEnable.Caption(), "Enable");
  EXPECT_EQ(face.supply.initialize.BackColor(), kButtonFace);
  face.load.initialize.Click();
  face.load.reset.Click();
  EXPECT_EQ(rig.bus.At(5).lines.back(), "*RST");
  EXPECT_FALSE(state.LoaderReady);
  EXPECT_EQ(face.load.initialize.BackColor(), kButtonFace);
}

TEST_F(BenchInstruments, AResetThatFailsEndsTheSessionAllTheSameAndTheNextInitializeToo) {
  face.supply.initialize.Click();
  rig.bus.At(2).absent = true;
  EXPECT_THAT(TextsOf([&] { face.supply.reset.Click(); }),
              ElementsAre("Unable to open device\ribsta = &H8000\riberr = 2"));
  EXPECT_FALSE(rig.CWGPIBPower.HasSession());
  EXPECT_FALSE(state.PSReady);
  EXPECT_FALSE(state.PSVoltageSet);
  EXPECT_EQ(face.cmdPSVoltageEnable.Caption(), "Enable");
  EXPECT_EQ(face.supply.initialize.BackColor(), kButtonFace);
  EXPECT_TRUE(state.powerError);

  rig.bus.At(2).absent = false;
  rig.bus.At(2).lines.clear();
  EXPECT_THAT(TextsOf([&] { face.supply.initialize.Click(); }), IsEmpty());
  EXPECT_THAT(rig.bus.At(2).lines, ElementsAre("*IDN?")) << "the flag of the failure before ends it";
  EXPECT_FALSE(state.PSReady);
  face.supply.initialize.Click();
  EXPECT_TRUE(state.PSReady);
}

TEST_F(BenchInstruments, AVoltageThatDoesNotArriveCountsAsSetAndTheOutputAsSwitched) {
  face.supply.initialize.Click();
  state.PSVoltageSet = false;
  rig.bus.At(2).absent = true;
  EXPECT_EQ(TextsOf([&] { face.cmdPSVoltageSet.Click(); }).size(), 1U);
  EXPECT_TRUE(state.PSVoltageSet);
  EXPECT_EQ(TextsOf([&] { face.cmdPSVoltageEnable.Click(); }).size(), 1U);
  EXPECT_EQ(face.cmdPSVoltageEnable.Caption(), "Enable") << "what the next click does";
}

TEST_F(BenchInstruments, ALeadingBackspaceOfTheReplyTakesACharacterOffTheConsole) {
  rig.panels.main.txtResults.SetText("ab");
  rig.bus.At(5).readings = {"\bLOAD"};
  face.load.initialize.Click();
  EXPECT_EQ(rig.panels.main.txtResults.Text(), "aLOAD");
}

TEST_F(BenchInstruments, CommandsAreNotEchoedOnTheConsole) {
  face.supply.initialize.Click();
  face.cmdPSVoltageSet.Click();
  EXPECT_EQ(rig.panels.main.txtResults.Text(), "FAKE,INSTRUMENT,0,1\r\n");
}

TEST_F(BenchInstruments, TheUseOptionsOfTheLoadHaveNoEffect) {
  face.optLoaderDisuse.Select();
  face.load.initialize.Click();
  EXPECT_TRUE(state.LoaderReady);
}

TEST_F(BenchInstruments, CloseHidesThePanel) {
  face.Show();
  face.cmdBaseBandClose.Click();
  EXPECT_FALSE(face.Visible());
}

}  // namespace
}  // namespace orvane::test
