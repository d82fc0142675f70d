// The tiles on a screen in memory: what stands on them, by mouse and by key.

#include "app/stations/stations_page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTest>
#include <cmath>

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Stands = StationSight::Stands;

QString TextOn(const StationTile& tile, const char* name) { return tile.findChild<QLabel*>(name)->text(); }

StationSight IdleWith(const QString& verdict, bool isComplete, const QString& reason = {}) {
  StationSight sight;
  sight.name = "Line 1";
  sight.stands = Stands::Idle;
  sight.verdict = verdict;
  sight.isComplete = isComplete;
  sight.reason = reason;
  return sight;
}

/// Of two colours, as accessibility has it.
double Contrast(const QColor& one, const QColor& other) {
  const auto light = [](const QColor& colour) {
    const auto part = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF()) + 0.05;
  };
  return std::max(light(one), light(other)) / std::min(light(one), light(other));
}

TEST(StationTile, SaysWhichStationWhatItDoesAndWhatTheShiftCameTo) {
  StationTile tile(3);
  StationSight sight = IdleWith("", false);
  sight.stands = Stands::InRun;
  sight.unit = "A-1";
  sight.step = "transmitDCS";
  sight.stepsDone = 1;
  sight.units = 25;
  sight.passed = 24;
  tile.Show(sight);
  EXPECT_EQ(TextOn(tile, "tileName"), "3  Line 1");
  EXPECT_EQ(TextOn(tile, "tileUnit"), "Unit A-1");
  EXPECT_EQ(TextOn(tile, "tileState"), "Transmitter DCS");
  EXPECT_EQ(TextOn(tile, "tileShift"), "25 units, 96 % passed");
  const auto* progress = tile.findChild<QProgressBar*>();
  EXPECT_FALSE(progress->isHidden());
  EXPECT_EQ(progress->value(), 1);
  EXPECT_EQ(progress->maximum(), 5);
  EXPECT_THAT(tile.accessibleDescription().toStdString(), HasSubstr("Transmitter DCS. Unit A-1"));
}

TEST(StationTile, EachVerdictHasItsWordAndAGroundThatCanBeReadFromAfar) {
  struct Row {
    StationSight sight;
    const char* word;
  };
  std::vector<QColor> grounds;
  for (const Row& row : {Row{IdleWith("PASS", true), "PASS"}, Row{IdleWith("PASS", false, "Left early."), "PASS?"},
                         Row{IdleWith("FAIL", false, "Battery."), "FAIL"}}) {
    StationTile tile(1);
    tile.Show(row.sight);
    EXPECT_EQ(TextOn(tile, "tileState"), row.word);
    EXPECT_EQ(TextOn(tile, "tileWords"), row.sight.reason);
    const QPalette colours = tile.palette();
    EXPECT_GE(Contrast(colours.color(QPalette::Window), colours.color(QPalette::WindowText)), 7) << row.word;
    grounds.push_back(colours.color(QPalette::Window));
  }
  EXPECT_NE(grounds[0], grounds[1]);
  EXPECT_NE(grounds[1], grounds[2]);
  EXPECT_NE(grounds[0], grounds[2]);
}

TEST(StationTile, ABoxAndAnEndAreSaidInFull) {
  StationTile tile(1);
  StationSight sight = IdleWith("", false);
  sight.box = "Are you ready?";
  tile.Show(sight);
  EXPECT_EQ(TextOn(tile, "tileWords"), "It asks: Are you ready?");
  EXPECT_TRUE(tile.findChild<QPushButton*>("tileStartAgain")->isHidden());
  sight.stands = Stands::Ended;
  sight.diedInRun = true;
  sight.ending = "It was ended by signal 9 (Killed).";
  tile.Show(sight);
  EXPECT_EQ(TextOn(tile, "tileState"), "Ended");
  EXPECT_EQ(TextOn(tile, "tileWords"),
            "The unit that was under way is not calibrated.\nIt was ended by signal 9 (Killed).");
  EXPECT_FALSE(tile.findChild<QPushButton*>("tileStartAgain")->isHidden());
}

