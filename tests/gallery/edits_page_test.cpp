// The gallery's edits page typed into as a user would, with the gallery's
// own host code: its XML is the reference's example of each edit.
#include <gtest/gtest.h>

#include "edits/qv_editcom.h"
#include "edits/qv_editpwd.h"
#include "gallery_page_test_base.h"

namespace {

using SOUI::SStringW;

using EditsPageTest = gallery::GalleryPageTest;

TEST_F(EditsPageTest, FiltersPriceCompositeAndPinAnswerTheKeyboard) {
  // Each filter keeps what it accepts.
  const wchar_t* const kTyped[][3] = {{L"filter_float", L"-.5.1.x", L"5.1"},  {L"filter_number", L"1-2.3", L"123"},
                                      {L"filter_integer", L"-4-2", L"-42"},  {L"filter_EnUpper", L"ab1C", L"ABC"},
                                      {L"filter_EnLower", L"AB1c", L"abc"}};
  for (const auto& t : kTyped) {
    Click(Find(t[0]));
    gen().Type(t[1]);
    EXPECT_EQ(Find(t[0])->GetWindowText(), SStringW(t[2])) << t[0];
  }
  // The price steps by its tick.
  Click(Find(L"price"));
  gen().PressAndReleaseKey(VK_UP);
  EXPECT_EQ(Find(L"price")->GetWindowText(), SStringW(L"368.21"));
  // The composite's clear button empties it.
  auto* com = Find<QVStandardCtrls::CQVEditCom>(L"com_nic");
  Click(com->GetClearButton());
  EXPECT_EQ(com->GetWindowText(), SStringW(L""));
  // The PIN field completes with three more digits.
  auto* pin = Find<QVStandardCtrls::CQVEditPwd>(L"pin1");
  Click(pin);
  gen().Type(L"456");
  EXPECT_TRUE(pin->IsComplete());
  EXPECT_EQ(CountEvents(QVStandardCtrls::EVT_QVEDITPWD_COMPLETE), 1);
}

}  // namespace
