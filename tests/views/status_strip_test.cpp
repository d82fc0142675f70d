#include "app/windows/status_strip.h"

#include <gtest/gtest.h>

#include "station/virtual_station.h"

namespace orvane {
namespace {

struct Strip {
  explicit Strip(const Surroundings& surroundings, const std::vector<std::string>& faults = {})
      : on(7, faults), strip(status, surroundings, nullptr) {
    strip.show();
  }
  QString Text(const char* name) {
    strip.Look();
    return strip.findChild<QLabel*>(name)->text();
  }
  QProgressBar& Bar(const char* name) {
    strip.Look();
    return *strip.findChild<QProgressBar*>(name);
  }

  test::VirtualStation on;
  StationStatus status{on.loop, on.bench.Serial(), on.State(), on.Panels()};
  StatusStrip strip;
};

Surroundings VirtualBench() {
  Surroundings bench;
  bench.isVirtual = true;
  bench.unit = "seed 7, fault battery";
  return bench;
}

TEST(StatusStrip, SaysInAWordWhetherTheBenchIsReal) {
  Strip simulated(VirtualBench());
  EXPECT_EQ(simulated.Text("statusBench"), "VIRTUAL BENCH");
  EXPECT_EQ(simulated.Text("statusPlace"), "seed 7, fault battery");

  Surroundings bench;
  bench.devices = {"/dev/ttyS0", "/dev/ttyUSB3", "", ""};
  bench.instruments = "GPIB native";
  Strip real(bench);
  EXPECT_EQ(real.Text("statusBench"), "REAL BENCH");
  EXPECT_EQ(real.Text("statusPlace"), "COM1 /dev/ttyS0, GPIB native");
  real.on.Panels().main.cboPort.SetText("COM2");
  EXPECT_EQ(real.Text("statusPlace"), "COM2 /dev/ttyUSB3, GPIB native");
  EXPECT_NE(real.strip.findChild<QLabel*>("statusBench")->styleSheet(),
            simulated.strip.findChild<QLabel*>("statusBench")->styleSheet());
}

TEST(StatusStrip, ShowsTheRunAsItGoes) {
  Strip strip(VirtualBench());
  EXPECT_FALSE(strip.Bar("statusRun").isVisible());
  EXPECT_EQ(strip.Text("statusElapsed"), "");
  QString stage;
  QString link;
  int value = 0;
  strip.on.State().searchTrail.ended.Connect([&](const SearchStory& search) {
    if (search.subject.name != "DCS level 15") return;
    value = strip.Bar("statusRun").value();
    stage = strip.Text("statusStage");
    link = strip.Text("statusLink");
  });
  strip.on.TakeTargetThrough();
  EXPECT_EQ(value, 13);
  EXPECT_EQ(stage, "Transmit DCS");
  EXPECT_EQ(link, "\u25cf Port open");
  EXPECT_EQ(strip.Bar("statusRun").value(), 51);
  EXPECT_TRUE(strip.Bar("statusRun").isVisible());
  EXPECT_EQ(strip.Text("statusStage"), "Ended: PASS");
  EXPECT_EQ(strip.Text("statusLink"), "\u25cb Port closed");
}

TEST(StatusStrip, ShowsATransferAsLongAsItLasts) {
  Strip strip(VirtualBench());
  ProgressBar& bar = strip.on.Panels().downLoad.prgDownload;
  EXPECT_FALSE(strip.Bar("statusTransfer").isVisible());
  bar.SetMax(50);
  bar.SetValue(20);
  bar.SetVisible(true);
  EXPECT_TRUE(strip.Bar("statusTransfer").isVisible());
  EXPECT_EQ(strip.Bar("statusTransfer").text(), "Transfer 20 of 50");
  bar.SetVisible(false);
  EXPECT_FALSE(strip.Bar("statusTransfer").isVisible());
}

TEST(StatusStrip, LongWaysToTheInstrumentsWidenNoWindow) {
  Surroundings bench;
  bench.devices = {"/dev/serial/by-id/usb-A_Maker_of_Adapters_Two_Lines_to_Serial_FT4711-if01-port0", "", "", ""};
  bench.instruments = "GPIB native";
  for (const char* address : {"1", "5", "7"}) {
    bench.instruments +=
        ", " + std::string(address) + " by tcp:gateway-of-the-third-line.production.example.org:5025";
  }
  Strip strip(bench);
  strip.on.TakeTargetThrough();
  strip.strip.Look();
  strip.on.Panels().downLoad.prgDownload.SetVisible(true);
  strip.strip.Look();
  EXPECT_LE(strip.strip.minimumSizeHint().width(), 1270);

  strip.strip.resize(1270, strip.strip.sizeHint().height());
  strip.strip.grab();
  auto* place = strip.strip.findChild<QLabel*>("statusPlace");
  EXPECT_EQ(place->toolTip(), place->text()) << "the whole of it is in its tip";
  const auto* stage = strip.strip.findChild<QLabel*>("statusStage");
  EXPECT_EQ(stage->text(), "Ended: PASS");
  EXPECT_GE(stage->width(), stage->fontMetrics().horizontalAdvance(stage->text()));
}

TEST(StatusStrip, AReplyThatTakesLongIsTold) {
  Strip strip(VirtualBench());
  strip.on.bench.Serial().Open();
  strip.on.State().reply.ReplyDone = false;
  EXPECT_EQ(strip.Text("statusLink"), "\u25cf Port open");
  for (int look = 0; look < 4; ++look) strip.strip.Look();
  EXPECT_EQ(strip.Text("statusLink"), "\u2026 Waiting for a reply");
}

}  // namespace
}  // namespace orvane
