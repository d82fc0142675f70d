#include "adapters/qt/choice_widgets.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QWheelEvent>
#include <memory>

namespace orvane {
namespace {

/// The caption of a control on its widget, with its letter.
template <class Captioned, class Widget>
std::function<void()> CaptionOf(Captioned& control, Widget& widget, Mnemonics& letters) {
  struct Shown {
    std::string caption;
    QChar letter;
  };
  return [&control, &widget, &letters, shown = std::make_shared<Shown>()] {
    if (!widget.text().isEmpty() && shown->caption == control.Caption()) return;
    shown->caption = control.Caption();
    widget.setText(letters.Mark(ToQt(control.Caption()), shown->letter));
  };
}

/// Enter picks nothing in a combo box, and the wheel turns it only where it has the focus: a box that was scrolled
/// over must not change.
class QuietCombo final : public QComboBox {
 public:
  explicit QuietCombo(QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    lineEdit()->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::KeyPress) {
      const int key = static_cast<QKeyEvent*>(event)->key();
      if (key == Qt::Key_Return || key == Qt::Key_Enter) return true;
    }
    return QComboBox::eventFilter(watched, event);
  }
  void wheelEvent(QWheelEvent* event) override {
    if (hasFocus()) {
      QComboBox::wheelEvent(event);
    } else {
      event->ignore();
    }
  }
};

}  // namespace

QPushButton* MakeButton(Button& button, Hands& hands, Mnemonics& letters, QWidget* parent) {
  auto* widget = new QPushButton(parent);
  widget->setAutoDefault(false);
  Follow(button, *widget, [&button, widget, showCaption = CaptionOf(button, *widget, letters)] {
    showCaption();
    widget->setToolTip(ToQt(button.DisabledWhy()));
  });
  QObject::connect(widget, &QPushButton::clicked, widget,
                   [&] { hands.Do([&](Operator& hand) { hand.Click(button); }); });
  return widget;
}

QRadioButton* MakeOption(OptionButton& option, Hands& hands, Mnemonics& letters, QWidget* parent) {
  auto* widget = new QRadioButton(parent);
  // Its group is the control's, not the widgets' around it.
  widget->setAutoExclusive(false);
  const auto showState = [&option, widget] { widget->setChecked(option.Selected()); };
  Follow(option, *widget, [showCaption = CaptionOf(option, *widget, letters), showState] {
    showCaption();
    showState();
  });
  QObject::connect(widget, &QRadioButton::clicked, widget, [&option, &hands, showState] {
    hands.Do([&option](Operator& hand) { hand.Select(option); }, showState);
  });
  return widget;
}

QCheckBox* MakeCheckBox(CheckBox& box, Hands& hands, Mnemonics& letters, QWidget* parent) {
  auto* widget = new QCheckBox(parent);
  const auto showState = [&box, widget] { widget->setChecked(box.Checked()); };
  Follow(box, *widget, [showCaption = CaptionOf(box, *widget, letters), showState] {
    showCaption();
    showState();
  });
  QObject::connect(widget, &QCheckBox::clicked, widget, [&box, &hands, showState] {
    hands.Do([&box](Operator& hand) { hand.Check(box, !box.Checked()); }, showState);
  });
  return widget;
}

QComboBox* MakeCombo(ComboBox& combo, Hands& hands, QWidget* parent) {
  auto* widget = new QuietCombo(parent);
  const auto showText = [&combo, widget] {
    const QSignalBlocker quiet(widget);
    if (static_cast<std::size_t>(widget->count()) != combo.Items().size()) {
      widget->clear();
      for (const std::string& item : combo.Items()) widget->addItem(ToQt(item));
    }
    if (widget->currentIndex() != combo.Selected()) widget->setCurrentIndex(combo.Selected());
    if (widget->currentText() != ToQt(combo.Text())) widget->setEditText(ToQt(combo.Text()));
  };
  Follow(combo, *widget, showText);
  QObject::connect(widget, &QComboBox::activated, widget, [&combo, &hands, showText](int index) {
    hands.Do([&combo, index](Operator& hand) { hand.Pick(combo, static_cast<std::size_t>(index)); }, showText);
  });
  QObject::connect(
      widget->lineEdit(), &QLineEdit::textEdited, widget, [&combo, &hands, showText](const QString& text) {
        hands.Do([&combo, typed = text.toStdString()](Operator& hand) { hand.Type(combo, typed); }, showText);
      });
  return widget;
}

}  // namespace orvane
