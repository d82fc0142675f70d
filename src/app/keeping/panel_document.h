#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/panel.h"

namespace orvane {

/// Every control of every panel with its value: {"frmAutoCal": {"txtLoss": "-1", ...}, ...}. Of a list it is the row
/// that is selected, of a long text its end.
[[nodiscard]] std::string PanelDocument(const std::vector<Panel*>& panels);

/// Puts such values into the panels that somebody has seen, into those controls that are meant. No event is raised.
/// @throws Json::exception for a document of another form.
void ShowPanelDocument(std::string_view document, const std::vector<Panel*>& panels,
                       const std::function<bool(const Control&)>& isMeant);

}  // namespace orvane
