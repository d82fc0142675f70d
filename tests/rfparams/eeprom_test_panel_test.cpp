#include "rfparams/eeprom_test_panel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/rig.h"

namespace orvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class EepromTestPanelTest : public testing::Test {
 protected:
  EepromTestPanelTest() {
    entry_.Connect();
    panel_.Show();
  }
  void TypeEntry(const std::string& text) {
    for (const char c : text) rig_.op.Key(panel_.txtEepromDataWrite, static_cast<char32_t>(c));
    rig_.op.Key(panel_.txtEepromDataWrite, 13);
  }

  test::Rig rig_;
  FrmDownLoad& panel_ = rig_.panels.downLoad;
  EepromTestPanel entry_{rig_.panels.downLoad, rig_.serial};
};

TEST_F(EepromTestPanelTest, OpensForReadingBytes) {
  EXPECT_TRUE(panel_.optEepromRead.Selected());
  EXPECT_TRUE(panel_.optEepromByte.Selected());
  EXPECT_FALSE(panel_.txtEepromDataWrite.Enabled());
  EXPECT_EQ(panel_.lblEepromAddress.Caption(), "Address");
  EXPECT_EQ(panel_.updEepromStartAddress.Max(), 65536);
  EXPECT_EQ(panel_.txtEepromStartAddress.Text(), "0");
  EXPECT_EQ(panel_.txtEepromLength.Text(), "1");
}

TEST_F(EepromTestPanelTest, PagesAreNumberedTo511AndComeOneByOne) {
  rig_.op.Type(panel_.txtEepromLength, "40");
  rig_.op.Select(panel_.optEepromPage);
  EXPECT_EQ(panel_.lblEepromAddress.Caption(), "Page");
  EXPECT_EQ(panel_.lblEepromLength.Caption(), "Page Length");
  EXPECT_EQ(panel_.updEepromStartAddress.Max(), 511);
  EXPECT_EQ(panel_.updEepromLength.Max(), 1);
  EXPECT_FALSE(panel_.txtEepromLength.Enabled());
  EXPECT_EQ(panel_.txtEepromLength.Text(), "1");
  rig_.op.Select(panel_.optEepromByte);
  EXPECT_EQ(panel_.lblEepromAddress.Caption(), "Address");
  EXPECT_EQ(panel_.lblEepromLength.Caption(), "Length");
  EXPECT_EQ(panel_.updEepromStartAddress.Max(), 65536);
  EXPECT_EQ(panel_.updEepromLength.Max(), 65536);
  EXPECT_TRUE(panel_.txtEepromLength.Enabled());
}

TEST_F(EepromTestPanelTest, WritingOpensTheEntryAndRenamesTheList) {
  rig_.op.Select(panel_.optEepromWrite);
  EXPECT_TRUE(panel_.txtEepromDataWrite.Enabled());
  EXPECT_EQ(panel_.fraEepromDataRead.Caption(), "Data Write");
  rig_.op.Select(panel_.optEepromRead);
  EXPECT_FALSE(panel_.txtEepromDataWrite.Enabled());
  EXPECT_EQ(panel_.fraEepromDataRead.Caption(), "Data Read");
}

TEST_F(EepromTestPanelTest, EachEntryIsListedAndTheNextAddressShown) {
  rig_.op.Select(panel_.optEepromWrite);
  rig_.op.Type(panel_.txtEepromStartAddress, "100");
  TypeEntry("AA");
  EXPECT_EQ(panel_.txtEepromDataWriteAddress.Text(), "100");
  EXPECT_EQ(panel_.txtEepromDataWrite.Text(), "");
  TypeEntry("BB");
  EXPECT_EQ(panel_.txtEepromDataWriteAddress.Text(), "101");
  rig_.op.Type(panel_.txtEepromStartAddress, "0x1F");
  TypeEntry("CC");
  EXPECT_EQ(panel_.txtEepromDataWriteAddress.Text(), "0x21");
  EXPECT_THAT(panel_.lstDataReadWindow.Items(), ElementsAre("100\t0\tAA", "100\t1\tBB", "0x1F\t2\tCC"));
  EXPECT_THAT(rig_.Commands(), IsEmpty());
}

