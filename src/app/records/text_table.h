#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/records/run_words.h"

namespace orvane {

/// What a table is written on.
struct Page {
  /// Colours are understood.
  bool colour = false;
  /// Columns of a terminal; a file has no edge.
  std::optional<std::size_t> columns{};
};

/// Text in the colour of an outcome, where there is one.
[[nodiscard]] std::string Coloured(std::string_view text, Outcome outcome, const Page& page);
[[nodiscard]] std::string Emphasized(std::string_view text, const Page& page);
/// For what is less important than what stands around it.
[[nodiscard]] std::string Dimmed(std::string_view text, const Page& page);

/// Rows of texts under each other, aligned by the columns that they take. Texts are made harmless as they come in.
class TextTable {
 public:
  struct Column {
    std::string title;
    bool isNumber = false;
    /// What is longer is cut.
    std::size_t most = std::string::npos;
  };
  struct Cell {
    std::string text;
    std::optional<Outcome> outcome{};
    Cell(std::string content) : text(std::move(content)) {}  // NOLINT(google-explicit-constructor)
    Cell(std::string content, Outcome colour) : text(std::move(content)), outcome(colour) {}
    Cell(const char* content) : text(content) {}  // NOLINT(google-explicit-constructor)
  };

  explicit TextTable(std::vector<Column> columns) : columns_(std::move(columns)) {}
  void Add(std::vector<Cell> row);

  /// A line a row below the titles. The last column ends at the page's edge; a column whose cells are all empty is
  /// left out.
  [[nodiscard]] std::string Text(const Page& page, std::string_view indent = "") const;

 private:
  [[nodiscard]] std::size_t WidthOf(std::size_t column) const;

  std::vector<Column> columns_;
  std::vector<std::vector<Cell>> rows_;
};

}  // namespace orvane
