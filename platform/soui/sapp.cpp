#include "soui/sapp.h"

#include <algorithm>
#include <cassert>

#include "backends/cairo_render.h"
#include "qvhost/config.h"
#include "qvhost/message_dispatch.h"
#include "qvhost/qvlog.h"
#include "soui/hostwnd.h"
#include "soui/stdctrls.h"

namespace SOUI {
namespace {
SApplication* g_app = nullptr;
}

SApplication::SApplication() : SApplication(Options()) {}

SApplication::SApplication(const Options& options)
    : options_(options),
      render_factory_(std::make_unique<CairoRenderFactory>()),
      clock_(options.manual_clock) {
  assert(!g_app && "one SApplication at a time");
  g_app = this;
  dispatch_ = std::make_unique<MessageDispatch>(clock_);
  settings_ = std::make_unique<UserSettings>();
  log_ = std::make_unique<QVLogSink>();
  RegisterStandardControls(factory_);
  IRenderFactory* rf = render_factory_.get();
  res_.SetImageLoader([rf](const SStringW& path) { return rf->LoadBitmapFromFile(path); });
}

SApplication::~SApplication() {
  // Hosts unregister themselves as they go; any left are the caller's leak,
  // but they must not reach a dead application.
  for (SHostWnd* host : std::vector<SHostWnd*>(hosts_)) host->DetachFromApp();
  dispatch_.reset();
  if (g_app == this) g_app = nullptr;
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
  (void)ctx;
  return text;
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

void SApplication::UnregisterHwnd(HWND hwnd) { hwnds_.erase(hwnd); }

SHostWnd* SApplication::HostFromHwnd(HWND hwnd) const {
  auto it = hwnds_.find(hwnd);
  return it == hwnds_.end() ? nullptr : it->second;
}

IRenderTarget* SApplication::GetMeasureTarget() {
  if (!measure_target_ && render_factory_) measure_target_ = render_factory_->CreateRenderTarget(1, 1);
  return measure_target_.get();
}

}  // namespace SOUI
