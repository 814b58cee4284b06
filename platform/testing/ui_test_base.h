// A test fixture in the shape of a views test base: it owns the application
// (manual clock), an offscreen host window built from XML, an event
// generator on the real routing path, an event recorder (every event that
// reaches the host) and access to the captured log.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "soui/hostwnd.h"
#include "soui/sapp.h"
#include "testing/event_generator.h"

namespace SOUI {
namespace test {

struct RecordedEvent {
  int id;
  SStringW name;      // event name ("on_command")
  SStringW nameFrom;  // sender's name
  int idFrom;
};

class UiTestBase : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // Builds the host from a "SOUI" layout and sizes it (0: from the layout).
  SHostWnd* CreateHost(const wchar_t* soui_xml, int width = 0, int height = 0);
  // Builds a host whose root holds the given children, sized width x height.
  SHostWnd* CreateHostWithChildren(const wchar_t* children_xml, int width = 400, int height = 300);

  SWindow* Find(const wchar_t* name) const;
  template <class T>
  T* Find(const wchar_t* name) const {
    return host_ ? host_->GetRoot()->FindChildByName2<T>(name) : nullptr;
  }
  EventGenerator& gen() { return *gen_; }
  SHostWnd* host() { return host_.get(); }
  void Advance(uint32_t ms) { app_->GetClock().Advance(ms); }
  void Layout() { host_->UpdateLayout(); }

  // Events that reached the host, in order.
  const std::vector<RecordedEvent>& events() const { return events_; }
  int CountEvents(int id) const;
  void ClearEvents() { events_.clear(); }
  bool LogContains(const wchar_t* text) const;

  std::unique_ptr<SApplication> app_;
  std::unique_ptr<SHostWnd> host_;
  std::unique_ptr<EventGenerator> gen_;
  std::vector<RecordedEvent> events_;
};

// "name [l,t,r,b]" for each descendant in tree order, one per line, indented
// by depth; a golden string for layout tests.
SStringW DumpTree(const SWindow* root);

}  // namespace test
}  // namespace SOUI
