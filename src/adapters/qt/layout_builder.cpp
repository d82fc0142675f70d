#include "adapters/qt/layout_builder.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

#include "adapters/qt/fitting_area.h"
#include "adapters/qt/lamp_widget.h"
#include "adapters/qt/up_down_widget.h"
#include "platform/layout_captions.h"

namespace orvane {
namespace {

constexpr int kMargin = 8;
constexpr int kSpacing = 6;
constexpr int kLargePoints = 28;
/// What a window has on a small screen between its bars.
constexpr QSize kWindowRoom(1270, 650);

template <class BoxLayout>
BoxLayout* Bare(BoxLayout* layout) {
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(kSpacing);
  return layout;
}

void SetWeight(QWidget& widget, QFont::Weight weight) {
  QFont font = widget.font();
  font.setWeight(weight);
  widget.setFont(font);
}

void SetCharacters(QLabel& label, int characters) {
  label.setMinimumWidth(label.fontMetrics().horizontalAdvance(u'0') * characters);
}

/// What is left of that for a page: with its tab above it, a row of buttons below and the console beside it.
QSize PageRoom(const QWidget& page) {
  constexpr int kBeside = 404;
  return kWindowRoom - QSize(kBeside, 2 * kMargin + 4 * page.fontMetrics().height());
}

/// It would like to be `width` wide, but goes down to three quarters of it where there is less room.
void PlaceWide(QWidget& widget, int width, int stretch, QBoxLayout& into) {
  widget.setMinimumWidth(width * 3 / 4);
  auto* cell = Bare(new QGridLayout);
  cell->addWidget(&widget, 0, 0);
  cell->addItem(new QSpacerItem(width, 0, QSizePolicy::Preferred, QSizePolicy::Minimum), 0, 0);
  into.addLayout(cell, stretch);
}

/// What changes of what somebody hears of a control: of one with a caption that, of a lamp what it says.
std::function<QString()> ChangingWords(const Control& control) {
  if (const auto* captioned = dynamic_cast<const CaptionedControl*>(&control)) {
    return [captioned] { return ", " + ToQt(captioned->Caption()); };
  }
  if (const auto* lamp = dynamic_cast<const Lamp*>(&control)) {
    return [lamp] { return ": " + LampWords(*lamp); };
  }
  return nullptr;
}

/// What somebody hears of a control.
void Name(Control& control, QWidget& widget, const QString& spoken) {
  const auto words = ChangingWords(control);
  const auto name = [&widget, spoken, words] { widget.setAccessibleName(words ? spoken + words() : spoken); };
  name();
  if (words) control.changed.Connect(name);
  if (auto* combo = qobject_cast<QComboBox*>(&widget)) combo->lineEdit()->setAccessibleName(spoken);
}

QLabel* PlainText(const std::string& text, int characters, QWidget* parent) {
  auto* label = new QLabel(ToQt(text), parent);
  SetCharacters(*label, characters);
  return label;
}

class Builder {
 public:
  Builder(const Layout& layout, WindowContext& context, const ViewMaker& views)
      : context_(context), views_(views), spoken_(CaptionsBeside(layout)) {}

  void Place(const Layout& part, QBoxLayout& into, QWidget* parent);
  void ChainTabs() const {
    for (std::size_t i = 1; i < focusable_.size(); ++i) QWidget::setTabOrder(focusable_[i - 1], focusable_[i]);
  }

 private:
  QWidget* Single(const Layout& part, QWidget* parent);
  void PlaceControl(const Layout& place, QBoxLayout& into, QWidget* parent);
  void PlaceGrid(const Layout& layout, QGridLayout& grid, QWidget* parent);
  void PlaceView(const Layout& place, QBoxLayout& into, QWidget* parent);
  template <class Inner>
  [[nodiscard]] Inner& Nested(const Layout& part, QBoxLayout& into);
  void PlaceAll(const Layout& layout, QBoxLayout& into, QWidget* parent);
  void PlaceForm(const Layout& form, QGridLayout& grid, QWidget* parent);
  void PlaceGroup(const Layout& group, QBoxLayout& into, QWidget* parent);
  void PlaceTabs(const Layout& tabs, QBoxLayout& into, QWidget* parent);
  QWidget* Caption(const Layout& field, int characters, QWidget* parent);

