#include "link/reply_checksum.h"

#include "link/link_rig.h"

namespace orvane::test {
namespace {

const std::string kSound = "02 14 00 31 00 00 00 01 00 3E 00 00 00 0E 02";

bool Bears(const std::string& hex) { return BearsItsChecksum(Deframe(Bytes(hex), ReplyLayout::Padded)); }

TEST(ReplyChecksum, IsTheExclusiveOrOfAllValuesBehindTheirPads) {
  EXPECT_TRUE(Bears("02 14 00 20 00 00 00 20 02"));
  EXPECT_TRUE(Bears(kSound));
  EXPECT_TRUE(Bears("02 14 00 31 00 00 00 01 01 3E 00 00 01 0E 02")) << "values of 80 and more";
  EXPECT_TRUE(Bears("02 14 00 31 00 00 10 00 02 10 00 10 00 00 00 23 02")) << "escapes";
  EXPECT_TRUE(Bears("55 55 02 14 00 20 00 00 00 20 02 55")) << "stray bytes around it are told otherwise";
}

TEST(ReplyChecksum, ADamagedOrMissingByteIsSeen) {
  EXPECT_FALSE(Bears("02 14 00 31 00 00 00 01 00 3F 00 00 00 0E 02"));
  EXPECT_FALSE(Bears("02 14 00 31 00 00 00 01 00 3E 00 00 0E 02"));
  EXPECT_FALSE(Bears("02 14 00 31 00 00 00 01 3E 00 00 00 0E 02"));
  EXPECT_FALSE(Bears("02 14 00 20 02"));
}

/// What the tally holds against a Target that gives these replies, one a command.
long DamagedOf(const std::vector<std::string>& replies) {
  LinkRig rig;
  for (const auto& reply : replies) rig.Exchange("rfpr 1", reply);
  return rig.tally.damagedReplies;
}

TEST(ReplyChecksum, OfATargetThatIsKnownToFormItSoTellsADamagedReply) {
  const std::string damaged = "02 14 00 31 00 00 00 01 00 3F 00 00 00 0E 02";
  EXPECT_EQ(DamagedOf({kSound, kSound, kSound, kSound, damaged, kSound, damaged}), 2);
  EXPECT_EQ(DamagedOf({kSound, damaged, kSound, kSound, kSound}), 0) << "not known yet";
  EXPECT_EQ(DamagedOf({kSound, damaged, kSound, kSound, kSound, kSound}), 1) << "told as soon as it is known";
}

TEST(ReplyChecksum, OfATargetThatFormsItOtherwiseIsNeverHeldAgainstIt) {
  const std::string other = "02 14 00 31 00 00 00 01 00 3E 00 00 00 55 02";
  EXPECT_EQ(DamagedOf({other, other, kSound, kSound, other, other, kSound, kSound, kSound, other}), 0);
}

TEST(ReplyChecksum, OfOneTargetIsNothingToTheNext) {
  const std::string damaged = "02 14 00 31 00 00 00 01 00 3F 00 00 00 0E 02";
  LinkRig rig;
  rig.Exchange("rfpr 1", damaged);
  rig.serial.Close();
  rig.link.OpenPort();
  for (int i = 0; i < 4; ++i) rig.Exchange("rfpr 1", kSound);
  EXPECT_EQ(rig.tally.damagedReplies, 0) << "it was the Target before whose reply came damaged";

  rig.serial.Close();
  rig.link.OpenPort();
  const std::string other = "02 14 00 31 00 00 00 01 00 3E 00 00 00 55 02";
  for (int i = 0; i < 4; ++i) rig.Exchange("rfpr 1", other);
  EXPECT_EQ(rig.tally.damagedReplies, 0) << "the next one forms its checksums otherwise";
}

TEST(ReplyChecksum, ChangesNothingAboutTheReplysValues) {
  LinkRig rig;
  for (int i = 0; i < 4; ++i) rig.Exchange("rfpr 1", kSound);
  rig.Exchange("rfpr 1", "02 14 00 31 00 00 00 01 00 3F 00 00 00 0E 02");
  EXPECT_THAT(rig.Shown(), testing::EndsWith("BCCH ARFCN = 63\r\n"));
  EXPECT_EQ(rig.link.Status(), 0);
  EXPECT_EQ(DoubtsBetween({}, rig.tally), "Exchanges with the Target: 1 with a damaged reply");
}

}  // namespace
}  // namespace orvane::test
