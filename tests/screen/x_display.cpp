#include "screen/x_display.h"

#include <unistd.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <cstdlib>
#include <stdexcept>

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

XDisplay::XDisplay()
    : server_({kServer, "-displayfd", "1", "-screen", "0", "1600x1200x24", "-nolisten", "tcp"}),
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
