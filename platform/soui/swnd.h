// SWindow: the windowless widget every control derives from.
//
// Sections: container interface · style record · SWindow (tree, identity,
// attributes, state, layout, painting, input, events, timers).
//
// Windows live in a tree owned by a host (ISwndContainer). Rectangles are in
// the host's client coordinates. Input arrives through SwndProc, which calls
// the virtual On* handlers; events go to the window's own subscribers, then
// its owner, then the host (never up the parent chain).
#pragma once

#include <pugixml.hpp>

#include <functional>
#include <memory>
#include <vector>

#include "soui/events.h"
#include "soui/inline_text.h"
#include "soui/layout.h"
#include "soui/region.h"
#include "soui/render.h"
#include "soui/skin.h"
#include "soui/sobject.h"
#include "soui/themed.h"
#include "soui/timeline.h"

namespace SOUI {

class SWindow;
enum class StdAttr;

// What a host gives the windows of its tree.
class ISwndContainer : public ITimelineHandlersMgr {
 public:
  // The host's own event handler, reached after subscribers and owner.
  virtual BOOL OnFireEvent(EventArgs& evt) = 0;
  virtual HWND GetHostHwnd() const = 0;
  virtual int GetScale() const = 0;

  virtual SWindow* GetCapture() const = 0;
  virtual void SetCapture(SWindow* wnd) = 0;
  virtual void ReleaseCapture(SWindow* wnd) = 0;
  virtual SWindow* GetHover() const = 0;
  virtual SWindow* GetFocus() const = 0;
  virtual void SetFocus(SWindow* wnd) = 0;

  virtual void OnInvalidate(const CRect& rc) = 0;
  virtual void OnRelayoutRequested() = 0;

  // Window timers: OnTimer(id) every ms until killed or the window goes.
  virtual void SetSwndTimer(SWindow* wnd, int id, UINT ms) = 0;
  virtual void KillSwndTimer(SWindow* wnd, int id) = 0;
  // Called by a window being destroyed so that no pointer to it survives.
  virtual void OnSwndDestroyed(SWindow* wnd) = 0;
  // The text caret of a focused window moved to rc (host coordinates), so
  // that an input method can show its candidates beside it.
  virtual void OnCaretRect(SWindow* wnd, const CRect& rc) { (void)wnd; (void)rc; }
};

// What WM_IME_COMPOSITION's lParam points to.
struct ImeText {
  SStringW text;
  int cursor = 0;  // caret inside a composition, in characters
};

// Window state bits.
constexpr DWORD WndState_Normal = 0;
constexpr DWORD WndState_Hover = 1;
constexpr DWORD WndState_PushDown = 2;
constexpr DWORD WndState_Check = 4;
constexpr DWORD WndState_Invisible = 8;
constexpr DWORD WndState_Disable = 0x10;

// Order of children for GetWindow.
enum { GSW_FIRSTCHILD = 0, GSW_LASTCHILD, GSW_PREVSIBLING, GSW_NEXTSIBLING, GSW_PARENT, GSW_OWNER };

// Placement for InsertChild.
#define ICWND_FIRST (reinterpret_cast<SOUI::SWindow*>(0))
#define ICWND_LAST (reinterpret_cast<SOUI::SWindow*>(-1))

// Arrows, Page Up/Down, Home and End: the keys that scroll a view.
constexpr bool IsNavigationKey(UINT vk) {
  return vk == VK_UP || vk == VK_DOWN || vk == VK_LEFT || vk == VK_RIGHT || vk == VK_PRIOR || vk == VK_NEXT ||
         vk == VK_HOME || vk == VK_END;
}

// Visual attributes of a window (the toolkit's SwndStyle): per-state text
// colours and fonts, background and border colours, alignment, paddings,
// margin, alpha and cursor.
struct SwndStyle {
  enum Align { Left, Center, Right };
  enum VAlign { Top, Middle, Bottom };

