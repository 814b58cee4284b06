// The item of a tab strip: CQVItemBase ("qv_itembase"), a window that knows
// its container, can be dragged inside the container's rectangle, glides to
// new rectangles and fades in and out; and IQVItemContainer, what the item
// reports to. The item decides nothing about selection or order itself.
#pragma once

#include <pugixml.hpp>

#include <vector>

#include "framework/attr_dispatch.h"
#include "framework/ctrl_attr_base.h"
#include "soui/swnd.h"
#include "soui/timeline.h"
#include "tabs/item_list.h"

namespace QVStandardCtrls {

class CQVItemBase;

enum QVItemDragType { kQVDragFree = 0, kQVDragHorz = 1, kQVDragVert = 2, kQVDragNone = 3 };
enum QVItemState { kQVItemNormal = 0, kQVItemHover = 1, kQVItemSelected = 2, kQVItemDisabled = 3 };

// One leg of a glide. An empty `from` starts where the previous leg ended
// (or where the item stands); a zero duration takes an equal share of the
// duration given to MoveTo.
struct QVSTDCTRLS_API MoveNode {
  SOUI::CRect from;
  SOUI::CRect to;
  UINT duration = 0;
};

// Points are in the host's client coordinates; flags is the mouse key state.
class QVSTDCTRLS_API IQVItemContainer {
 public:
  virtual ~IQVItemContainer() = default;
  virtual void OnItemWidthChanged(CQVItemBase* item) = 0;
  virtual void OnItemLButtonUp(CQVItemBase* item, UINT flags, SOUI::CPoint pt) = 0;
  virtual void OnItemLButtonDown(CQVItemBase* item, UINT flags, SOUI::CPoint pt) = 0;
  virtual void OnItemRButtonDown(CQVItemBase* item, UINT flags, SOUI::CPoint pt) = 0;
  virtual void OnItemRButtonUp(CQVItemBase* item, UINT flags, SOUI::CPoint pt) = 0;
  virtual void OnItemMouseHover(CQVItemBase* item, UINT flags, SOUI::CPoint pt) = 0;
  virtual void OnItemMouseLeave(CQVItemBase* item) = 0;
  virtual void OnItemDragMove(CQVItemBase* item, SOUI::CPoint pt) = 0;
  virtual void OnItemMoveToComplete(CQVItemBase* item) = 0;
  virtual void OnItemShowComplete(CQVItemBase* item) = 0;
  virtual void OnItemHideComplete(CQVItemBase* item) = 0;
  virtual void OnItemEnableChanged(CQVItemBase* item, bool enabled) = 0;
  virtual SOUI::CRect OnItemGetContainerRect() = 0;
  // Messages only the container understands; 0 = not handled.
  virtual BOOL OnItemUserMessage(CQVItemBase* item, UINT msg, WPARAM wp, LPARAM lp) {
    (void)item;
    (void)msg;
    (void)wp;
    (void)lp;
    return 0;
  }
};

// The two animators register themselves on the host's timeline while they
// run (the host is the ITimelineHandlersMgr), so an idle item costs no frame.
// OnNextFrame advances them by hand for a caller that ticks the item itself.
class QVSTDCTRLS_API CQVItemBase : public SOUI::SWindow,
                                   public SOUI::ITimelineHandler,
                                   public QVItemListNodeBase<CQVItemBase>,
                                   public virtual IQVCtrlAttrBase {
  SOUI_CLASS_NAME(CQVItemBase, SOUI::SWindow, L"qv_itembase")
 public:
  explicit CQVItemBase(IQVItemContainer* container = nullptr);
  ~CQVItemBase() override;

  BOOL InitFromXml(pugi::xml_node node) override;
  // Builds from the first element of a template that several items share
  // (a strip's item template), keeping a reference rather than a copy.
  BOOL InitFromTemplate(std::shared_ptr<const pugi::xml_document> tmpl);
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  // On the item, then on every descendant.
  void SetAttrWithChildren(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading);
  // The template the item was built from.
  const pugi::xml_document& GetItemXml() const;

  IQVItemContainer* GetItemContainer() const { return container_; }
  void SetItemId(int id) { item_id_ = id; }
  int GetItemId() const { return item_id_; }
  void SetItemType(int type) { item_type_ = type; }
  int GetItemType() const { return item_type_; }
  void SetDragType(QVItemDragType type) { drag_type_ = type; }
  QVItemDragType GetDragType() const { return drag_type_; }
  bool IsDragable() const { return drag_type_ != kQVDragNone; }
  bool IsDraged() const { return lbutton_down_; }
  void SetSelected(bool selected);
  bool IsSelected() const { return selected_; }
  bool IsEnable() const { return enabled_; }
  bool IsCreateAnimator() const { return create_animator_; }
  bool IsMoving() const { return moving_; }

  // The container took the item out of its list; it stays only to fade
  // out. From here on it is nobody's target: input passes through it to
  // what lies beneath, a press or drag in progress ends and gives up the
  // capture, and only its glide and fade still report to the container, so
  // that the container can destroy it when the fade ends.
  void MarkRemoved();
  bool IsRemoved() const { return removed_; }

  int GetWidthPix() const { return GetWindowRect().Width(); }
  int GetHeightPix() const { return GetWindowRect().Height(); }

  // Where the item ends when every glide is done.
  SOUI::CRect GetFinalRect() const;
  // Glides from GetFinalRect() (after stopping a running glide) to rc.
  void MoveTo(const SOUI::CRect& rc, UINT duration_ms);
  // Glides through the legs one after another.
  void MoveTo(const std::vector<MoveNode>& path, UINT duration_ms);
  void StopMove();

  void ShowWithAnimator(int duration_ms);
  void HideWithAnimator(int duration_ms);
  bool IsShowing() const { return show_anim_.IsBusy() && alpha_to_ != 0; }
  bool IsHiding() const { return show_anim_.IsBusy() && alpha_to_ == 0; }

  void OnAnimatorStateMove(int progress);
  void OnAnimatorStateShow(int progress);
  void OnNextFrame() override;

  BOOL ProcessSwndMessage(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;
  void OnLButtonDown(UINT flags, SOUI::CPoint pt) override;
  void OnLButtonUp(UINT flags, SOUI::CPoint pt) override;
  void OnRButtonDown(UINT flags, SOUI::CPoint pt) override;
  void OnRButtonUp(UINT flags, SOUI::CPoint pt) override;
  void OnMouseMove(UINT flags, SOUI::CPoint pt) override;
  void OnMouseHover(UINT flags, SOUI::CPoint pt) override;
  void OnMouseLeave() override;
  int OnCreate() override;
  void OnDestroy() override;
  void OnSetLanguage() override;

 protected:
  // The variants restyle their children per state here.
  virtual void OnStateChanged(QVItemState state, int reserved);
  // The variants recompute their width here; the argument is a hint (0 when
  // the item has none) and the base does nothing.
  virtual void UpdateWidth(int hint);
  void SetChildrenAttr(SOUI::SWindow* parent, const SOUI::SStringW& name, const SOUI::SStringW& value,
                       BOOL loading);
  void MoveWithAnimator(const SOUI::CRect& from, const SOUI::CRect& to, UINT duration_ms);
  // The state the item shows when nothing transient applies.
  QVItemState RestingState() const;
  // Where input is reported: the container, or nobody once removed.
  IQVItemContainer* InputReceiver() const { return removed_ ? nullptr : container_; }

  HRESULT OnAttrCreateAnimator(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrEnable(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrItemId(const SOUI::SStringW& value, BOOL loading);

  std::shared_ptr<const pugi::xml_document> item_xml_;
  QVItemDragType drag_type_ = kQVDragFree;

  SOUI::SAnimator move_anim_;
  uint32_t move_start_ = 0;
  UINT move_duration_ = 0;
  SOUI::CRect move_from_;
  SOUI::CRect move_to_;
  bool moving_ = false;
  std::vector<MoveNode> move_queue_;

  SOUI::SAnimator show_anim_;
  uint32_t show_start_ = 0;
  UINT show_duration_ = 0;
  int alpha_from_ = 0;
  int alpha_to_ = 0;

  bool create_animator_ = true;
  int item_id_ = -1;
  int item_type_ = -1;
  SOUI::CPoint last_pt_;
  bool lbutton_down_ = false;
  bool selected_ = false;
  bool enabled_ = true;
  bool removed_ = false;
  IQVItemContainer* container_;

 private:
  void AttachAnimators();
};

}  // namespace QVStandardCtrls
