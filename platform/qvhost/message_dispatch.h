// The host's message dispatch: broadcast messages bound by owner, plus
// deferred and timed tasks. Everything runs on the UI thread and is driven by
// the application clock, so tests move it with SClock::Advance.
//
//   Bind(msg, owner, fn)  one binding per (msg, owner); binding again replaces
//                         the handler and keeps its place in the order; a
//                         null owner binds nothing
//   Send(msg, ...)        synchronous, to the bindings of msg in binding order.
//                         Handlers may Bind/UnBind during a Send: a binding
//                         removed is not called afterwards, one added is called
//                         from the next Send on.
//   Post/Asyn(fn)         runs at the next RunDue of the clock, in call order
//   Delay(ms, fn)         runs once after ms
//   SetTimer(ms, fn)      runs every ms until KillTimer
//   Cancel/KillTimer(id)  drop a pending task or timer; unknown ids are ignored
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

#include "soui/sapp.h"
#include "soui/timeline.h"

// Payload of a broadcast message; receivers downcast to what they expect.
struct msg_body {
  virtual ~msg_body() = default;
};
using msg_body_ptr = std::shared_ptr<msg_body>;

class IMessageDispatch {
 public:
  using Handler = std::function<void(unsigned msg, unsigned param, msg_body_ptr body)>;
  using Task = std::function<void()>;
  using TaskId = uint64_t;  // 0 is never a valid id

  virtual ~IMessageDispatch() = default;

  virtual void Bind(unsigned msg, void* owner, Handler handler) = 0;
  // Drops every binding of owner.
  virtual void UnBind(void* owner) = 0;
  virtual void UnBind(unsigned msg, void* owner) = 0;
  virtual void Send(unsigned msg, unsigned param = 0, msg_body_ptr body = nullptr) = 0;
  // Sends msg at the next RunDue instead of now.
  virtual TaskId Post(unsigned msg, unsigned param, msg_body_ptr body) = 0;

  virtual TaskId Post(Task fn) = 0;
  virtual TaskId Asyn(Task fn) = 0;
  virtual TaskId Delay(uint32_t ms, Task fn) = 0;
  virtual TaskId SetTimer(uint32_t ms, Task fn) = 0;
  virtual void KillTimer(TaskId id) = 0;
  virtual void Cancel(TaskId id) = 0;
};

// Kept by the application as one of its services (see GetMessageDispatch).
class MessageDispatch : public IMessageDispatch, public SOUI::IAppService {
 public:
  explicit MessageDispatch(SOUI::SClock& clock);
  // Pending tasks and timers are dropped with the dispatch.
  ~MessageDispatch() override;
  MessageDispatch(const MessageDispatch&) = delete;
  MessageDispatch& operator=(const MessageDispatch&) = delete;

  void Bind(unsigned msg, void* owner, Handler handler) override;
  void UnBind(void* owner) override;
  void UnBind(unsigned msg, void* owner) override;
  void Send(unsigned msg, unsigned param = 0, msg_body_ptr body = nullptr) override;
  TaskId Post(unsigned msg, unsigned param, msg_body_ptr body) override;

  TaskId Post(Task fn) override;
  TaskId Asyn(Task fn) override;
  TaskId Delay(uint32_t ms, Task fn) override;
  TaskId SetTimer(uint32_t ms, Task fn) override;
  void KillTimer(TaskId id) override;
  void Cancel(TaskId id) override;

  size_t BindingCount() const { return binding_count_; }
  size_t PendingTasks() const { return tasks_.size(); }

 private:
  // Bindings of one message, dense and in binding order (seq rises along
  // the list). A removed binding leaves a hole (no owner) until the list is
  // compacted, which never happens while a Send is on the stack: a Send
  // walks the list by index, and a list only grows at its end meanwhile.
  struct Binding {
    void* owner;
    uint64_t seq;
    Handler fn;
  };
  struct BindingList {
    std::vector<Binding> items;
    size_t holes = 0;
  };
  struct OwnerEntry {
    unsigned msg;
    uint64_t seq;
  };
  // Most owners bind one message: it is kept inline, the others in `more`.
  struct OwnerEntries {
    OwnerEntry first;
    std::vector<OwnerEntry> more;
  };
  TaskId Schedule(uint32_t ms, Task fn, bool repeat);
  static Binding* Find(BindingList& list, uint64_t seq);
  void Unlink(const OwnerEntry& entry);
  // Drops the holes of a list once they are half of it (or it is empty), so
  // that removing N bindings costs O(N) moves in all.
  void Compact(std::unordered_map<unsigned, BindingList>::iterator list);

  SOUI::SClock& clock_;
  // Per message, its bindings; per owner, which bindings are its (an owner
  // binds a handful of messages), so that binding and unbinding cost the
  // same with ten or ten thousand owners.
  std::unordered_map<unsigned, BindingList> by_msg_;
  std::unordered_map<void*, OwnerEntries> by_owner_;
  uint64_t next_seq_ = 0;
  int sending_ = 0;            // Send frames on the stack
  bool holes_pending_ = false;  // bindings removed under a Send, not compacted yet
  bool* destroyed_ = nullptr;   // set when the dispatch dies under a Send
  size_t binding_count_ = 0;
  TaskId next_task_ = 1;
  std::map<TaskId, SOUI::SClock::TimerId> tasks_;
};

// The application's dispatch, made on first use on the application's clock.
MessageDispatch& GetMessageDispatch(SOUI::SApplication& app);
// The current application's dispatch; null when there is no application.
IMessageDispatch* GetMsgDispatch();
