#include <zogbl/tree.h>

#include "support/fault_loop.h"
#include "support/virtual_slots.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace {

std::string g_destroyed; // names of the nodes, in the order of their end

/// A node with a letter for a name, kept as its user type.
class Node : public CZoTree {
public:
    explicit Node(char name = '?') { SetUserType(static_cast<BYTE>(name)); }
    ~Node() override { g_destroyed += NameOf(this); }

    using CZoTree::ClearData;
    static char NameOf(CZoTree* node) { return node != nullptr ? static_cast<char>(node->GetUserType()) : '0'; }
};

/// A parent 'P' with children, each with its parent set, from first to last.
class Family : public Node {
public:
    explicit Family(const std::string& names) : Node('P')
    {
        for (auto name = names.rbegin(); name != names.rend(); ++name) {
            auto* child = new Node(*name);
            child->SetParent(this);
            EXPECT_EQ(0u, AddOneChild(nullptr, nullptr, child));
        }
    }
    CZoTree* Get(char name) const
    {
        CZoTree* node = m_pChild;
        while (node != nullptr && NameOf(node) != name)
            node = node->GetNext();
        return node;
    }
    /// The children's names from the first one on; "broken" when the links back are not the reverse of those forth.
    std::string Names() const
    {
        std::string names;
        const CZoTree* before = nullptr;
        for (CZoTree* node = m_pChild; node != nullptr; before = node, node = node->GetNext()) {
            if (node->GetPrev() != before)
                return "broken";
            names += NameOf(node);
        }
        return names;
    }
};

/// Notes the names of the nodes it is called for, and ends at one of them.
struct Notes {
    std::string names;
    char last = 0;

    static DWORD WINAPI Note(CZoTree* node, void* data)
    {
        auto* notes = static_cast<Notes*>(data);
        notes->names += Node::NameOf(node);
        return notes->names.back() == notes->last ? 77 : 0;
    }
};

constexpr UINT_PTR kNoCode = 1;

class TreeTest : public ::testing::Test {
protected:
    void SetUp() override { g_destroyed.clear(); }
};

} // namespace

TEST_F(TreeTest, StartsEmptyAndClearsAndCopiesAllMembers)
{
    const auto expectMembers = [](Node& node, CZoTree* link, DWORD number, void* data) {
        for (const CZoTree* actual : {node.GetParent(), node.GetNext(), node.GetPrev(), node.GetChild()})
            EXPECT_EQ(link, actual);
        for (const DWORD actual : {node.GetLevel(), node.GetUserType(), node.GetUserFlag()})
            EXPECT_EQ(number, actual);
        EXPECT_EQ(data, node.GetUserData());
    };
    Node other, node('\0');
    expectMembers(node, nullptr, 0, nullptr);
    for (CZoTree* (CZoTree::*set)(CZoTree*) :
         {&CZoTree::SetParent, &CZoTree::SetNext, &CZoTree::SetPrev, &CZoTree::SetChild}) {
        EXPECT_EQ(nullptr, (node.*set)(&node));
        EXPECT_EQ(&node, (node.*set)(&other)) << "the link before";
    }
    node.SetLevel(9);
    EXPECT_EQ(0u, node.SetUserType(9));
    EXPECT_EQ(0u, node.SetUserFlag(9));
    EXPECT_EQ(0u, node.SetUserData(&other));
    Node copy(node), assigned;
    assigned = node;
    for (Node* each : {&node, &copy, &assigned}) {
        expectMembers(*each, &other, 9, &other);
        each->ClearData(); // the copies own no child
        expectMembers(*each, nullptr, 0, nullptr);
    }
}

