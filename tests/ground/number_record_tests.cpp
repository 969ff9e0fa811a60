#include "ground/number_record.h"

#include "support/test.h"

namespace {

constexpr int kMost = 1000;
constexpr int kNumbers[] = {2, 0, 1000, 37};

std::string Write(const std::vector<int>& numbers)
{
    NumberRecordWriter record("ZoTest");
    for (const int number : numbers)
        record.Add(number);
    return record.Finish().GetString();
}

/// The numbers read; empty: damaged.
std::vector<int> Read(const std::string& text, size_t count = std::size(kNumbers))
{
    NumberRecordReader record(text.c_str(), "ZoTest");
    std::vector<int> numbers(count);
    for (int& number : numbers)
        number = record.Next(kMost);
    return record.IsWhole() ? numbers : std::vector<int>();
}

} // namespace

TEST(NumberRecord, ReadsWhatItWroteAndNothingElse)
{
    const std::vector<int> numbers(std::begin(kNumbers), std::end(kNumbers));
    const std::string text = Write(numbers);
    EXPECT_EQ(numbers, Read(text));
    const std::string sum = text.substr(text.rfind(' '));
    for (const std::string& damaged :
         {std::string(), std::string("ZoTest"), "ZoTesT 2 0 1000 37" + sum, "ZoTest 0 2 1000 37" + sum,
          "ZoTest 2 0 1000" + sum, "ZoTest 2 0 1000 37 0" + sum, text + " ", text + "0", " " + text,
          "ZoTest 2  0 1000 37" + sum, "ZoTest 2 +0 1000 37" + sum, "ZoTest 2 0 1000 037" + sum + "x"})
        EXPECT_TRUE(Read(damaged).empty()) << damaged;
    EXPECT_TRUE(Read(Write({2, 0, kMost + 1, 37})).empty());
    EXPECT_TRUE(Read(Write({2, 0, INT_MAX, 37})).empty());
    EXPECT_TRUE(Read("ZoTest 2 0 99999999999999999999 37" + sum).empty());
    std::vector<int> many(500, kMost); // whose sum passes 31 bits
    EXPECT_EQ(many, Read(Write(many), many.size()));
}

TEST(NumberRecord, MutationGivesNoOtherNumbers)
{
    const std::vector<int> numbers(std::begin(kNumbers), std::end(kNumbers));
    ForEachMutation(
        [&](unsigned, Random& random) {
            std::string text = Write(numbers);
            Damage(random, 1, 3,
                   {[&] { text[random() % text.size()] = static_cast<char>(random()); },
                    [&] { text.resize(random() % text.size() + 1); },
                    [&] { text.insert(random() % text.size(), 1, static_cast<char>('0' + random() % 10)); }});
            const std::vector<int> read = Read(text);
            EXPECT_TRUE(read.empty() || read == numbers) << text;
            return !read.empty();
        },
        {.leastPercent = 0});
}
