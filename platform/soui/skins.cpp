#include "soui/skins.h"

#include <cmath>
#include <cstring>

#include "soui/slog.h"

namespace SOUI {
namespace {

// One attribute table per skin class: a handler returns false to reject the
// value. Names match without regard to case.
template <class T>
struct AttrEntry {
  const wchar_t* name;
  bool (*apply)(T* skin, const SStringW& value);
};

// S_OK when handled, E_FAIL when rejected, S_FALSE when the name is not in
// the table (the caller then asks its base class).
template <class T, size_t N>
HRESULT Dispatch(T* skin, const AttrEntry<T> (&table)[N], const SStringW& name, const SStringW& value) {
  for (const auto& e : table)
    if (EqualsNoCase(e.name, name)) return e.apply(skin, value) ? S_OK : E_FAIL;
  return S_FALSE;
}

bool ParseInt(const SStringW& v, int* out) {
  SStringW t(v);
  return StrToIntExW(t.Trim(), STIF_SUPPORT_HEX, out) != FALSE;
}

// Up to `n` comma-separated integers, filled in order (the toolkit's sscanf
// "%d,%d,%d,%d"): parsing stops at the first piece that is not a number.
int ParseIntList(const SStringW& v, int* out, int n) {
  const std::vector<SStringW> parts = SplitString(v, L',');
  int got = 0;
  for (const SStringW& p : parts) {
    if (got == n || !ParseInt(p, &out[got])) break;
    ++got;
  }
  return got;
}

COLORREF WithAlpha(COLORREF c, BYTE alpha) {
  return (c & 0x00FFFFFFu) | (static_cast<COLORREF>(GetAValue(c) * alpha / 255) << 24);
}

constexpr const wchar_t* kStateNames[SSkinColorRect::kStates] = {L"normal", L"hover", L"pushdown", L"disable"};

}  // namespace

// ---- SSkinObjBase ----

HRESULT SSkinObjBase::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  (void)loading;
  static const AttrEntry<SSkinObjBase> table[] = {
      {L"name", [](SSkinObjBase* s, const SStringW& v) { s->SetSkinName(v); return true; }},
      {L"alpha", [](SSkinObjBase* s, const SStringW& v) {
         int a;
         if (!ParseInt(v, &a)) return false;
         s->alpha_ = static_cast<BYTE>(std::max(0, std::min(255, a)));
         return true;
       }},
      {L"scale", [](SSkinObjBase* s, const SStringW& v) {
         int sc;
         if (!ParseInt(v, &sc) || sc <= 0) return false;
         s->SetScale(sc);
         return true;
       }},
      {L"enableColorize", [](SSkinObjBase*, const SStringW&) { return true; }},
      {L"filterLevel", [](SSkinObjBase*, const SStringW&) { return true; }},
  };
  const HRESULT hr = Dispatch(this, table, name, value);
  return hr == S_FALSE ? E_FAIL : hr;
}

void SSkinObjBase::LoadFromXml(pugi::xml_node decl, const ImageLoader& load_image,
                               const ColorResolver& resolve_color) {
  load_image_ = &load_image;
  resolve_color_ = resolve_color ? &resolve_color : nullptr;
  loading_name_ = XmlValue(XmlAttrNoCase(decl, L"name"));
  InitFromXml(decl);
  load_image_ = nullptr;
  resolve_color_ = nullptr;
  loading_name_.Empty();
}

IBitmapPtr SSkinObjBase::LoadImage(const SStringW& src) const {
  IBitmapPtr image = load_image_ ? (*load_image_)(src) : nullptr;
  if (!image) {
    SLOG(kLogWarn, "SOUI") << L"skin '" << loading_name_ << L"' (" << GetObjectClass() << L"): image '"
                           << src << L"' could not be loaded; the skin draws nothing";
  }
  return image;
}

bool SSkinObjBase::ParseColor(const SStringW& value, COLORREF* out) const {
  COLORREF c;
  const bool ok = resolve_color_ ? (*resolve_color_)(value, &c) : ParseColorLiteral(value, &c);
  if (ok) *out = c;
  return ok;
}

int SSkinObjBase::ScaleLength(int v, int to) const {
  const int r = static_cast<int>(std::lround(static_cast<double>(v) * to / scale_));
  return v > 0 ? std::max(1, r) : r;
}

// ---- SSkinColorRect ----

