// What somebody hears who cannot see the windows.

#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>

#include "windows/windows_test.h"

namespace orvane::test {
namespace {

class SpokenWidgets : public testing::Test {
 protected:
  static QString Heard(QWidget& widget, QAccessible::Text kind = QAccessible::Name) {
    return QAccessible::queryAccessibleInterface(&widget)->text(kind);
  }
  static QAccessible::Role RoleOf(QWidget& widget) { return QAccessible::queryAccessibleInterface(&widget)->role(); }

  WindowedStation windowed_;
  StationPanels& panels_ = windowed_.on.Panels();
};

TEST_F(SpokenWidgets, AComboBoxIsCalledByItsCaptionAndItsTextIsItsValue) {
  int combos = 0;
  for (Panel* panel : panels_.All()) {
    windowed_.on.station.Nest().Run([&] { panel->Show(); });
    for (auto* combo : windowed_.WindowOf(*panel).findChildren<QComboBox*>()) {
      ++combos;
      EXPECT_FALSE(combo->accessibleName().isEmpty());
      EXPECT_EQ(Heard(*combo), combo->accessibleName());
      EXPECT_EQ(Heard(*combo, QAccessible::Value), combo->currentText());
      EXPECT_EQ(Heard(*combo->lineEdit()), combo->accessibleName());
    }
  }
  EXPECT_GE(combos, 13);
  EXPECT_EQ(Heard(windowed_.Of(panels_.main.cboTimeOut)), "Instrument (GPIB): Time Out");
  EXPECT_EQ(Heard(windowed_.Of(panels_.main.cboTimeOut), QAccessible::Value), "10s");
}

TEST_F(SpokenWidgets, AComboBoxIsStillOneThatOpensAndHasItsParts) {
  auto& combo = windowed_.Of<QComboBox>(panels_.main.cboTimeOut);
  auto* told = QAccessible::queryAccessibleInterface(&combo);
  EXPECT_EQ(told->role(), QAccessible::ComboBox);
  ASSERT_EQ(told->childCount(), 2);
  for (int part = 0; part < 2; ++part) {
    ASSERT_NE(told->child(part), nullptr);
    EXPECT_EQ(told->indexOfChild(told->child(part)), part);
  }
  EXPECT_TRUE(told->state().expandable);
  EXPECT_FALSE(told->state().expanded);
  told->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
  EXPECT_TRUE(told->state().expanded);
  told->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
  EXPECT_FALSE(told->state().expanded);
}

TEST_F(SpokenWidgets, ALampSaysWhoseItIsAndHowItStands) {
  QWidget& lamp = windowed_.Of(panels_.main.shpInstrumentOnOff);
  EXPECT_EQ(Heard(lamp), "Instrument (GPIB): Not used yet");
  EXPECT_EQ(RoleOf(lamp), QAccessible::Graphic);
  panels_.main.shpInstrumentOnOff.SetBackColor(kGreen);
  windowed_.Settle();
  EXPECT_EQ(Heard(lamp), "Instrument (GPIB): Ready");
  panels_.main.shpInstrumentOnOff.SetBackColor(kRed);
  windowed_.Settle();
  EXPECT_EQ(Heard(lamp), "Instrument (GPIB): Not ready");
}

TEST_F(SpokenWidgets, AVerdictsPictureSaysItsWord) {
  panels_.pass.Show();
  panels_.fail.Show();
  QWidget& picture = windowed_.Of(panels_.pass.Image1);
  EXPECT_EQ(RoleOf(picture), QAccessible::Graphic);
  EXPECT_EQ(Heard(picture), "PASS");
  EXPECT_EQ(Heard(windowed_.Of(panels_.fail.Image1)), "FAIL");
  for (const FlawKind kind : {FlawKind::OutOfTolerance, FlawKind::NotMeasured}) {
    panels_.pass.Image1.SetPicture(kind == FlawKind::NotMeasured ? "not measured" : "out of tolerance");
    windowed_.Settle();
    EXPECT_EQ(Heard(picture).toStdString(), FlawText(kind));
  }
}

}  // namespace
}  // namespace orvane::test
