// Texts and acts that come by other ways than keys and clicks, one at a time.

#include <QComboBox>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QToolButton>
#include <QWheelEvent>

#include "windows/windows_test.h"

namespace orvane::test {
namespace {

class OddInput : public testing::Test {
 protected:
  void Show(Panel& panel) {
    station_->on.station.Nest().Run([&] { panel.Show(); });
    station_->WindowOf(panel).show();
  }
  StationPanels& Panels() { return station_->on.Panels(); }
  QLineEdit& Line(TextBox& box) { return station_->Of<QLineEdit>(box); }
  QPlainTextEdit& Console() { return station_->Of<QPlainTextEdit>(Panels().main.txtResults); }

  static void Drop(QWidget& widget, const QString& text) {
    QMimeData data;
    data.setText(text);
    QDragEnterEvent enter(QPoint(4, 4), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &enter);
    QDropEvent drop(QPointF(4, 4), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &drop);
  }
  static void Compose(QWidget& widget, const QString& preedit, const QString& commit) {
    QInputMethodEvent event(preedit, {});
    event.setCommitString(commit);
    QCoreApplication::sendEvent(&widget, &event);
  }
  static void Choose(QMenu* menu, const QString& entry) {
    bool chosen = false;
    for (QAction* action : menu->actions()) {
      if (action->text().remove(u'&').section(u'\t', 0, 0) != entry) continue;
      EXPECT_TRUE(action->isEnabled()) << entry.toStdString();
      action->trigger();
      chosen = true;
    }
    EXPECT_TRUE(chosen) << entry.toStdString();
    delete menu;
  }
  /// The box has what the widget shows.
  void ExpectAlike(TextBox& box, const std::string& text) {
    station_->Settle();
    EXPECT_EQ(box.Text(), text);
    EXPECT_EQ(Line(box).text().toStdString(), text);
  }

