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

ThemedSkin::ThemedSkin(const ThemedSkin& other)
    : state_(other.state_ ? std::make_unique<State>(*other.state_) : nullptr) {}

ThemedSkin& ThemedSkin::operator=(const ThemedSkin& other) {
  if (this != &other) state_ = other.state_ ? std::make_unique<State>(*other.state_) : nullptr;
  return *this;
}

ThemedSkin::~ThemedSkin() = default;

void ThemedSkin::Set(const SStringW& name) {
  if (name.IsEmpty()) {
    state_.reset();
    return;
  }
  if (state_) *state_ = State();
  else state_ = std::make_unique<State>();
  state_->src = name;
}

void ThemedSkin::SetSkin(ISkinObjPtr skin) {
  if (!skin) {
    state_.reset();
    return;
  }
  if (state_) *state_ = State();
  else state_ = std::make_unique<State>();
  state_->fixed = std::move(skin);
}

void ThemedSkin::Clear() { state_.reset(); }

const SStringW& ThemedSkin::Source() const {
  static const SStringW kNone;
  return state_ ? state_->src : kNone;
}

ISkinObjPtr ThemedSkin::GetPtr(int scale) const {
  if (!state_) return nullptr;
  State& s = *state_;
  if (s.fixed) return s.fixed;
  const unsigned gen = CurrentGeneration();
  if (s.gen != gen || s.scale != scale) {
    SResProvider* res = Res();
    s.skin = res ? res->GetSkin(s.src, scale) : nullptr;
    s.scale = scale;
    s.gen = gen;
    // Kept, as another theme may have it; said once, as this one has not.
    // The toolkit's own "_skin.sys." defaults fall back to drawing by hand.
    SApplication* app = SApplication::getSingletonPtr();
    if (!s.skin && res && s.src.Find(L"_skin.sys.") != 0 && app->FirstTimeAt(L"skin|" + s.src.str())) {
      SLOG(kLogWarn, "SOUI") << L"skin '" << s.src << L"' is not in the theme; nothing drawn";
    }
  }
  return s.skin;
}

ISkinObj* ThemedSkin::Get(int scale) const { return GetPtr(scale).get(); }

}  // namespace SOUI
