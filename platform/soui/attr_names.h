// Interned attribute names: each spelling a layout uses is widened once and
// kept for the life of the process, so that what an attribute dispatch works
// out from a name can be remembered per spelling (NameMemo) instead of being
// compared again at every class level of every window.
#pragma once

#include <cstdint>
#include <cstring>

#include "soui/sstring.h"

namespace SOUI {

// How many spellings are kept. A hostile document cannot grow the table past
// it; later spellings still work, only without being remembered.
constexpr int kMaxInternedNames = 512;

// The kept wide form of a UTF-8 name (attribute name or tag), and in *bytes
// (when given) its length. A name of over 32 bytes, or any new one once the
// table is full, is widened into *spare, which is returned instead. Null
// reads as "".
const SStringW& InternName(const char* utf8, SStringW* spare, size_t* bytes = nullptr);

// InternName for names met in the same order again and again (the
// attributes of a layout's elements, position by position): a place
// remembers the name it saw last, and a repeat is recognised by comparing
// bytes with it instead of hashing. Places are 0 .. kPlaces - 1; any other
// place interns as usual.
class RecentNames {
 public:
  static constexpr size_t kPlaces = 8;
  const SStringW& Intern(size_t place, const char* utf8, SStringW* spare, size_t* bytes);

 private:
  struct Seen {
    const SStringW* name = nullptr;  // interned; null while nothing is seen
    size_t len = 0;
    char text[33] = {};
  };
  Seen seen_[kPlaces];
};

namespace internal {
// Where the kept names are: an array that is never moved, and its size in bytes.
extern const SStringW* g_interned;
extern size_t g_interned_bytes;
}  // namespace internal

// The slot of a string InternName kept (0 .. kMaxInternedNames - 1); -1 for
// any other string, an equal copy included.
inline int InternedSlot(const SStringW& name) {
  // By address: only the kept objects themselves have a slot. An address
  // below the array wraps around to a large offset.
  const uintptr_t offset = reinterpret_cast<uintptr_t>(&name) - reinterpret_cast<uintptr_t>(internal::g_interned);
  if (offset >= internal::g_interned_bytes || offset % sizeof(SStringW) != 0) return -1;
  return static_cast<int>(offset / sizeof(SStringW));
}

// A small answer (0..254) about a name, worked out by compute(name) once per
// interned spelling and remembered; any other string is asked every time, so
// that a host's own string and a layout's name act alike. Letter case is
// whatever compute makes of it: "Pos" and "pos" are separate spellings.
class NameMemo {
 public:
  template <class Fn>
  uint8_t Get(const SStringW& name, Fn&& compute) {
    const int slot = InternedSlot(name);
    if (slot < 0) return compute(name);
    uint8_t& known = answers_[slot];
    if (!known) known = static_cast<uint8_t>(compute(name) + 1);
    return static_cast<uint8_t>(known - 1);
  }
  // Forgets every answer when the question changes (a memo shared by
  // callers that pass different tables).
  void KeyTo(const void* a, const void* b) {
    if (a == key_[0] && b == key_[1]) return;
    key_[0] = a;
    key_[1] = b;
    std::memset(answers_, 0, sizeof(answers_));
  }

 private:
  const void* key_[2] = {};
  uint8_t answers_[kMaxInternedNames] = {};  // answer + 1; 0 while not worked out
};

}  // namespace SOUI