  ThemedColor colorText[4];  // normal, hover, pushed, disabled
  ThemedFont font[4];
  ThemedColor colorBkgnd;
  ThemedColor colorBorder;
  Align align = Center;
  VAlign valign = Middle;
  bool dotted = false;        // end ellipsis
  UINT textMode = 0;          // explicit DT_* flags when non-zero
  SLayoutSize padding[4];     // left, top, right, bottom
  SLayoutSize margin[4];      // the non-client band
  BYTE alpha = 0xFF;
  SStringW cursor = L"arrow";

  // Handles the style's attributes; false for other names or bad values.
  bool SetAttribute(const SStringW& name, const SStringW& value);
  bool SetStdAttribute(StdAttr attr, const SStringW& value);
  // DT_* flags for the window's text.
  UINT GetTextAlign() const;
  CRect GetPadding(int scale) const;
  CRect GetMargin(int scale) const;
  // The state colour, falling back to normal when the state has none.
  COLORREF GetTextColor(int state) const;
  const ThemedFont& GetFont(int state) const;
  // Whether any state has a font / a text colour of its own.
  bool HasFont() const;
  bool HasTextColor() const;

  // The style of a window that sets nothing.
  static const SwndStyle& Default();
  // The shared style of classes whose text starts at the left (labels, check
  // boxes, links, edits), one per cursor shape. It lives as long as the
  // program: constructors keep the reference in a static of their own.
  static const SwndStyle& LeftAligned(const wchar_t* cursor);
};

class SWindow : public SObject {
 public:
  // ---- limits ---------------------------------------------------------------
  // Building, layout, measuring, painting, hit-testing and destruction walk
  // the tree recursively, a few frames per level: about 0.7 KB per level in
  // a debug build and 1.5 KB under AddressSanitizer, so the deepest tree
  // needs under 2 MB of an 8 MB stack in the worst build (the tests run it
  // on a 4 MB thread). No real layout comes near this depth. Windows deeper
  // than this are not created (one log line per build), and InsertChild
  // refuses a child that would go deeper. The host's root is depth 0.
  static constexpr int kMaxTreeDepth = 1000;
  // Includes expanding inside includes. An include already being expanded
  // (a cycle, including a layout that includes itself) is refused on its
  // own, whatever the depth.
  static constexpr int kMaxIncludeDepth = 32;
  // Attribute values from XML and window text are cut to this many
  // characters (one log line each): far beyond any label, yet small enough
  // to shape in a few milliseconds.
  static constexpr int kMaxAttrValueLength = 64 * 1024;
  static constexpr int kMaxWindowTextLength = 64 * 1024;

  static const wchar_t* GetClassName() { return L"window"; }
  static const wchar_t* BaseClassName() { return SObject::GetClassName(); }
  const wchar_t* GetObjectClass() const override { return GetClassName(); }
  BOOL IsClass(const wchar_t* name) const override;

  SWindow();
  ~SWindow() override;
  SWindow(const SWindow&) = delete;
  SWindow& operator=(const SWindow&) = delete;

  // ---- tree ----------------------------------------------------------------
  SWindow* GetParent() const { return parent_; }
  SWindow* GetWindow(int code) const;
  SWindow* GetRoot() const;
  UINT GetChildrenCount() const { return child_count_; }
  // Takes ownership. after: ICWND_FIRST, ICWND_LAST or a child of this window.
  // FALSE (logged, nothing changes, the caller keeps the child) when the
  // child's subtree would end deeper than kMaxTreeDepth.
  BOOL InsertChild(SWindow* child, SWindow* after = ICWND_LAST);
  // Number of ancestors: 0 for a window without a parent.
  int GetDepth() const { return depth_; }
  // Unlinks without destroying; the caller owns the child again.
  BOOL RemoveChild(SWindow* child);
  // Unlinks and destroys.
  BOOL DestroyChild(SWindow* child);
  // Destroys this window: removed from its parent (or its host) and freed.
  BOOL DestroyWindow();
  // Raises within the parent's children so it paints last (top of Z order).
  void BringWindowToTop();
  // Depth-first search of descendants; depth -1 is unlimited.
  SWindow* FindChildByName(const SStringW& name, int depth = -1) const;
  SWindow* FindChildByID(int id, int depth = -1) const;
  // Finds a descendant by name and checks its class; logs
  // "FindChildByName2 Failed, no window of class <tag> with name of <name>"
  // and returns null when it is missing or of another class.
  template <class T>
  T* FindChildByName2(const SStringW& name, int depth = -1) const {
    SWindow* w = FindChildByName(name, depth);
    if (w && w->IsClass(T::GetClassName())) return static_cast<T*>(w);
    LogChildNotFound(T::GetClassName(), name);
    return nullptr;
  }
  SWindow* GetOwner() const { return owner_; }
  void SetOwner(SWindow* owner) { owner_ = owner; }

