// Hosts hear activation come and go; a caption reports double clicks to
// its host; slot functors are copied by whoever keeps them.
#include <gtest/gtest.h>

#include <vector>

#include "soui/events.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"
#include "testing/event_generator.h"

namespace SOUI {
namespace {

class ActivationProbe : public SHostWnd {
 public:
  void OnActivate(bool active) override { seen.push_back(active); }
  std::vector<bool> seen;
};

TEST(HostActivationTest, TheHostsOnBothSidesOfAChangeAreTold) {
  SApplication app;
  ActivationProbe a, b;
  a.InitFromXmlText(L"<SOUI width='100' height='80'><root/></SOUI>");
  b.InitFromXmlText(L"<SOUI width='100' height='80'><root/></SOUI>");
  a.Create();
  b.Create(a.m_hWnd);
  a.ShowWindow(SW_SHOW);
  b.ShowWindow(SW_SHOW);
  EXPECT_EQ(a.seen, (std::vector<bool>{true, false}));
  EXPECT_EQ(b.seen, (std::vector<bool>{true}));
  // Hiding the active one hands activation back to its owner.
  b.ShowWindow(SW_HIDE);
  EXPECT_EQ(b.seen, (std::vector<bool>{true, false}));
  EXPECT_EQ(a.seen.back(), true);
  b.DestroyWindow();
  a.DestroyWindow();
}

TEST(CaptionTest, DoubleClickReachesTheHost) {
  SApplication app;
  SHostWnd host;
  host.InitFromXmlText(L"<SOUI width='200' height='100'><root><caption name='cap' pos='0,0,-0,30'/></root></SOUI>");
  host.Create();
  int dblclicks = 0;
  host.SetEventObserver([&dblclicks](EventArgs* e) {
    if (e->GetID() == EVT_CAPTION_DBLCLK) ++dblclicks;
  });
  host.UpdateLayout();
  test::EventGenerator gen(&host);
  gen.MoveMouseTo(50, 10);
  gen.ClickLeftButton();
  EXPECT_EQ(dblclicks, 0);
  gen.DoubleClickLeftButton();
  EXPECT_EQ(dblclicks, 1);
}

TEST(SlotFunctorTest, ACloneOutlivesTheOriginal) {
  int calls = 0;
  ISlotFunctor* copy = nullptr;
  {
    FunctionSlot slot = Subscriber([&calls](EventArgs*) { return ++calls > 0; });
    copy = slot.Clone();
  }
  EXPECT_TRUE((*copy)(nullptr));
  EXPECT_EQ(calls, 1);
  delete copy;
  FunctionSlot empty(nullptr);
  EXPECT_FALSE(empty(nullptr));
}

}  // namespace
}  // namespace SOUI
