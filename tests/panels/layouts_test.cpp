#include <map>

#include "app/layouts_rig.h"

namespace orvane::test {
namespace {

TEST_F(Layouts, EveryPanelHasOne) {
  std::vector<Panel*> laidOut;
  for (const auto& each : layouts_) laidOut.push_back(each.panel);
  EXPECT_EQ(laidOut, panels_.All());
}

TEST_F(Layouts, EveryControlHasOnePlace) {
  for (const auto& [panel, layout] : layouts_) {
    EXPECT_EQ(Names(PlacedControls(layout)), Names(panel->Controls())) << panel->Name();
  }
}

TEST_F(Layouts, EveryTabHasAPage) {
  int tabControls = 0;
  for (const auto& [panel, layout] : layouts_) {
    for (const Layout* part : AllParts(layout)) {
      if (part->kind != Layout::Kind::Tabs) continue;
      const auto* tabs = dynamic_cast<const TabControl*>(part->control);
      ASSERT_NE(tabs, nullptr) << panel->Name();
      EXPECT_EQ(part->parts.size(), tabs->Tabs().size()) << panel->Name();
      ++tabControls;
    }
  }
  EXPECT_EQ(tabControls, 1);
}

TEST_F(Layouts, AnUpDownStandsBesideItsBox) {
  for (const auto& [panel, layout] : layouts_) {
    for (const Layout* part : AllParts(layout)) {
      ASSERT_TRUE(part->control == nullptr || part->control->Kind() != ControlKind::UpDown) << part->control->Name();
      if (part->upDown == nullptr || part->upDown->Buddy() == nullptr) continue;
      EXPECT_EQ(part->upDown->Buddy(), part->control) << part->upDown->Name();
    }
  }
}

TEST_F(Layouts, FormsHoldFieldsAndFramesAreGroups) {
  for (const auto& [panel, layout] : layouts_) {
    for (const Layout* part : AllParts(layout)) {
      if (part->kind == Layout::Kind::Grid) {
        EXPECT_GT(part->size, 0) << panel->Name();
      }
      if (part->kind == Layout::Kind::Field && part->control != nullptr) {
        EXPECT_EQ(part->control->Kind(), ControlKind::Label) << part->control->Name();
      }
      if (part->control != nullptr && part->control->Kind() == ControlKind::Frame) {
        EXPECT_EQ(part->kind, Layout::Kind::Group) << part->control->Name();
      }
    }
  }
}

TEST_F(Layouts, TheViewsOfEachPanel) {
  const std::map<std::string, std::vector<std::string>> expected{
      {"OrvaneMain", {"paceTime", "rampShape"}}, {"frmRampTable", {"rampShape"}},
      {"frmAutoCal", {"searchConvergence"}},     {"frmAutoCalTxResult", {"channelCodes"}},
      {"frmMPAutoCal", {"receiveCompensation"}}, {"frmFail", {"verdictReasons"}},
      {"frmFailPass", {"verdictReasons"}},
  };
  std::map<std::string, std::vector<std::string>> views;
  for (const auto& [panel, layout] : layouts_) {
    for (const Layout* part : AllParts(layout)) {
      if (part->kind == Layout::Kind::View) views[panel->Name()].push_back(part->text);
    }
  }
  EXPECT_EQ(views, expected);
}

TEST_F(Layouts, OnePanelHasOneMainButtonAtMost) {
  for (const auto& [panel, layout] : layouts_) {
    const auto parts = AllParts(layout);
    EXPECT_LE(std::ranges::count(parts, true, &Layout::main), 1) << panel->Name();
  }
  for (const Layout* part : AllParts(Of(panels_.main))) {
    if (part->main) {
      EXPECT_EQ(part->control, &panels_.main.cmdTargetInitialize);
    }
  }
}

}  // namespace
}  // namespace orvane::test
