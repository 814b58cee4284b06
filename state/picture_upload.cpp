#include "state/picture_upload.h"

#include <algorithm>

#include "qvhost/qvlog.h"
#include "soui/sapp.h"
#include "state/state_common.h"

namespace QVStandardCtrls {

using SOUI::CPoint;
using SOUI::CRect;
using SOUI::CSize;
using SOUI::SStringW;

namespace {

constexpr int kRadiusDp = 4;
constexpr int kRemoveDp = 18;
constexpr int kInsetDp = 6;
constexpr UINT kCentred = SOUI::DT_SINGLELINE | SOUI::DT_CENTER | SOUI::DT_VCENTER | SOUI::DT_NOPREFIX;

int Dp(int v, int scale) { return v * scale / 100; }

}  // namespace

QVPictureUploadCtrl::QVPictureUploadCtrl() {
  GetEventSet()->addEvent(EventQVPictureUploadRetry::EventID, EventQVPictureUploadRetry::EventName());
  GetEventSet()->addEvent(EventQVPictureUploadChoose::EventID, EventQVPictureUploadChoose::EventName());
  GetEventSet()->addEvent(EventQVPictureUploadRemove::EventID, EventQVPictureUploadRemove::EventName());
  scrim_.Set(L"@color\\style_qv_state\\scrim");
  on_scrim_.Set(L"@color\\style_skin_qv_text\\text_white");
  ApplyStyle(FindQVPictureUploadCtrlStyle(L"PU1"));
}

HRESULT QVPictureUploadCtrl::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<QVPictureUploadCtrl> kAttrs[] = {
      {L"qvstyle", &QVPictureUploadCtrl::OnAttrQVStyle},
      {L"hinttext", &QVPictureUploadCtrl::OnAttrText<&QVPictureUploadCtrl::hint_text_>},
      {L"failtext", &QVPictureUploadCtrl::OnAttrText<&QVPictureUploadCtrl::fail_text_>},
      {L"retrytext", &QVPictureUploadCtrl::OnAttrText<&QVPictureUploadCtrl::retry_text_>},
      {L"picture", &QVPictureUploadCtrl::OnAttrPicture},
  };
  static const QVAdmittedAttrs kAdmitted = {L"margin"};
  return QVDispatchAttribute<QVPictureUploadCtrl, SOUI::SWindow>(this, kAttrs, &kAdmitted, name, value, loading);
}

HRESULT QVPictureUploadCtrl::OnAttrQVStyle(const SStringW& value, BOOL) {
  QVPictureUploadCtrlStylePtr rec = FindQVPictureUploadCtrlStyle(value);
  if (!rec) {
    QVLogBadValue(this, L"qvstyle", value);
    return S_OK;
  }
  ApplyStyle(rec);
  return S_OK;
}

HRESULT QVPictureUploadCtrl::OnAttrPicture(const SStringW& value, BOOL) {
  if (value.IsEmpty()) ClearPicture();
  else SetPictureFile(value);
  return S_OK;
}

void QVPictureUploadCtrl::ApplyStyle(const QVPictureUploadCtrlStylePtr& rec) {
  if (!rec) return;
  style_info_ = rec;
  bkgnd_.Set(rec->bkgnd);
  border_.Set(rec->border);
  border_hover_.Set(rec->border_hover);
  accent_.Set(rec->accent);
  track_.Set(rec->track);
  error_.Set(rec->error);
  SWindow::SetAttribute(L"font", rec->font, FALSE);
  SWindow::SetAttribute(L"colorText", rec->text_color, FALSE);
  RequestRelayout();
  Invalidate();
}

// ---- the upload ---------------------------------------------------------------------------

bool QVPictureUploadCtrl::LoadPicture(const SStringW& file) {
  file_ = file;
  picture_.reset();
  SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr();
  SOUI::IRenderFactory* factory = app ? app->GetRenderFactory() : nullptr;
  if (factory && !file.IsEmpty()) picture_ = factory->LoadBitmapFromFile(file);
  if (picture_ && picture_->Width() > 0 && picture_->Height() > 0) return true;
  picture_.reset();
  QVLOG(QV_LOG_WARN, "COMMON") << GetObjectClass() << L" '" << GetName() << L"': picture \"" << file
                               << L"\" is missing or not a PNG; shown as failed";
  SetUploadState(QVPictureUpload_Failed);
  return false;
}

