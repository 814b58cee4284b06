#include "qvhost/message_dispatch.h"

#include <algorithm>
#include <iterator>

#include "soui/sapp.h"

MessageDispatch::MessageDispatch(SOUI::SClock& clock) : clock_(clock) {}

MessageDispatch::~MessageDispatch() {
  for (const auto& [task, timer] : tasks_) clock_.KillTimer(timer);
  // A Send still on the stack must stop touching this object.
  if (destroyed_) *destroyed_ = true;
}

MessageDispatch::Binding* MessageDispatch::Find(BindingList& list, uint64_t seq) {
  auto at = std::lower_bound(list.items.begin(), list.items.end(), seq,
                             [](const Binding& b, uint64_t s) { return b.seq < s; });
  return at != list.items.end() && at->seq == seq ? &*at : nullptr;
}

void MessageDispatch::Bind(unsigned msg, void* owner, Handler handler) {
  if (!owner) return;  // no owner could ever unbind it
  auto slot = by_owner_.find(owner);
  if (slot != by_owner_.end()) {
    OwnerEntries& entries = slot->second;
    const OwnerEntry* same = entries.first.msg == msg ? &entries.first : nullptr;
    for (auto e = entries.more.begin(); !same && e != entries.more.end(); ++e) {
      if (e->msg == msg) same = &*e;
    }
    // A Send running this very handler runs its own copy of it.
    if (same) {
      if (Binding* b = Find(by_msg_[msg], same->seq)) b->fn = std::move(handler);
      return;
    }
  }
  const OwnerEntry entry{msg, next_seq_++};
  by_msg_[msg].items.push_back(Binding{owner, entry.seq, std::move(handler)});
  // An owner's entry exists only once its first binding does.
  if (slot != by_owner_.end()) slot->second.more.push_back(entry);
  else by_owner_.emplace(owner, OwnerEntries{entry, {}});
  ++binding_count_;
}

void MessageDispatch::Unlink(const OwnerEntry& entry) {
  auto list = by_msg_.find(entry.msg);
  Binding* b = list == by_msg_.end() ? nullptr : Find(list->second, entry.seq);
  if (!b) return;
  b->owner = nullptr;
  b->fn = nullptr;
  ++list->second.holes;
  --binding_count_;
  if (sending_) holes_pending_ = true;
  else Compact(list);
}

void MessageDispatch::Compact(std::unordered_map<unsigned, BindingList>::iterator list) {
  BindingList& l = list->second;
  if (l.holes * 2 < l.items.size()) return;
  if (l.holes == l.items.size()) {
    by_msg_.erase(list);
    return;
  }
  l.items.erase(std::remove_if(l.items.begin(), l.items.end(), [](const Binding& b) { return !b.owner; }),
                l.items.end());
  l.holes = 0;
}

void MessageDispatch::UnBind(void* owner) {
  auto it = by_owner_.find(owner);
  if (it == by_owner_.end()) return;
  const OwnerEntries entries = std::move(it->second);
  by_owner_.erase(it);
  Unlink(entries.first);
  for (const OwnerEntry& e : entries.more) Unlink(e);
}

void MessageDispatch::UnBind(unsigned msg, void* owner) {
  auto it = by_owner_.find(owner);
  if (it == by_owner_.end()) return;
  OwnerEntries& entries = it->second;
  if (entries.first.msg == msg) {
    const OwnerEntry gone = entries.first;
    // The order of an owner's entries does not matter: the lists keep the order of binding.
    if (entries.more.empty()) {
      by_owner_.erase(it);
    } else {
      entries.first = entries.more.back();
      entries.more.pop_back();
    }
    Unlink(gone);
    return;
  }
  for (auto e = entries.more.begin(); e != entries.more.end(); ++e) {
    if (e->msg != msg) continue;
    const OwnerEntry gone = *e;
    entries.more.erase(e);
    Unlink(gone);
    return;
  }
}

void MessageDispatch::Send(unsigned msg, unsigned param, msg_body_ptr body) {
  auto found = by_msg_.find(msg);
  if (found == by_msg_.end()) return;
  // The list stays where it is while a Send is on the stack (nothing erases
  // or compacts it); bindings made from here on have seq >= end and wait
  // for the next Send.
  BindingList& list = found->second;
  const uint64_t end = next_seq_;
  bool destroyed = false;
  bool* const outer = destroyed_;
  destroyed_ = &destroyed;
  ++sending_;
  for (size_t i = 0; i < list.items.size() && list.items[i].seq < end; ++i) {
    if (!list.items[i].owner) continue;
    // Copied: the handler may replace or drop itself, and a Bind may move
    // the list, while it runs.
    const Handler fn = list.items[i].fn;
    if (fn) fn(msg, param, body);
    if (destroyed) {
      if (outer) *outer = true;
      return;
    }
  }
  destroyed_ = outer;
  if (--sending_ == 0 && holes_pending_) {
    // Unbinding during the Send left holes in this list and maybe others.
    holes_pending_ = false;
    for (auto it = by_msg_.begin(); it != by_msg_.end();) {
      auto next = std::next(it);
      if (it->second.holes) Compact(it);
      it = next;
    }
  }
}

IMessageDispatch::TaskId MessageDispatch::Schedule(uint32_t ms, Task fn, bool repeat) {
  const TaskId id = next_task_++;
  auto run = [this, id, repeat, fn = std::move(fn)] {
    // One-shot tasks forget their id before running, so the task may post
    // again or destroy the dispatch; nothing touches `this` afterwards.
    if (!repeat) tasks_.erase(id);
    if (fn) fn();
  };
  tasks_[id] = clock_.SetTimer(ms, std::move(run), repeat);
  return id;
}

IMessageDispatch::TaskId MessageDispatch::Post(unsigned msg, unsigned param, msg_body_ptr body) {
  return Schedule(0, [this, msg, param, body = std::move(body)] { Send(msg, param, body); }, false);
}

IMessageDispatch::TaskId MessageDispatch::Post(Task fn) { return Schedule(0, std::move(fn), false); }

IMessageDispatch::TaskId MessageDispatch::Asyn(Task fn) { return Schedule(0, std::move(fn), false); }

IMessageDispatch::TaskId MessageDispatch::Delay(uint32_t ms, Task fn) {
  return Schedule(ms, std::move(fn), false);
}

IMessageDispatch::TaskId MessageDispatch::SetTimer(uint32_t ms, Task fn) {
  return Schedule(ms, std::move(fn), true);
}

void MessageDispatch::KillTimer(TaskId id) { Cancel(id); }

void MessageDispatch::Cancel(TaskId id) {
  auto it = tasks_.find(id);
  if (it == tasks_.end()) return;
  clock_.KillTimer(it->second);
  tasks_.erase(it);
}

MessageDispatch& GetMessageDispatch(SOUI::SApplication& app) {
  static const char kKey[] = "qvhost.MessageDispatch";
  if (auto* d = static_cast<MessageDispatch*>(app.GetService(kKey))) return *d;
  auto d = std::make_unique<MessageDispatch>(app.GetClock());
  MessageDispatch& ref = *d;
  app.SetService(kKey, std::move(d));
  return ref;
}

IMessageDispatch* GetMsgDispatch() {
  SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr();
  return app ? &GetMessageDispatch(*app) : nullptr;
}
