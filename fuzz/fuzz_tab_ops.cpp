// Tab strips driven by a stream of operations: the host's calls (insert,
// remove, select, set attributes), the user's mouse (press, move, release,
// right click, leave) and time, on each strip class of the library. After
// every operation the strip must still agree with a model kept here.
//
//   [strip] [setup flags] [initial tabs] { [op] [operands...] } ...
//
// The model knows which tab ids exist (not their order: dragging reorders).
// Checked after each step:
//   - the list from GetHead() is well linked (prev/next agree, no cycle)
//     and holds exactly the model's ids, each once, every item a child of
//     the strip;
//   - GetTabCount() matches, the selection is one of the tabs or none, and
//     GetCurSelOrder()/GetCurSelId()/GetTabObjById() agree about it;
//   - a selected item is marked selected, and in a single-selection strip
//     it is the only one marked;
//   - the strip reported each insert and remove exactly once.
#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "fuzz/fuzz_support.h"
#include "tabs/tab_variants.h"
#include "tabs/tabctrl_base.h"

namespace {

using QVStandardCtrls::CQVFilterTab;
using QVStandardCtrls::CQVItemBase;
using QVStandardCtrls::CQVTabCtrlBase;
using SOUI::CPoint;
using SOUI::CRect;
using SOUI::SStringW;

const wchar_t* const kStrips[] = {L"qv_primarytab", L"qv_secondarytab", L"qv_thirdtab",   L"qv_segmenttab",
                                  L"qv_filtertab",  L"qv_tabview",      L"qv_tabctrlbase"};

const wchar_t* const kTitles[] = {L"", L"A", L"\u81ea\u9009", L"A rather long tab title that overflows", L"1",
                                  L"\u6caa\u6df1\u6e2f\u7f8e"};

const std::pair<const wchar_t*, const wchar_t*> kStripAttrs[] = {
    {L"dragable", L"1"},       {L"dragable", L"0"},    {L"animation", L"0"},  {L"animation", L"1"},
    {L"single", L"0"},         {L"single", L"1"},      {L"MaxRowCount", L"2"}, {L"MaxRowCount", L"0"},
    {L"MaxRowCount", L"-3"},   {L"showAdd", L"0"},     {L"showAdd", L"1"},    {L"visible", L"0"},
    {L"visible", L"1"},        {L"enable", L"0"},      {L"enable", L"1"},     {L"pos", L"10,10,@200,@40"},
    {L"pos", L"10,10,@560,@80"}, {L"pos", L"0,0,@0,@0"}, {L"TabMarginX", L"8"}, {L"tabMediate", L"1"},
};

const std::pair<const wchar_t*, const wchar_t*> kItemAttrs[] = {
    {L"title", L"B"},      {L"title", L"A much longer title than before"}, {L"title", L""},
    {L"reddot", L"1"},     {L"reddot", L"0"},       {L"enable", L"0"},      {L"enable", L"1"},
    {L"btn_tail", L"1"},   {L"btn_tail", L"0"},     {L"img_head", L"skin_icon_redpoint"},
    {L"img_head", L""},    {L"iconIndex", L"3"},    {L"visible", L"0"},     {L"width", L"200"},
    {L"createAnimator", L"0"},
};

enum Op {
  kInsert, kRemoveById, kRemoveByOrder, kSelectById, kSelectByOrder, kPress, kMove, kRelease, kAdvance,
  kStripAttr, kItemAttr, kRightClick, kRender, kClick, kLeave, kZoom, kOpCount
};

class TabOps {
 public:
  TabOps(qvfuzz::FuzzApp& fuzz, qvfuzz::ByteReader& in) : fuzz_(fuzz), in_(in) {}

