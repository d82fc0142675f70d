#include "app/records/html_readings.h"

#include <algorithm>
#include <map>
#include <set>

#include "app/records/html_plots.h"
#include "app/records/markup.h"
#include "app/records/reading_names.h"
#include "app/records/shown_text.h"

namespace orvane {
namespace {

/// Where a reading stands in the report. One without a column has a row of its own.
struct Place {
  /// Tables of a smaller rank come first.
  int rank;
  std::string table;
  std::string row;
  std::string column;
};

std::string BandTitle(std::string_view band) {
  if (band == "gsm") return "GSM";
  return band == "dcs" ? "DCS" : std::string(band);
}

Place PlaceOf(std::string_view name) {
  const auto parts = PartsOfName(name);
  if (parts.size() == 5 && parts[0] == "tx" && (parts[2] == "level" || parts[2] == "channel")) {
    const bool isLevel = parts[2] == "level";
    return {isLevel ? 3 : 4, "Transmitter, " + BandTitle(parts[1]) + (isLevel ? " levels" : " channels"),
            std::string(parts[3]), std::string(parts[4])};
  }
  if (parts.size() == 3 && parts[0] == "rx") {
    if (const auto arfcn = WholeNumber(parts[1])) {
      return {1, "Receiver, " + BandTitle(BandOfChannel(*arfcn)) + " channels", std::string(parts[1]),
              std::string(parts[2])};
    }
    return {2, "Receiver", BandTitle(parts[1]) + " " + std::string(parts[2]), ""};
  }
  if (parts[0] == "tx" && parts.size() > 2) {
    std::string row = BandTitle(parts[1]);
    for (std::size_t i = 2; i < parts.size(); ++i) row += " " + std::string(parts[i]);
    std::replace(row.begin(), row.end(), '_', ' ');
    return {5, "Transmitter, phase and frequency", row, ""};
  }
  std::string row(name.substr(name.find('.') + 1));
  std::replace(row.begin(), row.end(), '_', ' ');
  if (parts[0] == "battery") return {6, "Battery", row, ""};
  if (parts[0] == "road") return {7, "Times", row, ""};
  return {8, "Other readings", std::string(name), ""};
}

struct Row {
  std::string label;
  std::map<std::string, const RecordedReading*> cells;
};

/// A table in the order in which its rows and columns came.
struct Table {
  int rank;
  std::string title;
  std::vector<std::string> columns;
  std::vector<Row> rows;

