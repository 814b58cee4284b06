// The combo box and its drop list in a popup host, driven through the real
// input path on both hosts; pictures of an open list.
#include <gtest/gtest.h>

#include <cairo.h>

#include <chrono>

#include "backends/cairo_render.h"
#include "soui/checkctrls.h"
#include "soui/combobox.h"
#include "soui/edit.h"
#include "testing/ui_test_base.h"

namespace SOUI {
namespace {

class ComboBoxTest : public test::UiTestBase {
 protected:
  // A list-only combo "c" with five items and a check "other" beside it.
  SComboBox* MakeCombo(const wchar_t* extra_attrs = L"", const wchar_t* items = nullptr) {
    SStringW xml = SStringW(L"<combobox name='c' pos='20,20,@160,@28' ") + extra_attrs + L">" +
                   (items ? items
                          : L"<items><item text='Apple' data='10'/><item text='Banana' data='20'/>"
                            L"<item text='Cherry' data='30'/><item text='Damson'/><item text='Elder'/></items>") +
                   L"</combobox><check name='other' pos='220,20,@80,@20'>Other</check>";
    CreateHostWithChildren(xml, 400, 300);
    host()->SetWindowPos(nullptr, 100, 100, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    Layout();
    return Find<SComboBox>(L"c");
  }
  // Input on the open list's host (null when closed).
  test::EventGenerator* ListGen(SComboBox* c) {
    SDropDownWnd* dd = c->GetDropDownWnd();
    if (!dd) return nullptr;
    if (!list_gen_ || list_host_ != dd) list_gen_ = std::make_unique<test::EventGenerator>(dd);
    list_host_ = dd;
    return list_gen_.get();
  }
  void ClickOn(SWindow* w) {
    gen().MoveMouseToCenterOf(w);
    gen().ClickLeftButton();
  }
  void Key(UINT vk) { gen().PressAndReleaseKey(vk); }
  void TearDown() override {
    list_gen_.reset();
    UiTestBase::TearDown();
  }

  std::unique_ptr<test::EventGenerator> list_gen_;
  SHostWnd* list_host_ = nullptr;
};

TEST_F(ComboBoxTest, ClickOpensTheListInAnOwnedPopupThatDoesNotActivate) {
  SComboBox* c = MakeCombo(L"curSel='1'");
  ASSERT_NE(c, nullptr);
  EXPECT_EQ(c->GetWindowText(), L"Banana");
  ClickOn(c);
  ASSERT_TRUE(c->IsDropdown());
  SDropDownWnd* dd = c->GetDropDownWnd();
  // A second host, owned by the combo's, visible, on top, not active.
  EXPECT_TRUE(IsWindow(dd->m_hWnd));
  EXPECT_EQ(dd->GetOwner(), host()->m_hWnd);
  EXPECT_TRUE(dd->IsWindowVisible());
  EXPECT_EQ(GetActiveWindow(), host()->m_hWnd);
  EXPECT_EQ(app_->GetZOrder().back(), dd);
  // The owner's focus stays on the combo.
  EXPECT_EQ(host()->GetFocus(), c);
  // Under the combo, same width, one row per item.
  const CRect rc = dd->GetWindowRect();
  EXPECT_EQ(rc.left, 120);
  EXPECT_EQ(rc.top, 148);
  EXPECT_EQ(rc.Width(), 160);
  EXPECT_EQ(rc.Height(), 5 * c->GetItemHeightPx() + 2);
  EXPECT_EQ(app_->HostFromScreenPoint(rc.CenterPoint()), dd);
  // The selected item is highlighted when the list opens.
  EXPECT_EQ(c->GetListBox()->GetHotItem(), 1);
  EXPECT_EQ(CountEvents(EVT_CB_DROPDOWN), 1);
}

TEST_F(ComboBoxTest, KeyboardMovesPicksAndCancels) {
  SComboBox* c = MakeCombo();
  c->SetFocus();
  // Closed: Down steps the selection and tells the page each time.
  Key(VK_DOWN);
  Key(VK_DOWN);
  EXPECT_EQ(c->GetCurSel(), 1);
  EXPECT_EQ(CountEvents(EVT_CB_SELCHANGE), 2);
  Key(VK_UP);
  Key(VK_UP);
  Key(VK_UP);  // stays on the first
  EXPECT_EQ(c->GetCurSel(), 0);
  EXPECT_EQ(CountEvents(EVT_CB_SELCHANGE), 3);
  ClearEvents();

  // F4 opens; keys reach the list while the owner keeps its focus.
  Key(VK_F4);
  ASSERT_TRUE(c->IsDropdown());
  Key(VK_DOWN);
  Key(VK_DOWN);
  EXPECT_EQ(c->GetListBox()->GetHotItem(), 2);
  EXPECT_EQ(c->GetCurSel(), 0);
  EXPECT_EQ(host()->GetFocus(), c);
  // Enter picks the highlight and closes.
  Key(VK_RETURN);
  EXPECT_FALSE(c->IsDropdown());
  EXPECT_EQ(c->GetCurSel(), 2);
  EXPECT_EQ(CountEvents(EVT_CB_SELCHANGE), 1);
  EXPECT_EQ(CountEvents(EVT_CB_CLOSEUP), 1);

  // Alt+Down opens, Esc closes without a change.
  app_->SetKeyDown(VK_MENU, true);
  Key(VK_DOWN);
  app_->SetKeyDown(VK_MENU, false);
  ASSERT_TRUE(c->IsDropdown());
  const HWND popup = c->GetDropDownWnd()->m_hWnd;
  Key(VK_END);
  Key(VK_ESCAPE);
  EXPECT_FALSE(c->IsDropdown());
  EXPECT_FALSE(IsWindow(popup));
  EXPECT_EQ(c->GetCurSel(), 2);
  EXPECT_EQ(CountEvents(EVT_CB_SELCHANGE), 1);
  EXPECT_EQ(host()->GetFocus(), c);
}

TEST_F(ComboBoxTest, LettersJumpToTheNextItemStartingWithThem) {
  SComboBox* c = MakeCombo(L"", L"<items><item text='Bid'/><item text='ask'/><item text='Bond'/><item/></items>");
  c->SetFocus();
  // Closed: selects, with an event, wrapping past the end.
  gen().Char(L'b');
  EXPECT_EQ(c->GetCurSel(), 0);
  gen().Char(L'B');
  EXPECT_EQ(c->GetCurSel(), 2);
  gen().Char(L'b');
  EXPECT_EQ(c->GetCurSel(), 0);
  gen().Char(L'z');
  EXPECT_EQ(c->GetCurSel(), 0);
  EXPECT_EQ(CountEvents(EVT_CB_SELCHANGE), 3);
  // Open: moves the highlight only.
  Key(VK_F4);
  gen().Char(L'A');
  EXPECT_EQ(c->GetListBox()->GetHotItem(), 1);
  EXPECT_EQ(c->GetCurSel(), 0);
}

TEST_F(ComboBoxTest, ClickOnAnItemPicksItAndHoverHighlights) {
  SComboBox* c = MakeCombo();
  ClickOn(c);
  test::EventGenerator* lg = ListGen(c);
  ASSERT_NE(lg, nullptr);
  SComboListBox* list = c->GetListBox();
  lg->MoveMouseTo(list->GetItemRect(3).CenterPoint());
  EXPECT_EQ(list->GetHotItem(), 3);
  lg->ClickLeftButton();
  EXPECT_FALSE(c->IsDropdown());
  EXPECT_EQ(c->GetCurSel(), 3);
  EXPECT_EQ(c->GetWindowText(), L"Damson");
  ASSERT_EQ(CountEvents(EVT_CB_SELCHANGE), 1);
  // Picking the selected item again closes without an event.
  ClickOn(c);
  lg = ListGen(c);
  lg->MoveMouseTo(c->GetListBox()->GetItemRect(3).CenterPoint());
  lg->ClickLeftButton();
  EXPECT_FALSE(c->IsDropdown());
  EXPECT_EQ(CountEvents(EVT_CB_SELCHANGE), 1);
}

TEST_F(ComboBoxTest, OutsideClickClosesAndGoesOnExceptOnTheCombo) {
  SComboBox* c = MakeCombo();
  auto* other = Find<SCheckBox>(L"other");
  ClickOn(c);
  ASSERT_TRUE(c->IsDropdown());
  // A click elsewhere in the owner closes the list and still checks the box.
  ClickOn(other);
  EXPECT_FALSE(c->IsDropdown());
  EXPECT_TRUE(other->IsChecked());
  // A click on the combo while open only closes it (it does not reopen).
  ClickOn(c);
  ASSERT_TRUE(c->IsDropdown());
  ClearEvents();
  ClickOn(c);
  EXPECT_FALSE(c->IsDropdown());
  EXPECT_EQ(CountEvents(EVT_CMD), 0);  // neither press nor release reached it
  EXPECT_EQ(CountEvents(EVT_CB_CLOSEUP), 1);
  ClickOn(c);
  EXPECT_TRUE(c->IsDropdown());
  // A right click outside closes too.
  gen().MoveMouseTo(380, 280);
  gen().ClickRightButton();
  EXPECT_FALSE(c->IsDropdown());
}

TEST_F(ComboBoxTest, EditableComboEditsTextAndOpensFromItsButtonOnly) {
  SComboBox* c = MakeCombo(L"dropDown='0' curSel='0'");
  SEdit* edit = c->GetEdit();
  ASSERT_NE(edit, nullptr);
  EXPECT_EQ(edit->GetWindowText(), L"Apple");
  // A click in the text focuses the edit without opening.
  ClickOn(edit);
  EXPECT_FALSE(c->IsDropdown());
  EXPECT_EQ(host()->GetFocus(), edit);
  gen().PressAndReleaseKey(VK_END);
  gen().Type(L"s");
  EXPECT_EQ(c->GetWindowText(), L"Apples");
  // Down in the edit steps the selection, which replaces the text.
  Key(VK_DOWN);
  EXPECT_EQ(c->GetCurSel(), 1);
  EXPECT_EQ(c->GetWindowText(), L"Banana");
  // The button at the right opens; a pick fills the edit.
  const CRect rc = c->GetWindowRect();
  gen().MoveMouseTo(rc.right - 5, rc.CenterPoint().y);
  gen().ClickLeftButton();
  ASSERT_TRUE(c->IsDropdown());
  EXPECT_EQ(host()->GetFocus(), edit);
  // Typing goes on to the edit while the list is open, replacing the
  // picked text, which starts selected.
  gen().Type(L"3x");
  gen().Char(0x08);
  gen().PressAndReleaseKey(VK_LEFT);
  gen().Type(L"2");
  EXPECT_EQ(c->GetWindowText(), L"23");
  EXPECT_TRUE(c->IsDropdown());
  test::EventGenerator* lg = ListGen(c);
  lg->MoveMouseTo(c->GetListBox()->GetItemRect(4).CenterPoint());
  lg->ClickLeftButton();
  EXPECT_EQ(c->GetWindowText(), L"Elder");
  // List-only again at run time: the edit goes.
  c->SetAttribute(L"dropDown", L"1", FALSE);
  EXPECT_EQ(c->GetEdit(), nullptr);
  EXPECT_EQ(c->GetWindowText(), L"Elder");
}

TEST_F(ComboBoxTest, ListStaysOnScreenFlippingAboveAndShiftingLeft) {
  app_->SetScreenRect(CRect(0, 0, 800, 600));
  SComboBox* c = MakeCombo();
  // The combo's bottom-right corner near the screen's.
  host()->SetWindowPos(nullptr, 700, 440, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  CRect anchor = c->GetWindowRect();
  anchor.OffsetRect(700, 440);
  const int h = 5 * c->GetItemHeightPx() + 2;
  ASSERT_GT(anchor.bottom + h, 600);
  ClickOn(c);
  ASSERT_TRUE(c->IsDropdown());
  const CRect rc = c->GetDropDownWnd()->GetWindowRect();
  EXPECT_EQ(rc.bottom, anchor.top);
  EXPECT_EQ(rc.Height(), h);
  EXPECT_EQ(rc.right, 800);
  EXPECT_EQ(rc.Width(), anchor.Width());
  // Room neither below nor above: the larger side, cut to fit.
  c->CloseUp();
  c->SetAttribute(L"dropHeight", L"1000", FALSE);
  for (int i = 0; i < 30; ++i) c->AddString(L"more");
  app_->SetScreenRect(CRect(0, 0, 800, 500));
  host()->SetWindowPos(nullptr, 0, 410, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  const CRect calc = c->CalcDropDownRect();
  EXPECT_EQ(calc.top, 0);
  EXPECT_EQ(calc.bottom, 430);
  EXPECT_EQ(calc.left, 20);
}

TEST_F(ComboBoxTest, LongListsScrollByWheelAndKeyboard) {
  SStringW items = L"<items>";
  for (int i = 0; i < 50; ++i) items.AppendFormat(L"<item text='Row %d'/>", i);
  items += L"</items><listStyle itemHeight='20'/>";
  SComboBox* c = MakeCombo(L"dropHeight='102'", items);
  ClickOn(c);
  ASSERT_TRUE(c->IsDropdown());
  SComboListBox* list = c->GetListBox();
  EXPECT_EQ(c->GetDropDownWnd()->GetWindowRect().Height(), 102);
  EXPECT_EQ(list->VisibleRows(), 5);
  // Two notches down: six rows.
  test::EventGenerator* lg = ListGen(c);
  lg->MoveMouseTo(list->GetWindowRect().CenterPoint());
  lg->MouseWheel(-240);
  EXPECT_EQ(list->GetTopIndex(), 6);
  lg->MouseWheel(2400);
  EXPECT_EQ(list->GetTopIndex(), 0);
  // End shows the last row, Home the first.
  Key(VK_END);
  EXPECT_EQ(list->GetHotItem(), 49);
  EXPECT_EQ(list->GetTopIndex(), 45);
  Key(VK_PRIOR);
  EXPECT_EQ(list->GetHotItem(), 45);
  Key(VK_HOME);
  EXPECT_EQ(list->GetTopIndex(), 0);
  Key(VK_RETURN);
  EXPECT_EQ(c->GetCurSel(), 0);
}

// ---- closing from outside and late callbacks ----------------------------------------------

TEST_F(ComboBoxTest, OwnerHiddenMovedOrDeactivatedClosesTheList) {
  SComboBox* c = MakeCombo();
  ClickOn(c);
  // Moving the popup itself without activation changes nothing.
  SDropDownWnd* dd = c->GetDropDownWnd();
  dd->SetWindowPos(nullptr, 10, 10, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  EXPECT_TRUE(c->IsDropdown());
  EXPECT_EQ(app_->GetZOrder().back(), dd);
  host()->SetWindowPos(nullptr, 110, 100, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  EXPECT_FALSE(c->IsDropdown());

  ClickOn(c);
  host()->ShowWindow(SW_HIDE);
  EXPECT_FALSE(c->IsDropdown());
  host()->ShowWindow(SW_SHOW);

  // Another window of ours activated, or another application's.
  ClickOn(c);
  SHostWnd other;
  other.InitFromXmlText(L"<SOUI width='50' height='50'><root/></SOUI>");
  other.Create();
  other.ShowWindow(SW_SHOW);
  EXPECT_FALSE(c->IsDropdown());
  SetActiveWindow(host()->m_hWnd);
  ClickOn(c);
  host()->OnNativeActivate(false);
  EXPECT_FALSE(c->IsDropdown());
}

TEST_F(ComboBoxTest, LateCallbacksAfterTheOwnerOrOpenerGoes) {
  SComboBox* c = MakeCombo();
  // The owner host destroyed while open.
  ClickOn(c);
  const HWND popup = c->GetDropDownWnd()->m_hWnd;
  list_gen_.reset();
  host_.reset();
  EXPECT_FALSE(IsWindow(popup));
  EXPECT_EQ(app_->GetActiveHost(), nullptr);

  // The opener removed from its tree while open, then destroyed.
  c = MakeCombo();
  ClickOn(c);
  ASSERT_TRUE(c->IsDropdown());
  SWindow* parent = c->GetParent();
  parent->RemoveChild(c);
  EXPECT_FALSE(c->IsDropdown());
  c->DropDown();  // detached: nothing to open from
  EXPECT_FALSE(c->IsDropdown());
  c->DestroyWindow();
}

TEST_F(ComboBoxTest, TimersAndSecondEndsAfterCloseAreHarmless) {
  SComboBox* c = MakeCombo();
  ClickOn(c);
  SDropDownWnd* dd = c->GetDropDownWnd();
  dd->SetTimer(7, 10);
  c->GetListBox()->SetTimer(8, 10);
  dd->EndDropDown(IDOK);
  EXPECT_EQ(dd->GetExitCode(), static_cast<UINT>(IDOK));
  dd->EndDropDown(IDCANCEL);  // no effect
  EXPECT_EQ(dd->GetExitCode(), static_cast<UINT>(IDOK));
  EXPECT_FALSE(c->IsDropdown());
  Advance(100);
  c->CloseUp();
  // The next input deletes the closed popup.
  gen().MoveMouseTo(1, 1);
  EXPECT_FALSE(c->IsDropdown());
}

TEST_F(ComboBoxTest, DisabledHostOrComboDoesNotOpen) {
  SComboBox* c = MakeCombo();
  host()->EnableWindow(FALSE);
  ClickOn(c);
  Key(VK_F4);
  EXPECT_FALSE(c->IsDropdown());
  host()->EnableWindow(TRUE);
  c->EnableWindow(FALSE, TRUE);
  ClickOn(c);
  c->DropDown();
  EXPECT_FALSE(c->IsDropdown());
}

// ---- bad input --------------------------------------------------------------------------

TEST_F(ComboBoxTest, BadInputIsBounded) {
  SComboBox* c = MakeCombo(L"curSel='9' dropHeight='-5' animateTime='200'",
                           L"<items><item/><item text=''/><item data='zz' icon='q'/><item>Inner</item></items>"
                           L"<bogus/>");
  ASSERT_NE(c, nullptr);
  EXPECT_EQ(c->GetCurSel(), -1);
  EXPECT_EQ(c->GetCount(), 4);
  EXPECT_EQ(c->GetLBText(3), L"Inner");
  EXPECT_EQ(c->GetLBText(-1), L"");
  EXPECT_EQ(c->GetLBText(99), L"");
  EXPECT_EQ(c->GetItemData(2), 0);
  EXPECT_FALSE(c->SetCurSel(4));
  EXPECT_FALSE(c->DeleteString(-1));
  EXPECT_TRUE(LogContains(L"bogus"));
  // Empty texts open and paint.
  ClickOn(c);
  ASSERT_TRUE(c->IsDropdown());
  EXPECT_NE(c->GetDropDownWnd()->Render(), nullptr);
  c->CloseUp();

  // A 64K-character item is cut and painted in bounded time.
  c->ResetContent();
  c->AddString(SStringW(L'W', 70000));
  EXPECT_EQ(c->GetLBText(0).GetLength(), SWindow::kMaxWindowTextLength);
  c->SetCurSel(0);
  ClickOn(c);
  const auto t0 = std::chrono::steady_clock::now();
  ASSERT_NE(host()->Render(), nullptr);
  ASSERT_NE(c->GetDropDownWnd()->Render(), nullptr);
  EXPECT_LT(std::chrono::steady_clock::now() - t0, std::chrono::seconds(2));
  c->CloseUp();

  // A huge item count: refused past the limit, the list opens at once.
  c->ResetContent();
  for (int i = 0; i < SComboBox::kMaxItems + 5; ++i) c->AddString(L"x");
  EXPECT_EQ(c->GetCount(), SComboBox::kMaxItems);
  EXPECT_TRUE(LogContains(L"items; refused"));
  ClickOn(c);
  ASSERT_TRUE(c->IsDropdown());
  Key(VK_END);
  EXPECT_EQ(c->GetListBox()->GetHotItem(), SComboBox::kMaxItems - 1);
  ASSERT_NE(c->GetDropDownWnd()->Render(), nullptr);
  // Items deleted under the open list.
  c->DeleteString(SComboBox::kMaxItems - 1);
  EXPECT_EQ(c->GetListBox()->GetHotItem(), SComboBox::kMaxItems - 2);
  c->ResetContent();
  EXPECT_EQ(c->GetListBox()->GetHotItem(), -1);
  Key(VK_RETURN);
  EXPECT_FALSE(c->IsDropdown());
}

// ---- pictures ----------------------------------------------------------------------------

struct LookCase {
  const char* name;
  bool dark;
  int zoom;
};

class ComboBoxLookTest : public ComboBoxTest, public ::testing::WithParamInterface<LookCase> {};

// The owner and its open list composed as on a screen.
TEST_P(ComboBoxLookTest, OpenListLooksRight) {
  const LookCase& p = GetParam();
  app_->SetZoom(p.zoom);
  // An icon for two of the rows.
  pugi::xml_document skins;
  ASSERT_TRUE(skins.load_string("<uidef><skin><imglist name='t_icon' src='img/toast_tip.png'/></skin></uidef>"));
  ASSERT_TRUE(app_->GetResProvider().LoadUiDef(skins.child("uidef"), QV_SOURCE_DIR L"/theme/default/"));
  const wchar_t* colors = p.dark ? L"colorBkgnd='#1A1D23' colorText='#E6E8EB'" : L"colorBkgnd='#FFFFFF' colorText='#1F2329'";
  CreateHost((SStringW(L"<SOUI width='260dp' height='230dp'><root ") + colors +
              L" font='size:13dp'><combobox name='c' pos='16dp,16dp,@180dp,@28dp' curSel='1'>"
              L"<items><item text='Limit order' icon='0'/><item text='Market order'/><item text='Stop loss'/>"
              L"<item text='Take profit' icon='0'/><item text='Trailing stop with a long name'/>"
              L"<item text='Iceberg'/><item text='Fill or kill'/><item text='Good till cancelled'/></items>"
              L"<listStyle itemHeight='24dp' iconSkin='t_icon'/></combobox></root></SOUI>")
                 .c_str());
  auto* c = Find<SComboBox>(L"c");
  ASSERT_NE(c, nullptr);
  c->SetFocus();
  Key(VK_F4);
  ASSERT_TRUE(c->IsDropdown());
  Key(VK_DOWN);  // hover look on "Stop loss", selection on "Market order"
  SDropDownWnd* dd = c->GetDropDownWnd();
  ASSERT_NE(host()->Render(), nullptr);
  ASSERT_NE(dd->Render(), nullptr);
  auto* owner = dynamic_cast<CairoRenderTarget*>(host()->GetFrame());
  auto* popup = dynamic_cast<CairoRenderTarget*>(dd->GetFrame());
  ASSERT_TRUE(owner && popup);
  const CRect orc = host()->GetWindowRect(), prc = dd->GetWindowRect();
  EXPECT_EQ(prc.top, orc.top + c->GetWindowRect().bottom);
  EXPECT_EQ(prc.Height(), std::min(8 * c->GetItemHeightPx() + 2, 200 * p.zoom / 100));
  const CRect all = orc | prc;
  cairo_surface_t* screen = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, all.Width(), all.Height());
  cairo_t* cr = cairo_create(screen);
  cairo_set_source_rgb(cr, 0.5, 0.5, 0.5);  // the desktop
  cairo_paint(cr);
  cairo_set_source_surface(cr, owner->Surface(), orc.left - all.left, orc.top - all.top);
  cairo_paint(cr);
  cairo_set_source_surface(cr, popup->Surface(), prc.left - all.left, prc.top - all.top);
  cairo_paint(cr);
  cairo_destroy(cr);
  const std::string dir = std::getenv("QV_TEST_OUTPUT_DIR") ? std::getenv("QV_TEST_OUTPUT_DIR") : ::testing::TempDir();
  EXPECT_EQ(cairo_surface_write_to_png(screen, (dir + "/combo_open_" + p.name + ".png").c_str()), CAIRO_STATUS_SUCCESS);
  // The selected row is tinted, unlike the background, in both themes.
  cairo_surface_flush(screen);
  const auto px = [&](int x, int y) {
    return reinterpret_cast<uint32_t*>(cairo_image_surface_get_data(screen) + y * cairo_image_surface_get_stride(screen))[x];
  };
  CRect sel = c->GetListBox()->GetItemRect(1);
  sel.OffsetRect(prc.left - all.left, prc.top - all.top);
  EXPECT_NE(px(sel.right - 10, sel.CenterPoint().y), px(orc.Width() - 3, 3));
  cairo_surface_destroy(screen);
}

INSTANTIATE_TEST_SUITE_P(Themes, ComboBoxLookTest,
                         ::testing::Values(LookCase{"light_100", false, 100}, LookCase{"light_150", false, 150},
                                           LookCase{"dark_100", true, 100}, LookCase{"dark_150", true, 150}),
                         [](const ::testing::TestParamInfo<LookCase>& i) { return std::string(i.param.name); });

}  // namespace
}  // namespace SOUI
