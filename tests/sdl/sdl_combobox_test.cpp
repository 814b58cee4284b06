// A combo box's drop list in a real SDL popup window (run under Xvfb):
// opened and picked by pushed clicks, closed by a click or focus loss
// elsewhere.
#include <gtest/gtest.h>

#include "sdl_test_base.h"
#include "soui/combobox.h"

namespace SOUI {
namespace {

class SdlComboTest : public test::SdlTestBase {
 protected:
  SComboBox* Open() {
    // Made after SetUp, so that it gets the SDL backend.
    host_ = std::make_unique<SHostWnd>();
    host_->InitFromXmlText(L"<SOUI width='240' height='160'><root colorBkgnd='#FFFFFF'>"
                          L"<combobox name='c' pos='20,20,@150,@26'><items><item text='Bid'/>"
                          L"<item text='Ask'/><item text='Last'/></items></combobox></root></SOUI>");
    host_->Create(nullptr, 40, 40);
    host_->ShowWindow(SW_SHOW);
    EXPECT_TRUE(PumpUntil([&] { return host_->GetPaintCount() > 0; }));
    auto* c = host_->FindChildByName2<SComboBox>(L"c");
    if (!c) return nullptr;
    PushClick(WindowId(host_.get()), Center(c));
    EXPECT_TRUE(PumpUntil([&] { return c->IsDropdown() && c->GetDropDownWnd()->GetPaintCount() > 0; }));
    return c;
  }
  std::unique_ptr<SHostWnd> host_;
};

TEST_F(SdlComboTest, AClickOpensAPopupWindowAndAClickOnAnItemPicksIt) {
  SComboBox* c = Open();
  ASSERT_TRUE(c && c->IsDropdown());
  SDropDownWnd* dd = c->GetDropDownWnd();
  SDL_Window* popup = sdl_->GetSdlWindow(dd);
  ASSERT_NE(popup, nullptr);
  EXPECT_EQ(sdl_->WindowCount(), 2u);
  // A borderless, always-on-top popup-menu window off the taskbar, shown
  // where the host placed it, without the keyboard focus.
  const Uint32 flags = SDL_GetWindowFlags(popup);
  EXPECT_TRUE(flags & SDL_WINDOW_SHOWN);
  EXPECT_TRUE(flags & SDL_WINDOW_POPUP_MENU);
  EXPECT_TRUE(flags & SDL_WINDOW_BORDERLESS);
  EXPECT_TRUE(flags & SDL_WINDOW_SKIP_TASKBAR);
  EXPECT_TRUE(flags & SDL_WINDOW_ALWAYS_ON_TOP);
  EXPECT_NE(SDL_GetKeyboardFocus(), popup);
  EXPECT_EQ(GetActiveWindow(), host_->m_hWnd);
  int x = 0, y = 0;
  SDL_GetWindowPosition(popup, &x, &y);
  EXPECT_EQ(CPoint(x, y), dd->GetWindowRect().TopLeft());
  EXPECT_EQ(dd->GetWindowRect().top, host_->GetWindowRect().top + c->GetWindowRect().bottom);

  // Click "Last" in the popup window.
  const uint32_t popup_id = SDL_GetWindowID(popup);
  PushClick(popup_id, c->GetListBox()->GetItemRect(2).CenterPoint());
  ASSERT_TRUE(PumpUntil([&] { return !c->IsDropdown(); }));
  EXPECT_EQ(c->GetCurSel(), 2);
  EXPECT_EQ(c->GetWindowText(), L"Last");
  EXPECT_EQ(SDL_GetWindowFromID(popup_id), nullptr);
  EXPECT_EQ(sdl_->WindowCount(), 1u);
}

TEST_F(SdlComboTest, AClickElsewhereOrLosingFocusClosesThePopup) {
  SComboBox* c = Open();
  ASSERT_TRUE(c && c->IsDropdown());
  PushClick(WindowId(host_.get()), CPoint(220, 140));
  ASSERT_TRUE(PumpUntil([&] { return !c->IsDropdown(); }));
  EXPECT_EQ(c->GetCurSel(), -1);
  EXPECT_EQ(sdl_->WindowCount(), 1u);

  // Another application's window takes the focus.
  PushClick(WindowId(host_.get()), Center(c));
  ASSERT_TRUE(PumpUntil([&] { return c->IsDropdown(); }));
  PushWindowEvent(WindowId(host_.get()), SDL_WINDOWEVENT_FOCUS_LOST);
  ASSERT_TRUE(PumpUntil([&] { return !c->IsDropdown(); }));
  EXPECT_EQ(sdl_->WindowCount(), 1u);
}

}  // namespace
}  // namespace SOUI
