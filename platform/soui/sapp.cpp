#include "soui/sapp.h"

#include <algorithm>
#include <cassert>
#include <chrono>
#include <cstring>
#include <thread>

#include "soui/edit.h"
#include "soui/hostwnd.h"
#include "soui/skins.h"
#include "soui/stdctrls.h"
#include "soui/swnd_internal.h"

namespace SOUI {
namespace {
SApplication* g_app = nullptr;

class MemoryClipboard : public IClipboard {
 public:
  SStringW GetText() override { return text_; }
  void SetText(const SStringW& text) override { text_ = text; }

 private:
  SStringW text_;
};
SApplication::SetupHook g_default_setup = nullptr;
}  // namespace

SApplication::SApplication() : SApplication(Options()) {}

SApplication::SApplication(const Options& options) : options_(options), clock_(options.manual_clock) {
  assert(!g_app && "one SApplication at a time");
  g_app = this;
  RegisterBuiltinSkinTypes(res_);
  RegisterStandardControls(factory_);
  RegisterEditControls(factory_);
  clipboard_ = std::make_unique<MemoryClipboard>();
  res_.SetImageLoader([this](const SStringW& path) {
    return render_factory_ ? render_factory_->LoadBitmapFromFile(path) : nullptr;
  });
  if (g_default_setup) g_default_setup(*this);
}

SApplication::~SApplication() {
  // Self-owned hosts (open drop-downs) go first, while everything they
  // reach still exists.
  DeletePendingHosts();
  while (!adopted_.empty()) {
    std::unique_ptr<SHostWnd> host = std::move(adopted_.back());
    adopted_.pop_back();
    host.reset();
    DeletePendingHosts();
  }
  // Hosts unregister themselves as they go; any left are the caller's leak,
  // but they must not reach a dead application.
  for (SHostWnd* host : std::vector<SHostWnd*>(hosts_)) host->DetachFromApp();
  // Services may hold clock timers and resources: they go while both exist.
  while (!services_.empty()) services_.pop_back();
  if (g_app == this) g_app = nullptr;
}

void SApplication::SetClipboard(std::unique_ptr<IClipboard> clipboard) {
  clipboard_ = clipboard ? std::move(clipboard) : std::make_unique<MemoryClipboard>();
}

void SApplication::SetKeyDown(UINT vk, bool down) {
  if (vk >= 256) return;
  key_down_[vk] = down;
}

short GetKeyState(int vk) {
  SApplication* app = SApplication::getSingletonPtr();
  return (app && vk >= 0 && app->IsKeyDown(static_cast<UINT>(vk))) ? static_cast<short>(0x8000) : 0;
}

void SApplication::SetDefaultSetup(SetupHook hook) { g_default_setup = hook; }

SApplication::SetupHook SApplication::GetDefaultSetup() { return g_default_setup; }

void SApplication::SetRenderFactory(std::unique_ptr<IRenderFactory> factory) {
  measure_target_.reset();
  render_factory_ = std::move(factory);
}

IAppService* SApplication::GetService(const char* key) const {
  if (!key) return nullptr;
  // Asked several times per window: strcmp stops at the first difference.
  for (const auto& s : services_) {
    if (std::strcmp(s.first.c_str(), key) == 0) return s.second.get();
  }
  return nullptr;
}

void SApplication::SetService(const char* key, std::unique_ptr<IAppService> service) {
  if (!key) return;
  for (auto& s : services_) {
    if (s.first == key) {
      s.second = std::move(service);
      return;
    }
  }
  services_.emplace_back(key, std::move(service));
}

SApplication* SApplication::getSingletonPtr() { return g_app; }

SApplication& SApplication::getSingleton() {
  assert(g_app);
  return *g_app;
}

SWindow* SApplication::CreateWindowByName(const wchar_t* tag) const {
  return factory_.CreateWindowByName(tag);
}

BOOL SApplication::LoadXmlDocment(pugi::xml_document& doc, const SStringW& name,
                                  const SStringW& type) {
  return res_.LoadXml(doc, name, type) ? TRUE : FALSE;
}

BOOL SApplication::LoadXmlDocment(pugi::xml_document& doc, const SStringW& res_id) {
  const int colon = res_id.Find(L':');
  if (colon < 0) return LoadXmlDocment(doc, res_id, L"LAYOUT");
  return LoadXmlDocment(doc, res_id.Mid(colon + 1), res_id.Left(colon));
}

SStringW SApplication::tr(const SStringW& text, const SStringW& ctx) const {
  SStringW translated;
  return Translate(text, ctx, &translated) ? translated : text;
}

bool SApplication::Translate(const SStringW& text, const SStringW& ctx, SStringW* out) const {
  // This host ships no translation tables.
  (void)text;
  (void)ctx;
  (void)out;
  return false;
}

void SApplication::SetZoom(int percent) {
  if (percent <= 0 || percent == zoom_) return;
  zoom_ = percent;
  for (SHostWnd* host : std::vector<SHostWnd*>(hosts_)) host->SetScale(percent);
}

void SApplication::AddHost(SHostWnd* host) {
  if (host && std::find(hosts_.begin(), hosts_.end(), host) == hosts_.end()) hosts_.push_back(host);
}

void SApplication::RemoveHost(SHostWnd* host) {
  hosts_.erase(std::remove(hosts_.begin(), hosts_.end(), host), hosts_.end());
  DropFromZOrder(host);
  if (active_ == host) active_ = nullptr;
}

void SApplication::DropFromZOrder(SHostWnd* host) {
  z_order_.erase(std::remove(z_order_.begin(), z_order_.end(), host), z_order_.end());
}

// ---- hosts among themselves ------------------------------------------------------

void SApplication::SetActiveHost(SHostWnd* host) {
  // "Nobody" is told again: the window system may report losing a focus we
  // never saw arrive.
  if (host && host == active_) return;
  SHostWnd* old = active_;
  active_ = host;
  // Only hosts still registered hear it: a host going away hands activation
  // on from its own destructor.
  auto alive = [this](SHostWnd* h) { return std::find(hosts_.begin(), hosts_.end(), h) != hosts_.end(); };
  if (old && old != host && alive(old)) old->OnActivate(false);
  if (host && alive(host)) host->OnActivate(true);
  ForEachInputHook([host](IHostInputHook* h) {
    h->OnActiveHostChanged(host);
    return false;
  });
}

void SApplication::BringHostToTop(SHostWnd* host) {
  if (!host) return;
  z_order_.erase(std::remove(z_order_.begin(), z_order_.end(), host), z_order_.end());
  z_order_.push_back(host);
  // Owned windows stay above their owner, in their own order.
  std::vector<SHostWnd*> owned;
  for (SHostWnd* h : z_order_) {
    if (h != host && h->IsOwnedBy(host)) owned.push_back(h);
  }
  for (SHostWnd* h : owned) {
    z_order_.erase(std::remove(z_order_.begin(), z_order_.end(), h), z_order_.end());
    z_order_.push_back(h);
  }
}

SHostWnd* SApplication::HostFromScreenPoint(CPoint pt) const {
  for (auto it = z_order_.rbegin(); it != z_order_.rend(); ++it) {
    if ((*it)->IsWindowVisible() && (*it)->GetWindowRect().PtInRect(pt)) return *it;
  }
  return nullptr;
}

CRect SApplication::GetWorkArea(SHostWnd* near) const {
  if (work_area_) {
    const CRect rc = work_area_(near);
    if (!rc.IsRectEmpty()) return rc;
  }
  return screen_;
}

void SApplication::AddInputHook(IHostInputHook* hook) {
  if (hook && std::find(hooks_.begin(), hooks_.end(), hook) == hooks_.end()) hooks_.push_back(hook);
}

void SApplication::RemoveInputHook(IHostInputHook* hook) {
  hooks_.erase(std::remove(hooks_.begin(), hooks_.end(), hook), hooks_.end());
}

bool SApplication::ForEachInputHook(const std::function<bool(IHostInputHook*)>& fn) {
  // A hook may close (and remove) itself or others while being called.
  const std::vector<IHostInputHook*> snapshot(hooks_.rbegin(), hooks_.rend());
  for (IHostInputHook* h : snapshot) {
    if (std::find(hooks_.begin(), hooks_.end(), h) == hooks_.end()) continue;
    if (fn(h)) return true;
  }
  return false;
}

void SApplication::AdoptHost(SHostWnd* host) {
  if (host) adopted_.emplace_back(host);
}

void SApplication::DeleteHostLater(SHostWnd* host) {
  for (auto it = adopted_.begin(); it != adopted_.end(); ++it) {
    if (it->get() != host) continue;
    doomed_.push_back(std::move(*it));
    adopted_.erase(it);
    break;
  }
  // Not now even outside dispatch: the caller may be the host itself.
}

void SApplication::LeaveDispatch() {
  if (dispatch_depth_ > 0) --dispatch_depth_;
  if (dispatch_depth_ == 0) DeletePendingHosts();
}

void SApplication::DeletePendingHosts() {
  if (deleting_ || dispatch_depth_ > 0) return;
  deleting_ = true;
  // A dying host may doom another (a drop-down closing its child).
  while (!doomed_.empty()) {
    std::vector<std::unique_ptr<SHostWnd>> batch;
    batch.swap(doomed_);
    batch.clear();
  }
  deleting_ = false;
}

void SApplication::NotifyThemeChanged() {
  res_.BumpGeneration();
  for (SHostWnd* host : std::vector<SHostWnd*>(hosts_)) host->OnThemeChanged();
}

HWND SApplication::RegisterHwnd(SHostWnd* host) {
  next_hwnd_ += 0x10;
  HWND hwnd = reinterpret_cast<HWND>(next_hwnd_);
  hwnds_[hwnd] = host;
  return hwnd;
}

void SApplication::UnregisterHwnd(HWND hwnd) {
  if (hwnds_.erase(hwnd) == 0) return;
  // A listener may add or remove listeners: walk the cookies, not the map.
  std::vector<int> cookies;
  for (const auto& l : hwnd_listeners_) cookies.push_back(l.first);
  for (int cookie : cookies) {
    auto it = hwnd_listeners_.find(cookie);
    if (it == hwnd_listeners_.end()) continue;
    std::function<void(HWND)> fn = it->second;  // survives its own removal
    fn(hwnd);
  }
}

int SApplication::AddHwndDestroyedListener(std::function<void(HWND)> fn) {
  if (!fn) return 0;
  hwnd_listeners_[++next_hwnd_listener_] = std::move(fn);
  return next_hwnd_listener_;
}

void SApplication::RemoveHwndDestroyedListener(int cookie) { hwnd_listeners_.erase(cookie); }

SHostWnd* SApplication::HostFromHwnd(HWND hwnd) const {
  auto it = hwnds_.find(hwnd);
  return it == hwnds_.end() ? nullptr : it->second;
}

bool SApplication::RunModalLoop(const std::function<bool()>& done) {
  while (!done()) {
    const uint64_t next = clock_.NextDue();
    if (native_pump_) {
      const uint64_t now = clock_.Now();
      const uint64_t wait = next == UINT64_MAX ? 50 : (next > now ? next - now : 0);
      native_pump_(static_cast<uint32_t>(std::min<uint64_t>(wait, 50)));
      clock_.RunDue();
      DeletePendingHosts();
    } else if (clock_.IsManual()) {
      if (next == UINT64_MAX) return false;
      clock_.Advance(static_cast<uint32_t>(next > clock_.Now() ? next - clock_.Now() : 0));
    } else {
      if (next == UINT64_MAX) return false;
      const uint64_t now = clock_.Now();
      if (next > now) std::this_thread::sleep_for(std::chrono::milliseconds(std::min<uint64_t>(next - now, 10)));
      clock_.RunDue();
    }
  }
  return true;
}

bool SApplication::FirstTimeAt(const std::wstring& place) {
  if (logged_places_.size() >= kMaxLoggedPlaces) logged_places_.clear();
  return logged_places_.insert(place).second;
}

IRenderTarget* SApplication::GetMeasureTarget() {
  if (!measure_target_ && render_factory_) measure_target_ = render_factory_->CreateRenderTarget(1, 1);
  return measure_target_.get();
}

}  // namespace SOUI