HRESULT SSkinColorRect::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  for (int i = 0; i < kStates; ++i) {
    COLORREF c = 0;
    if (EqualsNoCase(name, kStateNames[i])) {
      if (!ParseColor(value, &c)) return E_FAIL;
      SetColor(i, c);
      return S_OK;
    }
    if (EqualsNoCase(name, (SStringW(kStateNames[i]) + L"Border").c_str())) {
      if (!ParseColor(value, &c)) return E_FAIL;
      SetBorderColor(i, c);
      return S_OK;
    }
  }
  static const AttrEntry<SSkinColorRect> table[] = {
      {L"borderWidth", [](SSkinColorRect* s, const SStringW& v) {
         int w;
         if (!ParseInt(v, &w)) return false;
         s->SetBorderWidth(w);
         return true;
       }},
      {L"cornerRadius", [](SSkinColorRect* s, const SStringW& v) {
         int r[2];
         const int n = ParseIntList(v, r, 2);
         if (n == 0) return false;
         s->SetCornerRadius(POINT{r[0], n == 2 ? r[1] : r[0]});
         return true;
       }},
      {L"cornerPercent", [](SSkinColorRect* s, const SStringW& v) {
         int p;
         if (!ParseInt(v, &p)) return false;
         s->SetCornerPercent(p);
         return true;
       }},
  };
  const HRESULT hr = Dispatch(this, table, name, value);
  return hr == S_FALSE ? SSkinObjBase::SetAttribute(name, value, loading) : hr;
}

void SSkinColorRect::SetColor(int state, COLORREF color) {
  if (state < 0 || state >= kStates) return;
  colors_[state] = color;
  has_color_[state] = true;
}

void SSkinColorRect::SetBorderColor(int state, COLORREF color) {
  if (state < 0 || state >= kStates) return;
  borders_[state] = color;
  has_border_[state] = true;
}

int SSkinColorRect::GetStates() const {
  for (int i = kStates - 1; i > 0; --i)
    if (has_color_[i] || has_border_[i]) return i + 1;
  return 1;
}

void SSkinColorRect::DrawByIndex(IRenderTarget* rt, LPCRECT prc, int state, BYTE alpha) const {
  if (!rt || !prc) return;
  const CRect rc(prc);
  if (rc.IsRectEmpty()) return;
  if (state < 0 || state >= GetStates()) state = 0;
  const BYTE a = EffectiveAlpha(alpha);
  const POINT radius = corner_percent_ > 0
                           ? POINT{std::min(rc.Width(), rc.Height()) * corner_percent_ / 100,
                                   std::min(rc.Width(), rc.Height()) * corner_percent_ / 100}
                           : radius_;
  const bool round = radius.x > 0 && radius.y > 0;

  if (has_color_[state] || has_color_[0]) {
    const COLORREF fill = WithAlpha(has_color_[state] ? colors_[state] : colors_[0], a);
    if (round) {
      IBrushPtr old = rt->SelectBrush(rt->CreateSolidColorBrush(fill));
      rt->FillRoundRect(&rc, radius);
      rt->SelectBrush(old);
    } else {
      rt->FillSolidRect(&rc, fill);
    }
  }
  if ((has_border_[state] || has_border_[0]) && border_width_ > 0) {
    const COLORREF border = WithAlpha(has_border_[state] ? borders_[state] : borders_[0], a);
    IPenPtr old = rt->SelectPen(rt->CreatePen(PS_SOLID, border, border_width_));
    if (round) rt->DrawRoundRect(&rc, radius);
    else rt->DrawRectangle(&rc);
    rt->SelectPen(old);
  }
}

ISkinObjPtr SSkinColorRect::Scale(int scale) const {
  auto copy = std::make_shared<SSkinColorRect>(*this);
  copy->border_width_ = ScaleLength(border_width_, scale);
  copy->radius_ = POINT{ScaleLength(radius_.x, scale), ScaleLength(radius_.y, scale)};
  copy->SetScale(scale);
  return copy;
}

// ---- SSkinImgList ----

