// The "State controls" page's host side: buttons that put each control in
// each state, an upload the page pretends to send (progress on the clock,
// then done or failed), and a status line naming what the controls raised.
#include <functional>
#include <memory>

#include "gallery.h"
#include "soui/combobox.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"
#include "soui/swnd.h"
#include "state/loading_bar.h"
#include "state/page_loading.h"
#include "state/picture_upload.h"
#include "state/progress.h"

using namespace SOUI;
using namespace QVStandardCtrls;

namespace gallery {
namespace {

const SStringW kSample = SStringW::FromUtf8(QV_SOURCE_DIR "/apps/gallery/id_card_sample.png");

void ShowStatus(SWindow* root, const SStringW& what) {
  if (SWindow* status = root->FindChildByName(L"state_status")) status->SetWindowText(what);
}

void OnClick(SWindow* root, const wchar_t* name, std::function<void()> fn) {
  if (SWindow* w = root->FindChildByName(name)) {
    w->subscribeEvent(EVT_CMD, [fn](EventArgs*) {
      fn();
      return true;
    });
  }
}

// Whether root still belongs to a live host: a clock timer may outlive the
// page.
bool RootAlive(SWindow* root) {
  for (SHostWnd* host : SApplication::getSingleton().GetHosts()) {
    if (host->GetRoot() == root) return true;
  }
  return false;
}

// A pretend upload: ten steps of 120 ms, then done, or failed when asked.
// The timer goes with the application; a slot that is gone ends it.
struct FakeUpload : IAppService {
  bool fail_next = false;
};

FakeUpload& Uploads() {
  SApplication& app = SApplication::getSingleton();
  auto* u = static_cast<FakeUpload*>(app.GetService("gallery.fake_upload"));
  if (!u) {
    u = new FakeUpload();
    app.SetService("gallery.fake_upload", std::unique_ptr<IAppService>(u));
  }
  return *u;
}

void Upload(SWindow* root, const SStringW& slot_name) {
  auto* slot = root->FindChildByName2<QVPictureUploadCtrl>(slot_name);
  if (!slot || !slot->BeginUpload(kSample)) return;
  const bool fail = Uploads().fail_next;
  Uploads().fail_next = false;
  SClock& clock = SApplication::getSingleton().GetClock();
  auto id = std::make_shared<SClock::TimerId>(0);
  *id = clock.SetTimer(120, [root, slot_name, fail, id] {
    SClock& c = SApplication::getSingleton().GetClock();
    auto* s = RootAlive(root) ? root->FindChildByName2<QVPictureUploadCtrl>(slot_name) : nullptr;
    if (!s || s->GetUploadState() != QVPictureUpload_Uploading) {
      c.KillTimer(*id);
      return;
    }
    s->SetUploadProgress(s->GetUploadProgress() + 10);
    if (fail && s->GetUploadProgress() >= 60) {
      s->FailUpload();
      c.KillTimer(*id);
    } else if (s->GetUploadProgress() >= 100) {
      s->FinishUpload();
      c.KillTimer(*id);
    }
  });
}

}  // namespace

void InstallStatePage(SWindow* root) {
  // Loading bars: both follow the buttons.
  const std::pair<const wchar_t*, EnQVLoadingBarState> bar_states[] = {
      {L"state_bar_empty", QVLoadingBar_Empty},   {L"state_bar_loading", QVLoadingBar_Loading},
      {L"state_bar_complete", QVLoadingBar_Complete}, {L"state_bar_remind", QVLoadingBar_Remind},
      {L"state_bar_fail", QVLoadingBar_Fail}};
  for (const auto& s : bar_states) {
    const EnQVLoadingBarState state = s.second;
    OnClick(root, s.first, [root, state] {
      for (const wchar_t* name : {L"state_top_bar", L"state_bottom_bar"}) {
        if (auto* bar = root->FindChildByName2<QVLoadingBarBase>(name)) bar->SetLoadingState(state);
      }
    });
  }
  for (const wchar_t* name : {L"state_top_bar", L"state_bottom_bar"}) {
    if (SWindow* bar = root->FindChildByName(name)) {
      const SStringW label = name;
      bar->subscribeEvent(EVT_QVLOADINGBAR_CLICK, [root, label](EventArgs* e) {
        const auto state = static_cast<EnQVLoadingBarState>(static_cast<EventQVLoadingBarClick*>(e)->state);
        ShowStatus(root, label + L": " + QVLoadingBarStateName(state) + L" link clicked");
        return true;
      });
    }
  }
  // Page loading.
  const std::pair<const wchar_t*, EnQVPageLoadingState> page_states[] = {
      {L"state_page_none", QVPageLoading_None}, {L"state_page_loading", QVPageLoading_Loading},
      {L"state_page_empty", QVPageLoading_Empty}, {L"state_page_fail", QVPageLoading_Fail}};
  for (const auto& s : page_states) {
    const EnQVPageLoadingState state = s.second;
    OnClick(root, s.first, [root, state] {
      if (auto* page = root->FindChildByName2<QVPageLoadingCtrl>(L"state_page")) page->SetPageState(state);
    });
  }
  if (SWindow* page = root->FindChildByName(L"state_page")) {
    page->subscribeEvent(EVT_QVPAGELOADING_REFRESH, [root, page](EventArgs*) {
      ShowStatus(root, L"state_page: refresh clicked");
      static_cast<QVPageLoadingCtrl*>(page)->SetPageState(QVPageLoading_Loading);
      return true;
    });
  }
  // Progress.
  auto* progress = root->FindChildByName2<CQVProgress>(L"state_progress");
  if (progress) {
    OnClick(root, L"state_progress_less", [progress] {
      progress->SetIndeterminate(false);
      progress->SetValue(progress->GetValue() - 10);
    });
    OnClick(root, L"state_progress_more", [progress] {
      progress->SetIndeterminate(false);
      progress->SetValue(progress->GetValue() + 10);
    });
    OnClick(root, L"state_progress_sweep", [progress] { progress->SetIndeterminate(!progress->IsIndeterminate()); });
  }
  // Combo boxes.
  for (const wchar_t* name : {L"state_order_type", L"state_tif", L"state_qty"}) {
    SComboBox* combo = root->FindChildByName2<SComboBox>(name);
    if (!combo) continue;
    const SStringW label = name;
    combo->subscribeEvent(EVT_CB_SELCHANGE, [root, combo, label](EventArgs*) {
      ShowStatus(root, label + L": " + combo->GetLBText(combo->GetCurSel()));
      return true;
    });
  }
  // Picture slots: the back starts done, as a picture already on record.
  if (auto* back = root->FindChildByName2<QVPictureUploadCtrl>(L"state_upload_back")) back->SetPictureFile(kSample);
  for (const wchar_t* name : {L"state_upload_front", L"state_upload_back", L"state_upload_photo"}) {
    SWindow* slot = root->FindChildByName(name);
    if (!slot) continue;
    const SStringW label = name;
    slot->subscribeEvent(EVT_QVPICTUREUPLOAD_CHOOSE, [root, label](EventArgs*) {
      ShowStatus(root, label + L": a file was asked for");
      Upload(root, label);
      return true;
    });
    slot->subscribeEvent(EVT_QVPICTUREUPLOAD_RETRY, [root, label](EventArgs*) {
      ShowStatus(root, label + L": retry");
      Upload(root, label);
      return true;
    });
    slot->subscribeEvent(EVT_QVPICTUREUPLOAD_REMOVE, [root, label](EventArgs*) {
      ShowStatus(root, label + L": removed");
      return true;
    });
  }
  OnClick(root, L"state_upload_fail", [root] {
    Uploads().fail_next = true;
    ShowStatus(root, L"the next upload fails at 60%");
  });
  OnClick(root, L"state_upload_missing", [root] {
    if (auto* photo = root->FindChildByName2<QVPictureUploadCtrl>(L"state_upload_photo")) {
      photo->SetPictureFile(L"/no/such/photo.png");
    }
  });
  OnClick(root, L"state_upload_reset", [root] {
    for (const wchar_t* name : {L"state_upload_front", L"state_upload_back", L"state_upload_photo"}) {
      if (auto* slot = root->FindChildByName2<QVPictureUploadCtrl>(name)) slot->ClearPicture();
    }
  });
}

}  // namespace gallery