  WindowContext& context_;
  const ViewMaker& views_;
  /// What somebody hears of a control who cannot see what stands beside it.
  const std::map<const Control*, std::string> spoken_;
  std::vector<QWidget*> focusable_;
};

QWidget* Builder::Single(const Layout& part, QWidget* parent) {
  QWidget* widget = MakeWidget(part, context_, parent);
  if (part.large || part.main) {
    QFont font = widget->font();
    if (part.large) font.setPointSize(kLargePoints);
    font.setBold(true);
    widget->setFont(font);
  }
  // A picture bears its own words.
  const auto spoken = part.control->Kind() == ControlKind::Image ? spoken_.end() : spoken_.find(part.control);
  if (spoken != spoken_.end()) {
    Name(*part.control, *widget, ToQt(spoken->second));
  }
  if (widget->focusPolicy() != Qt::NoFocus) focusable_.push_back(widget);
  return widget;
}

void Builder::PlaceAll(const Layout& layout, QBoxLayout& into, QWidget* parent) {
  for (const Layout& part : layout.parts) Place(part, into, parent);
}

QWidget* Builder::Caption(const Layout& field, int characters, QWidget* parent) {
  auto* caption = field.control != nullptr ? static_cast<QLabel*>(Single(Layout{.control = field.control}, parent))
                                           : PlainText(field.text, 0, parent);
  caption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  SetCharacters(*caption, characters);
  return caption;
}

void Builder::PlaceForm(const Layout& form, QGridLayout& grid, QWidget* parent) {
  for (int row = 0; const Layout& field : form.parts) {
    auto* cell = Bare(new QHBoxLayout);
    if (field.kind == Layout::Kind::Field) {
      grid.addWidget(Caption(field, form.size, parent), row, 0);
      PlaceAll(field, *cell, parent);
    } else {
      Place(field, *cell, parent);
    }
    cell->addStretch();
    grid.addLayout(cell, row++, 1);
  }
  grid.setColumnStretch(1, 1);
}

void Builder::PlaceGroup(const Layout& group, QBoxLayout& into, QWidget* parent) {
  QWidget* frame = group.control != nullptr ? MakeWidget(Layout{.control = group.control}, context_, parent)
                                            : new QGroupBox(ToQt(group.text), parent);
  SetWeight(*frame, QFont::DemiBold);
  auto* content = new QWidget(frame);
  SetWeight(*content, QFont::Normal);
  Bare(new QVBoxLayout(frame))->addWidget(content);
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(kMargin, kMargin / 2, kMargin, kMargin);
  column->setSpacing(kSpacing);
  PlaceAll(group, *column, content);
  into.addWidget(frame, group.stretch);
}

void Builder::PlaceTabs(const Layout& tabs, QBoxLayout& into, QWidget* parent) {
  auto* widget = static_cast<QTabWidget*>(Single(Layout{.control = tabs.control}, parent));
  const QSignalBlocker quiet(widget);
  const auto& control = static_cast<TabControl&>(*tabs.control);
  for (std::size_t page = 0; page < tabs.parts.size(); ++page) {
    auto* content = new QWidget(widget);
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kSpacing);
    Place(tabs.parts[page], *column, content);
    widget->addTab(new FittingArea(content, PageRoom(*content), widget), ToQt(control.Tabs().at(page)));
  }
  widget->setCurrentIndex(control.Selected());
  into.addWidget(widget, tabs.stretch);
}

void Builder::PlaceControl(const Layout& place, QBoxLayout& into, QWidget* parent) {
  QWidget* widget = Single(place, parent);
  if (place.lines > 0 && place.size > 0 && place.control->Kind() == ControlKind::Text) {
    return PlaceWide(*widget, widget->minimumWidth(), place.stretch, into);
  }
  if (place.upDown == nullptr) return into.addWidget(widget, place.stretch);
  auto* pair = Bare(new QHBoxLayout);
  pair->setSpacing(0);
  pair->addWidget(widget);
  QWidget* arrows = MakeUpDown(*place.upDown, context_.hands, widget, parent);
  for (auto* arrow : arrows->findChildren<QToolButton*>()) {
    arrow->setAccessibleName(widget->accessibleName() + u' ' + arrow->objectName());
  }
  pair->addWidget(arrows);
  into.addLayout(pair, place.stretch);
}

/// Texts and boxes stand at the left of their cells, all else fills them.
bool KeepsItsWidth(const Layout& cell) {
  if (cell.kind == Layout::Kind::Text || cell.kind == Layout::Kind::Field) return true;
  return cell.kind == Layout::Kind::Control && cell.control->Kind() != ControlKind::Button && cell.stretch == 0;
}

void Builder::PlaceGrid(const Layout& layout, QGridLayout& grid, QWidget* parent) {
  for (int index = 0; const Layout& part : layout.parts) {
    auto* cell = Bare(new QHBoxLayout);
    grid.addLayout(cell, index / layout.size, index % layout.size);
    grid.setColumnStretch(index % layout.size, 1);
    Place(part, *cell, parent);
    if (KeepsItsWidth(part)) cell->addStretch();
    ++index;
  }
}

void Builder::PlaceView(const Layout& place, QBoxLayout& into, QWidget* parent) {
  QWidget* view = views_ ? views_(place.text, parent) : nullptr;
  if (view == nullptr) return;
  view->setObjectName(ToQt(place.text));
  if (place.size == 0) return into.addWidget(view, place.stretch);
  PlaceWide(*view, view->fontMetrics().horizontalAdvance(u'0') * place.size, place.stretch, into);
}

template <class Inner>
Inner& Builder::Nested(const Layout& part, QBoxLayout& into) {
  auto* inner = Bare(new Inner);
  into.addLayout(inner, part.stretch);
  return *inner;
}

void Builder::Place(const Layout& part, QBoxLayout& into, QWidget* parent) {
  switch (part.kind) {
    case Layout::Kind::Control:
      return PlaceControl(part, into, parent);
    case Layout::Kind::Row:
      return PlaceAll(part, Nested<QHBoxLayout>(part, into), parent);
    case Layout::Kind::Column:
      return PlaceAll(part, Nested<QVBoxLayout>(part, into), parent);
    case Layout::Kind::Grid:
      return PlaceGrid(part, Nested<QGridLayout>(part, into), parent);
    case Layout::Kind::Form:
      return PlaceForm(part, Nested<QGridLayout>(part, into), parent);
    case Layout::Kind::Field: {
      auto& row = Nested<QHBoxLayout>(part, into);
      row.addWidget(Caption(part, part.size, parent));
      return PlaceAll(part, row, parent);
    }
    case Layout::Kind::Group:
      return PlaceGroup(part, into, parent);
    case Layout::Kind::Tabs:
      return PlaceTabs(part, into, parent);
    case Layout::Kind::Text:
      return into.addWidget(PlainText(part.text, part.size, parent), part.stretch);
    case Layout::Kind::Space:
      return into.addStretch(part.stretch);
    case Layout::Kind::View:
      return PlaceView(part, into, parent);
  }
}

}  // namespace

QWidget* BuildLayout(const Layout& layout, WindowContext& context, const ViewMaker& views, QWidget* parent) {
  auto* content = new QWidget(parent);
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  column->setSpacing(kSpacing);
  Builder builder(layout, context, views);
  builder.Place(layout, *column, content);
  builder.ChainTabs();
  return new FittingArea(content, kWindowRoom, parent);
}

}  // namespace orvane
