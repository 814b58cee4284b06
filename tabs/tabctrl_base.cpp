// Sections: attributes · items · selection · lookups · layout · reports from
// the items (pressing, dragging, hovering). The "more" button and the last
// row's scrolling are in tabctrl_more.cpp.
#include "tabs/tabctrl_base.h"

#include <cstdlib>

#include "qvhost/zoom.h"
#include "soui/sapp.h"

namespace QVStandardCtrls {

using namespace SOUI;

namespace {

// Glides and fades of the strip, in milliseconds.
constexpr UINT kGlideMs = 200;
constexpr int kFadeMs = 200;
// Half-width of the band around the last swap point in which a resting
// mouse swaps nothing, at 100 %.
constexpr int kSwitchBandPx = 5;

const wchar_t kDefaultItemXml[] = L"<tab width=\"100dp\" height=\"32dp\"/>";

const SOUI::EventSet::Decl kTabEvents[] = {
    {EVT_QVTAB_SEL_CHANGING, L"on_qvtab_sel_changing"},
    {EVT_QVTAB_SEL_CHANGED, L"on_qvtab_sel_changed"},
    {EVT_QVTAB_ITEM_HOVER, L"on_qvtab_item_hover"},
    {EVT_QVTAB_ITEM_LEAVE, L"on_qvtab_item_leave"},
    {EVT_QVTAB_ITEM_INSERT, L"on_qvtab_item_insert"},
    {EVT_QVTAB_ITEM_REMOVED, L"on_qvtab_item_removed"},
    {EVT_QVTAB_ITEM_CLICK_RBUTTON, L"on_qvtab_item_click_rbutton"},
    {EVT_QVTAB_ITEM_CLICK_TAILICON, L"on_qvtab_item_click_tailicon"},
};

}  // namespace

CQVTabCtrlBase::CQVTabCtrlBase() {
  for (const auto& e : kTabEvents) GetEventSet()->addEvent(e.id, e.name);
  static const ItemTemplate kDefault = ParseItemTemplate(kDefaultItemXml);
  item_template_ = kDefault;
}

CQVTabCtrlBase::~CQVTabCtrlBase() = default;

CQVTabCtrlBase::ItemTemplate CQVTabCtrlBase::ParseItemTemplate(const wchar_t* xml) {
  auto doc = std::make_shared<pugi::xml_document>();
  doc->load_string(SStringW(xml).ToUtf8().c_str());
  return doc;
}

// ---- attributes ----------------------------------------------------------------

HRESULT CQVTabCtrlBase::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVTabCtrlBase> kAttrs[] = {
      {L"pos", &CQVTabCtrlBase::OnAttrPos, true},
      {L"dragable", &CQVTabCtrlBase::OnAttrDragable},
      {L"animation", &CQVTabCtrlBase::OnAttrAnimation},
      {L"moreButton", &CQVTabCtrlBase::OnAttrMoreButton},
  };
  return QVDispatchAttribute<CQVTabCtrlBase, SWindow>(this, kAttrs, nullptr, name, value, loading);
}

HRESULT CQVTabCtrlBase::OnAttrPos(const SStringW& value, BOOL loading) {
  (void)value;
  (void)loading;
  // The toolkit stores the position; the items follow in OnSize once the
  // new rectangle arrives.
  return S_OK;
}

HRESULT CQVTabCtrlBase::OnAttrDragable(const SStringW& value, BOOL loading) {
  (void)loading;
  dragable_ = QVParseBool(value);
  QVItemListNodeBase<CQVItemBase>::ListLoop(head_, [this](CQVItemBase* item) {
    SetItemDragable(item);
    return false;
  });
  return S_OK;
}

HRESULT CQVTabCtrlBase::OnAttrAnimation(const SStringW& value, BOOL loading) {
  (void)loading;
  animation_ = QVParseBool(value);
  return S_OK;
}

void CQVTabCtrlBase::SetItemDragable(CQVItemBase* item) {
  if (item) item->SetDragType(dragable_ ? kQVDragFree : kQVDragNone);
}

