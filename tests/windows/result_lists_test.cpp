// The lists of results, as they are seen while a run fills them.

#include <QListView>

#include "windows/windows_test.h"

namespace orvane::test {
namespace {

/// Whether anything is written in a list.
bool ShowsRows(QListView& list) {
  const QImage drawn = list.viewport()->grab().toImage();
  const QRgb ground = drawn.pixel(drawn.width() - 1, drawn.height() - 1);
  for (int y = 0; y < drawn.height(); ++y) {
    for (int x = 0; x < drawn.width(); ++x) {
      if (drawn.pixel(x, y) != ground) return true;
    }
  }
  return false;
}

TEST(ResultLists, AreNotBlankWhenTheyAreDrawnRightBehindARow) {
  WindowedStation windowed;
  FrmAutoCalTxResult& panel = windowed.on.Panels().txResult;
  windowed.on.station.Nest().Run([&] { panel.Show(); });
  auto& list = windowed.Of<QListView>(panel.listPeakPower);
  windowed.Settle();
  EXPECT_FALSE(ShowsRows(list));
  for (int row = 0; row < 40; ++row) {
    panel.listPeakPower.AddItem("45\t6.5");
    EXPECT_TRUE(ShowsRows(list)) << row;
    if (row % 2 == 0) windowed.Settle();
  }
}

}  // namespace
}  // namespace orvane::test
