#include "tabs/tab_variants.h"

#include <algorithm>

#include "framework/ctrl_utils.h"
#include "qvhost/zoom.h"
#include "soui/sapp.h"
#include "templates/tab_templates.h"

namespace QVStandardCtrls {

using namespace SOUI;

namespace {

#define QV_TAB_COLOR(n) L"@color\\style_skin_qv_tab\\" n

const QVItemLook kPrimaryLook = {
    kQVPrimaryItemChildren,
    // The primary strip's disabled colour is "text_disable"; the colour
    // table keeps both spellings and the primary tabs use this one.
    {QV_TAB_COLOR(L"text_default"), QV_TAB_COLOR(L"text_hover"), QV_TAB_COLOR(L"text_selected"),
     QV_TAB_COLOR(L"text_disable")},
    L"size:12dp",
    L"size:14dp;weight:bold",
    L"12dp,0,12dp,0",
    {L"0dp", L"4dp", L"4dp"},
    false,
    false,
};

const wchar_t* const kSubTabColors[4] = {QV_TAB_COLOR(L"text_default"), QV_TAB_COLOR(L"text_hover"),
                                         QV_TAB_COLOR(L"text_selected"), QV_TAB_COLOR(L"text_disabled")};

const QVItemLook kSecondaryLook = {
    kQVSecondaryItemChildren,
    {kSubTabColors[0], kSubTabColors[1], kSubTabColors[2], kSubTabColors[3]},
    L"size:12dp",
    L"size:12dp",
    L"8dp,0,8dp,0",
    {L"0dp", L"2dp", L"2dp"},
    // The underline says which sub tab is open, as a user expects.
    true,
    false,
};

// Third-level tabs look like the secondary ones without the underline.
const QVItemLook kThirdLook = {
    kQVThirdItemChildren,
    {kSubTabColors[0], kSubTabColors[1], kSubTabColors[2], kSubTabColors[3]},
    L"size:12dp",
    L"size:12dp",
    L"8dp,0,8dp,0",
    {L"0dp", L"2dp", L"2dp"},
    false,
    false,
};

// Fixed width from the default item; the title is centred.
const QVItemLook kSegmentLook = {
    kQVSegmentItemChildren,
    {kSubTabColors[0], kSubTabColors[1], kSubTabColors[2], kSubTabColors[3]},
    L"size:11dp",
    L"size:11dp",
    L"",
    {L"0dp", L"0dp", L"0dp"},
    false,
    false,
};

// Fixed width from the default item; the left padding puts a title without
// icon 12dp in, where a browser starts its tab text.
const QVItemLook kTabViewLook = {
    kQVTabViewItemChildren,
    {kSubTabColors[0], kSubTabColors[1], kSubTabColors[2], kSubTabColors[3]},
    L"size:12dp",
    L"size:12dp",
    L"8dp,0,0,0",
    {L"12dp", L"4dp", L"0dp"},
    false,
    true,
};

const QVItemLook kFilterLook = {
    kQVFilterItemChildren,
    {QV_TAB_COLOR(L"text_default"), QV_TAB_COLOR(L"text_hover"), QV_TAB_COLOR(L"text_selected_high"),
     QV_TAB_COLOR(L"text_disabled")},
    L"size:11dp",
    L"size:11dp",
    // 6 + the title's 2dp gap: the text sits 8dp in from both sides.
    L"6dp,0,8dp,0",
    {L"8", L"2dp", L"0dp"},
    false,
    true,
};

#undef QV_TAB_COLOR

bool LoadXml(pugi::xml_document& doc, const wchar_t* text) {
  doc.reset();
  return static_cast<bool>(doc.load_string(SStringW(text).ToUtf8().c_str()));
}

// Creates the windows of a <children> template under parent.
void BuildChildren(SWindow* parent, const wchar_t* children) {
  pugi::xml_document doc;
  if (LoadXml(doc, children)) parent->SWindow::CreateChildren(doc.first_child());
}

// The "tabitem" children of a strip's XML are its initial tabs.
void InsertInitialTabs(CQVTabCtrlBase* strip, pugi::xml_node node) {
  for (pugi::xml_node child = node.child("tabitem"); child; child = child.next_sibling("tabitem")) {
    std::vector<std::pair<SStringW, SStringW>> attrs;
    bool selected = false;
    for (pugi::xml_attribute a = child.first_attribute(); a; a = a.next_attribute()) {
      const SStringW name = SStringW::FromUtf8(a.name());
      const SStringW value = SStringW::FromUtf8(a.value());
      if (name.CompareNoCase(L"selected") == 0) selected = QVParseBool(value);
      else attrs.emplace_back(name, value);
    }
    const int id = strip->InsertTab(attrs, -1);
    if (selected) strip->SetCurSelById(id, false);
  }
}

bool IsTabItem(const CQVItemBase* item) { return item && item->GetItemType() == kQVTabItemType; }

// The tail button's click, as every strip with a tail button reports it.
BOOL FireTailClick(SWindow* strip, CQVItemBase* item, UINT msg) {
  if (msg != kQVItemMsgTailClick || !IsTabItem(item)) return FALSE;
  EventQVTabItemClickTailicon evt(strip);
  evt.nId = item->GetItemId();
  strip->FireEvent(evt);
  return TRUE;
}

void SetChildVisible(SWindow* child, bool visible) {
  if (child && !!child->IsVisible(FALSE) != visible) child->SetVisible(visible ? TRUE : FALSE, TRUE);
}

}  // namespace

// ---- shared item ------------------------------------------------------------------------

CQVVariantItemBase::CQVVariantItemBase(IQVItemContainer* container, const QVItemLook& look)
    : CQVItemBase(container), look_(look) {}

BOOL CQVVariantItemBase::InitFromXml(pugi::xml_node node) {
  // Children first, so that the item's own attributes ("title", ...) find
  // them; the padding first too, so that the template's wins.
  if (*look_.padding) SWindow::SetAttribute(L"padding", look_.padding, TRUE);
  BuildChildren(this, look_.children);
  if (SWindow* tail = FindChildByName(L"btn_tail")) {
    tail->subscribeEvent(EVT_CMD, [this](EventArgs*) {
      if (IQVItemContainer* c = InputReceiver()) c->OnItemUserMessage(this, kQVItemMsgTailClick, 0, 0);
      return true;
    });
  }
  const BOOL r = CQVItemBase::InitFromXml(node);
  built_ = true;
  OnStateChanged(RestingState(), 0);
  UpdateWidth(0);
  return r;
}

HRESULT CQVVariantItemBase::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVVariantItemBase> kAttrs[] = {
      {L"title", &CQVVariantItemBase::OnAttrTitle},
      {L"img_head", &CQVVariantItemBase::OnAttrImgHead},
      {L"btn_tail", &CQVVariantItemBase::OnAttrBtnTail},
      {L"iconIndex", &CQVVariantItemBase::OnAttrIconIndex},
      {L"reddot", &CQVVariantItemBase::OnAttrRedDot},
  };
  return QVDispatchAttribute<CQVVariantItemBase, CQVItemBase>(this, kAttrs, nullptr, name, value, loading);
}

