#include "support/test.h"

#include <zogbl/tree.h>

#include <array>

namespace {

std::string g_destroyed; // names of the nodes, in the order of their end

/// A node with a letter for a name, kept as its user type.
struct Node : CZoTree {
    explicit Node(char name = '\0') { SetUserType(static_cast<BYTE>(name)); }
    ~Node() override { g_destroyed += NameOf(this); }
    using CZoTree::ClearData;
    static char NameOf(CZoTree* node) { return node != nullptr ? static_cast<char>(node->GetUserType()) : '0'; }
};

/// A parent 'P' with children, each with its parent set.
struct Kin : Node {
    explicit Kin(const std::string& names) : Node('P')
    {
        for (auto name = names.rbegin(); name != names.rend(); ++name) {
            EXPECT_EQ(0u, AddOneChild(nullptr, nullptr, new Node(*name)));
            m_pChild->SetParent(this);
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
        for (CZoTree* node = m_pChild; node != nullptr; before = node, node = node->GetNext())
            names += node->GetPrev() == before ? std::string(1, NameOf(node)) : "broken";
        return names;
    }
};

/// Notes the names of the nodes it is called for, and ends with 77 at one of them.
struct Notes {
    std::string names;
    char last = ' ';
    static DWORD WINAPI Note(CZoTree* node, void* data)
    {
        auto* notes = static_cast<Notes*>(data);
        notes->names += Node::NameOf(node);
        return notes->names.back() == notes->last ? 77 : 0;
    }
};

DWORD WINAPI FreeIt(CZoTree* node, void* parent) { return static_cast<CZoTree*>(parent)->FreeChild(node); }

/// Offers codes one after the other, then "unchanged", and notes the pairs it is asked about.
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

/// Takes what is behind a node out of the list, so that there is no pair any more.
int WINAPI CutBehind(CZoTree* first, CZoTree*, void*) { return first->SetNext(nullptr), ZO_SORT_CHANGED_PAST_FIRST; }

/// Looks, at its end, at what is around it.
struct Looker : Node {
    explicit Looker(const CZoTree* root) : m_root(root) {}
    ~Looker() override
    {
        EXPECT_EQ(m_root, FindRoot());
        EXPECT_TRUE(m_pChild == nullptr || m_pChild->GetParent() == this);
        ++s_ends;
    }
    const CZoTree* m_root;
    static inline size_t s_ends;
};

} // namespace

TEST(Tree, StartsEmptyAndClearsAndCopiesAllMembers)
{
    const auto expectMembers = [](Node& node, CZoTree* link, DWORD number) {
        for (const CZoTree* actual : {node.GetParent(), node.GetNext(), node.GetPrev(), node.GetChild()})
            EXPECT_EQ(link, actual);
        EXPECT_EQ(link, node.GetUserData());
        for (const DWORD actual : {node.GetLevel(), node.GetUserType(), node.GetUserFlag()})
            EXPECT_EQ(number, actual);
    };
    Node other, node;
    expectMembers(node, nullptr, 0);
    for (auto set : {&CZoTree::SetParent, &CZoTree::SetNext, &CZoTree::SetPrev, &CZoTree::SetChild}) {
        EXPECT_EQ(nullptr, (node.*set)(&node));
        EXPECT_EQ(&node, (node.*set)(&other)) << "the link before";
    }
    node.SetLevel(9);
    EXPECT_EQ(0u, node.SetUserType(9) | node.SetUserFlag(9) | node.SetUserData(static_cast<CZoTree*>(&other)));
    Node copy(node), assigned;
    assigned = node;
    for (Node* each : {&node, &copy, &assigned}) {
        expectMembers(*each, &other, 9);
        each->ClearData(); // none of them owns a child
        expectMembers(*each, nullptr, 0);
    }
    ExpectSlots(2, &Node::EnumPath, &Node::InsertItem, &Node::RemoveItem, &Node::EnumList, &Node::SortList,
                &Node::AddOneChild, &Node::AddAllChilren, &Node::FreeChild, &Node::FreeChildren, &Node::EnumChildren,
                &Node::SortChildren, &Node::SetUserType, &Node::GetUserType, &Node::SetUserFlag, &Node::GetUserFlag,
                &Node::SetUserData, &Node::GetUserData, &Node::ClearData);
}

TEST(Tree, InsertsAtEveryPlace)
{
    for (const std::string row : {"b2xabc", "b3abcx", "a4xabc", "b4axbc", "c4abxc", "a5axbc", "c5abcx"}) {
        SCOPED_TRACE(row); // where, position, outcome
        Kin family("abc");
        auto* item = new Node('x');
        for (int time = 0; time < 2; ++time) { // the second time it stands there already
            EXPECT_EQ(0u, family.InsertItem(item, family.Get(row[0]), row[1] - '0'));
            EXPECT_EQ(row.substr(2), family.Names());
        }
        EXPECT_EQ(nullptr, item->GetParent()) << "left to the caller";
    }
    Kin family("abc");
    Node item('x');
    for (const DWORD position : {0u, 1u, 6u})
        EXPECT_EQ(ZoErrBadData, family.InsertItem(&item, family.GetChild(), position));
    for (const auto& [what, where] : {std::pair<Node*, Node*>{nullptr, &item}, {&item, nullptr}, {&item, &item}})
        EXPECT_EQ(ZoErrBadData, family.InsertItem(what, where, ZO_INSERT_HEAD));
    // Asked of the head or tail itself, the item is unlinked and no more.
    for (const auto& [asked, position] : {std::pair{'a', ZO_INSERT_HEAD}, {'c', ZO_INSERT_TAIL}}) {
        item.SetPrev(&item);
        item.SetNext(&item);
        EXPECT_EQ(0u, family.Get(asked)->InsertItem(&item, family.Get('b'), position));
        EXPECT_EQ(nullptr, item.GetPrev());
        EXPECT_EQ(nullptr, item.GetNext());
    }
    EXPECT_EQ(0u, family.RemoveItem(family.Get('b')));
    EXPECT_EQ("abc", family.Names());
    // The head becomes the first child, even where another one was.
    CZoTree* head = family.SetChild(family.Get('b'));
    EXPECT_EQ(0u, family.InsertItem(&item, family.GetChild(), ZO_INSERT_HEAD));
    EXPECT_EQ("xabc", family.Names());
    family.SetChild(head);
    head->SetPrev(nullptr);
}

TEST(Tree, AddsChildrenAtTheHeadAndCallsBackForThem)
{
    Kin family("b");
    Notes notes = {"", 'a'};
    EXPECT_EQ(77u, family.AddOneChild(&Notes::Note, &notes, new Node('a')));
    EXPECT_EQ("ab", family.Names());
    EXPECT_EQ(nullptr, family.GetChild()->GetParent());
    EXPECT_EQ(0u, family.AddOneChild(&Notes::Note, &notes, nullptr) | family.AddAllChilren(&Notes::Note, &notes));
    for (CZoTree* refused : {family.GetChild(), static_cast<CZoTree*>(&family)})
        EXPECT_EQ(ZoErrBadData, family.AddOneChild(&Notes::Note, &notes, refused));
    EXPECT_EQ("aPP", notes.names);
    for (const UINT_PTR address : {0, 1}) {
        const auto noCode = reinterpret_cast<ZoTreeEnumProc>(address);
        EXPECT_EQ(0u, family.AddOneChild(noCode, nullptr, nullptr) | family.AddAllChilren(noCode, nullptr) |
                          family.EnumChildren(noCode, nullptr) | family.EnumPath(noCode, nullptr) |
                          family.SortChildren(reinterpret_cast<ZoTreeSortProc>(address), nullptr, FALSE));
        EXPECT_EQ(&family, family.FindHead(noCode, nullptr));
    }
}

TEST(Tree, FreesChildrenFirstToLastWithTheirOwn)
{
    g_destroyed.clear();
    auto* family = new Kin("abc");
    family->Get('a')->AddOneChild(nullptr, nullptr, new Node('z'));
    family->Get('a')->GetChild()->AddOneChild(nullptr, nullptr, new Node('w'));
    family->Get('a')->AddOneChild(nullptr, nullptr, new Node('y'));
    family->Get('c')->SetParent(nullptr);
    EXPECT_EQ(0u, family->FreeChild(nullptr) | family->FreeChild(family) | family->FreeChild(family->Get('b')));
    EXPECT_EQ("ac", family->Names());
    EXPECT_EQ(0u, family->FreeChild(family->Get('a')));
    EXPECT_EQ("c", family->Names());
    EXPECT_EQ(family, family->GetChild()->GetParent()) << "set for the child that became the first";
    EXPECT_EQ(0u, family->FreeChild(new Node('s'))) << "a stranger";
    family->AddOneChild(nullptr, nullptr, new Node('d'));
    delete family;
    EXPECT_EQ("bayzwsPdc", g_destroyed);

    // A first child that is not the list's head, and a ring of one.
    Kin other("bc");
    auto* head = new Node('a');
    other.GetChild()->SetParent(nullptr);
    other.InsertItem(head, other.GetChild(), ZO_INSERT_HEAD);
    other.FreeChild(other.Get('b'));
    EXPECT_EQ(other.Get('c'), head->GetNext());
    EXPECT_EQ(0u, other.FreeChild(head)) << "found before the first child";
    EXPECT_EQ("c", other.Names());
    other.GetChild()->SetNext(other.GetChild());
    other.GetChild()->SetPrev(other.GetChild());
    EXPECT_EQ(0u, other.FreeChildren());
    EXPECT_EQ(nullptr, other.GetChild());
    other.SetChild(&other);
    EXPECT_EQ(0u, other.FreeChildren()) << "not itself, and not for ever";
}

TEST(Tree, DestroysTreesOfAnyDepth)
{
    const size_t depth = IsGuardHeapInstalled() ? 2000 : 200000; // whose blocks are pages
    Node root;
    const auto add = [&root](CZoTree* parent) {
        auto* child = new Looker(&root);
        parent->AddOneChild(nullptr, nullptr, child);
        child->SetParent(parent);
        return child;
    };
    for (const bool asChild : {true, false}) {
        Looker::s_ends = 0;
        CZoTree* top = add(&root);
        CZoTree* node = top;
        for (size_t i = 1; i < depth; ++i) {
            add(node); // a second child, without children
            node = add(node);
        }
        EXPECT_EQ(0u, asChild ? root.FreeChild(top) : root.FreeChildren());
        EXPECT_EQ(2 * depth - 1, Looker::s_ends);
        EXPECT_EQ(nullptr, root.GetChild());
    }
}

TEST(Tree, FindsEndsAndSiblings)
{
    Kin family("abc");
    CZoTree *a = family.Get('a'), *b = family.Get('b'), *c = family.Get('c');
    Notes notes;
    EXPECT_EQ(a, b->FindHead(&Notes::Note, &notes));
    EXPECT_EQ(c, b->FindTail(&Notes::Note, &notes));
    EXPECT_EQ(&family, b->FindRoot(&Notes::Note, &notes));
    EXPECT_EQ("acP", notes.names);
    for (CZoTree* asked : {a, b, c}) {
        EXPECT_TRUE(asked->IsSibling(b) && asked->IsSibling(c) && family.IsChild(asked));
        EXPECT_FALSE(asked->IsSibling(nullptr) || asked->IsSibling(&family));
        EXPECT_FALSE(asked->IsSibling(a)) << "the head does not count";
        EXPECT_FALSE(asked->IsChild(nullptr) || family.IsChild(nullptr) || family.IsChild(&family));
    }
}

TEST(Tree, NoticesCircles)
{
    constexpr int kNodes = 12;
    for (const auto& [set, find] : {std::pair{&CZoTree::SetPrev, &CZoTree::FindHead},
                                    {&CZoTree::SetNext, &CZoTree::FindTail},
                                    {&CZoTree::SetParent, &CZoTree::FindRoot}}) {
        for (int entry = 0; entry < kNodes; ++entry) { // where the last node leads back to
            std::array<Node, kNodes> nodes;
            for (int i = 0; i < kNodes; ++i)
                (nodes[i].*set)(&nodes[i + 1 < kNodes ? i + 1 : entry]);
            Notes notes;
            const CZoTree* end = (nodes[0].*find)(&Notes::Note, &notes);
            EXPECT_TRUE(end >= &nodes[entry] && (entry > 0 || end == &nodes.back())) << "of the circle; the last one";
            EXPECT_EQ(set == &CZoTree::SetParent ? ZoErrCycle : 0, nodes[0].EnumPath(&Notes::Note, &notes));
            EXPECT_EQ(set == &CZoTree::SetParent ? "" : "0", notes.names) << "nobody called but by a path without";
            EXPECT_EQ(set == &CZoTree::SetNext, nodes[0].IsSibling(&nodes.back()) != FALSE);
            EXPECT_FALSE(nodes[0].IsSibling(nodes.data() + kNodes));
        }
    }
    Kin ring("abc");
    ring.Get('a')->SetPrev(ring.Get('c'));
    ring.Get('c')->SetNext(ring.Get('a'));
    Notes notes;
    EXPECT_EQ(0u, ring.GetChild()->EnumList(&Notes::Note, &notes));
    EXPECT_EQ("bca", notes.names) << "once round";
}

TEST(Tree, Enumerates)
{
    Kin family("abc");
    CZoTree *b = family.Get('b'), *grandchild = new Node('g');
    b->AddOneChild(nullptr, nullptr, grandchild);
    grandchild->SetParent(b);
    const auto expect = [](auto run, CZoTree* of, char last, const std::string& names) {
        Notes notes = {"", last};
        EXPECT_EQ(last != ' ' ? 77u : 0u, (of->*run)(&Notes::Note, &notes));
        EXPECT_EQ(names, notes.names);
    };
    expect(&CZoTree::EnumList, b, ' ', "abc");
    expect(&CZoTree::EnumList, b, 'b', "ab");
    expect(&CZoTree::EnumChildren, &family, 'a', "a");
    expect(&CZoTree::EnumChildren, family.Get('a'), ' ', "");
    expect(&CZoTree::EnumPath, &family, ' ', "0");
    expect(&CZoTree::EnumPath, grandchild, ' ', "0Pb");
    expect(&CZoTree::EnumPath, grandchild, 'P', "0P");
    g_destroyed.clear();
    EXPECT_EQ(0u, family.EnumChildren(&FreeIt, &family));
    EXPECT_EQ("abgc", g_destroyed) << "a callback may destroy its node";
}

TEST(Tree, MissingMemoryEndsAPathBeforeTheFirstCall)
{
    std::array<Node, 100> chain;
    for (size_t i = 1; i < chain.size(); ++i)
        chain[i].SetParent(&chain[i - 1]);
    RunFaultLoop<AllocationFaults>([&](const FaultRun& run) {
        Notes notes;
        const DWORD status = chain.back().EnumPath(&Notes::Note, &notes);
        run.Stop();
        EXPECT_EQ(run.Fired() ? ZoErrMemoryException : 0u, status);
        EXPECT_EQ(run.Fired() ? 0 : chain.size(), notes.names.size());
    });
}

TEST(Tree, SortsByTheCodesOfTheCallback)
{
    const std::string quiet = "ab cd "; // a whole pass over "abcde" in which nothing changes
    const auto expect = [](std::vector<int> codes, DWORD result, const std::string& pairs) {
        for (const BOOL recurse : {FALSE, TRUE}) { // TRUE makes no difference
            Script script = {codes, {}};
            EXPECT_EQ(result, Kin("abcde").SortChildren(&Script::Play, &script, recurse));
            EXPECT_EQ(pairs, script.pairs) << "with code " << codes.back();
        }
    };
    expect({0, 0, 1}, 0, "ab ab ab ");
    expect({4, 13}, 13, quiet);
    expect({2, -1}, 0xFFFFFFFF, quiet);
    expect({5, 5, 5, 5, 1}, 0, "ab bc cd de ab ");
    for (const int code : {2, 3, 9, 10})
        expect({code}, 0, "ab cd " + quiet);
    for (const int code : {4, 7})
        expect({code}, 0, quiet);
    for (const int code : {5, 6, 8, 11, 12})
        expect({code}, 0, "ab bc de " + quiet);
    Script script;
    EXPECT_EQ(0u, Kin("a").SortChildren(&Script::Play, &script, FALSE));
    EXPECT_EQ(0u, Kin("").SortChildren(&Script::Play, &script, FALSE));
    EXPECT_EQ("", script.pairs);
    Node first, second;
    first.SetNext(&second);
    EXPECT_EQ(0u, first.SortList(&CutBehind, nullptr, FALSE));
}
