#include "tabs/item_base.h"

#include <algorithm>

#include "soui/sapp.h"

namespace QVStandardCtrls {

using namespace SOUI;

namespace {

CRect Lerp(const CRect& a, const CRect& b, int progress) {
  auto mix = [progress](int from, int to) { return from + (to - from) * progress / 1000; };
  return CRect(mix(a.left, b.left), mix(a.top, b.top), mix(a.right, b.right), mix(a.bottom, b.bottom));
}

}  // namespace

CQVItemBase::CQVItemBase(IQVItemContainer* container) : container_(container) {
  move_anim_.SetCallback([this](int p) { OnAnimatorStateMove(p); });
  show_anim_.SetCallback([this](int p) { OnAnimatorStateShow(p); });
  // Glides ease out like a browser's tabs settling; fades are linear.
  move_anim_.SetInterpolator(CreateInterpolator(L"Decelerate"));
}

CQVItemBase::~CQVItemBase() {
  // No reports from a dying item.
  move_anim_.SetCallback(nullptr);
  show_anim_.SetCallback(nullptr);
}

BOOL CQVItemBase::InitFromXml(pugi::xml_node node) {
  // A node of the template already held (InitFromTemplate) is not copied.
  if (!item_xml_ || node.root() != item_xml_->root()) {
    auto copy = std::make_shared<pugi::xml_document>();
    if (node) copy->append_copy(node);
    item_xml_ = std::move(copy);
  }
  return SWindow::InitFromXml(node);
}

BOOL CQVItemBase::InitFromTemplate(std::shared_ptr<const pugi::xml_document> tmpl) {
  if (!tmpl) return InitFromXml(pugi::xml_node());
  item_xml_ = std::move(tmpl);
  return InitFromXml(item_xml_->first_child());
}

const pugi::xml_document& CQVItemBase::GetItemXml() const {
  static const pugi::xml_document empty;
  return item_xml_ ? *item_xml_ : empty;
}

HRESULT CQVItemBase::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVItemBase> kAttrs[] = {
      {L"createAnimator", &CQVItemBase::OnAttrCreateAnimator},
      {L"enable", &CQVItemBase::OnAttrEnable},
      {L"itemid", &CQVItemBase::OnAttrItemId},
  };
  // Every other name is the toolkit window's.
  return QVDispatchAttribute<CQVItemBase, SWindow>(this, kAttrs, nullptr, name, value, loading);
}

HRESULT CQVItemBase::OnAttrCreateAnimator(const SStringW& value, BOOL loading) {
  (void)loading;
  create_animator_ = QVParseBool(value);
  return S_OK;
}

HRESULT CQVItemBase::OnAttrEnable(const SStringW& value, BOOL loading) {
  (void)loading;
  // The window itself stays enabled so that it still reports input; the
  // container refuses a disabled item's presses.
  const bool enable = QVParseBool(value);
  if (enable == enabled_) return S_OK;
  enabled_ = enable;
  OnStateChanged(enable ? RestingState() : kQVItemDisabled, 0);
  if (container_) container_->OnItemEnableChanged(this, enable);
  return S_OK;
}

HRESULT CQVItemBase::OnAttrItemId(const SStringW& value, BOOL loading) {
  (void)loading;
  int id = 0;
  if (!StrToIntExW(value.c_str(), STIF_SUPPORT_HEX, &id)) return E_FAIL;
  item_id_ = id;
  return S_OK;
}

void CQVItemBase::SetAttrWithChildren(const SStringW& name, const SStringW& value, BOOL loading) {
  SetAttribute(name, value, loading);
  SetChildrenAttr(this, name, value, loading);
}

void CQVItemBase::SetChildrenAttr(SWindow* parent, const SStringW& name, const SStringW& value, BOOL loading) {
  for (SWindow* c = parent->GetWindow(GSW_FIRSTCHILD); c; c = c->GetWindow(GSW_NEXTSIBLING)) {
    c->SetAttribute(name, value, loading);
    SetChildrenAttr(c, name, value, loading);
  }
}

QVItemState CQVItemBase::RestingState() const {
  if (!enabled_) return kQVItemDisabled;
  return selected_ ? kQVItemSelected : kQVItemNormal;
}

void CQVItemBase::SetSelected(bool selected) {
  selected_ = selected;
  OnStateChanged(selected ? kQVItemSelected : kQVItemNormal, 0);
}

void CQVItemBase::OnStateChanged(QVItemState state, int reserved) {
  (void)state;
  (void)reserved;
}

