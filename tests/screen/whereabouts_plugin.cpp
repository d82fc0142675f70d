#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QAbstractButton>
#include <QApplication>
#include <QGenericPlugin>
#include <QLabel>
#include <QSocketNotifier>
#include <QTabBar>
#include <QTabWidget>
#include <QWidget>
#include <QWindow>
#include <array>
#include <cstring>

namespace {

/// A widget that a test asks for: "frmBaseBand/cmdBaseBandClose" by name, "box/OK" by what is written on the button,
/// "OrvaneMain/SSTab1:1" a tab, "frmFail" a whole window.
class Wanted {
 public:
  explicit Wanted(const QString& path)
      : window_(path.section(u'/', 0, 0)),
        widget_(path.section(u'/', 1).section(u':', 0, 0)),
        tab_(path.section(u':', 1)) {}

  /// "x y width height enabled words" in pixels of the screen; empty while it cannot be seen and reached with the
  /// mouse.
  [[nodiscard]] QByteArray Place() const {
    QWidget* window = Window();
    QWidget* widget = window == nullptr || widget_.isEmpty() ? window : Inside(*window);
    if (widget == nullptr || !widget->isVisible()) return {};
    QRect area = widget->rect();
    if (const auto* tabs = qobject_cast<QTabWidget*>(widget); tabs != nullptr && !tab_.isEmpty()) {
      widget = tabs->tabBar();
      area = tabs->tabBar()->tabRect(tab_.toInt());
    }
    const QRect place(widget->mapToGlobal(area.topLeft()), area.size());
    if (widget != window && Covered(*widget, place.center())) return {};
    const qreal scale = window->devicePixelRatioF();
    const auto pixels = [scale](int length) { return QByteArray::number(qRound(length * scale)) + ' '; };
    return pixels(place.x()) + pixels(place.y()) + pixels(place.width()) + pixels(place.height()) +
           QByteArray::number(widget->isEnabled() ? 1 : 0) + ' ' + Words(*widget).toUtf8();
  }

 private:
  [[nodiscard]] QWidget* Window() const {
    const QWidget* modal = QApplication::activeModalWidget();
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->objectName() != window_ || !window->isVisible() || (modal != nullptr && modal != window)) continue;
      if (window->windowHandle() != nullptr && window->windowHandle()->isExposed()) return window;
    }
    return nullptr;
  }
  [[nodiscard]] QWidget* Inside(const QWidget& window) const {
    if (auto* named = window.findChild<QWidget*>(widget_)) return named;
    for (auto* button : window.findChildren<QAbstractButton*>()) {
      if (button->text().remove(u'&') == widget_) return button;
    }
    return nullptr;
  }
  /// A label's text in one line, or else the tip.
  [[nodiscard]] static QString Words(const QWidget& widget) {
    const auto* label = qobject_cast<const QLabel*>(&widget);
    return label == nullptr ? widget.toolTip() : label->text().replace(u'\n', u' ');
  }
  [[nodiscard]] static bool Covered(const QWidget& widget, QPoint at) {
    const QWidget* there = QApplication::widgetAt(at);
    return there != &widget && !widget.isAncestorOf(there);
  }

  QString window_;
  QString widget_;
  QString tab_;
};

/// Answers on a socket file where widgets of this program stand, one question a connection. It changes nothing.
class Whereabouts : public QObject {
 public:
  explicit Whereabouts(const QString& path)
      : listening_(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0)), asked_(listening_, QSocketNotifier::Read) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.toLocal8Bit().constData(), sizeof address.sun_path - 1);
    (void)::bind(listening_, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    constexpr int kWaiting = 8;
    ::listen(listening_, kWaiting);
    connect(&asked_, &QSocketNotifier::activated, this, [this] { Answer(); });
  }
  ~Whereabouts() override { ::close(listening_); }

 private:
  void Answer() {
    const int question = ::accept(listening_, nullptr, nullptr);
    std::array<char, 256> text{};
    const auto count = ::recv(question, text.data(), text.size(), 0);
    if (count > 0) {
      const QByteArray answer = Wanted(QString::fromUtf8(text.data(), count)).Place() + '\n';
      ::send(question, answer.constData(), static_cast<std::size_t>(answer.size()), MSG_NOSIGNAL);
    }
    ::close(question);
  }

  int listening_;
  QSocketNotifier asked_;
};

}  // namespace

/// The toolkit loads it into any program that is started with QT_QPA_GENERIC_PLUGINS=whereabouts:SOCKET, and
/// QT_PLUGIN_PATH naming its folder: so a test can see into the program as it is built.
class WhereaboutsPlugin : public QGenericPlugin {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "whereabouts.json")

 public:
  QObject* create(const QString& /*key*/, const QString& path) override { return new Whereabouts(path); }
};

#include "whereabouts_plugin.moc"