HRESULT SSkinImgList::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const AttrEntry<SSkinImgList> table[] = {
      {L"src", [](SSkinImgList* s, const SStringW& v) {
         s->image_ = s->LoadImage(v);
         return s->image_ != nullptr;
       }},
      {L"states", [](SSkinImgList* s, const SStringW& v) {
         int n;
         if (!ParseInt(v, &n) || n < 1) return false;
         s->frames_ = n;
         return true;
       }},
      {L"vertical", [](SSkinImgList* s, const SStringW& v) { s->vertical_ = ParseBool(v); return true; }},
      {L"tile", [](SSkinImgList* s, const SStringW& v) { s->tile_ = ParseBool(v); return true; }},
      {L"autoFit", [](SSkinImgList* s, const SStringW& v) { s->auto_fit_ = ParseBool(v); return true; }},
      {L"stateMap", [](SSkinImgList* s, const SStringW& v) {
         std::vector<int> map;
         for (const SStringW& p : SplitString(v, L'-')) {
           int f;
           if (!ParseInt(p, &f)) return false;
           map.push_back(f);
         }
         s->state_map_ = std::move(map);
         return true;
       }},
  };
  const HRESULT hr = Dispatch(this, table, name, value);
  return hr == S_FALSE ? SSkinObjBase::SetAttribute(name, value, loading) : hr;
}

int SSkinImgList::GetStates() const {
  return state_map_.empty() ? frames_ : static_cast<int>(state_map_.size());
}

SIZE SSkinImgList::GetSkinSize() const {
  if (!image_) return SIZE{0, 0};
  return vertical_ ? SIZE{image_->Width(), image_->Height() / frames_}
                   : SIZE{image_->Width() / frames_, image_->Height()};
}

CRect SSkinImgList::FrameRect(int state) const {
  if (state < 0 || state >= GetStates()) state = 0;
  int frame = state_map_.empty() ? state : state_map_[static_cast<size_t>(state)];
  if (frame < 0 || frame >= frames_) frame = 0;
  const SIZE sz = GetSkinSize();
  return vertical_ ? CRect(0, frame * sz.cy, sz.cx, (frame + 1) * sz.cy)
                   : CRect(frame * sz.cx, 0, (frame + 1) * sz.cx, sz.cy);
}

void SSkinImgList::DrawByIndex(IRenderTarget* rt, LPCRECT rc, int state, BYTE alpha) const {
  if (!rt || !rc || !image_) return;
  const CRect src = FrameRect(state);
  const ExpandMode mode = !auto_fit_ ? ExpandMode::None : tile_ ? ExpandMode::Tile : ExpandMode::Stretch;
  rt->DrawBitmap(rc, image_.get(), &src, mode, EffectiveAlpha(alpha));
}

void SSkinImgList::CopyImageScaled(SSkinImgList* to, int scale) const {
  if (!image_) return;
  const SIZE frame = GetSkinSize();
  const int fw = ScaleLength(frame.cx, scale), fh = ScaleLength(frame.cy, scale);
  if (fw <= 0 || fh <= 0) return;
  const int w = vertical_ ? fw : fw * frames_, h = vertical_ ? fh * frames_ : fh;
  std::vector<uint32_t> pixels(static_cast<size_t>(w) * static_cast<size_t>(h));
  for (int i = 0; i < frames_; ++i) {
    const CRect src = vertical_ ? CRect(0, i * frame.cy, frame.cx, (i + 1) * frame.cy)
                                : CRect(i * frame.cx, 0, (i + 1) * frame.cx, frame.cy);
    const IBitmapPtr part = ResizeBitmap(*image_, &src, fw, fh);
    if (!part) return;
    const int ox = vertical_ ? 0 : i * fw, oy = vertical_ ? i * fh : 0;
    for (int y = 0; y < fh; ++y)
      std::memcpy(&pixels[static_cast<size_t>((oy + y) * w + ox)], part->Bits() + y * part->Stride(),
                  static_cast<size_t>(fw) * 4);
  }
  to->image_ = CreateBitmapFromBits(w, h, reinterpret_cast<const unsigned char*>(pixels.data()), w * 4);
}

ISkinObjPtr SSkinImgList::Scale(int scale) const {
  auto copy = std::make_shared<SSkinImgList>(*this);
  CopyImageScaled(copy.get(), scale);
  copy->SetScale(scale);
  return copy;
}

// ---- SSkinImgCenter ----