HRESULT CQVVariantItemBase::OnAttrTitle(const SStringW& value, BOOL loading) {
  (void)loading;
  if (SWindow* title = GetTitleWnd()) title->SetWindowText(value);
  UpdateWidth(0);
  return S_OK;
}

HRESULT CQVVariantItemBase::OnAttrImgHead(const SStringW& value, BOOL loading) {
  SWindow* head = FindChildByName(L"img_head");
  if (!head) return S_OK;
  if (!value.IsEmpty()) head->SetAttribute(L"skin", value, loading);
  SetChildVisible(head, !value.IsEmpty());
  UpdateWidth(0);
  return S_OK;
}

HRESULT CQVVariantItemBase::OnAttrBtnTail(const SStringW& value, BOOL loading) {
  SWindow* tail = FindChildByName(L"btn_tail");
  if (!tail) return S_OK;
  const bool is_flag = value == L"0" || value == L"1" || value.CompareNoCase(L"false") == 0 ||
                       value.CompareNoCase(L"true") == 0;
  if (!is_flag && !value.IsEmpty()) tail->SetAttribute(L"skin", value, loading);
  SetChildVisible(tail, is_flag ? QVParseBool(value) : !value.IsEmpty());
  UpdateWidth(0);
  return S_OK;
}

HRESULT CQVVariantItemBase::OnAttrIconIndex(const SStringW& value, BOOL loading) {
  if (SWindow* head = FindChildByName(L"img_head")) head->SetAttribute(L"iconIndex", value, loading);
  UpdateWidth(0);
  return S_OK;
}

