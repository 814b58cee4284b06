// The window tree: creation from XML, attribute delivery, lookup, events.
#include <gtest/gtest.h>

#include <string>

#include "qvhost/qvlog.h"
#include "soui/stdctrls.h"
#include "testing/ui_test_base.h"

namespace SOUI {
namespace {

// Records every attribute it is given, then lets SWindow handle it.
class RecordingWnd : public SWindow {
  SOUI_CLASS_NAME(RecordingWnd, SWindow, L"recording")
 public:
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override {
    log.push_back(SStringW::Format2(L"%s=%s%s", name.c_str(), value.c_str(), loading ? L" (loading)" : L""));
    return SWindow::SetAttribute(name, value, loading);
  }
  int OnCreate() override {
    log.push_back(SStringW::Format2(L"create children=%u", GetChildrenCount()));
    return 0;
  }
  std::vector<SStringW> log;
};

class SWindowTest : public test::UiTestBase {
 protected:
  void SetUp() override {
    UiTestBase::SetUp();
    app_->GetFactory().RegisterWindowClass<RecordingWnd>();
  }
};

TEST_F(SWindowTest, AttributesArriveInDocumentOrderWhileLoadingThenChildrenThenCreate) {
  CreateHostWithChildren(
      L"<recording name='r' Pos='1,2,@3,@4' zeta='z' alpha='128' id='0x10'><window/><window/></recording>");
  auto* r = Find<RecordingWnd>(L"r");
  ASSERT_NE(r, nullptr);
  const std::vector<SStringW> expected = {L"name=r (loading)",   L"Pos=1,2,@3,@4 (loading)",
                                          L"zeta=z (loading)",   L"alpha=128 (loading)",
                                          L"id=0x10 (loading)", L"create children=2"};
  EXPECT_EQ(r->log, expected);
  EXPECT_EQ(r->GetID(), 16);
  EXPECT_EQ(r->GetAlpha(), 128);
  // Attribute names match without regard to case; unknown ones are refused.
  EXPECT_EQ(r->SetAttribute(L"ALPHA", L"7", FALSE), S_OK);
  EXPECT_EQ(r->GetAlpha(), 7);
  EXPECT_EQ(r->SetAttribute(L"no_such_attr", L"1", FALSE), E_NOTIMPL);
  EXPECT_EQ(r->GetAttribute(L"zeta"), L"");  // refused values are not remembered
  EXPECT_EQ(r->GetAttribute(L"alpha"), L"7");
  // Stored values come back whole, whatever the script; a later value wins.
  EXPECT_TRUE(SUCCEEDED(r->SetAttribute(L"name", L"腾讯控股 ✓", FALSE)));
  EXPECT_EQ(r->SetAttribute(L"Alpha", L"9", FALSE), S_OK);
  EXPECT_EQ(r->GetAttribute(L"NAME"), L"腾讯控股 ✓");
  EXPECT_EQ(r->GetAttribute(L"alpha"), L"9");
  EXPECT_EQ(r->GetAttribute(L"pos"), L"1,2,@3,@4");
}

TEST(SWindowAttributesTest, AnAttributeGivenTwiceInALayoutKeepsTheLastValueWhichLaterSetsReplace) {
  SApplication app;
  SHostWnd host;
  ASSERT_TRUE(host.InitFromXmlText(L"<SOUI><root><window name='w' alpha='10' data='one' alpha='20'/></root></SOUI>"));
  SWindow* w = host.GetRoot()->FindChildByName(L"w");
  ASSERT_NE(w, nullptr);
  EXPECT_EQ(w->GetAlpha(), 20);
  EXPECT_EQ(w->GetAttribute(L"alpha"), L"20");
  EXPECT_EQ(w->SetAttribute(L"alpha", L"30", FALSE), S_OK);
  EXPECT_EQ(w->GetAttribute(L"alpha"), L"30");
  EXPECT_EQ(w->GetAttribute(L"data"), L"one");
}

// What windows keep of a layout's text is shared by the windows of that
// load: a window outlives the others and still answers, and a later value
// replaces one the layout gave, leaving the rest.
TEST(SWindowAttributesTest, KeptLayoutTextOutlivesTheOtherWindowsAndTakesLaterValues) {
  SApplication app;
  SHostWnd host;
  ASSERT_TRUE(host.InitFromXmlText(L"<SOUI><root>"
                                   L"<window name='a' alpha='10' data='first'/>"
                                   L"<window name='b' data='second' tip='t'/>"
                                   L"<window name='c' class='no-such-class' data='third'/>"
                                   L"<window name='d' data='腾讯' alpha='5'/>"
                                   L"</root></SOUI>"));
  SWindow* root = host.GetRoot();
  SWindow* a = root->FindChildByName(L"a");
  ASSERT_NE(a, nullptr);
  EXPECT_EQ(a->SetAttribute(L"DATA", L"changed", FALSE), S_FALSE);
  EXPECT_EQ(a->GetAttribute(L"data"), L"changed");
  EXPECT_EQ(a->GetAttribute(L"alpha"), L"10");
  EXPECT_EQ(a->GetAttribute(L"name"), L"a");
  EXPECT_EQ(root->FindChildByName(L"c")->GetAttribute(L"data"), L"third");
  EXPECT_EQ(root->FindChildByName(L"d")->GetAttribute(L"data"), L"腾讯");
  EXPECT_EQ(root->FindChildByName(L"d")->GetAttribute(L"alpha"), L"5");
  // The others go, and another load comes; b still reads its text.
  root->DestroyChild(a);
  root->DestroyChild(root->FindChildByName(L"c"));
  root->DestroyChild(root->FindChildByName(L"d"));
  SHostWnd other;
  ASSERT_TRUE(other.InitFromXmlText(L"<SOUI><root><window name='b' data='other' tip='x'/></root></SOUI>"));
  SWindow* b = root->FindChildByName(L"b");
  ASSERT_NE(b, nullptr);
  EXPECT_EQ(b->GetAttribute(L"data"), L"second");
  EXPECT_EQ(b->GetAttribute(L"tip"), L"t");
  EXPECT_EQ(b->SetAttribute(L"tip", L"u", FALSE), S_FALSE);
  EXPECT_EQ(b->GetAttribute(L"tip"), L"u");
  EXPECT_EQ(b->GetAttribute(L"name"), L"b");
}

// A window whose kept text is larger than the first shared block (and one
// after it, in a block of its own) keeps every byte of it.
TEST(SWindowAttributesTest, KeptLayoutTextLargerThanASharedBlockIsKeptWhole) {
  SApplication app;
  SHostWnd host;
  const SStringW long_value(std::wstring(1500, L'x').c_str());
  const SStringW longer_value(std::wstring(3000, L'y').c_str());
  ASSERT_TRUE(host.InitFromXmlText(L"<SOUI><root><window name='a' data='" + long_value +
                                   L"'/><window name='b' data='" + longer_value + L"' tip='t'/></root></SOUI>"));
  SWindow* root = host.GetRoot();
  EXPECT_EQ(root->FindChildByName(L"a")->GetAttribute(L"data"), long_value);
  EXPECT_EQ(root->FindChildByName(L"b")->GetAttribute(L"data"), longer_value);
  EXPECT_EQ(root->FindChildByName(L"b")->GetAttribute(L"tip"), L"t");
}

// Windows whose styles come out the same share one; changing one window's
// style never reaches another, and a rejected value changes nothing.
TEST_F(SWindowTest, EqualStylesAreSharedAndChangesStayWithTheirWindow) {
  CreateHostWithChildren(
      L"<window name='a' colorText='#112233' padding='2,2,2,2'/>"
      L"<window name='b' padding='2,2,2,2' colorText='#112233'/>"
      L"<window name='c' colorText='#112233'/><window name='d'/><window name='e'/>");
  SWindow *a = Find(L"a"), *b = Find(L"b"), *c = Find(L"c");
  EXPECT_EQ(&a->GetStyle(), &b->GetStyle());
  EXPECT_NE(&a->GetStyle(), &c->GetStyle());
  EXPECT_EQ(&Find(L"d")->GetStyle(), &Find(L"e")->GetStyle());

  EXPECT_EQ(b->SetAttribute(L"colorText", L"#445566", FALSE), S_OK);
  EXPECT_EQ(a->GetStyle().GetTextColor(0), RGBA(0x11, 0x22, 0x33, 0xFF));
  EXPECT_EQ(b->GetStyle().GetTextColor(0), RGBA(0x44, 0x55, 0x66, 0xFF));
  // Back to the same values: shared again.
  EXPECT_EQ(b->SetAttribute(L"colorText", L"#112233", FALSE), S_OK);
  EXPECT_EQ(&a->GetStyle(), &b->GetStyle());

  const SwndStyle* before = &a->GetStyle();
  EXPECT_EQ(a->SetAttribute(L"colorText", L"@color\\no\\such", FALSE), E_FAIL);
  EXPECT_EQ(&a->GetStyle(), before);
}

// A window repeating the style edits of another takes the style copying
// would have made; the shared colour follows the theme, and an edit whose
// reference stopped resolving is refused again.
TEST_F(SWindowTest, RepeatedStyleEditsGiveTheStyleCopyingMakes) {
  SResProvider& res = app_->GetResProvider();
  res.SetColor(L"test\\ink", RGBA(1, 2, 3, 255));
  CreateHostWithChildren(
      L"<window name='a' colorText='@color\\test\\ink' padding='1,2,3,4'/>"
      L"<window name='b' colorText='@color\\test\\ink' padding='1,2,3,4'/>"
      L"<window name='c'/><window name='d'/><window name='e'/>");
  SWindow *a = Find(L"a"), *b = Find(L"b"), *c = Find(L"c"), *d = Find(L"d"), *e = Find(L"e");
  EXPECT_EQ(&a->GetStyle(), &b->GetStyle());
  // Both edits in one change function, as a copy: the same style.
  EXPECT_TRUE(c->EditStyle([](SwndStyle& s) {
    return s.SetAttribute(L"padding", L"1,2,3,4") && s.SetAttribute(L"colorText", L"@color\\test\\ink");
  }));
  EXPECT_EQ(&c->GetStyle(), &a->GetStyle());

  // A theme change reaches every window sharing the style, and a window
  // repeating the edits afterwards shares it too.
  res.SetColor(L"test\\ink", RGBA(4, 5, 6, 255));
  EXPECT_EQ(d->SetAttribute(L"colorText", L"@color\\test\\ink", FALSE), S_OK);
  EXPECT_EQ(d->SetAttribute(L"padding", L"1,2,3,4", FALSE), S_OK);
  EXPECT_EQ(&d->GetStyle(), &a->GetStyle());
  EXPECT_EQ(b->GetStyle().GetTextColor(0), RGBA(4, 5, 6, 255));

  // Once the colour is gone the same edit fails and changes nothing...
  res.Clear();
  const SwndStyle* before = &e->GetStyle();
  EXPECT_EQ(e->SetAttribute(L"colorText", L"@color\\test\\ink", FALSE), E_FAIL);
  EXPECT_FALSE(e->EditStyle(L"colorText", L"@color\\test\\ink"));
  EXPECT_EQ(&e->GetStyle(), before);
  // ...until it is back.
  res.SetColor(L"test\\ink", RGBA(7, 8, 9, 255));
  EXPECT_TRUE(e->EditStyle(L"colorText", L"@color\\test\\ink"));
  EXPECT_EQ(e->GetStyle().GetTextColor(0), RGBA(7, 8, 9, 255));
  EXPECT_FALSE(e->EditStyle(L"no_such_attr", L"1"));
}

TEST_F(SWindowTest, ClassAppliesBeforeTheElementsOwnAttributes) {
  pugi::xml_document decl;
  decl.load_string("<class name='big' alpha='10' tip='from class'/>");
  app_->GetResProvider().AddClass(L"big", decl.first_child());
  app_->GetResProvider().AddClass(L"button.big", decl.first_child());
  CreateHostWithChildren(L"<window name='w' alpha='20' class='big'/><button.big name='b'/>");
  EXPECT_EQ(Find(L"w")->GetAlpha(), 20);
  EXPECT_EQ(Find(L"w")->GetToolTipText(), L"from class");
  SWindow* b = Find(L"b");
  ASSERT_NE(b, nullptr);
  EXPECT_TRUE(b->IsClass(L"button"));
  EXPECT_EQ(b->GetAlpha(), 10);
}

TEST_F(SWindowTest, InnerTextOverridesTextAttributeAndStringsResolve) {
  app_->GetResProvider().SetString(L"en", L"102541", L"OK");
  CreateHostWithChildren(
      L"<text name='a' text='attr'>inner</text><text name='b' text='@string\\102541'/>"
      L"<text name='c' text='kept'>   </text><text name='d' text='@string/missing'/>");
  EXPECT_EQ(Find(L"a")->GetWindowText(), L"inner");
  EXPECT_EQ(Find(L"b")->GetWindowText(), L"OK");
  EXPECT_EQ(Find(L"c")->GetWindowText(), L"kept");
  EXPECT_EQ(Find(L"d")->GetWindowText(), L"");
}

TEST_F(SWindowTest, FindChildByName2ChecksClassAndLogsExactText) {
  CreateHostWithChildren(L"<window><text name='title'/></window>");
  EXPECT_NE(host()->FindChildByName2<SStatic>(L"title"), nullptr);
  EXPECT_EQ(host()->FindChildByName2<SButton>(L"title"), nullptr);
  EXPECT_TRUE(LogContains(L"FindChildByName2 Failed, no window of class button with name of title"));
  EXPECT_EQ(host()->FindChildByName2<SStatic>(L"missing"), nullptr);
  EXPECT_TRUE(LogContains(L"FindChildByName2 Failed, no window of class text with name of missing"));
}

TEST_F(SWindowTest, IncludeLoadsLayoutInPlaceWithOverridingAttributes) {
  app_->GetResProvider().AddXml(L"LAYOUT", L"part", "<window name='inner' alpha='1'><text name='t'/></window>");
  app_->GetResProvider().AddXml(L"layout", L"nested", "<include><text name='n1'/><text name='n2'/></include>");
  CreateHostWithChildren(
      L"<window name='a'/><include src='LAYOUT:part' alpha='99'/><include src='layout:nested'/>"
      L"<include src='LAYOUT:none'/><window name='z'/>");
  ASSERT_NE(Find(L"inner"), nullptr);
  EXPECT_EQ(Find(L"inner")->GetAlpha(), 99);
  EXPECT_NE(Find(L"t"), nullptr);
  EXPECT_NE(Find(L"n1"), nullptr);
  EXPECT_NE(Find(L"n2"), nullptr);
  EXPECT_TRUE(LogContains(L"include: no layout resource LAYOUT:none"));
  // Order is kept: a, inner, n1, n2, z.
  SWindow* root = host()->GetRoot();
  EXPECT_EQ(root->GetWindow(GSW_FIRSTCHILD)->GetName(), L"a");
  EXPECT_EQ(root->GetWindow(GSW_LASTCHILD)->GetName(), L"z");
  EXPECT_EQ(root->GetChildrenCount(), 5u);
}

TEST_F(SWindowTest, BadXmlNeverCrashes) {
  CreateHostWithChildren(L"<window name='ok'/><nosuchtag name='x'><window name='lost'/></nosuchtag>");
  EXPECT_NE(Find(L"ok"), nullptr);
  EXPECT_EQ(Find(L"lost"), nullptr);  // an unknown tag is skipped with its subtree
  EXPECT_TRUE(LogContains(L"unknown window class nosuchtag"));

  SWindow* root = host()->GetRoot();
  EXPECT_FALSE(root->CreateChildren(L"<window><unclosed></window>"));
  EXPECT_FALSE(root->CreateChildren(static_cast<const wchar_t*>(nullptr)));
  // Hostile attribute values are refused or clamped, never fatal.
  SWindow* w = Find(L"ok");
  for (const wchar_t* v : {L"", L"-", L"@", L",,,,,,", L"99999999999999999999dp", L"nan", L"\x1\x2"}) {
    for (const wchar_t* n : {L"pos", L"offset", L"size", L"width", L"alpha", L"padding", L"margin",
                             L"colorText", L"font", L"id", L"align", L"skin", L"class"}) {
      w->SetAttribute(n, v, FALSE);
    }
  }
  host()->UpdateLayout();
  host()->Render();

  // Deep nesting is handled (recursion is bounded by the XML itself).
  SStringW deep;
  for (int i = 0; i < 300; ++i) deep += L"<window>";
  for (int i = 0; i < 300; ++i) deep += L"</window>";
  EXPECT_TRUE(root->CreateChildren(deep));
  host()->UpdateLayout();
}

TEST_F(SWindowTest, EventsReachSubscribersNewestFirstThenOwnerThenHost) {
  CreateHostWithChildren(L"<window name='owner'/><button name='btn'/>");
  SWindow* owner = Find(L"owner");
  SWindow* btn = Find(L"btn");
  std::vector<SStringW> order;
  btn->subscribeEvent(EVT_CMD, [&](EventArgs*) { order.push_back(L"first"); return false; });
  btn->subscribeEvent(L"on_command", [&](EventArgs*) { order.push_back(L"second"); return true; });
  owner->subscribeEvent(EVT_CMD, [&](EventArgs* e) {
    order.push_back(SStringW(L"owner sees ") + e->nameFrom);
    return true;
  });

  // Without an owner the event goes straight to the host.
  EXPECT_TRUE(btn->FireCommand());
  EXPECT_EQ(order, (std::vector<SStringW>{L"second", L"first"}));
  ASSERT_EQ(CountEvents(EVT_CMD), 1);
  EXPECT_EQ(events().back().nameFrom, L"btn");

  order.clear();
  ClearEvents();
  btn->SetOwner(owner);
  btn->FireCommand();
  EXPECT_EQ(order, (std::vector<SStringW>{L"second", L"first", L"owner sees btn"}));
  EXPECT_EQ(CountEvents(EVT_CMD), 1);  // the owner passes it on to the host

  // A handler that stops bubbling keeps it from the others.
  order.clear();
  ClearEvents();
  btn->subscribeEvent(EVT_CMD, [&](EventArgs* e) { e->bubbleUp = false; order.push_back(L"stop"); return true; });
  btn->FireCommand();
  EXPECT_EQ(order, (std::vector<SStringW>{L"stop"}));
  EXPECT_EQ(CountEvents(EVT_CMD), 0);

  // Events never climb the parent chain, and unregistered ids cannot be subscribed.
  EXPECT_EQ(btn->subscribeEvent(123456, [](EventArgs*) { return true; }), 0);
}

TEST_F(SWindowTest, StateChangesFireOnceAndVisibilityFollowsParents) {
  CreateHostWithChildren(L"<window name='p'><window name='c'/></window>");
  SWindow* p = Find(L"p");
  SWindow* c = Find(L"c");
  int changes = 0;
  c->subscribeEvent(EVT_STATECHANGED, [&](EventArgs*) { ++changes; return true; });
  c->SetCheck(TRUE);
  c->SetCheck(TRUE);
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(c->GetStateIndex(), 2);
  p->EnableWindow(FALSE);
  EXPECT_TRUE(c->IsDisabled(TRUE));
  EXPECT_FALSE(c->IsDisabled(FALSE));
  EXPECT_EQ(c->GetStateIndex(), 3);
  p->SetVisible(FALSE);
  EXPECT_FALSE(c->IsVisible(TRUE));
  EXPECT_TRUE(c->IsVisible(FALSE));
}

TEST_F(SWindowTest, DestroyingAWindowDropsCaptureTimersAndChildren) {
  CreateHostWithChildren(L"<window name='p' pos='0,0,100,100'><button name='b' pos='0,0,50,50'/></window>");
  SWindow* b = Find(L"b");
  int ticks = 0;
  struct Ticker : SWindow {
    int* n;
    explicit Ticker(int* c) : n(c) {}
    void OnTimer(int) override { ++*n; }
  };
  auto* t = new Ticker(&ticks);
  Find(L"p")->InsertChild(t, ICWND_FIRST);  // below the button
  t->SetTimer(1, 10);
  Advance(25);
  EXPECT_EQ(ticks, 2);
  gen().MoveMouseToCenterOf(b);
  gen().PressLeftButton();
  EXPECT_EQ(host()->GetCapture(), b);
  Find(L"p")->DestroyWindow();
  EXPECT_EQ(host()->GetCapture(), nullptr);
  EXPECT_EQ(host()->GetHover(), nullptr);
  EXPECT_EQ(Find(L"b"), nullptr);
  Advance(100);  // the destroyed ticker's timer is gone
  EXPECT_EQ(ticks, 2);
  gen().ReleaseLeftButton();
}

// Every name a plain window handles is found in any case; one letter more is
// unknown.
TEST_F(SWindowTest, EveryWindowAttributeNameIsFoundInAnyCase) {
  CreateHostWithChildren(L"<window name='w'/>");
  SWindow* w = Find(L"w");
  ASSERT_NE(w, nullptr);
  const wchar_t* const kNames[] = {
      L"name", L"id", L"text", L"tip", L"skin", L"focusSkin", L"visible", L"show", L"display", L"enable",
      L"msgTransparent", L"focusable", L"float", L"clipClient", L"maxWidth", L"drawFocusRect", L"data",
      L"trCtx", L"class", L"colorText", L"colorTextHover", L"colorTextPush", L"colorTextDisable", L"font",
      L"fontHover", L"fontPush", L"fontDisable", L"colorBkgnd", L"colorBorder", L"align", L"valign",
      L"dotted", L"textMode", L"padding", L"inset", L"padding_left", L"padding_top", L"padding_right",
      L"padding_bottom", L"margin", L"margin-x", L"margin-y", L"alpha", L"cursor", L"pos", L"offset",
      L"size", L"width", L"height"};
  for (const wchar_t* n : kNames) {
    SStringW upper(n);
    upper.MakeUpper();
    EXPECT_NE(w->SetAttribute(n, L"1", FALSE), E_NOTIMPL) << SStringW(n).ToUtf8();
    EXPECT_NE(w->SetAttribute(upper, L"1", FALSE), E_NOTIMPL) << upper.ToUtf8();
    EXPECT_EQ(w->SetAttribute(SStringW(n) + L"q", L"1", FALSE), E_NOTIMPL) << SStringW(n).ToUtf8();
  }
}

// A page that spells more attribute names than the loader keeps widened
// still has every later attribute applied and remembered.
TEST_F(SWindowTest, AttributesApplyAfterAPageOfManySpellings) {
  std::wstring xml = L"<window name='junk'";
  for (int i = 0; i < 600; ++i) xml += L" junk" + std::to_wstring(i) + L"='1'";
  xml += L"/><window name='late' ALPHA='12' tExT='late text'/>";
  CreateHostWithChildren(xml.c_str());
  SWindow* late = Find(L"late");
  ASSERT_NE(late, nullptr);
  EXPECT_EQ(late->GetAlpha(), 12);
  EXPECT_EQ(late->GetWindowText(), L"late text");
  EXPECT_EQ(late->GetAttribute(L"alpha"), L"12");
}

// Builds children from XML while one of its own attributes is applied.
class BuildingWnd : public SWindow {
  SOUI_CLASS_NAME(BuildingWnd, SWindow, L"building")
 public:
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override {
    if (name.CompareNoCase(L"inner") != 0) return SWindow::SetAttribute(name, value, loading);
    CreateChildren(L"<window name='made' text='a value longer than the outer one' alpha='3'/>");
    seen_after = value;
    return AfterAttribute(name, value, loading, S_FALSE);
  }
  SStringW seen_after;
};

// An attribute handler that loads windows of its own keeps its value, and
// both levels remember what they were given.
TEST_F(SWindowTest, AHandlerBuildingWindowsFromXmlKeepsItsValue) {
  app_->GetFactory().RegisterWindowClass<BuildingWnd>();
  CreateHostWithChildren(L"<building name='b' inner='outer' text='after'/>");
  auto* b = Find<BuildingWnd>(L"b");
  ASSERT_NE(b, nullptr);
  EXPECT_EQ(b->seen_after, L"outer");
  EXPECT_EQ(b->GetAttribute(L"inner"), L"outer");
  EXPECT_EQ(b->GetWindowText(), L"after");
  SWindow* made = Find(L"made");
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(made->GetWindowText(), L"a value longer than the outer one");
  EXPECT_EQ(made->GetAttribute(L"alpha"), L"3");
}

// A colour reference resolves to its table entry as it is now, even right
// after the same reference resolved to the old entry.
TEST_F(SWindowTest, AColourReferenceFollowsItsTableEntry) {
  SResProvider& res = app_->GetResProvider();
  res.SetColor(L"test\\ink", RGBA(1, 2, 3, 255));
  CreateHostWithChildren(L"<window name='a' colorText='@color/test/ink'/><window name='b'/>");
  SWindow* a = Find(L"a");
  SWindow* b = Find(L"b");
  ASSERT_TRUE(a && b);
  EXPECT_EQ(a->GetStyle().GetTextColor(0), RGBA(1, 2, 3, 255));
  res.SetColor(L"test\\ink", RGBA(4, 5, 6, 255));
  EXPECT_EQ(b->SetAttribute(L"colorText", L"@color\\test\\ink", FALSE), S_OK);
  EXPECT_EQ(b->GetStyle().GetTextColor(0), RGBA(4, 5, 6, 255));
  EXPECT_EQ(a->GetStyle().GetTextColor(0), RGBA(4, 5, 6, 255));
}

}  // namespace
}  // namespace SOUI
