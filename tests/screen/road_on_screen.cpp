#include "screen/road_on_screen.h"

#include <QPainter>
#include <QSvgRenderer>
#include <chrono>
#include <stdexcept>

#include "adapters/qt/pictures.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

/// A picture as its file has it, as large as a place on the screen; what is around it is transparent.
QImage Drawn(std::string_view name, QSize size) {
  QImage image(size, QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  QSvgRenderer renderer(PictureNamed(name));
  renderer.setAspectRatioMode(Qt::KeepAspectRatio);
  QPainter painter(&image);
  renderer.render(&painter);
  return image;
}

/// Mean difference of a colour's parts, 0 to 255, where the expected picture covers the screen.
double Difference(const QImage& seen, const QImage& expected) {
  double sum = 0;
  long parts = 0;
  for (int y = 0; y < seen.height(); ++y) {
    for (int x = 0; x < seen.width(); ++x) {
      const QRgb wanted = expected.pixel(x, y);
      if (qAlpha(wanted) < 255) continue;
      const QRgb is = seen.pixel(x, y);
      sum += std::abs(qRed(is) - qRed(wanted)) + std::abs(qGreen(is) - qGreen(wanted)) +
             std::abs(qBlue(is) - qBlue(wanted));
      parts += 3;
    }
  }
  return sum / static_cast<double>(parts);
}

}  // namespace

void RoadOnScreen::SetUp() {
  if (!XDisplay::Installed()) GTEST_SKIP() << "Xvfb is not installed (Debian: xvfb).";
  display_.emplace();
}

int RoadOnScreen::AnswerBoxesUntil(const std::string& window, ScreenStation& station,
                                   const std::function<void()>& ahead) {
  int boxes = 0;
  for (const auto deadline = std::chrono::steady_clock::now() + 60s; !station.Find(window);) {
    if (station.Find("box/OK")) {
      if (ahead) ahead();
      station.Click("box/OK");
      station.AwaitGone("box/OK");
      ++boxes;
    }
    if (std::chrono::steady_clock::now() > deadline) throw std::runtime_error(window + " does not come");
  }
  return boxes;
}

void RoadOnScreen::ExpectPicture(const ScreenStation& station, const std::string& window, const std::string& name) {
  // What is behind its exposure may still be on its way to the screen, and the window on its way to its place.
  const auto look = [&] { return station.Shown(station.Await(window + "/Image1")); };
  QImage seen = look();
  constexpr double kAlike = 4;
  constexpr double kUnlike = 40;
  for (int glance = 0; glance < 200 && Difference(seen, Drawn(name, seen.size())) > kAlike; ++glance) {
    seen = look();
  }
  for (const std::string other : {"pass", "fail", "out of tolerance", "not measured"}) {
    const double difference = Difference(seen, Drawn(other, seen.size()));
    if (other == name) {
      EXPECT_LT(difference, kAlike) << name;
    } else {
      EXPECT_GT(difference, kUnlike) << other << " for " << name;
    }
  }
}

}  // namespace orvane::test
