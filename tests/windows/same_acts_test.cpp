#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QToolButton>
#include <algorithm>

#include "base/text.h"
#include "windows/windows_test.h"

namespace orvane::test {
namespace {

template <class Kind>
Kind* As(Control& control) {
  return dynamic_cast<Kind*>(&control);
}

/// What stands in a control.
std::string ContentOf(Control& control) {
  if (auto* box = As<TextBox>(control)) return box->Text();
  if (auto* combo = As<ComboBox>(control)) return combo->Text() + " of " + std::to_string(combo->Items().size());
  if (auto* captioned = As<CaptionedControl>(control)) {
    std::string content = captioned->Caption();
    if (auto* option = As<OptionButton>(control)) content += option->Selected() ? " on" : " off";
    if (auto* check = As<CheckBox>(control)) content += check->Checked() ? " on" : " off";
    return content;
  }
  if (auto* upDown = As<UpDown>(control)) {
    return std::to_string(upDown->Min()) + ".." + std::to_string(upDown->Max()) + ": " +
           std::to_string(upDown->Value());
  }
  if (auto* tabs = As<TabControl>(control)) return std::to_string(tabs->Selected());
  if (auto* progress = As<ProgressBar>(control)) return std::to_string(progress->Value());
  std::string content;
  if (auto* list = As<ListBox>(control)) {
    for (const auto& item : list->Items()) content += item + "/";
  }
  return content;
}

/// Everything that an operator can see of a station, a control a line.
std::string Seen(VirtualStation& station) {
  std::string seen;
  for (Panel* panel : station.Panels().All()) {
    seen += panel->Name() + " " + panel->Caption() + (panel->Visible() ? " shown\n" : " hidden\n");
    for (Control* control : panel->Controls()) {
      seen += panel->Name() + "." + control->Name() + (control->Enabled() ? " " : " disabled ") +
              (control->Visible() ? "" : "hidden ") + std::to_string(control->ForeColor()) + " " +
              std::to_string(control->BackColor()) + " " + ContentOf(*control) + "\n";
    }
  }
  for (const Box& box : station.boxes.shown) seen += box.title + ": " + box.text + "\n";
  return seen;
}

/// The first line that differs, of each; empty when none does.
std::string Difference(const std::string& left, const std::string& right) {
  if (left == right) return "";
  const auto at = static_cast<std::size_t>(std::mismatch(left.begin(), left.end(), right.begin(), right.end()).first -
                                           left.begin());
  const auto lineAt = [at](const std::string& text) {
    const std::size_t start = text.rfind('\n', at == 0 ? 0 : at - 1) + 1;
    return text.substr(start, text.find('\n', at) - start);
  };
  return lineAt(left) + "\n" + lineAt(right);
}

/// Two equal stations: one is acted upon by mouse and keys, the other one as the automation port acts.
class Twins {
 public:
  void Show(std::size_t panel) {
    windowed_.on.station.Nest().Run([&] { Left(panel).Show(); });
    plain_.station.Nest().Run([&] { Right(panel).Show(); });
    windowed_.WindowOf(Left(panel)).FollowPanel();
  }

  /// Acts on each control of the panel in every way that its kind has.
  void ActOnAll(std::size_t panel) {
    for (std::size_t i = 0; i < Left(panel).Controls().size(); ++i) {
      control_ = Left(panel).Controls()[i];
      twin_ = Right(panel).Controls()[i];
      BringToView();
      ActInEveryWay();
      if (testing::Test::HasFailure()) return;
    }
  }
  [[nodiscard]] int Acts() const { return acts_; }

 private:
  static constexpr const char* kHangulLetter = "\xE3\x84\xB1";

  Panel& Left(std::size_t panel) { return *windowed_.on.Panels().All()[panel]; }
  Panel& Right(std::size_t panel) { return *plain_.Panels().All()[panel]; }

  /// Goes to the tab where the control lies.
  void BringToView() {
    QWidget* page = windowed_.WindowOf(control_->Owner()).findChild<QWidget*>(ToQt(control_->Name()));
    for (; page != nullptr; page = page->parentWidget()) {
      auto* tabs =
          page->parentWidget() != nullptr ? qobject_cast<QTabWidget*>(page->parentWidget()->parentWidget()) : nullptr;
      if (tabs == nullptr) continue;
      const int index = tabs->indexOf(page);
      for (Panel* panel : {&control_->Owner(), &twin_->Owner()}) {
        if (auto* model = dynamic_cast<TabControl*>(panel->Find(tabs->objectName().toStdString())))
          model->Select(index);
      }
    }
  }

  void Both(const std::string& what, const std::function<void(QWidget&)>& byWidget,
            const std::function<void()>& byHand) {
    SCOPED_TRACE(control_->Owner().Name() + "." + control_->Name() + ": " + what);
    ++acts_;
    QWidget& widget = windowed_.Of(*control_);
    const bool seen = widget.isVisible();
    bool leftEnded = false;
    bool rightEnded = false;
    try {
      if (seen) byWidget(widget);
      windowed_.Settle();
    } catch (const StationEnded&) {
      leftEnded = true;
    }
    try {
      if (seen) byHand();
      plain_.loop.Yield(plain_.loop.Now());
    } catch (const ControlDisabled&) {
      EXPECT_FALSE(widget.isEnabled());
    } catch (const StationEnded&) {
      rightEnded = true;
    }
    EXPECT_EQ(leftEnded, rightEnded);
    ASSERT_EQ(Difference(Seen(windowed_.on), Seen(plain_)), "");
    ASSERT_EQ(windowed_.on.journal.Lines(), plain_.journal.Lines());
  }