void CQVItemBase::UpdateWidth(int hint) { (void)hint; }

// ---- glides ------------------------------------------------------------------

CRect CQVItemBase::GetFinalRect() const {
  if (!moving_) return GetWindowRect();
  if (move_queue_.empty()) return move_to_;
  return move_queue_.back().to;
}

void CQVItemBase::AttachAnimators() {
  // The host may change between creation and the first animation.
  move_anim_.SetTimelineManager(GetContainer());
  show_anim_.SetTimelineManager(GetContainer());
}

void CQVItemBase::MoveWithAnimator(const CRect& from, const CRect& to, UINT duration_ms) {
  AttachAnimators();
  move_from_ = from;
  move_to_ = to;
  moving_ = true;
  move_start_ = SOUI::GetTickCount();
  move_duration_ = duration_ms;
  move_anim_.Start(duration_ms);
}

void CQVItemBase::MoveTo(const CRect& rc, UINT duration_ms) {
  if (move_duration_ != 0) StopMove();
  MoveWithAnimator(GetFinalRect(), rc, duration_ms);
}

void CQVItemBase::MoveTo(const std::vector<MoveNode>& path, UINT duration_ms) {
  if (path.empty()) return;
  if (move_duration_ != 0) StopMove();
  const UINT share = duration_ms / static_cast<UINT>(path.size());
  std::vector<MoveNode> legs = path;
  CRect at = GetFinalRect();
  for (MoveNode& leg : legs) {
    if (leg.from.IsRectEmpty()) leg.from = at;
    if (leg.duration == 0) leg.duration = share;
    at = leg.to;
  }
  const MoveNode first = legs.front();
  legs.erase(legs.begin());
  MoveWithAnimator(first.from, first.to, first.duration);
  // The first leg's report of progress 0 ran already; the queue is read
  // only at its end.
  if (moving_) move_queue_ = std::move(legs);
}

void CQVItemBase::StopMove() { move_anim_.Stop(); }

void CQVItemBase::OnAnimatorStateMove(int progress) {
  if (progress < 0) {
    // Stopped: stay where we stand.
    moving_ = false;
    move_duration_ = 0;
    move_queue_.clear();
    return;
  }
  const CRect now = Lerp(move_from_, move_to_, progress);
  Move(&now);
  if (progress < 1000) return;
  if (!move_queue_.empty()) {
    const MoveNode next = move_queue_.front();
    move_queue_.erase(move_queue_.begin());
    MoveWithAnimator(next.from, next.to, next.duration);
    return;
  }
  moving_ = false;
  move_duration_ = 0;
  if (container_) container_->OnItemMoveToComplete(this);
}

// ---- fades -------------------------------------------------------------------

void CQVItemBase::ShowWithAnimator(int duration_ms) {
  show_anim_.Stop();
  AttachAnimators();
  SetVisible(TRUE, TRUE);
  alpha_from_ = 0;
  alpha_to_ = 255;
  show_start_ = SOUI::GetTickCount();
  show_duration_ = static_cast<UINT>(std::max(duration_ms, 0));
  show_anim_.Start(show_duration_);
}

void CQVItemBase::HideWithAnimator(int duration_ms) {
  show_anim_.Stop();
  AttachAnimators();
  // Visible first, so that the fade can be seen.
  SetVisible(TRUE, TRUE);
  alpha_from_ = 255;
  alpha_to_ = 0;
  show_start_ = SOUI::GetTickCount();
  show_duration_ = static_cast<UINT>(std::max(duration_ms, 0));
  show_anim_.Start(show_duration_);
}

namespace {
// The fade is the item's own doing, not a page restyling its children: each
// descendant takes the opacity through the toolkit, past the library
// controls' attribute filters (a red dot admits no "alpha" from a page).
void SetOpacityWithChildren(SWindow* w, const SStringW& alpha) {
  w->SWindow::SetAttribute(L"alpha", alpha, FALSE);
  for (SWindow* c = w->GetWindow(GSW_FIRSTCHILD); c; c = c->GetWindow(GSW_NEXTSIBLING)) {
    SetOpacityWithChildren(c, alpha);
  }
}
}  // namespace

void CQVItemBase::OnAnimatorStateShow(int progress) {
  if (progress < 0) {
    show_duration_ = 0;
    return;
  }
  const int alpha = alpha_from_ + (alpha_to_ - alpha_from_) * progress / 1000;
  SStringW text;
  text.Format(L"%d", alpha);
  SetOpacityWithChildren(this, text);
  if (progress < 1000) return;
  show_duration_ = 0;
  if (alpha_to_ == 0) {
    SetVisible(FALSE, TRUE);
    // The container may destroy the item here: nothing after this call.
    if (container_) container_->OnItemHideComplete(this);
  } else if (container_) {
    container_->OnItemShowComplete(this);
  }
}