HRESULT CQVVariantItemBase::OnAttrRedDot(const SStringW& value, BOOL loading) {
  (void)loading;
  SetChildVisible(FindChildByName(L"reddot"), QVParseBool(value));
  return S_OK;
}

void CQVVariantItemBase::OnStateChanged(QVItemState state, int reserved) {
  (void)reserved;
  QVItemState shown = state;
  if (!enabled_) shown = kQVItemDisabled;
  // Hovering the open tab does not make it look like a closed one.
  else if (state == kQVItemHover && selected_) shown = kQVItemSelected;
  shown_state_ = shown;
  // The checked state draws the background skin's selected frame (the open
  // browser tab, the picked chip). Not for segments: their selected frame is
  // filled with the colour of the selected title.
  if (look_.check_marks_selection) {
    if (selected_) ModifyState(WndState_Check, 0, TRUE);
    else ModifyState(0, WndState_Check, TRUE);
  }
  SWindow* title = GetTitleWnd();
  if (!title) return;
  title->SetAttribute(L"colorText", look_.colors[shown], FALSE);
  const wchar_t* font = shown == kQVItemSelected ? look_.font_selected : look_.font;
  if (title->GetAttribute(L"font") != font) {
    title->SetAttribute(L"font", font, FALSE);
    UpdateWidth(0);
  }
  if (look_.underline_marks_selection) SetChildVisible(FindChildByName(L"img_bottom"), shown == kQVItemSelected);
  Invalidate();
}

void CQVVariantItemBase::UpdateWidth(int hint) {
  (void)hint;
  const int scale = GetScale();
  const CRect pad = GetStyle().GetPadding(scale);
  int width = pad.left + pad.right;
  static const wchar_t* const kFlow[3] = {L"img_head", L"title", L"btn_tail"};
  for (int i = 0; i < 3; ++i) {
    SWindow* child = FindChildByName(kFlow[i]);
    if (!child || !child->IsVisible(FALSE)) continue;
    width += SLayoutSize::Parse(look_.gaps[i]).toPixelSize(scale);
    if (i == 1) {
      const wchar_t* font = shown_state_ == kQVItemSelected ? look_.font_selected : look_.font;
      width += IQVStandardCtrlUtils::MeasureText(child->GetWindowText(), SStringW(font)).cx;
    } else {
      width += std::max(0, child->GetDesiredSize(-1, -1).cx);
    }
  }
  if (width == auto_width_) return;
  auto_width_ = width;
  if (!built_ || GetLayoutParam()->IsSpecifiedSize(Orientation::Horz)) return;
  RequestRelayout();
  if (container_) container_->OnItemWidthChanged(this);
}

CSize CQVVariantItemBase::GetDesiredSize(int width, int height) {
  CSize size = CQVItemBase::GetDesiredSize(width, height);
  if (!GetLayoutParam()->IsSpecifiedSize(Orientation::Horz)) size.cx = auto_width_;
  return size;
}

// ---- primary ----------------------------------------------------------------------------

CQVPrimaryTabItem::CQVPrimaryTabItem(IQVItemContainer* container) : CQVVariantItemBase(container, kPrimaryLook) {}

CQVPrimaryTab::CQVPrimaryTab() {
  static const ItemTemplate kTemplate = ParseItemTemplate(kQVPrimaryTabItemXml);
  item_template_ = kTemplate;
}

