#include "framework/attr_dispatch.h"

#include <gtest/gtest.h>

#include <vector>

#include "qvhost/qvlog.h"
#include "soui/attr_names.h"
#include "soui/sapp.h"

namespace QVStandardCtrls {
namespace {

using SOUI::SStringW;

// Stands for a toolkit base: writes down what reaches it.
class RecordingBase : public SOUI::SWindow {
 public:
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override {
    reached.push_back(name);
    if (value == L"bad") return E_FAIL;
    // A library base that keeps "shared" for itself.
    if (name.CompareNoCase(L"shared") == 0) return S_FALSE;
    return SOUI::SWindow::SetAttribute(name, value, loading);
  }
  std::vector<SStringW> reached;
};

class Dispatching : public RecordingBase {
 public:
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override {
    static const QVAttrEntry<Dispatching> kAttrs[] = {
        {L"own", &Dispatching::OnAttrOwn},
        {L"shared", &Dispatching::OnAttrShared, true},
        {L"quiet", &Dispatching::OnAttrShared, true},  // the toolkit does not know it
    };
    static const QVAdmittedAttrs kAdmitted = {L"skin", L"colorBkgnd"};
    return QVDispatchAttribute<Dispatching, RecordingBase>(this, kAttrs, &kAdmitted, name, value, loading);
  }
  HRESULT OnAttrOwn(const SStringW& value, BOOL) {
    handled.push_back(L"own=" + value);
    return value == L"reject" ? E_FAIL : S_FALSE;
  }
  HRESULT OnAttrShared(const SStringW& value, BOOL) {
    handled.push_back(L"shared=" + value);
    return value == L"reject" ? E_FAIL : S_OK;
  }
  std::vector<SStringW> handled;
};

struct DispatchRow {
  const char* name;
  const wchar_t* attr;
  const wchar_t* value;
  HRESULT result;
  int handler_calls;
  bool reaches_base;
  bool remembered;  // went through the after-attribute step
};

class AttrDispatch : public ::testing::TestWithParam<DispatchRow> {
 protected:
  SOUI::SApplication app_;
};

TEST_P(AttrDispatch, RoutesByTableAdmittedSetOrDrops) {
  const DispatchRow& row = GetParam();
  Dispatching d;
  EXPECT_EQ(d.SetAttribute(row.attr, row.value, FALSE), row.result);
  EXPECT_EQ(static_cast<int>(d.handled.size()), row.handler_calls);
  EXPECT_EQ(!d.reached.empty(), row.reaches_base);
  EXPECT_EQ(d.GetAttribute(row.attr) == row.value, row.remembered);
  // Only a refused name is a mistake worth a log line.
  EXPECT_EQ(QVLogSinkOf(app_).Contains(L"unknown attribute"), row.result == E_NOTIMPL);
}

// A name read from a layout is interned and its route remembered after the
// first time; it must go where the same text given by a host goes.
TEST_P(AttrDispatch, RoutesAnInternedNameAsTheSameTextFromAHost) {
  const DispatchRow& row = GetParam();
  SStringW spare;
  const SStringW& kept = SOUI::InternName(SStringW(row.attr).ToUtf8().c_str(), &spare);
  ASSERT_GE(SOUI::InternedSlot(kept), 0);
  for (int pass = 0; pass < 2; ++pass) {
    Dispatching d;
    EXPECT_EQ(d.SetAttribute(kept, row.value, FALSE), row.result);
    EXPECT_EQ(static_cast<int>(d.handled.size()), row.handler_calls);
    EXPECT_EQ(!d.reached.empty(), row.reaches_base);
    EXPECT_EQ(d.GetAttribute(row.attr) == row.value, row.remembered);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, AttrDispatch,
    ::testing::Values(
        // Handlers match in any case and never reach the base unless chained.
        DispatchRow{"own", L"own", L"1", S_FALSE, 1, false, true},
        DispatchRow{"own_upper", L"OWN", L"1", S_FALSE, 1, false, true},
        DispatchRow{"own_rejected", L"own", L"reject", E_FAIL, 1, false, false},
        DispatchRow{"chained", L"Shared", L"1", S_OK, 1, true, true},
        DispatchRow{"chained_handler_fails", L"shared", L"reject", E_FAIL, 1, false, false},
        DispatchRow{"chained_base_fails", L"shared", L"bad", E_FAIL, 1, true, false},
        DispatchRow{"chained_base_does_not_know", L"quiet", L"1", S_OK, 1, true, true},
        // The admitted set is case-sensitive.
        DispatchRow{"admitted", L"colorBkgnd", L"#FF0000", S_OK, 0, true, true},
        DispatchRow{"admitted_wrong_case", L"colorbkgnd", L"#FF0000", E_NOTIMPL, 0, false, false},
        // Identity and placement always go through, in any case.
        DispatchRow{"structural", L"NAME", L"x", S_FALSE, 0, true, true},
        DispatchRow{"structural_pos", L"pos", L"1,2", S_FALSE, 0, true, true},
        // Everything else is refused as unknown.
        DispatchRow{"dropped_look", L"colorText", L"#FF0000", E_NOTIMPL, 0, false, false},
        DispatchRow{"dropped_unknown", L"whatever", L"1", E_NOTIMPL, 0, false, false}),
    [](const ::testing::TestParamInfo<DispatchRow>& info) { return std::string(info.param.name); });

// A library class over a filtering library base, and one over the toolkit
// that filters nothing.
class DispatchingChild : public Dispatching {
 public:
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override {
    static const QVAttrEntry<DispatchingChild> kAttrs[] = {{L"child", &DispatchingChild::OnAttrChild}};
    return QVDispatchAttribute<DispatchingChild, Dispatching>(this, kAttrs, nullptr, name, value, loading);
  }
  HRESULT OnAttrChild(const SStringW&, BOOL) { return S_OK; }
};

// Also answers for "inner" before its dispatch, as a composite does.
class Unfiltered : public SOUI::SWindow {
 public:
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override {
    static const wchar_t* const kInner[] = {L"inner"};
    if (name == L"inner") return S_OK;
    QVListOwnNames(kInner, 1);
    static const QVAttrEntry<Unfiltered> kAttrs[] = {{L"mine", &Unfiltered::OnAttrMine}};
    return QVDispatchAttribute<Unfiltered, SOUI::SWindow>(this, kAttrs, nullptr, name, value, loading);
  }
  HRESULT OnAttrMine(const SStringW&, BOOL) { return S_OK; }
};

TEST(AttrListing, NamesEveryLevelWithoutSettingAnything) {
  SOUI::SApplication app;
  DispatchingChild d;
  const QVAttrNames names = QVListAttributes(&d);
  EXPECT_EQ(names.own, (std::vector<SStringW>{L"child", L"own", L"shared", L"quiet"}));
  EXPECT_EQ(names.admitted, (std::vector<SStringW>{L"colorBkgnd", L"skin"}));
  EXPECT_FALSE(names.all_toolkit);
  // The filtering level answers for itself: the base is never reached.
  EXPECT_TRUE(d.handled.empty());
  EXPECT_TRUE(d.reached.empty());

  Unfiltered u;
  const QVAttrNames open = QVListAttributes(&u);
  EXPECT_EQ(open.own, (std::vector<SStringW>{L"inner", L"mine"}));
  EXPECT_TRUE(open.admitted.empty());
  EXPECT_TRUE(open.all_toolkit);
  // After listing, the dispatch works as before.
  EXPECT_EQ(d.SetAttribute(L"own", L"1", FALSE), S_FALSE);

  // Outside a listing the names go nowhere.
  EXPECT_EQ(u.SetAttribute(L"mine", L"1", FALSE), S_OK);
  QVListOwnNames(nullptr, 3);
  EXPECT_TRUE(QVListAttributes(nullptr).own.empty());
  SOUI::SWindow plain;
  const QVAttrNames none = QVListAttributes(&plain);
  EXPECT_TRUE(none.own.empty() && none.admitted.empty() && !none.all_toolkit);
}

struct BoolRow {
  const wchar_t* text;
  bool value;
};

class QVBool : public ::testing::TestWithParam<BoolRow> {};

TEST_P(QVBool, OnlyZeroAndFalseInAnyCaseAreFalse) { EXPECT_EQ(QVParseBool(GetParam().text), GetParam().value); }

INSTANTIATE_TEST_SUITE_P(Texts, QVBool,
                         ::testing::Values(BoolRow{L"0", false}, BoolRow{L"false", false}, BoolRow{L"FALSE", false},
                                           BoolRow{L"False", false}, BoolRow{L"1", true}, BoolRow{L"no", true},
                                           BoolRow{L"", true}, BoolRow{L"00", true}, BoolRow{L" false", true}));

}  // namespace
}  // namespace QVStandardCtrls