  // The host; set when the window is in a host's tree.
  ISwndContainer* GetContainer() const { return container_; }
  void SetContainer(ISwndContainer* container);

  // ---- identity and text ----------------------------------------------------
  int GetID() const override { return id_; }
  void SetID(int id) { id_ = id; }
  SStringW GetName() const override { return name_; }
  const wchar_t* GetNamePtr() const override { return name_.c_str(); }
  void SetName(const SStringW& name) { name_ = name; }
  virtual SStringW GetWindowText(BOOL raw = FALSE) const;
  virtual void SetWindowText(const SStringW& text);
  SStringW GetToolTipText() const { return rare_ ? rare_->tip : SStringW(); }
  const SwndStyle& GetStyle() const { return *style_; }
  // Changes the style: change() edits a copy, and when it returns true the
  // window takes the copy (shared with every window whose style is the
  // same); false leaves the style as it was.
  bool EditStyle(const std::function<bool(SwndStyle&)>& change);
  // Sets one style attribute (colorText, font, padding, ...) the same way;
  // false, changing nothing, for another name or a value that does not parse.
  // Cheaper than a change function: a window repeating an edit another just
  // made takes the result without a copy.
  bool EditStyle(const SStringW& name, const SStringW& value);
  ISkinObj* GetBkgndSkin() const { return skin_.Get(GetScale()); }

  // ---- attributes -------------------------------------------------------------
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;
  // Refreshes after a handled attribute outside loading (repaint), then stores it.
  HRESULT AfterAttribute(const SStringW& name, const SStringW& value, BOOL loading,
                         HRESULT hr) override;
  // Applies the attributes of the element in document order, creates the
  // children, then runs OnCreate (when in a host) .
  BOOL InitFromXml(pugi::xml_node node) override;
  // Creates a child for each element (via the factory); "include" loads a
  // layout resource in place. Unknown tags are logged and skipped.
  virtual BOOL CreateChildren(pugi::xml_node node);
  // Creates children from XML text; false when the text does not parse.
  BOOL CreateChildren(const wchar_t* xml);
  // Sets an attribute here and on every descendant.
  void SetAttributeRecursive(const SStringW& name, const SStringW& value);

  // ---- state ------------------------------------------------------------------
  DWORD GetState() const { return state_; }
  // Adds and removes state bits; fires EventSwndStateChanged when they change.
  DWORD ModifyState(DWORD add, DWORD remove, BOOL update = FALSE);
  // The skin state index: 3 disabled, 2 pushed or checked, 1 hover, else 0.
  int GetStateIndex() const;
  BOOL IsVisible(BOOL check_parent = FALSE) const;
  void SetVisible(BOOL visible, BOOL update = FALSE);
  BOOL IsDisplay() const { return display_; }
  BOOL IsDisabled(BOOL check_parent = FALSE) const;
  void EnableWindow(BOOL enable, BOOL update = FALSE);
  BOOL IsChecked() const { return (state_ & WndState_Check) != 0; }
  void SetCheck(BOOL checked);
  BOOL IsMsgTransparent() const { return msg_transparent_; }
  BOOL IsFocusable() const { return focusable_; }
  BYTE GetAlpha() const { return style_->alpha; }
  // Asks the host for the keyboard focus; the window gets OnSetFocus and the
  // one that had it OnKillFocus. A window that is hidden or disabled (or
  // under a hidden or disabled ancestor) loses the focus at that moment.
  void SetFocus();
  void KillFocus();
  BOOL IsFocused() const;
  // Whether Tab can move the focus here: focusable, visible and enabled
  // with every ancestor.
  BOOL IsFocusTarget() const;
  // The keys the window wants while focused (SC_* bits). Tab reaches only
  // windows that want it; otherwise it moves the focus.
  virtual UINT OnGetDlgCode() const { return 0; }
  // The cursor shape the host shows over pt (the "cursor" attribute:
  // arrow, hand, ibeam, sizewe, sizens, sizeall...).
  virtual SStringW GetCursorName(CPoint pt) const {
    (void)pt;
    return style_->cursor;
  }