TEST_F(TreeTest, InsertsAtEveryPlace)
{
    struct {
        char where;
        DWORD position;
        const char* expected;
    } const rows[] = {
        {'b', ZO_INSERT_HEAD, "xabc"},   {'a', ZO_INSERT_HEAD, "xabc"},   {'b', ZO_INSERT_TAIL, "abcx"},
        {'a', ZO_INSERT_BEFORE, "xabc"}, {'b', ZO_INSERT_BEFORE, "axbc"}, {'c', ZO_INSERT_BEFORE, "abxc"},
        {'a', ZO_INSERT_AFTER, "axbc"},  {'c', ZO_INSERT_AFTER, "abcx"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(1, row.where) + " place " + std::to_string(row.position));
        Family family("abc");
        auto* item = new Node('x');
        EXPECT_EQ(0u, family.InsertItem(item, family.Get(row.where), row.position));
        EXPECT_EQ(row.expected, family.Names());
        EXPECT_EQ(nullptr, item->GetParent()) << "left to the caller";
        EXPECT_EQ(0u, family.InsertItem(item, family.Get(row.where), row.position)) << "stands there already";
        EXPECT_EQ(row.expected, family.Names());
    }
    Family family("abc");
    Node item('x');
    for (const DWORD position : {0u, 1u, 6u})
        EXPECT_EQ(ZoErrBadData, family.InsertItem(&item, family.GetChild(), position));
    EXPECT_EQ(ZoErrBadData, family.InsertItem(nullptr, family.GetChild(), ZO_INSERT_HEAD));
    EXPECT_EQ(ZoErrBadData, family.InsertItem(&item, nullptr, ZO_INSERT_HEAD));
    EXPECT_EQ(ZoErrBadData, family.InsertItem(&item, &item, ZO_INSERT_HEAD));
    // Asked of the head or tail itself, the item is unlinked and no more.
    for (const auto& [asked, position] : {std::pair{'a', ZO_INSERT_HEAD}, std::pair{'c', ZO_INSERT_TAIL}}) {
        item.SetPrev(&item);
        item.SetNext(&item);
        EXPECT_EQ(0u, family.Get(asked)->InsertItem(&item, family.Get('b'), position));
        EXPECT_EQ(nullptr, item.GetPrev());
        EXPECT_EQ(nullptr, item.GetNext());
    }
    EXPECT_EQ(0u, family.RemoveItem(family.Get('b')));
    EXPECT_EQ("abc", family.Names());
}

TEST_F(TreeTest, AddsChildrenAtTheHeadAndCallsBack)
{
    Family family("b");
    Notes notes;
    notes.last = 'a';
    EXPECT_EQ(77u, family.AddOneChild(&Notes::Note, &notes, new Node('a')));
    EXPECT_EQ("ab", family.Names());
    EXPECT_EQ(nullptr, family.GetChild()->GetParent());
    EXPECT_EQ(0u, family.AddOneChild(&Notes::Note, &notes, nullptr));
    EXPECT_EQ(0u, family.AddAllChilren(&Notes::Note, &notes));
    EXPECT_EQ("aPP", notes.names);
    EXPECT_EQ(ZoErrBadData, family.AddOneChild(&Notes::Note, &notes, &family));
    EXPECT_EQ(ZoErrBadData, family.AddOneChild(&Notes::Note, &notes, family.GetChild()));
    EXPECT_EQ("aPP", notes.names);
    for (const ZoTreeEnumProc none : {ZoTreeEnumProc{nullptr}, reinterpret_cast<ZoTreeEnumProc>(kNoCode)}) {
        EXPECT_EQ(0u, family.AddOneChild(none, &notes, nullptr));
        EXPECT_EQ(0u, family.AddAllChilren(none, &notes));
        EXPECT_EQ(0u, family.EnumChildren(none, &notes));
        EXPECT_EQ(0u, family.GetChild()->EnumPath(none, &notes));
        EXPECT_EQ(family.GetChild(), family.GetChild()->FindHead(none, &notes));
    }
}

