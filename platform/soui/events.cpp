#include "soui/events.h"

#include "soui/sobject.h"

namespace SOUI {

EventArgs::EventArgs(SObject* s) : sender(s) {
  if (s) {
    idFrom = s->GetID();
    nameFrom = s->GetName();
  }
}

void EventSet::addEvent(int id, const wchar_t* name) {
  Event& e = events_[id];
  if (name) e.name = name;
}

void EventSet::removeEvent(int id) { events_.erase(id); }

bool EventSet::isEventPresent(int id) const { return events_.count(id) != 0; }

int EventSet::idOfName(const wchar_t* name) const {
  if (!name || !*name) return 0;
  for (const auto& kv : events_) {
    if (kv.second.name == name) return kv.first;
  }
  return 0;
}

int EventSet::subscribeEvent(int id, EventHandler handler) {
  auto it = events_.find(id);
  if (it == events_.end() || !handler) return 0;
  const int connection = next_connection_++;
  it->second.slots.push_back(Slot{connection, std::move(handler)});
  return connection;
}

int EventSet::subscribeEvent(const wchar_t* name, EventHandler handler) {
  const int id = idOfName(name);
  return id ? subscribeEvent(id, std::move(handler)) : 0;
}

bool EventSet::unsubscribeEvent(int id, int connection) {
  auto it = events_.find(id);
  if (it == events_.end()) return false;
  auto& slots = it->second.slots;
  for (auto s = slots.begin(); s != slots.end(); ++s) {
    if (s->connection == connection) {
      slots.erase(s);
      return true;
    }
  }
  return false;
}

void EventSet::removeAllEvents() { events_.clear(); }

void EventSet::FireEvent(EventArgs& evt) {
  if (muted_) return;
  auto it = events_.find(evt.GetID());
  if (it == events_.end()) return;
  // A copy, so that handlers may subscribe or unsubscribe while running.
  const std::vector<Slot> slots = it->second.slots;
  for (auto s = slots.rbegin(); s != slots.rend(); ++s) {
    if (s->handler(&evt)) {
      ++evt.handled;
      if (!evt.bubbleUp) break;
    }
  }
}

}  // namespace SOUI