  // ---- layout -------------------------------------------------------------------
  int GetScale() const;
  const CRect& GetWindowRect() const { return rect_; }
  void GetWindowRect(LPRECT rc) const { *rc = rect_; }
  // The window rectangle less the margin band.
  virtual CRect GetClientRect() const;
  // The client rectangle less the padding: where children are laid out.
  virtual CRect GetChildrenLayoutRect() const;
  // What of a child can show through this window: the client rectangle with
  // clipClient, the view of a scroll view, else no limit.
  virtual CRect GetChildrenClipRect() const;
  // The part of this window that can be seen: its rectangle cut by every
  // ancestor's GetChildrenClipRect (a window scrolled out of view has none).
  // Visibility flags are not considered; see IsVisible.
  CRect GetVisibleRect() const;
  SouiLayoutParam* GetLayoutParam() { return &layout_param_; }
  const SouiLayoutParam* GetLayoutParam() const { return &layout_param_; }
  BOOL IsFloat() const { return float_; }
  // Moves a window out of automatic layout; null puts it back.
  void Move(LPCRECT rc);
  void Move(int x, int y, int cx = -1, int cy = -1);
  // The content size of the window for an available width/height (negative:
  // unbounded). Specified sizes and match_parent win; otherwise text and
  // children are measured and margin and padding added, saturating far below
  // INT_MAX. The measured content is kept until something that can change it
  // happens in the window or below it (a relayout request, text, state,
  // style or tree change) or a font or theme changes, so nested
  // content-sized windows are measured once, not once per level, and a
  // change in one window leaves its siblings' measurements alone.
  virtual CSize GetDesiredSize(int width, int height);
  CSize GetDesiredSize(LPCRECT rc_container);
  // Marks this window (and wrap-content ancestors) for layout before the
  // next paint.
  void RequestRelayout();
  // Makes every window measure its content again (a theme or font change
  // that no single window reports).
  static void InvalidateAllMeasures();
  BOOL IsLayoutDirty() const { return layout_dirty_; }
  // Runs pending layout of this subtree now.
  void UpdateLayout();
  // Lays out the children inside GetChildrenLayoutRect().
  virtual void UpdateChildrenPosition();
  // Called by the parent's layout with the window's new rectangle.
  virtual void OnRelayout(const CRect& rc);
  // Next/previous child taking part in layout (not floating, and not both
  // invisible and display=0).
  SWindow* GetNextLayoutChild(const SWindow* cur) const;
  SWindow* GetPrevLayoutChild(const SWindow* cur) const;
  // Starts loading the data that measuring, layout and paint read (the
  // first lines of the object, see the data below): a pass over siblings
  // asks for the next one while it works on this one, so that a tree larger
  // than the cache does not wait on memory window by window.
  void PrefetchPassData() const {
    const char* p = reinterpret_cast<const char*>(this);
    for (int line = 0; line < 6; ++line) __builtin_prefetch(p + 64 * line);
  }
  // The topmost visible, enabled-or-not descendant (or self) under pt that
  // is not message-transparent; null when pt is outside. A window showing
  // only part of its children (a scroll view) hits none outside that part.
  virtual SWindow* SwndFromPoint(CPoint pt, BOOL include_msg_transparent = FALSE);
  // Scrolls so that the descendant shows, for windows that scroll (the host
  // asks every ancestor, innermost first, when Tab moves the focus); others
  // do nothing.
  virtual void EnsureVisible(SWindow* descendant) { (void)descendant; }

