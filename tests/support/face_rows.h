#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/controls.h"
#include "platform/file_dialogs.h"
#include "platform/panel.h"

namespace orvane::test {

/// A control as its panel first shows it: the caption of a button, label, frame or option, the text of a box.
struct FaceRow {
  const char* name;
  ControlKind kind;
  std::string shown;
  bool visible = true;
};

/// What a control shows: its caption or its text; empty where it has neither.
inline std::string ShownIn(const Control& control) {
  if (const auto* captioned = dynamic_cast<const CaptionedControl*>(&control)) return captioned->Caption();
  if (const auto* text = dynamic_cast<const TextBox*>(&control)) return text->Text();
  if (const auto* combo = dynamic_cast<const ComboBox*>(&control)) return combo->Text();
  return "";
}

inline void ExpectFace(const Panel& panel, const std::vector<FaceRow>& rows) {
  for (const FaceRow& row : rows) {
    const Control* control = panel.Find(row.name);
    ASSERT_NE(control, nullptr) << row.name;
    EXPECT_EQ(control->Kind(), row.kind) << row.name;
    EXPECT_EQ(ShownIn(*control), row.shown) << row.name;
    EXPECT_TRUE(control->Enabled()) << row.name;
    EXPECT_EQ(control->Visible(), row.visible) << row.name;
    if (row.kind == ControlKind::Button || row.kind == ControlKind::Lamp) {
      EXPECT_EQ(control->BackColor(), kButtonFace) << row.name << " has a colour only once something happened";
    }
  }
}

/// An up-down of step 1, beside its box or with a value of its own.
inline void ExpectSpin(const UpDown& spin, const TextBox* box, Long min, Long max) {
  EXPECT_EQ(spin.Buddy(), box) << spin.Name();
  EXPECT_EQ(spin.Min(), min) << spin.Name();
  EXPECT_EQ(spin.Max(), max) << spin.Name();
  EXPECT_EQ(spin.Step(), 1) << spin.Name();
}

inline void ExpectDialog(const FileDialog& dialog, const std::string& title, const std::string& filter,
                         const std::string& defaultExtension) {
  EXPECT_EQ(dialog.title, title);
  EXPECT_EQ(dialog.filter, filter);
  EXPECT_EQ(dialog.defaultExtension, defaultExtension);
}

}  // namespace orvane::test
