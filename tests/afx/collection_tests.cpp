#include "support/test.h"
#include "without_memory.h"

#include <limits>

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
    bool operator==(const Counted& other) const { return value == other.value; }
    ~Counted()
    {
        EXPECT_EQ(this, self) << "destroyed what was never made";
        self = nullptr;
        --alive;
    }
};

using CountedArray = CArray<Counted, const Counted&>;
using CountedList = CList<Counted, const Counted&>;
using Values = std::vector<int>;

Values ContentsOf(const CountedArray& array)
{
    Values values;
    for (INT_PTR i = 0; i < array.GetSize(); ++i)
        values.push_back(array[i].value);
    return values;
}

/// Both ways, and by the index of each.
Values ContentsOf(const CountedList& list)
{
    Values values, backwards;
    for (POSITION position = list.GetHeadPosition(); position != nullptr;) {
        EXPECT_EQ(position, list.FindIndex(static_cast<INT_PTR>(values.size())));
        values.push_back(list.GetNext(position).value);
    }
    for (POSITION position = list.GetTailPosition(); position != nullptr;)
        backwards.insert(backwards.begin(), list.GetPrev(position).value);
    EXPECT_EQ(values, backwards);
    EXPECT_TRUE(list.FindIndex(list.GetCount()) == nullptr && list.FindIndex(-1) == nullptr);
    return values;
}

template <class KEY, class ARG_KEY> std::map<KEY, int> ContentsOf(const CMap<KEY, ARG_KEY, Counted, int>& map)
{
    std::map<KEY, int> contents;
    for (POSITION position = map.GetStartPosition(); position != nullptr;) {
        KEY key;
        Counted value;
        map.GetNextAssoc(position, key, value);
        if (!contents.emplace(key, value.value).second)
            return ADD_FAILURE() << "an element twice", contents;
    }
    return contents;
}

/// Random steps with a collection and a standard one, which must hold the same after each. \p step gets a new element
/// and a place in the standard one or at its end.
template <class COLLECTION, class MODEL>
void BehaveAs(void (*step)(COLLECTION&, MODEL&, Random&, int value, INT_PTR at))
{
    for (const unsigned seed : {1u, 2u, 3u, 4u, 5u}) {
        SCOPED_TRACE(seed);
        Random random(seed);
        COLLECTION collection;
        MODEL model;
        for (int count = 0; count < 400; ++count) {
            step(collection, model, random, static_cast<int>(random() % 1000),
                 static_cast<INT_PTR>(random() % (model.size() + 1)));
            ASSERT_TRUE(model == ContentsOf(collection)) << count;
            ASSERT_EQ(static_cast<INT_PTR>(model.size()), collection.GetCount());
            ASSERT_EQ(static_cast<int>(model.size()), Counted::alive);
        }
        collection.RemoveAll();
        EXPECT_TRUE(Counted::alive == 0 && ContentsOf(collection).empty() && collection.IsEmpty());
    }
}

/// What is done to a collection, and the same done to the standard one.
struct Change {
    std::function<void()> act, expected;
};

void MakeOne(Random& random, const std::vector<Change>& changes)
{
    const Change& change = Choose(random, changes);
    change.act();
    change.expected();
}

Values Twice(const CountedArray& array)
{
    CountedArray twice;
    twice.Copy(array);
    twice.Append(twice);
    return ContentsOf(twice);
}

} // namespace

TEST(CArray, BehavesAsAVector)
{
    BehaveAs<CountedArray, Values>([](CountedArray& array, Values& model, Random& random, int value, INT_PTR at) {
        const auto below = [&random](size_t limit) { return static_cast<INT_PTR>(random() % limit); };
        const auto grow = [&model](INT_PTR size) { // what is added has the initial value
            model.resize((std::max)(model.size(), static_cast<size_t>(size)), -1);
            return model.begin();
        };
        const bool isOwn = at < array.GetSize() && value % 2 != 0;
        if (isOwn) {
            value = model[static_cast<size_t>(at)];
            array.FreeExtra(); // so that the element moves away while it is added
        }
        const Counted other(value);
        const Counted& element = isOwn ? array[at] : other;
        const auto size = static_cast<INT_PTR>(model.size());
        const INT_PTR place = at + below(3), count = below(4) + 1; // in the array, at its end or behind it
        const INT_PTR rest = (std::min)(count - 1, size - at), grown = below(model.size() + 10);
        Values twice(model);
        twice.insert(twice.end(), model.begin(), model.end());
        MakeOne(random, {
                            {[&] { EXPECT_EQ(size, array.Add(element)); }, [&] { model.push_back(value); }},
                            {[&] { array.InsertAt(place, element, count); },
                             [&] { model.insert(grow(place) + place, static_cast<size_t>(count), value); }},
                            {[&] { array.RemoveAt(at, rest); },
                             [&] { model.erase(model.begin() + at, model.begin() + at + rest); }},
                            {[&] { array.SetSize(at, below(3) * 5); }, [&] { model.resize(static_cast<size_t>(at)); }},
                            {[&] { array.SetAtGrow(grown, element); }, [&] { grow(grown + 1)[grown] = value; }},
                            {[&] { array.FreeExtra(); }, [&] { EXPECT_EQ(twice, Twice(array)); }},
                        });
    });
}

