#include "app/records/text_table.h"

#include <algorithm>

#include "app/records/shown_text.h"

namespace orvane {
namespace {

constexpr std::string_view kPlain = "\x1b[0m";
/// No last column gets narrower, however narrow the page is.
constexpr std::size_t kLeastLast = 20;

std::string_view ColourOf(Outcome outcome) {
  switch (outcome) {
    case Outcome::Good:
      return "\x1b[32m";
    case Outcome::Doubtful:
      return "\x1b[33m";
    case Outcome::Bad:
      return "\x1b[31m";
    case Outcome::Open:
      return "\x1b[36m";
  }
  return "";
}

std::string Between(std::string_view mark, std::string_view text, const Page& page) {
  if (!page.colour || text.empty()) return std::string(text);
  return std::string(mark).append(text).append(kPlain);
}

std::string Blanks(std::size_t count) { return std::string(count, ' '); }

}  // namespace

std::string Coloured(std::string_view text, Outcome outcome, const Page& page) {
  return Between(ColourOf(outcome), text, page);
}

std::string Emphasized(std::string_view text, const Page& page) { return Between("\x1b[1m", text, page); }

std::string Dimmed(std::string_view text, const Page& page) { return Between("\x1b[2m", text, page); }

void TextTable::Add(std::vector<Cell> row) {
  for (std::size_t i = 0; i < row.size(); ++i) row[i].text = CutTo(Harmless(row[i].text), columns_[i].most);
  rows_.push_back(std::move(row));
}

std::size_t TextTable::WidthOf(std::size_t column) const {
  std::size_t width = 0;
  for (const auto& row : rows_) width = std::max(width, ColumnsOf(row[column].text));
  return width == 0 ? 0 : std::max(width, ColumnsOf(columns_[column].title));
}

std::string TextTable::Text(const Page& page, std::string_view indent) const {
  std::vector<std::size_t> widths;
  std::size_t last = 0;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    widths.push_back(WidthOf(i));
    if (widths.back() > 0) last = i;
  }
  const auto lineOf = [&](const auto& cellOf) {
    std::string line(indent);
    std::size_t used = ColumnsOf(indent);
    for (std::size_t i = 0; i <= last; ++i) {
      if (widths[i] == 0) continue;
      const auto [text, shown] = cellOf(
          i, page.columns ? std::max(kLeastLast, *page.columns - std::min(*page.columns, used)) : std::string::npos);
      const std::string blanks = Blanks(widths[i] - std::min(widths[i], ColumnsOf(text)));
      if (columns_[i].isNumber) line += blanks;
      line += shown;
      if (i == last) break;
      if (!columns_[i].isNumber) line += blanks;
      line += "  ";
      used += widths[i] + 2;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line + "\n";
  };
  std::string text = lineOf(
      [&](std::size_t i, std::size_t) { return std::pair(columns_[i].title, Dimmed(columns_[i].title, page)); });
  for (const auto& row : rows_) {
    text += lineOf([&](std::size_t i, std::size_t room) {
      const std::string cell = i == last ? CutTo(row[i].text, room) : row[i].text;
      return std::pair(cell, row[i].outcome ? Coloured(cell, *row[i].outcome, page) : cell);
    });
  }
  return text;
}

}  // namespace orvane