bool QVPictureUploadCtrl::BeginUpload(const SStringW& file) {
  if (!LoadPicture(file)) return false;
  progress_ = 0;
  SetUploadState(QVPictureUpload_Uploading);
  return true;
}

void QVPictureUploadCtrl::SetUploadProgress(int percent) {
  percent = std::clamp(percent, 0, 100);
  if (percent == progress_) return;
  progress_ = percent;
  if (state_ == QVPictureUpload_Uploading) Invalidate();
}

void QVPictureUploadCtrl::FinishUpload() {
  if (!picture_) {
    SetUploadState(QVPictureUpload_Failed);
    return;
  }
  progress_ = 100;
  SetUploadState(QVPictureUpload_Done);
}

void QVPictureUploadCtrl::FailUpload() { SetUploadState(QVPictureUpload_Failed); }

bool QVPictureUploadCtrl::SetPictureFile(const SStringW& file) {
  if (!LoadPicture(file)) return false;
  progress_ = 100;
  SetUploadState(QVPictureUpload_Done);
  return true;
}

void QVPictureUploadCtrl::ClearPicture() {
  picture_.reset();
  file_.Empty();
  progress_ = 0;
  SetUploadState(QVPictureUpload_Empty);
}

void QVPictureUploadCtrl::SetUploadState(EnQVPictureUploadState state) {
  pressed_ = Part::kNone;
  if (state == state_) return;
  state_ = state;
  Invalidate();
}

// ---- geometry ------------------------------------------------------------------------------

CSize QVPictureUploadCtrl::MeasureContent(int width) {
  (void)width;
  const int scale = GetScale();
  return style_info_ ? CSize(Dp(style_info_->width_dp, scale), Dp(style_info_->height_dp, scale)) : CSize();
}

CRect QVPictureUploadCtrl::GetPictureRect() const {
  if (!picture_ || (state_ != QVPictureUpload_Done && state_ != QVPictureUpload_Uploading)) return CRect();
  CRect rc = GetClientRect();
  const int inset = Dp(kInsetDp, GetScale());
  rc.DeflateRect(inset, inset);
  if (rc.IsRectEmpty()) return CRect();
  // Fitted whole inside the slot, centred; never enlarged past its pixels.
  const double k = std::min({static_cast<double>(rc.Width()) / picture_->Width(),
                             static_cast<double>(rc.Height()) / picture_->Height(), 1.0 * GetScale() / 100});
  const int w = std::max(1, static_cast<int>(picture_->Width() * k));
  const int h = std::max(1, static_cast<int>(picture_->Height() * k));
  const int x = rc.left + (rc.Width() - w) / 2, y = rc.top + (rc.Height() - h) / 2;
  return CRect(x, y, x + w, y + h);
}

CRect QVPictureUploadCtrl::GetRemoveRect() const {
  if (state_ != QVPictureUpload_Done) return CRect();
  const CRect rc = GetClientRect();
  const int s = Dp(kRemoveDp, GetScale()), m = Dp(2, GetScale());
  return CRect(rc.right - s - m, rc.top + m, rc.right - m, rc.top + m + s);
}

CRect QVPictureUploadCtrl::GetRetryRect() const {
  if (state_ != QVPictureUpload_Failed || retry_text_.IsEmpty()) return CRect();
  const CRect rc = GetClientRect();
  const CSize sz = MeasureTextExtent(retry_text_, -1, SOUI::DT_SINGLELINE | SOUI::DT_NOPREFIX);
  const int cx = rc.left + rc.Width() / 2;
  const int top = rc.top + rc.Height() / 2 + Dp(4, GetScale());
  return CRect(cx - sz.cx / 2, top, cx - sz.cx / 2 + sz.cx, top + sz.cy);
}

