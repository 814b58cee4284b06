// QVItemListNodeBase<T>: an intrusive doubly linked list living inside the
// items of a tab strip. The list is only a T* head held by the container;
// every operation is static and takes that head by reference.
//
// Invariants kept by the operations: the head is the only node with a null
// previous, following next from the head meets every node once, and a
// node's next's previous is the node itself.
//
// A removed node keeps its stale pointers, and its old neighbours may be
// gone by the time a late callback hands it back. So ListMove, ListRemove
// and ListSwap first make sure their nodes are in the list (a walk from the
// head that touches only live nodes) and otherwise change nothing: a node
// returns only through ListInsert.
#pragma once

#include <functional>
#include <utility>

namespace QVStandardCtrls {

template <class T>
class QVItemListNodeBase {
 public:
  QVItemListNodeBase() = default;
  QVItemListNodeBase(const QVItemListNodeBase&) = default;
  QVItemListNodeBase& operator=(const QVItemListNodeBase&) = default;

  T* GetNext() const { return next_; }
  T* GetPrev() const { return prev_; }

  // Makes node the element at position index; an index past the tail (or
  // negative) appends.
  static void ListInsert(T*& head, T* node, int index) {
    if (!node) return;
    if (!head) {
      if (!Prev(node)) head = node;
      return;
    }
    T* cur = head;
    int pos = 0;
    while ((index < 0 || pos < index) && Next(cur)) {
      cur = Next(cur);
      ++pos;
    }
    LinkAfter(head, node, pos == index ? Prev(cur) : cur);
  }

  // Moves node directly behind after; a null after moves it to the front.
  static void ListMove(T*& head, T* node, T* after) {
    if (!node || node == after || !ListContains(head, node)) return;
    if (after && !ListContains(head, after)) return;
    ListMoveLinked(head, node, after);
  }

  // ListMove for nodes the caller reached through the list's own links, so
  // known to be in it: no walk from the head.
  static void ListMoveLinked(T*& head, T* node, T* after) {
    if (!node || node == after) return;
    Unlink(head, node);
    LinkAfter(head, node, after);
  }

  // Links node, which is not in the list, directly behind after, which is
  // (null: in front); nothing is searched, so appending behind a known tail
  // costs the same at any length.
  static void ListInsertAfter(T*& head, T* node, T* after) {
    if (node && node != after) LinkAfter(head, node, after);
  }

  static void ListRemove(T*& head, T* node) {
    if (!ListContains(head, node)) return;
    // Kept on purpose: the removed node keeps its own pointers; ListInsert
    // and ListMove rewrite them when it comes back.
    Unlink(head, node);
  }

  static void ListSwap(T*& head, T* a, T* b) {
    if (!a || !b || a == b || !ListContains(head, a) || !ListContains(head, b)) return;
    if (Next(b) == a) std::swap(a, b);  // a is the one in front
    if (Next(a) == b) {
      T* before = Prev(a);
      T* after = Next(b);
      Next(a) = after;
      Prev(b) = before;
      Prev(a) = b;
      Next(b) = a;
      if (before) Next(before) = b;
      if (after) Prev(after) = a;
    } else {
      if (Prev(a)) Next(Prev(a)) = b;
      if (Prev(b)) Next(Prev(b)) = a;
      if (Next(a)) Prev(Next(a)) = b;
      if (Next(b)) Prev(Next(b)) = a;
      std::swap(Prev(a), Prev(b));
      std::swap(Next(a), Next(b));
    }
    if (!Prev(a)) head = a;
    if (!Prev(b)) head = b;
  }

  // Visits from `from` to `to` inclusive (or the tail); stops early when fn
  // returns true. An empty fn throws std::bad_function_call.
  static void ListLoop(T* from, T* to, std::function<bool(T*)> fn) {
    for (T* cur = from; cur; cur = Next(cur)) {
      if (fn(cur) || cur == to) return;
    }
  }
  static void ListLoop(T* from, std::function<bool(T*)> fn) { ListLoop(from, nullptr, std::move(fn)); }

  static bool ListContains(T* head, const T* node) {
    if (!node) return false;
    for (T* cur = head; cur; cur = Next(cur)) {
      if (cur == node) return true;
    }
    return false;
  }

  // True when b stands somewhere before a.
  static bool ListIsBehind(T* a, T* b) {
    if (!a || !b) return false;
    for (T* cur = Prev(a); cur; cur = Prev(cur)) {
      if (cur == b) return true;
    }
    return false;
  }

 private:
  static T*& Prev(T* n) { return static_cast<QVItemListNodeBase*>(n)->prev_; }
  static T*& Next(T* n) { return static_cast<QVItemListNodeBase*>(n)->next_; }
  static void LinkAfter(T*& head, T* node, T* after) {
    if (after) {
      T* follow = Next(after);
      Prev(node) = after;
      Next(node) = follow;
      Next(after) = node;
      if (follow) Prev(follow) = node;
    } else {
      Prev(node) = nullptr;
      Next(node) = head;
      if (head) Prev(head) = node;
    }
    if (!Prev(node)) head = node;
  }
  static void Unlink(T*& head, T* node) {
    T* p = Prev(node);
    T* n = Next(node);
    if (p) Next(p) = n;
    if (n) Prev(n) = p;
    if (head == node) head = n;
  }

  T* prev_ = nullptr;
  T* next_ = nullptr;
};

}  // namespace QVStandardCtrls
