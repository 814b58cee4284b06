#include "popups/toast.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "library_test_base.h"
#include "qvhost/qvlog.h"
#include "soui/qvrichtext.h"
#include "soui/sapp.h"
#include "soui/skin.h"
#include "testing/event_generator.h"

namespace QVStandardCtrls {
namespace test {
namespace {

using SOUI::CRect;
using SOUI::SHostWnd;
using SOUI::SStringW;

const wchar_t kOwnerXml[] = L"<SOUI><root/></SOUI>";

class ToastTest : public LibraryTestBase {
 protected:
  void SetUp() override {
    LibraryTestBase::SetUp();
    CreateHost(kOwnerXml, 400, 300);
    // A known owner rectangle: (100, 50) - (500, 350).
    host()->SetWindowPos(nullptr, 100, 50, 400, 300, SOUI::SWP_NOZORDER);
  }
  void TearDown() override {
    IQVToast::SetToastOptions(QVToastOptions());
    LibraryTestBase::TearDown();
  }
  HWND owner() { return host()->m_hWnd; }
  std::shared_ptr<CQVToastWnd> toast() { return IQVToast::FindToastWnd(owner()); }
  std::unique_ptr<SHostWnd> MakeOwner(int x, int y, int cx, int cy) {
    auto h = std::make_unique<SHostWnd>();
    h->InitFromXmlText(kOwnerXml);
    h->Create(nullptr, x, y, cx, cy);
    h->ShowWindow(SOUI::SW_SHOW);
    return h;
  }
};

TEST_F(ToastTest, SlidesInAndOutInFiveTicksOfTwentyMsOverTheOwner) {
  ASSERT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Success, L"Order filled", 0, 200));
  std::shared_ptr<CQVToastWnd> t = toast();
  ASSERT_TRUE(t);
  // Shown without activation, disabled, owned by the owner.
  EXPECT_TRUE(t->IsWindowVisible());
  EXPECT_FALSE(t->IsWindowEnabled());
  EXPECT_EQ(t->GetOwner(), owner());
  EXPECT_EQ(SOUI::GetActiveWindow(), owner());
  // 12 characters of 7 px: 12 + 24 + 8 + 84 + 12 wide, one line of 40 plus 2 x 11.
  ASSERT_EQ(t->GetToastWidth(), 140);
  ASSERT_EQ(t->GetToastHeight(), 62);
  const int left = 100 + (400 - 140) / 2;

  // In: pinned at the owner's top while y = 82p - 51 is below 1, then y.
  const double in[] = {0, 0.488, 0.784, 0.936, 0.992, 1};
  const int in_top[] = {50, 50, 63, 75, 80, 81};
  for (int i = 0; i < 6; ++i) {
    Advance(20);
    EXPECT_NEAR(t->GetProgress(), in[i], 1e-9) << i;
    EXPECT_EQ(t->GetWindowRect(), CRect(left, in_top[i], left + 140, in_top[i] + 62)) << i;
  }
  // Stays 200 ms, then out through the same values backwards.
  Advance(199);
  EXPECT_DOUBLE_EQ(t->GetProgress(), 1);
  Advance(1);
  const double out[] = {0.992, 0.936, 0.784, 0.488, 0};
  for (int i = 0; i < 5; ++i) {
    Advance(20);
    EXPECT_NEAR(t->GetProgress(), out[i], 1e-9) << i;
    EXPECT_EQ(t->GetWindowRect().top, in_top[4 - i]) << i;
    EXPECT_TRUE(t->IsWindowVisible());
  }
  Advance(20);
  EXPECT_FALSE(t->IsWindowVisible());
  EXPECT_FALSE(t->IsToastVisible());
  // Nothing runs any more: the window stays hidden.
  Advance(1000);
  EXPECT_FALSE(t->IsWindowVisible());
}

TEST_F(ToastTest, PinnedStepsShiftTheCardInsideTheWindow) {
  ASSERT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Tip, L"Order filled", 0, 1000));
  SOUI::SWindow* card = toast()->FindChildByName(L"toast");
  ASSERT_NE(card, nullptr);
  Layout();
  toast()->UpdateLayout();
  // p = 0: y = -51, shifted by -51 / 40 of the card's height (fully hidden).
  Advance(20);
  toast()->UpdateLayout();
  EXPECT_LE(card->GetWindowRect().bottom, 0);
  toast()->Render();
  ASSERT_TRUE(toast()->GetDirtyRect().IsRectEmpty());
  // p = 1: in place, no shift, and painted again where the card now is.
  Advance(100);
  EXPECT_FALSE(toast()->GetDirtyRect().IsRectEmpty());
  toast()->UpdateLayout();
  EXPECT_EQ(card->GetWindowRect(), CRect(0, 0, 140, 62));
}

