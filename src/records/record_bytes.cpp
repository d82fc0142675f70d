#include "records/record_bytes.h"

#include <array>
#include <bit>
#include <cstdint>
#include <limits>

namespace orvane {
namespace {

// The layout stands once, in `Fields`: a Writer and a Reader go through it.

class Writer {
 public:
  template <class... Values>
  void operator()(const Values&... values) {
    (Put(values), ...);
  }
  [[nodiscard]] std::string Take() { return std::move(bytes_); }

  template <class Rows>
  void PutRows(const Rows& rows) {
    PutWord<std::uint32_t>(static_cast<std::uint32_t>(rows.size()));
    for (const auto& row : rows) Fields(*this, row);
  }

 private:
  template <class Word>
  void PutWord(Word word) {
    for (std::size_t i = 0; i < sizeof(Word); ++i) bytes_ += static_cast<char>((word >> (8 * i)) & 0xFFU);
  }
  void Put(const std::string& text) {
    if (text.size() > std::numeric_limits<std::uint32_t>::max()) throw DamagedRecord("A text of more than 4 GiB.");
    PutWord<std::uint32_t>(static_cast<std::uint32_t>(text.size()));
    bytes_ += text;
  }
  void Put(double number) { PutWord(std::bit_cast<std::uint64_t>(number)); }
  void Put(std::int64_t number) { PutWord(static_cast<std::uint64_t>(number)); }
  void Put(int number) { Put(std::int64_t{number}); }
  void Put(bool flag) { bytes_ += flag ? '\1' : '\0'; }
  void Put(Ending ending) { bytes_ += static_cast<char>(ending); }
  template <class Value>
  void Put(const std::optional<Value>& value) {
    Put(value.has_value());
    if (value) Put(*value);
  }

  std::string bytes_;
};

class Reader {
 public:
  explicit Reader(std::string_view bytes) : rest_(bytes) {}

  template <class... Values>
  void operator()(Values&... values) {
    (Get(values), ...);
  }
  [[nodiscard]] std::string_view Bytes(std::size_t size) {
    if (size > rest_.size()) throw DamagedRecord("A record that ends too early.");
    const std::string_view bytes = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return bytes;
  }
  template <class Word>
  [[nodiscard]] Word TakeWord() {
    Word word = 0;
    std::size_t shift = 0;
    for (const char byte : Bytes(sizeof(Word))) {
      word = static_cast<Word>(word | static_cast<Word>(static_cast<unsigned char>(byte)) << shift);
      shift += 8;
    }
    return word;
  }
  void RequireEnd() const {
    if (!rest_.empty()) throw DamagedRecord("A record with something behind its end.");
  }
  // Nothing is set aside for a count: each row takes at least a byte of what is there.
  template <class Rows>
  void GetRows(Rows& rows) {
    const auto count = TakeWord<std::uint32_t>();
    for (std::uint32_t i = 0; i < count; ++i) Fields(*this, rows.emplace_back());
  }

 private:
  void Get(std::string& text) { text = Bytes(TakeWord<std::uint32_t>()); }
  void Get(double& number) { number = std::bit_cast<double>(TakeWord<std::uint64_t>()); }
  void Get(std::int64_t& number) { number = static_cast<std::int64_t>(TakeWord<std::uint64_t>()); }
  void Get(int& number) {
    std::int64_t wide = 0;
    Get(wide);
    number = static_cast<int>(wide);
    if (number != wide) throw DamagedRecord("A record with a number that is too large.");
  }
  void Get(bool& flag) {
    const auto byte = TakeWord<std::uint8_t>();
    if (byte > 1) throw DamagedRecord("A record with a flag that is neither yes nor no.");
    flag = byte == 1;
  }
  void Get(Ending& ending) {
    const auto byte = TakeWord<std::uint8_t>();
    if (byte > static_cast<std::uint8_t>(Ending::Abandoned)) throw DamagedRecord("A record with an unknown ending.");
    ending = static_cast<Ending>(byte);
  }
  template <class Value>
  void Get(std::optional<Value>& value) {
    bool known = false;
    Get(known);
    if (known) Get(value.emplace());
  }