  std::unique_ptr<WindowedStation> station_ = std::make_unique<WindowedStation>();
};

TEST_F(OddInput, ADroppedTextIsTypedAndFilteredLikeAPastedOne) {
  Show(Panels().autoCal);
  TextBox& box = Panels().autoCal.txtARFCN;
  Line(box).clear();
  Drop(Line(box), "77");
  ExpectAlike(box, "77");

  station_->on.boxes.shown.clear();
  Drop(Line(box), "seventy");
  station_->Settle();
  ASSERT_EQ(station_->on.boxes.shown.size(), 1U);
  EXPECT_EQ(station_->on.boxes.shown[0].text, "Input the number without blank.");
  EXPECT_EQ(Line(box).text().toStdString(), box.Text());
}

TEST_F(OddInput, ATextOfSeveralLinesTakesWhatIsDropped) {
  Show(Panels().main);
  Drop(*Console().viewport(), "noted\nby hand");
  station_->Settle();
  EXPECT_EQ(Panels().main.txtResults.Text(), "noted\r\nby hand");
  EXPECT_EQ(Console().toPlainText(), "noted\nby hand");
}

TEST_F(OddInput, AHangulLetterIsABadCharacterWhenItIsComposed) {
  Show(Panels().autoCal);
  TextBox& box = Panels().autoCal.txtARFCN;
  const std::string before = box.Text();
  Compose(Line(box), "\u3131", "");
  station_->Settle();
  EXPECT_EQ(box.Text(), before) << "nothing was entered yet";
  EXPECT_TRUE(station_->on.boxes.shown.empty());
  Compose(Line(box), "", "\u3131");
  station_->Settle();
  ASSERT_EQ(station_->on.boxes.shown.size(), 1U);
  EXPECT_EQ(station_->on.boxes.shown[0].text, "Input the number without blank.");
  EXPECT_EQ(Line(box).text().toStdString(), box.Text());
}

TEST_F(OddInput, AComposedWordGoesIntoATextOfSeveralLines) {
  Show(Panels().main);
  Compose(Console(), "\ud55c", "");
  Compose(Console(), "", "\ud55c\uae00");
  station_->Settle();
  EXPECT_EQ(Panels().main.txtResults.Text(), "\xED\x95\x9C\xEA\xB8\x80");
}

TEST_F(OddInput, WhatIsMarkedIsReplacedByAKeyAndComesBackByUndo) {
  Show(Panels().main);
  TextBox& box = Panels().main.txtUserCommand;
  QTest::keyClicks(&Line(box), "rfpw 1");
  QTest::keySequence(&Line(box), QKeySequence::SelectAll);
  QTest::keyClicks(&Line(box), "t");
  ExpectAlike(box, "t");
  QTest::keySequence(&Line(box), QKeySequence::Undo);
  station_->Settle();
  EXPECT_EQ(Line(box).text().toStdString(), box.Text());
  QTest::keySequence(&Line(box), QKeySequence::Redo);
  station_->Settle();
  EXPECT_EQ(Line(box).text().toStdString(), box.Text());
}

TEST_F(OddInput, TheContextMenusCutAndDeleteReachTheBox) {
  Show(Panels().main);
  TextBox& box = Panels().main.txtUserCommand;
  QTest::keyClicks(&Line(box), "rfpw 1 62");
  station_->Settle();
  Line(box).setSelection(4, 5);
  Choose(Line(box).createStandardContextMenu(), "Cut");
  ExpectAlike(box, "rfpw");
  Line(box).selectAll();
  Choose(Line(box).createStandardContextMenu(), "Delete");
  ExpectAlike(box, "");

  Panels().main.txtResults.SetText("one\r\ntwo\r\n");
  station_->Settle();
  Console().selectAll();
  Choose(Console().createStandardContextMenu(), "Delete");
  station_->Settle();
  EXPECT_EQ(Panels().main.txtResults.Text(), "");
}

TEST_F(OddInput, MarkedTextOfAConsoleIsNotDraggedAway) {
  Show(Panels().main);
  Panels().main.txtResults.SetText("one two three");
  station_->Settle();
  Console().selectAll();
  QTest::mousePress(Console().viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(12, 8));
  EXPECT_FALSE(Console().textCursor().hasSelection());
  QTest::mouseRelease(Console().viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(12, 8));
}

TEST_F(OddInput, AKeyHeldDownEndsWhereItsBoxIsDisabled) {
  Show(Panels().main);
  TextBox& box = Panels().main.txtUserCommand;
  const auto repeat = [&] {
    QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "a", true);
    QCoreApplication::sendEvent(&Line(box), &key);
  };
  repeat();
  repeat();
  station_->Settle();
  EXPECT_EQ(box.Text(), "aa");
  repeat();
  box.SetEnabled(false);
  repeat();
  ExpectAlike(box, "aa");
}

TEST_F(OddInput, ManyKeysAtOnceFillAComboBox) {
  Show(Panels().main);
  ComboBox& combo = Panels().main.cboPort;
  auto& widget = station_->Of<QComboBox>(combo);
  widget.lineEdit()->selectAll();
  QTest::keyClicks(widget.lineEdit(), "COM3");
  station_->Settle();
  EXPECT_EQ(combo.Text(), "COM3");
  EXPECT_EQ(widget.currentText(), "COM3");
}

TEST_F(OddInput, AWheelOverAComboBoxWithoutTheFocusTurnsNothing) {
  Show(Panels().main);
  ComboBox& combo = Panels().main.cboPort;
  auto& widget = station_->Of<QComboBox>(combo);
  const std::string before = combo.Text();
  widget.clearFocus();
  QWheelEvent wheel(QPointF(4, 4), widget.mapToGlobal(QPointF(4, 4)), {}, QPoint(0, -120), Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&widget, &wheel);
  station_->Settle();
  EXPECT_EQ(combo.Text(), before);
}

TEST_F(OddInput, AnArrowHeldDownStepsOnAndEndsAtTheRange) {
  Show(Panels().main);
  UpDown& upDown = Panels().main.updSyncDelay;
  auto& arrow = *station_->Of(upDown).findChild<QToolButton*>("up");
  upDown.MoveTo(upDown.Max() - 2 * upDown.Step());
  QTest::mousePress(&arrow, Qt::LeftButton);
  for (int i = 0; i < 300 && upDown.Value() < upDown.Max(); ++i) {
    QTest::qWait(10);
    station_->Settle();
  }
  QTest::mouseRelease(&arrow, Qt::LeftButton);
  station_->Settle();
  EXPECT_EQ(upDown.Value(), upDown.Max());
}

TEST_F(OddInput, AllWindowsAtOnceShrinkNoFurtherThanTheirContents) {
  for (Panel* panel : Panels().All()) Show(*panel);
  for (Panel* panel : Panels().All()) {
    PanelWindow& window = station_->WindowOf(*panel);
    EXPECT_TRUE(window.isVisible());
    window.resize(1, 1);
    station_->Settle();
    EXPECT_GE(window.height(), window.minimumSizeHint().height()) << panel->Name();
    EXPECT_GE(window.width(), window.minimumSizeHint().width()) << panel->Name();
  }
}

TEST_F(OddInput, TheMainWindowStaysWhileABoxLiesOpen) {
  Show(Panels().main);
  Hands held(station_->on.loop, station_->on.station.Nest(), [] { return false; });
  PanelWindow window(Panels().main, LayOutAll(Panels()).front().layout, held, ViewMaker());
  window.show();
  window.close();
  station_->Settle();
  EXPECT_TRUE(window.isVisible());
  EXPECT_TRUE(station_->on.boxes.shown.empty()) << "no second question over the first one";
}

TEST_F(OddInput, AButtonOfARunTellsWhyItIsDisabled) {
  station_->on.InitializeInstruments();
  Show(Panels().autoCal);
  auto& button = station_->Of<QPushButton>(Panels().autoCal.cmdAllCalStart);
  QString inRun;
  Panels().mpAutoCal.lstMPRxChannelCalResult.rowAdded.Connect([&](const std::string&) {
    QCoreApplication::processEvents();
    EXPECT_FALSE(button.isEnabled());
    inRun = button.toolTip();
  });
  station_->on.InitializeTarget();
  station_->Settle();
  EXPECT_EQ(inRun, "A run is under way.");
  EXPECT_TRUE(button.isEnabled());
  EXPECT_EQ(button.toolTip(), "");
}

TEST_F(OddInput, ARowIsMarkedByKeyAsByMouseAndNotByTheFocusAlone) {
  FrmMPAutoCal& panel = Panels().mpAutoCal;
  Show(panel);
  ListBox& list = panel.lstMPRxChannelCalResult;
  for (const char* row : {"one", "two", "three"}) list.AddItem(row);
  auto& view = station_->Of<QListView>(list);
  view.setFocus(Qt::TabFocusReason);
  station_->Settle();
  EXPECT_EQ(list.Selected(), -1);

  QTest::keyClick(&view, Qt::Key_Down);
  QTest::keyClick(&view, Qt::Key_Down);
  station_->Settle();
  EXPECT_EQ(list.Selected(), 2);
  QTest::keyClick(&view, Qt::Key_Home);
  station_->Settle();
  EXPECT_EQ(list.Selected(), 0);
  QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
                    view.visualRect(view.model()->index(1, 0)).center());
  station_->Settle();
  EXPECT_EQ(list.Selected(), 1);

