#include "tabs/item_list.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace QVStandardCtrls {
namespace {

struct Node : QVItemListNodeBase<Node> {
  char tag = '?';
};
using List = QVItemListNodeBase<Node>;

// A list of n nodes tagged a, b, c, ...
struct Fixture {
  explicit Fixture(int n) : nodes(static_cast<size_t>(n)) {
    for (int i = 0; i < n; ++i) {
      nodes[static_cast<size_t>(i)].tag = static_cast<char>('a' + i);
      List::ListInsert(head, &nodes[static_cast<size_t>(i)], -1);
    }
  }
  Node* at(char tag) { return tag == '-' ? nullptr : &nodes[static_cast<size_t>(tag - 'a')]; }

  // The order read forwards; checks the invariants on the way and that the
  // backward walk from the tail gives the same order reversed.
  std::string Order() const {
    std::string fwd;
    const Node* tail = nullptr;
    EXPECT_TRUE(!head || head->GetPrev() == nullptr);
    for (const Node* n = head; n; n = n->GetNext()) {
      if (fwd.size() > nodes.size()) return "cycle";
      if (n->GetNext()) {
        EXPECT_EQ(n->GetNext()->GetPrev(), n) << "at " << n->tag;
      }
      fwd += n->tag;
      tail = n;
    }
    std::string back;
    for (const Node* n = tail; n; n = n->GetPrev()) back.insert(back.begin(), n->tag);
    EXPECT_EQ(fwd, back);
    return fwd;
  }

