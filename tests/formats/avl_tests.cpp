#include <zogbl/avl.h>

#include "support/fault_loop.h"
#include "support/guard_heap.h"
#include "support/process_counts.h"
#include "support/virtual_slots.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <utility>
#include <vector>

namespace {

using Node = SZoAVLHHEADER;

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

const auto kNoCode = reinterpret_cast<ZoAvlCompareProc>(static_cast<UINT_PTR>(1));

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
        if (status != 0) {
            EXPECT_EQ(key, KeyOf(existing));
            EXPECT_NE(node->pUserData, existing);
            AvlFreeBranch(node);
            EXPECT_EQ(key, m_destroyed.back());
            m_destroyed.pop_back();
        }
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
        Record wanted = {key};
        return AvlFreeNode(&wanted, compare);
    }
    void SetRoot(Node* node) { m_pRoot = node; }

    std::vector<int> m_destroyed;
};

/// The keys of a subtree in order; checks that every node's balance is what the heights say. \return the height.
int Walk(const Node* node, std::vector<int>& keys)
{
    if (node == nullptr)
        return 0;
    const int left = Walk(node->pLeft, keys);
    keys.push_back(KeyOf(node->pUserData));
    const int right = Walk(node->pRight, keys);
    EXPECT_EQ(static_cast<DWORD>(right - left + 1), node->dwBalance) << "at " << KeyOf(node->pUserData);
    return std::max(left, right) + 1;
}

std::vector<int> KeysOf(const CZoAvl& tree)
{
    std::vector<int> keys;
    Walk(tree.AvlGetRoot(), keys);
    return keys;
}

} // namespace

TEST(Avl, KeepsOrderAndBalanceThroughAnySequence)
{
    for (const unsigned seed : {1u, 2u, 3u}) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        Tree tree;
        std::set<int> model;
        int removedBefore = 0;
        for (int step = 0; step < 2000 && !::testing::Test::HasFailure(); ++step) {
            const int key = static_cast<int>(random() % 150);
            // Grows, stays and shrinks in turn.
            if (random() % 4 < 1 + step / 250 % 3u) {
                EXPECT_EQ(model.insert(key).second ? 0u : ZoErrBadData, tree.Insert(key));
            } else {
                std::vector<int> destroyed;
                const Node* node = tree.Find(key);
                auto doomed = model.find(key);
                ASSERT_EQ(doomed != model.end(), node != nullptr);
                if (node != nullptr) { // with two children it stays, and the one before it goes
                    if (node->pLeft != nullptr && node->pRight != nullptr) {
                        --doomed;
                        ++removedBefore;
                    }
                    destroyed.push_back(*doomed);
                    model.erase(doomed);
                }
                tree.m_destroyed.clear();
                EXPECT_FALSE(tree.Remove(key));
                EXPECT_EQ(destroyed, tree.m_destroyed);
            }
            ASSERT_EQ(std::vector<int>(model.begin(), model.end()), KeysOf(tree)) << "step " << step;
        }
        EXPECT_GT(removedBefore, 50);
    }
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
    std::vector<int> keys;
    EXPECT_LE(Walk(tree.AvlGetRoot(), keys), 20);
    EXPECT_EQ(records.size(), keys.size());
    EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end()));
    tree.AvlFreeTree();
}

TEST(Avl, RemovingAMiddleRecordRemovesTheOneBeforeIt)
{
    Tree tree;
    for (const int key : {2, 1, 3})
        tree.Insert(key);
    tree.Remove(2);
    EXPECT_EQ((std::vector<int>{1}), tree.m_destroyed);
    EXPECT_EQ((std::vector<int>{2, 3}), KeysOf(tree));
    EXPECT_EQ(2, KeyOf(tree.AvlGetRoot()->pUserData));
}

TEST(Avl, RefusesWhatItCannotUse)
{
    Tree tree;
    tree.Insert(1);
    Node* node = tree.AvlNewHeader(nullptr);
    ASSERT_NE(nullptr, node);
    EXPECT_EQ(42, KeyOf(node->pUserData)) << "a record of the tree's own making";
    void* existing = &tree;
    for (const ZoAvlCompareProc bad : {ZoAvlCompareProc{nullptr}, kNoCode}) {
        EXPECT_EQ(ZoErrBadCallback, tree.AvlInsertHeader(node, &existing, bad));
        EXPECT_EQ(&tree, existing);
        EXPECT_EQ(nullptr, tree.Find(1, bad));
        EXPECT_FALSE(tree.Remove(1, bad));
    }
    EXPECT_EQ(ZoErrNullOutput, tree.AvlInsertHeader(node, nullptr, &Compare));
    EXPECT_EQ(ZoErrBadData, tree.AvlInsertHeader(nullptr, &existing, &Compare));
    EXPECT_EQ(nullptr, existing);
    EXPECT_EQ(nullptr, tree.AvlFindNode(nullptr, node, &Compare));
    EXPECT_EQ(nullptr, tree.AvlFindNode(tree.AvlGetRoot(), nullptr, &Compare));
    EXPECT_FALSE(tree.AvlFreeNode(nullptr, &Compare));
    tree.AvlFreeBranch(nullptr);
    tree.AvlFreeBranch(node);
    EXPECT_EQ((std::vector<int>{42}), tree.m_destroyed) << "nothing else";
    EXPECT_EQ((std::vector<int>{1}), KeysOf(tree));
}

