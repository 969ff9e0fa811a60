
#include "support/test.h"

#include <limits>
#include <random>
#include <unordered_map>

namespace {

/// An element that knows how many of its kind are alive, and that is where it was made or moved to.
struct Counted {
    static inline int alive = 0;
    int value = -1;
    const Counted* self = this;

    Counted() { ++alive; }
    Counted(int v) : value(v) { ++alive; }
    Counted(const Counted& other) : value(other.value) { ++alive; }
    Counted& operator=(const Counted& other)
    {
        EXPECT_EQ(this, self) << "assigned to raw memory";
        value = other.value;
        return *this;
    }
    ~Counted()
    {
        EXPECT_EQ(this, self) << "destroyed what was never made";
        self = nullptr;
        --alive;
    }
};

using CountedArray = CArray<Counted, const Counted&>;

void ExpectEqual(const std::vector<int>& expected, const CountedArray& array)
{
    ASSERT_EQ(static_cast<INT_PTR>(expected.size()), array.GetSize());
    for (size_t i = 0; i < expected.size(); ++i)
        ASSERT_EQ(expected[i], array[static_cast<INT_PTR>(i)].value) << "at " << i;
}

} // namespace

TEST(CArray, BehavesAsAVector)
{
    for (const unsigned seed : {1u, 2u, 3u, 4u, 5u}) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto below = [&random](size_t limit) { return static_cast<INT_PTR>(random() % limit); };
        CountedArray array;
        std::vector<int> model;
        for (int step = 0; step < 400; ++step) {
            const int value = static_cast<int>(random() % 1000);
            const INT_PTR at = below(model.size() + 1);
            switch (random() % 8) {
            case 0:
            case 1:
                EXPECT_EQ(static_cast<INT_PTR>(model.size()), array.Add(value));
                model.push_back(value);
                break;
            case 2: {
                const INT_PTR count = below(4) + 1;
                array.InsertAt(at, value, count);
                model.insert(model.begin() + at, static_cast<size_t>(count), value);
                break;
            }
            case 3: { // behind the end: what lies between has the initial value
                const INT_PTR behind = static_cast<INT_PTR>(model.size()) + below(3);
                array.InsertAt(behind, value);
                model.resize(static_cast<size_t>(behind), -1);
                model.push_back(value);
                break;
            }
            case 4: {
                const INT_PTR count = (std::min)(below(4), static_cast<INT_PTR>(model.size()) - at);
                array.RemoveAt(at, count);
                model.erase(model.begin() + at, model.begin() + at + count);
                break;
            }
            case 5:
                array.SetSize(at, below(3) * 5);
                model.resize(static_cast<size_t>(at), -1);
                break;
            case 6: {
                const INT_PTR grown = below(model.size() + 10);
                array.SetAtGrow(grown, value);
                model.resize((std::max)(model.size(), static_cast<size_t>(grown) + 1), -1);
                model[static_cast<size_t>(grown)] = value;
                break;
            }
            default: {
                array.FreeExtra();
                CountedArray other;
                other.Copy(array);
                other.Append(array);
                model.insert(model.end(), model.begin(), model.end());
                ExpectEqual(model, other);
                model.resize(model.size() / 2);
                break;
            }
            }
            ExpectEqual(model, array);
            ASSERT_EQ(static_cast<int>(model.size()), Counted::alive);
        }
        array.RemoveAll();
        EXPECT_EQ(0, Counted::alive);
    }
}

TEST(CArray, TakesElementsOfItself)
{
    CountedArray array;
    array.Add(7);
    for (int i = 0; i < 20; ++i) {
        array.FreeExtra(); // so that the next one moves the array
        array.Add(array[0]);
        array.FreeExtra();
        array.InsertAt(0, array[array.GetUpperBound()]);
    }
    array.Append(array);
    ExpectEqual(std::vector<int>(82, 7), array);
}

