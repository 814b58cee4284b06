// Events: EventArgs, the event set of a window, and the toolkit's standard ids.
//
// A window registers the ids (and names) of the events it raises; subscribers
// attach by id or by registered name. Subscribers run newest first; one that
// returns true counts as having handled the event, and if it also clears
// bubbleUp the remaining subscribers are skipped.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "soui/sstring.h"

namespace SOUI {

class SObject;

// Standard event ids of the toolkit.
enum : int {
  EVT_INIT = 8000,
  EVT_EXIT = 8001,
  EVT_TIMER = 8002,
  EVT_SETFOCUS = 8100,
  EVT_KILLFOCUS = 8101,
  EVT_CREATE = 8102,
  EVT_DESTROY = 8103,
  EVT_SIZE = 8104,
  EVT_VISIBLECHANGED = 8105,
  EVT_STATECHANGED = 8106,
  EVT_LBUTTONDOWN = 8107,
  EVT_LBUTTONUP = 8108,
  EVT_UPDATE_TOOLTIP = 8109,
  EVT_CAPTION_DBLCLK = 8110,
  EVT_KEYDOWN = 8200,
  EVT_MOUSE_HOVER = 9000,
  EVT_MOUSE_LEAVE = 9001,
  EVT_CMD = 10000,
  EVT_CTXMENU = 10001,
  EVT_TAB_SELCHANGING = 11000,
  EVT_TAB_SELCHANGED = 11001,
  EVT_TAB_ITEMHOVER = 11002,
  EVT_TAB_ITEMLEAVE = 11003,
  EVT_RE_NOTIFY = 16000,
  EVT_EXTERNAL_BEGIN = 10000000,
};

class EventArgs {
 public:
  explicit EventArgs(SObject* sender);
  virtual ~EventArgs() = default;
  virtual int GetID() const = 0;
  virtual const wchar_t* GetName() const = 0;

  bool bubbleUp = true;
  UINT handled = 0;
  int idFrom = 0;
  // The sender's name (never null), as the toolkit passes it: it points
  // into the sender, so a handler keeps a copy if it needs one later.
  const wchar_t* nameFrom = L"";
  SObject* sender = nullptr;
};

// Declares the static id and name of an event class, as the toolkit's
// EVENTID / EVENTNAME pair does.
#define SOUI_EVENT_ID(evt_id, evt_name)                                         \
 public:                                                                        \
  static constexpr int EventID = (evt_id);                                      \
  static const wchar_t* EventName() { return evt_name; }                        \
  int GetID() const override { return EventID; }                                \
  const wchar_t* GetName() const override { return EventName(); }

class EventCmd : public EventArgs {
  SOUI_EVENT_ID(EVT_CMD, L"on_command")
 public:
  using EventArgs::EventArgs;
};

class EventCtxMenu : public EventArgs {
  SOUI_EVENT_ID(EVT_CTXMENU, L"on_context_menu")
 public:
  using EventArgs::EventArgs;
  POINT pt{0, 0};
  bool bCancel = false;
};

class EventSwndCreate : public EventArgs {
  SOUI_EVENT_ID(EVT_CREATE, L"on_create")
 public:
  using EventArgs::EventArgs;
};

class EventSwndDestroy : public EventArgs {
  SOUI_EVENT_ID(EVT_DESTROY, L"on_destroy")
 public:
  using EventArgs::EventArgs;
};

class EventSwndSize : public EventArgs {
  SOUI_EVENT_ID(EVT_SIZE, L"on_size")
 public:
  using EventArgs::EventArgs;
  SIZE szWnd{0, 0};
};

class EventSwndStateChanged : public EventArgs {
  SOUI_EVENT_ID(EVT_STATECHANGED, L"on_state_changed")
 public:
  using EventArgs::EventArgs;
  DWORD dwOldState = 0;
  DWORD dwNewState = 0;
};

class EventSwndVisibleChanged : public EventArgs {
  SOUI_EVENT_ID(EVT_VISIBLECHANGED, L"on_visible_changed")
 public:
  using EventArgs::EventArgs;
};

// A double click on a host's caption (maximise or restore, by the host's rule).
class EventCaptionDblClk : public EventArgs {
  SOUI_EVENT_ID(EVT_CAPTION_DBLCLK, L"on_caption_dblclick")
 public:
  using EventArgs::EventArgs;
};

class EventSwndMouseHover : public EventArgs {
  SOUI_EVENT_ID(EVT_MOUSE_HOVER, L"on_mouse_hover")
 public:
  using EventArgs::EventArgs;
};

class EventSwndMouseLeave : public EventArgs {
  SOUI_EVENT_ID(EVT_MOUSE_LEAVE, L"on_mouse_leave")
 public:
  using EventArgs::EventArgs;
};

class EventLButtonDown : public EventArgs {
  SOUI_EVENT_ID(EVT_LBUTTONDOWN, L"on_mouse_lbutton_down")
 public:
  using EventArgs::EventArgs;
  POINT pt{0, 0};
};

class EventLButtonUp : public EventArgs {
  SOUI_EVENT_ID(EVT_LBUTTONUP, L"on_mouse_lbutton_up")
 public:
  using EventArgs::EventArgs;
  POINT pt{0, 0};
};

class EventSetFocus : public EventArgs {
  SOUI_EVENT_ID(EVT_SETFOCUS, L"on_set_focus")
 public:
  using EventArgs::EventArgs;
};

class EventKillFocus : public EventArgs {
  SOUI_EVENT_ID(EVT_KILLFOCUS, L"on_kill_focus")
 public:
  using EventArgs::EventArgs;
};

class EventKeyDown : public EventArgs {
  SOUI_EVENT_ID(EVT_KEYDOWN, L"on_key_down")
 public:
  using EventArgs::EventArgs;
  UINT nChar = 0;
  UINT nFlags = 0;
  bool bCancel = false;
};

// An edit's notification (the toolkit's EventRENotify, "on_re_notify"):
// iNotify is EN_CHANGE after every change of the text (typing, deleting,
// pasting, undo, ReplaceSel, SetWindowText), EN_MAXTEXT when an insertion was
// cut to the edit's maxBuf.
class EventRENotify : public EventArgs {
  SOUI_EVENT_ID(EVT_RE_NOTIFY, L"on_re_notify")
 public:
  using EventArgs::EventArgs;
  DWORD iNotify = 0;
  void* pv = nullptr;
  HRESULT hr = S_OK;
};

// A subscriber: returns true when it handled the event.
using EventHandler = std::function<bool(EventArgs*)>;

// A subscriber object that registries copy (the toolkit's slot functor):
// Clone makes the copy a registry keeps, so the caller's may go away.
class ISlotFunctor {
 public:
  virtual ~ISlotFunctor() = default;
  virtual bool operator()(EventArgs* evt) = 0;
  virtual ISlotFunctor* Clone() const = 0;
};

// Any callable as a slot functor.
class FunctionSlot : public ISlotFunctor {
 public:
  explicit FunctionSlot(EventHandler fn) : fn_(std::move(fn)) {}
  bool operator()(EventArgs* evt) override { return fn_ ? fn_(evt) : false; }
  ISlotFunctor* Clone() const override { return new FunctionSlot(fn_); }