  // ---- painting -------------------------------------------------------------------
  void Invalidate();
  void InvalidateRect(const CRect& rc);
  // Paints this window and its children, back to front, where they meet the
  // dirty region (normalized). A window that meets none of it is skipped
  // without running its paint code; one that meets several parts paints
  // once per part, clipped to it.
  void RedrawRegion(IRenderTarget* rt, const SRegion& dirty);
  void RedrawRegion(IRenderTarget* rt, const CRect& dirty);
  // Selects the window's font and text colour (children inherit what they
  // do not set). Returns what to restore.
  struct PaintState {
    IFontPtr old_font;
    COLORREF old_color = 0;
    bool font_set = false;
    bool color_set = false;
  };
  virtual void BeforePaint(IRenderTarget* rt, PaintState& ps);
  virtual void AfterPaint(IRenderTarget* rt, PaintState& ps);
  virtual void OnEraseBkgnd(IRenderTarget* rt);
  virtual void OnNcPaint(IRenderTarget* rt);
  virtual void OnPaint(IRenderTarget* rt);
  // Paints the children back to front (clipped to the client area with
  // clipClient); a scroll view paints only the ones in view, then its bars.
  virtual void PaintChildren(IRenderTarget* rt, const SRegion& dirty);
  // Painted over a focused window: its focusSkin, else with drawFocusRect a
  // dotted rectangle just inside the client area.
  virtual void DrawFocus(IRenderTarget* rt);
  virtual void DrawText(IRenderTarget* rt, const wchar_t* text, int len, LPRECT rc, UINT format);
  virtual UINT GetTextAlign() const { return style_->GetTextAlign(); }
  // The font this window paints with, after inheritance (null: host default).
  IFontPtr GetPaintFont(IRenderTarget* rt) const;
  COLORREF GetPaintTextColor() const;

  // ---- input --------------------------------------------------------------------
  // Entry of every message; dispatches to the handlers below. Returns TRUE
  // when handled.
  virtual BOOL ProcessSwndMessage(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result);
  LRESULT SwndProc(UINT msg, WPARAM wp, LPARAM lp);
  virtual void OnLButtonDown(UINT flags, CPoint pt);
  virtual void OnLButtonUp(UINT flags, CPoint pt);
  virtual void OnLButtonDblClk(UINT flags, CPoint pt);
  virtual void OnRButtonDown(UINT flags, CPoint pt);
  virtual void OnRButtonUp(UINT flags, CPoint pt);
  virtual void OnMouseMove(UINT flags, CPoint pt);
  virtual void OnMouseHover(UINT flags, CPoint pt);
  virtual void OnMouseLeave();
  virtual BOOL OnMouseWheel(UINT flags, short delta, CPoint pt);
  // The base fires EventKeyDown; a navigation key (arrows, Page Up/Down,
  // Home, End) nobody handled then goes to the ancestors' OnNavigationKey,
  // innermost first, so that a view scrolls while a child has the focus.
  // Controls that use a key themselves do not call the base with it.
  virtual void OnKeyDown(UINT vk, UINT repeat, UINT flags);
  // A navigation key left over by a focused descendant; TRUE when used.
  virtual BOOL OnNavigationKey(UINT vk) { (void)vk; return FALSE; }
  virtual void OnKeyUp(UINT vk, UINT repeat, UINT flags);
  virtual void OnChar(UINT ch, UINT repeat, UINT flags);
  virtual void OnSetFocus();
  virtual void OnKillFocus();
  virtual void OnTimer(int id);
  virtual int OnCreate();
  virtual void OnDestroy();
  virtual void OnSize(UINT type, CSize size);
  virtual void OnShowWindow(BOOL show, UINT status);
  virtual void OnEnable(BOOL enable);
  // A change of the application's language or theme.
  virtual void OnSetLanguage() {}
  // Re-resolves scaled resources after a zoom change, then relays out.
  virtual void OnScaleChanged(int scale);
  BOOL IsCreated() const { return created_; }
  // True while InitFromXml is building this window, before OnCreate: what an
  // attribute derives can wait for OnCreate, which sees them all.
  bool IsLoadingXml() const { return batching_style_ && !created_; }

