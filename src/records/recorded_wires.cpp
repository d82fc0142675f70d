#include "records/recorded_wires.h"

#include "base/failure.h"

namespace orvane {
namespace {

/// A message on its way, for as long as it is on the stack.
class Message {
 public:
  explicit Message(WireListener& listener) : listener_(listener) { listener_.MessageBegins(); }
  Message(const Message&) = delete;
  Message& operator=(const Message&) = delete;
  ~Message() { listener_.MessageIsOver(); }

 private:
  WireListener& listener_;
};

class RecordedSession final : public GpibSession {
 public:
  RecordedSession(std::unique_ptr<GpibSession> session, WireListener& listener, std::string link)
      : session_(std::move(session)), listener_(listener), link_(std::move(link)) {}

  void Write(std::string_view text, TimePoint timeOut) override {
    listener_.Note(link_, WireEvent::Out, text);
    Heard([&] { session_->Write(text, timeOut); }, [] {});
  }
  /// One that fails is told as one to which nothing came, and why.
  [[nodiscard]] std::string Read(std::size_t size, TimePoint timeOut) override {
    std::string reply;
    Heard([&] { reply = session_->Read(size, timeOut); }, [&] { listener_.Note(link_, WireEvent::In, {}); });
    listener_.Note(link_, WireEvent::In, reply);
    return reply;
  }
  void Local() override {
    listener_.Note(link_, WireEvent::Close, {});
    Heard([&] { session_->Local(); }, [] {});
  }
  [[nodiscard]] bool TryLock() override { return session_->TryLock(); }
  void Unlock() override { session_->Unlock(); }

 private:
  template <class Act, class Failed>
  void Heard(Act act, Failed failed) {
    const Message message(listener_);
    try {
      act();
    } catch (const GpibError& error) {
      failed();
      listener_.Note(link_, WireEvent::Failure,
                     std::to_string(error.ibsta) + " " + std::to_string(error.iberr) + " " + error.Text());
      throw;
    }
  }

  std::unique_ptr<GpibSession> session_;
  WireListener& listener_;
  std::string link_;
};

}  // namespace

RecordedSerial::RecordedSerial(SerialControl& line, WireListener& listener) : line_(line), listener_(listener) {
  line_.onComm = [this](int commEvent) {
    Note(WireEvent::Line, std::to_string(commEvent));
    if (onComm) onComm(commEvent);
  };
}

template <class Act>
void RecordedSerial::Heard(Act act) {
  try {
    act();
  } catch (const StationFailure& failure) {
    Note(WireEvent::Failure, failure.Text());
    throw;
  }
}

void RecordedSerial::Open() {
  line_.setup = setup;
  link_ = "COM" + std::to_string(setup.commPort);
  Note(WireEvent::Open, setup.settings);
  Heard([&] { line_.Open(); });
}

void RecordedSerial::TellGone(std::string_view why) { Note(WireEvent::Close, why); }

void RecordedSerial::Close() {
  if (line_.PortOpen()) Note(WireEvent::Close, {});
  line_.Close();
}

void RecordedSerial::Output(std::string_view bytes) {
  Note(WireEvent::Out, bytes);
  Heard([&] { line_.Output(bytes); });
}

void RecordedSerial::OutputWithNext(std::string_view bytes) {
  Note(WireEvent::Out, bytes);
  Heard([&] { line_.OutputWithNext(bytes); });
}

std::string RecordedSerial::Input() {
  std::string bytes = line_.Input();
  if (!bytes.empty()) Note(WireEvent::In, bytes);
  return bytes;
}

std::string GpibLinkName(const GpibAddress& address) {
  std::string name = "GPIB ";
  if (address.board != 0) name.append(std::to_string(address.board)).append(":");
  name.append(std::to_string(address.primary));
  if (address.secondary != 0) name.append(",").append(std::to_string(address.secondary));
  return name;
}

std::unique_ptr<GpibSession> RecordedBus::Open(const GpibAddress& address) {
  return std::make_unique<RecordedSession>(bus_.Open(address), listener_, GpibLinkName(address));
}

BoxButton RecordedDesk::Show(const Box& box) {
  listener_.Note(kBoxLink, WireEvent::Asked, box.title + "\n" + box.text);
  const std::size_t mark = listener_.BoxOpened(box);
  const BoxButton answer = boxes_.Show(box);
  listener_.BoxAnswered(mark, answer);
  listener_.Note(kBoxLink, WireEvent::Answered, ButtonText(answer));
  return answer;
}

std::optional<std::string> RecordedDesk::ShowOpen(FileDialog& dialog) {
  return Ask(dialog, [&] { return dialogs_.ShowOpen(dialog); });
}

std::optional<std::string> RecordedDesk::ShowSave(FileDialog& dialog) {
  return Ask(dialog, [&] { return dialogs_.ShowSave(dialog); });
}

std::optional<std::string> RecordedDesk::Ask(FileDialog& dialog,
                                             const std::function<std::optional<std::string>()>& ask) {
  listener_.Note(kDialogLink, WireEvent::Asked, dialog.title + "\n");
  auto path = ask();
  listener_.Note(kDialogLink, WireEvent::Answered, path.value_or(""));
  return path;
}

}  // namespace orvane