BOOL CQVTabCtrlBase::CreateChildren(pugi::xml_node node) {
  for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
    if (child.type() != pugi::node_element) continue;
    const SStringW tag = SStringW::FromUtf8(child.name());
    if (tag.CompareNoCase(L"item") == 0 || tag.CompareNoCase(L"tab") == 0) {
      auto tmpl = std::make_shared<pugi::xml_document>();
      tmpl->append_copy(child);
      item_template_ = std::move(tmpl);
      break;
    }
  }
  return TRUE;
}

int CQVTabCtrlBase::OnCreate() {
  const int r = SWindow::OnCreate();
  // Items gliding in from outside the strip stay hidden at its edges.
  clip_client_ = TRUE;
  return r;
}

void CQVTabCtrlBase::OnSize(UINT type, CSize size) {
  SWindow::OnSize(type, size);
  // A resize snaps the items, as a browser's strip does.
  UpdateTabRect(head_, nullptr, nullptr, false);
}

void CQVTabCtrlBase::OnRelayout(const CRect& rc) {
  const CPoint old = GetWindowRect().TopLeft();
  const bool same_size = GetWindowRect().Size() == CRect(rc).Size();
  SWindow::OnRelayout(rc);
  // A pure move carries the items along without an OnSize.
  if (same_size && old != CRect(rc).TopLeft()) UpdateTabRect(head_, nullptr, nullptr, false);
}

void CQVTabCtrlBase::UpdateChildrenPosition() {
  // Placed items are floating, so the toolkit layout only places what is
  // not an item; the items are placed by UpdateTabRect.
  SWindow::UpdateChildrenPosition();
}

// ---- items ----------------------------------------------------------------------

CQVItemBase* CQVTabCtrlBase::CreateItem() { return new CQVItemBase(this); }

CQVItemBase* CQVTabCtrlBase::CreateEndItem() { return nullptr; }

bool CQVTabCtrlBase::ItemAttrFilter(const SStringW& name) {
  (void)name;
  return true;
}

int CQVTabCtrlBase::GetNewTabId() { return next_tab_id_++; }

int CQVTabCtrlBase::InsertTab(const std::vector<std::pair<SStringW, SStringW>>& attrs, int index) {
  CQVItemBase* item = CreateItem();
  if (!item) return -1;
  InsertChild(item);
  item->InitFromTemplate(item_template_);
  // The strip places its items: the toolkit's flow layout must never move
  // one, even when its slot happens to equal the flow position.
  item->SetAttribute(L"float", L"1", FALSE);
  for (const auto& [name, value] : attrs) {
    if (ItemAttrFilter(name)) item->SetAttribute(name, value, FALSE);
  }
  SetItemDragable(item);
  if (item->GetItemId() < 0) {
    item->SetItemId(GetNewTabId());
  } else if (next_tab_id_ <= item->GetItemId()) {
    // An id given by the host is never handed out again.
    next_tab_id_ = item->GetItemId() + 1;
  }
  item->SetItemType(kQVTabItemType);
  if (index < 0) QVItemListNodeBase<CQVItemBase>::ListInsertAfter(head_, item, LastTab());
  else QVItemListNodeBase<CQVItemBase>::ListInsert(head_, item, index);
  if (!item->GetNext()) last_tab_hint_ = item;

  EventQVTabItemInsert evt(this);
  evt.nId = item->GetItemId();
  FireEvent(evt);

  OnInsertNewItem(item);
  RequestRelayout();
  // The tabs before the new one stay where they are.
  UpdateTabRect(item, nullptr, item, true);
  // A new tab fades in where it lands while its neighbours make room; the
  // tabs of a strip still being built from its layout are simply there.
  if (item->IsCreateAnimator() && animation_ && GetContainer() && IsCreated()) item->ShowWithAnimator(kFadeMs);
  return item->GetItemId();
}

