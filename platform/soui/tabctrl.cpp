#include "soui/tabctrl.h"

#include "soui/slog.h"
#include "soui/sapp.h"

namespace SOUI {

HRESULT STabPage::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  if (name.CompareNoCase(L"title") == 0) {
    SApplication* app = SApplication::getSingletonPtr();
    title_ = app ? app->GetResProvider().ResolveString(value) : value;
    return AfterAttribute(name, value, loading, S_OK);
  }
  if (name.CompareNoCase(L"iconIndex") == 0) return AfterAttribute(name, value, loading, S_FALSE);
  return SWindow::SetAttribute(name, value, loading);
}

STabCtrl::STabCtrl() {
  focusable_ = TRUE;
  interpolator_ = CreateInterpolator(L"Linear");
  GetEventSet()->addEvent(EVT_TAB_SELCHANGING, EventTabSelChanging::EventName());
  GetEventSet()->addEvent(EVT_TAB_SELCHANGED, EventTabSelChanged::EventName());
}

STabCtrl::~STabCtrl() = default;

int STabCtrl::OnCreate() {
  // Pages slide within the page area; nothing may show outside it.
  clip_client_ = TRUE;
  if (!pages_.empty()) {
    cur_sel_ = (initial_sel_ >= 0 && initial_sel_ < GetItemCount()) ? initial_sel_ : 0;
    ShowOnly(cur_sel_);
  }
  return SWindow::OnCreate();
}

void STabCtrl::OnDestroy() {
  StopAnimation();
  SWindow::OnDestroy();
}

HRESULT STabCtrl::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  auto is = [&](const wchar_t* n) { return name.CompareNoCase(n) == 0; };
  HRESULT hr = S_OK;
  if (is(L"curSel")) {
    int v = 0;
    StrToIntExW(value, STIF_SUPPORT_HEX, &v);
    if (IsCreated()) SetCurSel(v);
    else initial_sel_ = v;
  } else if (is(L"tabWidth")) {
    tab_width_ = SLayoutSize::Parse(value);
    width_set_ = true;
  } else if (is(L"tabHeight")) {
    tab_height_ = SLayoutSize::Parse(value);
    height_set_ = true;
  } else if (is(L"tabSize")) {
    const std::vector<SStringW> parts = SplitString(value, L',');
    if (parts.size() != 2) return E_FAIL;
    tab_width_ = SLayoutSize::Parse(parts[0]);
    tab_height_ = SLayoutSize::Parse(parts[1]);
    width_set_ = height_set_ = true;
  } else if (is(L"tabPos")) {
    tab_pos_ = SLayoutSize::Parse(value);
  } else if (is(L"tabInterSize")) {
    tab_inter_ = SLayoutSize::Parse(value);
  } else if (is(L"tabAlign")) {
    if (value == L"top") align_ = Align::Top;
    else if (value == L"left") align_ = Align::Left;
    else if (value == L"right") align_ = Align::Right;
    else if (value == L"bottom") align_ = Align::Bottom;
    else return E_FAIL;
  } else if (is(L"tabSkin")) {
    tab_skin_.Set(value);
  } else if (is(L"animateSteps")) {
    StrToIntExW(value, STIF_SUPPORT_HEX, &animate_steps_);
    animate_steps_ = std::max(0, animate_steps_);
    hr = S_FALSE;
  } else if (is(L"interpolator")) {
    IInterpolatorPtr interp = CreateInterpolator(value);
    if (!interp) return E_FAIL;  // names are case-sensitive factory keys
    interpolator_ = std::move(interp);
    hr = S_FALSE;
  } else if (is(L"animateType") || is(L"textDir") || is(L"iconSkin") || is(L"frameSkin") ||
             is(L"tabInterSkin") || is(L"icon-x") || is(L"icon-y") || is(L"text-x") || is(L"text-y")) {
    hr = S_FALSE;  // accepted; these only change decoration we do not draw
  } else {
    return SWindow::SetAttribute(name, value, loading);
  }
  RequestRelayout();
  return AfterAttribute(name, value, loading, hr);
}

