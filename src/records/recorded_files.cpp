#include "records/recorded_files.h"

#include <type_traits>
#include <utility>

#include "base/failure.h"

namespace orvane {
namespace {

template <class Act>
auto Heard(WireListener& listener, Act act) {
  try {
    return act();
  } catch (const StationFailure& failure) {
    listener.Note(kFileLink, WireEvent::Failure, failure.Text());
    throw;
  }
}

class RecordedFile final : public File {
 public:
  RecordedFile(std::unique_ptr<File> file, WireListener& listener) : file_(std::move(file)), listener_(listener) {
    listener_.Note(kFileLink, WireEvent::In, std::to_string(Heard(listener_, [&] { return file_->Size(); })));
  }

  [[nodiscard]] std::string Read(std::uint64_t offset, std::size_t size) override {
    std::string bytes = Heard(listener_, [&] { return file_->Read(offset, size); });
    listener_.Note(kFileLink, WireEvent::In, bytes);
    return bytes;
  }
  [[nodiscard]] std::uint64_t Size() override { return file_->Size(); }

 private:
  std::unique_ptr<File> file_;
  WireListener& listener_;
};

class RecordedGrowingFile final : public GrowingFile {
 public:
  RecordedGrowingFile(std::unique_ptr<GrowingFile> file, WireListener& listener)
      : file_(std::move(file)), listener_(listener) {}

  void Append(std::string& bytes) override {
    Heard(listener_, [&] { file_->Append(bytes); });
  }

 private:
  std::unique_ptr<GrowingFile> file_;
  WireListener& listener_;
};

class RecordedDraft final : public Draft {
 public:
  RecordedDraft(std::unique_ptr<Draft> draft, WireListener& listener)
      : draft_(std::move(draft)), listener_(listener) {}

  void Finish(std::string_view content) override {
    listener_.Note(kFileLink, WireEvent::Close, {});
    Heard(listener_, [&] { draft_->Finish(content); });
  }

 private:
  std::unique_ptr<Draft> draft_;
  WireListener& listener_;
};

}  // namespace

bool RecordedFiles::Exists(const std::string& path) {
  listener_.Note(kFileLink, WireEvent::Asked, path);
  const bool there = files_.Exists(path);
  listener_.Note(kFileLink, WireEvent::Answered, there ? "there" : "");
  return there;
}

std::unique_ptr<File> RecordedFiles::OpenForReading(const std::string& path, std::uint64_t most) {
  listener_.Note(kFileLink, WireEvent::Open, path);
  return std::make_unique<RecordedFile>(Heard(listener_, [&] { return files_.OpenForReading(path, most); }),
                                        listener_);
}

std::unique_ptr<GrowingFile> RecordedFiles::OpenForAppending(const std::string& path) {
  listener_.Note(kFileLink, WireEvent::Open, path);
  return std::make_unique<RecordedGrowingFile>(Heard(listener_, [&] { return files_.OpenForAppending(path); }),
                                               listener_);
}

std::unique_ptr<Draft> RecordedFiles::BeginDraft(const std::string& path, OldFile old) {
  listener_.Note(kFileLink, WireEvent::Out, path);
  return std::make_unique<RecordedDraft>(Heard(listener_, [&] { return files_.BeginDraft(path, old); }), listener_);
}

}  // namespace orvane
