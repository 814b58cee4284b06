#include "edits/qv_editpwd.h"

#include <gtest/gtest.h>

#include <string>

#include "library_test_base.h"
#include "testing/recording_render.h"

namespace QVStandardCtrls {
namespace {

using SOUI::SStringW;

class QVEditPwdTest : public test::LibraryTestBase {
 protected:
  CQVEditPwd* Make(const wchar_t* attrs) {
    CreateHostWithChildren((SStringW(L"<qv_editpwd name=\"p\" pos=\"10,10\" ") + attrs + L"/>").c_str());
    Layout();
    CQVEditPwd* p = Find<CQVEditPwd>(L"p");
    if (p) p->SetFocus();
    return p;
  }
  void Ctrl(UINT vk) {
    gen().PressKey(VK_CONTROL);
    gen().PressAndReleaseKey(vk);
    gen().ReleaseKey(VK_CONTROL);
  }
  int Completions() const { return CountEvents(EVT_QVEDITPWD_COMPLETE); }
  int Errors() const { return CountEvents(EVT_QVEDIT_INPUT_ERROR); }
};

TEST_F(QVEditPwdTest, CellsTakeTheStyleSizes) {
  CQVEditPwd* p = Make(L"qvstyle=\"PI2\" length=\"4\" gap=\"10\"");
  // Four 24x40 cells with three 10 px gaps.
  EXPECT_EQ(p->GetWindowRect().Width(), 4 * 24 + 3 * 10);
  EXPECT_EQ(p->GetWindowRect().Height(), 40);
  EXPECT_EQ(p->CellRect(1).left, p->GetWindowRect().left + 34);
}

TEST_F(QVEditPwdTest, FillsBackspacesAcrossCellsAndCompletesOnce) {
  CQVEditPwd* p = Make(L"length=\"4\"");
  gen().Type(L"12a3");
  EXPECT_EQ(p->GetCode(), L"123");
  EXPECT_EQ(Errors(), 1);
  gen().Type(L"4");
  EXPECT_TRUE(p->IsComplete());
  EXPECT_EQ(Completions(), 1);
  // Full: a fifth digit is refused, and completion is not raised again.
  gen().Type(L"5");
  EXPECT_EQ(p->GetCode(), L"1234");
  EXPECT_EQ(Completions(), 1);
  // Backspace empties the last cell, then the one before it.
  gen().Char(L'\b');
  gen().Char(L'\b');
  EXPECT_EQ(p->GetCode(), L"12");
  gen().Type(L"90");
  EXPECT_EQ(Completions(), 2);  // completed anew
  for (int i = 0; i < 6; ++i) gen().Char(L'\b');
  EXPECT_EQ(p->GetCode(), L"");
}

TEST_F(QVEditPwdTest, PasteTakesAWholeCodeOrNothing) {
  CQVEditPwd* p = Make(L"");
  gen().Type(L"9");
  app_->GetClipboard().SetText(L"12 34 5x");
  Ctrl('V');
  EXPECT_EQ(p->GetCode(), L"9");
  app_->GetClipboard().SetText(L"1234567");  // one digit too many
  Ctrl('V');
  EXPECT_EQ(p->GetCode(), L"9");
  EXPECT_EQ(Errors(), 2);
  app_->GetClipboard().SetText(L" 123 456\r\n");
  Ctrl('V');
  EXPECT_EQ(p->GetCode(), L"123456");
  EXPECT_EQ(Completions(), 1);
  // Committed input-method digits fill cells like typed ones.
  p->Clear();
  host()->OnImeCommit(L"42");
  EXPECT_EQ(p->GetCode(), L"42");
  host()->OnImeCommit(L"\x4E00");
  EXPECT_EQ(p->GetCode(), L"42");
  EXPECT_EQ(Errors(), 3);
}

TEST_F(QVEditPwdTest, MaskedCellsDrawDotsNeverDigits) {
  CQVEditPwd* p = Make(L"length=\"4\" code=\"73\"");
  auto paint = [p] {
    SOUI::RecordingRenderTarget rt(400, 300);
    p->RedrawRegion(&rt, p->GetWindowRect());
    return rt.Dump();
  };
  const std::string masked = paint();
  EXPECT_EQ(masked.find("\"7\""), std::string::npos);
  size_t dots = 0;
  for (size_t at = masked.find("FillEllipse"); at != std::string::npos; at = masked.find("FillEllipse", at + 1)) ++dots;
  EXPECT_EQ(dots, 2u);
  p->SetAttribute(L"mask", L"0", FALSE);
  const std::string shown = paint();
  EXPECT_NE(shown.find("\"7\""), std::string::npos);
  EXPECT_EQ(shown.find("FillEllipse"), std::string::npos);
}

TEST_F(QVEditPwdTest, BadLengthsAndCodesAreClamped) {
  CQVEditPwd* p = Make(L"length=\"-3\"");
  EXPECT_EQ(p->GetLength(), 1);
  p->SetAttribute(L"length", L"100000", FALSE);
  EXPECT_EQ(p->GetLength(), CQVEditPwd::kMaxCells);
  EXPECT_FALSE(p->SetCode(L"12a"));
  EXPECT_TRUE(p->SetCode(L"123456"));
  p->SetAttribute(L"length", L"4", FALSE);  // a shorter field cuts the code
  EXPECT_EQ(p->GetCode(), L"1234");
}

}  // namespace
}  // namespace QVStandardCtrls
