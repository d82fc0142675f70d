#include "console/target_connection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

#include "console_rig.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr Colour kGreenLamp = 0x00FF00;
constexpr Colour kRedLamp = 0x0000FF;
constexpr Colour kStartLamp = 0x8000000F;

/// A command's 53 bytes: what is given, then zeros.
std::string Frame(std::string_view head) {
  std::string frame(head);
  frame.resize(53, '\0');
  return frame;
}

struct TargetConnectionTest : testing::Test, ConsoleRig {
  std::string Wire() {
    std::string all;
    for (const std::string& bytes : serial.writes) all += bytes;
    return all;
  }
  std::vector<int> Operations() {
    std::vector<int> operations;
    for (const SentCommand& command : serial.commands) operations.push_back(command.operation);
    return operations;
  }
  void HaveTestSet() {
    op.Click(main.cmdInstrumentInitialize);
    Instrument().lines.clear();
    main.txtResults.SetText("");
    journal.Clear();
  }
};

TEST_F(TargetConnectionTest, BringUpOpensThePortAndPutsTheTargetIntoTestMode) {
  HaveTestSet();
  serial.setup.handshaking = 2;
  EXPECT_EQ(op.Click(main.cmdTargetInitialize), std::nullopt);

  EXPECT_EQ(Wire(), Frame(std::string_view("\x02\x14\x20\x20\x02", 5)) +
                        Frame(std::string_view("\x02\x14\x21\x01\x00\x20\x02", 7)));
  EXPECT_TRUE(serial.PortOpen());
  EXPECT_EQ(serial.setup.commPort, 1);
  EXPECT_EQ(serial.setup.settings, "115200,N,8,1");
  EXPECT_EQ(serial.setup.inBufferSize, 1024);
  EXPECT_EQ(serial.setup.outBufferSize, 512);
  EXPECT_EQ(serial.setup.inputLen, 0);
  EXPECT_EQ(serial.setup.handshaking, 0);
  EXPECT_EQ(serial.setup.rThreshold, 1);
  EXPECT_EQ(state.console.SerialPortNumber, 1);
  EXPECT_EQ(state.console.SerialBaud, "115200");
  EXPECT_EQ(state.console.SerialParity, "N");
  EXPECT_EQ(state.console.SerialDataBits, "8");
  EXPECT_EQ(state.console.SerialStopBits, "1");
  EXPECT_EQ(state.console.SerialInBuffer, 1024);
  EXPECT_EQ(state.console.SerialOutBuffer, 512);
  EXPECT_EQ(state.console.SerialInputLength, 0);
  EXPECT_EQ(state.console.TargetName, "T9300");
  EXPECT_TRUE(state.console.SerialPortState);
  EXPECT_EQ(main.shpTargetOnOff.BackColor(), kGreenLamp);
}

TEST_F(TargetConnectionTest, AfterBringUpTheBenchIsPreparedAndTheRunStarted) {
  HaveTestSet();
  autoCal.cmdAllCalStart.onClick = [this] {
    journal.Add("click: frmAutoCal.cmdAllCalStart at " + baseBand.txtPSVoltage.Text() + " V");
  };
  op.Click(main.cmdTargetInitialize);
  EXPECT_THAT(journal.Lines(), ElementsAre("Target: ti", "Target: tms 1", "click: frmBaseBand.cmdPSVoltageSet",
                                           "click: frmAutoCal.cmdAllCalStart at 4.5 V", "1: SYSTEM:PRESET3"));
  EXPECT_EQ(main.txtPSVoltage.Text(), "4.21");
}

TEST_F(TargetConnectionTest, PacesBetweenItsSteps) {
  HaveTestSet();
  serial.delay = 0ns;
  main.txtSyncDelay.SetText("500000");  // a pace of 1 ms
  const TimePoint start = loop.Now();
  op.Click(main.cmdTargetInitialize);
  std::vector<long> paces;
  for (const TimePoint time : journal.Times()) paces.push_back((time - start) / 1ms);
  // "ti", "tms 1" and the voltage, the whole run and the preset.
  EXPECT_THAT(paces, ElementsAre(800, 901, 901, 1002, 1002));
}

TEST_F(TargetConnectionTest, ThePresetIsWrittenToAnyKindOfTestSet) {
  for (const char* kind : {"HP8922M", "4400M(WaveTek)"}) {
    main.cboInstrumentList.SetText(kind);
    HaveTestSet();
    op.Click(main.cmdTargetInitialize);
    EXPECT_THAT(Instrument().lines, ElementsAre("SYSTEM:PRESET3")) << kind;
    serial.Close();
  }
}

TEST_F(TargetConnectionTest, ThePresetWithoutASessionFailsBehindTheRun) {
  EXPECT_TRUE(op.Click(main.cmdTargetInitialize).has_value());
  EXPECT_THAT(Clicks(), ElementsAre("frmBaseBand.cmdPSVoltageSet", "frmAutoCal.cmdAllCalStart"));
  EXPECT_EQ(boxes.shown.size(), 1U);
  EXPECT_TRUE(serial.PortOpen());
}

