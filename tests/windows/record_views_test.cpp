// Where the last record is, and the last units, on the main window and beneath the verdict.

#include "app/windows/record_views.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QMenu>
#include <QStatusBar>

#include "adapters/sql/open_store.h"
#include "app/windows/front_end.h"
#include "app/windows/status_strip.h"
#include "records/sample_record.h"
#include "support/scratch_folder.h"
#include "windows/windows_test.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::SizeIs;

class RecordViews : public testing::Test {
 protected:
  [[nodiscard]] std::string Place() const { return "sqlite:" + folder_.Path("records.sqlite"); }
  /// A run that began so many minutes later than the first.
  std::string Finish(const std::string& serial, int later) {
    RunRecord record = SmallRecord(later);
    record.identity.serial = serial;
    (void)OpenStore(Place())->Finish(record);
    return record.identity.id;
  }
  /// Until `seen` holds; looking things up happens beside this thread.
  template <class Seen>
  [[nodiscard]] static bool Await(Seen seen) {
    return QTest::qWaitFor(seen, 10000);
  }
  [[nodiscard]] std::vector<std::string> Listed(UnitsButton& button) {
    button.click();
    EXPECT_TRUE(Await([&] { return button.findChild<QMenu*>("lastUnits") != nullptr; }));
    std::vector<std::string> rows;
    for (const QAction* row : button.findChild<QMenu*>("lastUnits")->actions())
      rows.push_back(row->text().toStdString());
    return rows;
  }

  ScratchFolder folder_;
  QWidget window_;
  RecordNews news_;
  PastRuns runs_{Place()};
  std::vector<std::string> opened_;
  ReportOpener reports_{runs_, [this](const std::string& file) { opened_.push_back(file); }};
};

TEST_F(RecordViews, TheButtonHasTheShortIdOfARecordThatIsKeptAndOpensItsReport) {
  const std::string id = Finish("A-1", 1);
  RecordButton button(news_, reports_, &window_);
  window_.show();
  EXPECT_FALSE(button.isVisible()) << "nothing has run";
  news_.Tell({id, true, ""});
  EXPECT_TRUE(Await([&] { return button.isVisible(); }));
  EXPECT_EQ(button.text().toStdString(), "Record " + id.substr(0, 13));
  button.click();
  ASSERT_TRUE(Await([&] { return !opened_.empty(); }));
  QFile page(ToQt(opened_.front()));
  ASSERT_TRUE(page.open(QIODevice::ReadOnly));
  EXPECT_THAT(page.readAll().toStdString(), HasSubstr(id));
  page.remove();
  news_.Forget();
  EXPECT_TRUE(Await([&] { return !button.isVisible(); })) << "another run is under way";
}

TEST_F(RecordViews, TheButtonSaysWhereARecordIsThatIsNotInTheStore) {
  RecordButton button(news_, reports_, &window_);
  window_.show();
  const auto shown = [&](const Kept& kept) {
    news_.Tell(kept);
    QCoreApplication::processEvents();
    EXPECT_FALSE(button.isEnabled());
    EXPECT_TRUE(button.isVisible());
    return button.text().toStdString() + "|" + button.toolTip().toStdString();
  };
  EXPECT_EQ(shown({"019a", true, "database is locked"}), "The record lies beside the store.|database is locked");
  EXPECT_EQ(shown({"019a", false, "no space"}), "The record is lost.|no space");
  EXPECT_EQ(shown({"", true, "Permission denied\nx"}), "Records: Permission denied / x|Permission denied / x");
}

TEST_F(RecordViews, TheLastTenUnitsAreListedNewestFirstAndOpenTheirReport) {
  (void)Finish("old", 0);
  for (int i = 1; i < 10; ++i) (void)Finish(i == 9 ? "R&D <b>" : "A-" + std::to_string(i), i);
  UnitsButton button(runs_, reports_, &window_);
  window_.show();
  const auto rows = Listed(button);
  ASSERT_THAT(rows, SizeIs(10));
  EXPECT_THAT(rows.front(), MatchesRegex(".*   R&&D <b>   .*"));
  EXPECT_THAT(rows.back(), HasSubstr("   old   "));
  button.findChild<QMenu*>("lastUnits")->actions().at(1)->trigger();
  ASSERT_TRUE(Await([&] { return !opened_.empty(); }));
  EXPECT_THAT(opened_.front(), HasSubstr(IdOf(8)));
  QFile::remove(ToQt(opened_.front()));
}

TEST_F(RecordViews, AStoreThatIsEmptyOrCannotBeReadIsSaidInTheList) {
  UnitsButton button(runs_, reports_, &window_);
  window_.show();
  const auto absent = Listed(button);
  ASSERT_THAT(absent, SizeIs(1));
  EXPECT_THAT(absent.front(), HasSubstr("records.sqlite"));
  delete button.findChild<QMenu*>("lastUnits");
  (void)OpenStore(Place());
  EXPECT_THAT(Listed(button), ElementsAre("No unit has run yet."));
}

TEST_F(RecordViews, AreBeneathBothVerdicts) {
  VirtualStation on;
  Desk desk(on.loop, "/tmp");
  FrontEnd windows(on.loop, desk, on.station);
  windows.belowVerdict = [this](QWidget* parent) { return new RecordButton(news_, reports_, parent); };
  on.Panels().pass.Show();
  on.Panels().fail.Show();
  news_.Tell({"", false, "no space"});
  QCoreApplication::processEvents();
  for (Panel* const panel : {static_cast<Panel*>(&on.Panels().pass), static_cast<Panel*>(&on.Panels().fail)}) {
    const auto* const button = windows.WindowOf(*panel)->statusBar()->findChild<RecordButton*>();
    ASSERT_NE(button, nullptr) << panel->Name();
    EXPECT_TRUE(button->isVisible()) << panel->Name();
  }
}

}  // namespace
}  // namespace orvane::test
