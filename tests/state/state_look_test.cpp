// The rendered look of the state controls: one sheet with every control in
// every state, per zoom and theme, compared with its reference PNG.
#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "backends/cairo_render.h"
#include "library_test_base.h"
#include "soui/combobox.h"
#include "soui/edit.h"
#include "state/loading_bar.h"
#include "state/page_loading.h"
#include "state/picture_upload.h"
#include "testing/png_compare.h"

namespace QVStandardCtrls {
namespace test {
namespace {

using SOUI::SStringW;

// Cards on the page colour; times are 0 so the states show at once.
const wchar_t kSheet[] =
    L"<SOUI><root colorBkgnd=\"@color\\style_gallery\\bg\" padding=\"8dp,8dp,8dp,8dp\">"
    // Loading bars: the line, the fading complete, remind and fail bands.
    L"<window pos=\"0,0,@560dp,@128dp\" colorBkgnd=\"@color\\style_gallery\\card\">"
    L" <qv_toploadingbar name=\"bar_loading\" pos=\"0,0,@270dp,@28dp\" showdelay=\"0\" minshowtime=\"0\"/>"
    L" <qv_toploadingbar name=\"bar_complete\" pos=\"290dp,0,@270dp,@28dp\" qvstyle=\"LB2\" showdelay=\"0\" "
    L"  minshowtime=\"0\" fadetime=\"1000\"/>"
    L" <qv_toploadingbar name=\"bar_remind\" pos=\"0,40dp,@270dp,@28dp\" remindtext=\"3 new orders\"/>"
    L" <qv_toploadingbar name=\"bar_fail\" pos=\"290dp,40dp,@270dp,@28dp\" failtext=\"Quotes failed to load\"/>"
    L" <qv_bottomloadingbar name=\"bottom_loading\" pos=\"0,80dp,@270dp,@28dp\" showdelay=\"0\" minshowtime=\"0\"/>"
    L" <qv_bottomloadingbar name=\"bottom_fail\" pos=\"290dp,80dp,@270dp,@28dp\" qvstyle=\"LB2\"/>"
    L"</window>"
    // Page loading: spinner, empty, fail.
    L"<window pos=\"0,[8dp,@560dp,@180dp\" colorBkgnd=\"@color\\style_gallery\\card\">"
    L" <qv_pageloadingctrl name=\"page_loading\" pos=\"0,0,@180dp,-0\" loadingtext=\"Loading positions\" "
    L"  showdelay=\"0\" minshowtime=\"0\"/>"
    L" <qv_pageloadingctrl name=\"page_empty\" pos=\"190dp,0,@180dp,-0\" qvstyle=\"PL2\" emptytext=\"No orders today\"/>"
    L" <qv_pageloadingctrl name=\"page_fail\" pos=\"380dp,0,@180dp,-0\" qvstyle=\"PL2\"/>"
    L"</window>"
    // Progress bars and combo boxes.
    L"<window pos=\"0,[8dp,@560dp,@96dp\" colorBkgnd=\"@color\\style_gallery\\card\">"
    L" <qv_progress pos=\"12dp,12dp,@200dp,@16dp\" value=\"42\" showtext=\"1\"/>"
    L" <qv_progress pos=\"12dp,[8dp,@200dp,@16dp\" qvstyle=\"PG2\" value=\"75\"/>"
    L" <qv_progress pos=\"12dp,[8dp,@200dp,@16dp\" qvstyle=\"PG3\" value=\"100\" showtext=\"1\"/>"
    L" <qv_progress name=\"sweep\" pos=\"240dp,12dp,@140dp,@16dp\" indeterminate=\"1\"/>"
    L" <qv_progress pos=\"240dp,[8dp,@140dp,@16dp\" qvstyle=\"PG4\" value=\"20\"/>"
    L" <qv_combobox name=\"combo\" pos=\"400dp,8dp,@140dp,@24dp\" curSel=\"1\"><items><item text=\"Limit\"/>"
    L"  <item text=\"Market\"/></items></qv_combobox>"
    L" <qv_combobox name=\"combo_edit\" pos=\"400dp,[8dp,@140dp,@24dp\" dropDown=\"0\" curSel=\"0\"><items>"
    L"  <item text=\"Good till day\"/></items></qv_combobox>"
    L"</window>"
    // Picture upload: empty, uploading, done, failed, and the photo slot.
    L"<window pos=\"0,[8dp,@560dp,@124dp\" colorBkgnd=\"@color\\style_gallery\\card\">"
    L" <qv_pictureuploadctrl name=\"up_empty\" pos=\"8dp,12dp\" hinttext=\"Front of ID card\"/>"
    L" <qv_pictureuploadctrl name=\"up_uploading\" pos=\"[8dp,12dp\"/>"
    L" <qv_pictureuploadctrl name=\"up_done\" pos=\"[8dp,12dp\" qvstyle=\"PU2\"/>"
    L"</window>"
    L"<window pos=\"0,[8dp,@560dp,@124dp\" colorBkgnd=\"@color\\style_gallery\\card\">"
    L" <qv_pictureuploadctrl name=\"up_failed\" pos=\"8dp,12dp\"/>"
    L" <qv_pictureuploadctrl name=\"up_card\" pos=\"[8dp,12dp\"/>"
    L"</window>"
    L"</root></SOUI>";

class StateLookTest : public LookTestBase {
 protected:
  template <class T>
  T* Get(const wchar_t* name) {
    T* w = Find<T>(name);
    EXPECT_TRUE(w) << SStringW(name).ToUtf8();
    return w;
  }
};

TEST_P(StateLookTest, EveryControlInEveryState) {
  CreateHost(kSheet, 576 * zoom_ / 100, 684 * zoom_ / 100);
  const SStringW card = SStringW::FromUtf8(QV_SOURCE_DIR "/apps/gallery/id_card_sample.png");
  Get<QVTopLoadingBar>(L"bar_loading")->SetLoadingState(QVLoadingBar_Loading);
  Get<QVBottomLoadingBar>(L"bottom_loading")->SetLoadingState(QVLoadingBar_Loading);
  QVTopLoadingBar* complete = Get<QVTopLoadingBar>(L"bar_complete");
  complete->SetLoadingState(QVLoadingBar_Loading);
  complete->SetLoadingState(QVLoadingBar_Complete);
  Get<QVTopLoadingBar>(L"bar_remind")->SetLoadingState(QVLoadingBar_Remind);
  Get<QVTopLoadingBar>(L"bar_fail")->SetLoadingState(QVLoadingBar_Fail);
  Get<QVBottomLoadingBar>(L"bottom_fail")->SetLoadingState(QVLoadingBar_Fail);
  Get<QVPageLoadingCtrl>(L"page_loading")->SetPageState(QVPageLoading_Loading);
  Get<QVPageLoadingCtrl>(L"page_empty")->SetPageState(QVPageLoading_Empty);
  Get<QVPageLoadingCtrl>(L"page_fail")->SetPageState(QVPageLoading_Fail);
  QVPictureUploadCtrl* uploading = Get<QVPictureUploadCtrl>(L"up_uploading");
  uploading->BeginUpload(card);
  uploading->SetUploadProgress(40);
  Get<QVPictureUploadCtrl>(L"up_done")->SetPictureFile(card);
  Get<QVPictureUploadCtrl>(L"up_card")->SetPictureFile(card);
  QVPictureUploadCtrl* failed = Get<QVPictureUploadCtrl>(L"up_failed");
  failed->BeginUpload(card);
  failed->FailUpload();
  Get<SOUI::SComboBox>(L"combo_edit")->GetEdit()->SetFocus();
  // A fixed moment: the sweeps part way, the complete line half faded.
  Advance(500);
  Layout();
  host()->Render();
  EXPECT_TRUE(SOUI::MatchesReferencePng(*dynamic_cast<SOUI::CairoRenderTarget*>(host()->GetFrame()),
                                        Reference("qv_state_controls"), 16, 0.01));
}

INSTANTIATE_TEST_SUITE_P(ZoomsAndThemes, StateLookTest,
                         ::testing::Combine(::testing::Values(100, 150), ::testing::Bool()),
                         [](const ::testing::TestParamInfo<std::tuple<int, bool>>& info) {
                           return std::to_string(std::get<0>(info.param)) +
                                  (std::get<1>(info.param) ? "_dark" : "_light");
                         });

}  // namespace
}  // namespace test
}  // namespace QVStandardCtrls
