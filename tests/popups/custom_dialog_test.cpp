// The custom dialog: its attribute table, the user area from a layout
// resource, rebuilding after creation, the title bar, modal and modeless.
#include "popups/custom_dialog.h"

#include <gtest/gtest.h>

#include "display/buttons.h"
#include "library_test_base.h"
#include "qvhost/qvlog.h"
#include "qvhost/zoom.h"

namespace QVStandardCtrls {
namespace test {
namespace {

using SOUI::SStringW;
using SOUI::SWindow;

constexpr int kClose = 100000000, kRestore = 100000001, kMaximize = 100000002, kMinimize = 100000003;
constexpr int kBar = 100020000, kRightButton = 100010001, kLeftButton = 100010003;

const char kUserLayout[] =
    "<SOUI width='420' height='260' title='Transfer' BottomLeftStyle='CHECK' ButtomLeftCtrlText='Remember'"
    " btnStyle='OKCANCEL'>"
    "<root><text name='hello' pos='10,10' text='Amount'/></root></SOUI>";

class CustomDialogTest : public LibraryTestBase {
 protected:
  void SetUp() override {
    LibraryTestBase::SetUp();
    app_->GetResProvider().AddXml(L"LAYOUT", L"transfer", kUserLayout);
    CreateHost(L"<SOUI width='800' height='600'><root/></SOUI>");
  }
  void At(uint32_t at, std::function<void()> act) { app_->GetClock().SetTimer(at, std::move(act), false); }
  static void Click(SOUI::SHostWnd* h, SWindow* wnd) {
    ASSERT_NE(wnd, nullptr);
    h->UpdateLayout();
    SOUI::test::EventGenerator gen(h);
    gen.MoveMouseToCenterOf(wnd);
    gen.ClickLeftButton();
  }
};

TEST_F(CustomDialogTest, ClassNamesAreTheTagAndTheHostDialog) {
  EXPECT_STREQ(CQVCustomDialog::GetClassName(), L"CQVCustomDialog");
  EXPECT_STREQ(CQVCustomDialog::GetClassNameW(), L"CQVCustomDialog");
  CQVCustomDialog dlg(L"transfer");
  EXPECT_TRUE(dlg.IsClass(L"CQVCustomDialog"));
  EXPECT_FALSE(dlg.IsClass(L"qv_button"));
  // Registered by its tag with the library's classes.
  std::unique_ptr<SOUI::SHostDialog> made = QVDialogClasses::Create(L"CQVCustomDialog", L"transfer");
  ASSERT_NE(made, nullptr);
  EXPECT_NE(dynamic_cast<CQVCustomDialog*>(made.get()), nullptr);
  EXPECT_EQ(QVDialogClasses::Create(L"cqvcustomdialog", L"transfer"), nullptr);
  EXPECT_EQ(QVDialogClasses::Create(nullptr, nullptr), nullptr);
}

struct BoolRow {
  const wchar_t* value;
  bool shown;
};
class MinBtnTest : public CustomDialogTest, public ::testing::WithParamInterface<BoolRow> {};

TEST_P(MinBtnTest, FalseInAnyCaseHidesTheMinimiseButton) {
  CQVCustomDialog dlg(L"transfer");
  dlg.SetAttribute(L"MinBtn", GetParam().value);
  ASSERT_NE(dlg.CreateDialogWnd(host()->m_hWnd), nullptr);
  EXPECT_EQ(dlg.FindChildByID(kMinimize)->IsVisible() != FALSE, GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(Words, MinBtnTest,
                         ::testing::Values(BoolRow{L"false", false}, BoolRow{L"FALSE", false},
                                           BoolRow{L"False", false}, BoolRow{L"0", false}, BoolRow{L"no", true},
                                           BoolRow{L"1", true}, BoolRow{L"", true}));

TEST_F(CustomDialogTest, UserAreaAndRootAttributesComeFromTheLayoutResource) {
  CQVCustomDialog dlg(L"transfer");
  ASSERT_NE(dlg.CreateDialogWnd(host()->m_hWnd), nullptr);
  EXPECT_EQ(dlg.GetWindowRect().Width(), 420);
  EXPECT_EQ(dlg.GetWindowRect().Height(), 260);
  EXPECT_EQ(dlg.GetWindowText(), SStringW(L"Transfer"));
  EXPECT_EQ(dlg.GetBottomLeftKind(), CQVCustomDialog::BL_CHECK);
  SWindow* area = dlg.FindChildByName(L"user_area");
  ASSERT_NE(area, nullptr);
  EXPECT_NE(area->FindChildByName(L"hello"), nullptr);
  EXPECT_TRUE(dlg.FindChildByID(100020002)->IsVisible());
  EXPECT_EQ(dlg.FindChildByID(100020002)->GetWindowText(), SStringW(L"Remember"));
  // OKCANCEL: OK left and primary.
  EXPECT_EQ(dlg.FindChildByID(100010002)->GetWindowText(), SStringW(L"OK"));
  EXPECT_EQ(static_cast<CQVButton*>(dlg.FindChildByID(100010002))->GetQVStyle(), SStringW(L"MB2_P"));
}

TEST_F(CustomDialogTest, WhatTheHostSetsBeforeCreationWinsOverTheLayout) {
  CQVCustomDialog dlg(L"transfer");
  dlg.SetAttribute(L"title", L"Mine");
  dlg.SetAttribute(L"BottomLeftStyle", L"LINK");
  ASSERT_NE(dlg.CreateDialogWnd(nullptr), nullptr);
  EXPECT_EQ(dlg.FindChildByID(100000006)->GetWindowText(), SStringW(L"Mine"));
  EXPECT_EQ(dlg.GetBottomLeftKind(), CQVCustomDialog::BL_LINK);
}

TEST_F(CustomDialogTest, AMissingLayoutLogsAndLeavesTheUserAreaEmpty) {
  CQVCustomDialog dlg(L"nowhere");
  ASSERT_NE(dlg.CreateDialogWnd(host()->m_hWnd), nullptr);
  EXPECT_TRUE(LogContains(L"CQVCustomDialog: no layout resource LAYOUT:nowhere"));
  EXPECT_EQ(dlg.FindChildByName(L"user_area")->GetChildrenCount(), 0);
  // Nothing at the bottom: the bar goes.
  EXPECT_FALSE(dlg.FindChildByID(kBar)->IsVisible());
  CQVCustomDialog unnamed(nullptr);
  EXPECT_NE(unnamed.CreateDialogWnd(nullptr), nullptr);
}

TEST_F(CustomDialogTest, AttributesArrivingAfterCreationRebuildTheirArea) {
  CQVCustomDialog dlg(L"nowhere");
  ASSERT_NE(dlg.CreateDialogWnd(nullptr), nullptr);
  dlg.SetAttribute(L"ButtomBtn", L"Send;Later;Never;Extra");
  EXPECT_EQ(dlg.GetButtonLabels().size(), 3u);
  EXPECT_TRUE(dlg.FindChildByID(kBar)->IsVisible());
  EXPECT_TRUE(dlg.FindChildByID(kLeftButton)->IsVisible());
  EXPECT_EQ(dlg.FindChildByID(kLeftButton)->GetWindowText(), SStringW(L"Never"));
  dlg.SetAttribute(L"btnStyle", L"bogus");  // ignored
  EXPECT_EQ(dlg.GetButtonLabels().size(), 3u);
  dlg.SetAttribute(L"btnStyle", L"YESNO");
  EXPECT_FALSE(dlg.FindChildByID(kLeftButton)->IsVisible());
  EXPECT_EQ(dlg.FindChildByID(kRightButton)->GetWindowText(), SStringW(L"No"));
  dlg.SetAttribute(L"BottomLeftStyle", L"ICONLINK");
  dlg.SetAttribute(L"ButtomLeftCtrlText", L"Scan");
  EXPECT_TRUE(dlg.FindChildByID(100020006)->IsVisible());
  EXPECT_EQ(dlg.FindChildByID(100020006)->GetWindowText(), SStringW(L"Scan"));
  dlg.SetAttribute(L"BottomLeftStyle", L"nonsense");
  EXPECT_EQ(dlg.GetBottomLeftKind(), CQVCustomDialog::BL_ICONLINK);
  dlg.SetAttribute(L"title", L"Later title");
  EXPECT_EQ(dlg.FindChildByID(100000006)->GetWindowText(), SStringW(L"Later title"));
  EXPECT_FALSE(dlg.FindChildByID(100000005)->IsVisible());
  dlg.SetAttribute(L"ExBtnLeft", L"skin_minsysbtn_boxclose");
  EXPECT_TRUE(dlg.FindChildByID(100000005)->IsVisible());
  dlg.SetAttribute(L"btnStyle", L"NULL");
  dlg.SetAttribute(L"BottomLeftStyle", L"NULL");
  EXPECT_FALSE(dlg.FindChildByID(kBar)->IsVisible());
}

TEST_F(CustomDialogTest, ModalRunEndsWithButtonResultsAndTitleClose) {
  CQVCustomDialog a(L"transfer");
  At(10, [&] {
    EXPECT_TRUE(a.IsModal());
    EXPECT_FALSE(SOUI::IsWindowEnabled(host()->m_hWnd));
    Click(&a, a.FindChildByID(kRightButton));
  });
  EXPECT_EQ(a.DoModal(host()->m_hWnd), 1);
  EXPECT_FALSE(a.IsModal());

  CQVCustomDialog b(L"transfer");
  At(10, [&] { Click(&b, b.FindChildByID(kClose)); });
  EXPECT_EQ(b.DoModal(host()->m_hWnd), 8);

  CQVCustomDialog c(L"transfer");
  At(10, [&] { c.OnKeyEvent(WM_KEYDOWN, VK_ESCAPE); });
  EXPECT_EQ(c.DoModal(host()->m_hWnd), 8);
}

TEST_F(CustomDialogTest, ModelessCloseDestroysTheWindowAfterTheClick) {
  auto dlg = std::make_unique<CQVCustomDialog>(L"transfer");
  ASSERT_NE(dlg->CreateDialogWnd(host()->m_hWnd), nullptr);
  dlg->ShowWindow(SOUI::SW_SHOW);
  Click(dlg.get(), dlg->FindChildByID(kClose));
  EXPECT_NE(dlg->m_hWnd, nullptr);
  Advance(1);
  EXPECT_EQ(dlg->m_hWnd, nullptr);
  // A close whose deferred destroy finds the dialog gone does nothing.
  auto gone = std::make_unique<CQVCustomDialog>(L"transfer");
  ASSERT_NE(gone->CreateDialogWnd(nullptr), nullptr);
  Click(gone.get(), gone->FindChildByID(kClose));
  gone.reset();
  Advance(1);
}

TEST_F(CustomDialogTest, MaximiseRestoreAndTheCaptionDoubleClickRule) {
  CQVCustomDialog dlg(L"transfer");
  ASSERT_NE(dlg.CreateDialogWnd(host()->m_hWnd), nullptr);
  dlg.ShowWindow(SOUI::SW_SHOW);
  const SOUI::CRect normal = dlg.GetWindowRect();
  Click(&dlg, dlg.FindChildByID(kMaximize));
  EXPECT_TRUE(dlg.IsMaximized());
  EXPECT_TRUE(dlg.FindChildByID(kRestore)->IsVisible());
  EXPECT_FALSE(dlg.FindChildByID(kMaximize)->IsVisible());
  Click(&dlg, dlg.FindChildByID(kRestore));
  EXPECT_FALSE(dlg.IsMaximized());
  EXPECT_EQ(dlg.GetWindowRect(), normal);

  // A double click on the caption toggles...
  SOUI::test::EventGenerator gen(&dlg);
  dlg.UpdateLayout();
  SWindow* caption = dlg.FindChildByName(L"cap_title");
  gen.MoveMouseTo(caption->GetWindowRect().CenterPoint());
  gen.DoubleClickLeftButton();
  EXPECT_TRUE(dlg.IsMaximized());
  // ...and hiding maximise while minimise is hidden restores the window.
  dlg.SetAttribute(L"MinBtn", L"0");
  dlg.SetAttribute(L"MaxBtn", L"0");
  EXPECT_FALSE(dlg.IsMaximized());
  dlg.UpdateLayout();
  gen.MoveMouseTo(dlg.FindChildByName(L"cap_title")->GetWindowRect().CenterPoint());
  gen.DoubleClickLeftButton();
  EXPECT_FALSE(dlg.IsMaximized());  // only while the maximise button shows
}

TEST_F(CustomDialogTest, BusyPrimaryButtonAndEnterOption) {
  CQVCustomDialog dlg(L"transfer");
  std::function<void(bool)> finish;
  dlg.SetConfirmHandler([&finish](std::function<void(bool)> f) { finish = std::move(f); });
  dlg.SetEnterConfirms(true);
  At(10, [&] {
    dlg.OnKeyEvent(WM_KEYDOWN, VK_RETURN);
    EXPECT_TRUE(dlg.IsConfirmBusy());
    dlg.OnKeyEvent(WM_KEYDOWN, VK_RETURN);  // the busy button takes no more
  });
  At(20, [&] { finish(true); });
  EXPECT_EQ(dlg.DoModal(host()->m_hWnd), 2);
  finish(true);  // late: nothing
}

}  // namespace
}  // namespace test
}  // namespace QVStandardCtrls
