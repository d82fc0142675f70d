#pragma once

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/boxes.h"
#include "platform/file_dialogs.h"
#include "platform/files.h"
#include "platform/gpib.h"
#include "platform/serial_control.h"
#include "replay/replay_script.h"

namespace orvane {

/// The world of a run that is run again: a line, a bus, a desk and a disk that consist of its script. Outside of the
/// run they agree to everything, so that a station can be brought to where the run began.
class ReplayLine final : public SerialControl {
 public:
  explicit ReplayLine(ReplayScript& script) : script_(script) {}

  [[nodiscard]] bool PortOpen() const override { return open_; }
  void Open() override;
  void Close() override;
  void Output(std::string_view bytes) override;
  /// What came behind the event that is being raised.
  [[nodiscard]] std::string Input() override;

  /// The line's event of that note.
  void Raise(const WireNote& note);
  /// The device vanishes; whoever the note was told to stops what is under way.
  void Vanish() { open_ = false; }

 private:
  [[nodiscard]] std::string Link() const { return "COM" + std::to_string(setup.commPort); }
  void ThrowWhatCame();

  ReplayScript& script_;
  bool open_ = false;
};

class ReplayBus final : public GpibBus {
 public:
  explicit ReplayBus(ReplayScript& script) : script_(script) {}
  [[nodiscard]] std::unique_ptr<GpibSession> Open(const GpibAddress& address) override;
  /// Faults of the record name their route in their text.
  [[nodiscard]] std::string RouteOf(const GpibAddress& /*address*/) const override { return ""; }

 private:
  ReplayScript& script_;
};

class ReplayDesk final : public Boxes, public FileDialogs {
 public:
  ReplayDesk(EventLoop& loop, ReplayScript& script) : loop_(loop), script_(script) {}

  BoxButton Show(const Box& box) override;
  std::optional<std::string> ShowOpen(FileDialog& dialog) override { return Ask(dialog); }
  std::optional<std::string> ShowSave(FileDialog& dialog) override { return Ask(dialog); }

  /// What lies on top is answered.
  void Answer(const WireNote& note);
  /// Ahead of the run: what the next dialog is answered with.
  std::optional<std::string> nextPath;

 private:
  std::optional<std::string> Ask(FileDialog& dialog);
  /// Waits for the answer to what was just laid on top.
  std::string Awaited();

  EventLoop& loop_;
  ReplayScript& script_;
  /// Of what lies open, the one on top last.
  std::deque<std::optional<std::string>> open_;
};

/// Within the run a disk as the record tells of it; outside of it one in memory.
class ReplayFiles final : public Files {
 public:
  explicit ReplayFiles(ReplayScript& script) : script_(script) {}

  [[nodiscard]] bool Exists(const std::string& path) override;
  [[nodiscard]] std::unique_ptr<File> OpenForReading(const std::string& path, std::uint64_t most) override;
  [[nodiscard]] std::unique_ptr<GrowingFile> OpenForAppending(const std::string& path) override;
  [[nodiscard]] std::unique_ptr<Draft> BeginDraft(const std::string& path, OldFile old) override;
  [[nodiscard]] std::string SystemPath(std::string_view name) override { return std::string(name); }
  [[nodiscard]] std::string TempPath(std::string_view name) override { return std::string(name); }

  /// What stands there ahead of the run.
  std::map<std::string, std::string, std::less<>> content;

 private:
  ReplayScript& script_;
};

}  // namespace orvane