TEST_F(TargetConnectionTest, ASilentTargetCostsTwoWaitsAndClosesThePort) {
  HaveTestSet();
  serial.answer = nullptr;
  const TimePoint before = loop.Now();
  EXPECT_EQ(op.Click(main.cmdTargetInitialize), std::nullopt);

  EXPECT_THAT(Operations(), ElementsAre(32, 33));
  // Two waits that end just above 2.5 s each, and the paces.
  EXPECT_GT(loop.Now() - before, TimePoint{5s});
  EXPECT_LT(loop.Now() - before, TimePoint{5100ms});
  EXPECT_EQ(main.txtResults.Text(), "Target No Response !!\r\n");
  ASSERT_EQ(boxes.shown.size(), 1U);
  ExpectBox(boxes.shown[0], "Target을 Power On 해 주십시요", "Warning", BoxIcon::Stop);
  EXPECT_FALSE(serial.PortOpen());
  EXPECT_TRUE(state.console.SerialPortState);
  EXPECT_EQ(main.shpTargetOnOff.BackColor(), kStartLamp);
  EXPECT_THAT(Clicks(), IsEmpty());
  EXPECT_THAT(Instrument().lines, IsEmpty());
}

TEST_F(TargetConnectionTest, ATargetThatAnswersWithAFailureIsAlive) {
  HaveTestSet();
  serial.answer = [](const SentCommand& command) { return PaddedReply(command.operation, 5); };
  op.Click(main.cmdTargetInitialize);
  EXPECT_TRUE(serial.PortOpen());
  EXPECT_EQ(main.shpTargetOnOff.BackColor(), kGreenLamp);
  EXPECT_THAT(Clicks(), ElementsAre("frmBaseBand.cmdPSVoltageSet", "frmAutoCal.cmdAllCalStart"));
}

TEST_F(TargetConnectionTest, AnOpenPortIsRefused) {
  serial.Open();
  op.Click(main.cmdTargetInitialize);
  ASSERT_EQ(boxes.shown.size(), 1U);
  ExpectBox(boxes.shown[0], "Port is already Open.", "Warning", BoxIcon::Stop);
  EXPECT_THAT(serial.writes, IsEmpty());
  EXPECT_TRUE(serial.PortOpen());
  EXPECT_EQ(state.console.SerialPortNumber, 0);
  EXPECT_EQ(main.shpTargetOnOff.BackColor(), kStartLamp);
  // The paces come ahead of the test.
  EXPECT_EQ(loop.Now(), TimePoint{800 * 20000 * 2});
}

TEST_F(TargetConnectionTest, ASecondInitializeWithinTheFirstOnesWaitIsRefused) {
  HaveTestSet();
  serial.answer = nullptr;
  loop.PostAt(1s, [this] { op.Click(main.cmdTargetInitialize); });
  op.Click(main.cmdTargetInitialize);
  EXPECT_THAT(boxes.Texts(), ElementsAre("Port is already Open.", "Target을 Power On 해 주십시요"));
  EXPECT_THAT(Operations(), ElementsAre(32, 33));
}

TEST_F(TargetConnectionTest, ExitEndsTheStationFromWithinAWait) {
  serial.answer = nullptr;
  loop.PostAt(1s, [this] { op.Click(main.cmdExit); });
  EXPECT_THROW(op.Click(main.cmdTargetInitialize), StationEnded);
  EXPECT_TRUE(serial.PortOpen());
  EXPECT_THAT(Operations(), ElementsAre(32));
}

TEST_F(TargetConnectionTest, APortThatDoesNotOpenIsAFailureInTheDevicesWords) {
  HaveTestSet();
  serial.openFailure = "/dev/ttyS0: Device or resource busy";
  EXPECT_EQ(op.Click(main.cmdTargetInitialize), "/dev/ttyS0: Device or resource busy");
  ASSERT_EQ(boxes.shown.size(), 1U);
  EXPECT_EQ(boxes.shown[0].text, "/dev/ttyS0: Device or resource busy");
  EXPECT_THAT(Clicks(), IsEmpty());
  EXPECT_FALSE(state.console.SerialPortState);
  EXPECT_EQ(main.shpTargetOnOff.BackColor(), kStartLamp);
}

