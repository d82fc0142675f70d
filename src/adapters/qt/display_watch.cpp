#include "adapters/qt/display_watch.h"

#include <QString>
#include <cstdlib>
#include <iostream>
#include <utility>
#include <vector>

#include "adapters/qt_event_loop.h"

namespace orvane {
namespace {

/// What the toolkit has said while it looked for a display.
struct Said {
  QtMsgType type;
  QByteArray category;
  QString text;
};

// The toolkit hands a message to a plain function.
QtMessageHandler toolkitsOwn = nullptr;
int statusOfNone = EXIT_FAILURE;
const char* adviceOnNone = "With --headless it runs without them.";
bool opened = false;
bool gone = false;
std::vector<Said> held;  // NOLINT(cert-err58-cpp)

[[noreturn]] void EndWithout(QString reason) {
  for (auto said = held.rbegin(); said != held.rend(); ++said) {
    if (said->category.startsWith("qt.qpa")) reason = said->text;
  }
  std::cerr << "orvane: no windows: " << reason.section(u'\n', 0, 0).trimmed().toStdString() << ". " << adviceOnNone
            << std::endl;
  // Nothing of the station is there yet.
  std::_Exit(statusOfNone);
}

void Heed(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  // The toolkit says so from the foot of its dispatcher, where nothing of it is under way, and would exit next.
  if (text.startsWith("The X11 connection broke")) {
    gone = true;
    throw DisplayGone();
  }
  const QByteArray category = context.category;
  if (gone && category.startsWith("qt.qpa")) return;  // What else is not there of it is no news.
  if (opened) return toolkitsOwn(type, context, text);
  if (type == QtFatalMsg) EndWithout(text);
  held.push_back({type, category, text});
}

}  // namespace

DisplayWatch::DisplayWatch(int statusWithoutDisplay) {
  statusOfNone = statusWithoutDisplay;
  // Beneath the other dispatcher lie frames of C, which an exception must not cross.
  qputenv("QT_NO_GLIB", "1");
  toolkitsOwn = qInstallMessageHandler(&Heed);
}

void DisplayWatch::WithoutDisplay(int status, const char* advice) {
  statusOfNone = status;
  adviceOnNone = advice;
}

DisplayWatch::~DisplayWatch() { qInstallMessageHandler(toolkitsOwn); }

void DisplayWatch::Opened() {
  opened = true;
  for (const Said& said : std::exchange(held, {})) {
    toolkitsOwn(said.type, QMessageLogContext("", 0, "", said.category.constData()), said.text);
  }
}

}  // namespace orvane
