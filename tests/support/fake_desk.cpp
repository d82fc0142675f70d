#include "support/fake_desk.h"

namespace orvane::test {

BoxButton FakeBoxes::Show(const Box& box) {
  shown.push_back(box);
  journal_.Add("box: " + box.text);
  if (whileOpen) whileOpen(box);
  if (answers.empty()) return box.buttons.front();
  const BoxButton answer = answers.front();
  answers.pop_front();
  return answer;
}

std::vector<std::string> FakeBoxes::Texts() const {
  std::vector<std::string> texts;
  for (const Box& box : shown) texts.push_back(box.text);
  return texts;
}

std::optional<std::string> FakeDialogs::Answer(FileDialog& dialog, bool save) {
  shown.push_back({save, dialog});
  if (answers.empty()) return std::nullopt;
  auto path = answers.front();
  answers.pop_front();
  if (path) dialog.fileName = *path;
  return path;
}

}  // namespace orvane::test
