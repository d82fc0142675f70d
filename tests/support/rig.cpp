#include "support/rig.h"

namespace orvane::test {

Rig::~Rig() = default;

Rig::Rig() {
  journal.now = [this] { return loop.Now(); };
  state.reply.TargetMode = "TestMode";
  serial.onComm = [this](int event) { nest.Run([this, event] { link.OnComm(event); }); };
  nest.onStopped.push_back([this] { link.Rest(); });
  link.Connect();
  panels.main.txtUserCommand.changed.Connect([this] {
    const std::string& line = panels.main.txtUserCommand.Text();
    if (!line.empty()) journal.Add("Target: " + line);
  });
}

void Rig::OpenPort() { serial.Open(); }

void Rig::OpenTestSet(const std::string& kind) {
  state.testSet.TestSetKind = kind;
  state.testSet.TestSetReady = true;
  CWGPIB1.address.primary = 1;
  CWGPIB1.Configure();
}

}  // namespace orvane::test