void CQVItemBase::OnNextFrame() {
  move_anim_.Update();
  show_anim_.Update();
}

// ---- input -------------------------------------------------------------------

void CQVItemBase::MarkRemoved() {
  removed_ = true;
  lbutton_down_ = false;
  msg_transparent_ = TRUE;
  // The capture may sit on the item or on one of its buttons.
  if (ISwndContainer* host = GetContainer()) {
    for (SWindow* w = host->GetCapture(); w; w = w->GetParent()) {
      if (w == this) {
        host->ReleaseCapture(host->GetCapture());
        break;
      }
    }
  }
}

BOOL CQVItemBase::ProcessSwndMessage(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
  return SWindow::ProcessSwndMessage(msg, wp, lp, result);
}

void CQVItemBase::OnLButtonDown(UINT flags, CPoint pt) {
  if (moving_ || removed_) return;
  lbutton_down_ = true;
  SWindow::OnLButtonDown(flags, pt);
  last_pt_ = pt;
  if (IQVItemContainer* c = InputReceiver()) c->OnItemLButtonDown(this, flags, pt);
}

void CQVItemBase::OnLButtonUp(UINT flags, CPoint pt) {
  SWindow::OnLButtonUp(flags, pt);
  lbutton_down_ = false;
  if (IQVItemContainer* c = InputReceiver()) c->OnItemLButtonUp(this, flags, pt);
}

void CQVItemBase::OnRButtonDown(UINT flags, CPoint pt) {
  SWindow::OnRButtonDown(flags, pt);
  if (IQVItemContainer* c = InputReceiver()) c->OnItemRButtonDown(this, flags, pt);
}

void CQVItemBase::OnRButtonUp(UINT flags, CPoint pt) {
  SWindow::OnRButtonUp(flags, pt);
  if (IQVItemContainer* c = InputReceiver()) c->OnItemRButtonUp(this, flags, pt);
}

void CQVItemBase::OnMouseMove(UINT flags, CPoint pt) {
  // A press that began during a glide was ignored, so lbutton_down_ guards
  // against dragging an item the user never grabbed.
  if (!(flags & MK_LBUTTON) || !lbutton_down_ || removed_ || drag_type_ == kQVDragNone || moving_) return;
  BringWindowToTop();
  CRect rc = GetFinalRect();
  const int dx = drag_type_ == kQVDragVert ? 0 : pt.x - last_pt_.x;
  const int dy = drag_type_ == kQVDragHorz ? 0 : pt.y - last_pt_.y;
  rc.OffsetRect(dx, dy);
  if (container_) {
    // Left/top first, then right/bottom: an item wider than the container
    // keeps its right edge inside.
    const CRect bound = container_->OnItemGetContainerRect();
    if (rc.left < bound.left) rc.OffsetRect(bound.left - rc.left, 0);
    if (rc.right > bound.right) rc.OffsetRect(bound.right - rc.right, 0);
    if (rc.top < bound.top) rc.OffsetRect(0, bound.top - rc.top);
    if (rc.bottom > bound.bottom) rc.OffsetRect(0, bound.bottom - rc.bottom);
  }
  Move(&rc);
  last_pt_ = pt;
  if (container_) container_->OnItemDragMove(this, pt);
}

void CQVItemBase::OnMouseHover(UINT flags, CPoint pt) {
  SWindow::OnMouseHover(flags, pt);
  OnStateChanged(kQVItemHover, 0);
  if (IQVItemContainer* c = InputReceiver()) c->OnItemMouseHover(this, flags, pt);
}

void CQVItemBase::OnMouseLeave() {
  SWindow::OnMouseLeave();
  // Back to the look it had before the hover, as a browser tab does.
  OnStateChanged(RestingState(), 0);
  if (IQVItemContainer* c = InputReceiver()) c->OnItemMouseLeave(this);
}

int CQVItemBase::OnCreate() {
  const int r = SWindow::OnCreate();
  AttachAnimators();
  return r;
}

void CQVItemBase::OnDestroy() {
  move_anim_.Stop();
  show_anim_.Stop();
  SWindow::OnDestroy();
}

void CQVItemBase::OnSetLanguage() {
  SWindow::OnSetLanguage();
  UpdateWidth(0);
}

}  // namespace QVStandardCtrls