  void ActInEveryWay() {
    if (As<Button>(*control_) != nullptr) {
      Both("click", &Press, [this] { plain_.op.Click(*As<Button>(*twin_)); });
    } else if (As<CheckBox>(*control_) != nullptr) {
      for (int i = 0; i < 2; ++i) {
        Both("click", &Press, [this] { plain_.op.Check(*As<CheckBox>(*twin_), !As<CheckBox>(*twin_)->Checked()); });
      }
    } else if (As<OptionButton>(*control_) != nullptr) {
      Both("click", &Press, [this] { plain_.op.Select(*As<OptionButton>(*twin_)); });
    } else if (As<UpDown>(*control_) != nullptr) {
      for (const int steps : {1, -1, -1}) {
        Both(
            "step", [&](QWidget& w) { Press(*w.findChild<QToolButton*>(steps > 0 ? "up" : "down")); },
            [&] { plain_.op.Step(*As<UpDown>(*twin_), steps); });
      }
    } else if (As<TextBox>(*control_) != nullptr) {
      TypeInEveryWay();
    } else if (auto* combo = As<ComboBox>(*control_)) {
      ChooseInEveryWay(*combo);
    }
  }

  void TypeInEveryWay() {
    for (const char* character : {"7", " ", "x", kHangulLetter, "-", "."}) {
      Both(
          "key " + std::string(character),
          [&](QWidget& w) {
            MoveToEnd(w);
            QTest::sendKeyEvent(QTest::Click, &w, Qt::Key_unknown, QString::fromUtf8(character), Qt::NoModifier);
          },
          [&] { plain_.op.Key(*As<TextBox>(*twin_), DecodeUtf8(character).front()); });
    }
    Both(
        "backspace",
        [&](QWidget& w) {
          MoveToEnd(w);
          QTest::keyClick(&w, Qt::Key_Backspace);
        },
        [&] { plain_.op.Key(*As<TextBox>(*twin_), 8); });
    if (windowed_.Of<QWidget>(*control_).inherits("QPlainTextEdit")) return;
    Both(
        "enter", [](QWidget& w) { QTest::keyClick(&w, Qt::Key_Return); },
        [&] { plain_.op.Key(*As<TextBox>(*twin_), 13); });
    Both(
        "mouse", [](QWidget& w) { QTest::mouseClick(&w, Qt::LeftButton); },
        [&] { plain_.op.Click(*As<TextBox>(*twin_)); });
    Both(
        "leave", [](QWidget& w) { w.clearFocus(); }, [&] { plain_.op.Leave(*As<TextBox>(*twin_)); });
  }

  void ChooseInEveryWay(ComboBox& combo) {
    for (std::size_t entry = 0; entry < std::min<std::size_t>(combo.Items().size(), 4); ++entry) {
      Both(
          "pick",
          [&](QWidget& w) {
            auto& box = static_cast<QComboBox&>(w);
            box.setCurrentIndex(static_cast<int>(entry));
            emit box.activated(static_cast<int>(entry));
          },
          [&] { plain_.op.Pick(*As<ComboBox>(*twin_), entry); });
    }
    Both(
        "type",
        [&](QWidget& w) {
          auto& line = *static_cast<QComboBox&>(w).lineEdit();
          line.end(false);
          QTest::keyClick(&line, Qt::Key_9);
        },
        [&] { plain_.op.Key(*As<ComboBox>(*twin_), U'9'); });
  }

  static void Press(QWidget& widget) {
    const QPoint onMark(widget.height() / 2, widget.height() / 2);
    QTest::mouseClick(&widget, Qt::LeftButton, Qt::NoModifier, onMark);
  }
  static void MoveToEnd(QWidget& widget) {
    if (auto* line = qobject_cast<QLineEdit*>(&widget)) line->end(false);
    if (auto* text = qobject_cast<QPlainTextEdit*>(&widget)) text->moveCursor(QTextCursor::End);
  }

  WindowedStation windowed_;
  VirtualStation plain_;
  Control* control_ = nullptr;
  Control* twin_ = nullptr;
  int acts_ = 0;
};

class EveryPanel : public testing::TestWithParam<std::size_t> {};

TEST_P(EveryPanel, DoesByMouseAndKeysWhatItDoesByTheAutomationPort) {
  Twins twins;
  twins.Show(GetParam());
  twins.ActOnAll(GetParam());
  EXPECT_GT(twins.Acts(), 0);
}

INSTANTIATE_TEST_SUITE_P(Windows, EveryPanel, testing::Range<std::size_t>(0, 10), [](const auto& panel) {
  StationPanels panels;
  return panels.All()[panel.param]->Name();
});

}  // namespace
}  // namespace orvane::test