TEST_F(ToastTest, VerticalOffsetMovesEveryStepDown) {
  ASSERT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Tip, L"Order filled", 30, 1000));
  Advance(20);
  EXPECT_EQ(toast()->GetWindowRect().top, 80);
  Advance(100);
  EXPECT_EQ(toast()->GetWindowRect().top, 111);
}

TEST_F(ToastTest, ContentMeasuresWrapsAndNamesTheIcon) {
  // Short text: the narrowest toast (56 px of text).
  ASSERT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Warning, L"Hi", 0, 1000));
  EXPECT_EQ(toast()->GetToastWidth(), 12 + 24 + 8 + 56 + 12);
  EXPECT_EQ(toast()->GetToastHeight(), 62);
  // Longer than 334 px: wraps at the widest toast and grows to the taller height.
  const SStringW long_text(L"The order could not be sent because the market is closed for the day, try again later");
  ASSERT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Error, long_text.c_str(), 0, 1000));
  EXPECT_EQ(toast()->GetToastWidth(), 12 + 24 + 8 + 334 + 12);
  EXPECT_EQ(toast()->GetToastHeight(), 51 + 22);
  auto* rich = toast()->FindChildByName2<SOUI::QVRichText>(L"rich_toast_text");
  ASSERT_NE(rich, nullptr);
  EXPECT_EQ(rich->GetPlainText(), long_text);
  // Markup in the text stays text (CDATA), even a CDATA terminator.
  ASSERT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Tip, L"a<b>&c]]>d", 0, 1000));
  EXPECT_EQ(rich->GetPlainText(), SStringW(L"a<b>&c]]>d"));
  EXPECT_EQ(rich->GetParagraphCount(), 1);

  // Each icon type names its skin; others and the skin overload's empty name the background.
  const std::pair<int, const wchar_t*> icons[] = {{1, L"skin_toast_icon_tip"}, {2, L"skin_toast_icon_warn"},
                                                  {3, L"skin_toast_icon_succeed"}, {4, L"skin_toast_icon_error"},
                                                  {7, L"skin_toast_bg"}};
  SOUI::SWindow* image = toast()->FindChildByName(L"image");
  ASSERT_NE(image, nullptr);
  for (const auto& icon : icons) {
    IQVToast::TrackPopupToast(owner(), static_cast<EnQVToastIconType>(icon.first), L"x", 0, 10);
    ASSERT_NE(image->GetBkgndSkin(), nullptr) << icon.first;
    EXPECT_EQ(image->GetBkgndSkin()->GetSkinName(), SStringW(icon.second)) << icon.first;
  }
  IQVToast::TrackPopupToast(owner(), L"", L"x", 0, 10);
  EXPECT_EQ(image->GetBkgndSkin()->GetSkinName(), SStringW(L"skin_toast_bg"));
  IQVToast::TrackPopupToast(owner(), L"skin_toast_icon_warn", nullptr, 0, 10);
  EXPECT_EQ(image->GetBkgndSkin()->GetSkinName(), SStringW(L"skin_toast_icon_warn"));
}

TEST_F(ToastTest, SecondToastForOneOwnerReplacesTheTextAndRestartsTheSlide) {
  ASSERT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Tip, L"First", 0, 3000));
  std::shared_ptr<CQVToastWnd> first = toast();
  Advance(80);
  EXPECT_NEAR(first->GetProgress(), 0.936, 1e-9);
  ASSERT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Error, L"Second one", 0, 3000));
  // Same window, new text, back to the start of the slide.
  EXPECT_EQ(toast(), first);
  EXPECT_EQ(IQVToast::ToastWndCount(), 1u);
  EXPECT_EQ(first->GetText(), SStringW(L"Second one"));
  EXPECT_EQ(first->GetStayTime(), 3000u);
  EXPECT_DOUBLE_EQ(first->GetProgress(), 0);
  Advance(20);
  EXPECT_DOUBLE_EQ(first->GetProgress(), 0);
  Advance(100);
  EXPECT_DOUBLE_EQ(first->GetProgress(), 1);
}

