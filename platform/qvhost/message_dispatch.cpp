#include "qvhost/message_dispatch.h"

#include <iterator>

#include "soui/sapp.h"

MessageDispatch::MessageDispatch(SOUI::SClock& clock) : clock_(clock) {}

MessageDispatch::~MessageDispatch() {
  for (const auto& [task, timer] : tasks_) clock_.KillTimer(timer);
  // A Send still on the stack keeps its snapshot; make sure it calls nothing.
  for (const auto& [msg, list] : by_msg_) {
    for (const auto& b : list) b->bound = false;
  }
}

void MessageDispatch::Bind(unsigned msg, void* owner, Handler handler) {
  auto slot = by_owner_.find(owner);
  if (slot != by_owner_.end()) {
    OwnerEntries& entries = slot->second;
    if (entries.first.msg == msg) {
      (*entries.first.at)->fn = std::move(handler);
      return;
    }
    for (const OwnerEntry& e : entries.more) {
      if (e.msg == msg) {
        (*e.at)->fn = std::move(handler);
        return;
      }
    }
  }
  BindingList& list = by_msg_[msg];
  list.push_back(std::make_shared<Binding>(Binding{msg, owner, std::move(handler), true}));
  const OwnerEntry entry{msg, std::prev(list.end())};
  // An owner's entry exists only once its first binding does.
  if (slot != by_owner_.end()) slot->second.more.push_back(entry);
  else by_owner_.emplace(owner, OwnerEntries{entry, {}});
  ++binding_count_;
}

void MessageDispatch::Unlink(const OwnerEntry& entry) {
  auto list = by_msg_.find(entry.msg);
  (*entry.at)->bound = false;
  list->second.erase(entry.at);
  if (list->second.empty()) by_msg_.erase(list);
  --binding_count_;
}

void MessageDispatch::UnBind(void* owner) {
  auto it = by_owner_.find(owner);
  if (it == by_owner_.end()) return;
  Unlink(it->second.first);
  for (const OwnerEntry& e : it->second.more) Unlink(e);
  by_owner_.erase(it);
}

void MessageDispatch::UnBind(unsigned msg, void* owner) {
  auto it = by_owner_.find(owner);
  if (it == by_owner_.end()) return;
  OwnerEntries& entries = it->second;
  if (entries.first.msg == msg) {
    Unlink(entries.first);
    if (entries.more.empty()) {
      by_owner_.erase(it);
      return;
    }
    // The order of an owner's entries does not matter: the lists keep the order of binding.
    entries.first = entries.more.back();
    entries.more.pop_back();
    return;
  }
  for (auto e = entries.more.begin(); e != entries.more.end(); ++e) {
    if (e->msg != msg) continue;
    Unlink(*e);
    entries.more.erase(e);
    return;
  }
}

void MessageDispatch::Send(unsigned msg, unsigned param, msg_body_ptr body) {
  auto list = by_msg_.find(msg);
  if (list == by_msg_.end()) return;
  // The snapshot keeps each binding (and its handler) alive while it runs,
  // even if the handler unbinds itself or destroys its owner.
  const std::vector<std::shared_ptr<Binding>> targets(list->second.begin(), list->second.end());
  for (const auto& b : targets) {
    if (!b->bound) continue;
    // Copied: a handler re-binding itself replaces b->fn while it runs.
    Handler fn = b->fn;
    if (fn) fn(msg, param, body);
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
