// Modal dialogs run a nested loop; on the manual clock, input is scripted
// with clock timers that fire while DoModal waits.
#include <gtest/gtest.h>

#include "qvhost/qvlog.h"
#include "soui/hostdialog.h"
#include "soui/sapp.h"
#include "testing/event_generator.h"

namespace SOUI {
namespace {

const char kDialog[] =
    "<SOUI width='200' height='100'><root>"
    "<button name='ok' id='IDOK' pos='10,60,@80,@30' text='OK'/>"
    "<button name='cancel' id='IDCANCEL' pos='110,60,@80,@30' text='Cancel'/>"
    "<button name='custom' id='42' pos='10,10,@80,@30'/>"
    "</root></SOUI>";

class DialogTest : public ::testing::Test {
 protected:
  void SetUp() override {
    app_.GetResProvider().AddXml(L"LAYOUT", L"dlg", kDialog);
    owner_.InitFromXmlText(L"<SOUI width='400' height='300'><root/></SOUI>");
    owner_.Create();
  }
  // Clicks the named button of the dialog once the loop has run `at_ms`.
  void ClickLater(SHostDialog* dlg, const wchar_t* name, uint32_t at_ms) {
    app_.GetClock().SetTimer(at_ms, [this, dlg, name] {
      owner_enabled_during_loop_ = IsWindowEnabled(owner_.m_hWnd);
      test::EventGenerator gen(dlg);
      gen.MoveMouseToCenterOf(dlg->FindChildByName(name));
      gen.ClickLeftButton();
    }, false);
  }
  SApplication app_;
  SHostWnd owner_;
  bool owner_enabled_during_loop_ = true;
};

TEST_F(DialogTest, InjectedClickOnOkEndsTheLoopWithIdOk) {
  SHostDialog dlg(L"LAYOUT:dlg");
  ClickLater(&dlg, L"ok", 30);
  EXPECT_EQ(dlg.DoModal(owner_.m_hWnd), IDOK);
  EXPECT_FALSE(owner_enabled_during_loop_);  // the owner is disabled while modal
  EXPECT_TRUE(IsWindowEnabled(owner_.m_hWnd));
  EXPECT_EQ(dlg.m_hWnd, nullptr);  // destroyed when the loop ends
  EXPECT_EQ(app_.GetClock().Now(), 30u);
}

TEST_F(DialogTest, CancelButtonAndEscapeEndWithIdCancel) {
  SHostDialog a(L"LAYOUT:dlg");
  ClickLater(&a, L"cancel", 5);
  EXPECT_EQ(a.DoModal(owner_.m_hWnd), IDCANCEL);

  SHostDialog b(L"LAYOUT:dlg");
  app_.GetClock().SetTimer(5, [&b] { b.OnKeyEvent(WM_KEYDOWN, VK_ESCAPE); }, false);
  EXPECT_EQ(b.DoModal(), IDCANCEL);
}

TEST_F(DialogTest, OnlyTheFirstEndDialogCounts) {
  SHostDialog dlg(L"LAYOUT:dlg");
  dlg.Create(owner_.m_hWnd);
  dlg.FindChildByName(L"custom")->subscribeEvent(EVT_CMD, [&dlg](EventArgs*) {
    dlg.EndDialog(42);
    dlg.EndDialog(7);
    return true;
  });
  ClickLater(&dlg, L"custom", 10);
  EXPECT_EQ(dlg.DoModal(owner_.m_hWnd), 42);
}

TEST_F(DialogTest, ALoopThatNothingCanEndReturnsMinusOneAndLogs) {
  SHostDialog dlg(L"LAYOUT:dlg");
  EXPECT_EQ(dlg.DoModal(owner_.m_hWnd), -1);
  EXPECT_TRUE(QVLogSinkOf(app_).Contains(L"DoModal: nothing left that could end the dialog"));
  EXPECT_TRUE(IsWindowEnabled(owner_.m_hWnd));
}

}  // namespace
}  // namespace SOUI
