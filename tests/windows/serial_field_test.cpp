// The serial number on the main window: typed or scanned between two runs, seen within one.

#include "app/windows/serial_field.h"

#include <QClipboard>
#include <QLineEdit>

#include "app/windows/front_end.h"
#include "app/windows/status_strip.h"
#include "windows/windows_test.h"

namespace orvane::test {
namespace {

/// The main window of a whole station as the program has it, with its status.
class SerialFieldTest : public testing::Test {
 protected:
  SerialFieldTest() {
    unit_.Follow(on_.Panels());
    windows_.belowMain = [this](QWidget* parent) {
      strip_ = new StatusStrip(status_, Surroundings{}, parent);
      field_ = new SerialField(unit_, strip_);
      strip_->AddField(field_);
      ShowInTitle(unit_, *windows_.WindowOf(on_.Panels().main));
      return strip_;
    };
    on_.station.Nest().Run([&] { on_.Panels().main.Show(); });
    QCoreApplication::processEvents();
  }
  ~SerialFieldTest() override { delete strip_; }

  [[nodiscard]] PanelWindow& Window() { return *windows_.WindowOf(on_.Panels().main); }
  /// As a scanner does: the characters, then Enter.
  void Scan(const QString& text) {
    QTest::mouseClick(field_, Qt::LeftButton);
    QTest::keyClicks(field_, text);
    QTest::keyClick(field_, Qt::Key_Return);
    Turn();
  }
  /// What has changed is shown in the next turn of the loop.
  static void Turn() { QCoreApplication::processEvents(); }

  VirtualStation on_;
  UnitIdentity unit_;
  Desk desk_{on_.loop, "/tmp"};
  FrontEnd windows_{on_.loop, desk_, on_.station};
  StationStatus status_{on_.loop, on_.bench.Serial(), on_.State(), on_.Panels()};
  StatusStrip* strip_ = nullptr;
  SerialField* field_ = nullptr;
};

TEST_F(SerialFieldTest, AScanEndsWithEnterAndTheNumberIsInTheTitle) {
  const QString caption = Window().windowTitle();
  EXPECT_EQ(caption, ToQt(on_.Panels().main.Caption()));
  Scan("A-1");
  EXPECT_EQ(unit_.Texts().serial, "A-1");
  EXPECT_EQ(Window().windowTitle(), caption + " \u2013 A-1");
  EXPECT_EQ(field_->text(), "A-1");
  Scan("B-2");
  EXPECT_EQ(unit_.Texts().serial, "B-2") << "what stood there is replaced";
}

TEST_F(SerialFieldTest, WhatIsTypedCountsWhenItIsLeftAndNotBefore) {
  QTest::mouseClick(field_, Qt::LeftButton);
  QTest::keyClicks(field_, "A-1");
  EXPECT_EQ(unit_.Texts().serial, "");
  unit_.Change({.part = "T9300"});
  Turn();
  EXPECT_EQ(field_->text(), "A-1") << "and stays when something else changes";
  Window().findChild<QLineEdit*>("txtPSVoltage")->setFocus();
  EXPECT_EQ(unit_.Texts().serial, "A-1");
}

TEST_F(SerialFieldTest, EscapeTakesBackWhatWasTyped) {
  Scan("A-1");
  QTest::mouseClick(field_, Qt::LeftButton);
  QTest::keyClicks(field_, "xyz");
  QTest::keyClick(field_, Qt::Key_Escape);
  EXPECT_EQ(field_->text(), "A-1");
  EXPECT_EQ(unit_.Texts().serial, "A-1");
}

TEST_F(SerialFieldTest, TakesTheKeyboardByAClickAloneAndGivesItBack) {
  Window().activateWindow();
  EXPECT_FALSE(field_->hasFocus());
  for (int tab = 0; tab < 200; ++tab) {
    QTest::keyClick(&Window(), Qt::Key_Tab);
    ASSERT_FALSE(field_->hasFocus()) << tab;
  }
  auto* voltage = Window().findChild<QLineEdit*>("txtPSVoltage");
  voltage->setFocus();
  ASSERT_TRUE(voltage->hasFocus());
  unit_.Change({.serial = "A-1"});
  Turn();
  EXPECT_TRUE(voltage->hasFocus());
  Scan("B-2");
  EXPECT_TRUE(voltage->hasFocus());
  QTest::mouseClick(field_, Qt::LeftButton);
  QTest::keyClick(field_, Qt::Key_Escape);
  EXPECT_TRUE(voltage->hasFocus());
}

TEST_F(SerialFieldTest, ShowsTheRunsNumberWithinItAndIsEmptyBehindIt) {
  const QString caption = Window().windowTitle();
  Scan("A-1");
  QTest::mouseClick(field_, Qt::LeftButton);
  QTest::keyClicks(field_, "half typed");
  int seen = 0;
  on_.State().report.entered.Connect([&](RunStep) {
    ++seen;
    Turn();
    EXPECT_TRUE(field_->isReadOnly());
    EXPECT_EQ(field_->text(), "A-1");
    EXPECT_EQ(Window().windowTitle(), caption + " \u2013 A-1");
    QTest::keyClicks(field_, "B");
    QTest::keyClick(field_, Qt::Key_Return);
    EXPECT_EQ(unit_.Texts().serial, "A-1");
  });
  on_.TakeTargetThrough();
  Turn();
  EXPECT_EQ(seen, 5);
  EXPECT_FALSE(field_->isReadOnly());
  EXPECT_EQ(field_->text(), "");
  EXPECT_EQ(Window().windowTitle(), caption);
}

TEST_F(SerialFieldTest, WhatNoRecordCanHoldDoesNotGetIn) {
  QTest::mouseClick(field_, Qt::LeftButton);
  field_->insert(
      "A\u0085"
      "1");
  field_->insert(QString("A") + QChar(0x1D) + "1");
  EXPECT_EQ(field_->text(), "");
  field_->insert("일련 <b>&amp;'; drop table");
  QTest::keyClick(field_, Qt::Key_Return);
  EXPECT_EQ(unit_.Texts().serial, "일련 <b>&amp;'; drop table");
}

TEST_F(SerialFieldTest, ALongNumberWidensNothing) {
  const int width = Window().width();
  const int least = strip_->minimumSizeHint().width();
  unit_.Change({.serial = std::string(10000, 'x')});
  Turn();
  EXPECT_EQ(Window().width(), width);
  EXPECT_EQ(strip_->minimumSizeHint().width(), least);
  EXPECT_LT(Window().windowTitle().size(), 120);
  EXPECT_EQ(field_->text().size(), 10000);
}

TEST_F(SerialFieldTest, TheMainWindowFitsOnASmallScreenWithIt) {
  on_.TakeTargetThrough();
  strip_->Look();
  EXPECT_LE(Window().minimumSizeHint().width(), 1270);
  EXPECT_LE(Window().minimumSizeHint().height(), 680);
}

}  // namespace
}  // namespace orvane::test
