#include <sceneprep/report/SimilarRecords.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using namespace Sceneprep;
using testing::UnorderedElementsAre;

/// Returns each group as "property: record=value ...".
std::vector<std::string> Groups(const std::vector<Properties>& records)
{
    std::vector<std::string> texts;
    for (const SimilarRecords& group : FindSimilarRecords(records))
    {
        std::string text = group.property + ':';
        for (std::size_t i = 0; i < group.records.size(); ++i)
            text += ' ' + std::to_string(group.records[i]) + '=' + group.values[i];
        texts.push_back(text);
    }
    return texts;
}

TEST(SimilarRecords, DifferInOneProperty)
{
    EXPECT_THAT(
        Groups(
            {{{"a", "1"}, {"b", "2"}}, {{"b", "3"}, {"a", "1"}}, {{"a", "4"}, {"b", "3"}}, {{"a", "5"}, {"b", "6"}}}),
        UnorderedElementsAre("b: 0=2 1=3", "a: 1=1 2=4"));
}

TEST(SimilarRecords, MayLackTheProperty)
{
    EXPECT_THAT(Groups({{{"a", "1"}}, {{"a", "1"}, {"b", "2"}}, {{"a", "1"}, {"b", "3"}}, {{"c", "1"}}}),
                UnorderedElementsAre("b: 0= 1=2 2=3"));
    EXPECT_THAT(Groups({{}, {{"a", "1"}}}), UnorderedElementsAre("a: 0= 1=1"));
}

TEST(SimilarRecords, EqualRecordsAreAGroupAndComparedOnce)
{
    EXPECT_THAT(Groups({{{"a", "1"}, {"b", "2"}}, {{"b", "2"}, {"a", "1"}}, {{"a", "1"}, {"b", "3"}}}),
                UnorderedElementsAre(": 0= 1=", "b: 0=2 2=3"));
}

TEST(SimilarRecords, PropertiesOfDifferentNamesAreNotSimilar)
{
    EXPECT_THAT(Groups({{{"a", "1"}, {"b", "2"}}, {{"a", "1"}, {"c", "2"}}}), UnorderedElementsAre());
    EXPECT_THAT(Groups({}), UnorderedElementsAre());
}

TEST(SimilarRecords, ManyAreComparedQuickly)
{
    std::vector<Properties> records;
    for (int i = 0; i < 20000; ++i)
        records.push_back({{"a", std::to_string(i)}, {"b", std::to_string(2 * i)}, {"c", "1"}});
    EXPECT_TRUE(FindSimilarRecords(records).empty());
    records.push_back({{"a", "7"}, {"b", "14"}, {"c", "2"}});
    EXPECT_THAT(Groups(records), UnorderedElementsAre("c: 7=1 20000=2"));
}

}  // namespace