  std::vector<Node> nodes;
  Node* head = nullptr;
};

struct InsertCase {
  int size;
  int index;
  const char* order;
};

class ListInsertTest : public ::testing::TestWithParam<InsertCase> {};

TEST_P(ListInsertTest, PlacesTheNewNode) {
  const InsertCase& c = GetParam();
  Fixture f(c.size);
  Node extra;
  extra.tag = 'x';
  List::ListInsert(f.head, &extra, c.index);
  EXPECT_EQ(f.Order(), c.order);
}

INSTANTIATE_TEST_SUITE_P(Cases, ListInsertTest,
                         ::testing::Values(InsertCase{0, 0, "x"}, InsertCase{0, 5, "x"}, InsertCase{3, 0, "xabc"},
                                           InsertCase{3, 1, "axbc"}, InsertCase{3, 2, "abxc"},
                                           InsertCase{3, 3, "abcx"}, InsertCase{3, 9, "abcx"},
                                           InsertCase{3, -1, "abcx"}, InsertCase{1, 0, "xa"}));

struct SwapCase {
  int size;
  char a, b;
  const char* order;
};

class ListSwapTest : public ::testing::TestWithParam<SwapCase> {};

TEST_P(ListSwapTest, ExchangesPlaces) {
  const SwapCase& c = GetParam();
  Fixture f(c.size);
  List::ListSwap(f.head, f.at(c.a), f.at(c.b));
  EXPECT_EQ(f.Order(), c.order);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ListSwapTest,
    ::testing::Values(SwapCase{2, 'a', 'b', "ba"}, SwapCase{2, 'b', 'a', "ba"},  // head/tail, adjacent
                      SwapCase{5, 'a', 'c', "cbade"},                            // first and third
                      SwapCase{5, 'c', 'a', "cbade"}, SwapCase{5, 'a', 'e', "ebcda"},  // head and tail
                      SwapCase{5, 'b', 'd', "adcbe"}, SwapCase{5, 'd', 'e', "abced"},  // tail adjacent
                      SwapCase{5, 'c', 'b', "acbde"}, SwapCase{5, 'c', 'c', "abcde"},
                      SwapCase{5, '-', 'c', "abcde"}, SwapCase{5, 'c', '-', "abcde"}));

struct MoveCase {
  char node, after;  // '-' for null after: to the front
  const char* order;
};

class ListMoveTest : public ::testing::TestWithParam<MoveCase> {};

TEST_P(ListMoveTest, RelinksBehindAfter) {
  const MoveCase& c = GetParam();
  Fixture f(4);
  List::ListMove(f.head, f.at(c.node), f.at(c.after));
  EXPECT_EQ(f.Order(), c.order);
}

INSTANTIATE_TEST_SUITE_P(Cases, ListMoveTest,
                         ::testing::Values(MoveCase{'a', 'b', "bacd"}, MoveCase{'a', 'd', "bcda"},
                                           MoveCase{'d', '-', "dabc"}, MoveCase{'c', 'a', "acbd"},
                                           MoveCase{'b', '-', "bacd"}, MoveCase{'a', '-', "abcd"}));

TEST(ItemListTest, RemovedNodeLeavesAConsistentListAndComesBackThroughInsert) {
  Fixture f(4);
  List::ListRemove(f.head, f.at('a'));
  EXPECT_EQ(f.Order(), "bcd");
  List::ListRemove(f.head, f.at('c'));
  EXPECT_EQ(f.Order(), "bd");
  // The removed node still points at its old neighbours; re-inserting
  // rewrites them.
  EXPECT_EQ(f.at('c')->GetNext(), f.at('d'));
  List::ListInsert(f.head, f.at('c'), 0);
  EXPECT_EQ(f.Order(), "cbd");
  List::ListRemove(f.head, f.at('d'));
  List::ListRemove(f.head, f.at('b'));
  List::ListRemove(f.head, f.at('c'));
  EXPECT_EQ(f.head, nullptr);
}

TEST(ItemListTest, ARemovedNodeIsNeverRelinkedByMoveRemoveOrSwap) {
  Fixture f(4);
  List::ListRemove(f.head, f.at('b'));
  // 'b' still points at 'a' and 'c'; a late move, remove or swap of it (or
  // with it as the anchor) must leave the list alone.
  List::ListMove(f.head, f.at('b'), f.at('c'));
  List::ListMove(f.head, f.at('b'), nullptr);
  List::ListMove(f.head, f.at('a'), f.at('b'));
  List::ListRemove(f.head, f.at('b'));
  List::ListSwap(f.head, f.at('b'), f.at('d'));
  EXPECT_EQ(f.Order(), "acd");
  List::ListInsert(f.head, f.at('b'), 1);
  EXPECT_EQ(f.Order(), "abcd");
}

TEST(ItemListTest, MovingTheOnlyNodeOrANodeBehindItselfKeepsTheList) {
  Fixture one(1);
  List::ListMove(one.head, one.at('a'), nullptr);
  EXPECT_EQ(one.Order(), "a");
  Fixture f(3);
  List::ListMove(f.head, f.at('b'), f.at('b'));
  EXPECT_EQ(f.Order(), "abc");
}

struct LoopCase {
  char from, to;  // to '-' loops to the tail
  char stop_at;   // fn returns true here ('-' never)
  const char* visited;
};

class ListLoopTest : public ::testing::TestWithParam<LoopCase> {};

TEST_P(ListLoopTest, VisitsInOrder) {
  const LoopCase& c = GetParam();
  Fixture f(5);
  std::string seen;
  auto fn = [&](Node* n) {
    seen += n->tag;
    return n->tag == c.stop_at;
  };
  if (c.to == '-') List::ListLoop(f.at(c.from), fn);
  else List::ListLoop(f.at(c.from), f.at(c.to), fn);
  EXPECT_EQ(seen, c.visited);
}

INSTANTIATE_TEST_SUITE_P(Cases, ListLoopTest,
                         ::testing::Values(LoopCase{'a', 'c', '-', "abc"}, LoopCase{'b', 'b', '-', "b"},
                                           LoopCase{'a', '-', '-', "abcde"}, LoopCase{'a', '-', 'a', "a"},
                                           LoopCase{'b', 'e', 'c', "bc"}, LoopCase{'d', 'b', '-', "de"},
                                           LoopCase{'-', 'c', '-', ""}));

TEST(ItemListTest, LoopWithEmptyFunctionThrows) {
  Fixture f(2);
  EXPECT_THROW(List::ListLoop(f.head, std::function<bool(Node*)>()), std::bad_function_call);
}

struct BehindCase {
  char a, b;
  bool behind;
};

class ListIsBehindTest : public ::testing::TestWithParam<BehindCase> {};

TEST_P(ListIsBehindTest, Answers) {
  const BehindCase& c = GetParam();
  Fixture f(4);
  Node stray;
  Node* b = c.b == 'z' ? &stray : f.at(c.b);
  EXPECT_EQ(List::ListIsBehind(f.at(c.a), b), c.behind);
}

INSTANTIATE_TEST_SUITE_P(Cases, ListIsBehindTest,
                         ::testing::Values(BehindCase{'b', 'b', false}, BehindCase{'d', 'a', true},
                                           BehindCase{'a', 'd', false}, BehindCase{'c', 'b', true},
                                           BehindCase{'b', 'c', false}, BehindCase{'a', 'a', false},
                                           BehindCase{'c', 'z', false}));

}  // namespace
}  // namespace QVStandardCtrls