CQVItemBase* CQVTabCtrlBase::LastTab() {
  // Tabs are nearly always appended: carry on from the last tab found at
  // the end. The hint is always in the list (RemoveTab drops it), so its
  // links may be followed; a drag may have put tabs behind it.
  CQVItemBase* last = last_tab_hint_ ? last_tab_hint_ : head_;
  while (last && last->GetNext()) last = last->GetNext();
  return last_tab_hint_ = last;
}

void CQVTabCtrlBase::OnInsertNewItem(CQVItemBase* item) {
  if (cur_sel_) {
    item->SetSelected(false);
    return;
  }
  cur_sel_ = item;
  item->SetSelected(true);
  EventQVTabSelChanged evt(this);
  evt.nOldId = -1;
  evt.nNewId = item->GetItemId();
  FireEvent(evt);
}

void CQVTabCtrlBase::RemoveTab(CQVItemBase* item) {
  // Only a tab of this strip can leave it, and only once.
  if (!QVItemListNodeBase<CQVItemBase>::ListContains(head_, item)) return;
  const bool was_selected = item == cur_sel_;
  QVItemListNodeBase<CQVItemBase>::ListRemove(head_, item);
  if (last_tab_hint_ == item) last_tab_hint_ = nullptr;
  // The one place where a leaving tab stops being a target: whatever the
  // user is still doing with it (a press, a drag) ends here.
  item->MarkRemoved();
  if (pressed_ == item) pressed_ = nullptr;
  if (last_switch_dragged_ == item || last_switch_other_ == item) ResetSwitchState();
  item->HideWithAnimator(kFadeMs);

  EventQVTabItemRemoved evt(this);
  evt.nId = item->GetItemId();
  FireEvent(evt);

  if (!was_selected) return;
  if (!head_) {
    cur_sel_ = nullptr;
    return;
  }
  // Straight to the first tab: the removed one is gone, so there is nothing
  // to veto.
  cur_sel_ = head_;
  head_->SetSelected(true);
  EventQVTabSelChanged changed(this);
  changed.nOldId = item->GetItemId();
  changed.nNewId = head_->GetItemId();
  FireEvent(changed);
}

bool CQVTabCtrlBase::RemoveTabById(int id) {
  CQVItemBase* item = GetTabObjById(id);
  if (!item) return false;
  RemoveTab(item);
  return true;
}

bool CQVTabCtrlBase::RemoveTabByOrder(int order) {
  CQVItemBase* item = GetTabObjByOrder(order);
  if (!item) return false;
  RemoveTab(item);
  return true;
}

// ---- selection -------------------------------------------------------------------

void CQVTabCtrlBase::SetCurSel(CQVItemBase* item, bool notify) {
  if (!item || item->IsSelected() || !item->IsEnable() || item->GetItemId() < 0) return;
  EventQVTabSelChanging changing(this);
  changing.nOldId = cur_sel_ ? cur_sel_->GetItemId() : -1;
  changing.nNewId = item->GetItemId();
  if (notify) {
    FireEvent(changing);
    if (changing.bCancel) return;
  }
  if (cur_sel_) cur_sel_->SetSelected(false);
  item->SetSelected(true);
  cur_sel_ = item;
  if (more_button_) EnsureTabVisible(item->GetItemId());
  if (notify) {
    EventQVTabSelChanged changed(this);
    changed.nOldId = changing.nOldId;
    changed.nNewId = changing.nNewId;
    FireEvent(changed);
  }
}

void CQVTabCtrlBase::SelectedEventCB(CQVItemBase* item, bool selected) {
  if (!item) return;
  if (selected) {
    SetCurSel(item, true);
    return;
  }
  // The base keeps a single selection: nothing to take back but the item
  // itself, which a variant with several selections handles.
  QVItemListNodeBase<CQVItemBase>::ListLoop(head_, [item](CQVItemBase* it) { return it == item; });
}

bool CQVTabCtrlBase::SetCurSelById(int id, bool notify) {
  CQVItemBase* item = GetTabObjById(id);
  if (!item) return false;
  SetCurSel(item, notify);
  return true;
}

