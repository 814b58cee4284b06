#include "soui/dropdown.h"

#include "soui/sapp.h"
#include "soui/slog.h"

namespace SOUI {

SDropDownWnd::SDropDownWnd(ISDropDownOwner* owner) : dd_owner_(owner) {
  if (SApplication* app = SApplication::getSingletonPtr()) app->AdoptHost(this);
}

SDropDownWnd::~SDropDownWnd() {
  // Deleted with the application while still open: close without asking
  // to be deleted again.
  deleting_ = true;
  EndDropDown(IDCANCEL);
}

SHostWnd* SDropDownWnd::OwnerHost() const { return HostFromHwnd(GetOwner()); }

bool SDropDownWnd::IsMineOrOwned(const SHostWnd* host) const { return host == this || (host && host->IsOwnedBy(this)); }

BOOL SDropDownWnd::Create(const CRect& rc, const wchar_t* layout_xml) {
  SWindow* opener = dd_owner_ ? dd_owner_->GetDropDownOwner() : nullptr;
  ISwndContainer* container = opener ? opener->GetContainer() : nullptr;
  SHostWnd* owner_host = container ? HostFromHwnd(container->GetHostHwnd()) : nullptr;
  if (closed_ || m_hWnd || !owner_host) {
    SLOG(kLogWarn, "SOUI") << L"SDropDownWnd: the opener is not in a live host; not shown";
    EndDropDown(IDCANCEL);
    return FALSE;
  }
  if (!InitFromXmlText(layout_xml ? layout_xml : L"<SOUI><root/></SOUI>")) InitFromXmlText(L"<SOUI><root/></SOUI>");
  if (!SHostWnd::Create(owner_host->m_hWnd, rc.left, rc.top, std::max<int>(rc.Width(), 1), std::max<int>(rc.Height(), 1))) {
    EndDropDown(IDCANCEL);
    return FALSE;
  }
  SApplication::getSingleton().AddInputHook(this);
  dd_owner_->OnCreateDropDown(this);
  if (closed_) return FALSE;  // the owner changed its mind
  SetWindowPos(nullptr, rc.left, rc.top, rc.Width(), rc.Height(), SWP_NOACTIVATE | SWP_SHOWWINDOW);
  return TRUE;
}

void SDropDownWnd::EndDropDown(UINT code) {
  if (closed_) return;
  closed_ = true;
  exit_code_ = code;
  SApplication* app = SApplication::getSingletonPtr();
  if (app) app->RemoveInputHook(this);
  ISDropDownOwner* owner = dd_owner_;
  dd_owner_ = nullptr;
  DestroyWindow();  // native window and timers go now
  if (owner) owner->OnDestroyDropDown(this);
  if (app && !deleting_) app->DeleteHostLater(this);
}

void SDropDownWnd::OnKeyEvent(UINT msg, UINT code, UINT flags) {
  if (msg == WM_KEYDOWN && code == VK_ESCAPE && !closed_) {
    EndDropDown(IDCANCEL);
    return;
  }
  SHostWnd::OnKeyEvent(msg, code, flags);
}

// ---- IHostInputHook -------------------------------------------------------------

bool SDropDownWnd::OnHostPress(SHostWnd* host, UINT msg, CPoint pt) {
  (void)msg;
  if (closed_ || IsMineOrOwned(host)) return false;
  SWindow* opener = dd_owner_ ? dd_owner_->GetDropDownOwner() : nullptr;
  const bool on_opener = opener && opener->GetContainer() == host && opener->IsVisible(TRUE) &&
                         opener->GetWindowRect().PtInRect(pt);
  EndDropDown(IDCANCEL);
  return on_opener;
}

bool SDropDownWnd::OnHostKey(SHostWnd* host, UINT msg, UINT code, UINT flags) {
  if (closed_ || IsMineOrOwned(host)) return false;
  OnKeyEvent(msg, code, flags);
  return true;
}

void SDropDownWnd::OnHostChanged(SHostWnd* host) {
  if (!closed_ && host && host != this && host == OwnerHost()) EndDropDown(IDCANCEL);
}

void SDropDownWnd::OnActiveHostChanged(SHostWnd* active) {
  if (closed_ || IsMineOrOwned(active)) return;
  if (active && active == OwnerHost()) return;
  EndDropDown(IDCANCEL);
}

void SDropDownWnd::OnSwndRemoved(SHostWnd* host, SWindow* wnd) {
  (void)host;
  if (closed_ || !dd_owner_) return;
  for (SWindow* w = dd_owner_->GetDropDownOwner(); w; w = w->GetParent()) {
    if (w == wnd) {
      EndDropDown(IDCANCEL);
      return;
    }
  }
}

}  // namespace SOUI
