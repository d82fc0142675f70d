#include "replay/replay_bench.h"

#include <cstdlib>
#include <utility>

#include "base/failure.h"
#include "records/recorded_files.h"

namespace orvane {
namespace {

/// "32768 2 text": what a recorded session tells of a failure.
GpibError ErrorOf(const std::string& told) {
  char* rest = nullptr;
  const long status = std::strtol(told.c_str(), &rest, 10);
  const long error = std::strtol(rest, &rest, 10);
  const auto text = static_cast<std::size_t>(rest - told.c_str());
  return {text < told.size() ? told.substr(text + 1) : "", static_cast<int>(status), static_cast<int>(error)};
}

class ReplaySession final : public GpibSession {
 public:
  ReplaySession(ReplayScript& script, std::string link) : script_(script), link_(std::move(link)) {}

  void Write(std::string_view text, TimePoint /*timeOut*/) override {
    said_ = text;
    (void)script_.Say(link_, WireEvent::Out, text);
    ThrowWhatCame();
  }

  [[nodiscard]] std::string Read(std::size_t /*size*/, TimePoint /*timeOut*/) override {
    constexpr std::string_view kPlain = "0\n";
    if (!script_.Running()) return std::string(kPlain);
    if (auto came = script_.Take(link_, WireEvent::In)) {
      ThrowWhatCame();
      return std::move(came->bytes);
    }
    if (auto earlier = script_.EarlierAnswer(link_, said_)) return std::move(*earlier);
    throw GpibTimeOut("The record has no answer to \"" + said_ + "\".");
  }

  void Local() override {
    (void)script_.Say(link_, WireEvent::Close, {});
    ThrowWhatCame();
  }

 private:
  void ThrowWhatCame() {
    if (const auto came = script_.Take(link_, WireEvent::Failure)) throw ErrorOf(came->bytes);
  }

  ReplayScript& script_;
  std::string link_;
  std::string said_;
};

/// A box or dialog, for as long as it lies open; a failure takes it away too.
class Lying {
 public:
  explicit Lying(std::deque<std::optional<std::string>>& open) : open_(open) { open_.emplace_back(); }
  Lying(const Lying&) = delete;
  Lying& operator=(const Lying&) = delete;
  ~Lying() { open_.pop_back(); }

 private:
  std::deque<std::optional<std::string>>& open_;
};

void ThrowFileFault(ReplayScript& script) {
  if (const auto came = script.Take(kFileLink, WireEvent::Failure)) throw StationFailure(came->bytes);
}

class PlainFile final : public File {
 public:
  explicit PlainFile(const std::string& content) : content_(content) {}
  [[nodiscard]] std::string Read(std::uint64_t offset, std::size_t size) override {
    return offset < content_.size() ? content_.substr(offset, size) : std::string();
  }
  [[nodiscard]] std::uint64_t Size() override { return content_.size(); }

 private:
  std::string content_;
};

class ScriptedFile final : public File {
 public:
  explicit ScriptedFile(ReplayScript& script) : script_(script) {
    if (const auto size = script_.Take(kFileLink, WireEvent::In))
      size_ = std::strtoull(size->bytes.c_str(), nullptr, 10);
    ThrowFileFault(script_);
  }
  [[nodiscard]] std::string Read(std::uint64_t /*offset*/, std::size_t /*size*/) override {
    auto came = script_.Take(kFileLink, WireEvent::In);
    ThrowFileFault(script_);
    return came ? std::move(came->bytes) : std::string();
  }
  [[nodiscard]] std::uint64_t Size() override { return size_; }

 private:
  ReplayScript& script_;
  std::uint64_t size_ = 0;
};

class ScriptedGrowingFile final : public GrowingFile {
 public:
  explicit ScriptedGrowingFile(ReplayScript& script) : script_(script) {}
  void Append(std::string& bytes) override {
    ThrowFileFault(script_);
    bytes.clear();
  }

 private:
  ReplayScript& script_;
};

class ScriptedDraft final : public Draft {
 public:
  explicit ScriptedDraft(ReplayScript& script) : script_(script) {}
  void Finish(std::string_view /*content*/) override {
    (void)script_.Say(kFileLink, WireEvent::Close, {});
    ThrowFileFault(script_);
  }