bool CQVTabCtrlBase::SetCurSelByOrder(int order, bool notify) {
  CQVItemBase* item = GetTabObjByOrder(order);
  if (!item) return false;
  SetCurSel(item, notify);
  return true;
}

int CQVTabCtrlBase::GetCurSelId() const { return cur_sel_ ? cur_sel_->GetItemId() : -1; }

int CQVTabCtrlBase::GetCurSelOrder() const { return cur_sel_ ? GetTabOrder(cur_sel_->GetItemId()) : -1; }

// ---- lookups -----------------------------------------------------------------------

CQVItemBase* CQVTabCtrlBase::GetTabObjById(int id) const {
  for (CQVItemBase* it = head_; it; it = it->GetNext()) {
    if (it->GetItemId() == id) return it;
  }
  return nullptr;
}

CQVItemBase* CQVTabCtrlBase::GetTabObjByOrder(int order) const {
  if (order < 0) return nullptr;
  CQVItemBase* it = head_;
  for (int i = 0; it && i < order; ++i) it = it->GetNext();
  return it;
}

int CQVTabCtrlBase::GetTabId(int order) const {
  const CQVItemBase* it = GetTabObjByOrder(order);
  return it ? it->GetItemId() : -1;
}

int CQVTabCtrlBase::GetTabOrder(int id) const {
  int i = 0;
  for (CQVItemBase* it = head_; it; it = it->GetNext(), ++i) {
    if (it->GetItemId() == id) return i;
  }
  return -1;
}

int CQVTabCtrlBase::GetTabCount() const {
  int n = 0;
  for (CQVItemBase* it = head_; it; it = it->GetNext()) ++n;
  return n;
}

void CQVTabCtrlBase::GetAllItemWidthAndCount(int& width, int& count) const {
  width = 0;
  count = 0;
  for (CQVItemBase* it = head_; it; it = it->GetNext()) {
    width += ItemWidthPx(it);
    ++count;
  }
}

void CQVTabCtrlBase::SetItemAttrById(const SStringW& name, const SStringW& value, int id) {
  if (CQVItemBase* it = GetTabObjById(id)) it->SetAttribute(name, value, FALSE);
}

void CQVTabCtrlBase::SetItemAttrByOrder(const SStringW& name, const SStringW& value, int order) {
  if (CQVItemBase* it = GetTabObjByOrder(order)) it->SetAttribute(name, value, FALSE);
}

void CQVTabCtrlBase::SetCurItemAttr(const SStringW& name, const SStringW& value) {
  if (cur_sel_) cur_sel_->SetAttribute(name, value, FALSE);
}

SStringW CQVTabCtrlBase::GetItemAttr(CQVItemBase* item, const SStringW& name) {
  if (!item) return SStringW();
  // The id may have been generated rather than set, so it is answered live.
  if (name.CompareNoCase(L"itemid") == 0) {
    SStringW s;
    s.Format(L"%d", item->GetItemId());
    return s;
  }
  return item->GetAttribute(name);
}

SStringW CQVTabCtrlBase::GetItemAttrById(const SStringW& name, int id) { return GetItemAttr(GetTabObjById(id), name); }

SStringW CQVTabCtrlBase::GetItemAttrByOrder(const SStringW& name, int order) {
  return GetItemAttr(GetTabObjByOrder(order), name);
}

SStringW CQVTabCtrlBase::GetCurItemAttr(const SStringW& name) { return GetItemAttr(cur_sel_, name); }

// ---- layout -------------------------------------------------------------------------

int CQVTabCtrlBase::ItemHeightPx() const {
  if (item_height_ > 0) return item_height_;
  return head_ ? std::max(0, head_->GetDesiredSize(-1, -1).cy) : 0;
}

int CQVTabCtrlBase::GetRowPosY(int row, int height) const {
  return GetWindowRect().top + (height + row_spacing_) * (row - 1);
}

bool CQVTabCtrlBase::IsDirectMove(const CRect& from, const CRect& to) const {
  return from.IsRectEmpty() || from.top == to.top;
}

