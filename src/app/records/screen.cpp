#include "app/records/screen.h"

#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string_view>

namespace orvane {
namespace {

std::string_view Variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string_view() : std::string_view(value);
}

struct winsize Size() {
  struct winsize size {};
  if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0) size = {};
  return size;
}

/// The program and its arguments, for the shell; empty for none.
std::string Pager() {
  const char* named = std::getenv("PAGER");
  const std::string pager = named == nullptr ? "less" : named;
  return pager == "cat" ? std::string() : pager;
}

/// @return whether the pager ran.
bool ShowByPager(const std::string& pager, const std::string& text) {
  // Colours as they are, and the screen stays as it was left.
  ::setenv("LESS", "FRX", 0);
  const auto before = std::signal(SIGPIPE, SIG_IGN);
  std::FILE* pipe = ::popen(pager.c_str(), "w");
  if (pipe == nullptr) return false;
  // A pager that is left early takes no more, which is no fault.
  (void)std::fwrite(text.data(), 1, text.size(), pipe);
  const int status = ::pclose(pipe);
  (void)std::signal(SIGPIPE, before);
  constexpr int kNotFound = 127;
  return !(WIFEXITED(status) && WEXITSTATUS(status) == kNotFound);
}

}  // namespace

Page PageOfStandardOutput() {
  Page page;
  if (::isatty(STDOUT_FILENO) == 0) return page;
  page.colour = Variable("NO_COLOR").empty() && Variable("TERM") != "dumb";
  if (const auto columns = Size().ws_col; columns > 0) page.columns = columns;
  return page;
}

void ShowOnScreen(const std::string& text) {
  const auto lines = std::count(text.begin(), text.end(), '\n');
  constexpr int kUsualRows = 24;
  const int rows = Size().ws_row;
  const bool isLong = ::isatty(STDOUT_FILENO) != 0 && lines >= (rows > 0 ? rows : kUsualRows);
  const std::string pager = isLong && Variable("TERM") != "dumb" ? Pager() : std::string();
  if (!pager.empty() && ShowByPager(pager, text)) return;
  std::cout << text << std::flush;
}

}  // namespace orvane
