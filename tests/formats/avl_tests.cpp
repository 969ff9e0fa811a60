#include <zogbl/avl.h>

#include "support/fault_loop.h"
#include "support/guard_heap.h"
#include "support/virtual_slots.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <utility>
#include <vector>

namespace {

using Node = SZoAVLHHEADER;
using Keys = std::vector<int>;

struct Record {
    int key;
};

int KeyOf(const void* record) { return static_cast<const Record*>(record)->key; }
int WINAPI Compare(const void* first, const void* second)
{
    return (KeyOf(first) > KeyOf(second)) - (KeyOf(first) < KeyOf(second));
}
int WINAPI CompareWidely(const void* first, const void* second) { return 5 * Compare(first, second); }
/// Follows a chain whose nodes lead left and right in turn.
int WINAPI DownTheChain(const void* first, const void*) { return KeyOf(first) % 2 == 0 ? 1 : -1; }

/// A tree of records with a key; notes which it destroys.
class Tree : public CZoAvl {
public:
    ~Tree() override { AvlFreeTree(); }
    void* AvlNewUserData() override { return new Record{42}; }
    void AvlDeleteUserData(void* data) override
    {
        m_destroyed.push_back(KeyOf(data));
        delete static_cast<Record*>(data);
    }

    DWORD Insert(int key, ZoAvlCompareProc compare = &Compare)
    {
        Node* node = AvlNewHeader(new Record{key});
        void* existing = this;
        const DWORD status = AvlInsertHeader(node, &existing, compare);
        EXPECT_EQ(status == 0, existing == nullptr);
        if (existing != nullptr) {
            EXPECT_EQ(key, KeyOf(existing));
            EXPECT_NE(node->pUserData, existing);
        }
        if (status != 0)
            AvlFreeBranch(node);
        return status;
    }
    Node* Find(int key, ZoAvlCompareProc compare = &Compare) const
    {
        Record wanted = {key};
        Node keyNode = {nullptr, nullptr, ZO_AVL_BALANCED, &wanted};
        return AvlFindNode(AvlGetRoot(), &keyNode, compare);
    }
    BOOL Remove(int key, ZoAvlCompareProc compare = &Compare)
    {
        m_destroyed.clear();
        Record wanted = {key};
        return AvlFreeNode(&wanted, compare);
    }
    void SetRoot(Node* node) { m_pRoot = node; }

    Keys m_destroyed;
};

/// The keys of a subtree in order; checks that every node's balance is what the heights say. \return the height.
int Walk(const Node* node, Keys& keys)
{
    if (node == nullptr)
        return 0;
    const int left = Walk(node->pLeft, keys);
    keys.push_back(KeyOf(node->pUserData));
    const int right = Walk(node->pRight, keys);
    EXPECT_EQ(static_cast<DWORD>(right - left + 1), node->dwBalance) << "at " << KeyOf(node->pUserData);
    return std::max(left, right) + 1;
}

Keys KeysOf(const CZoAvl& tree)
{
    Keys keys;
    Walk(tree.AvlGetRoot(), keys);
    return keys;
}

} // namespace

TEST(Avl, KeepsOrderAndBalanceThroughAnySequence)
{
    std::mt19937 random(1);
    Tree tree;
    std::set<int> model;
    int removedBefore = 0;
    for (unsigned step = 0; step < 6000; ++step) {
        const int key = static_cast<int>(random() % 150);
        if (random() % 4 < 1 + step / 250 % 3) { // grows, stays and shrinks in turn
            ASSERT_EQ(model.insert(key).second ? 0u : ZoErrBadData, tree.Insert(key));
        } else {
            Keys destroyed;
            const Node* node = tree.Find(key);
            auto doomed = model.find(key);
            ASSERT_EQ(doomed != model.end(), node != nullptr);
            if (node != nullptr) { // with two children it stays, and the one before it goes
                const bool stays = node->pLeft != nullptr && node->pRight != nullptr;
                removedBefore += stays;
                doomed = stays ? std::prev(doomed) : doomed;
                destroyed.push_back(*doomed);
                model.erase(doomed);
            }
            EXPECT_FALSE(tree.Remove(key));
            ASSERT_EQ(destroyed, tree.m_destroyed);
        }
        ASSERT_EQ(Keys(model.begin(), model.end()), KeysOf(tree)) << "step " << step;
    }
    EXPECT_GT(removedBefore, 100);
}

TEST(Avl, StaysLowWithAMillionSortedRecords)
{
    const int count = zo_test::IsGuardHeapInstalled() ? 5000 : 1000000; // there each node takes two pages
    std::vector<Record> records(count);
    struct : CZoAvl {
        void AvlDeleteUserData(void*) override {}
    } tree;
    for (int i = 0; i < count; ++i) {
        records[i].key = i;
        void* existing;
        ASSERT_EQ(0u, tree.AvlInsertHeader(tree.AvlNewHeader(&records[i]), &existing, &Compare));
    }
    Keys keys;
    EXPECT_LE(Walk(tree.AvlGetRoot(), keys), 20);
    EXPECT_EQ(records.size(), keys.size());
    EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end()));
    tree.AvlFreeTree();
}