  // A row that was gone before its turn came.
  QTest::keyClick(&view, Qt::Key_End);
  list.Clear();
  station_->Settle();
  EXPECT_EQ(list.Selected(), -1);
}

TEST_F(OddInput, AFullListLosesItsFirstRowsAndKeepsTheRestInSight) {
  FrmMPAutoCal& panel = Panels().mpAutoCal;
  Show(panel);
  ListBox& list = panel.lstMPRxChannelCalResult;
  auto& view = station_->Of<QListView>(list);
  for (std::size_t row = 0; row < ListBox::kMostRows; ++row) list.AddItem("row " + std::to_string(row));
  station_->Settle();
  const auto textAt = [&](int row) { return view.model()->index(row, 0).data().toString().toStdString(); };
  const auto topRow = [&] { return view.indexAt({2, 2}).data().toString().toStdString(); };

  // Somebody looks at the middle, a row of which is marked.
  view.scrollTo(view.model()->index(10'000, 0), QAbstractItemView::PositionAtTop);
  view.setCurrentIndex(view.model()->index(10'001, 0));
  station_->Settle();
  ASSERT_EQ(topRow(), "row 10000");
  ASSERT_EQ(list.Selected(), 10'001);
  for (int row = 0; row < 50; ++row) list.AddItem("new " + std::to_string(row));
  station_->Settle();
  EXPECT_EQ(view.model()->rowCount(), static_cast<int>(ListBox::kMostRows));
  EXPECT_EQ(textAt(0), "row 50");
  EXPECT_EQ(textAt(static_cast<int>(ListBox::kMostRows) - 1), "new 49");
  EXPECT_EQ(topRow(), "row 10000");
  EXPECT_EQ(list.Selected(), 9'951);
  EXPECT_EQ(view.currentIndex().data().toString(), "row 10001");

  // At its end it follows the rows that come.
  view.scrollToBottom();
  station_->Settle();
  list.AddItem("the last");
  station_->Settle();
  EXPECT_EQ(view.verticalScrollBar()->value(), view.verticalScrollBar()->maximum());
  EXPECT_EQ(textAt(static_cast<int>(ListBox::kMostRows) - 1), "the last");
}

TEST_F(OddInput, ADisabledTabControlTurnsToNoPage) {
  Show(Panels().main);
  auto& tabs = station_->Of<QTabWidget>(Panels().main.SSTab1);
  tabs.setCurrentIndex(2);
  Panels().main.SSTab1.SetEnabled(false);
  station_->Settle();
  EXPECT_EQ(Panels().main.SSTab1.Selected(), 0);
  EXPECT_EQ(tabs.currentIndex(), 0);
}

}  // namespace
}  // namespace orvane::test