BOOL STabCtrl::CreateChildren(pugi::xml_node node) {
  for (pugi::xml_node c = node.first_child(); c; c = c.next_sibling()) {
    if (c.type() != pugi::node_element) continue;
    if (std::string(c.name()) != "page") {
      SLOG(kLogWarn, "SOUI") << L"tabctrl: only page children are pages, skipped " << XmlName(c);
      continue;
    }
    auto* page = new STabPage();
    InsertChild(page);
    page->InitFromXml(c);
    pages_.push_back(page);
  }
  return TRUE;
}

STabPage* STabCtrl::GetItem(int index) const {
  return (index >= 0 && index < GetItemCount()) ? pages_[static_cast<size_t>(index)] : nullptr;
}

int STabCtrl::InsertItem(const SStringW& page_xml, int index) {
  pugi::xml_document doc;
  const std::string utf8 = page_xml.ToUtf8();
  if (!doc.load_buffer(utf8.data(), utf8.size())) return -1;
  pugi::xml_node node = doc.first_child();
  while (node && node.type() != pugi::node_element) node = node.next_sibling();
  if (!node || std::string(node.name()) != "page") return -1;
  if (index < 0 || index > GetItemCount()) index = GetItemCount();
  auto* page = new STabPage();
  InsertChild(page);
  page->InitFromXml(node);
  pages_.insert(pages_.begin() + index, page);
  if (cur_sel_ < 0) {
    cur_sel_ = index;
  } else if (index <= cur_sel_) {
    ++cur_sel_;
  }
  ShowOnly(cur_sel_);
  RequestRelayout();
  return index;
}

BOOL STabCtrl::RemoveItem(int index) {
  STabPage* page = GetItem(index);
  if (!page) return FALSE;
  StopAnimation();
  pages_.erase(pages_.begin() + index);
  DestroyChild(page);
  if (pages_.empty()) {
    cur_sel_ = -1;
  } else if (index < cur_sel_ || cur_sel_ >= GetItemCount()) {
    cur_sel_ = std::max(0, cur_sel_ - 1);
  }
  ShowOnly(cur_sel_);
  RequestRelayout();
  return TRUE;
}

BOOL STabCtrl::SetCurSel(int index) {
  if (index < 0 || index >= GetItemCount() || index == cur_sel_) return FALSE;
  const int old = cur_sel_;
  EventTabSelChanging changing(this);
  changing.uOldSel = static_cast<UINT>(old);
  changing.uNewSel = static_cast<UINT>(index);
  FireEvent(changing);
  if (changing.bCancel) return FALSE;
  StopAnimation();
  cur_sel_ = index;
  if (animate_steps_ > 0 && old >= 0 && GetContainer()) {
    anim_from_ = old;
    anim_step_ = 0;
    GetItem(old)->SetVisible(TRUE);
    GetItem(index)->SetVisible(TRUE);
    registered_ = GetContainer()->RegisterTimelineHandler(this) != FALSE;
  } else {
    ShowOnly(index);
  }
  RequestRelayout();
  Invalidate();
  EventTabSelChanged changed(this);
  changed.uOldSel = static_cast<UINT>(old);
  changed.uNewSel = static_cast<UINT>(index);
  FireEvent(changed);
  return TRUE;
}

void STabCtrl::ShowOnly(int index) {
  for (int i = 0; i < GetItemCount(); ++i) pages_[static_cast<size_t>(i)]->SetVisible(i == index, TRUE);
}

void STabCtrl::StopAnimation() {
  if (registered_ && GetContainer()) GetContainer()->UnregisterTimelineHandler(this);
  registered_ = false;
  if (anim_step_ >= 0) {
    anim_step_ = -1;
    anim_from_ = -1;
    ShowOnly(cur_sel_);
    RequestRelayout();
  }
}

void STabCtrl::OnNextFrame() {
  if (anim_step_ < 0) return;
  if (++anim_step_ >= animate_steps_) {
    StopAnimation();
    return;
  }
  RequestRelayout();
  Invalidate();
}

CSize STabCtrl::HeaderSize() const {
  const int scale = GetScale();
  SIZE skin{0, 0};
  if (ISkinObj* s = tab_skin_.Get(scale)) skin = s->GetSkinSize();
  return CSize(width_set_ ? tab_width_.toPixelSize(scale) : skin.cx,
               height_set_ ? tab_height_.toPixelSize(scale) : skin.cy);
}

