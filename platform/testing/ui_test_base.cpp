#include "testing/ui_test_base.h"

#include "qvhost/qvlog.h"

namespace SOUI {
namespace test {

void UiTestBase::SetUp() { app_ = std::make_unique<SApplication>(); }

void UiTestBase::TearDown() {
  gen_.reset();
  host_.reset();
  app_.reset();
}

SHostWnd* UiTestBase::CreateHost(const wchar_t* soui_xml, int width, int height) {
  host_ = std::make_unique<SHostWnd>();
  host_->SetEventObserver([this](EventArgs* e) {
    events_.push_back(RecordedEvent{e->GetID(), e->GetName(), e->nameFrom, e->idFrom});
  });
  EXPECT_TRUE(host_->InitFromXmlText(soui_xml));
  host_->Create(nullptr, 0, 0, width, height);
  host_->ShowWindow(SW_SHOW);
  host_->UpdateLayout();
  gen_ = std::make_unique<EventGenerator>(host_.get());
  return host_.get();
}

SHostWnd* UiTestBase::CreateHostWithChildren(const wchar_t* children_xml, int width, int height) {
  const SStringW xml = SStringW(L"<SOUI><root>") + children_xml + L"</root></SOUI>";
  return CreateHost(xml, width, height);
}

SWindow* UiTestBase::Find(const wchar_t* name) const {
  return host_ ? host_->GetRoot()->FindChildByName(name) : nullptr;
}

int UiTestBase::CountEvents(int id) const {
  int n = 0;
  for (const auto& e : events_) n += e.id == id;
  return n;
}

bool UiTestBase::LogContains(const wchar_t* text) const { return QVLogSinkOf(*app_).Contains(text); }

namespace {
void Dump(const SWindow* w, int depth, SStringW* out) {
  for (const SWindow* c = w->GetWindow(GSW_FIRSTCHILD); c; c = c->GetWindow(GSW_NEXTSIBLING)) {
    const CRect& r = c->GetWindowRect();
    out->AppendFormat(L"%s%s [%d,%d,%d,%d]\n", SStringW(L' ', depth * 2).c_str(),
                      c->GetName().IsEmpty() ? c->GetObjectClass() : c->GetName().c_str(), r.left, r.top,
                      r.right, r.bottom);
    Dump(c, depth + 1, out);
  }
}
}  // namespace

SStringW DumpTree(const SWindow* root) {
  SStringW out;
  Dump(root, 0, &out);
  return out;
}

}  // namespace test
}  // namespace SOUI
