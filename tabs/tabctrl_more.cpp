// CQVTabCtrlBase's "more" button: the last row's scrolling, the hidden tabs
// and their menu, the button's paint and clicks.
#include <algorithm>

#include "popups/menu.h"
#include "qvhost/zoom.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"
#include "tabs/tabctrl_base.h"

namespace QVStandardCtrls {

using namespace SOUI;

HRESULT CQVTabCtrlBase::OnAttrMoreButton(const SStringW& value, BOOL loading) {
  (void)loading;
  const bool on = QVParseBool(value);
  if (on == more_button_) return S_OK;
  more_button_ = on;
  first_shown_ = 0;
  more_shown_ = false;
  UpdateTabRect(head_, nullptr, nullptr, false);
  Invalidate();
  return S_OK;
}

// The rows wrap as without the button; only the last row differs. When its
// tabs do not fit, the button takes the row's right end and the row shows
// the whole tabs that fit from first_shown_ on; the others stand outside
// the strip, the earlier ones to the left and the later ones to the right,
// so that no hidden tab can be clicked or show under the button:
//
//   |[t3][t4][t5]   (v)|      t0..t2 left of the strip, t6.. right of it
int CQVTabCtrlBase::UpdateTabRectWithMore(CQVItemBase* skip, bool animate) {
  const CRect rc = GetWindowRect();
  const int ih = ItemHeightPx();
  int usable = rc.Height() / std::max(1, ih + row_spacing_) + 1;
  if (max_rows_ > 0 && max_rows_ < usable) usable = max_rows_;
  struct Slot {
    CQVItemBase* item;
    int w;
    CRect rc;
  };
  std::vector<Slot> slots;
  size_t last_row = 0;
  int row = 1, x = 0, y = rc.top;
  for (CQVItemBase* item = head_; item; item = item->GetNext()) {
    const int w = ItemWidthPx(item);
    if (x + w > rc.Width() && x > 0 && row < usable) {
      x = 0;
      y = rc.top + (ih + row_spacing_) * row;
      ++row;
      last_row = slots.size();
    }
    slots.push_back(Slot{item, w, CRect(rc.left + x, y, rc.left + x + w, y + ih)});
    x += w + item_gap_;
  }
  row_count_ = row;
  const int n = static_cast<int>(slots.size() - last_row);
  const bool overflow = n > 0 && slots.back().rc.right > rc.right;
  if (overflow != more_shown_) Invalidate();
  more_shown_ = overflow;
  if (!overflow) {
    first_shown_ = 0;
  } else {
    const int avail = rc.Width() - ZPixel(kMoreButtonW);
    more_rect_ = CRect(rc.right - ZPixel(kMoreButtonW), y, rc.right, y + ih);
    Slot* lr = slots.data() + last_row;
    first_shown_ = std::clamp(first_shown_, 0, n - 1);
    // No empty room at the end while earlier tabs are out.
    for (int tail = 0, i = n - 1; i >= 0; --i) {
      tail += lr[i].w + (i < n - 1 ? item_gap_ : 0);
      if (tail > avail) break;
      if (i < first_shown_) first_shown_ = i;
    }
    int at = 0;
    int i = first_shown_;
    for (; i < n && (at + lr[i].w <= avail || i == first_shown_); ++i) {
      lr[i].rc = CRect(rc.left + at, y, rc.left + at + lr[i].w, y + ih);
      at += lr[i].w + item_gap_;
    }
    for (int right = rc.right + item_gap_; i < n; ++i) {
      lr[i].rc = CRect(right, y, right + lr[i].w, y + ih);
      right += lr[i].w + item_gap_;
    }
    for (int left = rc.left - item_gap_, j = first_shown_ - 1; j >= 0; --j) {
      lr[j].rc = CRect(left - lr[j].w, y, left, y + ih);
      left -= lr[j].w + item_gap_;
    }
  }
  for (const Slot& sl : slots) PlaceItem(sl.item, sl.rc, skip, animate);
  return row;
}

std::vector<int> CQVTabCtrlBase::GetHiddenTabIds() const {
  std::vector<int> ids;
  if (!more_shown_) return ids;
  const CRect rc = GetWindowRect();
  for (CQVItemBase* it = head_; it; it = it->GetNext()) {
    const CRect r = it->GetFinalRect();
    if (IsTab(it) && (r.right <= rc.left || r.left >= more_rect_.left)) ids.push_back(it->GetItemId());
  }
  return ids;
}

bool CQVTabCtrlBase::EnsureTabVisible(int id) {
  CQVItemBase* item = GetTabObjById(id);
  if (!item) return false;
  if (!more_button_ || !more_shown_) return true;
  const CRect r = item->GetFinalRect();
  if (r.top != more_rect_.top) return true;  // not in the last row: always shown
  // The tab's place in the last row: the tabs sharing the row's top.
  int index = 0;
  for (CQVItemBase* it = head_; it && it != item; it = it->GetNext()) {
    if (it->GetFinalRect().top == r.top) ++index;
  }
  const int avail = GetWindowRect().Width() - ZPixel(kMoreButtonW);
  if (r.right <= GetWindowRect().left) {
    first_shown_ = index;  // out on the left: it becomes the first shown
  } else if (r.left >= more_rect_.left) {
    // Out on the right: the row moves on until it ends with this tab.
    int span = ItemWidthPx(item), first = index;
    for (CQVItemBase* it = item->GetPrev(); it && it->GetFinalRect().top == r.top; it = it->GetPrev()) {
      const int w = ItemWidthPx(it) + item_gap_;
      if (span + w > avail) break;
      span += w;
      --first;
    }
    first_shown_ = first;
  } else {
    return true;
  }
  UpdateTabRect(head_, nullptr, nullptr, animation_);
  Invalidate();
  return true;
}

int CQVTabCtrlBase::TrackMoreMenu() {
  const std::vector<int> hidden = GetHiddenTabIds();
  SHostWnd* host = GetContainer() ? HostFromHwnd(GetContainer()->GetHostHwnd()) : nullptr;
  if (hidden.empty() || !host) return -1;
  QVMenuItems rows;
  for (int id : hidden) {
    CQVItemBase* it = GetTabObjById(id);
    SStringW text = GetItemAttr(it, L"title");
    if (text.IsEmpty()) text = GetItemAttr(it, L"text");
    if (text.IsEmpty()) text = SStringW::Format2(L"Tab %d", id);
    // Menu ids start at 1: 0 is "nothing chosen".
    QVMenuAttr row = QVMenuAttr::Item(static_cast<UINT>(id) + 1, text);
    row.checked = it == cur_sel_;
    row.enabled = it->IsEnable();
    rows.push_back(row);
  }
  CRect anchor = more_rect_;
  anchor.OffsetRect(host->GetWindowRect().TopLeft());
  const UINT chosen = IQVMenu::TrackPopupMenu(host->m_hWnd, rows, anchor);
  // The strip may have lost the tab (or more) while the menu was open.
  CQVItemBase* item = chosen ? GetTabObjById(static_cast<int>(chosen) - 1) : nullptr;
  if (!item) return -1;
  SetCurSel(item, true);
  EnsureTabVisible(item->GetItemId());
  return item->GetItemId();
}

void CQVTabCtrlBase::OnPaint(IRenderTarget* rt) {
  SWindow::OnPaint(rt);
  if (!more_shown_) return;
  // A chevron pointing down, centred in the button.
  COLORREF color = RGBA(0x4E, 0x59, 0x69, 0xFF);
  SApplication::getSingleton().GetResProvider().ResolveColor(
      more_pressed_ ? L"@color\\style_skin_qv_tab\\text_selected" : L"@color\\style_skin_qv_tab\\text_default",
      &color);
  const CPoint c = more_rect_.CenterPoint();
  const int h = std::max(2, ZPixel(4));
  const POINT pts[] = {{c.x - h, c.y - h / 2}, {c.x, c.y + h / 2}, {c.x + h, c.y - h / 2}};
  IPenPtr old = rt->SelectPen(rt->CreatePen(PS_SOLID, color, std::max(1, ZPixel(3) / 2)));
  rt->DrawLines(pts, 3);
  rt->SelectPen(old);
}

void CQVTabCtrlBase::OnLButtonDown(UINT flags, CPoint pt) {
  SWindow::OnLButtonDown(flags, pt);
  more_pressed_ = more_shown_ && more_rect_.PtInRect(pt);
  if (more_pressed_) Invalidate();
}

void CQVTabCtrlBase::OnLButtonUp(UINT flags, CPoint pt) {
  SWindow::OnLButtonUp(flags, pt);
  const bool click = more_pressed_ && more_shown_ && more_rect_.PtInRect(pt);
  more_pressed_ = false;
  Invalidate();
  if (click) TrackMoreMenu();
}

}  // namespace QVStandardCtrls
