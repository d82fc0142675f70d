#include "app/desk.h"

#include <gtest/gtest.h>

#include <sstream>

#include "platform/virtual_event_loop.h"

namespace orvane {
namespace {

class DeskTest : public testing::Test {
 protected:
  VirtualEventLoop loop_;
  Desk desk_{loop_, "/work"};
};

TEST_F(DeskTest, ABoxWaitsForItsAnswerWhileOtherEventsGoOn) {
  int events = 0;
  desk_.boxOpened.Connect([&](const Desk::OpenBox& open) {
    EXPECT_EQ(open.box.text, "Sure?");
    loop_.PostAt(std::chrono::seconds(1), [&] { ++events; });
    loop_.PostAt(std::chrono::seconds(2), [this, id = open.id] {
      EXPECT_EQ(desk_.Press(id, "Maybe"), Desk::Answered::DoesNotFit);
      EXPECT_EQ(desk_.Choose(id, "name"), Desk::Answered::DoesNotFit);
      EXPECT_EQ(desk_.Press(id + 1, "No"), Desk::Answered::NoSuchId);
      EXPECT_EQ(desk_.Press(id, "No"), Desk::Answered::Yes);
      EXPECT_EQ(desk_.Press(id, "No"), Desk::Answered::NoSuchId) << "one answer is enough";
      EXPECT_TRUE(desk_.Settling());
    });
  });
  Desk::Id closed = 0;
  desk_.closed.Connect([&](Desk::Id id) { closed = id; });
  EXPECT_EQ(desk_.AskOverwrite("Sure?"), BoxButton::No);
  EXPECT_EQ(events, 1);
  EXPECT_EQ(loop_.Now(), std::chrono::seconds(2));
  EXPECT_TRUE(desk_.Clear());
  EXPECT_FALSE(desk_.Settling());
  EXPECT_EQ(closed, 1);
}

TEST_F(DeskTest, AnOuterBoxMayBeAnsweredFirstAndEndsWhenTheInnerOneHasEnded) {
  std::string order;
  loop_.Post([&] {
    desk_.Alarm("inner");
    order += "inner ";
  });
  loop_.PostAt(std::chrono::seconds(1), [&] {
    desk_.Press(1, "OK");
    EXPECT_FALSE(desk_.Settling()) << "the inner box is still open";
  });
  loop_.PostAt(std::chrono::seconds(2), [&] { desk_.Press(2, "OK"); });
  desk_.Warning("outer");
  order += "outer";
  EXPECT_EQ(order, "inner outer");
}

TEST_F(DeskTest, AnOperationThatIsEndedFromWithinItsBoxTakesTheBoxAway) {
  loop_.Post([] { throw std::runtime_error("the station ends"); });
  EXPECT_THROW(desk_.Alarm("open"), std::runtime_error);
  EXPECT_TRUE(desk_.Clear());
}

struct NameCase {
  const char* given;
  const char* defaultExtension;
  const char* path;
};

class DialogName : public DeskTest, public testing::WithParamInterface<NameCase> {};

TEST_P(DialogName, GetsTheDefaultExtensionAndTheWorkingFolder) {
  const NameCase& row = GetParam();
  desk_.dialogOpened.Connect([&](const Desk::OpenDialog& open) {
    loop_.Post([&row, this, id = open.id] {
      EXPECT_EQ(desk_.Choose(id, row.given), Desk::Answered::Yes);
      EXPECT_EQ(desk_.Choose(id, std::nullopt), Desk::Answered::NoSuchId) << "one answer is enough";
    });
  });
  FileDialog dialog{"Save", "All|*.*", row.defaultExtension, "", ""};
  EXPECT_EQ(desk_.ShowSave(dialog), row.path);
  EXPECT_EQ(dialog.fileName, row.path);
  EXPECT_EQ(dialog.initialFolder, std::filesystem::path(row.path).parent_path()) << "where the next one starts";
}

INSTANTIATE_TEST_SUITE_P(Names, DialogName,
                         testing::Values(NameCase{"/tmp/unit7", "epm", "/tmp/unit7.epm"},
                                         NameCase{"/tmp/unit7.txt", "epm", "/tmp/unit7.txt"},
                                         NameCase{"unit7", "epm", "/work/unit7.epm"},
                                         NameCase{"sub.d/unit7", "epm", "/work/sub.d/unit7.epm"},
                                         NameCase{"results", "LOG", "/work/results.LOG"},
                                         NameCase{"unit7", "", "/work/unit7"}));

TEST_F(DeskTest, ACancelledDialogStaysAsItWas) {
  desk_.dialogOpened.Connect([&](const Desk::OpenDialog& open) {
    EXPECT_EQ(open.mode, Desk::Mode::Open);
    loop_.Post([this, id = open.id] {
      EXPECT_EQ(desk_.Press(id, "OK"), Desk::Answered::DoesNotFit);
      EXPECT_EQ(desk_.Choose(id, "/tmp/"), Desk::Answered::DoesNotFit) << "a folder is no file";
      EXPECT_EQ(desk_.Choose(id, std::nullopt), Desk::Answered::Yes);
    });
  });
  FileDialog dialog{"Open", "All|*.*", "epm", "/old/name.epm", "/old"};
  EXPECT_EQ(desk_.ShowOpen(dialog), std::nullopt);
  EXPECT_EQ(dialog.fileName, "/old/name.epm");
  EXPECT_EQ(dialog.initialFolder, "/old");
}

TEST_F(DeskTest, UnattendedBoxesAreTakenDownAndAnsweredWithTheirFirstButton) {
  std::ostringstream log;
  desk_.LeaveUnattended(log);
  std::vector<std::string> seen;
  desk_.boxOpened.Connect([&](const Desk::OpenBox& open) { seen.push_back(open.box.text); });
  EXPECT_EQ(desk_.AskOverwrite("a.epm already exists"), BoxButton::Yes);
  EXPECT_EQ(seen, std::vector<std::string>{"a.epm already exists"}) << "who looks on sees it too";
  desk_.Alarm("Unable to open device\ribsta = &H8000\r\niberr = 2");
  FileDialog dialog{"RF Parameters Save", "", "epm", "", ""};
  EXPECT_EQ(desk_.ShowSave(dialog), std::nullopt);
  EXPECT_EQ(log.str(),
            "ORVANE: a.epm already exists -> Yes\n"
            "Alarm: Unable to open device / ibsta = &H8000 / iberr = 2 -> OK\n"
            "RF Parameters Save: which file? -> Cancel\n");
}

TEST_F(DeskTest, AnAbandonedDeskAsksForNothing) {
  std::ostringstream log;
  loop_.PostAt(std::chrono::milliseconds(1), [&] { desk_.Abandon(log); });
  EXPECT_EQ(desk_.AskOverwrite("a.epm already exists"), BoxButton::Cancel) << "it lay open";
  EXPECT_EQ(desk_.AskOverwrite("b.epm already exists"), BoxButton::Cancel);
  desk_.Alarm("No Data");
  EXPECT_EQ(log.str(),
            "ORVANE: a.epm already exists -> Cancel\n"
            "ORVANE: b.epm already exists -> Cancel\n"
            "Alarm: No Data -> OK\n");
}

TEST_F(DeskTest, ADialogOnAnAbandonedDeskIsCancelled) {
  std::ostringstream log;
  loop_.PostAt(std::chrono::milliseconds(1), [&] { desk_.Abandon(log); });
  FileDialog dialog{"RF Parameters Save", "", "epm", "", ""};
  EXPECT_EQ(desk_.ShowSave(dialog), std::nullopt);
  EXPECT_EQ(log.str(), "RF Parameters Save: which file? -> Cancel\n");
}

}  // namespace
}  // namespace orvane
