#include "platform/files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/failure.h"
#include "platform/save_dialog.h"
#include "support/fake_desk.h"
#include "support/memory_files.h"

namespace orvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST(LinesOf, EndsALineAtALineFeedWithOrWithoutACarriageReturn) {
  EXPECT_THAT(LinesOf("a\r\nb\nc"), ElementsAre("a", "b", "c"));
  EXPECT_THAT(LinesOf("a\r\n\r\n\nb\r\n"), ElementsAre("a", "", "", "b"));
  EXPECT_THAT(LinesOf("a\rb\r\n"), ElementsAre("a\rb"));
  EXPECT_THAT(LinesOf(""), IsEmpty());
}

TEST(FileNames, ComeApartAtTheLastSlash) {
  EXPECT_EQ(FileNameOf("/home/user/a.epm"), "a.epm");
  EXPECT_EQ(FileNameOf("a.epm"), "a.epm");
  EXPECT_EQ(FolderOf("/home/user/a.epm"), "/home/user");
  EXPECT_EQ(FolderOf("/a.epm"), "/");
  EXPECT_EQ(FolderOf("a.epm"), "");
}

TEST(SideFile, TakesFourCharactersOfTheNameAndNoneOfTheFolder) {
  EXPECT_EQ(SideFileOf("/home/a.pwr"), "/home/a.xls");
  EXPECT_EQ(SideFileOf("/home/a.init"), "/home/a..xls");
  EXPECT_EQ(SideFileOf("abcd"), ".xls");
  EXPECT_EQ(SideFileOf("/home/abc"), std::nullopt);
}

TEST(SideFile, CountsTheCharactersOfANameAndNotItsBytes) {
  EXPECT_EQ(SideFileOf("/home/\xEA\xB0\x80.pwr"), "/home/\xEA\xB0\x80.xls");
  EXPECT_EQ(SideFileOf("/home/abc\xEA\xB0\x80"), "/home/.xls") << "four characters, six bytes";
  EXPECT_EQ(SideFileOf("/home/a\xEA\xB0\x80"), std::nullopt) << "two characters, four bytes";
}

TEST(Records, Are128BytesEachCountedFromOne) {
  test::MemoryFiles files;
  files.content["/t.dat"] = RecordOf("one") + RecordOf("two") + "part";
  const auto file = files.OpenForReading("/t.dat", kLargestRecordFile);
  EXPECT_EQ(ReadRecord(*file, 1, 3), "one" + std::string(125, '\0'));
  EXPECT_EQ(ReadRecord(*file, 2, 128).substr(0, 3), "two");
  EXPECT_EQ(ReadRecord(*file, 3, 4), "part") << "the last record may be short";
  EXPECT_THROW((void)ReadRecord(*file, 3, 5), StationFailure);
  EXPECT_THROW((void)ReadRecord(*file, 4, 1), StationFailure);
  EXPECT_EQ(ReadWhole(*file).size(), 260U);
}

TEST(Records, ShowTheirDamage) {
  test::MemoryFiles files;
  const std::string whole = RecordOf("one") + RecordOf("two");
  const auto damageOf = [&](const std::string& content) {
    files.content["/t.dat"] = content;
    return DamageOfRecords(*files.OpenForReading("/t.dat", kLargestRecordFile), 2, Tail::None);
  };
  EXPECT_EQ(damageOf(whole), "");
  EXPECT_EQ(damageOf(""), "is 0 bytes long, not 256");
  EXPECT_EQ(damageOf(whole.substr(0, 255)), "is 255 bytes long, not 256");
  EXPECT_EQ(damageOf(whole + "x"), "is 257 bytes long, not 256");
  EXPECT_EQ(damageOf(std::string(256, '\0')), "holds nothing but zero bytes");
  EXPECT_EQ(damageOf(std::string(255, '\0') + "x"), "");
  files.unreadable.insert("/t.dat");
  EXPECT_EQ(damageOf(whole), "cannot be read: /t.dat: Input/output error");
}

class SaveNameTest : public testing::Test {
 protected:
  SaveName Choose() { return ChooseSaveName(dialogs_, dialog_, files_, boxes_, "Do you want to change with "); }

  test::Journal journal_;
  test::FakeBoxes boxes_{journal_};
  test::FakeDialogs dialogs_;
  test::MemoryFiles files_;
  FileDialog dialog_{"Save", "", "dat", "", "/start"};
};

TEST_F(SaveNameTest, ANewNameIsTakenWithoutAQuestion) {
  dialogs_.answers = {"/home/new.dat"};
  const SaveName name = Choose();
  EXPECT_TRUE(name.Chosen());
  EXPECT_EQ(name.path, "/home/new.dat");
  EXPECT_THAT(boxes_.shown, IsEmpty());
  EXPECT_EQ(dialog_.initialFolder, "/home");
}

TEST_F(SaveNameTest, NoAnswerTouchesTheOldFile) {
  files_.content["/home/old.dat"] = "old";
  for (const BoxButton answer : {BoxButton::No, BoxButton::Yes}) {
    dialogs_.answers = {"/home/old.dat"};
    boxes_.answers = {answer};
    const SaveName name = Choose();
    EXPECT_TRUE(name.Chosen());
    EXPECT_EQ(name.old, answer == BoxButton::Yes ? OldFile::Goes : OldFile::IsOverlaid);
    EXPECT_EQ(files_.content["/home/old.dat"], "old");
  }
  EXPECT_THAT(boxes_.Texts(),
              ElementsAre("Do you want to change with /home/old.dat?", "Do you want to change with /home/old.dat?"));
  EXPECT_EQ(boxes_.shown[0].title, "ORVANE");
  EXPECT_EQ(boxes_.shown[0].icon, BoxIcon::Question);
}

TEST_F(SaveNameTest, CancelInTheQuestionShowsTheDialogAgainInTheFolderChosen) {
  files_.content["/home/old.dat"] = "old";
  dialogs_.answers = {"/home/old.dat", std::nullopt};
  boxes_.answers = {BoxButton::Cancel};
  const SaveName name = Choose();
  EXPECT_EQ(name.end, SaveName::End::Cancelled);
  EXPECT_EQ(name.path, "/home/old.dat");
  ASSERT_THAT(dialogs_.shown, SizeIs(2));
  EXPECT_EQ(dialogs_.shown[0].dialog.initialFolder, "/start");
  EXPECT_EQ(dialogs_.shown[1].dialog.initialFolder, "/home");
  EXPECT_TRUE(files_.Exists("/home/old.dat"));
}

TEST_F(SaveNameTest, CancelInTheDialogChoosesNothing) {
  dialogs_.answers = {std::nullopt};
  const SaveName name = Choose();
  EXPECT_EQ(name.end, SaveName::End::Cancelled);
  EXPECT_EQ(name.path, "");
  EXPECT_EQ(dialog_.initialFolder, "/start");
}

TEST_F(SaveNameTest, AFileThatCannotBeReplacedEndsItWithTheSystemsText) {
  files_.content["/home/old.dat"] = "old";
  files_.irreplaceable.insert("/home/old.dat");
  dialogs_.answers = {"/home/old.dat"};
  boxes_.answers = {BoxButton::Yes};
  const SaveName name = Choose();
  EXPECT_EQ(name.end, SaveName::End::Failed);
  EXPECT_EQ(boxes_.Texts().back(), "/home/old.dat: Permission denied");
  EXPECT_EQ(boxes_.shown.back().icon, BoxIcon::Exclamation);
}

}  // namespace
}  // namespace orvane
