#include "app/engineer/word_digest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvane::test {
namespace {

TEST(WordDigest, KnowsItsWordAndNoOther) {
  const std::string word = "열려라 sesame";
  const std::string digest = DigestOfWord(word);
  EXPECT_TRUE(IsWordOf(digest, word));
  for (const std::string& other : {std::string("열려라 sesam"), word + " ", std::string(), digest}) {
    EXPECT_FALSE(IsWordOf(digest, other)) << other;
  }
  EXPECT_THAT(digest, testing::StartsWith("$argon2id$v=19$m=65536,t=2,p=1$"));
  EXPECT_EQ(digest.find("sesame"), std::string::npos);
  EXPECT_NE(DigestOfWord(word), digest) << "nobody sees that two stations have one word";
}

TEST(WordDigest, KnowsADigestFromAnythingElse) {
  const std::string digest = DigestOfWord("sesame");
  EXPECT_TRUE(IsWordDigest(digest));
  std::string otherCost = digest;
  otherCost.replace(otherCost.find("m=65536"), 7, "m=8");
  std::string weaker = digest;
  weaker.replace(weaker.find("argon2id"), 8, "argon2i");
  for (const std::string& none :
       {std::string(), std::string("sesame"), digest.substr(0, digest.size() - 1) + "!",
        digest.substr(0, digest.rfind('$')), digest + "$x", "x" + digest, otherCost, weaker, std::string(1000, 'a'),
        std::string("$2b$12$KIXQ4S6b8oW1Jm1bJY0Q6e7q8c2c1m9wq8m7F6u7o3q1p2r3s4t5u"), std::string(64, 'a')}) {
    EXPECT_FALSE(IsWordDigest(none)) << none;
  }
}

TEST(WordDigest, AWordIsForgottenWhereItStood) {
  std::string word = "sesame, and something long enough to lie on the heap";
  const char* const place = word.data();
  const std::size_t size = word.size();
  Forget(word);
  EXPECT_EQ(word, "");
  ASSERT_EQ(word.data(), place);
  EXPECT_EQ(std::string(place, size), std::string(size, '\0'));
}

}  // namespace
}  // namespace orvane::test