BOOL CQVPrimaryTab::CreateChildren(pugi::xml_node node) {
  const BOOL r = CQVTabCtrlBase::CreateChildren(node);
  InsertInitialTabs(this, node);
  return r;
}

BOOL CQVPrimaryTab::OnItemUserMessage(CQVItemBase* item, UINT msg, WPARAM wp, LPARAM lp) {
  (void)wp;
  (void)lp;
  return FireTailClick(this, item, msg);
}

// ---- secondary and third ----------------------------------------------------------------

CQVSecondaryTabItem::CQVSecondaryTabItem(IQVItemContainer* container)
    : CQVVariantItemBase(container, kSecondaryLook) {}

CQVSecondaryTabItem::CQVSecondaryTabItem(IQVItemContainer* container, const QVItemLook& look)
    : CQVVariantItemBase(container, look) {}

CQVSecondaryTab::CQVSecondaryTab() {
  static const ItemTemplate kTemplate = ParseItemTemplate(kQVSecondaryTabItemXml);
  item_template_ = kTemplate;
}

CQVThirdTabItem::CQVThirdTabItem(IQVItemContainer* container) : CQVSecondaryTabItem(container, kThirdLook) {}

CQVThirdTab::CQVThirdTab() {
  static const ItemTemplate kTemplate = ParseItemTemplate(kQVThirdTabItemXml);
  item_template_ = kTemplate;
}

// ---- segment ----------------------------------------------------------------------------

CQVSegmentTabItem::CQVSegmentTabItem(IQVItemContainer* container) : CQVVariantItemBase(container, kSegmentLook) {}

void CQVSegmentTabItem::SetSegmentPos(QVSegmentPos pos) {
  static const wchar_t* const kSkins[3] = {L"skin_tab_bg_segment_tab_left", L"skin_tab_bg_segment_tab_center",
                                           L"skin_tab_bg_segment_tab_right"};
  if (segment_pos_ == pos) return;
  segment_pos_ = pos;
  SetAttribute(L"skin", kSkins[pos], FALSE);
  Invalidate();
}

CQVSegmentTab::CQVSegmentTab() {
  static const ItemTemplate kTemplate = ParseItemTemplate(kQVSegmentTabItemXml);
  item_template_ = kTemplate;
}

BOOL CQVSegmentTab::CreateChildren(pugi::xml_node node) {
  const BOOL r = CQVTabCtrlBase::CreateChildren(node);
  InsertInitialTabs(this, node);
  return r;
}

void CQVSegmentTab::UpdateSegmentSkins() {
  for (CQVItemBase* it = head_; it; it = it->GetNext()) {
    auto* seg = dynamic_cast<CQVSegmentTabItem*>(it);
    if (!seg) continue;
    QVSegmentPos pos = kQVSegmentCenter;
    if (it == head_ && it->GetNext()) pos = kQVSegmentLeft;
    else if (it != head_ && !it->GetNext()) pos = kQVSegmentRight;
    seg->SetSegmentPos(pos);
  }
}

int CQVSegmentTab::UpdateTabRect(CQVItemBase* from, CQVItemBase* to, CQVItemBase* skip, bool animate) {
  const int rows = CQVTabCtrlBase::UpdateTabRect(from, to, skip, animate);
  UpdateSegmentSkins();
  return rows;
}

void CQVSegmentTab::RemoveTab(CQVItemBase* item) {
  CQVTabCtrlBase::RemoveTab(item);
  // The new end segments round off while the removed one fades.
  UpdateSegmentSkins();
}

// ---- tab view ---------------------------------------------------------------------------

CQVTabViewItem::CQVTabViewItem(IQVItemContainer* container) : CQVVariantItemBase(container, kTabViewLook) {}

CQVTabView::CQVTabView() {
  static const ItemTemplate kTemplate = ParseItemTemplate(kQVTabViewItemXml);
  item_template_ = kTemplate;
  GetEventSet()->addEvent(EVT_QVTAB_CLICK_ADD, L"on_qvtab_click_add");
  GetEventSet()->addEvent(EVT_QVTAB_ITEM_DRAG_OUT, L"on_qvtab_item_drag_out");
}

