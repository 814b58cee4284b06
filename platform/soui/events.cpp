#include "soui/events.h"

#include <algorithm>
#include <cwchar>

#include "soui/sobject.h"

namespace SOUI {

EventArgs::EventArgs(SObject* s) : sender(s) {
  if (s) {
    idFrom = s->GetID();
    nameFrom = s->GetNamePtr();
  }
}

EventSet::Dynamic& EventSet::Dyn() {
  if (!dyn_) dyn_ = std::make_unique<Dynamic>();
  return *dyn_;
}

void EventSet::addEvent(int id, const wchar_t* name) {
  for (Decl& d : Dyn().decls) {
    if (d.id == id) {
      if (name) d.name = name;
      return;
    }
  }
  dyn_->decls.push_back(Decl{id, name ? name : L""});
}

const EventSet::Decl* EventSet::FindDecl(int id) const {
  if (dyn_) {
    for (const Decl& d : dyn_->decls) {
      if (d.id == id) return &d;
    }
  }
  for (size_t i = 0; i < base_count_; ++i) {
    if (base_[i].id == id) return &base_[i];
  }
  return nullptr;
}

void EventSet::removeEvent(int id) {
  const Decl* d = FindDecl(id);
  if (!d) return;
  std::vector<Decl>& decls = Dyn().decls;
  if (base_ && d >= base_ && d < base_ + base_count_) {
    // Copy the shared table out before editing it.
    decls.insert(decls.end(), base_, base_ + base_count_);
    base_ = nullptr;
    base_count_ = 0;
  }
  decls.erase(std::remove_if(decls.begin(), decls.end(), [id](const Decl& e) { return e.id == id; }), decls.end());
  std::vector<Slot>& slots = dyn_->slots;
  slots.erase(std::remove_if(slots.begin(), slots.end(), [id](const Slot& s) { return s.id == id; }), slots.end());
}

bool EventSet::isEventPresent(int id) const { return FindDecl(id) != nullptr; }

int EventSet::idOfName(const wchar_t* name) const {
  if (!name || !*name) return 0;
  if (dyn_) {
    for (const Decl& d : dyn_->decls) {
      if (std::wcscmp(d.name, name) == 0) return d.id;
    }
  }
  for (size_t i = 0; i < base_count_; ++i) {
    if (std::wcscmp(base_[i].name, name) == 0) return base_[i].id;
  }
  return 0;
}

int EventSet::subscribeEvent(int id, EventHandler handler) {
  if (!handler || !isEventPresent(id)) return 0;
  Dynamic& dyn = Dyn();
  const int connection = dyn.next_connection++;
  dyn.slots.push_back(Slot{id, connection, std::move(handler)});
  return connection;
}

int EventSet::subscribeEvent(const wchar_t* name, EventHandler handler) {
  const int id = idOfName(name);
  return id ? subscribeEvent(id, std::move(handler)) : 0;
}

bool EventSet::unsubscribeEvent(int id, int connection) {
  if (!dyn_) return false;
  std::vector<Slot>& slots = dyn_->slots;
  for (auto s = slots.begin(); s != slots.end(); ++s) {
    if (s->id == id && s->connection == connection) {
      slots.erase(s);
      return true;
    }
  }
  return false;
}

void EventSet::removeAllEvents() {
  base_ = nullptr;
  base_count_ = 0;
  dyn_.reset();
}

void EventSet::FireEvent(EventArgs& evt) {
  if (muted_ || !dyn_ || dyn_->slots.empty()) return;
  const int id = evt.GetID();
  // A copy of the matching handlers, newest first, so that handlers may
  // subscribe or unsubscribe while running.
  std::vector<EventHandler> handlers;
  for (auto s = dyn_->slots.rbegin(); s != dyn_->slots.rend(); ++s) {
    if (s->id == id) handlers.push_back(s->handler);
  }
  for (const EventHandler& h : handlers) {
    if (h(&evt)) {
      ++evt.handled;
      if (!evt.bubbleUp) break;
    }
  }
}

}  // namespace SOUI
