#include "platform/layout_captions.h"

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

/// A caption as it is read: a doubled "&" is one, blanks behind it are none.
std::string Read(std::string caption) {
  if (const auto doubled = caption.find("&&"); doubled != std::string::npos) caption.erase(doubled, 1);
  caption.erase(caption.find_last_not_of(' ') + 1);
  return caption;
}

const CaptionedControl* Captioned(const Layout& part) { return dynamic_cast<const CaptionedControl*>(part.control); }

/// What a part says by itself; empty for one that says nothing.
std::string Said(const Layout& part) { return Read(Captioned(part) ? Captioned(part)->Caption() : part.text); }

bool IsHead(const Layout& cell) {
  return cell.kind == Layout::Kind::Text || (cell.kind == Layout::Kind::Control && Captioned(cell) != nullptr);
}

void Join(std::string& text, const char* between, const std::string& more) {
  if (!text.empty() && !more.empty()) text += between;
  text += more;
}

bool IsPressed(const Control& control) {
  const ControlKind kind = control.Kind();
  return kind == ControlKind::Button || kind == ControlKind::Option || kind == ControlKind::Check;
}

/// How many controls that are pressed bear each caption.
std::map<std::string, int> CaptionCounts(const Layout& layout) {
  std::map<std::string, int> counts;
  for (const Control* control : PlacedControls(layout)) {
    if (IsPressed(*control)) ++counts[static_cast<const CaptionedControl*>(control)->Caption()];
  }
  return counts;
}

class Reader {
 public:
  explicit Reader(const Layout& layout) : counts_(CaptionCounts(layout)) {}

  void Go(const Layout& part);
  [[nodiscard]] std::map<const Control*, std::string> Take() { return std::move(names_); }

 private:
  void GoAll(const Layout& layout) {
    for (const Layout& part : layout.parts) Go(part);
  }
  void GoOverControl(const Layout& place);
  void GoOverPressed(const CaptionedControl& control);
  void GoOverGrid(const Layout& grid);
  [[nodiscard]] std::string Name(const Control& control) const;

  const std::map<std::string, int> counts_;
  std::string group_;
  std::string field_;
  std::string row_;
  std::string caption_;
  std::string column_;
  std::map<const Control*, std::string> names_;
};

std::string Reader::Name(const Control& control) const {
  std::string beside = row_;
  if (caption_ != row_) Join(beside, ", ", caption_);
  Join(beside, ", ", column_);
  std::string name = group_;
  Join(name, ": ", beside);
  return name.empty() ? control.Name() : name;
}

void Reader::GoOverControl(const Layout& place) {
  if (Captioned(place) == nullptr) {
    names_[place.control] = Name(*place.control);
    if (place.upDown != nullptr) names_[place.upDown] = Name(*place.control);
  } else if (place.control->Kind() == ControlKind::Label) {
    caption_ = Said(place);
  } else if (IsPressed(*place.control)) {
    GoOverPressed(*Captioned(place));
  }
}

void Reader::GoOverPressed(const CaptionedControl& control) {
  if (counts_.at(control.Caption()) == 1) return;
  std::string place = group_;
  Join(place, ": ", field_);
  if (!place.empty()) names_[&control] = place;
}

void Reader::GoOverGrid(const Layout& grid) {
  const auto columns = static_cast<std::size_t>(grid.size);
  const auto firstRowEnd = grid.parts.begin() + static_cast<std::ptrdiff_t>(std::min(columns, grid.parts.size()));
  const bool hasHeads = std::all_of(grid.parts.begin(), firstRowEnd, &IsHead);
  for (std::size_t i = 0; i < grid.parts.size(); ++i) {
    const Layout& cell = grid.parts[i];
    const std::size_t column = i % columns;
    if (column == 0) row_ = IsHead(cell) ? Said(cell) : "";
    caption_.clear();
    column_ = hasHeads && column > 0 ? Said(grid.parts[column]) : "";
    Go(cell);
  }
  row_.clear();
  column_.clear();
  caption_.clear();
}

void Reader::Go(const Layout& part) {
  switch (part.kind) {
    case Layout::Kind::Control:
      return GoOverControl(part);
    case Layout::Kind::Grid:
      return GoOverGrid(part);
    case Layout::Kind::Text:
      caption_ = part.text;
      return;
    case Layout::Kind::Field:
      caption_ = field_ = Said(part);
      GoAll(part);
      caption_.clear();
      field_.clear();
      return;
    case Layout::Kind::Group: {
      const std::string around = std::exchange(group_, Said(part));
      caption_.clear();
      GoAll(part);
      caption_.clear();
      group_ = around;
      return;
    }
    case Layout::Kind::Tabs:
      names_[part.control] = part.control->Name();
      return GoAll(part);
    case Layout::Kind::Row:
    case Layout::Kind::Column:
    case Layout::Kind::Form:
    case Layout::Kind::Space:
    case Layout::Kind::View:
      return GoAll(part);
  }
}

}  // namespace

std::map<const Control*, std::string> CaptionsBeside(const Layout& layout) {
  Reader reader(layout);
  reader.Go(layout);
  return reader.Take();
}

}  // namespace orvane
