#include "soui/themed.h"

#include <string>
#include <unordered_map>

#include "soui/sapp.h"
#include "soui/slog.h"

namespace SOUI {
namespace {

SResProvider* Res() {
  SApplication* app = SApplication::getSingletonPtr();
  return app ? &app->GetResProvider() : nullptr;
}

unsigned CurrentGeneration() {
  SResProvider* res = Res();
  return res ? res->Generation() : 0;
}

}  // namespace

bool ThemedColor::Set(const SStringW& text) {
  COLORREF value = CR_INVALID;
  if (ParseColorLiteral(text, &value)) {
    literal_ = true;
  } else {
    SResProvider* res = Res();
    if (!res || !res->ResolveColor(text, &value)) return false;
    literal_ = false;
  }
  src_ = text;
  set_ = true;
  value_ = value;
  gen_ = CurrentGeneration();
  return true;
}

void ThemedColor::SetValue(COLORREF value) {
  src_.Empty();
  literal_ = true;
  set_ = true;
  value_ = value;
}

void ThemedColor::Clear() {
  src_.Empty();
  set_ = false;
  literal_ = false;
  value_ = CR_INVALID;
}

COLORREF ThemedColor::Get() const {
  if (!set_) return CR_INVALID;
  if (!literal_) {
    const unsigned gen = CurrentGeneration();
    if (gen != gen_) {
      SResProvider* res = Res();
      COLORREF v;
      if (res && res->ResolveColor(src_, &v)) value_ = v;  // keep the old value if it vanished
      gen_ = gen;
    }
  }
  return value_;
}

bool ThemedFont::Set(const SStringW& desc) {
  // Whether a description parses does not depend on the theme; a layout
  // repeats a few of them many times, so the answer is remembered.
  static thread_local std::unordered_map<std::wstring, bool> parses;
  auto known = parses.find(desc.str());
  if (known == parses.end()) {
    if (parses.size() >= 1024) parses.clear();
    FontDesc probe;
    known = parses.emplace(desc.str(), ParseFontDesc(desc, 100, FontDesc(), &probe)).first;
  }
  if (!known->second) return false;
  src_ = desc;
  set_ = true;
  font_.reset();
  return true;
}

void ThemedFont::Clear() {
  src_.Empty();
  set_ = false;
  font_.reset();
}

IFontPtr ThemedFont::Get(int scale) const {
  if (!set_) return nullptr;
  const unsigned gen = CurrentGeneration();
  if (!font_ || scale_ != scale || gen_ != gen) {
    SResProvider* res = Res();
    font_ = res ? res->GetFont(src_, scale) : nullptr;
    scale_ = scale;
    gen_ = gen;
  }
  return font_;
}

void ThemedSkin::Set(const SStringW& name) {
  src_ = name;
  fixed_.reset();
  skin_.reset();
  gen_ = 0;
}

void ThemedSkin::SetSkin(ISkinObjPtr skin) {
  src_.Empty();
  fixed_ = std::move(skin);
  skin_.reset();
}

void ThemedSkin::Clear() {
  src_.Empty();
  fixed_.reset();
  skin_.reset();
}

ISkinObjPtr ThemedSkin::GetPtr(int scale) const {
  if (fixed_) return fixed_;
  if (src_.IsEmpty()) return nullptr;
  const unsigned gen = CurrentGeneration();
  if (gen_ != gen || scale_ != scale) {
    SResProvider* res = Res();
    skin_ = res ? res->GetSkin(src_, scale) : nullptr;
    scale_ = scale;
    gen_ = gen;
    // Kept, as another theme may have it; said once, as this one has not.
    // The toolkit's own "_skin.sys." defaults fall back to drawing by hand.
    SApplication* app = SApplication::getSingletonPtr();
    if (!skin_ && res && src_.Find(L"_skin.sys.") != 0 && app->FirstTimeAt(L"skin|" + src_.str())) {
      SLOG(kLogWarn, "SOUI") << L"skin '" << src_ << L"' is not in the theme; nothing drawn";
    }
  }
  return skin_;
}

ISkinObj* ThemedSkin::Get(int scale) const { return GetPtr(scale).get(); }

}  // namespace SOUI
