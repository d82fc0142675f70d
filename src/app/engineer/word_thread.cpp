#include "app/engineer/word_thread.h"

#include <QMetaObject>
#include <QObject>
#include <QThreadPool>
#include <memory>
#include <utility>

#include "app/engineer/word_digest.h"

namespace orvane {
namespace {

class WordThread {
 public:
  WordThread(EventLoop& loop, std::string digest) : loop_(loop), digest_(std::move(digest)) {
    pool_.setMaxThreadCount(1);
  }
  WordThread(const WordThread&) = delete;
  WordThread& operator=(const WordThread&) = delete;
  ~WordThread() { pool_.waitForDone(); }

  void Look(std::string word, std::function<void(bool)> told) {
    // One place, whoever copies the job: what was moved out of a string may still stand in it.
    const auto held = std::make_shared<std::string>(word);
    Forget(word);
    pool_.start([this, held, told = std::move(told)] {
      const bool isRight = IsWordOf(digest_, *held);
      Forget(*held);
      // Slots of the toolkit's objects post what is to be done; the call takes what it is given with it.
      // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks)
      QMetaObject::invokeMethod(
          &here_, [this, told, isRight] { loop_.Post([told, isRight] { told(isRight); }); }, Qt::QueuedConnection);
    });
  }

 private:
  EventLoop& loop_;
  std::string digest_;
  /// What is on its way to it when it goes, goes with it.
  QObject here_;
  QThreadPool pool_;
};

}  // namespace

WordLook LookOnAThread(EventLoop& loop, std::string digest) {
  const auto thread = std::make_shared<WordThread>(loop, std::move(digest));
  return
      [thread](std::string word, std::function<void(bool)> told) { thread->Look(std::move(word), std::move(told)); };
}

}  // namespace orvane