  std::string_view rest_;
};

struct TagRow {
  std::string key;
  std::string value;
};

template <class Stream, class Row>
void Fields(Stream& stream, Row& row) {
  using Plain = std::remove_const_t<Row>;
  if constexpr (std::is_same_v<Plain, RecordedStep>) {
    stream(row.name, row.beganS, row.seconds, row.complete, row.reason);
  } else if constexpr (std::is_same_v<Plain, RecordedReading>) {
    stream(row.step, row.name, row.value, row.unit, row.low, row.high, row.atS);
  } else if constexpr (std::is_same_v<Plain, RecordedPass>) {
    stream(row.reading, row.position, row.dac, row.dbm, row.tolerance, row.atS);
  } else if constexpr (std::is_same_v<Plain, RecordedBox>) {
    stream(row.title, row.text, row.answer, row.atS, row.answeredS);
  } else if constexpr (std::is_same_v<Plain, RecordedDocument>) {
    stream(row.role, row.kind, row.content);
  } else if constexpr (std::is_same_v<Plain, TagRow>) {
    stream(row.key, row.value);
  } else if constexpr (std::is_same_v<Plain, RunEnd>) {
    stream(row.endedMs, row.seconds, row.verdict, row.complete, row.ending, row.reason, row.commands, row.bytesOut,
           row.bytesIn);
  } else {
    static_assert(std::is_same_v<Plain, RunIdentity>);
    stream(row.id, row.station, row.bench, row.benchSetup, row.program, row.kind, row.serial, row.part,
           row.operatorName, row.beganMs);
  }
}

template <class Rows>
std::string BytesOfRows(const Rows& rows) {
  Writer writer;
  writer.PutRows(rows);
  return writer.Take();
}

std::string BytesOfRun(const RunRecord& record) {
  Writer writer;
  Fields(writer, record.identity);
  writer(record.end.has_value());
  if (record.end) Fields(writer, *record.end);
  return writer.Take();
}

std::string BytesOfTags(const RunRecord& record) {
  std::vector<TagRow> tags;
  for (const auto& [key, value] : record.identity.tags) tags.push_back({key, value});
  return BytesOfRows(tags);
}

void ReadRun(Reader& reader, RunRecord& record) {
  Fields(reader, record.identity);
  bool ended = false;
  reader(ended);
  if (ended) Fields(reader, record.end.emplace());
}

void ReadTags(Reader& reader, RunRecord& record) {
  std::vector<TagRow> tags;
  reader.GetRows(tags);
  const std::string* last = nullptr;
  for (const auto& [key, value] : tags) {
    if (last != nullptr && key <= *last) throw DamagedRecord("A record with tags out of their order.");
    last = &key;
    record.identity.tags.emplace(key, value);
  }
}

struct PartRow {
  std::string_view name;
  std::string (*bytes)(const RunRecord&);
  void (*read)(Reader&, RunRecord&);
};
constexpr std::array kParts{
    PartRow{"run", &BytesOfRun, &ReadRun},
    PartRow{"step", [](const RunRecord& record) { return BytesOfRows(record.steps); },
            [](Reader& reader, RunRecord& record) { reader.GetRows(record.steps); }},
    PartRow{"reading", [](const RunRecord& record) { return BytesOfRows(record.readings); },
            [](Reader& reader, RunRecord& record) { reader.GetRows(record.readings); }},
    PartRow{"pass", [](const RunRecord& record) { return BytesOfRows(record.passes); },
            [](Reader& reader, RunRecord& record) { reader.GetRows(record.passes); }},
    PartRow{"box", [](const RunRecord& record) { return BytesOfRows(record.boxes); },
            [](Reader& reader, RunRecord& record) { reader.GetRows(record.boxes); }},
    PartRow{"tag", &BytesOfTags, &ReadTags},
};
constexpr PartRow kDocuments{"document", [](const RunRecord& record) { return BytesOfRows(record.documents); },
                             [](Reader& reader, RunRecord& record) { reader.GetRows(record.documents); }};

void ReadPart(Reader& whole, const PartRow& part, RunRecord& record) {
  std::string name;
  std::string bytes;
  whole(name, bytes);
  if (name != part.name) throw DamagedRecord("A record without its part \"" + std::string(part.name) + "\".");
  Reader reader(bytes);
  part.read(reader, record);
  reader.RequireEnd();
}

}  // namespace

std::vector<std::pair<std::string_view, std::string>> RowBytesOf(const RunRecord& record) {
  std::vector<std::pair<std::string_view, std::string>> parts;
  for (const PartRow& part : kParts) parts.emplace_back(part.name, part.bytes(record));
  return parts;
}

std::string BytesOf(const RunRecord& record) {
  Writer writer;
  for (const PartRow& part : kParts) writer(std::string(part.name), part.bytes(record));
  writer(std::string(kDocuments.name), kDocuments.bytes(record));
  return writer.Take();
}

RunRecord RunRecordOf(std::string_view bytes) {
  RunRecord record;
  Reader whole(bytes);
  for (const PartRow& part : kParts) ReadPart(whole, part, record);
  ReadPart(whole, kDocuments, record);
  whole.RequireEnd();
  return record;
}

}  // namespace orvane
