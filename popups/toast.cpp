#include "popups/toast.h"

#include <algorithm>
#include <cmath>

#include "framework/ctrl_utils.h"
#include "qvhost/qvlog.h"
#include "qvhost/zoom.h"
#include "soui/qvrichtext.h"
#include "soui/sapp.h"

namespace QVStandardCtrls {

using SOUI::CRect;
using SOUI::CSize;
using SOUI::SStringW;

std::map<HWND, std::shared_ptr<CQVToastWnd>> IQVToast::ms_mapToastWnd;
QVToastOptions IQVToast::ms_options;

namespace {

constexpr const char* kRegistryKey = "qvtoast.registry";
constexpr int kFontSizeDp = 14;

}  // namespace

// Lives as an application service: drops an owner's entry when the owner's
// window is destroyed, and every entry when the application goes, since
// handle values start over with the next application.
class ToastRegistryGuard : public SOUI::IAppService {
 public:
  explicit ToastRegistryGuard(SOUI::SApplication* app) : app_(app) {
    cookie_ = app->AddHwndDestroyedListener([](HWND hwnd) { IQVToast::DeleteToastWnd(hwnd); });
  }
  ~ToastRegistryGuard() override {
    app_->RemoveHwndDestroyedListener(cookie_);
    // Moved out first: a toast going away must not find the map half torn.
    auto doomed = std::move(IQVToast::ms_mapToastWnd);
    IQVToast::ms_mapToastWnd.clear();
    doomed.clear();
  }

