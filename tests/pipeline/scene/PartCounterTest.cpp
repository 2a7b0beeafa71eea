#include <pipeline/scene/PartCounter.h>

#include <gtest/gtest.h>

#include <vector>

namespace
{

using Pipeline::PartCounter;

std::vector<double> ReportedParts(std::size_t all, const std::vector<std::size_t>& counts)
{
    std::vector<double> parts;
    PartCounter counter([&parts](double part) { parts.push_back(part); }, all);
    for (const std::size_t count : counts)
        counter.Add(count);
    return parts;
}

TEST(PartCounter, ReportsThePartThatIsDone)
{
    EXPECT_EQ(ReportedParts(4, {1, 2, 1}), (std::vector<double>{0.25, 0.75, 1}));
}

TEST(PartCounter, ReportsOnlyAFewHundredTimes)
{
    const std::vector<double> parts = ReportedParts(100000, std::vector<std::size_t>(100000, 1));
    EXPECT_GT(parts.size(), 200U);
    EXPECT_LE(parts.size(), 401U);
    EXPECT_EQ(parts.back(), 1);
}

TEST(PartCounter, ReportsOneIfThereIsNothingToDo) { EXPECT_EQ(ReportedParts(0, {0}), (std::vector<double>{1})); }

}  // namespace