HRESULT CQVTabView::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVTabView> kAttrs[] = {
      {L"showAdd", &CQVTabView::OnAttrShowAdd},
  };
  return QVDispatchAttribute<CQVTabView, CQVTabCtrlBase>(this, kAttrs, nullptr, name, value, loading);
}

HRESULT CQVTabView::OnAttrShowAdd(const SStringW& value, BOOL loading) {
  (void)loading;
  show_add_ = QVParseBool(value);
  if (add_item_) add_item_->SetVisible(show_add_ ? TRUE : FALSE, TRUE);
  return S_OK;
}

BOOL CQVTabView::CreateChildren(pugi::xml_node node) {
  const BOOL r = CQVTabCtrlBase::CreateChildren(node);
  add_item_ = CreateEndItem();
  InsertInitialTabs(this, node);
  return r;
}

CQVItemBase* CQVTabView::CreateEndItem() {
  // Not in the tab list: it is neither counted, selected nor reordered.
  auto* item = new CQVItemBase(this);
  InsertChild(item);
  pugi::xml_document doc;
  LoadXml(doc, kQVTabViewAddXml);
  item->InitFromXml(doc.first_child());
  item->SetItemType(kQVEndItemType);
  item->SetDragType(kQVDragNone);
  item->SetVisible(show_add_ ? TRUE : FALSE);
  return item;
}

int CQVTabView::UpdateTabRect(CQVItemBase* from, CQVItemBase* to, CQVItemBase* skip, bool animate) {
  const int rows = CQVTabCtrlBase::UpdateTabRect(from, to, skip, animate);
  if (!add_item_) return rows;
  const CRect rc = GetWindowRect();
  if (rc.IsRectEmpty()) return rows;
  // Right behind the last tab's slot, vertically centred on its row.
  CQVItemBase* last = LastTab();
  const CRect tail = last ? last->GetFinalRect() : CRect(rc.left, rc.top, rc.left, rc.top + ItemHeightPx());
  const CSize size = add_item_->GetDesiredSize(-1, -1);
  const int x = tail.right + item_gap_ + ZPixel(4);
  const int y = tail.top + (tail.Height() - size.cy) / 2;
  const CRect slot(x, y, x + size.cx, y + size.cy);
  if (slot != add_item_->GetWindowRect()) add_item_->Move(&slot);
  return rows;
}

void CQVTabView::SetItemDragable(CQVItemBase* item) {
  if (item) item->SetDragType(dragable_ ? kQVDragHorz : kQVDragNone);
}

void CQVTabView::OnItemLButtonUp(CQVItemBase* item, UINT flags, CPoint pt) {
  if (item && item == add_item_) {
    if (item->GetWindowRect().PtInRect(pt)) {
      EventQVTabClickAdd evt(this);
      FireEvent(evt);
    }
    return;
  }
  const CRect rc = GetWindowRect();
  const int threshold = ZPixel(kQVDragOutPx);
  if (IsTabItem(item) && dragable_ && (pt.y < rc.top - threshold || pt.y > rc.bottom + threshold)) {
    EventQVTabItemDragOut evt(this);
    evt.nId = item->GetItemId();
    evt.pt = pt;
    FireEvent(evt);
  }
  CQVTabCtrlBase::OnItemLButtonUp(item, flags, pt);
}

BOOL CQVTabView::OnItemUserMessage(CQVItemBase* item, UINT msg, WPARAM wp, LPARAM lp) {
  (void)wp;
  (void)lp;
  return FireTailClick(this, item, msg);
}

// ---- filter -----------------------------------------------------------------------------

CQVFilterTabItem::CQVFilterTabItem(IQVItemContainer* container) : CQVVariantItemBase(container, kFilterLook) {}