 private:
  EventHandler fn_;
};
inline FunctionSlot Subscriber(EventHandler fn) { return FunctionSlot(std::move(fn)); }

// The subscribers of one window, keyed by event id.
class EventSet {
 public:
  // Registers an event the owner raises; subscribing to unregistered ids
  // fails. name must outlive the set (event names are string literals).
  void addEvent(int id, const wchar_t* name);
  void removeEvent(int id);
  struct Decl {
    int id;
    const wchar_t* name;  // a literal: event names are static
  };
  // Registers a fixed table of events at once without copying it (the
  // standard events every window raises). The table must be static.
  void addEvents(const Decl* table, size_t count) {
    base_ = table;
    base_count_ = static_cast<uint32_t>(count);
  }
  bool isEventPresent(int id) const;
  int idOfName(const wchar_t* name) const;  // 0 when unknown

  // Returns a connection id (> 0), or 0 when the event is not registered.
  int subscribeEvent(int id, EventHandler handler);
  int subscribeEvent(const wchar_t* name, EventHandler handler);
  // Typed form: bool Class::OnX(EventSub*).
  template <class Obj, class EventSub>
  int subscribeEvent(bool (Obj::*fn)(EventSub*), Obj* obj) {
    return subscribeEvent(EventSub::EventID, [obj, fn](EventArgs* e) {
      return (obj->*fn)(static_cast<EventSub*>(e));
    });
  }
  bool unsubscribeEvent(int id, int connection);
  void removeAllEvents();

  // Runs the subscribers of evt.GetID(); a muted set runs none.
  void FireEvent(EventArgs& evt);
  void setMutedState(bool muted) { muted_ = muted; }
  bool isMuted() const { return muted_; }

 private:
  struct Slot {
    int id;
    int connection;
    EventHandler handler;
  };
  // Events added one by one and the subscriptions: most windows have
  // neither, so they live out of line.
  struct Dynamic {
    std::vector<Decl> decls;
    std::vector<Slot> slots;
    int next_connection = 1;
  };
  const Decl* FindDecl(int id) const;
  Dynamic& Dyn();
  // Firing reads only the first two.
  std::unique_ptr<Dynamic> dyn_;
  bool muted_ = false;
  uint32_t base_count_ = 0;
  const Decl* base_ = nullptr;  // the class's shared table
};

}  // namespace SOUI
