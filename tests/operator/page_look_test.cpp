// Whether the page can be read: contrasts, and the size of its text.

#include "app/operator/page_look.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include "app/operator/page_language.h"
#include "operator/operator_rig.h"

namespace orvane::test {
namespace {

constexpr std::array kVerdicts{UnitVerdict::Pass, UnitVerdict::OutOfTolerance, UnitVerdict::NotMeasured,
                               UnitVerdict::Fail, UnitVerdict::None};

TEST(PageLook, ContrastIsThatOfTheStandard) {
  EXPECT_NEAR(ContrastOf(Qt::black, Qt::white), 21, 1e-9);
  EXPECT_NEAR(ContrastOf(Qt::white, Qt::white), 1, 1e-9);
  EXPECT_NEAR(ContrastOf(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
}

TEST(PageLook, TextHasFourAndAHalfToOneAndAVerdictSeven) {
  for (const bool isDark : {false, true}) {
    const PageLook& look = LookFor(isDark);
    for (const Shade* shade :
         {&look.page, &look.card, &look.main, &look.stop, &look.good, &look.doubtful, &look.bad}) {
      EXPECT_GE(ContrastOf(shade->ground, shade->text), 4.5) << shade->ground.name().toStdString();
    }
    EXPECT_GE(ContrastOf(look.page.ground, look.faded), 4.5);
    EXPECT_GE(ContrastOf(look.card.ground, look.faded), 4.5);
  }
  for (const UnitVerdict verdict : kVerdicts) {
    EXPECT_GE(ContrastOf(LookOf(verdict).ground, LookOf(verdict).text), 7) << static_cast<int>(verdict);
  }
}

/// The mark of a verdict in grey, from a page of that verdict.
QImage GreyMark(UnitVerdict verdict) {
  VerdictCover cover([] {}, nullptr);
  cover.resize(1280, 720);
  ApplyUnits(cover);
  cover.Show(verdict, {"word", "why", "to do", ""}, "A-17", "");
  cover.show();
  QCoreApplication::processEvents();
  auto* mark = cover.findChild<QWidget*>("verdictMark");
  const QImage seen = mark->grab().toImage();
  // Ink on paper: neither colour nor brightness of a verdict tells one from another.
  const QRgb paper = seen.pixel(1, 1);
  QImage ink(96, 96, QImage::Format_Mono);
  for (int y = 0; y < ink.height(); ++y) {
    for (int x = 0; x < ink.width(); ++x) {
      const QRgb at = seen.pixel(x * seen.width() / ink.width(), y * seen.height() / ink.height());
      ink.setPixel(x, y, at == paper ? 0 : 1);
    }
  }
  return ink;
}

TEST(PageLook, VerdictsAreToldApartByTheirMarksAlone) {
  std::vector<QImage> marks;
  for (const UnitVerdict verdict : kVerdicts) marks.push_back(GreyMark(verdict));
  for (std::size_t i = 0; i < marks.size(); ++i) {
    for (std::size_t k = i + 1; k < marks.size(); ++k) {
      int other = 0;
      for (int y = 0; y < 96; ++y) {
        for (int x = 0; x < 96; ++x) other += marks[i].pixelIndex(x, y) != marks[k].pixelIndex(x, y) ? 1 : 0;
      }
      EXPECT_GT(other, 60) << i << " and " << k;
    }
  }
}

TEST(PageLook, TextGrowsWithThePage) {
  OperatorRig at;
  for (const QSize size : {QSize(1280, 720), QSize(1920, 1080), QSize(3840, 2160)}) {
    at.view->Page().resize(size);
    at.Settle();
    EXPECT_EQ(at.view->Page().size(), size) << "nothing on it asks for more room";
    // A line of capitals: seven tenths of the type's size. A fiftieth of the page's height at the least.
    const int pixels = at.Of("serial").font().pixelSize();
    EXPECT_GE(pixels, size.height() / 25) << size.height();
  }
}

TEST(PageLook, NothingIsCutOffOrLiesOverItsNeighbour) {
  Options options = OperatorRig::VirtualOptions();
  for (const Language language : {Language::English, Language::Korean}) {
    Speak(language);
    OperatorRig at({}, options);
    at.view->Page().resize(1280, 720);
    at.Settle();
    for (const char* name : {"serial", "start", "stop", "exit", "shiftUnits", "shiftYield", "stepreceive"}) {
      const QWidget& widget = at.Of(name);
      const QRect seen(widget.mapTo(&at.view->Page(), QPoint()), widget.size());
      EXPECT_TRUE(at.view->Page().rect().contains(seen)) << name;
      EXPECT_GE(widget.width(), std::min(widget.minimumSizeHint().width(), 1280)) << name;
      EXPECT_GE(widget.height(), widget.minimumSizeHint().height()) << name;
    }
  }
  Speak(Language::English);
}

}  // namespace
}  // namespace orvane::test
