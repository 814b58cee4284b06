// A popup menu on real SDL windows (run under Xvfb): keys pushed as native
// events while the menu's loop runs pick a row.
#include <gtest/gtest.h>

#include "framework/control_classes.h"
#include "popups/menu.h"
#include "sdl_test_base.h"
#include "soui/hostwnd.h"

namespace SOUI {
namespace {

using QVStandardCtrls::IQVMenu;
using QVStandardCtrls::QVMenuAttr;

class SdlMenuTest : public test::SdlTestBase {
 protected:
  void SetUp() override {
    SdlTestBase::SetUp();
    ASSERT_TRUE(app_.GetResProvider().LoadUiDefFile(SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/uires.xml")));
    QVStandardCtrls::RegisterQVStandardCtrls(app_.GetFactory());
    owner_.SetBackend(sdl_);  // constructed before Install made sdl_ the default
    owner_.InitFromXmlText(L"<SOUI width='320' height='200'><root/></SOUI>");
    owner_.Create(nullptr, 40, 40);
    owner_.ShowWindow(SW_SHOW);
    // Settled first: a late move or activation of the owner would dismiss.
    ASSERT_TRUE(PumpUntil([&] { return owner_.GetPaintCount() > 0; }));
    const uint64_t until = SDL_GetTicks64() + 200;
    PumpUntil([&] { return SDL_GetTicks64() > until; });
  }
  void PushKey(SDL_Keycode sym) {
    for (bool down : {true, false}) {
      SDL_Event e{};
      e.type = down ? SDL_KEYDOWN : SDL_KEYUP;
      e.key.windowID = WindowId(&owner_);
      e.key.state = down ? SDL_PRESSED : SDL_RELEASED;
      e.key.keysym.sym = sym;
      Push(e);
    }
  }
  SHostWnd owner_;
};

TEST_F(SdlMenuTest, KeysPickARowOfAMenuInItsOwnWindow) {
  bool had_window = false;
  auto& clock = app_.GetClock();
  clock.SetTimer(50, [&] {
    had_window = IQVMenu::GetOpenMenu() && sdl_->GetSdlWindow(IQVMenu::GetOpenMenu()) != nullptr;
    PushKey(SDLK_DOWN);  // Buy
    PushKey(SDLK_DOWN);  // past the disabled row and the rule: Cancel
    PushKey(SDLK_RETURN);
  }, false);
  // A stuck loop is ended by Esc, given straight to the owner.
  const auto guard = clock.SetTimer(test::kBoundMs, [&] { owner_.OnKeyEvent(WM_KEYDOWN, VK_ESCAPE); }, false);
  QVMenuAttr sell = QVMenuAttr::Item(2, L"Sell");
  sell.enabled = false;
  const UINT id = IQVMenu::TrackPopupMenu(
      owner_.m_hWnd, {QVMenuAttr::Item(1, L"Buy"), sell, QVMenuAttr::Separator(), QVMenuAttr::Item(3, L"Cancel")},
      CPoint(80, 80));
  clock.KillTimer(guard);
  EXPECT_EQ(id, 3u);
  EXPECT_TRUE(had_window);
  EXPECT_EQ(sdl_->WindowCount(), 1u);  // the menu's window is gone, the owner's stays
}

}  // namespace
}  // namespace SOUI