TEST(CList, BehavesAsAVector)
{
    BehaveAs<CountedList, Values>([](CountedList& list, Values& model, Random& random, int value, INT_PTR at) {
        const POSITION position = list.FindIndex(at); // null at the end
        const auto place = model.begin() + at;
        const auto isNew = [&](POSITION added) { EXPECT_EQ(value, list.GetAt(added).value); };
        const int wanted = value % 4;
        const auto found = std::find(position != nullptr ? place + 1 : model.begin(), model.end(), wanted);
        const INT_PTR index = found != model.end() ? found - model.begin() : -1;
        const Values copy(model);
        std::vector<Change> changes = {
            {[&] { isNew(list.AddHead(value)); }, [&] { model.insert(model.begin(), value); }},
            {[&] { isNew(list.AddTail(value)); }, [&] { model.push_back(value); }},
            {[&] { isNew(list.InsertBefore(position, value)); }, // without a position before the head
             [&] { model.insert(position != nullptr ? place : model.begin(), value); }},
            {[&] { isNew(list.InsertAfter(position, value)); }, // and behind the tail
             [&] { model.insert(position != nullptr ? place + 1 : model.end(), value); }},
            {[&] { EXPECT_EQ(list.FindIndex(index), list.Find(wanted, position)); }, [] {}},
        };
        if (position != nullptr)
            changes.insert(
                changes.end(),
                {
                    {[&] { list.SetAt(position, wanted); }, [&] { *place = wanted; }},
                    {[&] { list.RemoveAt(position); }, [&] { model.erase(place); }},
                    {[&] { EXPECT_EQ(list.GetHead().value, model.front()); }, [] {}},
                    {[&] { EXPECT_EQ(model.front(), list.RemoveHead().value); }, [&] { model.erase(model.begin()); }},
                    {[&] { EXPECT_EQ(model.back(), list.RemoveTail().value); }, [&] { model.pop_back(); }},
                });
        if (model.size() < 40) // itself, in its order
            changes.push_back({[&] { random() % 2 != 0 ? list.AddHead(&list) : list.AddTail(&list); },
                               [&] { model.insert(model.end(), copy.begin(), copy.end()); }});
        MakeOne(random, changes);
    });
}

namespace {

template <class COLLECTION> std::string Names(const COLLECTION& collection)
{
    std::string all;
    if constexpr (requires { collection.GetHeadPosition(); }) {
        for (POSITION position = collection.GetHeadPosition(); position != nullptr;)
            all += std::string(collection.GetNext(position)) + "|";
    } else if constexpr (requires { collection.GetStartPosition(); }) {
        CString key, value;
        for (POSITION position = collection.GetStartPosition(); position != nullptr;) {
            collection.GetNextAssoc(position, key, value);
            all += std::string(key) + "=" + std::string(value) + "|";
        }
    } else {
        for (INT_PTR i = 0; i < collection.GetSize(); ++i)
            all += std::string(collection[i]) + "|";
    }
    return all;
}

} // namespace

TEST(Collections, AreAsBeforeWhenMemoryFails)
{
    static CStringArray array;
    static CStringList list(1); // each element is allocated alone
    array.RemoveAll();
    list.RemoveAll();
    for (const char* text : {"new", "newer"}) {
        array.Add(text);
        list.AddTail(text);
    }
    ExpectAsBeforeWithoutMemory<CStringArray>(
        {
            {"Add", [](CStringArray& a) { a.Add("new"); }},
            {"SetAt", [](CStringArray& a) { a.SetAt(1, "a longer one"); }},
            {"SetAtGrow", [](CStringArray& a) { a.SetAtGrow(5, "new"); }},
            {"InsertAt", [](CStringArray& a) { a.InsertAt(1, "new"); }},
            {"InsertAt behind", [](CStringArray& a) { a.InsertAt(6, "new", 2); }},
            {"SetSize", [](CStringArray& a) { a.SetSize(9); }},
            {"Append", [](CStringArray& a) { a.Append(array); }},
        },
        [](CStringArray& a) {
            for (const char* text : {"zero", "one", "two"})
                a.Add(text);
            a.FreeExtra();
        },
        &Names<CStringArray>);
    ExpectAsBeforeWithoutMemory<CStringList>(
        {
            {"AddHead", [](CStringList& l) { l.AddHead("new"); }},
            {"AddHead list", [](CStringList& l) { l.AddHead(&list); }},
            {"AddTail list", [](CStringList& l) { l.AddTail(&list); }},
            {"InsertBefore", [](CStringList& l) { l.InsertBefore(l.GetTailPosition(), "new"); }},
            {"SetAt", [](CStringList& l) { l.SetAt(l.GetHeadPosition(), "a longer one"); }},
        },
        [](CStringList& l) {
            for (int i = 0; i < 10; ++i)
                l.AddTail("old");
        },
        &Names<CStringList>);
    ExpectAsBeforeWithoutMemory<CMapStringToString>(
        {
            {"new key", [](CMapStringToString& m) { m["new"]; }},
            {"SetAt new", [](CMapStringToString& m) { m.SetAt("new", "value"); }},
            {"SetAt", [](CMapStringToString& m) { m.SetAt("5", "a longer value"); }},
        },
        [](CMapStringToString& m) {
            for (char key = '0'; key <= '9'; ++key)
                m[CString(key)] = "old";
        },
        &Names<CMapStringToString>);
}