  // ---- events ---------------------------------------------------------------------
  EventSet* GetEventSet() { return &events_; }
  int subscribeEvent(int id, EventHandler h) { return events_.subscribeEvent(id, std::move(h)); }
  int subscribeEvent(const wchar_t* name, EventHandler h) {
    return events_.subscribeEvent(name, std::move(h));
  }
  // Subscribers (newest first), then the owner's FireEvent, or the host.
  // Returns TRUE when anybody handled it.
  virtual BOOL FireEvent(EventArgs& evt);
  BOOL FireCommand();

  // ---- timers ---------------------------------------------------------------------
  BOOL SetTimer(int id, UINT ms);
  void KillTimer(int id);

  // ---- capture --------------------------------------------------------------------
  void SetCapture();
  void ReleaseCapture();
  BOOL IsCaptured() const;

 protected:
  void LogChildNotFound(const wchar_t* cls, const SStringW& name) const;
  // Creates one child element (factory tag, "include", "t:" template).
  virtual SWindow* CreateChildFromXml(pugi::xml_node child);
  // Content size of the text in the given width (-1 unbounded).
  virtual CSize MeasureContent(int width);
  // Measures text with this window's paint font.
  CSize MeasureTextExtent(const SStringW& text, int max_width, UINT format) const;
  void OnContainerChanged(ISwndContainer* old_container);
  // Moves every descendant by (dx, dy) without laying anything out.
  void ShiftDescendants(int dx, int dy);

  // What few windows set, kept out of line so that the common window stays
  // small.
  struct Rare {
    SStringW text_raw;  // the text as given, when it differs (a reference)
    bool has_raw_text = false;
    SStringW tip;
    ThemedSkin focus_skin;
    SLayoutSize max_width;  // when has_max_width_
  };

 private:
  // What a window inherits from its ancestors, worked out once per epoch.
  struct Inherited {
    unsigned epoch = 0;
    bool hidden = false;    // it or an ancestor is invisible
    bool disabled = false;  // it or an ancestor is disabled
    const SWindow* font_source = nullptr;  // nearest window (itself included) setting a font
  };
  // GetDesiredSize's last answer, valid while no size-affecting change has
  // happened anywhere since (see MeasureEpoch in swnd.cpp).
  struct DesiredCache {
    unsigned epoch = 0;
    int width = 0, height = 0, scale = 0;
    CSize size;
  };

  // The data, ordered so that what the passes over a tree read together
  // sits together, about a cache line (64 bytes, counting the object's
  // header) to a group, so that a pass over more windows than the cache
  // holds loads a few lines of each:
  //   1  identity, where to look things up, the parent (every pass)
  //   2  the child links, state and flags (every walk over children)
  //   3-4  geometry, measuring and the layout attributes, the name and the
  //      events (a window placed tells its size, with its id and name)
  //   5  what ancestors hand down (paint, fonts), the text
  //   6  the rare state
  // Seldom-used state comes after. Mind the grouping when adding members.
 protected:
  int id_ = 0;

 private:
  int depth_ = 0;

 protected:
  // Always shared: most windows never set a style attribute, a class's own
  // defaults (alignment, cursor) exist once per class (derived constructors
  // point it at a static style of theirs with UseClassStyle), and windows
  // whose styles come out the same share one (EditStyle).
  const SwndStyle* style_;

 private:
  ISwndContainer* container_ = nullptr;

  SWindow* parent_ = nullptr;
  SWindow* first_child_ = nullptr;
  SWindow* last_child_ = nullptr;
  SWindow* prev_sibling_ = nullptr;
  SWindow* next_sibling_ = nullptr;

 protected:
  DWORD state_ = WndState_Normal;

 private:
  UINT child_count_ = 0;

