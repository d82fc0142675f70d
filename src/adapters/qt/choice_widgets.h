#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>

#include "adapters/qt/appearance.h"
#include "adapters/qt/hands.h"
#include "platform/controls.h"

namespace orvane {

/// Each of these shows its control and lets an operator act on it; what it shows comes from the control alone.
[[nodiscard]] QPushButton* MakeButton(Button& button, Hands& hands, Mnemonics& letters, QWidget* parent);
[[nodiscard]] QRadioButton* MakeOption(OptionButton& option, Hands& hands, Mnemonics& letters, QWidget* parent);
[[nodiscard]] QCheckBox* MakeCheckBox(CheckBox& box, Hands& hands, Mnemonics& letters, QWidget* parent);
[[nodiscard]] QComboBox* MakeCombo(ComboBox& combo, Hands& hands, QWidget* parent);

}  // namespace orvane