/// Eight stations whose processes do nothing; the last one has none.
class ThePage : public testing::Test {
 protected:
  ThePage() {
    for (int i = 1; i <= 8; ++i) {
      const PlannedStation plan{
          "Line " + QString::number(i), {"/bin/sleep", "1000"}, "/nowhere/" + QString::number(i)};
      auto& station = *stations_.emplace_back(std::make_unique<SupervisedStation>([plan] { return plan; }));
      seen_.push_back(&station);
    }
    page_ = std::make_unique<StationsPage>(seen_);
    page_->onTouched = [this](std::size_t station) { touched_.push_back(station); };
    page_->onClosed = [this] { ++closed_; };
    for (std::size_t i = 0; i + 1 < stations_.size(); ++i) stations_[i]->Start();
    page_->resize(1280, 720);
    page_->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(page_.get()));
  }

  std::vector<std::unique_ptr<SupervisedStation>> stations_;
  std::vector<SupervisedStation*> seen_;
  std::unique_ptr<StationsPage> page_;
  std::vector<std::size_t> touched_;
  int closed_ = 0;
};

TEST_F(ThePage, HasRoomForEightOnASmallScreen) {
  EXPECT_LE(page_->minimumSizeHint().width(), 1280);
  EXPECT_LE(page_->minimumSizeHint().height(), 720);
  for (std::size_t i = 0; i < 8; ++i) {
    const QRect place(page_->TileOf(i).pos(), page_->TileOf(i).size());
    EXPECT_TRUE(page_->rect().contains(place)) << i;
    EXPECT_GE(place.width(), 280) << i;
    for (std::size_t other = 0; other < i; ++other) {
      EXPECT_FALSE(place.intersects(QRect(page_->TileOf(other).pos(), page_->TileOf(other).size())));
    }
  }
}

TEST_F(ThePage, IsTouchedByMouseAndByNumber) {
  QTest::mouseClick(&page_->TileOf(4), Qt::LeftButton);
  QTest::keyClick(page_.get(), Qt::Key_3);
  QTest::keyClick(&page_->TileOf(1), Qt::Key_Return);
  QTest::keyClick(page_.get(), Qt::Key_9);
  QTest::keyClick(page_.get(), Qt::Key_0);
  QTest::mouseClick(&page_->TileOf(5), Qt::RightButton);
  EXPECT_THAT(touched_, ElementsAre(4, 2, 1));
}

TEST_F(ThePage, TheTileThatTheKeyboardTouchesIsSeen) {
  StationTile& tile = page_->TileOf(2);
  page_->TileOf(0).setFocus();
  ASSERT_TRUE(QTest::qWaitFor([&] { return page_->TileOf(0).hasFocus(); }));
  const QImage before = tile.grab().toImage();
  tile.setFocus();
  EXPECT_NE(tile.grab().toImage(), before);
}

TEST_F(ThePage, AStationThatIsNotThereHasNoPageAndCanBeStarted) {
  QTest::keyClick(page_.get(), Qt::Key_8);
  EXPECT_THAT(touched_, IsEmpty());
  page_->TileOf(7).onStartAgain();
  EXPECT_TRUE(stations_[7]->Runs());
  QTest::keyClick(page_.get(), Qt::Key_8);
  EXPECT_THAT(touched_, ElementsAre(7));
}

TEST_F(ThePage, GoesWithoutAQuestionWhereNoRunIsUnderWay) {
  page_->mayEnd = [](int) -> bool {
    ADD_FAILURE() << "asked for nothing";
    return false;
  };
  EXPECT_TRUE(page_->close());
  EXPECT_EQ(closed_, 1);
}

}  // namespace
}  // namespace orvane::test