TEST_F(TreeTest, FreesChildrenFirstToLastWithTheirOwn)
{
    auto* family = new Family("abc");
    family->Get('a')->AddOneChild(nullptr, nullptr, new Node('y'));
    family->Get('c')->SetParent(nullptr);
    EXPECT_EQ(0u, family->FreeChild(nullptr));
    EXPECT_EQ(0u, family->FreeChild(family));
    EXPECT_EQ("", g_destroyed);
    EXPECT_EQ(0u, family->FreeChild(family->Get('b')));
    EXPECT_EQ("ac", family->Names());
    EXPECT_EQ(0u, family->FreeChild(family->Get('a')));
    EXPECT_EQ("c", family->Names());
    EXPECT_EQ(family, family->GetChild()->GetParent()) << "set for the child that became the first";
    EXPECT_EQ(0u, family->FreeChild(new Node('s'))) << "a stranger";
    EXPECT_EQ("bays", g_destroyed);
    family->AddOneChild(nullptr, nullptr, new Node('d'));
    delete family;
    EXPECT_EQ("baysPdc", g_destroyed);

    // A first child that is not the list's head, and a ring.
    Family other("bc");
    auto* head = new Node('a');
    other.GetChild()->SetParent(nullptr);
    other.InsertItem(head, other.GetChild(), ZO_INSERT_HEAD);
    other.FreeChild(other.GetChild());
    EXPECT_EQ(other.Get('c'), head->GetNext());
    EXPECT_EQ(0u, other.FreeChild(head)) << "found before the first child";
    EXPECT_EQ("c", other.Names());
    other.GetChild()->SetNext(other.GetChild());
    other.GetChild()->SetPrev(other.GetChild());
    EXPECT_EQ(0u, other.FreeChildren());
    EXPECT_EQ(nullptr, other.GetChild());
}

TEST_F(TreeTest, FindsTheEndsOfLinks)
{
    Family family("abc");
    CZoTree* b = family.Get('b');
    Notes notes;
    EXPECT_EQ(family.Get('a'), b->FindHead(&Notes::Note, &notes));
    EXPECT_EQ(family.Get('c'), b->FindTail(&Notes::Note, &notes));
    EXPECT_EQ(&family, b->FindRoot(&Notes::Note, &notes));
    EXPECT_EQ("acP", notes.names);
    EXPECT_EQ(&family, family.FindRoot());

    for (CZoTree* asked : {family.Get('a'), b, family.Get('c')}) { // whoever is asked
        EXPECT_FALSE(asked->IsSibling(nullptr));
        EXPECT_FALSE(asked->IsSibling(family.Get('a'))) << "the head does not count";
        EXPECT_TRUE(asked->IsSibling(b));
        EXPECT_TRUE(asked->IsSibling(family.Get('c')));
        EXPECT_FALSE(asked->IsSibling(&family));
        EXPECT_TRUE(family.IsChild(asked));
    }
    EXPECT_FALSE(family.IsChild(nullptr));
    EXPECT_FALSE(family.IsChild(&family));
    EXPECT_FALSE(b->IsChild(nullptr)) << "nor without children";
}

