#include <QClipboard>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>

#include "windows/windows_test.h"

namespace orvane::test {
namespace {

/// What people do to windows when nobody looks.
class HostileHands : public testing::Test {
 protected:
  void Show(Panel& panel) {
    station_->on.station.Nest().Run([&] { panel.Show(); });
    station_->WindowOf(panel).show();
  }
  StationPanels& Panels() { return station_->on.Panels(); }

  std::unique_ptr<WindowedStation> station_ = std::make_unique<WindowedStation>();
};

std::vector<TextBox*> BoxesOf(Panel& panel) {
  std::vector<TextBox*> boxes;
  for (Control* control : panel.Controls()) {
    if (auto* box = dynamic_cast<TextBox*>(control)) boxes.push_back(box);
  }
  return boxes;
}

TEST_F(HostileHands, AMegabyteInTheClipboardHurtsNoBox) {
  const QString megabyte(1 << 20, u'8');
  int boxes = 0;
  for (Panel* panel : Panels().All()) {
    if (panel == &Panels().rampTable) continue;  // Its boxes are those of the main panel once more.
    Show(*panel);
    for (TextBox* box : BoxesOf(*panel)) {
      QGuiApplication::clipboard()->setText(megabyte);
      auto& widget = station_->Of<QWidget>(*box);
      QTest::keySequence(&widget, QKeySequence::Paste);
      station_->Settle();
      ++boxes;
      // The widget shows what the box has, whatever its filter left of it.
      if (auto* line = qobject_cast<QLineEdit*>(&widget)) {
        EXPECT_EQ(line->text(), ToQt(box->Text())) << box->Name();
      }
      box->SetText("0");
    }
  }
  EXPECT_GT(boxes, 100);
}

TEST_F(HostileHands, AnyUnicodeIsABadCharacterAtWorst) {
  for (const char16_t character : {u'\u3131', u'\u3163', u'\u0000', u'\u202E', u'\uFEFF', u'\uFFFD', u'\u0661'}) {
    auto& box = Panels().autoCal.txtARFCN;
    Show(Panels().autoCal);
    QTest::sendKeyEvent(QTest::Click, &station_->Of(box), Qt::Key_unknown, QString(QChar(character)), Qt::NoModifier);
    station_->Settle();
    EXPECT_EQ(station_->Of<QLineEdit>(box).text(), ToQt(box.Text())) << "U+" << std::hex << int{character};
  }
}

TEST_F(HostileHands, KeysThatComeAtOnceTakeEffectOneAfterTheOther) {
  Show(Panels().main);
  auto& line = station_->Of<QLineEdit>(Panels().main.txtUserCommand);
  line.setFocus();
  // Nothing is served in between: as if the loop had been busy meanwhile.
  QTest::keyClicks(&line, "ti");
  QTest::keyClick(&line, Qt::Key_Return);
  QTest::keyClicks(&line, "rfpw 1 62");
  EXPECT_EQ(Panels().main.txtUserCommand.Text(), "");
  station_->Settle();
  EXPECT_EQ(Panels().main.txtUserCommand.Text(), "rfpw 1 62");
  EXPECT_EQ(line.text(), "rfpw 1 62");
  EXPECT_EQ(Panels().main.lblUserCommand.Caption(), "User Command:");
}

TEST_F(HostileHands, AKeyInTheMiddleOfATextGoesThere) {
  Show(Panels().main);
  auto& line = station_->Of<QLineEdit>(Panels().main.txtUserCommand);
  QTest::keyClicks(&line, "rpw");
  QTest::keyClick(&line, Qt::Key_Left);
  QTest::keyClick(&line, Qt::Key_Left);
  QTest::keyClicks(&line, "f");
  station_->Settle();
  EXPECT_EQ(Panels().main.txtUserCommand.Text(), "rfpw");
  EXPECT_EQ(line.cursorPosition(), 2);
}

TEST_F(HostileHands, AWindowsCloseButtonHidesAndKeepsItsPlaceAndState) {
  Show(Panels().autoCal);
  auto& window = station_->WindowOf(Panels().autoCal);
  window.move(123, 45);
  Panels().autoCal.txtARFCN.SetText("77");
  window.close();
  station_->Settle();
  EXPECT_FALSE(Panels().autoCal.Visible());
  window.FollowPanel();
  EXPECT_FALSE(window.isVisible());

  Show(Panels().autoCal);
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(window.pos(), QPoint(123, 45));
  EXPECT_EQ(station_->Of<QLineEdit>(Panels().autoCal.txtARFCN).text(), "77");
}

TEST_F(HostileHands, TheMainWindowsCloseButtonAsksAsExitDoes) {
  Show(Panels().main);
  station_->on.boxes.answers = {BoxButton::Cancel};
  station_->WindowOf(Panels().main).close();
  station_->Settle();
  ASSERT_EQ(station_->on.boxes.shown.size(), 1U);
  EXPECT_TRUE(station_->WindowOf(Panels().main).isVisible());

  station_->on.boxes.answers = {BoxButton::Ok};
  station_->WindowOf(Panels().main).close();
  EXPECT_THROW(station_->Settle(), StationEnded);
}

TEST_F(HostileHands, ClosingEveryWindowInMidRunHarmsNoRun) {
  station_->on.InitializeInstruments();
  for (Panel* panel : Panels().All()) Show(*panel);
  // In the middle of the receive run.
  bool closed = false;
  Panels().mpAutoCal.lstMPRxChannelCalResult.rowAdded.Connect([&](const std::string&) {
    if (closed) return;
    closed = true;
    for (Panel* panel : Panels().All()) {
      if (panel != &Panels().main) station_->WindowOf(*panel).close();
    }
  });
  QTest::mouseClick(&station_->Of(Panels().main.cmdTargetInitialize), Qt::LeftButton);
  station_->Settle();
  EXPECT_TRUE(closed);
  EXPECT_EQ(station_->on.Concluded(), Verdict::Pass);
  EXPECT_TRUE(station_->on.State().report.AllComplete()) << station_->on.Steps();
}

TEST_F(HostileHands, AListOfTwentyThousandRowsFollowsItsEndUnlessScrolledAway) {
  auto& list = Panels().mpAutoCal.lstMPRxChannelCalResult;
  Show(Panels().mpAutoCal);
  auto& view = station_->Of<QListView>(list);
  // One more fills the list; beyond that its first rows go, and the view moves with them.
  for (int row = 0; row < 19'999; ++row) list.AddItem("row " + std::to_string(row));
  QCoreApplication::processEvents();
  EXPECT_EQ(view.model()->rowCount(), 19'999);
  EXPECT_EQ(view.verticalScrollBar()->value(), view.verticalScrollBar()->maximum());

  view.verticalScrollBar()->setValue(10);
  list.AddItem("one more");
  QCoreApplication::processEvents();
  EXPECT_EQ(view.verticalScrollBar()->value(), 10);
  EXPECT_EQ(view.model()->data(view.model()->index(19'999, 0)).toString(), "one more");
  list.Clear();
  EXPECT_EQ(view.model()->rowCount(), 0);
}

TEST_F(HostileHands, AConsoleAtItsLimitShowsWhatItHasAndKeepsASelection) {
  Show(Panels().main);
  TextBox& box = Panels().main.txtResults;
  auto& view = station_->Of<QPlainTextEdit>(box);
  const auto shown = [&] { return ToQt(box.Text()).remove(u'\r'); };
  for (int line = 0; line < 2000; ++line) {
    if (box.Text().size() > 16'000) box.DropFrontQuietly(4096 + static_cast<std::size_t>(line) % 3);
    box.AppendQuietly("line " + std::to_string(line) + "\r\n");
    if (line % 97 == 0) {
      QCoreApplication::processEvents();
      ASSERT_EQ(view.toPlainText(), shown()) << line;
    }
  }
  QCoreApplication::processEvents();
  ASSERT_EQ(view.toPlainText(), shown());

  QTextCursor marked = view.textCursor();
  marked.setPosition(20);
  marked.setPosition(30, QTextCursor::KeepAnchor);
  view.setTextCursor(marked);
  const QString before = view.textCursor().selectedText();
  box.AppendQuietly("one more\r\n");
  QCoreApplication::processEvents();
  ASSERT_TRUE(view.toPlainText().endsWith("one more\n"));
  EXPECT_EQ(view.textCursor().selectedText(), before);
}

}  // namespace
}  // namespace orvane::test