TEST(CArray, IsAsBeforeWhenMemoryFails)
{
    const std::pair<const char*, std::function<void(CStringArray&)>> operations[] = {
        {"Add", [](CStringArray& a) { a.Add("new"); }},
        {"SetAt", [](CStringArray& a) { a.SetAt(1, "new"); }},
        {"SetAtGrow", [](CStringArray& a) { a.SetAtGrow(5, "new"); }},
        {"InsertAt", [](CStringArray& a) { a.InsertAt(1, "new"); }},
        {"InsertAt behind", [](CStringArray& a) { a.InsertAt(6, "new", 2); }},
        {"SetSize", [](CStringArray& a) { a.SetSize(9); }},
        {"Append",
         [](CStringArray& a) {
             CStringArray other;
             other.Add("new");
             a.Append(other);
         }},
    };
    for (const auto& [name, operation] : operations) {
        SCOPED_TRACE(name);
        AllocationFaults faults;
        RunFaultLoop(faults, [&operation = operation](const FaultRun& run) {
            run.source.Disarm();
            CStringArray array;
            array.Add("zero");
            array.Add("one");
            array.Add("two");
            array.FreeExtra();
            run.source.Arm(run.number, run.persistent);
            bool thrown = false;
            try {
                operation(array);
            } catch (CMemoryException* e) {
                thrown = true;
                e->Delete();
            }
            run.Stop();
            EXPECT_EQ(run.Fired(), thrown);
            if (thrown) {
                EXPECT_EQ(3, array.GetSize());
                EXPECT_STREQ("zero", array[0]);
                EXPECT_STREQ("one", array[1]);
                EXPECT_STREQ("two", array[2]);
            }
        });
    }
}

namespace {

constexpr INT_PTR kMostSize = (std::numeric_limits<INT_PTR>::max)();

/// Asks for sizes whose bytes cannot be counted: what is left of the product is small, or negative.
template <class ARRAY, class TYPE> void ExpectNoRoom(const char* name, const TYPE& element)
{
    SCOPED_TRACE(name);
    const auto folded = static_cast<INT_PTR>( // a few bytes, multiplied, or as near as a size comes to that
        (std::min)((std::numeric_limits<size_t>::max)() / sizeof(TYPE) + 2, static_cast<size_t>(kMostSize)));
    const std::function<void(ARRAY&)> operations[] = {
        [=](ARRAY& a) { a.SetSize(folded); },
        [](ARRAY& a) { a.SetSize(kMostSize); },
        [](ARRAY& a) { a.SetSize(-1); },
        [&](ARRAY& a) { a.SetAtGrow(folded, element); },
        [&](ARRAY& a) { a.SetAtGrow(kMostSize, element); },
        [&](ARRAY& a) { a.InsertAt(folded, element); },
        [&](ARRAY& a) { a.InsertAt(1, element, kMostSize); },
        [&](ARRAY& a) { a.InsertAt(kMostSize, element, 2); },
        [&](ARRAY& a) {
            a.FreeExtra();
            a.SetSize(2, folded - 2); // the growth from here on
            a.Add(element);
        },
    };
    for (size_t i = 0; i < std::size(operations); ++i) {
        ARRAY array;
        array.Add(element);
        array.Add(element);
        try {
            operations[i](array);
            ADD_FAILURE() << i;
        } catch (CMemoryException* e) {
            e->Delete();
        }
        EXPECT_EQ(2, array.GetSize()) << i;
    }
}

} // namespace

TEST(CArray, RefusesSizesThatNoMemoryHas)
{
    ExpectNoRoom<CDWordArray>("double words", DWORD{7});
    ExpectNoRoom<CWordArray>("words", WORD{7});
    ExpectNoRoom<CPtrArray>("pointers", static_cast<void*>(nullptr));
    ExpectNoRoom<CStringArray>("texts", CString("text"));
}

TEST(CMap, RefusesSizesThatNoMemoryHas)
{
    CMap<int, int, int, int> map(kMostSize / 4);
    EXPECT_THROW(map.SetAt(1, 2), CMemoryException*);
    EXPECT_TRUE(map.IsEmpty());
    if constexpr (sizeof(void*) == 4) {
        CMap<int, int, int, int> wide;
        EXPECT_THROW(wide.InitHashTable(0x40000001), CMemoryException*);
        wide.SetAt(1, 2);
        EXPECT_EQ(17u, wide.GetHashTableSize());
    }
}