TEST_F(TargetConnectionTest, AMissingSelectionSkipsTheOpeningButNotTheRest) {
  HaveTestSet();
  // Straight into the boxes: an emptied list box would be refused by its own check.
  main.cboTarget.onChange = nullptr;
  main.cboPort.onChange = nullptr;
  const struct {
    const char* target;
    const char* port;
    const char* words;
  } cases[] = {{"", "COM1", "Select Target board"}, {"T9300", "", "Select Port"}, {"", "", "Select Target board"}};
  for (const auto& [target, port, words] : cases) {
    main.cboTarget.SetText(target);
    main.cboPort.SetText(port);
    boxes.shown.clear();
    journal.Clear();
    op.Click(main.cmdTargetInitialize);
    ASSERT_EQ(boxes.shown.size(), 1U);
    ExpectBox(boxes.shown[0], words, "Alarm", BoxIcon::Information);
    EXPECT_FALSE(serial.PortOpen());
    EXPECT_THAT(serial.writes, IsEmpty());
    EXPECT_EQ(main.shpTargetOnOff.BackColor(), kGreenLamp);
    EXPECT_THAT(Clicks(), ElementsAre("frmBaseBand.cmdPSVoltageSet", "frmAutoCal.cmdAllCalStart"));
    EXPECT_THAT(journal.Of("1: "), ElementsAre("SYSTEM:PRESET3"));
  }
}

TEST_F(TargetConnectionTest, ThePortsNumberIsThatOfItsName) {
  HaveTestSet();
  const struct {
    const char* port;
    Integer number;
  } cases[] = {{"COM1", 1}, {"COM2", 2}, {"COM3", 3}, {"COM4", 4}};
  for (const auto& [port, number] : cases) {
    main.cboPort.SetText(port);
    op.Click(main.cmdTargetInitialize);
    EXPECT_EQ(serial.setup.commPort, number);
    EXPECT_EQ(state.console.SerialPortNumber, number);
    serial.Close();
  }
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(TargetConnectionTest, AnyOtherPortTextIsTheFourth) {
  HaveTestSet();
  main.cboPort.onChange = nullptr;
  main.cboPort.SetText("COM9");
  op.Click(main.cmdTargetInitialize);
  EXPECT_EQ(serial.setup.commPort, 4);
}

TEST_F(TargetConnectionTest, ResetLetsTheTargetGoAndGoesBackToTheFirstPort) {
  HaveTestSet();
  main.cboPort.SetText("COM3");
  op.Click(main.cmdTargetInitialize);
  serial.commands.clear();
  serial.writes.clear();

  EXPECT_EQ(op.Click(main.cmdTargetReset), std::nullopt);
  EXPECT_EQ(Wire(), Frame(std::string_view("\x02\x14\x21\x00\x00\x21\x02", 7)));
  EXPECT_FALSE(serial.PortOpen());
  EXPECT_FALSE(state.console.SerialPortState);
  EXPECT_EQ(main.cboPort.Text(), "COM1");
  EXPECT_EQ(state.console.SerialPortNumber, 1);
  EXPECT_EQ(serial.setup.commPort, 1);
  EXPECT_EQ(serial.setup.settings, "115200,N,8,1");
  EXPECT_EQ(serial.setup.inBufferSize, 1024);
  EXPECT_EQ(serial.setup.outBufferSize, 512);
  EXPECT_EQ(serial.setup.inputLen, 0);
  EXPECT_EQ(main.shpTargetOnOff.BackColor(), kRedLamp);
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(TargetConnectionTest, ResetOfAClosedPortIsRefused) {
  main.cboPort.SetText("COM2");
  op.Click(main.cmdTargetReset);
  ASSERT_EQ(boxes.shown.size(), 1U);
  ExpectBox(boxes.shown[0], "Port is already closed.", "Warning", BoxIcon::Stop);
  EXPECT_EQ(main.cboPort.Text(), "COM2");
  EXPECT_EQ(main.shpTargetOnOff.BackColor(), kStartLamp);
}

TEST_F(TargetConnectionTest, RefusesTypedTextsOutsideTheLists) {
  const struct {
    ComboBox& box;
    const char* typed;
    const char* reset;
  } cases[] = {{main.cboPort, "COM5", "COM1"},
               {main.cboPort, "com1", "COM1"},
               {main.cboPort, "", "COM1"},
               {main.cboTarget, "T9400", "QM310"},
               {main.cboTarget, "", "QM310"},
               // The panel's own default, when typed.
               {main.cboTarget, "T9300", "QM310"}};
  for (const auto& [box, typed, reset] : cases) {
    boxes.shown.clear();
    op.Type(box, typed);
    ASSERT_EQ(boxes.shown.size(), 1U) << typed;
    ExpectBox(boxes.shown[0], "Input the Item in the List.", "Warning", BoxIcon::Stop);
    EXPECT_EQ(box.Text(), reset) << typed;
  }
}

TEST_F(TargetConnectionTest, TakesWhatIsInTheListsAndT9300WhenPicked) {
  for (const char* port : {"COM2", "COM3", "COM4", "COM1"}) op.Type(main.cboPort, port);
  for (const char* target : {"QM420", "QM310"}) op.Type(main.cboTarget, target);
  op.Pick(main.cboTarget, 2);
  EXPECT_THAT(boxes.shown, IsEmpty());
  EXPECT_EQ(main.cboTarget.Text(), "T9300");
}

}  // namespace
}  // namespace orvane::test
