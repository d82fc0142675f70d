#include "app/windows/desk_windows.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

#include "adapters/qt_event_loop.h"
#include "windows/windows_test.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

/// Boxes and dialogs in real time, with somebody who acts while they lie open.
class DeskWindowsTest : public testing::Test {
 protected:
  /// `act` is done to the topmost dialog of that kind; a second act comes only when the first one left it open.
  template <class Dialog>
  void WhileOpen(std::function<void(Dialog&)> act) {
    loop_.PostAt(loop_.Now() + 5ms, [this, act = std::move(act)] {
      auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      act(*dialog);
    });
    // A box that nobody answers would hang the test.
    loop_.PostAt(loop_.Now() + 3s, [this] {
      if (!desk_.OpenBoxes().empty()) desk_.Press(desk_.OpenBoxes().back().id, "Cancel");
      if (!desk_.OpenDialogs().empty()) desk_.Choose(desk_.OpenDialogs().back().id, std::nullopt);
    });
  }
  static QPushButton& ButtonOf(QMessageBox& box, const QString& caption) {
    for (auto* button : box.findChildren<QPushButton*>()) {
      if (button->text().remove(u'&') == caption) return *button;
    }
    throw std::runtime_error("no button " + caption.toStdString());
  }

  QtEventLoop loop_;
  Desk desk_{loop_, "/tmp"};
  DeskWindows windows_{loop_, desk_};
};

const Box kQuestion{
    "Overwrite?\r\nIt exists.", "ORVANE", BoxIcon::Question, {BoxButton::Yes, BoxButton::No, BoxButton::Cancel}};

