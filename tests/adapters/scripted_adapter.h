#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "adapters/pty.h"

namespace orvane::test {

/// A `++` adapter on the loopback or on a pseudo-terminal, with a thread of its own. It answers `++addr` and `++ver`
/// as such adapters do; everything else is the script's.
class ScriptedAdapter {
 public:
  enum class Wire { kTcp, kTerminal };
  /// Sees each line as it came, escapes included. @return whether it has dealt with it.
  using Script = std::function<bool(ScriptedAdapter& self, const std::string& line)>;

  explicit ScriptedAdapter(Script script = {}, Wire wire = Wire::kTcp);
  ScriptedAdapter(const ScriptedAdapter&) = delete;
  ScriptedAdapter& operator=(const ScriptedAdapter&) = delete;
  ~ScriptedAdapter();

  [[nodiscard]] int Port() const { return port_; }
  [[nodiscard]] const std::string& Device() const { return pty_.Device(); }

  /// For scripts.
  void Send(const std::string& bytes) const;
  void HangUp();

  /// Sends it to the next client ahead of everything else.
  void Greet(const std::string& bytes);
  /// All lines up to now. Lines that were sent are here in time once something behind them was answered.
  [[nodiscard]] std::vector<std::string> Lines() const;
  [[nodiscard]] int Clients() const;
  /// Until a line like that has come. @return false when none came for 5 s.
  [[nodiscard]] bool Hears(const std::string& line) const;
  /// Until its client has left. @return false when it stayed for 5 s.
  [[nodiscard]] bool IsAlone() const;

 private:
  void Serve();
  void Accept();
  void Take(std::string bytes);
  void Obey(const std::string& line);

  Script script_;
  Pty pty_;
  int listener_ = -1;
  int port_ = 0;
  int wake_[2] = {-1, -1};
  int peer_ = -1;
  std::string greeting_;
  int clients_ = 0;
  bool alone_ = true;
  std::string pending_;
  std::string address_ = "0";
  std::vector<std::string> lines_;
  mutable std::mutex guard_;
  std::thread thread_;
};

}  // namespace orvane::test
