#pragma once

#include "platform/boxes.h"
#include "platform/file_dialogs.h"
#include "platform/files.h"
#include "txcal/side_tables.h"

namespace orvane {

struct LevelTableRow;

/// The groups "Initial Value", "Power Index" and "Cable Loss" of the calibration panel: they show, store, load and
/// save the side tables.
class SideTableGroups {
 public:
  SideTableGroups(PanelRef<FrmAutoCal> panel, PanelRef<OrvaneMain> main, CalState& state, Files& files, Boxes& boxes,
                  FileDialogs& dialogs)
      : panel_(panel), main_(main), state_(state), files_(files), boxes_(boxes), dialogs_(dialogs) {}
  void Connect();

 private:
  void ConnectLevelTable(const LevelTableRow& row);
  void OnLevelChanged(const LevelTableRow& row);
  void Set(const LevelTableRow& row);
  void Load(const LevelTableRow& row);
  void Save(const LevelTableRow& row);
  void SetLosses();
  void LoadLosses();
  void SaveLosses();

  [[nodiscard]] bool GsmSelected(const LevelTableRow& row) const;

  /// Shows the dialog and lets `read` take what it wants from the file. @return its name when it was read to its end.
  std::optional<std::string> LoadFile(FileDialog& dialog, std::string_view title, void (*read)(File&, CalState&));
  /// @return the name of the file when it was written.
  std::optional<std::string> SaveFile(FileDialog& dialog, std::string_view title,
                                      std::string (*records)(const CalState&));

  PanelRef<FrmAutoCal> panel_;
  PanelRef<OrvaneMain> main_;
  CalState& state_;
  Files& files_;
  Boxes& boxes_;
  FileDialogs& dialogs_;
};

}  // namespace orvane
