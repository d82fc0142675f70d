#include "screen/x_display.h"

#include <unistd.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <thread>

#include "program/programs.h"

namespace orvane::test {
namespace {

constexpr const char* kServer = "/usr/bin/Xvfb";

std::string FirstLineOf(Child& server) {
  const auto number = server.NextLine();
  if (!number) throw std::runtime_error("no X server: " + server.WaitForEnd().errors);
  return *number;
}

}  // namespace

bool XDisplay::Installed() { return ::access(kServer, X_OK) == 0; }

XDisplay::XDisplay(QSize size)
    : server_({kServer, "-displayfd", "1", "-screen", "0",
               std::to_string(size.width()) + "x" + std::to_string(size.height()) + "x24", "-nolisten", "tcp"}),
      name_(":" + FirstLineOf(server_)),
      connection_(xcb_connect(name_.c_str(), nullptr)) {
  if (xcb_connection_has_error(connection_) != 0) throw std::runtime_error("no connection to " + name_);
  root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
}

XDisplay::~XDisplay() {
  if (connection_ != nullptr) xcb_disconnect(connection_);
}

void XDisplay::Fake(int event, int detail, QPoint at) {
  xcb_test_fake_input(connection_, static_cast<std::uint8_t>(event), static_cast<std::uint8_t>(detail),
                      XCB_CURRENT_TIME, root_, static_cast<std::int16_t>(at.x()), static_cast<std::int16_t>(at.y()),
                      0);
  xcb_flush(connection_);
}

void XDisplay::GiveKeyboard(QPoint at) {
  const auto asked = xcb_translate_coordinates(connection_, root_, root_, static_cast<std::int16_t>(at.x()),
                                               static_cast<std::int16_t>(at.y()));
  const std::unique_ptr<xcb_translate_coordinates_reply_t, decltype(&std::free)> reply(
      xcb_translate_coordinates_reply(connection_, asked, nullptr), &std::free);
  if (reply == nullptr || reply->child == XCB_NONE) throw std::runtime_error("the display has no window there");
  xcb_set_input_focus(connection_, XCB_INPUT_FOCUS_PARENT, reply->child, XCB_CURRENT_TIME);
  xcb_flush(connection_);
}

bool XDisplay::IsManaged() const {
  constexpr std::string_view kName = "_NET_SUPPORTING_WM_CHECK";
  const auto named = xcb_intern_atom(connection_, 0, kName.size(), kName.data());
  const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
      xcb_intern_atom_reply(connection_, named, nullptr), &std::free);
  if (atom == nullptr) return false;
  const auto asked = xcb_get_property(connection_, 0, root_, atom->atom, XCB_ATOM_WINDOW, 0, 1);
  const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> reply(
      xcb_get_property_reply(connection_, asked, nullptr), &std::free);
  return reply != nullptr && xcb_get_property_value_length(reply.get()) > 0;
}

void XDisplay::Manage(const std::string& program) {
  constexpr auto kLimit = std::chrono::seconds(60);
  {
    // What whoever runs the test has set up for himself is no matter.
    const TempFolder nobodys;
    const Variable display("DISPLAY", name_);
    const Variable home("HOME", nobodys.Path().string());
    const Variable settings("XDG_CONFIG_HOME", nobodys.Path().string());
    manager_.emplace(std::vector<std::string>{program});
    for (const auto deadline = std::chrono::steady_clock::now() + kLimit; !IsManaged();) {
      if (std::chrono::steady_clock::now() > deadline) throw std::runtime_error(program + " manages no windows");
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
  }
}

std::set<std::uint32_t> XDisplay::WindowsSeen(QRect area) const {
  constexpr int kStep = 16;
  std::set<std::uint32_t> seen;
  for (int y = area.top(); y <= area.bottom(); y += kStep) {
    for (int x = area.left(); x <= area.right(); x += kStep) {
      const auto asked = xcb_translate_coordinates(connection_, root_, root_, static_cast<std::int16_t>(x),
                                                   static_cast<std::int16_t>(y));
      const std::unique_ptr<xcb_translate_coordinates_reply_t, decltype(&std::free)> reply(
          xcb_translate_coordinates_reply(connection_, asked, nullptr), &std::free);
      if (reply == nullptr) throw std::runtime_error("the display tells no windows");
      seen.insert(reply->child);
    }
  }
  return seen;
}

void XDisplay::Cover(QRect area) {
  constexpr std::array<std::uint32_t, 2> kBlackAndByItself{0, 1};
  cover_ = xcb_generate_id(connection_);
  xcb_create_window(connection_, XCB_COPY_FROM_PARENT, cover_, root_, static_cast<std::int16_t>(area.x()),
                    static_cast<std::int16_t>(area.y()), static_cast<std::uint16_t>(area.width()),
                    static_cast<std::uint16_t>(area.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                    XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, kBlackAndByItself.data());
  xcb_map_window(connection_, cover_);
  xcb_flush(connection_);
}

void XDisplay::Uncover() {
  xcb_destroy_window(connection_, cover_);
  xcb_flush(connection_);
}

int XDisplay::KeyOf(std::uint32_t symbol) const {
  const xcb_setup_t& setup = *xcb_get_setup(connection_);
  const auto count = static_cast<std::uint8_t>(setup.max_keycode - setup.min_keycode + 1);
  const auto asked = xcb_get_keyboard_mapping(connection_, setup.min_keycode, count);
  const std::unique_ptr<xcb_get_keyboard_mapping_reply_t, decltype(&std::free)> reply(
      xcb_get_keyboard_mapping_reply(connection_, asked, nullptr), &std::free);
  if (reply == nullptr) throw std::runtime_error("the display has no keyboard");
  const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
  for (int code = 0; code < count; ++code) {
    if (symbols[code * reply->keysyms_per_keycode] == symbol) return setup.min_keycode + code;
  }
  throw std::runtime_error("the keyboard has no key " + std::to_string(symbol));
}

void XDisplay::Press(std::uint32_t symbol) {
  const int key = KeyOf(symbol);
  Fake(XCB_KEY_PRESS, key, {});
  Fake(XCB_KEY_RELEASE, key, {});
}

void XDisplay::Type(std::string_view keys) {
  for (const char key : keys) Press(static_cast<unsigned char>(key));
}

void XDisplay::MoveMouse(QPoint to) { Fake(XCB_MOTION_NOTIFY, 0, to); }

void XDisplay::Click(QPoint at) {
  constexpr int kLeftButton = 1;
  MoveMouse(at);
  Fake(XCB_BUTTON_PRESS, kLeftButton, {});
  Fake(XCB_BUTTON_RELEASE, kLeftButton, {});
}

QImage XDisplay::Shown(QRect area) const {
  constexpr std::uint32_t kAllPlanes = ~0U;
  const auto asked = xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, root_, static_cast<std::int16_t>(area.x()),
                                   static_cast<std::int16_t>(area.y()), static_cast<std::uint16_t>(area.width()),
                                   static_cast<std::uint16_t>(area.height()), kAllPlanes);
  const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> reply(
      xcb_get_image_reply(connection_, asked, nullptr), &std::free);
  if (reply == nullptr) throw std::runtime_error("the display shows nothing there");
  return QImage(xcb_get_image_data(reply.get()), area.width(), area.height(), QImage::Format_RGB32).copy();
}

void XDisplay::Kill() {
  if (connection_ != nullptr) xcb_disconnect(std::exchange(connection_, nullptr));
  server_.Kill();
}

}  // namespace orvane::test
