// A message box in a real SDL window (run under Xvfb): it opens over its
// owner, the owner is disabled while it runs, and a click on its primary
// button, delivered as native events, ends the modal loop with its result.
#include <gtest/gtest.h>

#include "framework/control_classes.h"
#include "popups/dialogs.h"
#include "sdl_test_base.h"
#include "soui/hostwnd.h"

namespace SOUI {
namespace {

using QVStandardCtrls::CQVDefaultDialog;
using QVStandardCtrls::QVDefaultDialogAttr;

class SdlMessageBoxTest : public test::SdlTestBase {
 protected:
  void SetUp() override {
    SdlTestBase::SetUp();
    ASSERT_TRUE(app_.GetResProvider().LoadUiDefFile(SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/uires.xml")));
    QVStandardCtrls::RegisterQVStandardCtrls(app_.GetFactory());
  }
};

TEST_F(SdlMessageBoxTest, PrimaryButtonClickEndsTheModalLoopOverADisabledOwner) {
  SHostWnd owner;
  ASSERT_TRUE(owner.InitFromXmlText(L"<SOUI title='owner' width='640' height='420'><root colorBkgnd='#F5F6F8'/></SOUI>"));
  ASSERT_TRUE(owner.Create(nullptr, 80, 80));
  owner.ShowWindow(SW_SHOW);
  ASSERT_TRUE(PumpUntil([&] { return owner.GetPaintCount() > 0; }));

  QVDefaultDialogAttr attr;
  attr.title = L"Order";
  attr.content_text = L"Cancel every open order of this account?";
  attr.SetContentIcon(QVDefaultDialogAttr::Icon_Tips);
  attr.SetButtonStyle(QVDefaultDialogAttr::Btn_OkCancel);

  bool owner_enabled = true, shown = false, clicked = false;
  app_.GetClock().SetTimer(300, [&] {
    auto* dlg = dynamic_cast<CQVDefaultDialog*>(app_.GetActiveHost());
    ASSERT_NE(dlg, nullptr);
    owner_enabled = IsWindowEnabled(owner.m_hWnd) != FALSE;
    SDL_Window* win = sdl_->GetSdlWindow(dlg);
    shown = win && (SDL_GetWindowFlags(win) & SDL_WINDOW_SHOWN);
    dlg->UpdateLayout();
    // OK: left of Cancel and primary, closing with 2.
    PushClick(WindowId(dlg), Center(dlg->FindChildByID(100010002)));
    clicked = true;
  }, false);
  // Never hang the suite: a box still open after this long fails the test.
  app_.GetClock().SetTimer(4000, [&] {
    if (auto* dlg = dynamic_cast<CQVDefaultDialog*>(app_.GetActiveHost())) dlg->EndDialog(-2);
  }, false);

  EXPECT_EQ(CQVDefaultDialog::MessageBoxW(attr, owner.m_hWnd), 2);
  EXPECT_TRUE(clicked);
  EXPECT_TRUE(shown);
  EXPECT_FALSE(owner_enabled);
  EXPECT_TRUE(IsWindowEnabled(owner.m_hWnd));
}

}  // namespace
}  // namespace SOUI
