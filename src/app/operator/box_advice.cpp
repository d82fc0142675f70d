#include "app/operator/box_advice.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>

namespace orvane {
namespace {

struct AdviceWords {
  Q_DECLARE_TR_FUNCTIONS(BoxAdvice)
};

/// A box by what its text begins with, or holds where that begins with "...".
struct Row {
  std::string_view text;
  const char* means;
  const char* toDo;
};

// What the guide says of each box, in a sentence. The first row that fits counts.
constexpr std::array kRows{
    Row{"Target\xEC\x9D\x84 Power On", QT_TRANSLATE_NOOP("BoxAdvice", "The phone does not answer."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Switch it on. Check contacts, cable and supply, then start again.")},
    Row{"Port is already Open.", QT_TRANSLATE_NOOP("BoxAdvice", "The last phone is still connected."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Press OK and start again.")},
    Row{"Port is already closed.", QT_TRANSLATE_NOOP("BoxAdvice", "There is no phone to be disconnected."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Press OK and go on.")},
    Row{"A serial number is needed.", QT_TRANSLATE_NOOP("BoxAdvice", "This station asks for one ahead of each run."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Scan the phone's number.")},
    Row{"Initialize Power Supply", QT_TRANSLATE_NOOP("BoxAdvice", "The supply was not initialized."),
        QT_TRANSLATE_NOOP("BoxAdvice",
                          "Press OK. Initialize the instruments behind the run, then run this phone again.")},
    Row{"Initialize the Test Set", QT_TRANSLATE_NOOP("BoxAdvice", "The test set was not initialized."),
        QT_TRANSLATE_NOOP("BoxAdvice",
                          "Press OK. Initialize the instruments behind the run, then run this phone again.")},
    Row{"Initialize Test Set", QT_TRANSLATE_NOOP("BoxAdvice", "The test set was not initialized."),
        QT_TRANSLATE_NOOP("BoxAdvice",
                          "Press OK. Initialize the instruments behind the run, then run this phone again.")},
    Row{"Test set: there is no session.", QT_TRANSLATE_NOOP("BoxAdvice", "The run had no test set."),
        QT_TRANSLATE_NOOP("BoxAdvice",
                          "Press OK. Initialize the instruments behind the run, then run this phone again.")},
    Row{"Loader\xEB\xA5\xBC", QT_TRANSLATE_NOOP("BoxAdvice", "The load was not initialized."),
        QT_TRANSLATE_NOOP("BoxAdvice",
                          "Press OK. Initialize the instruments behind the run, then run this phone again.")},
    Row{"Initialize Loader.", QT_TRANSLATE_NOOP("BoxAdvice", "The load was not initialized."),
        QT_TRANSLATE_NOOP("BoxAdvice",
                          "Press OK. Initialize the instruments behind the run, then run this phone again.")},
    Row{" GMagic is out of range.", QT_TRANSLATE_NOOP("BoxAdvice", "The receiver's gain is wrong: FAIL follows."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Check the antenna contact, then run this phone again.")},
    Row{" 1> Auto Cal", QT_TRANSLATE_NOOP("BoxAdvice", "The phone reported no received power: FAIL follows."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Check the antenna contact, then run this phone again.")},
    Row{"Can't measure Power.", QT_TRANSLATE_NOOP("BoxAdvice", "The test set sees no burst: FAIL follows."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Check the RF cable and the antenna contact, then run this phone again.")},
    Row{"Can't read Power", QT_TRANSLATE_NOOP("BoxAdvice", "The test set sees no burst: FAIL follows."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Check the RF cable and the antenna contact, then run this phone again.")},
    Row{" Error in measuring Power.",
        QT_TRANSLATE_NOOP("BoxAdvice", "The power that was measured is impossibly high."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Check the RF cable. Call an engineer if it comes again.")},
    Row{" Auto Cal is not Completed.",
        QT_TRANSLATE_NOOP("BoxAdvice", "The power that was measured is impossibly high."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Check the RF cable. Call an engineer if it comes again.")},
    Row{"Tx CH CAL is not Completed.",
        QT_TRANSLATE_NOOP("BoxAdvice", "A channel of the transmitter could not be corrected."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Press OK. Where the station then asks to be finished, Cancel goes on.")},
    Row{"Do you want to finish", QT_TRANSLATE_NOOP("BoxAdvice", "The station is about to end."),
        QT_TRANSLATE_NOOP("BoxAdvice", "OK ends it at once, Cancel goes on.")},
    Row{"... Rms Phase error.", QT_TRANSLATE_NOOP("BoxAdvice", "The modulation is out of its limits."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Press OK. The run goes on; the phone cannot pass complete any more.")},
    Row{"... Peak Phase error.", QT_TRANSLATE_NOOP("BoxAdvice", "The modulation is out of its limits."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Press OK. The run goes on; the phone cannot pass complete any more.")},
    Row{"Battery Calib",
        QT_TRANSLATE_NOOP("BoxAdvice",
                          "The battery voltage that the phone counts is out of its window: FAIL follows."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Check the battery contacts, then run this phone again.")},
    Row{"Battery Cal is not completed.",
        QT_TRANSLATE_NOOP("BoxAdvice", "The thresholds could not be stored in the phone: FAIL follows."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Run this phone again.")},
    Row{"The Target does not answer.", QT_TRANSLATE_NOOP("BoxAdvice", "The phone has stopped answering."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Check the contacts, then run this phone again.")},
    Row{"The Target refuses", QT_TRANSLATE_NOOP("BoxAdvice", "The battery voltage could not be read."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Check the contacts, then run this phone again.")},
    Row{"Target must be initialized", QT_TRANSLATE_NOOP("BoxAdvice", "No phone is connected."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Press OK and start again.")},
    Row{"Target should be Initialized", QT_TRANSLATE_NOOP("BoxAdvice", "No phone is connected."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Press OK and start again.")},
    Row{"... is not Completed. Re-Start.",
        QT_TRANSLATE_NOOP("BoxAdvice", "The phone refused a setting, or was silent."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Press OK. Check the contacts, and run this phone again behind this run.")},
    Row{"There is not ",
        QT_TRANSLATE_NOOP("BoxAdvice", "A data file of the station is missing: no phone can be calibrated."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Call an engineer.")},
    Row{"Ramp Table is not Correct",
        QT_TRANSLATE_NOOP("BoxAdvice", "The ramp tables of the station have empty values."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Call an engineer.")},
    Row{"... write over it", QT_TRANSLATE_NOOP("BoxAdvice", "A file of that name exists."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Yes replaces it, Cancel leaves it. Ask an engineer if you do not know it.")},
    Row{"Do you want to change", QT_TRANSLATE_NOOP("BoxAdvice", "A file of that name exists."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Yes replaces it, Cancel leaves it. Ask an engineer if you do not know it.")},
    Row{"... already exists", QT_TRANSLATE_NOOP("BoxAdvice", "A file of that name exists."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Yes replaces it, Cancel leaves it. Ask an engineer if you do not know it.")},
    Row{"No space left", QT_TRANSLATE_NOOP("BoxAdvice", "The disk is full."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Call an engineer. What was saved before is untouched.")},
    Row{"Unable to open device", QT_TRANSLATE_NOOP("BoxAdvice", "An instrument is absent or switched off."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Check its power and its cable, then start again.")},
    Row{"... ibsta = &H", QT_TRANSLATE_NOOP("BoxAdvice", "An instrument did not answer."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Check its power and its cable, then start again.")},
    Row{"... device is gone", QT_TRANSLATE_NOOP("BoxAdvice", "The cable of the phone, or its adapter, is unplugged."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Plug it in, then run this phone again.")},
    Row{"The supply and the load are being switched off.",
        QT_TRANSLATE_NOOP("BoxAdvice", "The last run has just ended without PASS."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Press OK, wait a moment, then start again.")},
    Row{"The golden unit",
        QT_TRANSLATE_NOOP("BoxAdvice", "The station itself is to be checked ahead of the next phone."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Put the golden unit in and scan its number, or call an engineer.")},
    Row{"... could not be made sure to be off", QT_TRANSLATE_NOOP("BoxAdvice", "The bench may still be under power."),
        QT_TRANSLATE_NOOP("BoxAdvice", "Switch the instrument off by hand before you touch the phone.")},
};

const Row* RowOf(std::string_view text) {
  constexpr std::string_view kAnywhere = "... ";
  const auto fits = [text, kAnywhere](const Row& row) {
    return row.text.starts_with(kAnywhere) ? text.find(row.text.substr(kAnywhere.size())) != std::string_view::npos
                                           : text.starts_with(row.text);
  };
  const auto* hit = std::find_if(kRows.begin(), kRows.end(), fits);
  return hit == kRows.end() ? nullptr : hit;
}

}  // namespace

bool HasAdvice(std::string_view text) { return RowOf(text) != nullptr; }

BoxAdvice AdviceOn(std::string_view text) {
  if (const Row* row = RowOf(text)) return {AdviceWords::tr(row->means), AdviceWords::tr(row->toDo)};
  return {AdviceWords::tr("The station cannot go on before this is answered."),
          AdviceWords::tr("Press the first button. If it comes again, call an engineer and show it.")};
}

}  // namespace orvane