QVPictureUploadCtrl::Part QVPictureUploadCtrl::PartAt(CPoint pt) const {
  if (!GetClientRect().PtInRect(pt)) return Part::kNone;
  switch (state_) {
    case QVPictureUpload_Empty: return Part::kSlot;
    case QVPictureUpload_Done: return GetRemoveRect().PtInRect(pt) ? Part::kRemove : Part::kNone;
    case QVPictureUpload_Failed: return GetRetryRect().PtInRect(pt) ? Part::kRetry : Part::kNone;
    default: return Part::kNone;
  }
}

// ---- painting ------------------------------------------------------------------------------

void QVPictureUploadCtrl::OnPaint(SOUI::IRenderTarget* rt) {
  const CRect rc = GetClientRect();
  const int r = Dp(kRadiusDp, GetScale());
  QVWithBrush(rt, bkgnd_.Get(), [&] { rt->FillRoundRect(&rc, CPoint(r, r)); });
  switch (state_) {
    case QVPictureUpload_Empty: DrawEmpty(rt, rc); break;
    case QVPictureUpload_Uploading: DrawUploading(rt, rc); break;
    case QVPictureUpload_Done:
      if (picture_) {
        const CRect pic = GetPictureRect();
        rt->DrawBitmap(&pic, picture_.get(), nullptr, SOUI::ExpandMode::Stretch, 0xFF);
      }
      DrawRemove(rt);
      break;
    case QVPictureUpload_Failed: DrawFailed(rt, rc); break;
  }
}

void QVPictureUploadCtrl::DrawEmpty(SOUI::IRenderTarget* rt, const CRect& rc) {
  const int scale = GetScale();
  const int r = Dp(kRadiusDp, scale);
  const COLORREF frame = hover_ ? border_hover_.Get() : border_.Get();
  QVWithPen(rt, frame, std::max(1, scale / 100), [&] { rt->DrawRoundRect(&rc, CPoint(r, r)); }, SOUI::PS_DASH);
  // The plus above the hint, both centred on the slot.
  const int arm = Dp(10, scale);
  const int line_h = hint_text_.IsEmpty() ? 0 : MeasureTextExtent(hint_text_, -1, SOUI::DT_SINGLELINE).cy;
  const int gap = line_h ? Dp(8, scale) : 0;
  const int top = rc.top + (rc.Height() - 2 * arm - gap - line_h) / 2;
  const CPoint c(rc.left + rc.Width() / 2, top + arm);
  QVWithPen(rt, accent_.Get(), Dp(2, scale), [&] {
    const POINT h[2] = {{c.x - arm, c.y}, {c.x + arm, c.y}};
    const POINT v[2] = {{c.x, c.y - arm}, {c.x, c.y + arm}};
    rt->DrawLines(h, 2);
    rt->DrawLines(v, 2);
  });
  if (line_h) {
    CRect text(rc.left, c.y + arm + gap, rc.right, c.y + arm + gap + line_h);
    DrawText(rt, hint_text_, hint_text_.GetLength(), &text, kCentred | SOUI::DT_END_ELLIPSIS);
  }
}

void QVPictureUploadCtrl::DrawUploading(SOUI::IRenderTarget* rt, const CRect& rc) {
  const int scale = GetScale();
  const int r = Dp(kRadiusDp, scale);
  if (picture_) {
    const CRect pic = GetPictureRect();
    rt->DrawBitmap(&pic, picture_.get(), nullptr, SOUI::ExpandMode::Stretch, 0xFF);
    QVWithBrush(rt, scrim_.Get(), [&] { rt->FillRoundRect(&rc, CPoint(r, r)); });
  }
  // The percentage over a line near the bottom edge.
  const COLORREF ink = picture_ ? on_scrim_.Get() : GetPaintTextColor();
  const SStringW pct = SStringW::Format2(L"%d%%", progress_);
  CRect text = rc;
  const COLORREF old = rt->SetTextColor(ink);
  rt->DrawText(pct, pct.GetLength(), &text, kCentred);
  rt->SetTextColor(old);
  const int inset = Dp(12, scale), h = Dp(4, scale);
  const CRect track(rc.left + inset, rc.bottom - inset - h, rc.right - inset, rc.bottom - inset);
  CRect fill = track;
  fill.right = track.left + track.Width() * progress_ / 100;
  QVWithBrush(rt, track_.Get(), [&] { rt->FillRoundRect(&track, CPoint(h / 2, h / 2)); });
  if (!fill.IsRectEmpty()) QVWithBrush(rt, accent_.Get(), [&] { rt->FillRoundRect(&fill, CPoint(h / 2, h / 2)); });
}