namespace {

template <class MAP, class MODEL> void ExpectSameMap(const MAP& map, const MODEL& model)
{
    ASSERT_EQ(static_cast<INT_PTR>(model.size()), map.GetCount());
    auto left = model;
    for (POSITION position = map.GetStartPosition(); position != nullptr;) {
        typename MODEL::key_type key;
        typename MODEL::mapped_type value;
        map.GetNextAssoc(position, key, value);
        const auto found = left.find(key);
        ASSERT_NE(left.end(), found) << "an element twice, or one that is not there";
        EXPECT_EQ(found->second, value);
        left.erase(found);
    }
    EXPECT_TRUE(left.empty());
}

struct CStringHash {
    size_t operator()(const CString& s) const { return std::hash<std::string>()(LPCSTR(s)); }
};

/// \p makeKey turns a small number into a key.
template <class MAP, class MODEL, class MAKE_KEY> void CompareWithModel(MAKE_KEY makeKey)
{
    for (const unsigned seed : {1u, 2u, 3u}) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        MAP map(static_cast<INT_PTR>(seed)); // small blocks, so that there are many
        if (seed == 2)
            map.InitHashTable(3);
        MODEL model;
        for (int step = 0; step < 2000; ++step) {
            const auto key = makeKey(static_cast<int>(random() % 60));
            const int value = static_cast<int>(random() % 1000);
            switch (random() % 6) {
            case 0:
            case 1:
                map.SetAt(key, value);
                model[key] = value;
                break;
            case 2:
                map[key] += value;
                model[key] += value;
                break;
            case 3:
            case 4:
                ASSERT_EQ(model.erase(key) != 0, map.RemoveKey(key) != FALSE);
                break;
            default: {
                int found = -1;
                const auto expected = model.find(key);
                ASSERT_EQ(expected != model.end(), map.Lookup(key, found) != FALSE);
                ASSERT_EQ(expected != model.end() ? expected->second : -1, found);
                break;
            }
            }
            if (step % 50 == 0)
                ExpectSameMap(map, model);
            if (step % 700 == 699) {
                map.RemoveAll();
                model.clear();
            }
        }
        ExpectSameMap(map, model);
    }
}

} // namespace

TEST(CMap, BehavesAsAnUnorderedMap)
{
    CompareWithModel<CMap<int, int, int, int>, std::unordered_map<int, int>>([](int n) { return n * 16; });
    CompareWithModel<CMap<CString, LPCSTR, int, int>, std::unordered_map<CString, int, CStringHash>>([](int n) {
        CString key;
        key.Format("key %d", n);
        return key;
    });
}

TEST(CMap, IsAsBeforeWhenMemoryFails)
{
    AllocationFaults faults;
    RunFaultLoop(faults, [](const FaultRun& run) {
        CMap<CString, LPCSTR, CString, LPCSTR> map(2);
        INT_PTR count = 0;
        for (const char* key : {"one", "two", "three", "four", "five"}) {
            try {
                map.SetAt(key, key);
                ++count;
            } catch (CMemoryException* e) {
                e->Delete();
            }
        }
        run.Stop();
        INT_PTR elements = 0;
        for (POSITION position = map.GetStartPosition(); position != nullptr; ++elements) {
            CString key;
            CString value;
            map.GetNextAssoc(position, key, value);
            EXPECT_STREQ(key, value);
        }
        EXPECT_EQ(count, elements);
        EXPECT_EQ(count, map.GetCount());
        map.SetAt("six", "6"); // still usable
        CString value;
        EXPECT_TRUE(map.Lookup("six", value));
        EXPECT_STREQ("6", value);
    });
}

TEST(CMap, OfTextsComparesExactlyAndOwnsNoObject)
{
    struct : CObject {
    } object;
    CMapStringToOb objects;
    objects.SetAt("Name", &object);
    CObject* found = nullptr;
    EXPECT_FALSE(objects.Lookup("name", found));
    EXPECT_TRUE(objects.Lookup("Name", found));
    EXPECT_EQ(&object, found);
    objects.RemoveAll(); // deletes nothing
    CMapStringToString texts;
    texts["\x83\x5C"] = "b";
    CString text;
    EXPECT_FALSE(texts.Lookup("\x83", text));
    EXPECT_TRUE(texts.Lookup("\x83\x5C", text));
    EXPECT_STREQ("b", text);
}