TEST_F(TreeTest, NoticesCircles)
{
    constexpr int kNodes = 12;
    struct Direction {
        CZoTree* (CZoTree::*set)(CZoTree*);
        CZoTree* (CZoTree::*find)(ZoTreeEnumProc, void*);
    };
    for (const Direction& direction :
         {Direction{&CZoTree::SetPrev, &CZoTree::FindHead}, Direction{&CZoTree::SetNext, &CZoTree::FindTail},
          Direction{&CZoTree::SetParent, &CZoTree::FindRoot}}) {
        for (int entry = 0; entry < kNodes; ++entry) { // where the last node leads back to
            std::array<Node, kNodes> nodes;
            for (int i = 0; i < kNodes; ++i)
                (nodes[i].*direction.set)(&nodes[i + 1 < kNodes ? i + 1 : entry]);
            Notes notes;
            CZoTree* end = (nodes[0].*direction.find)(&Notes::Note, &notes);
            EXPECT_EQ("", notes.names);
            EXPECT_TRUE(end >= &nodes[entry] && end <= &nodes.back());
            if (entry == 0) {
                EXPECT_EQ(&nodes.back(), end) << "the last one reached";
            }
            if (direction.set == &CZoTree::SetParent) {
                EXPECT_EQ(ZoErrCycle, nodes[0].EnumPath(&Notes::Note, &notes));
                EXPECT_EQ("", notes.names);
            }
            if (direction.set == &CZoTree::SetNext) {
                EXPECT_TRUE(nodes[0].IsSibling(&nodes.back()));
                Node stranger;
                EXPECT_FALSE(nodes[0].IsSibling(&stranger));
            }
        }
    }
    Family ring("abc");
    ring.Get('a')->SetPrev(ring.Get('c'));
    ring.Get('c')->SetNext(ring.Get('a'));
    Notes notes;
    EXPECT_EQ(0u, ring.GetChild()->EnumList(&Notes::Note, &notes));
    EXPECT_EQ("bca", notes.names) << "once round";
}

namespace {

DWORD WINAPI FreeIt(CZoTree* node, void* parent) { return static_cast<CZoTree*>(parent)->FreeChild(node); }
DWORD WINAPI Count(CZoTree*, void* count) { return ++*static_cast<size_t*>(count), 0; }

} // namespace

TEST_F(TreeTest, Enumerates)
{
    Family family("abc");
    auto* grandchild = new Node('g');
    family.Get('b')->AddOneChild(nullptr, nullptr, grandchild);
    grandchild->SetParent(family.Get('b'));
    struct {
        DWORD (CZoTree::*run)(ZoTreeEnumProc, void*);
        CZoTree* of;
        char last;
        DWORD result;
        const char* names;
    } const rows[] = {
        {&CZoTree::EnumList, family.Get('b'), 0, 0, "abc"},  {&CZoTree::EnumList, family.Get('c'), 'b', 77, "ab"},
        {&CZoTree::EnumChildren, &family, 0, 0, "abc"},      {&CZoTree::EnumChildren, &family, 'a', 77, "a"},
        {&CZoTree::EnumChildren, family.Get('a'), 0, 0, ""}, {&CZoTree::EnumPath, &family, 0, 0, "0"},
        {&CZoTree::EnumPath, grandchild, 0, 0, "0Pb"},       {&CZoTree::EnumPath, grandchild, '0', 77, "0"},
    };
    for (const auto& row : rows) {
        Notes notes;
        notes.last = row.last;
        EXPECT_EQ(row.result, (row.of->*row.run)(&Notes::Note, &notes));
        EXPECT_EQ(row.names, notes.names);
    }
    EXPECT_EQ(0u, family.EnumChildren(&FreeIt, &family));
    EXPECT_EQ("abgc", g_destroyed) << "a callback may destroy its node";
}

TEST_F(TreeTest, MissingMemoryEndsAPathBeforeTheFirstCall)
{
    std::array<Node, 100> chain;
    for (size_t i = 1; i < chain.size(); ++i)
        chain[i].SetParent(&chain[i - 1]);
    zo_test::AllocationFaults faults;
    zo_test::RunFaultLoop(faults, [&](const zo_test::FaultRun& run) {
        size_t calls = 0;
        const DWORD status = chain.back().EnumPath(&Count, &calls);
        run.Stop();
        EXPECT_EQ(run.Fired() ? ZoErrMemoryException : 0u, status);
        EXPECT_EQ(run.Fired() ? 0 : chain.size(), calls);
    });
}

namespace {

/// Offers codes one after the other, and notes the pairs it is asked about.
struct Script {
    std::vector<int> codes;
    std::string pairs;
    size_t next = 0;