TEST(Avl, RefusesWhatItCannotUse)
{
    Tree tree;
    tree.Insert(1);
    Node* node = tree.AvlNewHeader(nullptr);
    ASSERT_NE(nullptr, node);
    EXPECT_EQ(42, KeyOf(node->pUserData)) << "a record of the tree's own making";
    void* existing = &tree;
    for (const UINT_PTR address : {0, 1}) {
        const auto noCode = reinterpret_cast<ZoAvlCompareProc>(address);
        EXPECT_EQ(ZoErrBadCallback, tree.AvlInsertHeader(node, &existing, noCode));
        EXPECT_EQ(&tree, existing);
        EXPECT_EQ(nullptr, tree.Find(1, noCode));
        EXPECT_FALSE(tree.Remove(1, noCode));
    }
    EXPECT_EQ(ZoErrNullOutput, tree.AvlInsertHeader(node, nullptr, &Compare));
    EXPECT_EQ(ZoErrBadData, tree.AvlInsertHeader(nullptr, &existing, &Compare));
    EXPECT_EQ(nullptr, existing);
    EXPECT_EQ(nullptr, tree.AvlFindNode(nullptr, node, &Compare));
    EXPECT_EQ(nullptr, tree.AvlFindNode(tree.AvlGetRoot(), nullptr, &Compare));
    EXPECT_FALSE(tree.AvlFreeNode(nullptr, &Compare));
    tree.AvlFreeBranch(nullptr);
    tree.AvlFreeBranch(node);
    EXPECT_EQ(Keys{42}, tree.m_destroyed) << "nothing else";
    EXPECT_EQ(Keys{1}, KeysOf(tree));
}

TEST(Avl, OnlyFindingMindsHowMuchRecordsDiffer)
{
    Tree tree;
    for (const int key : {4, 2, 6, 1, 3, 5, 7, 8})
        EXPECT_EQ(0u, tree.Insert(key, &CompareWidely));
    EXPECT_EQ((Keys{1, 2, 3, 4, 5, 6, 7, 8}), KeysOf(tree));
    EXPECT_NE(nullptr, tree.Find(4, &CompareWidely)) << "the root is equal";
    EXPECT_EQ(nullptr, tree.Find(6, &CompareWidely));
    EXPECT_EQ(nullptr, tree.Find(2, &CompareWidely));
    tree.Remove(8, &CompareWidely);
    tree.Remove(1, &CompareWidely);
    EXPECT_EQ((Keys{2, 3, 4, 5, 6, 7}), KeysOf(tree));
}

TEST(Avl, FreesFromTheLeavesUp)
{
    Tree tree;
    tree.AvlFreeTree();
    for (const int key : {4, 2, 6, 1, 3, 5, 7})
        tree.Insert(key);
    tree.AvlFreeBranch(std::exchange(tree.AvlGetRoot()->pRight, nullptr));
    EXPECT_NE(nullptr, tree.AvlGetRoot());
    tree.AvlFreeBranch(tree.AvlGetRoot());
    EXPECT_EQ(nullptr, tree.AvlGetRoot());
    EXPECT_EQ((Keys{5, 7, 6, 1, 3, 2, 4}), tree.m_destroyed);

    // A chain that nobody balanced is not inserted into, and needs no deep stack.
    Node* chain = nullptr;
    for (int i = 0; i < (zo_test::IsGuardHeapInstalled() ? 1000 : 200000); ++i) {
        Node* node = tree.AvlNewHeader(new Record{i});
        (i % 2 == 0 ? node->pLeft : node->pRight) = chain;
        chain = node;
    }
    tree.SetRoot(chain);
    const int longest = KeyOf(chain->pUserData);
    Node* node = tree.AvlNewHeader(nullptr);
    void* existing = &tree;
    EXPECT_EQ(ZoErrBadData, tree.AvlInsertHeader(node, &existing, &DownTheChain));
    EXPECT_EQ(nullptr, existing);
    tree.AvlFreeBranch(node);
    tree.m_destroyed.clear();
    tree.AvlFreeTree();
    EXPECT_EQ(longest, tree.m_destroyed.back());
    EXPECT_TRUE(std::is_sorted(tree.m_destroyed.begin(), tree.m_destroyed.end()));
}

TEST(Avl, MissingMemoryIsANullNode)
{
    struct : CZoAvl {
        void* AvlNewUserData() override { return AfxAllocMemory(1); }
    } tree;
    zo_test::AllocationFaults faults;
    zo_test::RunFaultLoop(faults, [&](const zo_test::FaultRun& run) {
        Node* node = tree.AvlNewHeader(nullptr);
        run.Stop();
        EXPECT_EQ(run.Fired(), node == nullptr);
        tree.AvlFreeBranch(node); // and the base frees the record
    });
}

TEST(Avl, HasNoRecordsOfItsOwnAndSharesNodesWithCopies)
{
    EXPECT_EQ(nullptr, CZoAvl().AvlNewUserData());
    Tree tree;
    tree.Insert(1);
    Tree copy(tree);
    EXPECT_EQ(tree.AvlGetRoot(), copy.AvlGetRoot());
    tree = Tree();
    EXPECT_EQ(nullptr, tree.AvlGetRoot());
    zo_test::ExpectSlots(2, &CZoAvl::AvlNewUserData, &CZoAvl::AvlDeleteUserData);
}