CQVFilterTab::CQVFilterTab() {
  static const ItemTemplate kTemplate = ParseItemTemplate(kQVFilterTabItemXml);
  item_template_ = kTemplate;
  GetEventSet()->addEvent(EVT_QVTAB_ITEM_CANCLE_SELING, L"on_qvtab_item_cancle_seling");
  GetEventSet()->addEvent(EVT_QVTAB_ITEM_CANCLE_SEL, L"on_qvtab_item_cancle_sel");
}

HRESULT CQVFilterTab::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVFilterTab> kAttrs[] = {
      {L"single", &CQVFilterTab::OnAttrItemSingle},
      {L"MaxRowCount", &CQVFilterTab::OnAttrMaxRowCount},
  };
  return QVDispatchAttribute<CQVFilterTab, CQVTabCtrlBase>(this, kAttrs, nullptr, name, value, loading);
}

BOOL CQVFilterTab::CreateChildren(pugi::xml_node node) {
  const BOOL r = CQVTabCtrlBase::CreateChildren(node);
  InsertInitialTabs(this, node);
  return r;
}

HRESULT CQVFilterTab::OnAttrMaxRowCount(const SStringW& value, BOOL loading) {
  int rows = 0;
  if (!StrToIntExW(value.c_str(), STIF_SUPPORT_HEX, &rows)) return E_FAIL;
  max_rows_ = rows;
  if (!loading) {
    RequestRelayout();
    UpdateTabRect(head_, nullptr, nullptr, false);
  }
  return S_OK;
}

HRESULT CQVFilterTab::OnAttrItemSingle(const SStringW& value, BOOL loading) {
  (void)loading;
  const bool single = QVParseBool(value);
  if (single == single_) return S_OK;
  if (single) {
    // Every chip is offered back; a vetoed one stays selected and, of
    // those, the last becomes the single selection.
    CQVItemBase* kept = nullptr;
    const std::vector<CQVItemBase*> set = selected_set_;
    for (CQVItemBase* item : set) {
      EventQVTabItemCanclSeling seling(this);
      seling.nId = item->GetItemId();
      FireEvent(seling);
      if (seling.bCancel) {
        kept = item;
        continue;
      }
      item->SetSelected(false);
      EventQVTabItemCancleSel done(this);
      done.nId = item->GetItemId();
      done.bByMode = true;
      FireEvent(done);
    }
    selected_set_.clear();
    cur_sel_ = kept;
  } else {
    selected_set_.clear();
    if (cur_sel_ && !CancelSel(cur_sel_, true, true)) selected_set_.push_back(cur_sel_);
    else cur_sel_ = nullptr;
  }
  single_ = single;
  return S_OK;
}

std::vector<int> CQVFilterTab::GetSelectedIds() const {
  std::vector<int> ids;
  if (single_) {
    if (cur_sel_) ids.push_back(cur_sel_->GetItemId());
    return ids;
  }
  for (CQVItemBase* it : selected_set_) ids.push_back(it->GetItemId());
  return ids;
}

void CQVFilterTab::SetCurSel(CQVItemBase* item, bool notify) {
  if (single_) {
    CQVTabCtrlBase::SetCurSel(item, notify);
    return;
  }
  if (!item || item->IsSelected() || !item->IsEnable() || item->GetItemId() < 0) return;
  if (std::find(selected_set_.begin(), selected_set_.end(), item) != selected_set_.end()) return;
  EventQVTabSelChanging changing(this);
  changing.nOldId = -1;
  changing.nNewId = item->GetItemId();
  if (notify) {
    FireEvent(changing);
    if (changing.bCancel) return;
  }
  selected_set_.push_back(item);
  item->SetSelected(true);
  cur_sel_ = item;
  if (notify) {
    EventQVTabSelChanged changed(this);
    changed.nOldId = -1;
    changed.nNewId = item->GetItemId();
    FireEvent(changed);
  }
}