TEST_F(DeskWindowsTest, ABoxShowsItsTextTitleIconAndButtons) {
  WhileOpen<QMessageBox>([](QMessageBox& box) {
    EXPECT_EQ(box.text(), "Overwrite?\nIt exists.");
    EXPECT_EQ(box.windowTitle(), "ORVANE");
    EXPECT_EQ(box.icon(), QMessageBox::Question);
    EXPECT_EQ(box.buttons().size(), 3);
    EXPECT_EQ(box.windowModality(), Qt::ApplicationModal);
    EXPECT_TRUE(box.windowFlags().testFlag(Qt::WindowStaysOnTopHint)) << "a verdict stands there too";
    QTest::mouseClick(&ButtonOf(box, "No"), Qt::LeftButton);
  });
  EXPECT_EQ(desk_.Show(kQuestion), BoxButton::No);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(DeskWindowsTest, ABoxOfAnyTextFitsOnTheScreen) {
  std::string lines;
  std::string words;
  for (int i = 0; i < 1000; ++i) {
    lines += "line " + std::to_string(i) + "\r\n";
    words += "word ";
  }
  for (const std::string& text : {lines, words, std::string(5000, '8')}) {
    WhileOpen<QMessageBox>([&text](QMessageBox& box) {
      const QSize room = box.screen()->availableSize();
      EXPECT_LE(box.width(), room.width()) << text.substr(0, 20);
      EXPECT_LE(box.height(), 680) << text.substr(0, 20);
      EXPECT_TRUE(box.rect().contains(ButtonOf(box, "OK").geometry())) << text.substr(0, 20);
      EXPECT_LE(box.minimumSizeHint().width(), room.width()) << "nothing is clipped";
      EXPECT_TRUE(box.text().endsWith(u'\u2026'));
      QTest::keyClick(&box, Qt::Key_Return);
    });
    EXPECT_EQ(desk_.Show({text}), BoxButton::Ok);
  }
}

TEST_F(DeskWindowsTest, APathThatIsLongerThanALineIsReadWhole) {
  const std::string path = "/" + std::string(200, 'p') + "/RFParams.epm";
  WhileOpen<QMessageBox>([&path](QMessageBox& box) {
    EXPECT_EQ(box.text().remove(u'\n').toStdString(), "File not found: " + path);
    EXPECT_LE(box.minimumSizeHint().width(), box.screen()->availableSize().width());
    QTest::keyClick(&box, Qt::Key_Return);
  });
  EXPECT_EQ(desk_.Show({"File not found: " + path}), BoxButton::Ok);
}

TEST_F(DeskWindowsTest, AFileDialogWhoseFolderIsGoneOpensAnother) {
  FileDialog dialog{"Open", "(*.dat)|*.dat", "DAT", "/no/such/folder/unit7.dat", "/no/such/folder"};
  WhileOpen<QFileDialog>([](QFileDialog& chooser) {
    EXPECT_TRUE(chooser.directory().exists());
    EXPECT_EQ(chooser.findChild<QLineEdit*>()->text(), "unit7.dat");
    QTest::keyClick(&chooser, Qt::Key_Escape);
  });
  EXPECT_EQ(desk_.ShowOpen(dialog), std::nullopt);
}

TEST_F(DeskWindowsTest, EnterPressesTheFirstButton) {
  WhileOpen<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
  EXPECT_EQ(desk_.Show(kQuestion), BoxButton::Yes);
}

TEST_F(DeskWindowsTest, EscapePressesCancel) {
  WhileOpen<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
  EXPECT_EQ(desk_.Show(kQuestion), BoxButton::Cancel);
}

TEST_F(DeskWindowsTest, EscapePressesTheOnlyButton) {
  WhileOpen<QMessageBox>([](QMessageBox& box) {
    EXPECT_EQ(box.icon(), QMessageBox::Critical);
    QTest::keyClick(&box, Qt::Key_Escape);
  });
  EXPECT_EQ(desk_.Show({"Target No Response !!", "Warning", BoxIcon::Stop}), BoxButton::Ok);
}

TEST_F(DeskWindowsTest, EscapeLeavesAQuestionWithoutCancelOpen) {
  WhileOpen<QMessageBox>([this](QMessageBox& box) {
    QTest::keyClick(&box, Qt::Key_Escape);
    loop_.PostAt(loop_.Now() + 20ms, [&box] {
      EXPECT_TRUE(box.isVisible());
      QTest::mouseClick(&ButtonOf(box, "No"), Qt::LeftButton);
    });
  });
  EXPECT_EQ(desk_.Show({"Sure?", "ORVANE", BoxIcon::Question, {BoxButton::Yes, BoxButton::No}}), BoxButton::No);
}

TEST_F(DeskWindowsTest, ABoxAnsweredByAnotherFrontEndGoes) {
  loop_.PostAt(loop_.Now() + 5ms, [this] { desk_.Press(desk_.OpenBoxes().back().id, "OK"); });
  EXPECT_EQ(desk_.Show({"Done"}), BoxButton::Ok);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(DeskWindowsTest, BoxesNest) {
  WhileOpen<QMessageBox>([this](QMessageBox& lower) {
    WhileOpen<QMessageBox>([](QMessageBox& upper) { QTest::keyClick(&upper, Qt::Key_Return); });
    EXPECT_EQ(desk_.Show({"upper"}), BoxButton::Ok);
    EXPECT_TRUE(lower.isVisible());
    QTest::mouseClick(&ButtonOf(lower, "No"), Qt::LeftButton);
  });
  EXPECT_EQ(desk_.Show(kQuestion), BoxButton::No);
}

TEST_F(DeskWindowsTest, AFileDialogGivesThePathWithTheDialogsExtension) {
  const QTemporaryDir folder;
  FileDialog dialog{"Save", "(*.dat)|*.dat|All Files (*.*)|*.*;", "DAT", "", folder.path().toStdString()};
  WhileOpen<QFileDialog>([](QFileDialog& chooser) {
    EXPECT_EQ(chooser.windowTitle(), "Save");
    EXPECT_EQ(chooser.acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(chooser.nameFilters(), QStringList({"(*.dat) (*.dat)", "All Files (*.*) (*)"}));
    auto* name = chooser.findChild<QLineEdit*>();
    name->setText("unit7");
    QTest::keyClick(name, Qt::Key_Return);
  });
  EXPECT_EQ(desk_.ShowSave(dialog), folder.path().toStdString() + "/unit7.DAT");
}

TEST_F(DeskWindowsTest, ACancelledFileDialogGivesNoPath) {
  FileDialog dialog{"Open", "(*.dat)|*.dat", "DAT", "", ""};
  WhileOpen<QFileDialog>([](QFileDialog& chooser) {
    EXPECT_EQ(chooser.acceptMode(), QFileDialog::AcceptOpen);
    QTest::keyClick(&chooser, Qt::Key_Escape);
  });
  EXPECT_EQ(desk_.ShowOpen(dialog), std::nullopt);
}

TEST_F(DeskWindowsTest, FiltersWithAnOddEndAreTakenAsFarAsTheyGo) {
  EXPECT_EQ(NameFilters(""), QStringList());
  EXPECT_EQ(NameFilters("(*.xls)|*.xls|All File"), QStringList({"(*.xls) (*.xls)"}));
  EXPECT_EQ(NameFilters("(*.epm)|*.epm|(*.txt)|*.txt|All Files(*.*)|*.*;"),
            QStringList({"(*.epm) (*.epm)", "(*.txt) (*.txt)", "All Files(*.*) (*)"}));
}

}  // namespace
}  // namespace orvane::test
