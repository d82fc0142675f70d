// What the page says beside the station's boxes.

#include "app/operator/box_advice.h"

#include <gtest/gtest.h>

namespace orvane::test {
namespace {

/// Each box that a whole run, its bring-up or its instruments can raise.
constexpr std::array kBoxesOfARun{
    "Target\xEC\x9D\x84 Power On \xED\x95\xB4 \xEC\xA3\xBC\xEC\x8B\xAD\xEC\x8B\x9C\xEC\x9A\x94",
    "Port is already Open.",
    "A serial number is needed.",
    "Initialize Power Supply at first.",
    "Initialize Power Supply.",
    "Initialize Test Set at first.",
    "Initialize the Test Set at first.",
    "Test set: there is no session. Initialize the instrument at first.",
    " GMagic is out of range. Re-try.",
    " 1> Auto Cal is not Completed. Re-try.",
    "Can't measure Power.",
    " Error in measuring Power.",
    " Auto Cal is not Completed. Re-try.",
    "Setting Time Slot is not Completed. Re-Start.",
    "GSM Rms Phase error.",
    "DCS Peak Phase error.",
    "Battery Calibration ERROR.",
    "Battery Calibraion ERROR.",
    "Battery Cal is not completed. Try again.",
    "The Target does not answer.",
    "The Target refuses to read its raw ADC.",
    "Target must be initialized at first.",
    "Initialize Loader.",
    "Tx CH CAL is not Completed. Re-Start.",
    "Do you want to finish Orvane?",
    "There is not Cable.loss in Windows\\System directory.",
    "Ramp Table is not Correct or not exists.",
    "No space left on device: /data/unit.epm",
    "The supply and the load are being switched off.",
    "The supply's output could not be made sure to be off: no connection: Connection refused. Switch it off by hand.",
    "COM1: the device is gone. Is it unplugged?",
    "Unable to open device\ribsta = &H8000\riberr = 2",
};

TEST(BoxAdvice, EveryBoxOfARunHasItsOwn) {
  for (const char* text : kBoxesOfARun) {
    EXPECT_TRUE(HasAdvice(text)) << text;
    EXPECT_FALSE(AdviceOn(text).means.isEmpty()) << text;
    EXPECT_FALSE(AdviceOn(text).toDo.isEmpty()) << text;
  }
}

TEST(BoxAdvice, ATextThatNobodyKnowsHasTheGeneralOne) {
  EXPECT_FALSE(HasAdvice("Something else."));
  EXPECT_FALSE(AdviceOn("Something else.").toDo.isEmpty());
}

TEST(BoxAdvice, TwoBoxesThatBeginAlikeAreKeptApart) {
  EXPECT_NE(AdviceOn(" 1> Auto Cal is not Completed. Re-try.").means,
            AdviceOn(" Auto Cal is not Completed. Re-try.").means);
}

}  // namespace
}  // namespace orvane::test