CRect STabCtrl::GetHeaderRect(int index) const {
  const CSize size = HeaderSize();
  if (index < 0 || index >= GetItemCount() || size.cx <= 0 || size.cy <= 0) return CRect();
  const int scale = GetScale();
  const CRect area = GetChildrenLayoutRect();
  const int offset = tab_pos_.toPixelSize(scale) + index * ((align_ == Align::Top || align_ == Align::Bottom ? size.cx : size.cy) +
                                                             tab_inter_.toPixelSize(scale));
  switch (align_) {
    case Align::Top: return CRect(CPoint(area.left + offset, area.top), size);
    case Align::Bottom: return CRect(CPoint(area.left + offset, area.bottom - size.cy), size);
    case Align::Left: return CRect(CPoint(area.left, area.top + offset), size);
    case Align::Right: return CRect(CPoint(area.right - size.cx, area.top + offset), size);
  }
  return CRect();
}

CRect STabCtrl::GetPageArea() const {
  CRect area = GetChildrenLayoutRect();
  const CSize size = HeaderSize();
  if (size.cx <= 0 || size.cy <= 0) return area;
  switch (align_) {
    case Align::Top: area.top += size.cy; break;
    case Align::Bottom: area.bottom -= size.cy; break;
    case Align::Left: area.left += size.cx; break;
    case Align::Right: area.right -= size.cx; break;
  }
  return area;
}

void STabCtrl::UpdateChildrenPosition() {
  const CRect area = GetPageArea();
  // During a switch the new page slides in from the right, the old one out.
  int shift = 0;
  if (anim_step_ >= 0 && animate_steps_ > 0) {
    const float t = static_cast<float>(anim_step_) / static_cast<float>(animate_steps_);
    const float p = interpolator_ ? interpolator_->getInterpolation(t) : t;
    shift = static_cast<int>((1.f - p) * static_cast<float>(area.Width()));
  }
  for (int i = 0; i < GetItemCount(); ++i) {
    CRect rc = area;
    if (anim_step_ >= 0 && i == cur_sel_) rc.OffsetRect(shift, 0);
    if (anim_step_ >= 0 && i == anim_from_) rc.OffsetRect(shift - area.Width(), 0);
    pages_[static_cast<size_t>(i)]->OnRelayout(rc);
  }
}

void STabCtrl::OnPaint(IRenderTarget* rt) {
  ISkinObj* skin = tab_skin_.Get(GetScale());
  for (int i = 0; i < GetItemCount(); ++i) {
    CRect rc = GetHeaderRect(i);
    if (rc.IsRectEmpty()) return;
    const int state = i == cur_sel_ ? 2 : (i == hover_ ? 1 : 0);
    if (skin) skin->DrawByIndex(rt, &rc, state < skin->GetStates() ? state : 0);
    const SStringW& title = pages_[static_cast<size_t>(i)]->GetTitle();
    DrawText(rt, title, title.GetLength(), &rc, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
  }
}

int STabCtrl::HitHeader(CPoint pt) const {
  for (int i = 0; i < GetItemCount(); ++i) {
    if (GetHeaderRect(i).PtInRect(pt)) return i;
  }
  return -1;
}

void STabCtrl::OnLButtonDown(UINT flags, CPoint pt) {
  SWindow::OnLButtonDown(flags, pt);
  const int hit = HitHeader(pt);
  if (hit >= 0) SetCurSel(hit);
}

void STabCtrl::OnMouseMove(UINT flags, CPoint pt) {
  SWindow::OnMouseMove(flags, pt);
  const int hit = HitHeader(pt);
  if (hit != hover_) {
    hover_ = hit;
    Invalidate();
  }
}

void STabCtrl::OnMouseLeave() {
  hover_ = -1;
  SWindow::OnMouseLeave();
}

void STabCtrl::OnKeyDown(UINT vk, UINT repeat, UINT flags) {
  const int n = GetItemCount();
  if (n == 0) return SWindow::OnKeyDown(vk, repeat, flags);
  switch (vk) {
    case VK_LEFT:
    case VK_UP: SetCurSel((cur_sel_ - 1 + n) % n); break;
    case VK_RIGHT:
    case VK_DOWN: SetCurSel((cur_sel_ + 1) % n); break;
    case VK_HOME: SetCurSel(0); break;
    case VK_END: SetCurSel(n - 1); break;
    default: SWindow::OnKeyDown(vk, repeat, flags); break;
  }
}

}  // namespace SOUI
