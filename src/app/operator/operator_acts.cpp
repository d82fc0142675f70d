#include <QDateTime>
#include <QLocale>
#include <algorithm>
#include <utility>

#include "adapters/qt/appearance.h"
#include "app/operator/box_advice.h"
#include "app/operator/operator_view.h"
#include "app/records/run_words.h"

// What the operator does at the page, and what it asks.

namespace orvane {
namespace {

std::string DeviceOf(const Options& options, const StationPanels& panels) {
  if (options.bench) return "";
  const std::string& port = panels.main.cboPort.Text();
  const auto number = port.size() == 4 && port.starts_with("COM") ? port.back() - '1' : -1;
  return number >= 0 && number < static_cast<int>(options.com.size())
             ? options.com.at(static_cast<std::size_t>(number))
             : "";
}

}  // namespace

std::optional<QString> OperatorView::FaultOf(const QString& serial) const {
  if (serial.isEmpty()) {
    if (!at_.options.askSerial) return std::nullopt;
    return tr("Scan the serial number of the unit first.");
  }
  if (const auto fault = FaultOfUnitText(serial.toStdString())) {
    return tr("This is no serial number: it %1.").arg(ToQt(*fault));
  }
  if (at_.options.operating.serialPattern.empty() || pattern_.match(serial).hasMatch()) return std::nullopt;
  return tr("\"%1\" is no serial number of this product. Scan it again.").arg(serial);
}

void OperatorView::Start(const QString& typed) {
  if (abandoned_ || !at_.station.Nest().Idle() || question_) return;
  const QString serial = typed.trimmed();
  if (const auto fault = FaultOf(serial)) {
    page_->ShowHint(*fault);
    page_->MarkSerial();
    return;
  }
  page_->ShowHint("");
  std::vector<Lack> lacks =
      LacksAheadOfAUnit({at_.station.State(), at_.station.Panels(), at_.files,
                         DeviceOf(at_.options, at_.station.Panels()), at_.news, at_.options.operating.lossesDays});
  std::erase_if(lacks, [this](const Lack& lack) {
    return !lack.stopsUnits && std::find(readLacks_.begin(), readLacks_.end(), lack.what) != readLacks_.end();
  });
  if (!lacks.empty()) return Ask(CardOf(lacks, serial));
  if (at_.golden != nullptr) {
    if (const auto why = at_.golden->NextUnitRefusal(serial.toStdString())) return Ask(CardOfCheck(*why, serial));
  }
  AskWhetherPassedBefore(serial);
}

void OperatorView::AskWhetherPassedBefore(const QString& serial) {
  if (at_.runs == nullptr || serial.isEmpty()) return Press(serial);
  RunQuery query;
  query.serial = serial.toStdString();
  query.verdict = "PASS";
  at_.runs->List(query, [this, serial](const PastRuns::Listed& listed) {
    const auto isGood = [](const RunSummary& run) { return OutcomeOf(run.end) == Outcome::Good; };
    const auto passed = std::find_if(listed.runs.begin(), listed.runs.end(), isGood);
    if (abandoned_ || !at_.station.Nest().Idle()) return;
    if (passed == listed.runs.end()) return Press(serial);
    const QDateTime when = QDateTime::fromMSecsSinceEpoch(passed->identity.beganMs);
    Ask({"",
         serial,
         tr("This unit passed on %1.").arg(QLocale().toString(when, tr("dddd, d MMMM yyyy, HH:mm"))),
         tr("It is calibrated already."),
         tr("Put it to the good ones, or run it again."),
         std::nullopt,
         {{tr("Run it again"), [this, serial](const QString&) { Press(serial); }},
          {tr("Do not run it"), [this](const QString&) { page_->SetSerial(""); }}}});
  });
}

/// The same buttons that an engineer presses: a unit that is still connected, behind a stop, is let go first.
void OperatorView::Press(const QString& serial) {
  hands_.Do([this, serial](Operator& hand) {
    if (!at_.station.Nest().Idle()) return;
    at_.unit.Change({.serial = serial.toStdString()});
    OrvaneMain& main = at_.station.Panels().main;
    if (at_.status.LinkState() != StationStatus::Link::Closed) hand.Click(main.cmdTargetReset);
    hand.Click(main.cmdTargetInitialize);
  });
}

void OperatorView::Initialize(const std::vector<Lack>& lacks, const QString& serial) {
  hands_.Do(
      [this, lacks](Operator& hand) {
        if (!at_.station.Nest().Idle()) return;
        at_.station.Nest().Run([this] { at_.station.Panels().baseBand.Touch(); });
        for (const Lack& lack : lacks) {
          if (lack.mending != nullptr) hand.Click(*lack.mending);
        }
      },
      [this, serial] { at_.loop.Post([this, serial] { Start(serial); }); });
}

void OperatorView::Stop() {
  hands_.Do([&stop = at_.station.Panels().autoCal.cmdAutoCalStop](Operator& hand) { hand.Click(stop); });
}

void OperatorView::PressExit() {
  hands_.Do([&exit = at_.station.Panels().main.cmdExit](Operator& hand) { hand.Click(exit); });
}

void OperatorView::AskForWord(std::function<void()> behind) {
  if (at_.word == nullptr || question_ || !at_.desk.Clear()) return;
  CardContent card{"", tr("Engineer"), tr("This needs the word of an engineer.")};
  card.typed = {tr("The word"), true, {}};
  card.answers = {{tr("OK"), [this, behind = std::move(behind)](const QString& word) { TryWord(word, behind); }},
                  {tr("Cancel"), [](const QString&) {}}};
  Ask(std::move(card));
}

void OperatorView::TryWord(const QString& word, const std::function<void()>& behind) {
  const bool isTaken = at_.word->Check(word.toStdString(), [this, behind](const WordAnswer& answer) {
    if (abandoned_) return;
    if (std::holds_alternative<WordRight>(answer)) {
      page_->ShowHint("");
      return behind();
    }
    const auto* wait = std::get_if<WordWait>(&answer);
    page_->ShowHint(wait == nullptr ? tr("That is not the word.")
                                    : tr("Too many wrong words: wait %1 seconds.").arg(wait->seconds));
  });
  if (!isTaken) page_->ShowHint(tr("The word before is still being looked at."));
}

void OperatorView::AskWhy(const QString& serial) {
  CardContent card{"", tr("Engineer"), tr("Why may units be run all the same?"),
                   tr("The reason is kept in each record.")};
  card.typed = {tr("The reason"), false, {}};
  card.answers = {{tr("OK"), [this, serial](const QString& why) { Excuse(why.trimmed(), serial); }},
                  {tr("Cancel"), [](const QString&) {}}};
  Ask(std::move(card));
}

void OperatorView::Excuse(const QString& why, const QString& serial) {
  try {
    (void)at_.golden->Excuse(why.toStdString());
  } catch (const UnitFault& fault) {
    return page_->ShowHint(ToQt(fault.what()));
  }
  Start(serial);
}

void OperatorView::Ask(CardContent card) {
  card.key = "question" + std::to_string(++questions_);
  for (CardContent::Answer& answer : card.answers) {
    answer.act = [this, act = std::move(answer.act)](const QString& typed) {
      question_.reset();
      act(typed);
      Look();
    };
  }
  question_ = std::move(card);
  Look();
}

CardContent OperatorView::CardOf(const std::vector<Lack>& lacks, const QString& serial) {
  QStringList what;
  QStringList toDo;
  for (const Lack& lack : lacks) {
    what << "\u2022 " + lack.what;
    if (!toDo.contains(lack.toDo)) toDo << lack.toDo;
  }
  const bool stops = std::any_of(lacks.begin(), lacks.end(), [](const Lack& lack) { return lack.stopsUnits; });
  const bool canMend =
      std::any_of(lacks.begin(), lacks.end(), [](const Lack& lack) { return lack.mending != nullptr; });
  CardContent card{"", stops ? tr("Not ready for a unit") : tr("Before the next unit"), what.join(u'\n'), "",
                   toDo.join(u'\n')};
  if (canMend) {
    card.answers.push_back(
        {tr("Initialize now"), [this, lacks, serial](const QString&) { Initialize(lacks, serial); }});
  }
  if (!stops) {
    card.answers.push_back({tr("Go on"), [this, lacks, serial](const QString&) {
                              for (const Lack& lack : lacks) readLacks_.push_back(lack.what);
                              Start(serial);
                            }});
  }
  if (stops && !canMend) {
    card.answers.push_back({tr("Look again"), [this, serial](const QString&) { Start(serial); }});
  }
  card.answers.push_back({tr("Close"), [](const QString&) {}});
  return card;
}

CardContent OperatorView::CardOfCheck(const std::string& refusal, const QString& serial) {
  CardContent card{
      "", tr("The station itself is to be checked"), ToQt(refusal),
      tr("No other unit is run before the golden unit %1 was inside its limits.").arg(ToQt(at_.golden->Serial())),
      tr("Put the golden unit in and scan its number.")};
  card.answers = {{tr("Close"), [this](const QString&) { page_->SetSerial(""); }}};
  if (at_.word != nullptr) {
    card.answers.push_back({tr("An engineer says why not"),
                            [this, serial](const QString&) { AskForWord([this, serial] { AskWhy(serial); }); }});
  }
  return card;
}

/// In a statement of the station: the card is shown when that is over.
void OperatorView::TellCheck(const GoldenFinding& finding) {
  if (finding.Inside()) return;
  QStringList pointsTo;
  for (const std::string& sentence : finding.pointsTo) pointsTo << ToQt(sentence);
  CardContent card{"", tr("The golden unit is outside its limits"), ToQt(finding.Text()), pointsTo.join(u' '),
                   tr("No other unit is run before it was inside them. Call an engineer.")};
  card.answers = {{tr("Close"), [](const QString&) {}}};
  at_.loop.Post([this, card] {
    if (!abandoned_) Ask(card);
  });
}

CardContent OperatorView::CardOf(const Desk::OpenBox& open) {
  const BoxAdvice advice = AdviceOn(open.box.text);
  CardContent card{"box" + std::to_string(open.id), ToQt(open.box.title), ToQt(open.box.text).remove(u'\r').trimmed(),
                   advice.means, advice.toDo};
  for (const BoxButton button : open.box.buttons) {
    card.answers.push_back({ToQt(ButtonText(button)), [this, id = open.id, button](const QString&) {
                              at_.loop.Post([this, id, button] { at_.desk.Press(id, ButtonText(button)); });
                            }});
  }
  return card;
}

CardContent OperatorView::CardOf(const Desk::OpenDialog& open) {
  CardContent card{
      "dialog" + std::to_string(open.id), ToQt(open.dialog.title),
      open.mode == Desk::Mode::Save ? tr("Where is the result to be saved?") : tr("Which file is to be read?"),
      tr("The station is set to ask for a file."), tr("Type its name, or press Cancel and call an engineer.")};
  card.typed = {tr("Name of the file"), false, ToQt(open.dialog.fileName)};
  const auto choose = [this, id = open.id](const std::optional<std::string>& path) {
    at_.loop.Post([this, id, path] { at_.desk.Choose(id, path); });
  };
  card.answers = {{tr("OK"), [choose](const QString& path) { choose(path.toStdString()); }},
                  {tr("Cancel"), [choose](const QString&) { choose(std::nullopt); }}};
  return card;
}

/// What was opened last lies on top.
std::optional<CardContent> OperatorView::CardOfDesk() {
  const auto& boxes = at_.desk.OpenBoxes();
  const auto& dialogs = at_.desk.OpenDialogs();
  const Desk::Id box = boxes.empty() ? 0 : boxes.back().id;
  const Desk::Id dialog = dialogs.empty() ? 0 : dialogs.back().id;
  if (box > dialog) return CardOf(boxes.back());
  if (dialog > box) return CardOf(dialogs.back());
  return std::nullopt;
}

}  // namespace orvane
