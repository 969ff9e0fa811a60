#include "support/test.h"

#include <zogbl/avl.h>

#include <random>

namespace {

using Node = SZoAVLHHEADER;
using Keys = std::vector<int>;

/// Records are numbers, kept in the place of their address. They compare by their last three digits.
void* Data(int record) { return reinterpret_cast<void*>(static_cast<INT_PTR>(record)); }
int Key(const void* data) { return static_cast<int>(reinterpret_cast<INT_PTR>(data)); }
int WINAPI Compare(const void* first, const void* second)
{
    const int difference = Key(first) % 1000 - Key(second) % 1000;
    return (difference > 0) - (difference < 0);
}
int WINAPI CompareWidely(const void* first, const void* second) { return 5 * Compare(first, second); }
/// Follows a chain whose nodes lead left and right in turn.
int WINAPI DownTheChain(const void* first, const void*) { return Key(first) % 2 == 0 ? 1 : -1; }

/// Notes which records it destroys.
struct Tree : CZoAvl {
    ~Tree() override { AvlFreeTree(); }
    void* AvlNewUserData() override { return Data(42); }
    void AvlDeleteUserData(void* data) override { m_destroyed.push_back(Key(data)); }

    DWORD Insert(int record, ZoAvlCompareProc compare = &Compare, int existingRecord = 0)
    {
        Node* node = AvlNewHeader(Data(record));
        void* existing = this;
        const DWORD status = AvlInsertHeader(node, &existing, compare);
        EXPECT_EQ(Data(existingRecord), existing);
        if (status != 0)
            AvlFreeBranch(node);
        return status;
    }
    Node* Find(int record, ZoAvlCompareProc compare = &Compare) const
    {
        Node keyNode = {nullptr, nullptr, ZO_AVL_BALANCED, Data(record)};
        return AvlFindNode(AvlGetRoot(), &keyNode, compare);
    }
    void SetRoot(Node* node) { m_pRoot = node; }
    /// The records in order; checks that every node's balance is what the heights of its subtrees say.
    Keys GetRecords() const
    {
        Keys records;
        Walk(m_pRoot, records);
        return records;
    }
    static int Walk(const Node* node, Keys& records) ///< \return the height
    {
        if (node == nullptr)
            return 0;
        const int left = Walk(node->pLeft, records);
        records.push_back(Key(node->pUserData));
        const int right = Walk(node->pRight, records);
        EXPECT_EQ(static_cast<DWORD>(right - left + 1), node->dwBalance) << "at " << Key(node->pUserData);
        return std::max(left, right) + 1;
    }

    Keys m_destroyed;
};

} // namespace

TEST(Avl, KeepsOrderAndBalanceThroughAnySequence)
{
    std::mt19937 random(1);
    Tree tree;
    std::set<int> model;
    int removedBefore = 0;
    for (unsigned step = 0; step < 6000; ++step) {
        const int key = static_cast<int>(random() % 150) + 1;
        tree.m_destroyed.clear();
        Keys destroyed;
        if (random() % 4 < 1 + step / 250 % 3) { // grows, stays and shrinks in turn
            const bool isNew = model.insert(key).second;
            ASSERT_EQ(isNew ? 0u : ZoErrBadData, tree.Insert(isNew ? key : key + 1000, &Compare, isNew ? 0 : key));
            destroyed = isNew ? Keys{} : Keys{key + 1000};
        } else {
            const Node* node = tree.Find(key);
            auto doomed = model.find(key);
            ASSERT_EQ(doomed != model.end(), node != nullptr);
            if (node != nullptr) { // with two children it stays, and the one before it goes
                const bool stays = node->pLeft != nullptr && node->pRight != nullptr;
                removedBefore += stays;
                doomed = stays ? std::prev(doomed) : doomed;
                destroyed = {*doomed};
                model.erase(doomed);
            }
            EXPECT_FALSE(tree.AvlFreeNode(Data(key), &Compare));
        }
        ASSERT_EQ(destroyed, tree.m_destroyed);
        ASSERT_EQ(Keys(model.begin(), model.end()), tree.GetRecords()) << "step " << step;
    }
    EXPECT_GT(removedBefore, 100);
}