TEST(Avl, OnlyFindingMindsHowMuchRecordsDiffer)
{
    Tree tree;
    for (const int key : {4, 2, 6, 1, 3, 5, 7, 8})
        EXPECT_EQ(0u, tree.Insert(key, &CompareWidely));
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8}), KeysOf(tree));
    EXPECT_NE(nullptr, tree.Find(4, &CompareWidely)) << "the root is equal";
    EXPECT_EQ(nullptr, tree.Find(6, &CompareWidely));
    EXPECT_EQ(nullptr, tree.Find(2, &CompareWidely));
    tree.Remove(8, &CompareWidely);
    tree.Remove(1, &CompareWidely);
    EXPECT_EQ((std::vector<int>{2, 3, 4, 5, 6, 7}), KeysOf(tree));
}

TEST(Avl, FreesFromTheLeavesUp)
{
    Tree tree;
    tree.AvlFreeTree();
    for (const int key : {4, 2, 6, 1, 3, 5, 7})
        tree.Insert(key);
    Node* branch = std::exchange(tree.AvlGetRoot()->pRight, nullptr);
    tree.AvlFreeBranch(branch);
    EXPECT_NE(nullptr, tree.AvlGetRoot());
    tree.AvlFreeBranch(tree.AvlGetRoot());
    EXPECT_EQ(nullptr, tree.AvlGetRoot());
    EXPECT_EQ((std::vector<int>{5, 7, 6, 1, 3, 2, 4}), tree.m_destroyed);
}

TEST(Avl, SurvivesATreeThatNobodyBalanced)
{
    const int count = zo_test::IsGuardHeapInstalled() ? 1000 : 200000;
    Tree tree;
    Node* chain = nullptr;
    for (int i = 0; i < count; ++i) { // left and right in turn
        Node* node = tree.AvlNewHeader(new Record{i});
        (i % 2 == 0 ? node->pLeft : node->pRight) = chain;
        chain = node;
    }
    tree.SetRoot(chain);
    Node* node = tree.AvlNewHeader(new Record{-1});
    void* existing = &tree;
    EXPECT_EQ(ZoErrBadData, tree.AvlInsertHeader(node, &existing, &DownTheChain));
    EXPECT_EQ(nullptr, existing);
    tree.AvlFreeBranch(node);
    tree.m_destroyed.clear();
    tree.AvlFreeTree();
    EXPECT_EQ(static_cast<size_t>(count), tree.m_destroyed.size());
    EXPECT_TRUE(std::is_sorted(tree.m_destroyed.begin(), tree.m_destroyed.end()));
}

TEST(Avl, MissingMemoryIsANullNode)
{
    Tree tree;
    zo_test::AllocationFaults faults;
    zo_test::RunFaultLoop(faults, [&](const zo_test::FaultRun& run) {
        Node* node = tree.AvlNewHeader(nullptr);
        run.Stop();
        EXPECT_EQ(run.Fired(), node == nullptr);
        tree.AvlFreeBranch(node);
        tree.m_destroyed = {};
    });
}

TEST(Avl, TheBaseKeepsPlainMemoryAndCopiesShareNodes)
{
    EXPECT_EQ(nullptr, CZoAvl().AvlNewUserData());
    ZO_EXPECT_NO_LEAK({
        CZoAvl tree;
        tree.AvlDeleteUserData(nullptr);
        for (int key = 0; key < 3; ++key) {
            void* existing;
            auto* record = static_cast<Record*>(AfxAllocMemory(sizeof(Record)));
            record->key = key;
            ASSERT_EQ(0u, tree.AvlInsertHeader(tree.AvlNewHeader(record), &existing, &Compare));
        }
        CZoAvl copy(tree);
        EXPECT_EQ(tree.AvlGetRoot(), copy.AvlGetRoot());
        tree = CZoAvl();
        EXPECT_EQ(nullptr, tree.AvlGetRoot());
    });
    zo_test::ExpectSlots(2, &CZoAvl::AvlNewUserData, &CZoAvl::AvlDeleteUserData);
}