 private:
  ReplayScript& script_;
};

}  // namespace

void ReplayLine::Open() {
  (void)script_.Say(Link(), WireEvent::Open, setup.settings);
  ThrowWhatCame();
  open_ = true;
}

void ReplayLine::Close() {
  if (std::exchange(open_, false)) (void)script_.Say(Link(), WireEvent::Close, {});
}

void ReplayLine::Output(std::string_view bytes) {
  (void)script_.Say(Link(), WireEvent::Out, bytes);
  ThrowWhatCame();
}

void ReplayLine::ThrowWhatCame() {
  const auto came = script_.Take(Link(), WireEvent::Failure);
  if (!came) return;
  // A device that is gone takes its open port with it.
  open_ = false;
  throw StationFailure(came->bytes);
}

std::string ReplayLine::Input() {
  auto came = script_.Take(Link(), WireEvent::In);
  return came ? std::move(came->bytes) : std::string();
}

void ReplayLine::Raise(const WireNote& note) {
  if (onComm) onComm(std::atoi(note.bytes.c_str()));
}

std::unique_ptr<GpibSession> ReplayBus::Open(const GpibAddress& address) {
  return std::make_unique<ReplaySession>(script_, GpibLinkName(address));
}

std::string ReplayDesk::Awaited() {
  const Lying lying(open_);
  while (!open_.back()) loop_.Yield(kForever);
  return *open_.back();
}

void ReplayDesk::Answer(const WireNote& note) {
  if (!open_.empty()) open_.back() = note.bytes;
}

BoxButton ReplayDesk::Show(const Box& box) {
  // One that the record has not is answered as nobody's: with its last button, which asks for nothing.
  if (!script_.Say(kBoxLink, WireEvent::Asked, box.title + "\n" + box.text)) return box.buttons.back();
  const std::string answer = Awaited();
  script_.GoOn();
  for (const BoxButton button : box.buttons) {
    if (ButtonText(button) == answer) return button;
  }
  return box.buttons.back();
}

std::optional<std::string> ReplayDesk::Ask(FileDialog& dialog) {
  std::optional<std::string> path;
  if (!script_.Running()) {
    path = std::exchange(nextPath, std::nullopt);
  } else if (script_.Say(kDialogLink, WireEvent::Asked, dialog.title + "\n")) {
    path = Awaited();
    script_.GoOn();
    if (path->empty()) path.reset();
  }
  if (path) {
    dialog.fileName = *path;
    dialog.initialFolder = FolderOf(*path);
  }
  return path;
}

bool ReplayFiles::Exists(const std::string& path) {
  if (!script_.Running()) return content.contains(path);
  (void)script_.Say(kFileLink, WireEvent::Asked, path);
  const auto came = script_.Take(kFileLink, WireEvent::Answered);
  return came && !came->bytes.empty();
}

std::unique_ptr<File> ReplayFiles::OpenForReading(const std::string& path, std::uint64_t /*most*/) {
  if (!script_.Running()) {
    const auto hit = content.find(path);
    if (hit == content.end()) throw StationFailure(path + ": No such file or directory");
    return std::make_unique<PlainFile>(hit->second);
  }
  (void)script_.Say(kFileLink, WireEvent::Open, path);
  ThrowFileFault(script_);
  return std::make_unique<ScriptedFile>(script_);
}

std::unique_ptr<GrowingFile> ReplayFiles::OpenForAppending(const std::string& path) {
  (void)script_.Say(kFileLink, WireEvent::Open, path);
  ThrowFileFault(script_);
  return std::make_unique<ScriptedGrowingFile>(script_);
}

std::unique_ptr<Draft> ReplayFiles::BeginDraft(const std::string& path, OldFile /*old*/) {
  (void)script_.Say(kFileLink, WireEvent::Out, path);
  ThrowFileFault(script_);
  return std::make_unique<ScriptedDraft>(script_);
}

}  // namespace orvane
