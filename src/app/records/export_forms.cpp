#include "app/records/export_forms.h"

#include <array>

#include "app/records/csv_export.h"
#include "app/records/html_report.h"
#include "app/records/junit_export.h"
#include "app/records/record_json.h"

namespace orvane {
namespace {

/// One run is the object that `show --json` gives, several are an array of them.
std::string RecordsJson(const std::vector<RunRecord>& records) {
  if (records.size() == 1) return JsonText(RecordJson(records.front()));
  auto array = nlohmann::ordered_json::array();
  for (const RunRecord& record : records) array.push_back(RecordJson(record));
  return JsonText(array);
}

constexpr std::array kForms{ExportForm{".json", &RecordsJson}, ExportForm{".csv", &ReadingsCsv},
                            ExportForm{".html", &HtmlReport}, ExportForm{".xml", &JunitXml},
                            ExportForm{".orvane", nullptr}};

}  // namespace

const ExportForm* ExportFormOf(std::string_view file) {
  for (const ExportForm& form : kForms) {
    if (file.ends_with(form.ending) && file.size() > form.ending.size()) return &form;
  }
  return nullptr;
}

std::string ExportEndings() {
  std::string text;
  for (std::size_t i = 0; i < kForms.size(); ++i) {
    if (i > 0) text += i + 1 == kForms.size() ? " or " : ", ";
    text += kForms[i].ending;
  }
  return text;
}

}  // namespace orvane
