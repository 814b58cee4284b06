#include "state/picture_upload.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "library_test_base.h"
#include "testing/recording_render.h"

namespace QVStandardCtrls {
namespace test {
namespace {

using SOUI::CRect;
using SOUI::SStringW;

const SStringW kCard = SStringW::FromUtf8(QV_SOURCE_DIR "/apps/gallery/id_card_sample.png");

class PictureUploadTest : public LibraryTestBase {
 protected:
  void SetUp() override {
    LibraryTestBase::SetUp();
    CreateHostWithChildren(L"<qv_pictureuploadctrl name=\"slot\" pos=\"10,10\" hinttext=\"Front of ID card\"/>",
                           400, 300);
    slot_ = Find<QVPictureUploadCtrl>(L"slot");
    ASSERT_TRUE(slot_);
  }
  std::string Paint() {
    Layout();
    SOUI::RecordingRenderTarget rt(400, 300);
    slot_->RedrawRegion(&rt, slot_->GetWindowRect());
    return rt.Dump();
  }
  void Click(SOUI::CPoint pt) {
    gen().MoveMouseTo(pt);
    gen().ClickLeftButton();
  }
  QVPictureUploadCtrl* slot_ = nullptr;
};

TEST_F(PictureUploadTest, EmptySlotAsksTheHostForAFileAndUploadsIt) {
  // Sized by its style: an ID card slot of 160 x 100.
  EXPECT_EQ(slot_->GetWindowRect(), CRect(10, 10, 170, 110));
  std::string dump = Paint();
  EXPECT_NE(dump.find("DrawRoundRect [10,10,170,110] r=(4,4) pen=#C9CDD4FF/1/dash"), std::string::npos) << dump;
  EXPECT_NE(dump.find("DrawText \"Front of ID card\""), std::string::npos) << dump;
  // Hover lights the frame; the cursor says it is clickable.
  gen().MoveMouseTo(90, 60);
  EXPECT_NE(Paint().find("pen=#2F6BFFFF/1/dash"), std::string::npos);
  EXPECT_EQ(host()->GetCursorName(), L"hand");
  // The host answers the click with a file: uploading starts.
  slot_->subscribeEvent(EVT_QVPICTUREUPLOAD_CHOOSE, [](SOUI::EventArgs* e) {
    static_cast<EventQVPictureUploadChoose*>(e)->file = kCard;
    return true;
  });
  Click(SOUI::CPoint(90, 60));
  EXPECT_EQ(CountEvents(EVT_QVPICTUREUPLOAD_CHOOSE), 1);
  ASSERT_EQ(slot_->GetUploadState(), QVPictureUpload_Uploading);
  EXPECT_EQ(slot_->GetFile(), kCard);
  // Progress: clamped, drawn over the dimmed picture.
  slot_->SetUploadProgress(140);
  EXPECT_EQ(slot_->GetUploadProgress(), 100);
  slot_->SetUploadProgress(40);
  dump = Paint();
  EXPECT_NE(dump.find("DrawBitmap"), std::string::npos) << dump;
  EXPECT_NE(dump.find("DrawText \"40%\""), std::string::npos) << dump;
  // A click while uploading does nothing.
  Click(SOUI::CPoint(90, 60));
  EXPECT_EQ(CountEvents(EVT_QVPICTUREUPLOAD_CHOOSE), 1);
  slot_->FinishUpload();
  EXPECT_EQ(slot_->GetUploadState(), QVPictureUpload_Done);
}

TEST_F(PictureUploadTest, DoneShowsTheFittedThumbnailAndRemoves) {
  ASSERT_TRUE(slot_->SetPictureFile(kCard));
  // 240 x 150 fitted into 148 x 88 (6dp inset), centred.
  const CRect pic = slot_->GetPictureRect();
  EXPECT_EQ(pic.Height(), 88);
  EXPECT_EQ(pic.Width(), 140);
  EXPECT_EQ(pic.CenterPoint().x, 90);
  const std::string dump = Paint();
  EXPECT_NE(dump.find("DrawBitmap " + SOUI::RectText(pic) + " bmp=240x150"), std::string::npos) << dump;
  EXPECT_NE(dump.find("FillEllipse " + SOUI::RectText(slot_->GetRemoveRect())), std::string::npos) << dump;
  // A click on the picture is nothing; on the remove button, empty again.
  Click(pic.CenterPoint());
  EXPECT_EQ(slot_->GetUploadState(), QVPictureUpload_Done);
  Click(slot_->GetRemoveRect().CenterPoint());
  EXPECT_EQ(slot_->GetUploadState(), QVPictureUpload_Empty);
  EXPECT_FALSE(slot_->HasPicture());
  EXPECT_EQ(CountEvents(EVT_QVPICTUREUPLOAD_REMOVE), 1);
}

TEST_F(PictureUploadTest, FailedUploadOffersRetryWithTheFile) {
  ASSERT_TRUE(slot_->BeginUpload(kCard));
  slot_->FailUpload();
  ASSERT_EQ(slot_->GetUploadState(), QVPictureUpload_Failed);
  const std::string dump = Paint();
  EXPECT_NE(dump.find("DrawText \"Upload failed\""), std::string::npos) << dump;
  EXPECT_NE(dump.find("DrawText \"Retry\""), std::string::npos) << dump;
  SStringW file;
  slot_->subscribeEvent(EVT_QVPICTUREUPLOAD_RETRY, [&](SOUI::EventArgs* e) {
    file = static_cast<EventQVPictureUploadRetry*>(e)->file;
    return true;
  });
  Click(SOUI::CPoint(20, 20));
  EXPECT_EQ(CountEvents(EVT_QVPICTUREUPLOAD_RETRY), 0);
  Click(slot_->GetRetryRect().CenterPoint());
  ASSERT_EQ(CountEvents(EVT_QVPICTUREUPLOAD_RETRY), 1);
  EXPECT_EQ(file, kCard);
}

TEST_F(PictureUploadTest, MissingOrCorruptPicturesShowFailedWithALogLine) {
  const std::string bad = ::testing::TempDir() + "qv_upload_bad_" + std::to_string(getpid()) + ".png";
  FILE* f = std::fopen(bad.c_str(), "wb");
  ASSERT_TRUE(f);
  std::fputs("\x89PNG but not really", f);
  std::fclose(f);
  EXPECT_FALSE(slot_->SetPictureFile(SStringW::FromUtf8(bad.c_str())));
  EXPECT_EQ(slot_->GetUploadState(), QVPictureUpload_Failed);
  EXPECT_TRUE(LogContains(L"is missing or not a PNG"));
  std::remove(bad.c_str());
  slot_->ClearPicture();
  EXPECT_FALSE(slot_->BeginUpload(L"/nonexistent/front.png"));
  EXPECT_EQ(slot_->GetUploadState(), QVPictureUpload_Failed);
  EXPECT_TRUE(LogContains(L"/nonexistent/front.png"));
  // From the layout as well; an unknown style code changes nothing.
  slot_->SetAttribute(L"picture", L"", FALSE);
  EXPECT_EQ(slot_->GetUploadState(), QVPictureUpload_Empty);
  slot_->SetAttribute(L"qvstyle", L"PU9", FALSE);
  EXPECT_EQ(slot_->GetStyleInfo(), FindQVPictureUploadCtrlStyle(L"PU1"));
  slot_->SetAttribute(L"qvstyle", L"PU2", FALSE);
  Layout();
  EXPECT_EQ(slot_->GetWindowRect(), CRect(10, 10, 110, 110));
}

}  // namespace
}  // namespace test
}  // namespace QVStandardCtrls
