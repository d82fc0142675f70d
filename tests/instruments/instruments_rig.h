#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "instruments/test_set_by_hand.h"
#include "instruments/test_set_session.h"
#include "support/rig.h"

namespace orvane::test {

/// The operations on the test set in front of the fakes.
struct InstrumentsRig : Rig {
  InstrumentsRig() {
    session.Connect();
    byHand.Connect();
  }

  /// The instrument at the panel's default address.
  FakeInstrument& Instrument() { return bus.At(1); }
  void Select(std::string_view kind) { main.cboInstrumentList.SetText(kind); }
  [[nodiscard]] const std::string& Shown() const { return main.txtResults.Text(); }

  OrvaneMain& main = panels.main;
  TestSetSession session{main, CWGPIB1, state.testSet, state.reply, console, boxes};
  TestSetByHand byHand{main, testSet, console, boxes};
};

inline void ExpectWarning(const Box& box, const std::string& text) {
  EXPECT_EQ(box.text, text);
  EXPECT_EQ(box.title, "Warning");
  EXPECT_EQ(box.icon, BoxIcon::Stop);
  EXPECT_EQ(box.buttons, std::vector<BoxButton>{BoxButton::Ok});
}

inline void ExpectAlarm(const Box& box, const std::string& text) {
  EXPECT_EQ(box.text, text);
  EXPECT_EQ(box.title, "Alarm");
  EXPECT_EQ(box.icon, BoxIcon::Information);
}

}  // namespace orvane::test
