#pragma once

#include <QByteArray>
#include <string_view>

namespace orvane {

/// The picture of an Image control, as SVG of 350 by 200, or the icon of a box, as a square one; empty for a name
/// that is none. A verdict is told by its word and its mark as well as by its colour.
[[nodiscard]] QByteArray PictureNamed(std::string_view name);

}  // namespace orvane
