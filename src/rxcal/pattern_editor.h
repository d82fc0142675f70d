#pragma once

#include <optional>

#include "panels/frm_mp_auto_cal.h"
#include "platform/boxes.h"
#include "platform/file_dialogs.h"
#include "platform/files.h"
#include "state/pattern_state.h"

namespace orvane {

/// The frame "APCDAC Pattern" of frmMPAutoCal: shows, stores and loads the values of `APCDACPatternTable`.
class PatternEditor {
 public:
  PatternEditor(PanelRef<FrmMPAutoCal> panel, PatternState& state, Files& files, Boxes& boxes, FileDialogs& dialogs)
      : panel_(panel), state_(state), files_(files), boxes_(boxes), dialogs_(dialogs) {}

  /// Answers the panel's load, the options and buttons of the frame, and its level.
  void Connect();

 private:
  [[nodiscard]] const BandLevels& Band() const;
  [[nodiscard]] std::optional<std::size_t> Pattern() const;
  void OnLevelChanged();
  void ShowCell();
  void StoreCell();
  void Load();

  PanelRef<FrmMPAutoCal> panel_;
  PatternState& state_;
  Files& files_;
  Boxes& boxes_;
  FileDialogs& dialogs_;
};

}  // namespace orvane
