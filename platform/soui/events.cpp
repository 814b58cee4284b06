#include "soui/events.h"

#include <algorithm>
#include <cwchar>

#include "soui/sobject.h"

namespace SOUI {

EventArgs::EventArgs(SObject* s) : sender(s) {
  if (s) {
    idFrom = s->GetID();
    nameFrom = s->GetName();
  }
}

void EventSet::addEvent(int id, const wchar_t* name) {
  for (Decl& d : decls_) {
    if (d.id == id) {
      if (name) d.name = name;
      return;
    }
  }
  decls_.push_back(Decl{id, name ? name : L""});
}

void EventSet::removeEvent(int id) {
  decls_.erase(std::remove_if(decls_.begin(), decls_.end(), [id](const Decl& d) { return d.id == id; }),
               decls_.end());
  slots_.erase(std::remove_if(slots_.begin(), slots_.end(), [id](const Slot& s) { return s.id == id; }),
               slots_.end());
}

bool EventSet::isEventPresent(int id) const {
  for (const Decl& d : decls_) {
    if (d.id == id) return true;
  }
  return false;
}

int EventSet::idOfName(const wchar_t* name) const {
  if (!name || !*name) return 0;
  for (const Decl& d : decls_) {
    if (std::wcscmp(d.name, name) == 0) return d.id;
  }
  return 0;
}

int EventSet::subscribeEvent(int id, EventHandler handler) {
  if (!handler || !isEventPresent(id)) return 0;
  const int connection = next_connection_++;
  slots_.push_back(Slot{id, connection, std::move(handler)});
  return connection;
}

int EventSet::subscribeEvent(const wchar_t* name, EventHandler handler) {
  const int id = idOfName(name);
  return id ? subscribeEvent(id, std::move(handler)) : 0;
}

bool EventSet::unsubscribeEvent(int id, int connection) {
  for (auto s = slots_.begin(); s != slots_.end(); ++s) {
    if (s->id == id && s->connection == connection) {
      slots_.erase(s);
      return true;
    }
  }
  return false;
}

void EventSet::removeAllEvents() {
  decls_.clear();
  slots_.clear();
}

void EventSet::FireEvent(EventArgs& evt) {
  if (muted_ || slots_.empty()) return;
  const int id = evt.GetID();
  // A copy of the matching handlers, newest first, so that handlers may
  // subscribe or unsubscribe while running.
  std::vector<EventHandler> handlers;
  for (auto s = slots_.rbegin(); s != slots_.rend(); ++s) {
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
