#include "framework/ctrl_attr_base.h"

#include <gtest/gtest.h>

#include <vector>

#include "soui/sapp.h"

namespace QVStandardCtrls {
namespace {

using SOUI::SStringW;

// Records what the loading base hands over; accepts only "known*" names.
class RecordingObject : public IQVCtrlAttrBase {
 public:
  explicit RecordingObject(SStringW tag = SStringW()) : tag_(std::move(tag)) {}
  SStringW GetCtrlName() override { return tag_; }
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override {
    seen.push_back(name + L"=" + value + (loading ? L"!" : L""));
    if (name.Find(L"known") == 0) return S_OK;
    return IQVCtrlAttrBase::SetAttribute(name, value, loading);
  }
  std::vector<SStringW> seen;
  std::vector<SStringW> children;

 protected:
  void ChildLoad(pugi::xml_node node) override {
    for (pugi::xml_node c = node.first_child(); c; c = c.next_sibling()) children.push_back(SOUI::XmlName(c));
  }

 private:
  SStringW tag_;
};

class CtrlAttrBaseTest : public ::testing::Test {
 protected:
  void SetUp() override {
    auto& res = app_.GetResProvider();
    res.AddXml(L"LAYOUT", L"a:b", R"(<root><other x="1"/><qv_button known_a="1" z="2" known_b="3"><child/></qv_button></root>)");
    res.AddXml(L"LAYOUT", L"doc", R"(<qv_button first="1"/><qv_link second="2"/>)");
    res.AddXml(L"LAYOUT", L"links", R"(<qv_link a="1"/><qv_button b="2"/>)");
  }
  SOUI::SApplication app_;
};

TEST_F(CtrlAttrBaseTest, IdentifierSplitsAtTheFirstColonOnly) {
  // "LAYOUT:a:b" names the resource "a:b" of type LAYOUT; its first element is <root>.
  RecordingObject obj;
  ASSERT_TRUE(obj.Load(L"LAYOUT:a:b"));
  EXPECT_EQ(obj.children, (std::vector<SStringW>{L"other", L"qv_button"}));
}

TEST_F(CtrlAttrBaseTest, IdentifierWithoutColonLoadsNothing) {
  RecordingObject obj;
  EXPECT_FALSE(obj.Load(L"doc"));
  EXPECT_TRUE(obj.seen.empty());
  EXPECT_TRUE(obj.children.empty());
}

TEST_F(CtrlAttrBaseTest, MissingResourceOrElementFails) {
  RecordingObject missing;
  EXPECT_FALSE(missing.Load(L"LAYOUT:nope"));
  RecordingObject wrong_tag(L"qv_tabctrl");
  EXPECT_FALSE(wrong_tag.Load(L"LAYOUT:doc"));
  EXPECT_TRUE(wrong_tag.seen.empty());
}

TEST_F(CtrlAttrBaseTest, EmptyCtrlNameTakesTheFirstElementWhateverItsTag) {
  RecordingObject obj;
  ASSERT_TRUE(obj.Load(L"links", L"LAYOUT"));
  EXPECT_EQ(obj.seen, (std::vector<SStringW>{L"a=1"}));
}

TEST_F(CtrlAttrBaseTest, ElementTagMatchesInAnyCase) {
  // The element is a child of the document, found by a tag in another case.
  RecordingObject obj(L"QV_BUTTON");
  ASSERT_TRUE(obj.Load(L"LAYOUT:links"));
  EXPECT_EQ(obj.seen, (std::vector<SStringW>{L"b=2"}));
}

TEST_F(CtrlAttrBaseTest, AttributesGoInDocumentOrderUnloadingAndUnknownOnesDoNotStop) {
  pugi::xml_document doc;
  ASSERT_TRUE(doc.load_string(R"(<e known_z="1" unknown="2" known_a="3"><k1/><k2/></e>)"));
  RecordingObject obj;
  EXPECT_TRUE(obj.Load(doc.first_child()));
  // No "!" suffix: the loading flag is FALSE for every attribute.
  EXPECT_EQ(obj.seen, (std::vector<SStringW>{L"known_z=1", L"unknown=2", L"known_a=3"}));
  EXPECT_EQ(obj.children, (std::vector<SStringW>{L"k1", L"k2"}));
}

TEST_F(CtrlAttrBaseTest, BaseRejectsEveryAttributeWithNotImplemented) {
  struct Plain : IQVCtrlAttrBase {};
  Plain p;
  EXPECT_EQ(p.SetAttribute(L"anything", L"1", TRUE), static_cast<HRESULT>(0x80004001u));
  EXPECT_TRUE(p.GetCtrlName().IsEmpty());
}

}  // namespace
}  // namespace QVStandardCtrls