 protected:
  bool display_ = true;
  bool msg_transparent_ = false;
  bool focusable_ = false;
  bool float_ = false;
  bool clip_client_ = false;
  bool draw_focus_rect_ = false;

 private:
  bool layout_dirty_ = true;
  bool created_ = false;
  bool destroying_ = false;
  // Creating children from XML: descendants need not mark the ancestors
  // above this one dirty; it does so itself once its children are made.
  bool building_children_ = false;
  // Inside UpdateChildrenPosition of a layout pass: every child placed now
  // is laid out itself right after, so its own children need not be shifted.
  bool placing_children_ = false;
  // rare_->max_width applies: measuring asks without loading rare_.
  bool has_max_width_ = false;
  // Placed since its children were last placed, and its whole rect made
  // dirty then: a child placed inside that rect has nothing more to make
  // dirty. Every layout pass visits every window before anything is painted,
  // so the flag never outlives the dirty area it stands for.
  bool rect_invalidated_ = false;
  // Inside a StyleBatch, and whether the batch made its style copy yet
  // (kept aside while the batch lasts).
  bool batching_style_ = false;
  bool has_batch_copy_ = false;

 protected:
  CRect rect_;

 private:
  DesiredCache desired_cache_;

 protected:
  SouiLayoutParam layout_param_;
  SStringW name_;

 private:
  EventSet events_;
  SWindow* owner_ = nullptr;
  mutable Inherited inherited_;

 protected:
  InlineText text_;
  std::unique_ptr<Rare> rare_;

 protected:
  // Seldom read after creation.
  std::shared_ptr<const SwndStyle> interned_style_;
  // While a window applies its XML attributes, change functions edit one
  // private copy (made in place, so a change that fails must change
  // nothing), shared when the batch ends: one copy per window rather than
  // one per attribute. Single attribute edits look for the result of the
  // same edit first (EditStdStyle) and copy only when it is new.
  class StyleBatch {
   public:
    explicit StyleBatch(SWindow* w);
    ~StyleBatch();
    StyleBatch(const StyleBatch&) = delete;
    StyleBatch& operator=(const StyleBatch&) = delete;

   private:
    SWindow* w_;
    bool outer_;
  };
  // shared must outlive every window (a static): edits are remembered by
  // the address of the style they start from.
  void UseClassStyle(const SwndStyle& shared) { style_ = &shared; }
  ThemedSkin skin_;
  Rare& GetRare();

 private:
  friend class SHostWnd;
  bool EditStdStyle(StdAttr attr, const SStringW& value);
  void DispatchDestroy();
  void NotifyCreate();
  // Takes the focus away when it is on this window or inside it.
  void DropFocusInside();
  void MarkLayoutDirtyUpwards();
  // Forgets the desired size of this window and of its ancestors.
  void InvalidateMeasure();
  void SetDepth(int depth);
  const Inherited& GetInherited() const;
  void ShiftUnplacedDescendants(int dx, int dy);
  // Pieces of XML creation kept off the recursive path (see CreateChildFromXml).
  [[gnu::noinline]] void ApplyXmlAttributes(pugi::xml_node node);
  // One log line per place (class, name, attribute) for an attribute of the
  // layout that the window does not know or whose value it refused.
  void ReportRejectedAttribute(pugi::xml_node node, const SStringW& name, const SStringW& value, HRESULT hr);
  // The window an element names, inserted as a child; null with *include
  // set for an include, which CreateIncludeFromXml expands.
  [[gnu::noinline]] SWindow* CreateWindowFromXml(pugi::xml_node child, bool* include);
  [[gnu::noinline]] SWindow* CreateIncludeFromXml(pugi::xml_node child);
  [[gnu::noinline]] static void ReportTooDeep(pugi::xml_node child);
  void UpdateLayoutTree();
  int SubtreeHeight() const;
};

// Declares a class derived from a toolkit window: tag, base tag and IsClass.
#define SOUI_CLASS_NAME(TheClass, BaseClass, tag) SOUI_CLASS_NAME_EX(TheClass, BaseClass, tag)

}  // namespace SOUI