 private:
  SOUI::SApplication* app_;
  int cookie_ = 0;
};

// ---- CQVToastWnd --------------------------------------------------------------

CQVToastWnd::CQVToastWnd() : SHostWnd(L"LAYOUT:qvtoast") {
  zoom_ = static_cast<int>(std::lround(GetAppZoomX() * 100));
  show_steps_ = show_length_ / show_interval_;
  hide_steps_ = hide_length_ / hide_interval_;
}

CQVToastWnd::~CQVToastWnd() = default;

HWND CQVToastWnd::CreateForOwner(HWND owner) {
  owner_ = owner;
  return Create(owner, 0, 0);
}

void CQVToastWnd::ResetToastSetting() {
  stay_time_ = 2000;
  offset_y_ = 0;
  icon_type_ = QVToastIcon_Tip;
  icon_skin_.Empty();
  text_.Empty();
}

void CQVToastWnd::SetIconType(int type) {
  use_icon_type_ = true;
  icon_type_ = type;
}

void CQVToastWnd::SetIconSkin(const SStringW& skin) {
  use_icon_type_ = false;
  icon_skin_ = skin.IsEmpty() ? SStringW(L"skin_toast_bg") : skin;
}

SStringW CQVToastWnd::IconSkinName() const {
  if (!use_icon_type_) return icon_skin_;
  switch (icon_type_) {
    case QVToastIcon_Tip: return L"skin_toast_icon_tip";
    case QVToastIcon_Warning: return L"skin_toast_icon_warn";
    case QVToastIcon_Success: return L"skin_toast_icon_succeed";
    case QVToastIcon_Error: return L"skin_toast_icon_error";
    default: return L"skin_toast_bg";
  }
}

SStringW CQVToastWnd::ContentXml() const {
  // CDATA keeps the text as given; a "]]>" inside it would end the section,
  // so that sequence is split across two sections.
  SStringW safe = text_;
  if (repeat_ > 1) safe += SStringW::Format2(L" \u00D7%d", repeat_);
  safe.Replace(L"]]>", L"]]]]><![CDATA[>");
  return SStringW::Format2(
      L"<RichEditContent><text name=\"text\" font=\"size:%ddp\" color=\"@color\\style_common\\text_h1\">"
      L"<![CDATA[%s]]></text></RichEditContent>",
      kFontSizeDp, safe.c_str());
}

double CQVToastWnd::Progress(int step, int steps) {
  if (steps <= 0) return 1.0;
  const double t = static_cast<double>(step) / steps - 1.0;
  return t * t * t + 1.0;
}

void CQVToastWnd::KillAllTimers() {
  KillTimer(show_timer_);
  KillTimer(stay_timer_);
  KillTimer(hide_timer_);
}

void CQVToastWnd::Hide() {
  KillAllTimers();
  ShowWindow(SOUI::SW_HIDE);
  visible_ = false;
  phase_ = Phase::kHidden;
}

void CQVToastWnd::SetOptions(const QVToastOptions& options) {
  options_ = options;
  // Hover needs input; without the option nothing may reach the toast.
  EnableWindow(options_.pause_on_hover ? TRUE : FALSE);
}

bool CQVToastWnd::Coalesce(bool use_type, int type, const SStringW& icon_skin, const SStringW& text) {
  if (!options_.coalesce || phase_ == Phase::kHidden || !visible_) return false;
  if (use_type != use_icon_type_ || text != text_) return false;
  if (use_type ? type != icon_type_ : (icon_skin.IsEmpty() ? SStringW(L"skin_toast_bg") : icon_skin) != icon_skin_) {
    return false;
  }
  ++repeat_;
  BuildContent();
  Reposition();
  stayed_ms_ = 0;
  if (phase_ == Phase::kStaying) {
    SetTimer(stay_timer_, options_.pause_on_hover ? show_interval_ : stay_time_);
  } else if (phase_ == Phase::kSlidingOut) {
    // Back in from where it is: the show step with the same progress.
    KillTimer(hide_timer_);
    show_step_ = std::max(hide_step_, -1);
    phase_ = Phase::kSlidingIn;
    SetTimer(show_timer_, show_interval_);
  }
  return true;
}

void CQVToastWnd::Start() {
  if (visible_) Hide();
  visible_ = true;
  phase_ = Phase::kSlidingIn;
  repeat_ = 1;
  stayed_ms_ = 0;
  progress_ = 0;
  BuildContent();
  Reposition();
  ShowWindow(SOUI::SW_SHOWNOACTIVATE);
  show_step_ = -1;
  SetTimer(show_timer_, show_interval_);
}

void CQVToastWnd::BuildContent() {
  const int m = ZPixel(top_margin_);
  const int min_w = ZPixel(min_text_width_), max_w = ZPixel(max_text_width_);
  const int text_left = ZPixel(padding_left_) + ZPixel(icon_size_) + ZPixel(padding_mid_);
  SOUI::SWindow* root = GetRoot();
  SOUI::QVRichText* rich = root->FindChildByName2<SOUI::QVRichText>(L"rich_toast_text");
  // The text is measured in its own run font ("size:14dp") by the rich text
  // that will wrap it, so that measure and wrap always agree.
  CSize text;
  if (rich) {
    rich->Clear();
    rich->AppendContent(ContentXml());
    text = CSize(rich->GetContentWidth(-1), rich->GetContentHeight(-1));
  } else {
    text = IQVStandardCtrlUtils::MeasureText(text_, SStringW::Format2(L"size:%ddp", kFontSizeDp));
  }
  const bool wraps = text.cx > max_w;
  const int text_w = std::clamp(static_cast<int>(text.cx), min_w, max_w);
  width_ = text_left + text_w + ZPixel(padding_right_);
  int text_h = static_cast<int>(text.cy);
  if (rich) {
    text_h = rich->GetContentHeight(text_w);
    // Icon and text both stand centred on the toast's middle line.
    rich->SetAttribute(L"pos", SStringW::Format2(L"%dpx,|0,@%dpx,@%dpx", text_left, text_w, text_h), FALSE);
    rich->SetAttribute(L"offset", L"0,-0.5", FALSE);
  }
  // A single line keeps the usual height; wrapped text takes the taller one
  // or what its lines need, whichever is more.
  const int content_h = std::max(ZPixel(wraps ? spare_[1] : line_height_), text_h);
  height_ = content_h + 2 * m;
  if (SOUI::SWindow* image = root->FindChildByName(L"image")) {
    image->SetAttribute(L"skin", IconSkinName(), FALSE);
  }
}

void CQVToastWnd::Reposition() {
  CRect owner_rc;
  if (!SOUI::GetWindowRect(owner_, &owner_rc)) return;
  const double p = std::clamp(progress_, 0.0, 1.0);
  const int m = ZPixel(top_margin_), d = ZPixel(slide_distance_);
  const int h = height_, w = width_;
  const double y = m + (d + h - 2 * m) * p - h;
  int top = owner_rc.top;
  SStringW offset = L"0,0";
  if (y < 1) {
    // Pinned to the owner's top edge; the content slides inside the window.
    const int span = h - 2 * m;
    if (span != 0) offset = SStringW::Format2(L"0,%f", y / span);
  } else {
    top = owner_rc.top + static_cast<int>(y);
  }
  SOUI::SWindow* toast = GetRoot()->FindChildByName(L"toast");
  if (toast && offset != card_offset_) {
    card_offset_ = offset;
    toast->SetAttribute(L"offset", offset, FALSE);
    // Where the card was and where it goes both need painting.
    GetRoot()->Invalidate();
  }
  const int left = owner_rc.left + (owner_rc.Width() - w) / 2;
  top += offset_y_;
  SetWindowPos(nullptr, left, top, w, h, SOUI::SWP_NOZORDER | SOUI::SWP_NOACTIVATE);
}

void CQVToastWnd::OnTimer(int id) {
  if (id == show_timer_) {
    ++show_step_;
    progress_ = Progress(show_step_, show_steps_);
    Reposition();
    if (show_step_ >= show_steps_) {
      KillTimer(show_timer_);
      phase_ = Phase::kStaying;
      // Paused stays count in ticks, so that time over the toast is left out.
      SetTimer(stay_timer_, options_.pause_on_hover ? show_interval_ : stay_time_);
    }
  } else if (id == stay_timer_) {
    if (options_.pause_on_hover) {
      if (!GetHover()) stayed_ms_ += show_interval_;
      if (stayed_ms_ < stay_time_) return;
    }
    KillTimer(stay_timer_);
    phase_ = Phase::kSlidingOut;
    hide_step_ = hide_steps_;
    SetTimer(hide_timer_, hide_interval_);
  } else if (id == hide_timer_) {
    --hide_step_;
    progress_ = Progress(hide_step_, hide_steps_);
    Reposition();
    if (hide_step_ < 0 && visible_) Hide();
  } else {
    SHostWnd::OnTimer(id);
  }
}

// ---- IQVToast -----------------------------------------------------------------

std::shared_ptr<CQVToastWnd> IQVToast::GetToastWnd(HWND owner) {
  auto it = ms_mapToastWnd.find(owner);
  if (it != ms_mapToastWnd.end()) return it->second;
  SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr();
  if (!app) return nullptr;
  if (!app->GetService(kRegistryKey)) app->SetService(kRegistryKey, std::make_unique<ToastRegistryGuard>(app));
  auto toast = std::make_shared<CQVToastWnd>();
  if (toast->CreateForOwner(owner)) toast->EnableWindow(FALSE);
  ms_mapToastWnd[owner] = toast;
  return toast;
}

std::shared_ptr<CQVToastWnd> IQVToast::FindToastWnd(HWND owner) {
  auto it = ms_mapToastWnd.find(owner);
  return it == ms_mapToastWnd.end() ? nullptr : it->second;
}

void IQVToast::DeleteToastWnd(HWND owner) {
  auto it = ms_mapToastWnd.find(owner);
  if (it == ms_mapToastWnd.end()) return;
  // Erased before it is released: the toast's own destruction reaches the
  // registry again (its handle goes too).
  std::shared_ptr<CQVToastWnd> doomed = std::move(it->second);
  ms_mapToastWnd.erase(it);
  doomed.reset();
}

bool IQVToast::Track(HWND owner, bool use_type, int type, const wchar_t* icon_skin, const wchar_t* text,
                     int offset_y, unsigned int stay_ms) {
  static constexpr const char* kFunc = "QVStandardCtrls::IQVToast::TrackPopupToast";
  if (!owner || !SOUI::IsWindow(owner)) {
    SOUI::LogStream(QV_LOG_WARN, "COMMON", "QVToast.cpp", kFunc, __LINE__)
        << L"IQVToast::TrackPopupToast  hWnd Not Valid" << static_cast<const void*>(owner);
    return false;
  }
  std::shared_ptr<CQVToastWnd> toast = GetToastWnd(owner);
  if (!toast || !SOUI::IsWindow(toast->m_hWnd)) {
    SOUI::LogStream(QV_LOG_WARN, "COMMON", "QVToast.cpp", kFunc, __LINE__)
        << L"IQVToast::TrackPopupToast  spToast error! spToast->m_hWnd"
        << static_cast<const void*>(toast ? toast->m_hWnd : nullptr);
    return false;
  }
  toast->SetOptions(ms_options);
  const SStringW skin = icon_skin ? SStringW(icon_skin) : SStringW();
  const SStringW message = text ? SStringW(text) : SStringW();
  if (toast->Coalesce(use_type, type, skin, message)) return true;
  toast->ResetToastSetting();
  if (use_type) {
    toast->SetIconType(type);
  } else {
    toast->SetIconSkin(skin);
  }
  toast->SetText(message);
  toast->SetVerticalOffset(offset_y);
  toast->SetStayTime(stay_ms);
  toast->Start();
  return true;
}

bool IQVToast::TrackPopupToast(HWND owner, const EnQVToastIconType& type, const wchar_t* text, int offset_y,
                               unsigned int stay_ms) {
  return Track(owner, true, type, nullptr, text, offset_y, stay_ms);
}

bool IQVToast::TrackPopupToast(HWND owner, const wchar_t* icon_skin, const wchar_t* text, int offset_y,
                               unsigned int stay_ms) {
  return Track(owner, false, 0, icon_skin, text, offset_y, stay_ms);
}

}  // namespace QVStandardCtrls