TEST_F(EepromTestPanelTest, AnAddressWithoutAnXIsDecimalAndABadOneIsPassedOver) {
  rig_.op.Select(panel_.optEepromWrite);
  rig_.op.Type(panel_.txtEepromStartAddress, "1F");
  TypeEntry("AA");
  EXPECT_THAT(panel_.lstDataReadWindow.Items(), ElementsAre("1F\t0\tAA"));
  EXPECT_EQ(panel_.txtEepromDataWriteAddress.Text(), "0");
  EXPECT_THAT(rig_.boxes.shown, IsEmpty());
}

TEST_F(EepromTestPanelTest, AnAddressWithASmallXIsHexadecimalFromItsThirdCharacterOn) {
  const struct {
    const char* start;
    const char* shown;
  } cases[] = {{"0x10", "0x10"}, {"1x5", "0x6"}, {"x1F", "0x11"}, {"20x", "0x11"}, {"0X10", "17"}};
  rig_.op.Select(panel_.optEepromWrite);
  for (const auto& [start, shown] : cases) {
    rig_.op.Type(panel_.txtEepromStartAddress, start);
    TypeEntry("AA");
    EXPECT_EQ(panel_.txtEepromDataWriteAddress.Text(), shown) << start;
  }
  EXPECT_THAT(panel_.lstDataReadWindow.Items(),
              ElementsAre("0x10\t0\tAA", "1x5\t1\tAA", "x1F\t2\tAA", "20x\t3\tAA", "0X10\t4\tAA"));
  EXPECT_THAT(rig_.boxes.shown, IsEmpty());
}

TEST_F(EepromTestPanelTest, FourHexadecimalDigitsReadAsASignedNumber) {
  rig_.op.Select(panel_.optEepromWrite);
  rig_.op.Type(panel_.txtEepromStartAddress, "0x7FFF");
  TypeEntry("AA");
  EXPECT_EQ(panel_.txtEepromDataWriteAddress.Text(), "0x7FFF");
  rig_.op.Type(panel_.txtEepromStartAddress, "0x8000");
  TypeEntry("BB");
  EXPECT_EQ(panel_.txtEepromDataWriteAddress.Text(), "0xFFFF8001");
  rig_.op.Type(panel_.txtEepromStartAddress, "0x08000");
  TypeEntry("CC");
  EXPECT_EQ(panel_.txtEepromDataWriteAddress.Text(), "0x8002");
}

TEST_F(EepromTestPanelTest, InPageModeTheFirstEntryIsTheLast) {
  rig_.op.Select(panel_.optEepromWrite);
  rig_.op.Select(panel_.optEepromPage);
  rig_.op.Type(panel_.txtEepromStartAddress, "7");
  panel_.cmdEepromTest.SetBackColor(kRed);
  TypeEntry("AA");
  EXPECT_THAT(panel_.lstDataReadWindow.Items(), ElementsAre("7\t0\tAA"));
  EXPECT_EQ(panel_.txtEepromDataWriteAddress.Text(), "");
  EXPECT_EQ(panel_.txtEepromDataWrite.Text(), "");
  EXPECT_EQ(panel_.txtEepromDataWrite.BackColor(), 0x00FFFFFFU);
  EXPECT_FALSE(panel_.txtEepromDataWrite.Enabled());
  EXPECT_EQ(panel_.cmdEepromTest.Caption(), "EEPROM Test");
  EXPECT_EQ(panel_.cmdEepromTest.BackColor(), kButtonFace);
}

