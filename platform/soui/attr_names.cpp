#include "soui/attr_names.h"

#include <string>
#include <vector>

namespace SOUI {

namespace internal {
const SStringW* g_interned = nullptr;
size_t g_interned_bytes = 0;
}  // namespace internal

namespace {

// Found again by a hash taken while the name's length is measured. Two
// arrays, so that a kept name's slot is its offset in the wide one.
struct InternTable {
  static constexpr size_t kMaxNameBytes = 32, kSlots = 1024;  // slots: a power of two
  InternTable() {
    utf8.reserve(kMaxInternedNames);  // never reallocated: references stay valid
    wide.reserve(kMaxInternedNames);
    internal::g_interned = wide.data();
    slots.resize(kSlots);
  }
  std::vector<std::string> utf8;
  std::vector<SStringW> wide;
  std::vector<uint16_t> slots;  // index + 1 into the arrays, 0 when free
};

InternTable& Table() {
  static InternTable table;
  return table;
}

}  // namespace

const SStringW& InternName(const char* utf8, SStringW* spare, size_t* bytes) {
  if (!utf8) utf8 = "";
  InternTable& t = Table();
  uint32_t h = 2166136261u;  // FNV-1a
  size_t len = 0;
  for (; utf8[len]; ++len) h = (h ^ static_cast<unsigned char>(utf8[len])) * 16777619u;
  if (bytes) *bytes = len;
  if (len > InternTable::kMaxNameBytes) return *spare = SStringW::FromUtf8(utf8);
  size_t i = h & (InternTable::kSlots - 1);
  for (; t.slots[i]; i = (i + 1) & (InternTable::kSlots - 1)) {
    const std::string& kept = t.utf8[t.slots[i] - 1u];
    if (kept.size() == len && std::memcmp(kept.data(), utf8, len) == 0) return t.wide[t.slots[i] - 1u];
  }
  if (t.wide.size() >= static_cast<size_t>(kMaxInternedNames)) return *spare = SStringW::FromUtf8(utf8);
  t.utf8.emplace_back(utf8, len);
  t.wide.push_back(SStringW::FromUtf8(utf8));
  t.slots[i] = static_cast<uint16_t>(t.wide.size());
  internal::g_interned_bytes = t.wide.size() * sizeof(SStringW);
  return t.wide.back();
}

}  // namespace SOUI
