#include "adapters/qt/spoken_widgets.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QComboBox>
#include <QLineEdit>

namespace orvane {
namespace {

constexpr const char* kPicture = "toldAsPicture";

/// The toolkit's own tells the text for a name, on this system.
class SpokenCombo final : public QAccessibleWidget {
 public:
  explicit SpokenCombo(QComboBox& combo) : QAccessibleWidget(&combo, QAccessible::ComboBox), combo_(combo) {}

  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    if (kind == QAccessible::Value) return combo_.currentText();
    const QString own = QAccessibleWidget::text(kind);
    return kind == QAccessible::Name && own.isEmpty() ? combo_.currentText() : own;
  }
  [[nodiscard]] int childCount() const override { return combo_.lineEdit() == nullptr ? 1 : 2; }
  [[nodiscard]] QAccessibleInterface* child(int index) const override {
    if (index == 0) return QAccessible::queryAccessibleInterface(combo_.view());
    return index == 1 ? QAccessible::queryAccessibleInterface(combo_.lineEdit()) : nullptr;
  }
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
    if (child == nullptr) return -1;
    return child->object() == combo_.view() ? 0 : child->object() == combo_.lineEdit() ? 1 : -1;
  }
  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.expandable = 1;
    state.expanded = combo_.view()->isVisible() ? 1 : 0;
    state.editable = combo_.isEditable() ? 1 : 0;
    return state;
  }
  [[nodiscard]] QStringList actionNames() const override {
    return QAccessibleWidget::actionNames() << showMenuAction() << pressAction();
  }
  void doAction(const QString& action) override {
    if (action != showMenuAction() && action != pressAction()) return QAccessibleWidget::doAction(action);
    if (combo_.view()->isVisible()) return combo_.hidePopup();
    combo_.showPopup();
  }

 private:
  QComboBox& combo_;
};

QAccessibleInterface* Told(const QString& type, QObject* object) {
  if (type == QLatin1String("QComboBox")) return new SpokenCombo(static_cast<QComboBox&>(*object));
  auto* widget = qobject_cast<QWidget*>(object);
  if (widget == nullptr || !widget->property(kPicture).toBool()) return nullptr;
  return new QAccessibleWidget(widget, QAccessible::Graphic);
}

}  // namespace

void TellAsPicture(QWidget& widget) { widget.setProperty(kPicture, true); }

void TellWidgetsByName() { QAccessible::installFactory(&Told); }

}  // namespace orvane
