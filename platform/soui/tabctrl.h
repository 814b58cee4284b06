// STabCtrl ("tabctrl"): pages with an optional strip of tab headers.
//
// Only <page> children are pages (case-sensitive); each fills the page area
// (the client area less padding less the strip). SetCurSel fires the
// cancellable EventTabSelChanging, then EventTabSelChanged. With
// animateSteps > 0 the new page slides in over that many frames (10 ms each)
// through the interpolator (default "Linear").
//
//   tabWidth/tabHeight/tabSize  header size (default: the tabSkin's size)
//   tabPos        offset of the first header along the strip
//   tabInterSize  gap between headers
//   tabAlign      top (default), left, right, bottom
//   tabSkin       header skin: state 0 normal, 1 hover, 2 selected
//   curSel        initial page (default 0)
#pragma once

#include <vector>

#include "soui/swnd.h"

namespace SOUI {

class EventTabSelChanging : public EventArgs {
  SOUI_EVENT_ID(EVT_TAB_SELCHANGING, L"on_tab_sel_changing")
 public:
  using EventArgs::EventArgs;
  UINT uOldSel = 0;
  UINT uNewSel = 0;
  bool bCancel = false;
};

class EventTabSelChanged : public EventArgs {
  SOUI_EVENT_ID(EVT_TAB_SELCHANGED, L"on_tab_sel_changed")
 public:
  using EventArgs::EventArgs;
  UINT uOldSel = 0;
  UINT uNewSel = 0;
};

// A page of a tabctrl: a plain window with a title.
class STabPage : public SWindow {
  SOUI_CLASS_NAME(STabPage, SWindow, L"page")
 public:
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;
  const SStringW& GetTitle() const { return title_; }
  void SetTitle(const SStringW& title) { title_ = title; }

 private:
  SStringW title_;
};

class STabCtrl : public SWindow, public ITimelineHandler {
  SOUI_CLASS_NAME(STabCtrl, SWindow, L"tabctrl")
 public:
  STabCtrl();
  ~STabCtrl() override;

  int GetItemCount() const { return static_cast<int>(pages_.size()); }
  STabPage* GetItem(int index) const;
  int GetCurSel() const { return cur_sel_; }
  // False when out of range, unchanged, or vetoed by a handler.
  BOOL SetCurSel(int index);
  // Inserts a page built from XML (a <page> element) at index (-1: end).
  // Returns its index, or -1 when the XML is not a page.
  int InsertItem(const SStringW& page_xml, int index = -1);
  // Removing the selected page selects the next one (the previous one when
  // it was the last), as a browser's tab strip does; no events are fired.
  BOOL RemoveItem(int index);
  bool IsAnimating() const { return anim_step_ >= 0; }

  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;
  BOOL CreateChildren(pugi::xml_node node) override;
  void UpdateChildrenPosition() override;
  void OnPaint(IRenderTarget* rt) override;
  void OnLButtonDown(UINT flags, CPoint pt) override;
  void OnMouseMove(UINT flags, CPoint pt) override;
  void OnMouseLeave() override;
  void OnKeyDown(UINT vk, UINT repeat, UINT flags) override;
  void OnNextFrame() override;
  void OnDestroy() override;

  // The header rectangle of a page, and the area pages fill.
  CRect GetHeaderRect(int index) const;
  CRect GetPageArea() const;

 protected:
  int OnCreate() override;

 private:
  enum class Align { Top, Left, Right, Bottom };
  CSize HeaderSize() const;
  int HitHeader(CPoint pt) const;
  void StopAnimation();
  void ShowOnly(int index);

  std::vector<STabPage*> pages_;
  int cur_sel_ = -1;
  int initial_sel_ = 0;
  int hover_ = -1;
  SLayoutSize tab_width_, tab_height_, tab_pos_, tab_inter_;
  bool width_set_ = false, height_set_ = false;
  Align align_ = Align::Top;
  ThemedSkin tab_skin_;
  int animate_steps_ = 0;
  IInterpolatorPtr interpolator_;
  int anim_step_ = -1;  // -1: not animating
  int anim_from_ = -1;
  bool registered_ = false;
};

}  // namespace SOUI
