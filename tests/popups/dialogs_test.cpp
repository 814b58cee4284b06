// The message box run modally and headless: input is scripted with clock
// timers that fire while the modal loop waits, and goes through the event
// generator like real input.
#include "popups/dialogs.h"

#include <gtest/gtest.h>

#include <functional>

#include "display/buttons.h"
#include "display/text_ctrls.h"
#include "library_test_base.h"
#include "qvhost/qvlog.h"
#include "qvhost/zoom.h"
#include "soui/qvrichtext.h"

namespace QVStandardCtrls {
namespace test {
namespace {

using SOUI::SStringW;
using SOUI::SWindow;
using Attr = QVDefaultDialogAttr;

constexpr int kRightButton = 100010001;
constexpr int kMiddleButton = 100010002;
constexpr int kLeftButton = 100010003;

// Exposes the protected steps for the cases that check them directly.
class ProbeDialog : public CQVDefaultDialog {
 public:
  using CQVDefaultDialog::CQVDefaultDialog;
  using CQVDefaultDialog::GetContentTextNode;
};

class DialogsTest : public LibraryTestBase {
 protected:
  void SetUp() override {
    LibraryTestBase::SetUp();
    CreateHost(L"<SOUI width='800' height='600'><root/></SOUI>");
  }
  // Runs act on the open message box after `at` ms of the modal loop.
  void At(uint32_t at, std::function<void(CQVDefaultDialog&)> act) {
    app_->GetClock().SetTimer(at, [this, act] {
      auto* dlg = dynamic_cast<CQVDefaultDialog*>(app_->GetActiveHost());
      ASSERT_NE(dlg, nullptr) << "no message box is active";
      dlg->UpdateLayout();
      act(*dlg);
    }, false);
  }
  static void Click(CQVDefaultDialog& dlg, SWindow* wnd) {
    ASSERT_NE(wnd, nullptr);
    ASSERT_TRUE(wnd->IsVisible(TRUE));
    SOUI::test::EventGenerator gen(&dlg);
    gen.MoveMouseToCenterOf(wnd);
    gen.ClickLeftButton();
  }
  static void ClickId(CQVDefaultDialog& dlg, int id) { Click(dlg, dlg.FindChildByID(id)); }
  int Run(const Attr& attr) { return CQVDefaultDialog::MessageBoxW(attr, host()->m_hWnd); }
  static Attr Message(const wchar_t* text, int style = Attr::Btn_Ok) {
    Attr a;
    a.title = L"Order";
    a.content_text = text;
    a.SetButtonStyle(static_cast<Attr::ButtonStyle>(style));
    return a;
  }
};

TEST_F(DialogsTest, RecordDefaultsLabelSetsAndButtonTexts) {
  Attr a;
  EXPECT_TRUE(a.app_window);
  EXPECT_EQ(a.width_class, 0);
  EXPECT_TRUE(a.button_texts.empty());
  a.SetButtonStyle(Attr::Btn_YesNoCancel);
  EXPECT_EQ(a.button_texts,
            (std::vector<SStringW>{L"@string\\102542", L"@string\\100204", L"@string\\100203"}));
  a.SetButtonStyle(static_cast<Attr::ButtonStyle>(7));  // above 6: unchanged
  EXPECT_EQ(a.button_texts.size(), 3u);
  a.SetButtonText(L"", L"Send", L"");
  EXPECT_EQ(a.button_texts, (std::vector<SStringW>{L"Send"}));
  a.SetContentIcon(Attr::Icon_Warn);
  EXPECT_EQ(a.content_icon, SStringW(L"skin_qvstd_dialog_icon_warn"));
  a.SetContentIcon(static_cast<Attr::ContentIcon>(9));
  EXPECT_TRUE(a.content_icon.IsEmpty());
  Attr copy = a;
  EXPECT_EQ(copy.button_texts, a.button_texts);
}

TEST_F(DialogsTest, ButtonSetsZeroAndTwoShowOneOkReturningOne) {
  for (int style : {Attr::Btn_Default, Attr::Btn_Ok}) {
    At(10, [](CQVDefaultDialog& dlg) {
      SWindow* ok = dlg.FindChildByID(kRightButton);
      EXPECT_EQ(ok->GetWindowText(), SStringW(L"OK"));
      EXPECT_EQ(static_cast<CQVButton*>(ok)->GetQVStyle(), SStringW(L"MB2_P"));
      EXPECT_FALSE(dlg.FindChildByID(kMiddleButton)->IsVisible());
      EXPECT_FALSE(dlg.FindChildByID(kLeftButton)->IsVisible());
      Click(dlg, ok);
    });
    EXPECT_EQ(Run(Message(L"Filled", style)), 1) << "style " << style;
  }
}

TEST_F(DialogsTest, EmptyFirstAndThirdTextsLeaveOnePrimaryButton) {
  Attr a = Message(L"Send the order?");
  a.SetButtonText(L"", L"Send", L"");
  At(10, [](CQVDefaultDialog& dlg) {
    auto* b = static_cast<CQVButton*>(dlg.FindChildByID(kRightButton));
    EXPECT_EQ(b->GetWindowText(), SStringW(L"Send"));
    EXPECT_EQ(b->GetQVStyle(), SStringW(L"MB2_P"));
    EXPECT_GE(b->GetWindowRect().Width(), ZPixel(74));
    Click(dlg, b);
  });
  EXPECT_EQ(Run(a), 1);
}

TEST_F(DialogsTest, OkCancelPutsOkLeftAndPrimary) {
  At(10, [](CQVDefaultDialog& dlg) {
    auto* left = static_cast<CQVButton*>(dlg.FindChildByID(kMiddleButton));
    auto* right = static_cast<CQVButton*>(dlg.FindChildByID(kRightButton));
    EXPECT_EQ(left->GetWindowText(), SStringW(L"OK"));
    EXPECT_EQ(left->GetQVStyle(), SStringW(L"MB2_P"));
    EXPECT_EQ(right->GetWindowText(), SStringW(L"Cancel"));
    EXPECT_EQ(right->GetQVStyle(), SStringW(L"MB2_D"));
    EXPECT_LT(left->GetWindowRect().right, right->GetWindowRect().left);
    Click(dlg, left);
  });
  EXPECT_EQ(Run(Message(L"Cancel all orders?", Attr::Btn_OkCancel)), 2);
  At(10, [](CQVDefaultDialog& dlg) { ClickId(dlg, kRightButton); });
  EXPECT_EQ(Run(Message(L"Cancel all orders?", Attr::Btn_OkCancel)), 1);
  // Three buttons: the leftmost closes with 3.
  At(10, [](CQVDefaultDialog& dlg) { ClickId(dlg, kLeftButton); });
  EXPECT_EQ(Run(Message(L"Save changes?", Attr::Btn_YesNoCancel)), 3);
}

TEST_F(DialogsTest, TitleBarCloseReturnsEightAndTheOwnerIsDisabledMeanwhile) {
  bool owner_enabled = true;
  At(10, [this, &owner_enabled](CQVDefaultDialog& dlg) {
    owner_enabled = SOUI::IsWindowEnabled(host()->m_hWnd);
    // The active box wears the selected frame.
    EXPECT_EQ(dlg.GetRoot()->GetBkgndSkin(), app_->GetResProvider().GetSkin(L"skin_qvstd_dialog_bg_selected",
                                                                              dlg.GetScale()).get());
    Click(dlg, dlg.FindChildByName(L"btn_close"));
  });
  EXPECT_EQ(Run(Message(L"Hi", Attr::Btn_YesNo)), 8);
  EXPECT_FALSE(owner_enabled);
  EXPECT_TRUE(SOUI::IsWindowEnabled(host()->m_hWnd));
}

TEST_F(DialogsTest, OneLineMessageSitsAtTwelveDpInTheMinimumHeight) {
  ProbeDialog dlg(Message(L"Order filled"));
  ASSERT_NE(dlg.CreateDialogWnd(host()->m_hWnd), nullptr);
  EXPECT_EQ(dlg.GetWindowRect().Height(), ZPixel(194));
  EXPECT_EQ(dlg.GetWindowRect().Width(), ZPixel(313));
  dlg.UpdateLayout();
  SWindow* text = dlg.FindChildByName(L"content_text");
  SWindow* area = dlg.FindChildByName(L"user_area");
  EXPECT_EQ(text->GetWindowRect().top - area->GetWindowRect().top, 12);
}

TEST_F(DialogsTest, LongerTextGrowsTheWindowButNeverBelowTheMinimum) {
  SStringW lots;
  for (int i = 0; i < 30; ++i) lots += L"The order could not be placed because the market is closed. ";
  ProbeDialog big(Message(lots));
  ASSERT_NE(big.CreateDialogWnd(host()->m_hWnd), nullptr);
  auto* text = big.FindChildByName2<CQVMultiLink>(L"content_text");
  const int hc = text->GetContentHeight(ZPixel(313) - ZPixel(74));
  EXPECT_GT(text->GetLineCount(ZPixel(313) - ZPixel(74)), 1);
  EXPECT_EQ(big.GetWindowRect().Height(), ZPixel(167) + hc - ZPixel(26));

  // Two short lines, a title and a link: the formula would give less than
  // the minimum, so the minimum holds.
  Attr a = Message(L"a\nb");
  a.content_title = L"Heads up";
  a.link_text = L"Details";
  ProbeDialog small(a);
  ASSERT_NE(small.CreateDialogWnd(host()->m_hWnd), nullptr);
  EXPECT_GE(small.GetWindowRect().Height(), ZPixel(194));
  EXPECT_TRUE(small.FindChildByName(L"content_link")->IsVisible());
}

TEST_F(DialogsTest, WidthClassesZeroToFour) {
  const int expected[] = {313, 373, 433, 493, 313};
  for (int cls = 0; cls <= 4; ++cls) {
    Attr a = Message(L"w");
    a.width_class = cls;
    ProbeDialog dlg(a);
    ASSERT_NE(dlg.CreateDialogWnd(nullptr), nullptr);
    EXPECT_EQ(dlg.GetWindowRect().Width(), ZPixel(expected[cls])) << "class " << cls;
  }
  // Scaled with the zoom.
  app_->SetZoom(150);
  ProbeDialog dlg(Message(L"w"));
  ASSERT_NE(dlg.CreateDialogWnd(nullptr), nullptr);
  EXPECT_EQ(dlg.GetWindowRect().Width(), 470);
}

TEST_F(DialogsTest, LinkRunSplitsIntoThreeParagraphs) {
  ProbeDialog dlg(Message(L"<ln>x</ln>"));
  const std::vector<SStringW> paras = dlg.GetContentTextNode();
  ASSERT_EQ(paras.size(), 3u);
  EXPECT_EQ(paras[0], SStringW(L"<RichEditContent><qv_text qvstyle=\"HR1\"></qv_text></RichEditContent>"));
  EXPECT_EQ(paras[1], SStringW(L"<RichEditContent><qv_text cursor=\"hand\" qvstyle=\"B2\" link-data=\"x\" >x"
                               L"</qv_text></RichEditContent>"));
  EXPECT_EQ(paras[2], paras[0]);
  ProbeDialog mixed(Message(L"See <ln>terms</ln> and <ln>fees</ln>."));
  EXPECT_EQ(mixed.GetContentTextNode().size(), 5u);
}

TEST_F(DialogsTest, RegisteredLinkHandlerGetsTheEventAndUnregisteredLinksLeaveTheBoxOpen) {
  Attr a = Message(L"Read the <ln>risk notice</ln> first");
  a.link_text = L"More";
  a.bottom_left_kind = Attr::BottomLeft_Link;
  a.bottom_left_text = L"Help";
  CQVDefaultDialog dlg(a);
  std::vector<SStringW> keys;
  dlg.RegisterLinkEvent(L"risk notice", SOUI::Subscriber([&keys](SOUI::EventArgs* e) {
    keys.push_back(static_cast<SOUI::EventRdtClick*>(e)->linkData);
    return true;
  }));
  dlg.RegisterLinkEvent(L"Help", SOUI::Subscriber([&keys](SOUI::EventArgs* e) {
    keys.push_back(L"help:" + static_cast<EventQVLinkClick*>(e)->text);
    return true;
  }));
  At(10, [](CQVDefaultDialog& d) {
    auto* text = d.FindChildByName2<CQVMultiLink>(L"content_text");
    // The link run is the second paragraph's only run.
    const auto& frags = text->LayoutFragments(text->GetClientRect().Width());
    const SWindow* area = text;
    for (const auto& f : frags) {
      if (f.text != L"risk" && f.text != L"risk notice" && f.text != L"risk ") continue;
      SOUI::test::EventGenerator gen(&d);
      gen.MoveMouseTo(area->GetClientRect().left + f.rc.CenterPoint().x,
                      area->GetClientRect().top + f.rc.CenterPoint().y);
      gen.ClickLeftButton();
      break;
    }
    Click(d, d.FindChildByName(L"content_link"));  // not registered
    ClickId(d, 100020001);                         // bottom-left "Help"
  });
  At(20, [](CQVDefaultDialog& d) {
    EXPECT_TRUE(d.IsModalRunning());
    ClickId(d, kRightButton);
  });
  EXPECT_EQ(dlg.DoModal(host()->m_hWnd), 1);
  EXPECT_EQ(keys, (std::vector<SStringW>{L"risk notice", L"help:Help"}));
}

TEST_F(DialogsTest, CheckStateIsReadableAfterTheBoxCloses) {
  Attr a = Message(L"Delete the watch list?", Attr::Btn_OkCancel);
  a.bottom_left_kind = Attr::BottomLeft_Check;
  a.bottom_left_text = L"Do not ask again";
  CQVDefaultDialog dlg(a);
  At(10, [](CQVDefaultDialog& d) {
    EXPECT_FALSE(d.FindChildByID(100020001)->IsVisible());
    ClickId(d, 100020002);
    ClickId(d, kMiddleButton);
  });
  EXPECT_EQ(dlg.DoModal(host()->m_hWnd), 2);
  EXPECT_TRUE(dlg.IsChecked());
}

TEST_F(DialogsTest, EscapeAndEnterOptions) {
  At(10, [](CQVDefaultDialog& d) { d.OnKeyEvent(WM_KEYDOWN, VK_ESCAPE); });
  EXPECT_EQ(Run(Message(L"x", Attr::Btn_OkCancel)), 1);
  Attr none = Message(L"x");
  none.button_texts.clear();
  At(10, [](CQVDefaultDialog& d) { d.OnKeyEvent(WM_KEYDOWN, VK_ESCAPE); });
  EXPECT_EQ(Run(none), 8);

  // Off by default: Enter does nothing; with the option it confirms.
  Attr a = Message(L"x", Attr::Btn_OkCancel);
  a.esc_closes = false;
  At(10, [](CQVDefaultDialog& d) {
    SOUI::test::EventGenerator gen(&d);
    gen.PressAndReleaseKey(VK_ESCAPE);
    gen.PressAndReleaseKey(VK_RETURN);
    EXPECT_TRUE(d.IsModalRunning());
  });
  At(20, [](CQVDefaultDialog& d) { ClickId(d, kRightButton); });
  EXPECT_EQ(Run(a), 1);
  a.enter_confirms = true;
  At(10, [](CQVDefaultDialog& d) { SOUI::test::EventGenerator(&d).PressAndReleaseKey(VK_RETURN); });
  EXPECT_EQ(Run(a), 2);
}

TEST_F(DialogsTest, BusyConfirmSwallowsClicksUntilTheHostFinishes) {
  Attr a = Message(L"Place the order?", Attr::Btn_OkCancel);
  int calls = 0;
  std::function<void(bool)> finish;
  a.on_confirm = [&](std::function<void(bool)> f) {
    ++calls;
    finish = std::move(f);
  };
  At(10, [](CQVDefaultDialog& d) {
    ClickId(d, kMiddleButton);
    EXPECT_TRUE(d.IsConfirmBusy());
    ClickId(d, kMiddleButton);  // swallowed while busy
  });
  At(20, [&finish](CQVDefaultDialog& d) {
    EXPECT_TRUE(d.IsModalRunning());
    finish(false);  // rejected: usable again
    EXPECT_FALSE(d.IsConfirmBusy());
    ClickId(d, kMiddleButton);
  });
  At(30, [&finish](CQVDefaultDialog&) { finish(true); });
  EXPECT_EQ(Run(a), 2);
  EXPECT_EQ(calls, 2);
  finish(true);  // late: the box is gone, nothing happens
}

TEST_F(DialogsTest, MarkupInLinkRunsDoesNotBreakTheBox) {
  At(10, [](CQVDefaultDialog& d) {
    auto* text = d.FindChildByName2<CQVMultiLink>(L"content_text");
    EXPECT_EQ(text->GetParagraphCount(), 3);
    EXPECT_NE(text->GetPlainText().Find(L"a<b&\"c"), -1);
    ClickId(d, kRightButton);
  });
  EXPECT_EQ(Run(Message(L"see <ln>a<b&\"c</ln> now")), 1);
}

// A derived box whose layout lacks the link and the tips icon.
class NoLinkDialog : public CQVDefaultDialog {
 public:
  using CQVDefaultDialog::CQVDefaultDialog;

 protected:
  void SetAttrBeforeCreate(pugi::xml_document& doc) override {
    CQVDefaultDialog::SetAttrBeforeCreate(doc);
    for (const char* name : {"content_link", "tips_icon"}) {
      pugi::xml_node n = doc.find_node([name](pugi::xml_node x) {
        return std::string(x.attribute("name").as_string()) == name;
      });
      n.parent().remove_child(n);
    }
  }
};

TEST_F(DialogsTest, MissingNamedElementsOfADerivedLayoutAreSkipped) {
  Attr a = Message(L"x");
  a.link_text = L"Details";
  a.SetContentIcon(Attr::Icon_Tips);
  NoLinkDialog dlg(a);
  At(10, [](CQVDefaultDialog& d) {
    EXPECT_EQ(d.FindChildByName(L"content_link"), nullptr);
    ClickId(d, kRightButton);
  });
  EXPECT_EQ(dlg.DoModal(host()->m_hWnd), 1);
}

}  // namespace
}  // namespace test
}  // namespace QVStandardCtrls