void QVPictureUploadCtrl::DrawFailed(SOUI::IRenderTarget* rt, const CRect& rc) {
  const int scale = GetScale();
  const int r = Dp(kRadiusDp, scale);
  QVWithPen(rt, error_.Get(), std::max(1, scale / 100), [&] { rt->DrawRoundRect(&rc, CPoint(r, r)); });
  const CRect retry = GetRetryRect();
  CRect text = rc;
  text.bottom = rc.top + rc.Height() / 2 - Dp(4, scale);
  text.top = text.bottom - MeasureTextExtent(fail_text_, -1, SOUI::DT_SINGLELINE).cy;
  COLORREF old = rt->SetTextColor(error_.Get());
  rt->DrawText(fail_text_, fail_text_.GetLength(), &text, kCentred | SOUI::DT_END_ELLIPSIS);
  if (!retry.IsRectEmpty()) {
    CRect link = retry;
    rt->SetTextColor(accent_.Get());
    rt->DrawText(retry_text_, retry_text_.GetLength(), &link, kCentred);
  }
  rt->SetTextColor(old);
}

void QVPictureUploadCtrl::DrawRemove(SOUI::IRenderTarget* rt) {
  const CRect btn = GetRemoveRect();
  QVWithBrush(rt, scrim_.Get(), [&] { rt->FillEllipse(&btn); });
  const int a = btn.Width() / 4;
  const CPoint c = btn.CenterPoint();
  QVWithPen(rt, on_scrim_.Get(), std::max(1, GetScale() / 100), [&] {
    const POINT d1[2] = {{c.x - a, c.y - a}, {c.x + a, c.y + a}};
    const POINT d2[2] = {{c.x - a, c.y + a}, {c.x + a, c.y - a}};
    rt->DrawLines(d1, 2);
    rt->DrawLines(d2, 2);
  });
}

// ---- input ---------------------------------------------------------------------------------

void QVPictureUploadCtrl::OnLButtonDown(UINT flags, CPoint pt) {
  SWindow::OnLButtonDown(flags, pt);
  pressed_ = PartAt(pt);
}

void QVPictureUploadCtrl::OnLButtonUp(UINT flags, CPoint pt) {
  const Part part = pressed_ == PartAt(pt) ? pressed_ : Part::kNone;
  pressed_ = Part::kNone;
  SWindow::OnLButtonUp(flags, pt);
  switch (part) {
    case Part::kSlot: {
      EventQVPictureUploadChoose evt(this);
      FireEvent(evt);
      // A handler may have answered by a call of its own already.
      if (!evt.file.IsEmpty() && state_ == QVPictureUpload_Empty) BeginUpload(evt.file);
      break;
    }
    case Part::kRemove: {
      ClearPicture();
      EventQVPictureUploadRemove evt(this);
      FireEvent(evt);
      break;
    }
    case Part::kRetry: {
      EventQVPictureUploadRetry evt(this);
      evt.file = file_;
      FireEvent(evt);
      break;
    }
    case Part::kNone: break;
  }
}

void QVPictureUploadCtrl::OnMouseHover(UINT flags, CPoint pt) {
  SWindow::OnMouseHover(flags, pt);
  hover_ = true;
  if (state_ == QVPictureUpload_Empty) Invalidate();
}

void QVPictureUploadCtrl::OnMouseLeave() {
  SWindow::OnMouseLeave();
  hover_ = false;
  if (state_ == QVPictureUpload_Empty) Invalidate();
}

SStringW QVPictureUploadCtrl::GetCursorName(CPoint pt) const {
  return PartAt(pt) != Part::kNone ? SStringW(L"hand") : SWindow::GetCursorName(pt);
}

}  // namespace QVStandardCtrls
