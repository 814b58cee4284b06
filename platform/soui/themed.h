// Theme-bound values: a colour, font or skin given as text (a reference such
// as "@color\table\name", a font description, a skin name), resolved against
// the application's resources and re-resolved when the theme or the scale
// changes. This is what lets a host switch light/dark at run time.
#pragma once

#include <memory>

#include "soui/render.h"
#include "soui/skin.h"

namespace SOUI {

class ThemedColor {
 public:
  // Accepts a colour value or reference; false (and no change) when it does
  // not resolve.
  bool Set(const SStringW& text);
  void SetValue(COLORREF value);
  void Clear();
  bool IsSet() const { return set_; }
  // CR_INVALID when unset.
  COLORREF Get() const;
  const SStringW& Source() const { return src_; }

 private:
  SStringW src_;
  bool set_ = false;
  bool literal_ = false;
  mutable COLORREF value_ = CR_INVALID;
  mutable unsigned gen_ = 0;
};

class ThemedFont {
 public:
  // A font description ("size:12dp,bold:1"); false when it does not parse.
  bool Set(const SStringW& desc);
  void Clear();
  bool IsSet() const { return set_; }
  const SStringW& Source() const { return src_; }
  // The font at a scale, built on the theme's default font.
  IFontPtr Get(int scale) const;

 private:
  SStringW src_;
  bool set_ = false;
  mutable IFontPtr font_;
  mutable int scale_ = 0;
  mutable unsigned gen_ = 0;
};

class ThemedSkin {
 public:
  ThemedSkin() = default;
  ThemedSkin(const ThemedSkin& other);
  ThemedSkin& operator=(const ThemedSkin& other);
  ThemedSkin(ThemedSkin&&) noexcept = default;
  ThemedSkin& operator=(ThemedSkin&&) noexcept = default;
  ~ThemedSkin();

  // A skin name; an empty name clears. Unknown names are kept (they may
  // appear with another theme) and resolve to null.
  void Set(const SStringW& name);
  void SetSkin(ISkinObjPtr skin);
  void Clear();
  bool IsSet() const { return state_ != nullptr; }
  const SStringW& Source() const;
  ISkinObj* Get(int scale) const;
  ISkinObjPtr GetPtr(int scale) const;

 private:
  // Out of line: every window and many controls carry a skin slot, and
  // most leave it empty.
  struct State {
    SStringW src;
    ISkinObjPtr fixed;
    ISkinObjPtr skin;
    int scale = 0;
    unsigned gen = 0;
  };
  std::unique_ptr<State> state_;
};

}  // namespace SOUI
