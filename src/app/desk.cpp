#include "app/desk.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "platform/files.h"

namespace orvane {
namespace {

/// A box or dialog for as long as it lies open, however it ends.
template <class Item>
class Lying {
 public:
  Lying(std::list<Item>& pile, Item item, const Signal<Desk::Id>& closed)
      : pile_(pile), item_(pile.insert(pile.end(), std::move(item))), closed_(closed) {}
  Lying(const Lying&) = delete;
  Lying& operator=(const Lying&) = delete;
  ~Lying() {
    const Desk::Id id = item_->id;
    pile_.erase(item_);
    closed_.Emit(id);
  }
  Item& operator*() const { return *item_; }
  Item* operator->() const { return &*item_; }

 private:
  std::list<Item>& pile_;
  typename std::list<Item>::iterator item_;
  const Signal<Desk::Id>& closed_;
};

template <class Item>
Item* Find(std::list<Item>& pile, Desk::Id id) {
  const auto hit = std::find_if(pile.begin(), pile.end(), [id](const Item& item) { return item.id == id; });
  return hit == pile.end() ? nullptr : &*hit;
}

}  // namespace

std::string OneLine(std::string_view text) {
  std::string line;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool pair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
    if (pair) continue;
    if (text[i] == '\r' || text[i] == '\n') {
      line += " / ";
    } else {
      line += text[i];
    }
  }
  return line;
}

void Desk::Abandon(std::ostream& log) {
  unattendedLog_ = &log;
  abandoned_ = true;
  for (OpenBox& open : boxes_) {
    if (!open.answer) open.answer = AnswerUnattended(open.box);
  }
  for (OpenDialog& open : dialogs_) {
    if (!std::exchange(open.answered, true)) CancelUnattended(open.dialog);
  }
}

BoxButton Desk::AnswerUnattended(const Box& box) {
  const BoxButton answer = abandoned_ ? box.buttons.back() : box.buttons.front();
  *unattendedLog_ << box.title << ": " << OneLine(box.text) << " -> " << ButtonText(answer) << std::endl;
  return answer;
}

void Desk::CancelUnattended(const FileDialog& dialog) {
  *unattendedLog_ << dialog.title << ": which file? -> Cancel" << std::endl;
}

BoxButton Desk::Show(const Box& box) {
  if (unattendedLog_ != nullptr) {
    boxOpened.Emit({++lastId_, box, box.buttons.front()});
    return AnswerUnattended(box);
  }
  const Lying<OpenBox> open(boxes_, OpenBox{++lastId_, box}, closed);
  boxOpened.Emit(*open);
  while (!open->answer) loop_.Yield(kForever);
  return *open->answer;
}

std::optional<std::string> Desk::Ask(Mode mode, FileDialog& dialog) {
  if (unattendedLog_ != nullptr) {
    CancelUnattended(dialog);
    return std::nullopt;
  }
  const Lying<OpenDialog> open(dialogs_, OpenDialog{++lastId_, mode, dialog}, closed);
  dialogOpened.Emit(*open);
  while (!open->answered) loop_.Yield(kForever);
  if (open->path) {
    dialog.fileName = *open->path;
    dialog.initialFolder = FolderOf(*open->path);
  }
  return open->path;
}

bool Desk::Settling() const {
  const Id box = boxes_.empty() ? 0 : boxes_.back().id;
  const Id dialog = dialogs_.empty() ? 0 : dialogs_.back().id;
  if (box == dialog) return false;
  return box > dialog ? boxes_.back().answer.has_value() : dialogs_.back().answered;
}

Desk::Answered Desk::Press(Id id, std::string_view button) {
  OpenBox* open = Find(boxes_, id);
  if (open == nullptr && Find(dialogs_, id) != nullptr) return Answered::DoesNotFit;
  if (open == nullptr || open->answer) return Answered::NoSuchId;
  const auto& buttons = open->box.buttons;
  const auto hit = std::find_if(buttons.begin(), buttons.end(), [&](auto b) { return ButtonText(b) == button; });
  if (hit == buttons.end()) return Answered::DoesNotFit;
  open->answer = *hit;
  return Answered::Yes;
}

Desk::Answered Desk::Choose(Id id, const std::optional<std::string>& path) {
  OpenDialog* open = Find(dialogs_, id);
  if (open == nullptr && Find(boxes_, id) != nullptr) return Answered::DoesNotFit;
  if (open == nullptr || open->answered) return Answered::NoSuchId;
  if (path && FileNameOf(*path).empty()) return Answered::DoesNotFit;
  if (path) open->path = FullPath(*path, open->dialog.defaultExtension);
  open->answered = true;
  return Answered::Yes;
}

std::string Desk::FullPath(const std::string& name, const std::string& defaultExtension) const {
  std::string full = (workingFolder_ / name).string();
  const bool hasExtension = FileNameOf(full).find('.') != std::string::npos;
  if (!hasExtension && !defaultExtension.empty()) full += "." + defaultExtension;
  return full;
}

}  // namespace orvane
