#pragma once

#include "console/installed_data.h"
#include "instruments/test_set.h"
#include "instruments/test_set_session.h"
#include "link/target_link.h"
#include "panels/orvane_main.h"
#include "platform/panel.h"
#include "state/console_state.h"
#include "state/reply_state.h"

namespace orvane {

/// The load of the main panel: brings the whole station to its first usable state. Whatever fails is passed over;
/// only a missing data file is told.
class StartUp {
 public:
  StartUp(PanelRef<OrvaneMain> main, ConsoleState& console, ReplyState& reply, TestSetState& testSetState,
          InstalledData& data, TestSetSession& session, TestSet& testSet, TargetLink& link)
      : main_(main),
        console_(console),
        reply_(reply),
        testSetState_(testSetState),
        data_(data),
        session_(session),
        testSet_(testSet),
        link_(link) {}

  void Connect();

 private:
  void Load();
  void GreetTestSet();

  PanelRef<OrvaneMain> main_;
  ConsoleState& console_;
  ReplyState& reply_;
  TestSetState& testSetState_;
  InstalledData& data_;
  TestSetSession& session_;
  TestSet& testSet_;
  TargetLink& link_;
};

}  // namespace orvane
