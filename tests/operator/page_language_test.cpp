// The page in Korean: every word of it.

#include "app/operator/page_language.h"

#include <gmock/gmock.h>

#include "app/operator/box_advice.h"
#include "operator/operator_rig.h"

namespace orvane::test {
namespace {

class InKorean : public testing::Test {
 protected:
  void SetUp() override { Speak(Language::Korean); }
  void TearDown() override { Speak(Language::English); }
};

/// Texts of the station's own, names and keys stay as they are.
bool IsKoreanOrNoWords(const QString& text) {
  const bool hasKorean =
      std::any_of(text.begin(), text.end(), [](QChar c) { return c.script() == QChar::Script_Hangul; });
  return hasKorean || std::none_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
}

TEST_F(InKorean, ThePageAndItsVerdictAre) {
  OperatorRig at;
  at.InitializeInstruments();
  at.Settle();
  at.Press(Qt::Key_Return);
  ASSERT_TRUE(at.UntilCovered());
  EXPECT_EQ(at.Text("verdictWord"), "합격");
  for (const QLabel* label : at.view->Page().findChildren<QLabel*>()) {
    if (label->objectName() == "station" || label->objectName().startsWith("lastUnit")) continue;
    EXPECT_TRUE(IsKoreanOrNoWords(label->text()))
        << label->objectName().toStdString() << ": " << label->text().toStdString();
  }
  for (const QPushButton* button : at.view->Page().findChildren<QPushButton*>()) {
    EXPECT_TRUE(IsKoreanOrNoWords(button->text())) << button->text().toStdString();
  }
}

TEST_F(InKorean, TheAdviceBesideABoxIsButNotTheBox) {
  const BoxAdvice advice = AdviceOn("Can't measure Power.");
  EXPECT_TRUE(IsKoreanOrNoWords(advice.means)) << advice.means.toStdString();
  EXPECT_TRUE(IsKoreanOrNoWords(advice.toDo)) << advice.toDo.toStdString();
}

TEST(PageLanguage, EnglishIsWhereNothingElseIsWished) {
  Speak(Language::English);
  EXPECT_EQ(AdviceOn("Can't measure Power.").means, "The test set sees no burst: FAIL follows.");
}

}  // namespace
}  // namespace orvane::test
