#include "tabs/tab_page_host.h"

#include <sstream>
#include <string>

#include "templates/tab_templates.h"

namespace QVStandardCtrls {

using namespace SOUI;

namespace {

SStringW NodeToXml(pugi::xml_node node) {
  std::ostringstream out;
  node.print(out, "", pugi::format_raw);
  return SStringW::FromUtf8(out.str().c_str());
}

}  // namespace

CQVTabCtrl::CQVTabCtrl() = default;

HRESULT CQVTabCtrl::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVTabCtrl> kAttrs[] = {
      {L"TabMarginX", &CQVTabCtrl::OnAttrTabMarginX},
      {L"tabMediate", &CQVTabCtrl::OnAttrTabMediate},
  };
  return QVDispatchAttribute<CQVTabCtrl, SWindow>(this, kAttrs, nullptr, name, value, loading);
}

HRESULT CQVTabCtrl::OnAttrTabMarginX(const SStringW& value, BOOL loading) {
  margin_x_ = value;
  if (!loading) UpdateTabPos();
  return S_OK;
}

HRESULT CQVTabCtrl::OnAttrTabMediate(const SStringW& value, BOOL loading) {
  mediate_ = QVParseBool(value);
  if (!loading) UpdateTabPos();
  return S_OK;
}

void CQVTabCtrl::UpdateTabPos() {
  if (!titles_) return;
  if (mediate_) {
    titles_->SetAttribute(L"pos", L"|0,0,@-1,@32dp", FALSE);
    titles_->SetAttribute(L"offset", L"-0.5,0", FALSE);
  } else {
    titles_->SetAttribute(L"pos", margin_x_ + L",0,@-1,@32dp", FALSE);
    titles_->SetAttribute(L"offset", L"0,0", FALSE);
  }
  RequestRelayout();
}

BOOL CQVTabCtrl::CreateChildren(pugi::xml_node node) {
  // The title row first, so that the pages sit below it ("[0dp").
  for (const wchar_t* xml : {kQVTabTitlesXml, kQVTabPagesXml}) {
    std::string utf8;
    pugi::xml_document doc;
    LoadWideXml(xml, &utf8, &doc);
    // Qualified: the text overload would come back here.
    SWindow::CreateChildren(static_cast<pugi::xml_node>(doc));
  }
  titles_ = FindChildByName2<CQVTabCtrlBase>(L"qv_tab_titles", 1);
  for (SWindow* c = GetWindow(GSW_FIRSTCHILD); c; c = c->GetWindow(GSW_NEXTSIBLING)) {
    if (c->IsClass(STabCtrl::GetClassName())) pages_ = static_cast<STabCtrl*>(c);
  }
  if (!titles_ || !pages_) return FALSE;
  titles_->GetEventSet()->subscribeEvent(EVT_QVTAB_SEL_CHANGED,
                                         [this](EventArgs* e) { return OnTabSelChangedEvent(e); });
  UpdateTabPos();
  for (pugi::xml_node c = node.child("page"); c; c = c.next_sibling("page")) InsertPage(c, -1);
  return TRUE;
}

int CQVTabCtrl::InsertPage(pugi::xml_node page, int index) {
  if (!titles_ || !pages_) return -1;
  if (index < 0 || index > GetItemCount()) index = GetItemCount();
  const int at = pages_->InsertItem(NodeToXml(page), index);
  if (at < 0) return -1;
  std::vector<std::pair<SStringW, SStringW>> title = {
      {L"title", SStringW::FromUtf8(page.attribute("title").value())}, {L"createAnimator", L"0"}};
  if (pugi::xml_attribute id = page.attribute("id")) title.emplace_back(L"itemid", SStringW::FromUtf8(id.value()));
  titles_->InsertTab(title, at);
  // The first title is selected by the strip itself; keep the pages with it.
  pages_->SetCurSel(titles_->GetCurSelOrder());
  return at;
}

int CQVTabCtrl::InsertItem(const std::vector<std::pair<SStringW, SStringW>>& attrs, int index) {
  pugi::xml_document doc;
  pugi::xml_node page = doc.append_child("page");
  for (const auto& [name, value] : attrs) {
    page.append_attribute(name.ToUtf8().c_str()).set_value(value.ToUtf8().c_str());
  }
  return InsertPage(page, index);
}

bool CQVTabCtrl::DeleteItem(int index) {
  if (!titles_ || !pages_ || index < 0 || index >= GetItemCount()) return false;
  pages_->RemoveItem(index);
  // The strip then selects its first title and the page follows.
  titles_->RemoveTabByOrder(index);
  if (titles_->GetCurSelOrder() >= 0) pages_->SetCurSel(titles_->GetCurSelOrder());
  return true;
}

bool CQVTabCtrl::SetCurSel(int index) {
  if (!titles_) return false;
  return titles_->SetCurSelByOrder(index, true) && titles_->GetCurSelOrder() == index;
}

int CQVTabCtrl::GetCurSel() const { return titles_ ? titles_->GetCurSelOrder() : -1; }

int CQVTabCtrl::GetItemCount() const { return pages_ ? pages_->GetItemCount() : 0; }

bool CQVTabCtrl::OnTabSelChangedEvent(EventArgs* evt) {
  auto* e = static_cast<EventQVTabSelChanged*>(evt);
  const int order = titles_->GetTabOrder(e->nNewId);
  if (order >= 0) pages_->SetCurSel(order);
  // Hosts still see the strip's event.
  return false;
}

}  // namespace QVStandardCtrls
