// From the desk to a station's page and back.

#include "app/stations/desk_link.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

#include "app/stations/desk_server.h"

namespace orvane::test {
namespace {

constexpr int kLongMs = 60000;

class Link : public testing::Test {
 protected:
  Link() {
    EXPECT_TRUE(server_.Listen(path_));
    server_.onDeskAskedFor = [this] { ++asked_; };
  }
  void AwaitPage(int station) {
    ASSERT_TRUE(QTest::qWaitFor([&] { return server_.BringToFront(station); }, kLongMs));
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath("desk");
  DeskServer server_;
  int asked_ = 0;
};

TEST_F(Link, BringsThePageOfThatStationToTheFrontAndNoOther) {
  DeskLink first("1@" + path_);
  DeskLink second("2@" + path_);
  int firsts = 0;
  int seconds = 0;
  first.onFront = [&] { ++firsts; };
  second.onFront = [&] { ++seconds; };
  AwaitPage(2);
  ASSERT_TRUE(QTest::qWaitFor([&] { return seconds > 0; }, kLongMs));
  EXPECT_EQ(firsts, 0);
  EXPECT_FALSE(server_.BringToFront(3));
}

TEST_F(Link, CtrlHomeLeadsToTheDeskFromEveryWindow) {
  DeskLink link("1@" + path_);
  AwaitPage(1);
  QLineEdit line;
  line.show();
  line.setFocus();
  QTest::keyClick(&line, Qt::Key_Home, Qt::ControlModifier);
  ASSERT_TRUE(QTest::qWaitFor([&] { return asked_ > 0; }, kLongMs));
  EXPECT_EQ(asked_, 1);
  QTest::keyClick(&line, Qt::Key_Home);
  QTest::qWait(50);
  EXPECT_EQ(asked_, 1);
}

TEST_F(Link, AVisibleWindowComesToTheFront) {
  DeskLink link("1@" + path_);
  QLineEdit line;
  line.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&line));
  QLineEdit other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  other.hide();
  AwaitPage(1);
  EXPECT_TRUE(QTest::qWaitForWindowActive(&line));
}

TEST_F(Link, AStationThatHasGoneHasNoPage) {
  {
    DeskLink link("1@" + path_);
    AwaitPage(1);
  }
  EXPECT_TRUE(QTest::qWaitFor([&] { return !server_.BringToFront(1); }, kLongMs));
}

TEST_F(Link, WhatIsNoWordIsPassedOverAndAFloodIsCutOff) {
  QLocalSocket stranger;
  stranger.connectToServer(path_);
  ASSERT_TRUE(stranger.waitForConnected());
  stranger.write("hello\n\n-\n");
  stranger.flush();
  QTest::qWait(20);
  EXPECT_EQ(asked_, 0);
  stranger.write(QByteArray(100000, 'x'));
  EXPECT_TRUE(QTest::qWaitFor([&] { return stranger.state() == QLocalSocket::UnconnectedState; }, kLongMs));
}

TEST_F(Link, TheDesksSocketIsItsUsersAlone) {
  struct stat facts {};
  ASSERT_EQ(::stat(path_.toUtf8().constData(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 0077U, 0U);
}

}  // namespace
}  // namespace orvane::test
