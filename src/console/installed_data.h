#pragma once

#include <memory>
#include <optional>
#include <string>

#include "panels/frm_auto_cal.h"
#include "panels/frm_download.h"
#include "panels/orvane_main.h"
#include "platform/boxes.h"
#include "platform/files.h"
#include "platform/panel.h"
#include "state/cal_state.h"
#include "state/ramp_state.h"
#include "state/rf_state.h"
#include "state/table_digests.h"

namespace orvane {

struct InstalledFile;

/// The three installed data files, and what start-up fills from them. Each is looked up in the first place, then in
/// the second. A file that does not open costs the data of all behind it, and it alone shows boxes. One that opens
/// and is damaged is loaded as far as it goes: one that is not as long as its kind is, or is nothing but zeros, or
/// has another digest than the one that is given for it; zeros with that digest are none. What stands on a file that
/// is damaged or was not loaded is told (`damage` of the states).
class InstalledData {
 public:
  InstalledData(PanelRef<OrvaneMain> main, PanelRef<FrmAutoCal> autoCal, PanelRef<FrmDownLoad> downLoad, RFState& rf,
                RampState& ramp, CalState& cal, Files& files, Boxes& boxes, TableDigests digests = {},
                DigestOf digestOf = {})
      : main_(main),
        autoCal_(autoCal),
        downLoad_(downLoad),
        rf_(rf),
        ramp_(ramp),
        cal_(cal),
        files_(files),
        boxes_(boxes),
        digests_(std::move(digests)),
        digestOf_(std::move(digestOf)) {}

  /// Reads the files and fills record, tables and panels; passes over what fails inside a file.
  /// @return whether all three files opened.
  bool Load();

 private:
  struct Opened {
    std::string path;
    std::unique_ptr<File> file;
  };
  /// No value after the boxes that say why not.
  std::optional<Opened> Open(const InstalledFile& file);
  bool LoadRFParameterText();
  bool LoadRampTable();
  bool LoadCableLoss();
  /// What is wrong with a file; `damage` is what its shape shows, as the end of a sentence, empty for nothing.
  [[nodiscard]] std::string SentenceOf(const InstalledFile& kind, const Opened& opened,
                                       const std::string& damage) const;
  void FillRecord();
  void ListRFParameterText();

  PanelRef<OrvaneMain> main_;
  PanelRef<FrmAutoCal> autoCal_;
  PanelRef<FrmDownLoad> downLoad_;
  RFState& rf_;
  RampState& ramp_;
  CalState& cal_;
  Files& files_;
  Boxes& boxes_;
  TableDigests digests_;
  DigestOf digestOf_;
};

}  // namespace orvane