TEST_F(ToastTest, TwoOwnersGetTwoWindowsEachCentredOnItsOwner) {
  std::unique_ptr<SHostWnd> other = MakeOwner(600, 200, 200, 100);
  ASSERT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Tip, L"Order filled", 0, 1000));
  ASSERT_TRUE(IQVToast::TrackPopupToast(other->m_hWnd, QVToastIcon_Tip, L"Order filled", 0, 1000));
  Advance(120);
  std::shared_ptr<CQVToastWnd> a = toast(), b = IQVToast::FindToastWnd(other->m_hWnd);
  ASSERT_TRUE(a && b);
  EXPECT_NE(a, b);
  EXPECT_EQ(IQVToast::ToastWndCount(), 2u);
  EXPECT_EQ(a->GetWindowRect(), CRect(230, 81, 370, 143));
  EXPECT_EQ(b->GetWindowRect(), CRect(630, 231, 770, 293));
}

TEST_F(ToastTest, StayTimeZeroSlidesOutAtOnce) {
  ASSERT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Tip, L"Quick", 0, 0));
  Advance(120);
  EXPECT_DOUBLE_EQ(toast()->GetProgress(), 1);
  // The stay timer fires at once; the first hide tick follows 20 ms later.
  Advance(20);
  EXPECT_NEAR(toast()->GetProgress(), 0.992, 1e-9);
  Advance(100);
  EXPECT_FALSE(toast()->IsWindowVisible());
}

TEST_F(ToastTest, InvalidOwnerIsRefusedWithOneLogLine) {
  QVLogSinkOf(*app_).Clear();
  EXPECT_FALSE(IQVToast::TrackPopupToast(nullptr, QVToastIcon_Tip, L"x", 0, 100));
  std::unique_ptr<SHostWnd> gone = MakeOwner(0, 0, 100, 100);
  const HWND stale = gone->m_hWnd;
  gone.reset();
  EXPECT_FALSE(IQVToast::TrackPopupToast(stale, L"skin_toast_bg", L"x", 0, 100));
  EXPECT_EQ(IQVToast::ToastWndCount(), 0u);
  const auto& lines = QVLogSinkOf(*app_).Lines();
  ASSERT_EQ(lines.size(), 2u);
  for (const auto& line : lines) {
    EXPECT_EQ(line.level, 3);
    EXPECT_EQ(line.category, "COMMON");
    EXPECT_EQ(line.file, "QVToast.cpp");
    EXPECT_EQ(line.function, "QVStandardCtrls::IQVToast::TrackPopupToast");
    EXPECT_EQ(line.message.Left(41), SStringW(L"IQVToast::TrackPopupToast  hWnd Not Valid"));
  }
}

TEST_F(ToastTest, DestroyedOwnerTakesItsEntryAndWindowAlong) {
  std::unique_ptr<SHostWnd> other = MakeOwner(0, 0, 300, 200);
  const HWND other_hwnd = other->m_hWnd;
  ASSERT_TRUE(IQVToast::TrackPopupToast(other_hwnd, QVToastIcon_Tip, L"Bye", 0, 1000));
  const HWND toast_hwnd = IQVToast::FindToastWnd(other_hwnd)->m_hWnd;
  Advance(40);  // mid-slide: its timers must die with it
  other.reset();
  EXPECT_EQ(IQVToast::FindToastWnd(other_hwnd), nullptr);
  EXPECT_FALSE(SOUI::IsWindow(toast_hwnd));
  Advance(5000);  // no late tick reaches the freed toast
  // The owner that stays keeps working.
  EXPECT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Tip, L"Still here", 0, 10));
}

TEST_F(ToastTest, ManyToastsOverOwnersCreatedAndDestroyedLeaveNothingBehind) {
  const size_t hosts_before = app_->GetHosts().size();
  for (int round = 0; round < 20; ++round) {
    std::unique_ptr<SHostWnd> o = MakeOwner(round, round, 300, 200);
    for (int i = 0; i < 10; ++i) {
      ASSERT_TRUE(IQVToast::TrackPopupToast(o->m_hWnd, static_cast<EnQVToastIconType>(1 + i % 4), L"Order filled",
                                            0, static_cast<unsigned>(i * 7)));
      Advance(static_cast<uint32_t>(i * 13));
    }
  }
  EXPECT_EQ(IQVToast::ToastWndCount(), 0u);
  EXPECT_EQ(app_->GetHosts().size(), hosts_before);
  EXPECT_EQ(app_->GetClock().PendingTimers(), 0u);
}

