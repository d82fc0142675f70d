#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <set>

#include "panels/station_panels.h"

namespace orvane::test {
namespace {

/// A window with nothing in it has one colour, or that of its ground and of a frame.
bool ShowsSomething(const QImage& picture) {
  constexpr std::size_t kBlank = 8;
  std::set<QRgb> colours;
  for (int y = 0; y < picture.height() && colours.size() <= kBlank; ++y) {
    for (int x = 0; x < picture.width(); ++x) colours.insert(picture.pixel(x, y));
  }
  return colours.size() > kBlank;
}

TEST(Screenshots, EveryPanelIsInAPictureThatShowsSomething) {
  const QTemporaryDir folder;
  ASSERT_TRUE(folder.isValid());
  QProcess program;
  program.setProcessChannelMode(QProcess::MergedChannels);
  program.start(ORVANE_SCREENSHOTS, {folder.path(), "brief"});
  const bool ended = program.waitForFinished(60'000);
  if (!ended) program.kill();
  const std::string told = program.readAll().toStdString();
  ASSERT_TRUE(ended) << told;
  ASSERT_EQ(program.exitStatus(), QProcess::NormalExit) << told;
  ASSERT_EQ(program.exitCode(), 0) << told;

  StationPanels panels;
  for (const Panel* panel : panels.All()) {
    const auto pictures = QDir(folder.path()).entryList({QString::fromStdString(panel->Name()) + "*.png"});
    EXPECT_FALSE(pictures.isEmpty()) << panel->Name();
  }
  const auto pictures = QDir(folder.path()).entryInfoList({"*.png"});
  for (const QFileInfo& picture : pictures) {
    EXPECT_TRUE(ShowsSomething(QImage(picture.filePath()))) << picture.fileName().toStdString();
  }
}

}  // namespace
}  // namespace orvane::test