std::vector<MoveNode> CQVTabCtrlBase::GetMoveNode(CRect from, CRect to, CRect container) const {
  if (IsDirectMove(from, to)) return {MoveNode{from, to, 0}};
  // Leave the old row through the edge it is heading for and enter the new
  // row from the opposite edge, so that a wrapping tab never cuts across
  // the rows between.
  const int w = from.Width();
  const bool down = to.top > from.top;
  CRect exit = from;
  CRect enter = to;
  if (down) {
    exit.MoveToX(container.right);
    enter.MoveToX(container.left - to.Width());
  } else {
    exit.MoveToX(container.left - w);
    enter.MoveToX(container.right);
  }
  return {MoveNode{from, exit, 0}, MoveNode{enter, to, 0}};
}

void CQVTabCtrlBase::UpdateAllTabRect() { UpdateTabRect(head_, nullptr, nullptr, true); }

void CQVTabCtrlBase::PlaceItem(CQVItemBase* item, const CRect& slot, CQVItemBase* skip, bool animate) {
  if (item->IsDraged() || slot == item->GetFinalRect()) return;
  if (item == pressed_) {
    item->MoveTo(slot, kGlideMs);
    pressed_ = nullptr;
  } else if (item != skip && animate && animation_ && !item->GetWindowRect().IsRectEmpty()) {
    item->MoveTo(GetMoveNode(item->GetFinalRect(), slot, GetWindowRect()), kGlideMs);
  } else {
    item->StopMove();
    item->Move(&slot);
  }
}

int CQVTabCtrlBase::UpdateTabRect(CQVItemBase* from, CQVItemBase* to, CQVItemBase* skip, bool animate) {
  const CRect rc = GetWindowRect();
  if (rc.Width() <= 0 || rc.Height() <= 0) return row_count_;
  if (more_button_) return UpdateTabRectWithMore(skip, animate);
  const int ih = ItemHeightPx();
  int usable = rc.Height() / std::max(1, ih + row_spacing_) + 1;
  if (max_rows_ > 0 && max_rows_ < usable) usable = max_rows_;

  int row = 1;
  int x = 0;
  int y = rc.top;
  // Starting after the head, carry on from where the tab before `from`
  // ends; a tab being dragged is not in its slot, so then start over.
  if (from && from != head_) {
    const CQVItemBase* prev = from->GetPrev();
    const CRect slot = prev ? prev->GetFinalRect() : CRect();
    if (!prev || prev->IsDraged() || slot.IsRectEmpty()) {
      from = head_;
    } else {
      x = slot.right - rc.left + item_gap_;
      y = slot.top;
      row = 1 + std::max(0, y - rc.top) / std::max(1, ih + row_spacing_);
    }
  }
  bool overflow = false;
  bool past_to = false;
  for (CQVItemBase* item = from; item; item = item->GetNext()) {
    const int w = ItemWidthPx(item);
    if (!overflow && x + w > rc.Width() && x > 0) {
      if (row < usable) {
        x = 0;
        y = rc.top + (ih + row_spacing_) * row;
        ++row;
      } else {
        // The last row runs on beyond the right edge.
        overflow = true;
      }
    }
    const CRect slot(rc.left + x, y, rc.left + x + w, y + ih);
    // Past `to`, a tab already in its slot means every later one is in its
    // own too: the places before were laid out from the same widths.
    if (past_to && slot == item->GetFinalRect() && !item->IsDraged()) return row_count_;
    PlaceItem(item, slot, skip, animate);
    x += w + item_gap_;
    if (item == to) past_to = true;
  }
  row_count_ = row;
  return row;
}

CSize CQVTabCtrlBase::GetDesiredSize(int width, int height) {
  CSize size = SWindow::GetDesiredSize(width, height);
  int total = 0;
  int count = 0;
  GetAllItemWidthAndCount(total, count);
  if (!GetLayoutParam()->IsSpecifiedSize(Orientation::Horz) && !GetLayoutParam()->IsMatchParent(Orientation::Horz)) {
    size.cx = total + item_gap_ * std::max(0, count - 1);
  }
  if (!GetLayoutParam()->IsSpecifiedSize(Orientation::Vert) && !GetLayoutParam()->IsMatchParent(Orientation::Vert)) {
    size.cy = row_count_ * ItemHeightPx() + (row_count_ - 1) * row_spacing_;
  }
  return size;
}