  bool Setup() {
    const wchar_t* tag = kStrips[in_.Pick(sizeof(kStrips) / sizeof(kStrips[0]))];
    const uint8_t flags = in_.Byte();
    const int initial = in_.Range(0, 6);
    SStringW xml = SStringW::Format2(L"<SOUI width='600' height='160'><root><%s name='strip' pos='10,10,@560,@%d'",
                                     tag, (flags & 0x10) ? 100 : 40);
    if (flags & 1) xml += L" dragable='1'";
    if (flags & 2) xml += L" animation='0'";
    if (flags & 4) xml += L" single='0'";
    if (flags & 8) xml += L" MaxRowCount='3'";
    xml += L">";
    if (flags & 0x20) xml += L"<tab width='60' height='32'/>";
    for (int i = 0; i < initial; ++i) {
      xml += SStringW::Format2(L"<tabitem title='Tab %d'%s/>", i, (flags & 0x40) && i == 1 ? L" selected='1'" : L"");
    }
    xml += SStringW::Format2(L"</%s></root></SOUI>", tag);
    remove_dragged_out_ = flags & 0x80;
    veto_ = (flags & 0x60) == 0x60;
    if (!host_.InitFromXmlText(xml)) return false;
    host_.Create(nullptr, 0, 0, 600, 160);
    host_.ShowWindow(SOUI::SW_SHOW);
    strip_ = host_.FindChildByName2<CQVTabCtrlBase>(L"strip");
    QV_FUZZ_CHECK(strip_ != nullptr, "no strip of class %ls", tag);
    filter_ = dynamic_cast<CQVFilterTab*>(strip_);
    for (CQVItemBase* it = strip_->GetHead(); it; it = it->GetNext()) ids_.push_back(it->GetItemId());
    // The base strip takes only its template; the variants create "tabitem"s.
    const int created = SStringW(tag) == L"qv_tabctrlbase" ? 0 : initial;
    QV_FUZZ_CHECK(static_cast<int>(ids_.size()) == created, "%zu tabs from %d tabitem elements", ids_.size(),
                  initial);
    Subscribe();
    host_.Render();
    Check("setup");
    return true;
  }

  void Run() {
    for (int step = 0; step < 400 && !in_.Empty(); ++step) {
      const Op op = static_cast<Op>(in_.Byte() % kOpCount);
      Apply(op);
      if (Trace()) Dump(kOpNames[op]);
      Check(kOpNames[op]);
    }
    // Everything settles, then the strip is laid out and painted once more.
    fuzz_.Advance(1000);
    host_.Render();
    Check("settle");
  }

 private:
  static constexpr const char* kOpNames[kOpCount] = {
      "insert", "remove by id", "remove by order", "select by id", "select by order", "press", "move",
      "release", "advance", "strip attribute", "item attribute", "right click", "render", "click", "leave",
      "zoom"};

  // A host as a page would write it: a tab's close button and a tab torn
  // off the strip remove that tab, a veto may refuse selection changes.
  void Subscribe() {
    using namespace QVStandardCtrls;
    strip_->subscribeEvent(EVT_QVTAB_ITEM_INSERT, [this](SOUI::EventArgs*) {
      ++insert_events_;
      return true;
    });
    strip_->subscribeEvent(EVT_QVTAB_ITEM_REMOVED, [this](SOUI::EventArgs*) {
      ++remove_events_;
      return true;
    });
    strip_->subscribeEvent(EVT_QVTAB_ITEM_CLICK_TAILICON, [this](SOUI::EventArgs* e) {
      RemoveId(static_cast<EventQVTabItemClickTailicon*>(e)->nId);
      return true;
    });
    strip_->subscribeEvent(EVT_QVTAB_ITEM_DRAG_OUT, [this](SOUI::EventArgs* e) {
      if (remove_dragged_out_) RemoveId(static_cast<EventQVTabItemDragOut*>(e)->nId);
      return true;
    });
    strip_->subscribeEvent(EVT_QVTAB_SEL_CHANGING, [this](SOUI::EventArgs* e) {
      auto* evt = static_cast<EventQVTabSelChanging*>(e);
      if (veto_ && (evt->nNewId & 1)) evt->bCancel = true;
      return true;
    });
  }

  void RemoveId(int id) {
    const bool known = std::find(ids_.begin(), ids_.end(), id) != ids_.end();
    const bool removed = strip_->RemoveTabById(id);
    QV_FUZZ_CHECK(removed == known, "RemoveTabById(%d) answered %d for a tab that %s", id, removed,
                  known ? "exists" : "does not exist");
    if (removed) {
      ids_.erase(std::find(ids_.begin(), ids_.end(), id));
      ++removes_;
    }
  }

  // A point around the strip: mostly over it, sometimes beyond its edges
  // (dragging out, leaving).
  CPoint ReadPoint() {
    const CRect rc = strip_->GetWindowRect();
    const int x = rc.left - 40 + in_.Range(0, rc.Width() + 80);
    const int y = rc.top - 60 + in_.Range(0, rc.Height() + 120);
    return CPoint(x, y);
  }

  int ReadId() {
    const uint8_t sel = in_.Byte();
    if (!ids_.empty() && sel < 0xF0) return ids_[sel % ids_.size()];
    return static_cast<int>(sel) - 0xF8;  // unknown ids, negative ones among them
  }

