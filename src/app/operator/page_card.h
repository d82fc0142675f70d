#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

class EnterAlone;

/// What a card asks or tells.
struct CardContent {
  struct Answer {
    QString caption;
    /// With what was typed, where the card asks for something.
    std::function<void(const QString& typed)> act;
  };
  struct Typed {
    QString label;
    bool isSecret = false;
    QString initial{};
  };

  /// Tells one card from the next: a content of the same key is not shown anew.
  std::string key;
  QString title;
  /// In the words of who asks.
  QString text;
  QString means{};
  QString toDo{};
  std::optional<Typed> typed{};
  /// Enter gives the first one, Escape the last one.
  std::vector<Answer> answers{};
};

/// A card in the middle of the page, which takes all acts while it lies there.
class PageCard final : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(PageCard)

 public:
  PageCard(bool isDark, QWidget* parent);

  void Show(const CardContent& content);
  void TakeKeyboard();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  /// Goes round in the card: what lies beneath it takes no keys.
  bool focusNextPrevChild(bool next) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QLabel* AddText(const char* name, double units, const QString& text);
  void AddAnswers(const CardContent& content);

  bool isDark_;
  std::string key_;
  QWidget* frame_ = nullptr;
  QLineEdit* typed_ = nullptr;
  QLabel* hint_ = nullptr;
  EnterAlone* guard_ = nullptr;
  std::vector<QPushButton*> buttons_;
};

}  // namespace orvane