    static int WINAPI Play(CZoTree* first, CZoTree* second, void* data)
    {
        auto* script = static_cast<Script*>(data);
        script->pairs += {Node::NameOf(first), Node::NameOf(second), ' '};
        return script->next < script->codes.size() ? script->codes[script->next++] : ZO_SORT_UNCHANGED;
    }
};

/// Takes the second of two children that are out of order to the front.
int WINAPI SwapUnordered(CZoTree* first, CZoTree* second, void* parent)
{
    if (Node::NameOf(first) < Node::NameOf(second))
        return ZO_SORT_UNCHANGED;
    first->SetNext(second->SetNext(first));
    first->SetPrev(second);
    second->SetPrev(nullptr);
    static_cast<CZoTree*>(parent)->SetChild(second);
    return ZO_SORT_CHANGED_PAST_FIRST; // behind which there is nothing any more
}

} // namespace

TEST_F(TreeTest, SortsByTheCodesOfTheCallback)
{
    const std::string quiet = "ab cd "; // a whole pass over "abcde" in which nothing changes
    struct {
        std::vector<int> codes;
        DWORD result;
        std::string pairs;
    } const rows[] = {
        {{}, 0, quiet},
        {{0, 0, 1}, 0, "ab ab ab "},
        {{2}, 0, "ab cd " + quiet},
        {{3}, 0, "ab cd " + quiet},
        {{9}, 0, "ab cd " + quiet},
        {{10}, 0, "ab cd " + quiet},
        {{4}, 0, quiet},
        {{7}, 0, quiet},
        {{5}, 0, "ab bc de " + quiet},
        {{6}, 0, "ab bc de " + quiet},
        {{8}, 0, "ab bc de " + quiet},
        {{11}, 0, "ab bc de " + quiet},
        {{12}, 0, "ab bc de " + quiet},
        {{5, 5, 5, 5, 1}, 0, "ab bc cd de ab "}, // a change in the last step as well asks for one more pass
        {{4, 13}, 13, quiet},
        {{2, -1}, 0xFFFFFFFF, quiet},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.codes.empty() ? 0 : row.codes.back());
        for (const BOOL recurse : {FALSE, TRUE}) { // TRUE makes no difference
            Family family("abcde");
            Script script = {row.codes, {}};
            EXPECT_EQ(row.result, family.SortChildren(&Script::Play, &script, recurse));
            EXPECT_EQ(row.pairs, script.pairs);
        }
    }
    Family single("a");
    Script script;
    EXPECT_EQ(0u, single.GetChild()->SortList(&Script::Play, &script, FALSE));
    EXPECT_EQ(0u, single.GetChild()->SortChildren(&Script::Play, &script, FALSE));
    EXPECT_EQ("", script.pairs);
    Family family("ba");
    EXPECT_EQ(0u, family.SortChildren(nullptr, nullptr, FALSE));
    EXPECT_EQ(0u, family.SortChildren(reinterpret_cast<ZoTreeSortProc>(kNoCode), nullptr, FALSE));
    EXPECT_EQ(0u, family.SortChildren(&SwapUnordered, &family, FALSE));
    EXPECT_EQ("ab", family.Names()) << "moved by the callback, under the cursor";
}

TEST_F(TreeTest, KeepsItsOrderOfVirtualOperations)
{
    struct Slots : CZoTree {
        static void Expect()
        {
            zo_test::ExpectSlots(2, &Slots::EnumPath, &Slots::InsertItem, &Slots::RemoveItem, &Slots::EnumList,
                                 &Slots::SortList, &Slots::AddOneChild, &Slots::AddAllChilren, &Slots::FreeChild,
                                 &Slots::FreeChildren, &Slots::EnumChildren, &Slots::SortChildren, &Slots::SetUserType,
                                 &Slots::GetUserType, &Slots::SetUserFlag, &Slots::GetUserFlag, &Slots::SetUserData,
                                 &Slots::GetUserData, &Slots::ClearData);
        }
    };
    Slots::Expect();
}
