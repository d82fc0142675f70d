#include "platform/input_filter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/text.h"
#include "platform/panel.h"
#include "support/fake_desk.h"

namespace orvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(InputRule, RefusesEveryAsciiCharacterThatIsNotAllowed) {
  const InputRule digits{""};
  const InputRule decimals{"-."};
  for (char32_t c = 0; c < 128; ++c) {
    const std::string text = "1" + EncodeUtf8(std::u32string(1, c));
    const bool digit = c >= '0' && c <= '9';
    const bool printable = c >= 32 && c <= 126;
    EXPECT_EQ(HoldsRefused(text, digits), printable && !digit) << static_cast<int>(c);
    EXPECT_EQ(HoldsRefused(text, decimals), printable && !digit && c != '-' && c != '.') << static_cast<int>(c);
  }
}

TEST(InputRule, RefusesThe51HangulLettersAndNoOtherWideCharacter) {
  int refused = 0;
  for (char32_t c = 128; c < 0x10000; ++c) {
    if (c >= 0xD800 && c < 0xE000) continue;
    const std::string text = EncodeUtf8(std::u32string(1, c));
    const bool letter = c >= 0x3131 && c <= 0x3163;
    EXPECT_EQ(HoldsRefused(text, {""}), letter) << static_cast<int>(c);
    EXPECT_FALSE(HoldsRefused(text, {"", false})) << static_cast<int>(c);
    refused += letter ? 1 : 0;
  }
  EXPECT_EQ(refused, 51);
}

struct Boxed : Panel {
  Boxed() : Panel("frm", "") {}
  TextBox txt{*this, "txt", "67"};
  ComboBox cbo{*this, "cbo", "CW", {"CW", "BCHTCH"}};
};

class FilterTest : public testing::Test {
 protected:
  FilterTest() {
    panel_.txt.onChange = [this] { FilterInput(panel_.txt, {"-."}, "699", boxes_); };
    panel_.cbo.onChange = [this] { FilterItem(panel_.cbo, panel_.cbo.Items(), "CW", boxes_); };
  }
  test::Journal journal_;
  test::FakeBoxes boxes_{journal_};
  Boxed panel_;
};

TEST_F(FilterTest, ARefusedCharacterResetsTheBoxToItsResetText) {
  panel_.txt.SetText("6a");
  EXPECT_EQ(panel_.txt.Text(), "699");
  EXPECT_THAT(boxes_.Texts(), ElementsAre("Input the number without blank."));
  EXPECT_EQ(boxes_.shown[0].title, "Warning");
  EXPECT_EQ(boxes_.shown[0].icon, BoxIcon::Stop);
}

TEST_F(FilterTest, AnAllowedTextAndAnEmptyOnePass) {
  for (const char* text : {"-5.2", "", "--", "7"}) {
    panel_.txt.SetText(text);
    EXPECT_EQ(panel_.txt.Text(), text);
  }
  EXPECT_THAT(boxes_.shown, IsEmpty());
}

TEST_F(FilterTest, ATextOutsideTheListIsResetAndAnEntryIsNot) {
  panel_.cbo.SetText("cw");
  EXPECT_EQ(panel_.cbo.Text(), "CW");
  EXPECT_THAT(boxes_.Texts(), ElementsAre("Input the Item in the List."));
  panel_.cbo.SetText("BCHTCH");
  EXPECT_EQ(panel_.cbo.Text(), "BCHTCH");
  EXPECT_EQ(boxes_.shown.size(), 1U);
}

}  // namespace
}  // namespace orvane
