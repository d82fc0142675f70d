#include "adapters/qt/list_widget.h"

#include <QAbstractListModel>
#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>

#include "adapters/qt/appearance.h"

namespace orvane {
namespace {

constexpr int kTabStop = 8;

/// Tabs as blanks up to the next column, since a row of a list knows no tab stops.
QString WithColumns(const QString& row) {
  QString columns;
  for (const QChar c : row) {
    if (c == u'\t') {
      columns.append(QString(kTabStop - columns.size() % kTabStop, u' '));
    } else {
      columns.append(c);
    }
  }
  return columns;
}

class Rows final : public QAbstractListModel {
 public:
  Rows(ListBox& list, QObject* parent)
      : QAbstractListModel(parent), list_(list), count_(static_cast<int>(list.Items().size())) {}

  [[nodiscard]] int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : count_; }
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
    if (role != Qt::DisplayRole || index.row() >= static_cast<int>(list_.Items().size())) return {};
    return WithColumns(ToQt(list_.Items()[static_cast<std::size_t>(index.row())]));
  }
  [[nodiscard]] QString Raw(int row) const { return ToQt(list_.Items()[static_cast<std::size_t>(row)]); }

  void TakeRow() {
    beginInsertRows({}, count_, count_);
    ++count_;
    endInsertRows();
  }
  void DropFirst() {
    beginRemoveRows({}, 0, 0);
    --count_;
    endRemoveRows();
  }
  /// A list grows row by row, loses its first row to a new one or is emptied; nothing else happens to its rows.
  void TakeAll() {
    if (count_ == static_cast<int>(list_.Items().size())) return;
    beginResetModel();
    count_ = static_cast<int>(list_.Items().size());
    endResetModel();
  }

 private:
  ListBox& list_;
  int count_;
};

class RowsView final : public QListView {
 public:
  RowsView(ListBox& list, Hands& hands, QWidget* parent)
      : QListView(parent), list_(list), hands_(hands), rows_(new Rows(list, this)) {
    setModel(rows_);
    setUniformItemSizes(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    Follow(list, *this, [this] { ShowSelected(); });
    // At once: whatever asks for a row meanwhile is told of the rows that are there.
    list.changed.Connect([this] { rows_->TakeAll(); });
    followEnd_.setSingleShot(true);
    connect(&followEnd_, &QTimer::timeout, this, [this] { scrollToBottom(); });
    list.rowAdded.Connect([this](const std::string&) { ShowAdded(); });
    list.firstRowDropped.Connect([this] { ShowDropped(); });
  }

 protected:
  /// Behind a new row no row has its place until the next turn, and a list that is painted ahead of that is blank.
  void paintEvent(QPaintEvent* event) override {
    executeDelayedItemsLayout();
    QListView::paintEvent(event);
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (event->matches(QKeySequence::Copy)) {
      CopyMarked();
    } else {
      QListView::keyPressEvent(event);
    }
  }
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override {
    QListView::currentChanged(current, previous);
    TakeMark();
  }
  void selectionChanged(const QItemSelection& marked, const QItemSelection& unmarked) override {
    QListView::selectionChanged(marked, unmarked);
    TakeMark();
  }

 private:
  void ShowAdded() {
    const QScrollBar& bar = *verticalScrollBar();
    const bool atEnd = followEnd_.isActive() || bar.value() == bar.maximum();
    rows_->TakeRow();
    // Once for all rows that come in one turn: the view lays out all its rows for it.
    if (atEnd) followEnd_.start();
  }
  /// The rows that somebody has scrolled to stay where they are.
  void ShowDropped() {
    QScrollBar& bar = *verticalScrollBar();
    const bool atEnd = followEnd_.isActive() || bar.value() == bar.maximum();
    // Half-way through, the marked row has its old number here and its new one in the list: nobody has marked it.
    dropping_ = true;
    rows_->DropFirst();
    dropping_ = false;
    if (atEnd) {
      followEnd_.start();
    } else if (verticalScrollMode() == ScrollPerItem) {
      bar.setValue(bar.value() - 1);
    }
  }
  void ShowSelected() {
    const QModelIndex wanted = rows_->index(list_.Selected());
    if (wanted.isValid() && currentIndex() != wanted) setCurrentIndex(wanted);
  }
  /// A row was marked by mouse or by key; the focus alone marks none.
  void TakeMark() {
    const QModelIndex current = currentIndex();
    if (dropping_ || current.row() == list_.Selected() || !selectionModel()->isSelected(current)) return;
    hands_.Do([this, row = current.row()](Operator& hand) { hand.Mark(list_, row); }, [this] { ShowSelected(); });
  }
  void CopyMarked() const {
    auto marked = selectionModel()->selectedIndexes();
    std::sort(marked.begin(), marked.end());
    QStringList texts;
    for (const QModelIndex& index : marked) texts << rows_->Raw(index.row());
    QGuiApplication::clipboard()->setText(texts.join(u'\n'));
  }

  ListBox& list_;
  Hands& hands_;
  Rows* rows_;
  QTimer followEnd_;
  bool dropping_ = false;
};

}  // namespace

QListView* MakeList(ListBox& list, Hands& hands, QWidget* parent) { return new RowsView(list, hands, parent); }

}  // namespace orvane