TEST(Avl, RefusesWhatItCannotUse)
{
    Tree tree;
    tree.Insert(1);
    Node* node = tree.AvlNewHeader(nullptr);
    ASSERT_NE(nullptr, node);
    EXPECT_EQ(Data(42), node->pUserData) << "a record of the tree's own making";
    EXPECT_EQ(nullptr, CZoAvl().AvlNewUserData());
    void* existing = &tree;
    for (const UINT_PTR address : {0, 1}) {
        const auto noCode = reinterpret_cast<ZoAvlCompareProc>(address);
        EXPECT_EQ(ZoErrBadCallback, tree.AvlInsertHeader(node, &existing, noCode));
        EXPECT_EQ(&tree, existing);
        EXPECT_EQ(nullptr, tree.Find(1, noCode));
        EXPECT_FALSE(tree.AvlFreeNode(Data(1), noCode));
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
    EXPECT_EQ(Keys{1}, tree.GetRecords());
    ExpectSlots(2, &CZoAvl::AvlNewUserData, &CZoAvl::AvlDeleteUserData);
}

TEST(Avl, OnlyFindingMindsHowMuchRecordsDiffer)
{
    Tree tree;
    for (const int record : {4, 2, 6, 1, 3, 5, 7, 8})
        EXPECT_EQ(0u, tree.Insert(record, &CompareWidely));
    EXPECT_EQ(Data(4), tree.Find(4, &CompareWidely)->pUserData) << "the root is equal";
    EXPECT_EQ(nullptr, tree.Find(6, &CompareWidely));
    EXPECT_EQ(nullptr, tree.Find(2, &CompareWidely));
    tree.AvlFreeNode(Data(8), &CompareWidely);
    tree.AvlFreeNode(Data(1), &CompareWidely);
    EXPECT_EQ((Keys{2, 3, 4, 5, 6, 7}), tree.GetRecords());
}

TEST(Avl, FreesFromTheLeavesUp)
{
    Tree tree;
    tree.AvlFreeTree();
    for (const int record : {4, 2, 6, 1, 3, 5, 7})
        tree.Insert(record);
    tree.AvlFreeBranch(std::exchange(tree.AvlGetRoot()->pRight, nullptr));
    EXPECT_NE(nullptr, tree.AvlGetRoot());
    tree.AvlFreeBranch(tree.AvlGetRoot());
    EXPECT_EQ(nullptr, tree.AvlGetRoot());
    EXPECT_EQ((Keys{5, 7, 6, 1, 3, 2, 4}), tree.m_destroyed);

    // A chain that nobody balanced is not inserted into, and needs no deep stack.
    Node* chain = nullptr;
    const int length = IsGuardHeapInstalled() ? 1000 : 200000;
    for (int record = 1; record <= length; ++record) {
        Node* node = tree.AvlNewHeader(Data(record));
        (record % 2 == 0 ? node->pLeft : node->pRight) = chain;
        chain = node;
    }
    tree.SetRoot(chain);
    EXPECT_EQ(ZoErrBadData, tree.Insert(1, &DownTheChain));
    tree.m_destroyed.clear();
    tree.AvlFreeTree();
    EXPECT_EQ(length, tree.m_destroyed.back());
    EXPECT_TRUE(std::is_sorted(tree.m_destroyed.begin(), tree.m_destroyed.end()));
}

TEST(Avl, MissingMemoryIsANullNode)
{
    struct OwnTree : CZoAvl {
        void* AvlNewUserData() override { return AfxAllocMemory(1); }
    };
    RunFaultLoop<AllocationFaults>([&](const FaultRun& run) {
        OwnTree tree;
        Node* node = tree.AvlNewHeader(nullptr);
        run.Stop();
        EXPECT_EQ(run.Fired(), node == nullptr);
        void* existing;
        tree.AvlInsertHeader(node, &existing, &Compare); // the base frees node and record in the end
    });
}