  void Add(const Place& place, const RecordedReading& reading) {
    if (std::find(columns.begin(), columns.end(), place.column) == columns.end()) columns.push_back(place.column);
    auto row = std::find_if(rows.begin(), rows.end(), [&](const Row& each) {
      return each.label == place.row && each.cells.count(place.column) == 0;
    });
    if (row == rows.end()) row = rows.insert(rows.end(), Row{place.row, {}});
    row->cells[place.column] = &reading;
  }
};

std::vector<Table> TablesOf(const RunRecord& record) {
  std::vector<Table> tables;
  for (const RecordedReading& reading : record.readings) {
    const Place place = PlaceOf(reading.name);
    auto table =
        std::find_if(tables.begin(), tables.end(), [&](const Table& each) { return each.title == place.table; });
    if (table == tables.end()) table = tables.insert(tables.end(), Table{place.rank, place.table, {}, {}});
    table->Add(place, reading);
  }
  std::stable_sort(tables.begin(), tables.end(), [](const Table& a, const Table& b) { return a.rank < b.rank; });
  return tables;
}

bool IsOutside(const RecordedReading& reading) { return !reading.Inside().value_or(true); }

/// A channel between measured ones, with nothing to say that the plot would not.
bool IsFilledIn(const Row& row) {
  const auto compensation = row.cells.find("compensation");
  return row.cells.size() == 1 && compensation != row.cells.end() && !IsOutside(*compensation->second);
}

std::string LimitsText(const RecordedReading& reading) {
  if (reading.low && reading.high) return ShortNumber(*reading.low) + " … " + ShortNumber(*reading.high);
  if (reading.low) return "≥ " + ShortNumber(*reading.low);
  return reading.high ? "≤ " + ShortNumber(*reading.high) : std::string();
}

/// A column of a table: whether it has limits at all, and those that all its readings share, which stand at its head.
struct Limits {
  bool any = false;
  std::string shared;
};

Limits LimitsOf(const Table& table, const std::string& column) {
  std::set<std::string> texts;
  for (const Row& row : table.rows) {
    if (const auto cell = row.cells.find(column); cell != row.cells.end()) texts.insert(LimitsText(*cell->second));
  }
  const bool any = texts.size() > 1 || (texts.size() == 1 && !texts.begin()->empty());
  return {any, texts.size() == 1 ? *texts.begin() : std::string()};
}

std::string Cells(const RecordedReading* reading, const Limits& limits) {
  if (reading == nullptr) return limits.any ? "<td></td><td></td>" : "<td></td>";
  const bool outside = IsOutside(*reading);
  std::string text = "<td" + Attribute("class", outside ? "number outside" : "number") + ">" +
                     Escaped(ShortNumber(reading->value)) + "</td>";
  if (!limits.any) return text;
  return text + "<td class=\"limits\">" + LimitBar(*reading) + "<small>" +
         (limits.shared.empty() ? Escaped(LimitsText(*reading)) : "") + (outside ? " <b>outside</b>" : "") +
         "</small></td>";
}

std::string UnitOf(const Table& table, const std::string& column) {
  for (const Row& row : table.rows) {
    if (const auto cell = row.cells.find(column); cell != row.cells.end()) return cell->second->unit;
  }
  return {};
}

std::string WideTable(const Table& table) {
  std::string text = "<table><thead><tr><th></th>";
  for (const std::string& column : table.columns) {
    const Limits limits = LimitsOf(table, column);
    text += "<th" + Attribute("colspan", limits.any ? "2" : "1") + ">" + Escaped(column) + " <small>" +
            Escaped(UnitOf(table, column) + (limits.shared.empty() ? "" : ", " + limits.shared)) + "</small></th>";
  }
  text += "</tr></thead><tbody>";
  std::size_t filledIn = 0;
  for (const Row& row : table.rows) {
    if (IsFilledIn(row)) {
      ++filledIn;
      continue;
    }
    text += "<tr><th>" + Escaped(row.label) + "</th>";
    for (const std::string& column : table.columns) {
      const auto cell = row.cells.find(column);
      text += Cells(cell == row.cells.end() ? nullptr : cell->second, LimitsOf(table, column));
    }
    text += "</tr>";
  }
  text += "</tbody></table>";
  if (filledIn == 0) return text;
  return text + "<p class=\"note\">" + std::to_string(filledIn) +
         " more channels were filled in, all inside their limits; the plot has them.</p>";
}

std::string NarrowTable(const Table& table) {
  std::string text = "<table><tbody>";
  for (const Row& row : table.rows) {
    const RecordedReading& reading = *row.cells.begin()->second;
    text += "<tr><th>" + Escaped(row.label) + "</th>" + Cells(&reading, {LimitsOf(table, "").any, ""}) +
            "<td class=\"unit\">" + Escaped(reading.unit) + "</td></tr>";
  }
  return text + "</tbody></table>";
}

std::string Figure(const std::string& drawing, const std::string& caption) {
  if (drawing.empty()) return {};
  return "<figure>" + drawing + "<figcaption>" + Escaped(caption) + "</figcaption></figure>";
}

std::string CodePlot(const RunRecord& record, std::string_view band) {
  ChannelPlot plot{"Code", {}, {}};
  const std::string prefix = "tx." + std::string(band) + ".channel";
  for (const RecordedReading& reading : record.readings) {
    const auto [rest, what] = SplitLast(reading.name);
    const auto [stem, channel] = SplitLast(rest);
    const auto arfcn = WholeNumber(channel);
    if (what == "code" && stem == prefix && arfcn) plot.values.push_back({*arfcn, reading.value, true});
  }
  return Figure(PlotOverChannels(plot), BandTitle(band) + ": codes over ARFCN (count)");
}

std::string CompensationPlot(const RunRecord& record, std::string_view band) {
  ChannelPlot plot{"Compensation", {}, {}};
  std::set<double> limits;
  for (const RecordedReading& reading : record.readings) {
    const auto arfcn = RxChannel(reading.name, "compensation");
    if (!arfcn || BandOfChannel(*arfcn) != band) continue;
    plot.values.push_back({*arfcn, reading.value, !IsOutside(reading)});
    if (reading.low) limits.insert(*reading.low);
    if (reading.high) limits.insert(*reading.high);
  }
  plot.limits.assign(limits.begin(), limits.end());
  return Figure(PlotOverChannels(plot), BandTitle(band) + ": compensation over ARFCN (half dB)");
}

/// "GSM level 5".
std::string SearchTitle(std::string_view name) {
  const auto parts = PartsOfName(name);
  if (parts.size() != 4 || parts[0] != "tx") return std::string(name);
  return BandTitle(parts[1]) + " " + std::string(parts[2]) + " " + std::string(parts[3]);
}

}  // namespace

std::string ReadingTables(const RunRecord& record) {
  std::string text;
  for (const Table& table : TablesOf(record)) {
    const bool isNarrow = table.columns == std::vector<std::string>{""};
    text += "<section class=\"readings\"><h3>" + Escaped(table.title) + "</h3>" +
            (isNarrow ? NarrowTable(table) : WideTable(table)) + "</section>";
  }
  return text;
}

std::string ChannelPlots(const RunRecord& record) {
  std::string text;
  for (const std::string_view band : {"gsm", "dcs"}) text += CodePlot(record, band);
  for (const std::string_view band : {"gsm", "dcs"}) text += CompensationPlot(record, band);
  return text;
}

std::string SearchPlots(const RunRecord& record) {
  std::string text;
  const auto& passes = record.passes;
  for (auto first = passes.begin(); first != passes.end();) {
    const auto end =
        std::find_if(first, passes.end(), [&](const auto& pass) { return pass.reading != first->reading; });
    const std::vector<RecordedPass> search(first, end);
    const RecordedPass& last = search.back();
    text += Figure(SearchPlot(search, ReadingOf(record, first->reading + ".power")),
                   SearchTitle(first->reading) + ": " + std::to_string(search.size()) +
                       (search.size() == 1 ? " pass, DAC " : " passes, DAC ") + std::to_string(last.dac) + ", " +
                       ShortNumber(last.dbm) + " dBm");
    first = end;
  }
  return text;
}

}  // namespace orvane