// ---- reports from the items ---------------------------------------------------------------

void CQVTabCtrlBase::OnItemWidthChanged(CQVItemBase* item) {
  (void)item;
  UpdateAllTabRect();
}

void CQVTabCtrlBase::OnItemLButtonDown(CQVItemBase* item, UINT flags, CPoint pt) {
  (void)flags;
  (void)pt;
  // A closing tab is on its way out and takes no presses.
  if (!IsTab(item) || !item->IsEnable() || item->IsHiding()) return;
  SetCurSel(item, true);
  pressed_ = item;
}

void CQVTabCtrlBase::OnItemLButtonUp(CQVItemBase* item, UINT flags, CPoint pt) {
  (void)flags;
  (void)pt;
  if (!IsTab(item)) return;
  UpdateAllTabRect();
  ResetSwitchState();
}

void CQVTabCtrlBase::OnItemRButtonDown(CQVItemBase* item, UINT flags, CPoint pt) {
  (void)item;
  (void)flags;
  (void)pt;
}

void CQVTabCtrlBase::OnItemRButtonUp(CQVItemBase* item, UINT flags, CPoint pt) {
  (void)flags;
  if (!IsTab(item)) return;
  EventQVTabItemClickRButton evt(this);
  evt.x = pt.x;
  evt.y = pt.y;
  evt.nId = item->GetItemId();
  FireEvent(evt);
}

void CQVTabCtrlBase::OnItemMouseHover(CQVItemBase* item, UINT flags, CPoint pt) {
  (void)flags;
  (void)pt;
  if (!IsTab(item)) return;
  EventQVTabItemHover evt(this);
  evt.nId = item->GetItemId();
  FireEvent(evt);
}

void CQVTabCtrlBase::OnItemMouseLeave(CQVItemBase* item) {
  if (!IsTab(item)) return;
  EventQVTabItemLeave evt(this);
  evt.nId = item->GetItemId();
  FireEvent(evt);
}

void CQVTabCtrlBase::ResetSwitchState() {
  last_switch_dragged_ = nullptr;
  last_switch_other_ = nullptr;
  last_switch_rect_.SetRectEmpty();
  last_switch_point_ = 0;
  switch_attempts_ = 0;
}

bool CQVTabCtrlBase::NeedSwitch(CPoint centre, CQVItemBase* dragged, CQVItemBase* other) const {
  CRect rc = other->GetFinalRect();
  rc.right += item_gap_;
  if (rc.PtInRect(centre)) return true;
  CQVItemBase* next = other->GetNext();
  if (next == dragged) next = dragged->GetNext();
  // Only a tab standing after the dragged one is "last": the dragged tail's
  // own predecessor must not claim the space the dragged tab sits in.
  const bool last = !IsTab(next) && QVItemListNodeBase<CQVItemBase>::ListIsBehind(other, dragged);
  if (last && ((centre.x >= rc.right && centre.y >= rc.top) || centre.y >= rc.bottom)) return true;
  // The gap between the neighbour and this item counts as this item's;
  // when the neighbour is the dragged item, that space is its own slot.
  CQVItemBase* prev = other->GetPrev();
  if (prev && prev != dragged) {
    const CRect p = prev->GetFinalRect();
    if (p.top == rc.top && centre.x >= p.right && centre.x < rc.left && centre.y >= rc.top &&
        centre.y < rc.bottom) {
      return true;
    }
  }
  return false;
}

