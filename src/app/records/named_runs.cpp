#include "app/records/named_runs.h"

#include <algorithm>
#include <cctype>

#include "app/records/shown_text.h"

namespace orvane {
namespace {

constexpr std::size_t kMostNamed = 100;
constexpr std::size_t kIdLength = 36;

std::string LowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

/// What has no place in an id is no beginning of one, whatever it may mean to a store's search.
bool MayBeginAnId(const std::string& text) {
  return !text.empty() && text.size() <= kIdLength &&
         text.find_first_not_of("0123456789abcdef-") == std::string::npos;
}

std::string LastOf(RecordStore& store) {
  RunQuery query;
  query.limit = 1;
  const auto runs = store.List(query);
  if (runs.empty()) throw AnswerIsNo("There is no run in this store.");
  return runs.front().identity.id;
}

}  // namespace

std::string IdOf(RecordStore& store, const std::string& run) {
  if (run == "last") return LastOf(store);
  const std::string beginning = LowerCase(run);
  std::vector<std::string> ids;
  if (MayBeginAnId(beginning)) ids = store.IdsLike(beginning, kMostNamed + 1);
  if (ids.empty()) throw AnswerIsNo("There is no run \"" + Harmless(run) + "\".");
  if (ids.size() == 1) return ids.front();
  const bool isMore = ids.size() > kMostNamed;
  if (isMore) ids.pop_back();
  std::string text = "\"" + run + "\" fits several runs:";
  for (const std::string& id : ids) text += "\n  " + id;
  throw AnswerIsNo(isMore ? text + "\n  and more" : text);
}

std::vector<std::string> IdsOf(RecordStore& store, const std::vector<std::string>& runs) {
  std::vector<std::string> ids;
  for (const std::string& run : runs) {
    std::string id = IdOf(store, run);
    if (std::find(ids.begin(), ids.end(), id) == ids.end()) ids.push_back(std::move(id));
  }
  return ids;
}

RunRecord Loaded(RecordStore& store, const std::string& id) {
  auto record = store.Load(id);
  if (!record) throw AnswerIsNo("Run " + id + " was taken out of the store.");
  return std::move(*record);
}

}  // namespace orvane
