#include "app/records/record_json.h"

#include <QByteArray>

#include "app/records/digest.h"

namespace orvane {
namespace {

using Json = nlohmann::ordered_json;

Json TextOrNull(const std::string& text) { return text.empty() ? Json() : Json(text); }

template <class Value>
Json ValueOrNull(const std::optional<Value>& value) {
  return value ? Json(*value) : Json();
}

Json FlagOrNull(const std::optional<bool>& flag) { return flag ? Json(*flag ? 1 : 0) : Json(); }

template <class Rows, class RowJson>
Json ArrayOf(const Rows& rows, RowJson rowJson) {
  Json array = Json::array();
  for (std::size_t i = 0; i < rows.size(); ++i) array.push_back(rowJson(i, rows[i]));
  return array;
}

Json StepJson(std::size_t position, const RecordedStep& step) {
  return {{"position", position},
          {"name", step.name},
          {"began_s", step.beganS},
          {"seconds", step.seconds},
          {"complete", step.complete ? 1 : 0},
          {"reason", TextOrNull(step.reason)}};
}

Json ReadingJson(std::size_t position, const RecordedReading& reading) {
  return {{"position", position},
          {"step", TextOrNull(reading.step)},
          {"name", reading.name},
          {"value", reading.value},
          {"unit", reading.unit},
          {"low", ValueOrNull(reading.low)},
          {"high", ValueOrNull(reading.high)},
          {"inside", FlagOrNull(reading.Inside())},
          {"at_s", reading.atS}};
}

Json PassJson(std::size_t, const RecordedPass& pass) {
  return {{"reading", pass.reading}, {"position", pass.position},   {"dac", pass.dac},
          {"dbm", pass.dbm},         {"tolerance", pass.tolerance}, {"at_s", pass.atS}};
}

Json BoxJson(std::size_t position, const RecordedBox& box) {
  return {{"position", position}, {"title", box.title},
          {"text", box.text},     {"answer", TextOrNull(box.answer)},
          {"at_s", box.atS},      {"answered_s", ValueOrNull(box.answeredS)}};
}

Json DocumentJson(std::size_t, const RecordedDocument& document) {
  const std::string& content = document.content;
  Json json{
      {"role", document.role}, {"kind", document.kind}, {"sha256", Sha256Of(content)}, {"bytes", content.size()}};
  if (document.kind == "text" || document.kind == "json") {
    json["text"] = content;
  } else if (document.kind != "trace") {
    const QByteArray bytes = QByteArray::fromRawData(content.data(), static_cast<qsizetype>(content.size()));
    json["base64"] = bytes.toBase64().toStdString();
  }
  return json;
}

}  // namespace

Json RunJson(const RunIdentity& run, const std::optional<RunEnd>& end) {
  Json json{{"id", run.id},
            {"station", run.station},
            {"bench", run.bench},
            {"bench_setup", TextOrNull(run.benchSetup)},
            {"program", run.program},
            {"kind", run.kind},
            {"serial", TextOrNull(run.serial)},
            {"part", TextOrNull(run.part)},
            {"operator", TextOrNull(run.operatorName)},
            {"began", UtcText(run.beganMs)}};
  const auto ofEnd = [&](const char* name, auto valueOf) { json[name] = end ? Json(valueOf(*end)) : Json(); };
  // Nobody counted what an abandoned run did.
  const auto counted = [&](const char* name, auto number) {
    json[name] = end && (end->ending != Ending::Abandoned || (*end).*number != 0) ? Json((*end).*number) : Json();
  };
  ofEnd("ended", [](const RunEnd& each) { return UtcText(each.endedMs); });
  counted("seconds", &RunEnd::seconds);
  ofEnd("verdict", [](const RunEnd& each) { return each.verdict; });
  ofEnd("complete", [](const RunEnd& each) { return each.complete ? 1 : 0; });
  ofEnd("ending", [](const RunEnd& each) { return EndingText(each.ending); });
  ofEnd("reason", [](const RunEnd& each) { return TextOrNull(each.reason); });
  counted("commands", &RunEnd::commands);
  counted("bytes_out", &RunEnd::bytesOut);
  counted("bytes_in", &RunEnd::bytesIn);
  return json;
}

std::string ListJson(const std::vector<RunSummary>& runs) {
  if (runs.empty()) return "[]\n";
  std::string text;
  for (const RunSummary& run : runs) {
    const Json json = RunJson(run.identity, run.end);
    text += (text.empty() ? "[\n" : ",\n") + json.dump(-1, ' ', false, Json::error_handler_t::replace);
  }
  return text + "\n]\n";
}

Json RecordJson(const RunRecord& record) {
  Json json = RunJson(record.identity, record.end);
  Json& tags = json["tags"] = Json::object();
  for (const auto& [key, value] : record.identity.tags) tags[key] = value;
  json["steps"] = ArrayOf(record.steps, &StepJson);
  json["readings"] = ArrayOf(record.readings, &ReadingJson);
  json["passes"] = ArrayOf(record.passes, &PassJson);
  json["boxes"] = ArrayOf(record.boxes, &BoxJson);
  json["documents"] = ArrayOf(record.documents, &DocumentJson);
  return json;
}

std::string JsonText(const Json& json) { return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n"; }

}  // namespace orvane