void SSkinImgCenter::DrawByIndex(IRenderTarget* rt, LPCRECT prc, int state, BYTE alpha) const {
  if (!rt || !prc || !image_) return;
  const CRect rc(prc), src = FrameRect(state);
  CRect dst(CPoint(rc.left + (rc.Width() - src.Width()) / 2, rc.top + (rc.Height() - src.Height()) / 2),
            src.Size());
  const bool overflow = (dst & rc) != dst;
  if (overflow) rt->PushClipRect(&rc);
  rt->DrawBitmap(&dst, image_.get(), &src, ExpandMode::None, EffectiveAlpha(alpha));
  if (overflow) rt->PopClip();
}

ISkinObjPtr SSkinImgCenter::Scale(int scale) const {
  auto copy = std::make_shared<SSkinImgCenter>(*this);
  CopyImageScaled(copy.get(), scale);
  copy->SetScale(scale);
  return copy;
}

// ---- SSkinImgFrame ----

HRESULT SSkinImgFrame::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const AttrEntry<SSkinImgFrame> table[] = {
      {L"margin", [](SSkinImgFrame* s, const SStringW& v) {
         int m[4];
         const int n = ParseIntList(v, m, 4);
         LONG* edges[] = {&s->margins_.left, &s->margins_.top, &s->margins_.right, &s->margins_.bottom};
         for (int i = 0; i < n; ++i) *edges[i] = m[i];
         return n > 0;
       }},
      {L"left", [](SSkinImgFrame* s, const SStringW& v) { int m; return ParseInt(v, &m) && (s->margins_.left = m, true); }},
      {L"top", [](SSkinImgFrame* s, const SStringW& v) { int m; return ParseInt(v, &m) && (s->margins_.top = m, true); }},
      {L"right", [](SSkinImgFrame* s, const SStringW& v) { int m; return ParseInt(v, &m) && (s->margins_.right = m, true); }},
      {L"bottom", [](SSkinImgFrame* s, const SStringW& v) { int m; return ParseInt(v, &m) && (s->margins_.bottom = m, true); }},
      {L"margin-x", [](SSkinImgFrame* s, const SStringW& v) {
         int m;
         if (!ParseInt(v, &m)) return false;
         s->margins_.left = s->margins_.right = m;
         return true;
       }},
      {L"margin-y", [](SSkinImgFrame* s, const SStringW& v) {
         int m;
         if (!ParseInt(v, &m)) return false;
         s->margins_.top = s->margins_.bottom = m;
         return true;
       }},
  };
  const HRESULT hr = Dispatch(this, table, name, value);
  return hr == S_FALSE ? SSkinImgList::SetAttribute(name, value, loading) : hr;
}

void SSkinImgFrame::DrawByIndex(IRenderTarget* rt, LPCRECT rc, int state, BYTE alpha) const {
  if (!rt || !rc || !image_) return;
  const CRect src = FrameRect(state);
  rt->DrawBitmap9Patch(rc, image_.get(), &src, &margins_, tile_ ? ExpandMode::Tile : ExpandMode::Stretch,
                       EffectiveAlpha(alpha));
}

ISkinObjPtr SSkinImgFrame::Scale(int scale) const {
  auto copy = std::make_shared<SSkinImgFrame>(*this);
  CopyImageScaled(copy.get(), scale);
  copy->margins_ = CRect(ScaleLength(margins_.left, scale), ScaleLength(margins_.top, scale),
                         ScaleLength(margins_.right, scale), ScaleLength(margins_.bottom, scale));
  copy->SetScale(scale);
  return copy;
}

// ---- registration ----

namespace {

template <class T>
SkinCreator CreatorFor(SResProvider* res) {
  return [res](pugi::xml_node decl, const ImageLoader& load) -> ISkinObjPtr {
    auto skin = std::make_shared<T>();
    const SSkinObjBase::ColorResolver resolve = [res](const SStringW& v, COLORREF* out) {
      return res->ResolveColor(v, out);
    };
    skin->LoadFromXml(decl, load, resolve);
    return skin;
  };
}

}  // namespace

void RegisterBuiltinSkinTypes(SResProvider& res) {
  res.RegisterSkinType(SSkinColorRect::GetClassName(), CreatorFor<SSkinColorRect>(&res));
  res.RegisterSkinType(SSkinImgList::GetClassName(), CreatorFor<SSkinImgList>(&res));
  res.RegisterSkinType(SSkinImgCenter::GetClassName(), CreatorFor<SSkinImgCenter>(&res));
  res.RegisterSkinType(SSkinImgFrame::GetClassName(), CreatorFor<SSkinImgFrame>(&res));
}

}  // namespace SOUI
