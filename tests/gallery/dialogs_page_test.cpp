// The gallery's text and dialogs page driven as a user would: links,
// legends and checks answer in the status line, and every dialog button
// opens its box, which a scripted click closes.
#include <gtest/gtest.h>

#include <functional>

#include "display/legend.h"
#include "gallery_page_test_base.h"
#include "popups/custom_dialog.h"
#include "popups/dialogs.h"
#include "soui/hostdialog.h"

namespace {

using SOUI::SStringW;

class DialogsPageTest : public gallery::GalleryPageTest {
 protected:
  // Runs act on the dialog that is active after `at` ms of its modal loop.
  void At(uint32_t at, std::function<void(SOUI::SHostWnd&)> act) {
    app_->GetClock().SetTimer(at, [this, act] {
      SOUI::SHostWnd* dlg = app_->GetActiveHost();
      ASSERT_NE(dlg, nullptr);
      ASSERT_NE(dlg, host());
      dlg->UpdateLayout();
      act(*dlg);
    }, false);
  }
  static void ClickIn(SOUI::SHostWnd& h, SOUI::SWindow* w) {
    ASSERT_NE(w, nullptr);
    SOUI::test::EventGenerator gen(&h);
    gen.MoveMouseToCenterOf(w);
    gen.ClickLeftButton();
  }
  SStringW Status() { return Find(L"demo_dialog_status")->GetWindowText(); }
};

TEST_F(DialogsPageTest, LinksAndLegendsReport) {
  Click(L"demo_link_b3");
  EXPECT_EQ(Status(), SStringW(L"Link clicked: B3 Fees"));
  Click(L"demo_legend_ma10");
  EXPECT_EQ(Status(), SStringW(L"MA10 12.08: series hidden"));
  EXPECT_FALSE(Find<QVStandardCtrls::CQVLegend>(L"demo_legend_ma10")->IsLegendChecked());
}

TEST_F(DialogsPageTest, EveryMessageBoxButtonOpensABoxThatAnswers) {
  const wchar_t* const boxes[] = {L"demo_box_ok", L"demo_box_okcancel", L"demo_box_three"};
  for (const wchar_t* name : boxes) {
    At(10, [](SOUI::SHostWnd& dlg) { ClickIn(dlg, dlg.FindChildByID(100010001)); });
    Click(name);
    EXPECT_EQ(Status(), SStringW(L"Message box closed by the rightmost button (1)")) << name;
  }
  // The check box state is reported after the box closed.
  At(10, [](SOUI::SHostWnd& dlg) {
    ClickIn(dlg, dlg.FindChildByID(100020002));
    ClickIn(dlg, dlg.FindChildByName(L"btn_close"));
  });
  Click(L"demo_box_check");
  EXPECT_EQ(Status(), SStringW(L"Message box closed from the title bar (8), do not ask again"));
  // The bottom-left link goes to its registered handler.
  At(10, [](SOUI::SHostWnd& dlg) {
    ClickIn(dlg, dlg.FindChildByID(100020001));
    ClickIn(dlg, dlg.FindChildByID(100010001));
  });
  Click(L"demo_box_links");
  EXPECT_EQ(Status(), SStringW(L"Dialog link: Help"));
  // Busy confirm: OK waits for the one-second answer.
  At(10, [](SOUI::SHostWnd& dlg) { ClickIn(dlg, dlg.FindChildByID(100010002)); });
  Click(L"demo_box_busy");
  EXPECT_EQ(Status(), SStringW(L"Message box closed by the second button (2)"));
}

TEST_F(DialogsPageTest, CustomDialogModalAndModeless) {
  At(10, [](SOUI::SHostWnd& dlg) {
    EXPECT_NE(dlg.FindChildByName(L"transfer_amount"), nullptr);
    ClickIn(dlg, dlg.FindChildByID(100020002));
    dlg.SaveFramePng(SStringW::FromUtf8(::testing::TempDir() + "gallery_custom_dialog.png"));
    ClickIn(dlg, dlg.FindChildByID(100010002));
  });
  Click(L"demo_custom_modal");
  EXPECT_EQ(Status(), SStringW(L"Custom dialog closed by the second button (2), remembered"));

  Click(L"demo_custom_modeless");
  SOUI::SHostWnd* modeless = app_->GetActiveHost();
  ASSERT_NE(modeless, host());
  modeless->UpdateLayout();
  EXPECT_FALSE(modeless->FindChildByID(100020000 + 0)->IsVisible() &&
               modeless->FindChildByID(100010001)->IsVisible());
  ClickIn(*modeless, modeless->FindChildByID(100000000));
  Advance(1);
  EXPECT_EQ(modeless->m_hWnd, nullptr);
  // A fresh one opens on the next click.
  Click(L"demo_custom_modeless");
  EXPECT_NE(app_->GetActiveHost(), host());
}

}  // namespace
