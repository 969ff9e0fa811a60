// The balanced tree beside std::set and Boost.Intrusive's avl_set.
#include "families.h"
#include "harness.h"

#include <zogbl/avl.h>

#include <boost/intrusive/avl_set.hpp>

#include <algorithm>
#include <array>
#include <memory>
#include <numeric>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr UINT_PTR kCount = 200000;
constexpr unsigned kRoundsPerTreeRound = 5; // they take long
constexpr Limits kSortedLimits = {0, 1.0};
constexpr Limits kRandomLimits = {0, 1.1};

/// What is inserted and looked for: numbers, and records that hold one. A tree's record is never null, so they begin at
/// 1.
using Key = UINT_PTR;
struct Record {
    Key key;
    Key payload[3];
};
struct LessRecord {
    bool operator()(const Record* first, const Record* second) const { return first->key < second->key; }
};

int Order(Key first, Key second) { return (first > second) - (first < second); }
int WINAPI CompareKeys(const void* first, const void* second)
{
    return Order(reinterpret_cast<Key>(first), reinterpret_cast<Key>(second));
}
int WINAPI CompareRecords(const void* first, const void* second)
{
    return Order(static_cast<const Record*>(first)->key, static_cast<const Record*>(second)->key);
}

/// What goes into the tree for a record: its key alone, or its address.
Key AsKey(const Record& record) { return record.key; }
const Record* AsRecord(const Record& record) { return &record; }

// The peers, all with the same operations -----------------------------------------------------------------------------

template <auto COMPARE, auto AS> class LibraryTree : public CZoAvl {
public:
    LibraryTree() : m_wanted(AvlNewHeader(nullptr)) { Require(m_wanted != nullptr, "memory is missing"); }
    ~LibraryTree() override
    {
        AvlFreeBranch(m_wanted);
        AvlFreeTree();
    }
    void AvlDeleteUserData(void*) override {} // the records are not the tree's

    void Insert(const Record& record)
    {
        void* existing;
        Require(AvlInsertHeader(AvlNewHeader(Data(record)), &existing, COMPARE) == ERROR_SUCCESS, "not inserted");
    }
    bool Has(const Record& record)
    {
        m_wanted->pUserData = Data(record);
        return AvlFindNode(AvlGetRoot(), m_wanted, COMPARE) != nullptr;
    }

private:
    static void* Data(const Record& record) { return (void*)AS(record); }
    SZoAVLHHEADER* m_wanted;
};

template <class SET, auto AS> class StandardSet {
public:
    void Insert(const Record& record) { Require(m_set.insert(AS(record)).second, "not inserted"); }
    bool Has(const Record& record) const { return m_set.find(AS(record)) != m_set.end(); }

private:
    SET m_set;
};

template <class CONTENT, class LESS, auto AS> class IntrusiveSet {
public:
    ~IntrusiveSet()
    {
        m_set.clear_and_dispose([](Node* node) { delete node; });
    }
    void Insert(const Record& record)
    {
        auto node = std::make_unique<Node>(AS(record));
        Require(m_set.insert(*node.release()).second, "not inserted");
    }
    bool Has(const Record& record) const { return m_set.find(AS(record), LESS()) != m_set.end(); }

private:
    struct Node : boost::intrusive::avl_set_base_hook<> {
        explicit Node(CONTENT initial) : content(initial) {}
        CONTENT content;
    };
    struct Content {
        using type = CONTENT;
        const CONTENT& operator()(const Node& node) const { return node.content; }
    };
    boost::intrusive::avl_set<Node, boost::intrusive::key_of_value<Content>, boost::intrusive::compare<LESS>> m_set;
};

// Measuring -----------------------------------------------------------------------------------------------------------

struct PeerSamples {
    Samples insert;
    Samples find;
};

/// Fills a tree and finds everything in it again; freeing it is not measured.
template <class TREE>
void RunOnce(const std::vector<const Record*>& order, const std::vector<const Record*>& wanted, PeerSamples& samples)
{
    TREE tree;
    const long long start = Ticks();
    for (const Record* record : order)
        tree.Insert(*record);
    const long long filled = Ticks();
    unsigned found = 0;
    for (const Record* record : wanted)
        found += tree.Has(*record);
    const long long end = Ticks();
    Require(found == kCount, "a record is missing");
    samples.insert.nanoseconds.push_back(Nanoseconds(filled - start) / kCount);
    samples.find.nanoseconds.push_back(Nanoseconds(end - filled) / kCount);
}

template <class LIBRARY, class STANDARD, class INTRUSIVE> void
Measure(Harness& harness, const std::string& what, const char* standardName, Limits sortedLimits, Limits randomLimits)
{
    std::vector<Record> records(kCount);
    std::vector<const Record*> sorted;
    for (Record& record : records) {
        record.key = static_cast<Key>(&record - records.data()) + 1;
        sorted.push_back(&record);
    }
    std::mt19937 random(1);
    for (const bool isSorted : {true, false}) {
        const std::string name = "trees: " + std::string(isSorted ? "sorted " : "random ") + what;
        if (!harness.Wants(name + " inserted") && !harness.Wants(name + " found"))
            continue;
        std::vector<const Record*> order = sorted, wanted = sorted;
        if (!isSorted) {
            std::shuffle(order.begin(), order.end(), random);
            std::shuffle(wanted.begin(), wanted.end(), random);
        }
        using Run = void (*)(const std::vector<const Record*>&, const std::vector<const Record*>&, PeerSamples&);
        constexpr Run runs[] = {&RunOnce<LIBRARY>, &RunOnce<STANDARD>, &RunOnce<INTRUSIVE>};
        const char* const names[] = {"CZoAvl", standardName, "boost::intrusive::avl_set"};
        std::array<PeerSamples, 3> peers;
        for (size_t i = 0; i < peers.size(); ++i) {
            runs[i](order, wanted, peers[i]); // whoever comes first finds memory that was never touched
            peers[i] = {{names[i], {}}, {names[i], {}}};
        }
        for (unsigned round = 0; round < harness.GetRounds() / kRoundsPerTreeRound; ++round) {
            for (size_t turn = 0; turn < peers.size(); ++turn) {
                const size_t peer = round % 2 == 0 ? turn : peers.size() - 1 - turn;
                runs[peer](order, wanted, peers[peer]);
            }
        }
        const Limits limits = isSorted ? sortedLimits : randomLimits;
        harness.Add(name + " inserted", {peers[0].insert, peers[1].insert, peers[2].insert}, Unit::nanoseconds, limits);
        harness.Add(name + " found", {peers[0].find, peers[1].find, peers[2].find}, Unit::nanoseconds, limits);
    }
}

} // namespace

void MeasureTrees(Harness& harness)
{
    Measure<LibraryTree<&CompareKeys, &AsKey>, StandardSet<std::set<Key>, &AsKey>,
            IntrusiveSet<Key, std::less<>, &AsKey>>(harness, "keys", "std::set of keys", kSortedLimits, kRandomLimits);
    Measure<LibraryTree<&CompareRecords, &AsRecord>, StandardSet<std::set<const Record*, LessRecord>, &AsRecord>,
            IntrusiveSet<const Record*, LessRecord, &AsRecord>>(harness, "records", "std::set of pointers to records",
                                                                {}, {});
}
