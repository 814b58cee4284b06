// Interned attribute names and what is remembered about them: a name read
// from a layout must act exactly as the same text given by a host.
#include "soui/attr_names.h"

#include <gtest/gtest.h>

#include <string>

#include "soui/hostwnd.h"
#include "soui/sapp.h"

namespace SOUI {
namespace {

TEST(InternName, KeepsOneObjectPerSpellingAndOnlyThoseHaveSlots) {
  SStringW spare;
  size_t bytes = 0;
  const SStringW& a = InternName("interned-test-name", &spare, &bytes);
  EXPECT_EQ(a, L"interned-test-name");
  EXPECT_EQ(bytes, 18u);
  // The same spelling is the same object; another case is another spelling.
  EXPECT_EQ(&InternName("interned-test-name", &spare), &a);
  const SStringW& upper = InternName("INTERNED-test-name", &spare);
  EXPECT_NE(&upper, &a);
  EXPECT_GE(InternedSlot(a), 0);
  EXPECT_NE(InternedSlot(upper), InternedSlot(a));
  // An equal copy is not the kept object, nor is the spare.
  const SStringW copy(a);
  EXPECT_EQ(InternedSlot(copy), -1);
  EXPECT_EQ(InternedSlot(spare), -1);
  // A long name is widened into the spare; null reads as "".
  const std::string long_name(40, 'x');
  const SStringW& widened = InternName(long_name.c_str(), &spare, &bytes);
  EXPECT_EQ(&widened, &spare);
  EXPECT_EQ(bytes, 40u);
  EXPECT_EQ(widened.GetLength(), 40);
  EXPECT_EQ(InternName(nullptr, &spare), L"");
}

// A place answers as InternName whatever it saw before: the same name, one
// that starts alike or is a prefix, another case, one too long to keep.
TEST(RecentNames, AnswerAsInternNameWhateverThePlaceSawBefore) {
  RecentNames recent;
  const std::string long_name(40, 'p');
  const char* sequence[] = {"pos",  "pos",  "position", "po", "POS", "", long_name.c_str(),
                            "pos",  "p\xC3\xA9s", "pos", nullptr, "pos"};
  for (size_t place : {size_t{0}, size_t{3}, RecentNames::kPlaces}) {
    for (const char* name : sequence) {
      SStringW spare, spare_expected;
      size_t bytes = 99, bytes_expected = 77;
      const SStringW& got = recent.Intern(place, name, &spare, &bytes);
      const SStringW& expected = InternName(name, &spare_expected, &bytes_expected);
      EXPECT_EQ(got, expected) << (name ? name : "(null)") << " at " << place;
      EXPECT_EQ(bytes, bytes_expected) << (name ? name : "(null)");
      if (InternedSlot(expected) >= 0) {
        EXPECT_EQ(&got, &expected);
      }
    }
  }
}

TEST(NameMemo, AsksOncePerKeptSpellingEveryTimeForOtherStringsAndAgainForANewKey) {
  SStringW spare;
  const SStringW& kept = InternName("memo-test-name", &spare);
  const SStringW copy(kept);
  NameMemo memo;
  int asked = 0;
  const auto length = [&](const SStringW& n) {
    ++asked;
    return n.GetLength();
  };
  EXPECT_EQ(memo.Get(kept, length), 14);
  EXPECT_EQ(memo.Get(kept, length), 14);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(memo.Get(copy, length), 14);
  EXPECT_EQ(memo.Get(copy, length), 14);
  EXPECT_EQ(asked, 3);
  // An answer of 0 is remembered like any other.
  const auto zero = [&](const SStringW&) {
    ++asked;
    return 0;
  };
  int table_a = 0, table_b = 0;
  memo.KeyTo(&table_a, nullptr);
  EXPECT_EQ(memo.Get(kept, zero), 0);
  EXPECT_EQ(memo.Get(kept, zero), 0);
  EXPECT_EQ(asked, 4);
  memo.KeyTo(&table_a, nullptr);  // the same key keeps what is known
  EXPECT_EQ(memo.Get(kept, length), 0);
  memo.KeyTo(&table_b, nullptr);
  EXPECT_EQ(memo.Get(kept, length), 14);
  EXPECT_EQ(asked, 5);
}

// Hands one attribute on to its child, with the very name object it got.
class ForwardingWnd : public SWindow {
  SOUI_CLASS_NAME(ForwardingWnd, SWindow, L"forwarding")
 public:
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override {
    if (name.CompareNoCase(L"data") == 0) child.SetAttribute(name, value, loading);
    return SWindow::SetAttribute(name, value, loading);
  }
  SWindow child;
};

TEST(InternedNames, AnAttributeHandedToAnotherObjectWhileLoadingIsRememberedByBoth) {
  SApplication app;
  app.GetFactory().RegisterWindowClass<ForwardingWnd>();
  SHostWnd host;
  ASSERT_TRUE(host.InitFromXmlText(L"<SOUI><root><forwarding name='f' data='given'/></root></SOUI>"));
  auto* f = host.GetRoot()->FindChildByName2<ForwardingWnd>(L"f");
  ASSERT_NE(f, nullptr);
  EXPECT_EQ(f->GetAttribute(L"data"), L"given");
  EXPECT_EQ(f->child.GetAttribute(L"data"), L"given");
}

// Every spelling of an attribute counts against the table; once it is full,
// new spellings are widened each time and still act as before.
TEST(InternedNames, NewSpellingsStillWorkOnceTheTableIsFull) {
  SApplication app;
  SStringW spare;
  for (int i = 0; i < kMaxInternedNames; ++i) {
    const std::string filler = "filler" + std::to_string(i);
    InternName(filler.c_str(), &spare);
  }
  EXPECT_EQ(&InternName("never-seen-before", &spare), &spare);
  SHostWnd host;
  ASSERT_TRUE(host.InitFromXmlText(L"<SOUI width='200' height='100'><root>"
                                   L"<window name='w' aLpHa='12' pOS='1,2,@30,@40' cOlOrTeXt='#102030'/>"
                                   L"</root></SOUI>"));
  host.Create();
  SWindow* w = host.GetRoot()->FindChildByName(L"w");
  ASSERT_NE(w, nullptr);
  EXPECT_EQ(w->GetAlpha(), 12);
  EXPECT_EQ(w->GetAttribute(L"alpha"), L"12");
  EXPECT_EQ(w->GetAttribute(L"colortext"), L"#102030");
  host.UpdateLayout();
  EXPECT_EQ(w->GetWindowRect(), CRect(1, 2, 31, 42));
  // A host's string of another spelling finds the same attribute.
  EXPECT_EQ(w->SetAttribute(L"ALPHA", L"13", FALSE), S_OK);
  EXPECT_EQ(w->GetAlpha(), 13);
}

}  // namespace
}  // namespace SOUI