  void Apply(Op op) {
    const int n = static_cast<int>(ids_.size());
    switch (op) {
      case kInsert: {
        const int index = in_.Range(-1, n + 1);
        const uint8_t what = in_.Byte();
        std::vector<std::pair<SStringW, SStringW>> attrs;
        attrs.emplace_back(L"title", kTitles[what % (sizeof(kTitles) / sizeof(kTitles[0]))]);
        if (what & 0x08) attrs.emplace_back(L"reddot", L"1");
        if (what & 0x10) attrs.emplace_back(L"btn_tail", L"1");
        if (what & 0x20) attrs.emplace_back(L"enable", L"0");
        if (what & 0x40) attrs.emplace_back(L"img_head", L"skin_icon_redpoint");
        const int id = strip_->InsertTab(attrs, index);
        QV_FUZZ_CHECK(id >= 0, "InsertTab failed");
        QV_FUZZ_CHECK(std::find(ids_.begin(), ids_.end(), id) == ids_.end(), "InsertTab reused id %d", id);
        ids_.push_back(id);
        ++inserts_;
        break;
      }
      case kRemoveById:
        RemoveId(ReadId());
        break;
      case kRemoveByOrder: {
        const int order = in_.Range(-1, n);
        const int id = strip_->GetTabId(order);
        const bool removed = strip_->RemoveTabByOrder(order);
        QV_FUZZ_CHECK(removed == (order >= 0 && order < n), "RemoveTabByOrder(%d) of %d tabs answered %d", order,
                      n, removed);
        if (removed) {
          ids_.erase(std::find(ids_.begin(), ids_.end(), id));
          ++removes_;
        }
        break;
      }
      case kSelectById: {
        const int id = ReadId();
        strip_->SetCurSelById(id, in_.Bool());
        break;
      }
      case kSelectByOrder: {
        const int order = in_.Range(-1, n);
        strip_->SetCurSelByOrder(order, in_.Bool());
        break;
      }
      case kPress: {
        const CPoint pt = ReadPoint();
        host_.OnMouseEvent(WM_MOUSEMOVE, buttons_, pt);
        buttons_ |= MK_LBUTTON;
        host_.OnMouseEvent(WM_LBUTTONDOWN, buttons_, pt);
        break;
      }
      case kMove:
        host_.OnMouseEvent(WM_MOUSEMOVE, buttons_, ReadPoint());
        break;
      case kRelease:
        buttons_ &= ~MK_LBUTTON;
        host_.OnMouseEvent(WM_LBUTTONUP, buttons_, host_.GetCursorPos());
        break;
      case kAdvance:
        fuzz_.Advance(in_.Byte() * 4u);
        break;
      case kStripAttr: {
        const auto& [name, value] = kStripAttrs[in_.Pick(sizeof(kStripAttrs) / sizeof(kStripAttrs[0]))];
        strip_->SetAttribute(name, value, FALSE);
        break;
      }
      case kItemAttr: {
        const auto& [name, value] = kItemAttrs[in_.Pick(sizeof(kItemAttrs) / sizeof(kItemAttrs[0]))];
        strip_->SetItemAttrByOrder(name, value, in_.Range(-1, n));
        break;
      }
      case kRightClick: {
        const CPoint pt = ReadPoint();
        host_.OnMouseEvent(WM_MOUSEMOVE, buttons_, pt);
        host_.OnMouseEvent(WM_RBUTTONDOWN, buttons_ | MK_RBUTTON, pt);
        host_.OnMouseEvent(WM_RBUTTONUP, buttons_, pt);
        break;
      }
      case kRender:
        host_.Render();
        break;
      case kClick: {
        const CPoint pt = ReadPoint();
        host_.OnMouseEvent(WM_MOUSEMOVE, buttons_, pt);
        host_.OnMouseEvent(WM_LBUTTONDOWN, buttons_ | MK_LBUTTON, pt);
        host_.OnMouseEvent(WM_LBUTTONUP, buttons_, pt);
        break;
      }
      case kLeave:
        host_.OnMouseEvent(WM_MOUSELEAVE, buttons_, host_.GetCursorPos());
        break;
      case kZoom:
        fuzz_.app().SetZoom(in_.Bool() ? 150 : 100);
        break;
      case kOpCount:
        break;
    }
  }

  // QV_FUZZ_TRACE=1: one line per operation, to read a reproducer.
  static bool Trace() {
    static const bool trace = [] {
      const char* v = std::getenv("QV_FUZZ_TRACE");
      return v && *v == '1';
    }();
    return trace;
  }
  void Dump(const char* op) {
    const CPoint pt = host_.GetCursorPos();
    std::fprintf(stderr, "%-16s mouse %d,%d%s  list", op, pt.x, pt.y, (buttons_ & MK_LBUTTON) ? " (held)" : "");
    int steps = 0;
    for (CQVItemBase* it = strip_->GetHead(); it && steps < 64; it = it->GetNext(), ++steps) {
      std::fprintf(stderr, " %d%s", it->GetItemId(), it == strip_->GetCurSel() ? "*" : "");
    }
    std::fprintf(stderr, "  model");
    for (int id : ids_) std::fprintf(stderr, " %d", id);
    std::fprintf(stderr, "\n");
  }

