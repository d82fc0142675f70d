#include "app/windows/desk_windows.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QMessageBox>
#include <QPushButton>
#include <QTreeView>

#include "adapters/qt/appearance.h"

namespace orvane {
namespace {

QMessageBox::Icon IconOf(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::None:
      return QMessageBox::NoIcon;
    case BoxIcon::Stop:
      return QMessageBox::Critical;
    case BoxIcon::Information:
      return QMessageBox::Information;
    case BoxIcon::Exclamation:
      return QMessageBox::Warning;
    case BoxIcon::Question:
      return QMessageBox::Question;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::ButtonRole RoleOf(BoxButton button) {
  switch (button) {
    case BoxButton::Ok:
    case BoxButton::Retry:
      return QMessageBox::AcceptRole;
    case BoxButton::Cancel:
      return QMessageBox::RejectRole;
    case BoxButton::Yes:
      return QMessageBox::YesRole;
    case BoxButton::No:
      return QMessageBox::NoRole;
  }
  return QMessageBox::AcceptRole;
}

/// A file's name takes what room its size, kind and date leave.
void ShowColumnsWhole(const QFileDialog& dialog) {
  auto* files = dialog.findChild<QTreeView*>("treeView");
  if (files == nullptr) return;
  files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
}

/// A text whose box would be larger than a screen, its buttons beyond reach, loses its end; a word that would be
/// wider goes on in the next line.
QString Fitting(const QString& text) {
  constexpr qsizetype kLongestWord = 80;
  constexpr int kMostLines = 20;
  constexpr qsizetype kMostCharacters = 1200;
  QString fitting;
  qsizetype word = 0;
  int lines = 1;
  for (const QChar c : text) {
    word = c.isSpace() ? 0 : word + 1;
    if (word > kLongestWord) {
      fitting += u'\n';
      word = 1;
      ++lines;
    }
    if (c == u'\n') ++lines;
    if (lines > kMostLines || fitting.size() >= kMostCharacters) return fitting + u'\u2026';
    fitting += c;
  }
  return fitting;
}

/// Nothing else takes an act while it is there: it lies over all, a verdict too.
void ShowInFront(QDialog& dialog) {
  dialog.setWindowModality(Qt::ApplicationModal);
  dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
  dialog.show();
  dialog.raise();
}

}  // namespace

QStringList NameFilters(const std::string& filter) {
  QStringList filters;
  const QStringList parts = ToQt(filter).split(u'|');
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    const QStringList patterns = parts[i + 1].split(u';', Qt::SkipEmptyParts);
    filters << parts[i].trimmed() + " (" + (patterns.isEmpty() ? "*" : patterns.join(u' ').replace("*.*", "*")) + ")";
  }
  return filters;
}

DeskWindows::DeskWindows(EventLoop& loop, Desk& desk) : loop_(loop), desk_(desk) {
  desk.boxOpened.Connect([this](const Desk::OpenBox& open) { Open(open); });
  desk.dialogOpened.Connect([this](const Desk::OpenDialog& open) { Open(open); });
  desk.closed.Connect([this](Desk::Id id) { open_.erase(id); });
}

void DeskWindows::Rest() {
  rests_ = true;
  open_.clear();
}

void DeskWindows::Wake() {
  rests_ = false;
  for (const Desk::OpenBox& open : desk_.OpenBoxes()) Open(open);
  for (const Desk::OpenDialog& open : desk_.OpenDialogs()) Open(open);
}

void DeskWindows::Raise() {
  for (const auto& [id, dialog] : open_) dialog->raise();
}

void DeskWindows::Open(const Desk::OpenBox& open) {
  if (abandoned_ || rests_) return;
  auto box = std::make_unique<QMessageBox>(QApplication::activeWindow());
  box->setObjectName("box");
  box->setWindowTitle(ToQt(open.box.title));
  box->setTextFormat(Qt::PlainText);
  box->setText(Fitting(ToQt(open.box.text).remove(u'\r')));
  box->setTextInteractionFlags(Qt::TextSelectableByMouse);
  box->setIcon(IconOf(open.box.icon));
  for (const BoxButton button : open.box.buttons) {
    const QString caption = ToQt(ButtonText(button));
    QPushButton* pushed = box->addButton(caption, RoleOf(button));
    if (button == open.box.buttons.front()) box->setDefaultButton(pushed);
    if (button == BoxButton::Cancel || open.box.buttons.size() == 1) box->setEscapeButton(pushed);
    QObject::connect(pushed, &QPushButton::clicked, box.get(), [this, id = open.id, text = caption.toStdString()] {
      loop_.Post([this, id, text] { desk_.Press(id, text); });
    });
  }
  ShowInFront(*box);
  open_[open.id] = std::move(box);
}

void DeskWindows::Open(const Desk::OpenDialog& open) {
  if (abandoned_ || rests_) return;
  auto dialog = std::make_unique<QFileDialog>(QApplication::activeWindow(), ToQt(open.dialog.title));
  dialog->setObjectName("fileDialog");
  // The station asks before it writes over a file, and adds the extension, by itself.
  dialog->setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontConfirmOverwrite |
                     QFileDialog::HideNameFilterDetails);
  dialog->setAcceptMode(open.mode == Desk::Mode::Save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog->setFileMode(QFileDialog::AnyFile);
  dialog->setNameFilters(NameFilters(open.dialog.filter));
  if (!open.dialog.initialFolder.empty()) dialog->setDirectory(ToQt(open.dialog.initialFolder));
  if (!open.dialog.fileName.empty()) {
    // The folder of the last time may be gone; its path would be taken for one below the folder that is shown.
    const QFileInfo last(ToQt(open.dialog.fileName));
    dialog->selectFile(last.dir().exists() ? last.filePath() : last.fileName());
  }
  QObject::connect(dialog.get(), &QDialog::finished, dialog.get(),
                   [this, id = open.id, chooser = dialog.get()](int result) {
                     std::optional<std::string> path;
                     if (result == QDialog::Accepted && !chooser->selectedFiles().isEmpty()) {
                       path = chooser->selectedFiles().front().toStdString();
                     }
                     loop_.Post([this, id, path] { desk_.Choose(id, path); });
                   });
  ShowColumnsWhole(*dialog);
  ShowInFront(*dialog);
  open_[open.id] = std::move(dialog);
}

}  // namespace orvane
