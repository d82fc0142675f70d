#include "adapters/qt/control_widgets.h"

#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QSvgRenderer>
#include <QSvgWidget>

#include "adapters/qt/choice_widgets.h"
#include "adapters/qt/entry_line.h"
#include "adapters/qt/entry_text.h"
#include "adapters/qt/lamp_widget.h"
#include "adapters/qt/list_widget.h"
#include "adapters/qt/pictures.h"
#include "adapters/qt/spoken_widgets.h"
#include "adapters/qt/up_down_widget.h"

namespace orvane {
namespace {

constexpr int kDefaultCharacters = 7;

void SetCharacters(QWidget& widget, int characters, int besides) {
  widget.setFixedWidth(widget.fontMetrics().horizontalAdvance(u'0') * characters + besides);
}

QWidget* MakeText(TextBox& box, const Layout& place, Hands& hands, QWidget* parent) {
  if (place.lines == 0) {
    auto* line = new EntryLine(box, hands, parent);
    if (place.fixedPitch) line->setFont(FixedPitchFont());
    if (place.stretch == 0) SetCharacters(*line, place.size == 0 ? kDefaultCharacters : place.size, 14);
    return line;
  }
  auto* text = new EntryText(box, hands, parent);
  if (place.fixedPitch) text->setFont(FixedPitchFont());
  text->setMinimumHeight(text->fontMetrics().lineSpacing() * place.lines + 12);
  if (place.size > 0) text->setMinimumWidth(text->fontMetrics().horizontalAdvance(u'0') * place.size + 30);
  return text;
}

QWidget* MakeComboBox(ComboBox& combo, const Layout& place, Hands& hands, QWidget* parent) {
  auto* widget = MakeCombo(combo, hands, parent);
  constexpr int kRoom = 8;
  if (place.size > 0) {
    SetCharacters(*widget, place.size, 36);
  } else {
    widget->setFixedWidth(widget->sizeHint().width() + kRoom);
  }
  return widget;
}

QWidget* MakePushButton(Button& button, const Layout& place, WindowContext& context, QWidget* parent) {
  auto* widget = MakeButton(button, context.hands, context.letters, parent);
  if (place.size > 0) widget->setMinimumWidth(widget->fontMetrics().horizontalAdvance(u'0') * place.size);
  return widget;
}

/// Sentences go on in the next line; a table's columns do not.
void WrapRows(QListView& list) {
  list.setUniformItemSizes(false);
  list.setWordWrap(true);
  list.setResizeMode(QListView::Adjust);
  list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

QWidget* MakeListBox(ListBox& list, const Layout& place, Hands& hands, QWidget* parent) {
  auto* widget = MakeList(list, hands, parent);
  if (place.fixedPitch) widget->setFont(FixedPitchFont());
  if (place.size > 0) widget->setMinimumWidth(widget->fontMetrics().horizontalAdvance(u'0') * place.size + 30);
  if (place.lines > 0) widget->setMinimumHeight(widget->fontMetrics().lineSpacing() * place.lines + 8);
  if (place.stretch > 0) return widget;
  // The toolkit would give any list the same height.
  widget->setMaximumHeight(widget->minimumHeight());
  if (!place.fixedPitch) WrapRows(*widget);
  return widget;
}

/// A caption as it is read: a doubled "&" is one, and no letter is marked.
QString ReadCaption(const CaptionedControl& control) { return ToQt(control.Caption()).replace("&&", "&"); }

QWidget* MakeLabel(Label& label, const Layout& place, QWidget* parent) {
  auto* widget = new QLabel(parent);
  widget->setWordWrap(place.lines > 0);
  widget->setTextFormat(Qt::PlainText);
  Follow(label, *widget, [&label, widget] { widget->setText(ReadCaption(label)); });
  return widget;
}

QWidget* MakeFrame(Frame& frame, QWidget* parent) {
  auto* widget = new QGroupBox(parent);
  Follow(frame, *widget, [&frame, widget] { widget->setTitle(ToQt(frame.Caption())); });
  return widget;
}

QWidget* MakeProgress(ProgressBar& progress, QWidget* parent) {
  auto* widget = new QProgressBar(parent);
  // A bar that comes up in a run moves nothing.
  QSizePolicy room = widget->sizePolicy();
  room.setRetainSizeWhenHidden(true);
  widget->setSizePolicy(room);
  Follow(progress, *widget, [&progress, widget] {
    widget->setRange(0, std::max<Long>(progress.Max(), 1));
    widget->setValue(progress.Value());
  });
  return widget;
}

QWidget* MakeTabs(TabControl& tabs, Hands& hands, QWidget* parent) {
  auto* widget = new QTabWidget(parent);
  const auto showPage = [&tabs, widget] {
    const QSignalBlocker quiet(widget);
    widget->setCurrentIndex(tabs.Selected());
  };
  Follow(tabs, *widget, showPage);
  QObject::connect(widget, &QTabWidget::currentChanged, widget, [&tabs, &hands, showPage](int page) {
    hands.Do([&tabs, page](Operator& hand) { hand.TurnTo(tabs, page); }, showPage);
  });
  return widget;
}

QWidget* MakePicture(Image& image, QWidget* parent) {
  auto* widget = new QSvgWidget(parent);
  TellAsPicture(*widget);
  Follow(image, *widget, [&image, widget] {
    widget->load(PictureNamed(image.Picture()));
    // Its name is what is written on it.
    widget->setAccessibleName(ToQt(image.Picture()).toUpper());
    widget->renderer()->setAspectRatioMode(Qt::KeepAspectRatio);
  });
  // Its word is to be read from three metres: more than a tenth of the height of a usual screen.
  widget->setMinimumSize(widget->renderer()->defaultSize() * 8 / 5);
  return widget;
}

}  // namespace

QWidget* MakeWidget(const Layout& place, WindowContext& context, QWidget* parent) {
  Control& control = *place.control;
  Hands& hands = context.hands;
  switch (control.Kind()) {
    case ControlKind::Button:
      return MakePushButton(static_cast<Button&>(control), place, context, parent);
    case ControlKind::Text:
      return MakeText(static_cast<TextBox&>(control), place, hands, parent);
    case ControlKind::Combo:
      return MakeComboBox(static_cast<ComboBox&>(control), place, hands, parent);
    case ControlKind::List:
      return MakeListBox(static_cast<ListBox&>(control), place, hands, parent);
    case ControlKind::Option:
      return MakeOption(static_cast<OptionButton&>(control), hands, context.letters, parent);
    case ControlKind::Check:
      return MakeCheckBox(static_cast<CheckBox&>(control), hands, context.letters, parent);
    case ControlKind::Label:
      return MakeLabel(static_cast<Label&>(control), place, parent);
    case ControlKind::Frame:
      return MakeFrame(static_cast<Frame&>(control), parent);
    case ControlKind::UpDown:
      return MakeUpDown(static_cast<UpDown&>(control), hands, nullptr, parent);
    case ControlKind::Lamp:
      return MakeLamp(static_cast<Lamp&>(control), parent);
    case ControlKind::Progress:
      return MakeProgress(static_cast<ProgressBar&>(control), parent);
    case ControlKind::Tab:
      return MakeTabs(static_cast<TabControl&>(control), hands, parent);
    case ControlKind::Image:
      return MakePicture(static_cast<Image&>(control), parent);
  }
  return nullptr;
}

}  // namespace orvane