  void Check(const char* after) {
    const int n = static_cast<int>(ids_.size());
    // The list: linked both ways, no cycle, exactly the model's ids.
    std::vector<int> seen;
    CQVItemBase* prev = nullptr;
    for (CQVItemBase* it = strip_->GetHead(); it; it = it->GetNext()) {
      QV_FUZZ_CHECK(static_cast<int>(seen.size()) <= n, "after %s: the list holds more than the %d tabs", after, n);
      QV_FUZZ_CHECK(it->GetPrev() == prev, "after %s: tab %d's previous is not the tab before it", after,
                    it->GetItemId());
      QV_FUZZ_CHECK(it->GetParent() == strip_, "after %s: tab %d is not a child of the strip", after,
                    it->GetItemId());
      seen.push_back(it->GetItemId());
      prev = it;
    }
    std::vector<int> expected = ids_;
    std::sort(seen.begin(), seen.end());
    std::sort(expected.begin(), expected.end());
    QV_FUZZ_CHECK(seen == expected, "after %s: the list holds %zu tabs, %d expected (or other ids)", after,
                  seen.size(), n);
    QV_FUZZ_CHECK(strip_->GetTabCount() == n, "after %s: GetTabCount() %d, %d tabs", after, strip_->GetTabCount(),
                  n);

    // The selection.
    CQVItemBase* sel = strip_->GetCurSel();
    const int order = strip_->GetCurSelOrder();
    QV_FUZZ_CHECK(order >= -1 && order < n, "after %s: selection order %d of %d tabs", after, order, n);
    if (sel) {
      QV_FUZZ_CHECK(order >= 0, "after %s: the selected tab %d is not in the list", after, sel->GetItemId());
      QV_FUZZ_CHECK(strip_->GetCurSelId() == sel->GetItemId(), "after %s: GetCurSelId() disagrees", after);
      QV_FUZZ_CHECK(strip_->GetTabObjByOrder(order) == sel, "after %s: the tab at the selected order is another",
                    after);
      QV_FUZZ_CHECK(strip_->GetTabObjById(sel->GetItemId()) == sel, "after %s: two tabs share id %d", after,
                    sel->GetItemId());
      QV_FUZZ_CHECK(sel->IsSelected(), "after %s: the selected tab %d is not marked selected", after,
                    sel->GetItemId());
    } else {
      QV_FUZZ_CHECK(order == -1 && strip_->GetCurSelId() == -1, "after %s: no selection, yet order %d", after,
                    order);
    }
    if (filter_ && !filter_->IsSingle()) {
      for (CQVItemBase* it : filter_->GetSelectedItems()) {
        QV_FUZZ_CHECK(strip_->GetTabOrder(it->GetItemId()) >= 0, "after %s: a chip no longer in the strip is selected",
                      after);
      }
    } else {
      for (CQVItemBase* it = strip_->GetHead(); it; it = it->GetNext()) {
        QV_FUZZ_CHECK(!it->IsSelected() || it == sel, "after %s: tab %d is marked selected besides tab %d", after,
                      it->GetItemId(), sel ? sel->GetItemId() : -1);
      }
    }

    // What the strip reported.
    QV_FUZZ_CHECK(insert_events_ == inserts_, "after %s: %d insert events for %d inserts", after, insert_events_,
                  inserts_);
    QV_FUZZ_CHECK(remove_events_ == removes_, "after %s: %d remove events for %d removes", after, remove_events_,
                  removes_);
  }

  qvfuzz::FuzzApp& fuzz_;
  qvfuzz::ByteReader& in_;
  SOUI::SHostWnd host_;
  CQVTabCtrlBase* strip_ = nullptr;
  CQVFilterTab* filter_ = nullptr;
  std::vector<int> ids_;
  UINT buttons_ = 0;
  bool remove_dragged_out_ = false;
  bool veto_ = false;
  int inserts_ = 0, removes_ = 0;
  int insert_events_ = 0, remove_events_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  qvfuzz::ByteReader in(data, size);
  qvfuzz::FuzzApp fuzz;
  TabOps ops(fuzz, in);
  if (ops.Setup()) ops.Run();
  return 0;
}