TEST_F(EepromTestPanelTest, TheCountIsNotSetBackAfterALastEntry) {
  rig_.op.Select(panel_.optEepromWrite);
  rig_.op.Select(panel_.optEepromPage);
  TypeEntry("AA");
  rig_.op.Select(panel_.optEepromRead);
  rig_.op.Select(panel_.optEepromWrite);
  TypeEntry("BB");
  EXPECT_THAT(panel_.lstDataReadWindow.Items(), ElementsAre("0\t0\tAA", "0\t1\tBB"));
  EXPECT_EQ(panel_.txtEepromDataWriteAddress.Text(), "1");
  EXPECT_TRUE(panel_.txtEepromDataWrite.Enabled());
}

class EepromByteEntry : public EepromTestPanelTest {
 protected:
  void ExpectAnEntryOf65536() {
    int rows = 0;
    panel_.lstDataReadWindow.rowAdded.Connect([&rows](const std::string&) { ++rows; });
    rig_.op.Select(panel_.optEepromWrite);
    for (int i = 0; i < 65535; ++i) rig_.op.Key(panel_.txtEepromDataWrite, 13);
    EXPECT_TRUE(panel_.txtEepromDataWrite.Enabled());
    EXPECT_EQ(panel_.txtEepromDataWriteAddress.Text(), "65534");
    rig_.op.Key(panel_.txtEepromDataWrite, 13);
    EXPECT_FALSE(panel_.txtEepromDataWrite.Enabled());
    EXPECT_EQ(panel_.txtEepromDataWriteAddress.Text(), "");
    EXPECT_EQ(rows, 65536);
    EXPECT_THAT(panel_.lstDataReadWindow.Items(), SizeIs(20000)) << "the last ones";
  }
};

TEST_F(EepromByteEntry, Has65536BytesAsThePanelOpens) { ExpectAnEntryOf65536(); }

TEST_F(EepromByteEntry, Has65536BytesAgainBehindPages) {
  rig_.op.Select(panel_.optEepromPage);
  rig_.op.Select(panel_.optEepromByte);
  ExpectAnEntryOf65536();
}

TEST_F(EepromTestPanelTest, EachCharacterGoesStraightOutOnAnOpenPort) {
  rig_.op.Select(panel_.optEepromWrite);
  TypeEntry("1");
  EXPECT_THAT(rig_.serial.writes, IsEmpty()) << "the port is closed";
  rig_.OpenPort();
  TypeEntry("0A");
  EXPECT_THAT(rig_.serial.writes, ElementsAre("0", "A", "\r"));
}

TEST_F(EepromTestPanelTest, NoKeyButEnterTakesTheEntry) {
  rig_.op.Select(panel_.optEepromWrite);
  rig_.OpenPort();
  for (const char32_t key : {U'1', U'\n', U'\b', U'2'}) rig_.op.Key(panel_.txtEepromDataWrite, key);
  EXPECT_EQ(panel_.txtEepromDataWrite.Text(), "2");
  EXPECT_THAT(panel_.lstDataReadWindow.Items(), IsEmpty());
  EXPECT_THAT(rig_.serial.writes, ElementsAre("1", "\n", "\b", "2")) << "each of them goes out";
}

TEST_F(EepromTestPanelTest, APortThatIsGoneDoesNotStopTheEntry) {
  rig_.op.Select(panel_.optEepromWrite);
  rig_.OpenPort();
  rig_.serial.outputFailure = "ttyUSB0: gone";
  TypeEntry("A");
  EXPECT_THAT(panel_.lstDataReadWindow.Items(), SizeIs(1));
  EXPECT_THAT(rig_.boxes.shown, IsEmpty());
}

TEST_F(EepromTestPanelTest, ItsTwoButtonsAreInert) {
  rig_.OpenPort();
  rig_.op.Click(panel_.cmdEepromTest);
  rig_.op.Click(panel_.cmdEepromErase);
  EXPECT_THAT(rig_.serial.writes, IsEmpty());
  EXPECT_THAT(rig_.boxes.shown, IsEmpty());
}

}  // namespace
}  // namespace orvane