bool CQVTabCtrlBase::AllowSwitch(CQVItemBase* dragged, CQVItemBase* other, CPoint centre) {
  ++switch_attempts_;
  if (dragged != last_switch_dragged_ || other != last_switch_other_) return true;
  // The same pair again: a mouse resting near the last swap point swaps
  // nothing, and beyond the band only the swap that undoes the last one is
  // allowed (back to the left past a tab now in front, or back to the right
  // past a tab now behind).
  const int d = centre.x - last_switch_point_;
  if (std::abs(d) <= ZPixel(kSwitchBandPx)) return false;
  if (d < 0) return other->GetNext() == dragged;
  return dragged->GetNext() == other;
}

CQVItemBase* CQVTabCtrlBase::FindSwitchTarget(CQVItemBase* dragged, CPoint centre, bool* in_front) const {
  // Slots never overlap, so the centre stands over one tab at most, and a
  // drag step nearly always reaches a neighbour: look outwards from the
  // dragged tab. Without the "more" button the slots run in reading order,
  // so a side whose next slot lies beyond the centre has no match further
  // on.
  const bool reading_order = !more_button_;
  CQVItemBase* left = dragged->GetPrev();
  CQVItemBase* right = dragged->GetNext();
  while (left || right) {
    if (left) {
      if (NeedSwitch(centre, dragged, left)) {
        // The gap before a tab is also the one behind the tab in front of
        // it, and that one comes first.
        while (IsTab(left->GetPrev()) && NeedSwitch(centre, dragged, left->GetPrev())) left = left->GetPrev();
        *in_front = true;
        return left;
      }
      const CRect rc = left->GetFinalRect();
      const bool centre_after = centre.y >= rc.bottom || (centre.y >= rc.top && centre.x >= rc.left);
      left = reading_order && centre_after ? nullptr : left->GetPrev();
    }
    if (right) {
      if (NeedSwitch(centre, dragged, right)) {
        *in_front = false;
        return right;
      }
      const CRect rc = right->GetFinalRect();
      const bool centre_before = centre.y < rc.top || (centre.y < rc.bottom && centre.x < rc.right);
      right = reading_order && centre_before ? nullptr : right->GetNext();
    }
  }
  return nullptr;
}

void CQVTabCtrlBase::OnItemDragMove(CQVItemBase* item, CPoint pt) {
  (void)pt;
  // A removed tab has left the list; its own links may lead to freed tabs.
  if (!IsTab(item) || item->IsRemoved()) return;
  const CPoint centre = item->GetWindowRect().CenterPoint();
  bool in_front = false;
  CQVItemBase* other = FindSwitchTarget(item, centre, &in_front);
  if (!other || !AllowSwitch(item, other, centre)) return;
  if (item != last_switch_dragged_ || other != last_switch_other_) {
    last_switch_dragged_ = item;
    last_switch_other_ = other;
    switch_attempts_ = 0;
  }
  last_switch_point_ = centre.x;
  last_switch_rect_ = other->GetFinalRect();
  // Only the tabs between the old and the new place move.
  using List = QVItemListNodeBase<CQVItemBase>;
  CQVItemBase* first = in_front ? item : item->GetNext();
  CQVItemBase* last = in_front ? item->GetPrev() : item;
  List::ListMoveLinked(head_, item, in_front ? other->GetPrev() : other);
  UpdateTabRect(first, last, nullptr, true);
}

void CQVTabCtrlBase::OnItemMoveToComplete(CQVItemBase* item) { (void)item; }

void CQVTabCtrlBase::OnItemShowComplete(CQVItemBase* item) { (void)item; }

void CQVTabCtrlBase::OnItemHideComplete(CQVItemBase* item) {
  // Only removed tabs are destroyed: one still in the list stays, hidden.
  if (!IsTab(item) || !item->IsRemoved() || QVItemListNodeBase<CQVItemBase>::ListContains(head_, item)) return;
  DestroyChild(item);
  UpdateChildrenPosition();
  UpdateAllTabRect();
}

void CQVTabCtrlBase::OnItemEnableChanged(CQVItemBase* item, bool enabled) {
  (void)item;
  (void)enabled;
}

CRect CQVTabCtrlBase::OnItemGetContainerRect() { return GetWindowRect(); }

}  // namespace QVStandardCtrls
