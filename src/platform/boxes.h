#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane {

enum class BoxIcon { None, Stop, Information, Exclamation, Question };

enum class BoxButton { Ok, Cancel, Yes, No, Retry };

/// "OK", "Cancel", "Yes", "No", "Retry".
[[nodiscard]] std::string_view ButtonText(BoxButton button);

inline constexpr std::string_view kStationTitle = "ORVANE";

/// A modal message box, as the operator sees it.
struct Box {
  std::string text;
  std::string title{kStationTitle};
  BoxIcon icon = BoxIcon::None;
  std::vector<BoxButton> buttons{BoxButton::Ok};
};

/// Shows boxes. A box is modal: `Show` returns when it was answered; received bytes and time go on meanwhile.
class Boxes {
 public:
  Boxes() = default;
  Boxes(const Boxes&) = delete;
  Boxes& operator=(const Boxes&) = delete;
  virtual ~Boxes() = default;

  virtual BoxButton Show(const Box& box) = 0;

  /// The styles that the panels use: the icon goes with the title.
  void Warning(std::string text) { Show({std::move(text), "Warning", BoxIcon::Stop, {BoxButton::Ok}}); }
  void Alarm(std::string text) { Show({std::move(text), "Alarm", BoxIcon::Information, {BoxButton::Ok}}); }
  void Caution(std::string text) { Show({std::move(text), "Caution", BoxIcon::Information, {BoxButton::Ok}}); }
  /// The system's own words about a file or a device.
  void SystemText(std::string text) {
    Show({std::move(text), std::string(kStationTitle), BoxIcon::Exclamation, {BoxButton::Ok}});
  }
  /// Yes, No, Cancel.
  BoxButton AskOverwrite(std::string text) {
    return Show({std::move(text),
                 std::string(kStationTitle),
                 BoxIcon::Question,
                 {BoxButton::Yes, BoxButton::No, BoxButton::Cancel}});
  }
};

}  // namespace orvane