// ---- opt-in options ----

TEST_F(ToastTest, CoalescingCountsRepeatsInsteadOfRestarting) {
  QVToastOptions options;
  options.coalesce = true;
  IQVToast::SetToastOptions(options);
  ASSERT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Success, L"Order filled", 0, 500));
  std::shared_ptr<CQVToastWnd> t = toast();
  Advance(60);
  const double mid_slide = t->GetProgress();
  // A repeat while sliding in: counted, the slide goes on.
  ASSERT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Success, L"Order filled", 0, 500));
  EXPECT_DOUBLE_EQ(t->GetProgress(), mid_slide);
  Advance(60);
  EXPECT_DOUBLE_EQ(t->GetProgress(), 1);
  // A repeat while staying starts the stay again.
  Advance(400);
  ASSERT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Success, L"Order filled", 0, 500));
  EXPECT_EQ(t->GetRepeatCount(), 3);
  EXPECT_EQ(t->GetText(), SStringW(L"Order filled"));
  auto* rich = t->FindChildByName2<SOUI::QVRichText>(L"rich_toast_text");
  EXPECT_EQ(rich->GetPlainText(), SStringW(L"Order filled \u00D73"));
  Advance(499);
  EXPECT_DOUBLE_EQ(t->GetProgress(), 1);
  // A repeat while sliding out brings it back in from where it was.
  Advance(41);
  const double leaving = t->GetProgress();
  ASSERT_LT(leaving, 1);
  ASSERT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Success, L"Order filled", 0, 500));
  Advance(20);
  EXPECT_GT(t->GetProgress(), leaving);
  EXPECT_EQ(t->GetRepeatCount(), 4);
  // Another text (or icon) restarts as usual, counting from one.
  ASSERT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Error, L"Order filled", 0, 500));
  EXPECT_EQ(t->GetRepeatCount(), 1);
  EXPECT_DOUBLE_EQ(t->GetProgress(), 0);
  EXPECT_EQ(rich->GetPlainText(), SStringW(L"Order filled"));
  // Once hidden, the same text is a new toast.
  Advance(2000);
  ASSERT_FALSE(t->IsWindowVisible());
  ASSERT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Error, L"Order filled", 0, 500));
  EXPECT_EQ(t->GetRepeatCount(), 1);
}

TEST_F(ToastTest, PauseOnHoverHoldsTheStayWhileTheMouseIsOver) {
  // Off (the default): disabled, so the mouse over it changes nothing.
  ASSERT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Tip, L"Order filled", 0, 200));
  std::shared_ptr<CQVToastWnd> t = toast();
  SOUI::test::EventGenerator over(t.get());
  Advance(120);
  over.MoveMouseTo(70, 31);
  Advance(320);
  EXPECT_FALSE(t->IsWindowVisible());

  QVToastOptions options;
  options.pause_on_hover = true;
  IQVToast::SetToastOptions(options);
  ASSERT_TRUE(IQVToast::TrackPopupToast(owner(), QVToastIcon_Tip, L"Order filled", 0, 200));
  EXPECT_TRUE(t->IsWindowEnabled());
  EXPECT_EQ(SOUI::GetActiveWindow(), owner());
  Advance(120);
  Advance(100);  // half the stay
  over.MoveMouseTo(70, 30);
  Advance(5000);
  EXPECT_DOUBLE_EQ(t->GetProgress(), 1);
  // Away again: the other half, then out.
  over.MouseLeaveHost();
  Advance(80);
  EXPECT_DOUBLE_EQ(t->GetProgress(), 1);
  Advance(40);
  EXPECT_LT(t->GetProgress(), 1);
  Advance(120);
  EXPECT_FALSE(t->IsWindowVisible());
}

// Without the toast layout no window can be had: refused with the second line.
class ToastWithoutLayoutTest : public SOUI::test::UiTestBase {};

TEST_F(ToastWithoutLayoutTest, RefusesWhenTheToastWindowCannotBeCreated) {
  CreateHost(kOwnerXml, 200, 100);
  QVLogSinkOf(*app_).Clear();
  EXPECT_FALSE(IQVToast::TrackPopupToast(host()->m_hWnd, QVToastIcon_Tip, L"x", 0, 100));
  EXPECT_TRUE(LogContains(L"IQVToast::TrackPopupToast  spToast error! spToast->m_hWnd"));
}

}  // namespace
}  // namespace test
}  // namespace QVStandardCtrls
