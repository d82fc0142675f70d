/// The two widgets that grow without end, on a screen in memory.

#include <QApplication>
#include <QListView>
#include <QLoggingCategory>
#include <QPlainTextEdit>
#include <QScrollBar>

#include "figures.h"
#include "windows/windows_test.h"

namespace orvane::test {
namespace {

void MeasureList(Table& table, WindowedStation& station) {
  auto& panel = station.on.Panels().mpAutoCal;
  ListBox& list = panel.lstMPRxChannelCalResult;
  station.on.station.Nest().Run([&] { panel.Show(); });
  auto& view = station.Of<QListView>(list);
  constexpr int kRows = 20'000;
  table.Add("20,000 rows into a list", ProcessorMilliseconds([&] {
              for (int row = 0; row < kRows; ++row) list.AddItem("channel 512: compensation -3, row of a long day");
              QCoreApplication::processEvents();
            }),
            "ms", 500);
  constexpr int kFrames = 100;
  std::vector<double> frames;
  QPixmap picture(view.viewport()->size());
  QScrollBar& bar = *view.verticalScrollBar();
  for (int frame = 0; frame < kFrames; ++frame) {
    frames.push_back(ProcessorMilliseconds([&] {
      bar.setValue(bar.maximum() * frame / kFrames);
      view.viewport()->render(&picture);
    }));
  }
  table.Add("a frame of scrolling through it, median", Median(frames), "ms", 1000.0 / 60);
  table.Add("the longest frame of a hundred", *std::max_element(frames.begin(), frames.end()), "ms", 2000.0 / 60);
}

void MeasureConsole(Table& table, WindowedStation& station) {
  TextBox& box = station.on.Panels().main.txtResults;
  station.on.station.Nest().Run([&] { station.on.Panels().main.Show(); });
  auto& view = station.Of<QPlainTextEdit>(box);
  constexpr std::size_t kLimit = 16'000;
  constexpr std::size_t kDropped = 4096;
  constexpr int kLines = 2000;
  QPixmap picture(view.viewport()->size());
  std::vector<double> appends;
  std::vector<double> drawn;
  for (int line = 0; line < 2 * kLines; ++line) {
    const double append = ProcessorMilliseconds([&] {
      if (box.Text().size() > kLimit) box.DropFrontQuietly(kDropped);
      box.AppendQuietly("CALL:CELL:RFG:FREQ 935.067MHz\r\n");
      QCoreApplication::sendPostedEvents();  // The widget takes it up.
    });
    const double draw = ProcessorMilliseconds([&] { view.viewport()->render(&picture); });
    if (line < kLines) continue;  // The console grows to its limit first.
    appends.push_back(append);
    drawn.push_back(append + draw);
  }
  table.Add("a line into the console at its limit, median", Median(appends), "ms", 1);
  std::nth_element(appends.begin(), appends.begin() + kLines * 99 / 100, appends.end());
  table.Add("the same, 99 of a hundred", appends[kLines * 99 / 100], "ms", 1);
  table.Add("a line with its drawing, median", Median(drawn), "ms", 1000.0 / 60);
}

}  // namespace
}  // namespace orvane::test

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QLoggingCategory::setFilterRules("qt.qpa.*=false");
  const QApplication application(argc, argv);
  orvane::test::Table table;
  orvane::test::WindowedStation station;
  orvane::test::MeasureList(table, station);
  orvane::test::MeasureConsole(table, station);
  return table.Status();
}