TEST(Collections, TakeRemovedRoomAgain)
{
    CList<int> list;
    CMap<int, int, int, int> map;
    const auto use = [&](int value) {
        list.AddTail(value);
        list.RemoveHead();
        map[value] = value;
        map.RemoveKey(value);
    };
    use(0);
    AllocationFaults counted; // counts, and lets none fail
    counted.Arm(INT_MAX, false);
    for (int value = 0; value < 100; ++value)
        use(value);
    EXPECT_EQ(0, counted.Calls());
}

TEST(Collections, KnowTheTypeOfTheirPointers)
{
    Counted first(1), second(2);
    CTypedPtrArray<CPtrArray, Counted*> array;
    array.SetAtGrow(1, &first);
    array[0] = &second;
    array.ElementAt(1) = array[0];
    array.InsertAt(0, &first);
    EXPECT_TRUE(array[0] == &first && array.GetAt(1) == &second && array[2]->value == 2);
    CTypedPtrList<CPtrList, Counted*> list;
    list.AddTail(&first);
    list.AddTail(&list);
    list.SetAt(list.GetTailPosition(), &second);
    POSITION position = list.GetHeadPosition();
    EXPECT_EQ(3, list.GetNext(position)->value + list.GetAt(position)->value);
    EXPECT_TRUE(list.RemoveTail() == &second && list.RemoveHead() == &first && list.IsEmpty());
    CTypedPtrMap<CMapStringToPtr, CString, Counted*> map;
    map["one"] = &first;
    map.SetAt("two", &second);
    Counted* found = nullptr;
    EXPECT_TRUE(map.Lookup("two", found) && found == &second && map["one"]->value == 1);
    EXPECT_FALSE(map.Lookup("three", found));
    EXPECT_EQ(&second, found) << "changed by what was not found";
    map.RemoveKey("two");
    CString key;
    position = map.GetStartPosition();
    map.GetNextAssoc(position, key, found);
    EXPECT_TRUE(key == "one" && found == &first && position == nullptr);
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
        EXPECT_THROW(operations[i](array), CMemoryException*) << i;
        EXPECT_EQ(2, array.GetSize()) << i;
    }
}

} // namespace

TEST(CArray, RefusesSizesThatNoMemoryHas)
{
    ExpectNoRoom<CDWordArray>("double words", DWORD{7});
    ExpectNoRoom<CStringArray>("texts", CString("text"));
}

TEST(CMap, RefusesSizesThatNoMemoryHas)
{
    constexpr size_t kElement = sizeof(void*) == 4 ? 16 : 24; // in the map
    CMap<int, int, int, int> map(static_cast<INT_PTR>((std::numeric_limits<size_t>::max)() / kElement + 2));
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

/// A step with a map; \p MAKE_KEY turns a small number into a key.
template <auto MAKE_KEY, class MAP, class MODEL>
void MapStep(MAP& map, MODEL& model, Random& random, int value, INT_PTR)
{
    if (model.empty()) // few buckets, with many elements each
        map.InitHashTable(3);
    const auto key = MAKE_KEY(static_cast<int>(random() % 60));
    const auto known = model.find(key);
    const bool isKnown = known != model.end();
    const int expected = isKnown ? known->second : -1;
    Counted found;
    std::vector<Change> changes = {
        {[&] { map.SetAt(key, value); }, [&] { model[key] = value; }},
        {[&] { map[key]; }, [&] { model.try_emplace(key, -1); }},
        {[&] { EXPECT_EQ(isKnown, map.RemoveKey(key) != FALSE); }, [&] { model.erase(key); }},
        {[&] { EXPECT_EQ(isKnown, map.Lookup(key, found) != FALSE); }, [&] { EXPECT_EQ(expected, found.value); }},
    };
    if (value % 20 == 0)
        changes = {Change{[&] { map.RemoveAll(); }, [&] { model.clear(); }}};
    MakeOne(random, changes);
}

int NumberKey(int number) { return number * 16; }
CString TextKey(int number) { return CString('k', number); }

} // namespace

TEST(CMap, BehavesAsAMap)
{
    BehaveAs<CMap<int, int, Counted, int>, std::map<int, int>>(&MapStep<&NumberKey>);
    BehaveAs<CMap<CString, LPCSTR, Counted, int>, std::map<CString, int>>(&MapStep<&TextKey>);
    CMapStringToString texts; // exactly, and by whole characters
    texts["Name"] = "a";
    texts["\x83\x5C"] = "b";
    CString text;
    EXPECT_FALSE(texts.Lookup("name", text) || texts.Lookup("\x83", text));
    EXPECT_TRUE(texts.Lookup("\x83\x5C", text));
    EXPECT_STREQ("b", text);
}
