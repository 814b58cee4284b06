// The built-in skin types a theme declares inside <skin>:
//
//   <colorrect name="bg" normal="#FFFFFF" hover="#EEEEEE" pushdown="#DDDDDD"
//              disable="#F0F0F0" normalBorder="#CCCCCC" borderWidth="1" cornerRadius="4"/>
//   <imglist   name="btn" src="img/btn.png" states="4" vertical="0" tile="0" stateMap="0-1-1-2"/>
//   <imgCenter name="icon" src="img/icon.png"/>                 (natural size, centred)
//   <imgframe  name="panel" src="img/panel.png" margin="4,4,4,4" states="2"/>
//
// Every skin also takes alpha (0-255) and scale (the percent its images were
// made for, 100 by default); enableColorize and filterLevel are accepted and
// have no effect. A state index outside 0..GetStates()-1 draws state 0, for
// every skin type: a hovered button with a one-frame skin still shows it.
#pragma once

#include <functional>
#include <vector>

#include "soui/resources.h"
#include "soui/skin.h"

namespace SOUI {

// What the skins share: the common attributes and the loading hooks.
class SSkinObjBase : public ISkinObj {
 public:
  using ColorResolver = std::function<bool(const SStringW& text, COLORREF* out)>;

  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;

  // Applies the declaration's attributes. "src" goes through load_image and
  // colours through resolve_color (both only during this call); a null
  // resolver accepts literals only (ParseColorLiteral).
  void LoadFromXml(pugi::xml_node decl, const ImageLoader& load_image, const ColorResolver& resolve_color);

  BYTE GetAlpha() const { return alpha_; }
  void SetAlpha(BYTE alpha) { alpha_ = alpha; }
  // Declares the scale (percent) the skin's pixels were made for.
  void SetScale(int scale) { scale_ = scale > 0 ? scale : 100; }

 protected:
  // A colour attribute value; false leaves *out unchanged.
  bool ParseColor(const SStringW& value, COLORREF* out) const;
  // The image for a "src" value; logs a warning naming the skin when it
  // cannot be had (missing file, not a PNG), once, as the skin loads.
  IBitmapPtr LoadImage(const SStringW& src) const;
  // The skin's alpha combined with the alpha of one draw.
  BYTE EffectiveAlpha(BYTE alpha) const { return static_cast<BYTE>(alpha_ * alpha / 255); }
  // A length of this skin at scale `to`, rounded; at least 1 when it was.
  int ScaleLength(int v, int to) const;

 private:
  BYTE alpha_ = 0xFF;
  const ImageLoader* load_image_ = nullptr;
  SStringW loading_name_;  // the declaration's name while it loads
  const ColorResolver* resolve_color_ = nullptr;
};

// Flat colours per state with optional border and rounded corners.
// GetStates() is one past the last state that has a colour or border colour
// of its own; a state without a colour uses the normal one. Size is 0x0.
class SSkinColorRect : public SSkinObjBase {
  SOUI_CLASS_NAME_EX(SSkinColorRect, ISkinObj, L"colorrect")
 public:
  static constexpr int kStates = 4;  // normal, hover, pushdown, disable

  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;
  void DrawByIndex(IRenderTarget* rt, LPCRECT rc, int state, BYTE alpha = 0xFF) const override;
  SIZE GetSkinSize() const override { return SIZE{0, 0}; }
  int GetStates() const override;
  // Border width and corner radii scale with the copy; colours do not change.
  ISkinObjPtr Scale(int scale) const override;

  void SetColor(int state, COLORREF color);
  void SetBorderColor(int state, COLORREF color);
  void SetBorderWidth(int width) { border_width_ = std::max(0, width); }
  void SetCornerRadius(POINT radius) { radius_ = radius; }
  // Radius as a percentage (0-50) of the shorter side of the drawn rectangle.
  void SetCornerPercent(int percent) { corner_percent_ = std::max(0, std::min(50, percent)); }

 private:
  COLORREF colors_[kStates] = {};
  COLORREF borders_[kStates] = {};
  bool has_color_[kStates] = {};
  bool has_border_[kStates] = {};
  int border_width_ = 1;
  POINT radius_{0, 0};
  int corner_percent_ = 0;
};

// Frames side by side (or stacked with vertical=1) in one image; frame i is
// state i unless stateMap="a-b-c" maps state i to frame a_i, in which case
// GetStates() is the map's length. A map entry naming a missing frame draws
// frame 0. GetSkinSize() is one frame: the image size divided by states.
class SSkinImgList : public SSkinObjBase {
  SOUI_CLASS_NAME_EX(SSkinImgList, ISkinObj, L"imglist")
 public:
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;
  void DrawByIndex(IRenderTarget* rt, LPCRECT rc, int state, BYTE alpha = 0xFF) const override;
  SIZE GetSkinSize() const override;
  int GetStates() const override;
  // Each frame is resampled on its own, so frames never bleed into each other.
  ISkinObjPtr Scale(int scale) const override;

  void SetImage(IBitmapPtr image) { image_ = std::move(image); }
  const IBitmapPtr& GetImage() const { return image_; }
  void SetFrames(int frames, bool vertical) { frames_ = std::max(1, frames); vertical_ = vertical; }
  void SetTile(bool tile) { tile_ = tile; }
  void SetAutoFit(bool fit) { auto_fit_ = fit; }
  void SetStateMap(std::vector<int> map) { state_map_ = std::move(map); }

 protected:
  // The image rectangle of the frame shown for `state`.
  CRect FrameRect(int state) const;
  void CopyImageScaled(SSkinImgList* to, int scale) const;

  IBitmapPtr image_;
  int frames_ = 1;
  bool vertical_ = false;
  bool tile_ = false;
  bool auto_fit_ = true;  // false: natural size at the top-left corner
  std::vector<int> state_map_;
};

// An imglist drawn at natural size in the middle of the rectangle.
class SSkinImgCenter : public SSkinImgList {
  SOUI_CLASS_NAME_EX(SSkinImgCenter, SSkinImgList, L"imgCenter")
 public:
  void DrawByIndex(IRenderTarget* rt, LPCRECT rc, int state, BYTE alpha = 0xFF) const override;
  ISkinObjPtr Scale(int scale) const override;
};

// A nine-patch imglist: the margins of each frame keep their size and the
// rest stretches (or tiles with tile=1). margin="l,t,r,b" fills edges in that
// order, so margin="3" sets only the left one (the toolkit reads it so);
// left/top/right/bottom, margin-x (left and right) and margin-y set edges alone.
class SSkinImgFrame : public SSkinImgList {
  SOUI_CLASS_NAME_EX(SSkinImgFrame, SSkinImgList, L"imgframe")
 public:
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;
  void DrawByIndex(IRenderTarget* rt, LPCRECT rc, int state, BYTE alpha = 0xFF) const override;
  // Margins scale with the image.
  ISkinObjPtr Scale(int scale) const override;

  void SetMargins(const RECT& margins) { margins_ = margins; }
  const CRect& GetMargins() const { return margins_; }

 private:
  CRect margins_;
};

// Registers colorrect, imglist, imgCenter and imgframe. Colour attributes
// accept literals and the provider's colour references.
void RegisterBuiltinSkinTypes(SResProvider& res);

}  // namespace SOUI
