#include "soui/attr_names.h"

#include <string>
#include <vector>

namespace SOUI {

namespace internal {
const SStringW* g_interned = nullptr;
size_t g_interned_bytes = 0;
}  // namespace internal

namespace {

// A name is read as four 64-bit words, zero padded: it is found again by a
// hash of those words and compared whole with a few word compares, instead
// of byte by byte. Names hold no NUL, so equal words mean equal names.
// Two arrays, so that a kept name's slot is its offset in the wide one.
struct InternTable {
  static constexpr size_t kMaxNameBytes = 32, kSlots = 1024;  // slots: a power of two
  struct Key {
    uint64_t w[4];
    bool operator==(const Key& o) const {
      return ((w[0] ^ o.w[0]) | (w[1] ^ o.w[1]) | (w[2] ^ o.w[2]) | (w[3] ^ o.w[3])) == 0;
    }
  };
  InternTable() {
    keys.reserve(kMaxInternedNames);
    wide.reserve(kMaxInternedNames);  // never reallocated: references stay valid
    internal::g_interned = wide.data();
    slots.resize(kSlots);
  }
  static size_t SlotOf(const Key& k) {
    uint64_t h = k.w[0] * 0x9E3779B97F4A7C15ull ^ k.w[1] * 0xC2B2AE3D27D4EB4Full ^
                 k.w[2] * 0x165667B19E3779F9ull ^ k.w[3] * 0xD6E8FEB86659FD93ull;
    h ^= h >> 32;
    h ^= h >> 15;
    return static_cast<size_t>(h) & (kSlots - 1);
  }
  std::vector<Key> keys;
  std::vector<SStringW> wide;
  std::vector<uint16_t> slots;  // index + 1 into the arrays, 0 when free
};

InternTable& Table() {
  static InternTable table;
  return table;
}

}  // namespace

namespace {

// Keeps a new spelling in slot i, or widens it into *spare once the table is
// full. Out of line: the lookup above stays small.
__attribute__((noinline)) const SStringW& Keep(const char* utf8, const InternTable::Key& key, size_t i,
                                               SStringW* spare) {
  InternTable& t = Table();
  if (t.wide.size() >= static_cast<size_t>(kMaxInternedNames)) return *spare = SStringW::FromUtf8(utf8);
  t.keys.push_back(key);
  t.wide.push_back(SStringW::FromUtf8(utf8));
  t.slots[i] = static_cast<uint16_t>(t.wide.size());
  internal::g_interned_bytes = t.wide.size() * sizeof(SStringW);
  return t.wide.back();
}

__attribute__((noinline)) const SStringW& Widen(const char* utf8, SStringW* spare) {
  return *spare = SStringW::FromUtf8(utf8);
}

}  // namespace

const SStringW& InternName(const char* utf8, SStringW* spare, size_t* bytes) {
  if (!utf8) utf8 = "";
  const size_t len = std::strlen(utf8);
  if (bytes) *bytes = len;
  if (len > InternTable::kMaxNameBytes) return Widen(utf8, spare);
  InternTable::Key key{};
  std::memcpy(key.w, utf8, len);
  InternTable& t = Table();
  size_t i = InternTable::SlotOf(key);
  for (; t.slots[i]; i = (i + 1) & (InternTable::kSlots - 1)) {
    if (t.keys[t.slots[i] - 1u] == key) return t.wide[t.slots[i] - 1u];
  }
  return Keep(utf8, key, i, spare);
}

const SStringW& RecentNames::Intern(size_t place, const char* utf8, SStringW* spare, size_t* bytes) {
  if (place >= kPlaces || !utf8) return InternName(utf8, spare, bytes);
  Seen& s = seen_[place];
  if (s.name) {
    // Stops at the first difference, so never reads past utf8's end.
    size_t i = 0;
    while (i < s.len && utf8[i] == s.text[i]) ++i;
    if (i == s.len && utf8[i] == '\0') {
      if (bytes) *bytes = i;
      return *s.name;
    }
  }
  size_t len = 0;
  const SStringW& name = InternName(utf8, spare, &len);
  if (bytes) *bytes = len;
  if (InternedSlot(name) >= 0 && len < sizeof(s.text)) {
    std::memcpy(s.text, utf8, len);
    s.len = len;
    s.name = &name;
  }
  return name;
}

}  // namespace SOUI