bool CQVFilterTab::CancelSel(CQVItemBase* item, bool notify, bool by_mode) {
  if (!item || !item->IsSelected()) return false;
  if (notify) {
    EventQVTabItemCanclSeling seling(this);
    seling.nId = item->GetItemId();
    FireEvent(seling);
    if (seling.bCancel) return false;
  }
  item->SetSelected(false);
  selected_set_.erase(std::remove(selected_set_.begin(), selected_set_.end(), item), selected_set_.end());
  if (cur_sel_ == item) cur_sel_ = selected_set_.empty() ? nullptr : selected_set_.back();
  if (notify) {
    EventQVTabItemCancleSel done(this);
    done.nId = item->GetItemId();
    done.bByMode = by_mode;
    FireEvent(done);
  }
  return true;
}

void CQVFilterTab::OnItemLButtonDown(CQVItemBase* item, UINT flags, CPoint pt) {
  if (!single_ && IsTabItem(item) && item->IsEnable() && item->IsSelected() && !item->IsHiding()) {
    // A chip toggles: a click on a selected one takes it out of the set.
    CancelSel(item, true, false);
    pressed_ = item;
    return;
  }
  CQVTabCtrlBase::OnItemLButtonDown(item, flags, pt);
}

void CQVFilterTab::OnInsertNewItem(CQVItemBase* item) {
  // A multi-selection strip starts with nothing picked.
  if (!single_) {
    item->SetSelected(false);
    return;
  }
  CQVTabCtrlBase::OnInsertNewItem(item);
}

void CQVFilterTab::RemoveTab(CQVItemBase* item) {
  if (single_ || !QVItemListNodeBase<CQVItemBase>::ListContains(head_, item)) {
    CQVTabCtrlBase::RemoveTab(item);
    return;
  }
  // No "first tab takes over" in a set: the others stay as they are.
  selected_set_.erase(std::remove(selected_set_.begin(), selected_set_.end(), item), selected_set_.end());
  if (cur_sel_ == item) cur_sel_ = nullptr;
  CQVTabCtrlBase::RemoveTab(item);
  cur_sel_ = selected_set_.empty() ? nullptr : selected_set_.back();
}

BOOL CQVFilterTab::OnItemUserMessage(CQVItemBase* item, UINT msg, WPARAM wp, LPARAM lp) {
  (void)wp;
  (void)lp;
  return FireTailClick(this, item, msg);
}

// ---- stand-alone composite ----------------------------------------------------------------

BOOL CQVCommTabItem::InitFromXml(pugi::xml_node node) {
  BuildChildren(this, kQVCommTabItemChildren);
  return SWindow::InitFromXml(node);
}

HRESULT CQVCommTabItem::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVCommTabItem> kAttrs[] = {
      {L"title", &CQVCommTabItem::OnAttrTitle},
      {L"icon_skin", &CQVCommTabItem::OnAttrIconSkin},
      {L"show_tailicon", &CQVCommTabItem::OnAttrShowTailIcon},
      {L"reddot", &CQVCommTabItem::OnAttrRedDot},
  };
  return QVDispatchAttribute<CQVCommTabItem, SWindow>(this, kAttrs, nullptr, name, value, loading);
}

HRESULT CQVCommTabItem::OnAttrTitle(const SStringW& value, BOOL loading) {
  (void)loading;
  if (SWindow* title = FindChildByName(L"title")) title->SetWindowText(value);
  RequestRelayout();
  return S_OK;
}

HRESULT CQVCommTabItem::OnAttrIconSkin(const SStringW& value, BOOL loading) {
  SWindow* head = FindChildByName(L"img_head");
  if (!head) return S_OK;
  head->SetAttribute(L"skin", value, loading);
  SetChildVisible(head, !value.IsEmpty());
  RequestRelayout();
  return S_OK;
}

HRESULT CQVCommTabItem::OnAttrShowTailIcon(const SStringW& value, BOOL loading) {
  (void)loading;
  SetChildVisible(FindChildByName(L"btn_tail"), QVParseBool(value));
  RequestRelayout();
  return S_OK;
}

HRESULT CQVCommTabItem::OnAttrRedDot(const SStringW& value, BOOL loading) {
  (void)loading;
  SetChildVisible(FindChildByName(L"reddot"), QVParseBool(value));
  return S_OK;
}

}  // namespace QVStandardCtrls
