#include <sceneprep/report/Budget.h>

#include <gtest/gtest.h>

#include <stdexcept>

namespace
{

using namespace Sceneprep;

std::vector<BudgetLimit> Parse(const std::string& text)
{
    std::vector<BudgetLimit> budget;
    EXPECT_EQ(AddLimits(text, budget), "") << text;
    return budget;
}

TEST(Budget, ReadsNamesAndNumbersWithSuffixes)
{
    EXPECT_EQ(Parse("draws=50,bytes=5M"), (std::vector<BudgetLimit>{{"draws", 50}, {"bytes", 5000000}}));
    EXPECT_EQ(
        Parse("vertices=200k,triangles=1.5K,nodes=0,materials=2G,textures=3"),
        (std::vector<BudgetLimit>{
            {"vertices", 200000}, {"triangles", 1500}, {"nodes", 0}, {"materials", 2000000000}, {"textures", 3}}));
}

TEST(Budget, FurtherTextsAddLimits)
{
    std::vector<BudgetLimit> budget = Parse("draws=1");
    EXPECT_EQ(AddLimits("nodes=2", budget), "");
    EXPECT_EQ(budget, (std::vector<BudgetLimit>{{"draws", 1}, {"nodes", 2}}));
    EXPECT_EQ(AddLimits("bytes=2,draws=3", budget), "draws has two limits; give one");
    EXPECT_EQ(budget.size(), 2U) << "a refused text changes nothing";
}

TEST(Budget, RefusesUnknownNamesWithTheList)
{
    std::vector<BudgetLimit> budget;
    EXPECT_EQ(AddLimits("drawcalls=5", budget),
              "'drawcalls' is not the name of a limit; allowed are draws, triangles, vertices, nodes, materials, "
              "textures, bytes");
    EXPECT_NE(AddLimits("", budget), "");
    EXPECT_NE(AddLimits("draws=5,", budget), "");
}

TEST(Budget, RefusesWhatIsNotANumber)
{
    std::vector<BudgetLimit> budget;
    EXPECT_EQ(AddLimits("draws=many", budget),
              "'many' is not a limit for draws; give a number, with k, M or G after it if needed, as draws=5k");
    for (const char* text : {"draws", "draws=", "draws=-1", "draws=5x", "draws=5kk", "draws=nan", "draws=inf",
                             "draws=M", "draws=9999999G", "draws=1e3"})
        EXPECT_NE(AddLimits(text, budget), "") << text;
    EXPECT_TRUE(budget.empty());
}

TEST(Budget, ComparesEveryNumber)
{
    const ModelSize size = {
        .draws = 1, .triangles = 2, .vertices = 3, .nodes = 4, .materials = 5, .textures = 6, .bytes = 7};
    const auto results =
        CheckBudget(Parse("draws=1,triangles=1,vertices=3,nodes=3,materials=5,textures=5,bytes=7"), size);
    std::string exceeded;
    for (const BudgetResult& result : results)
        exceeded += result.IsExceeded() ? result.name + ' ' : "";
    EXPECT_EQ(exceeded, "triangles nodes textures ");
    EXPECT_TRUE(IsExceeded(results));
    EXPECT_FALSE(IsExceeded(CheckBudget(Parse("draws=1,bytes=7"), size)));
    EXPECT_THROW(CheckBudget({{"colours", 1}}, size), std::out_of_range);
}

TEST(Budget, TheTableHasWhatIsExceeded)
{
    EXPECT_EQ(BudgetTable({{"draws", 64, 50}, {"nodes", 3, 3}, {"bytes", 5000001, 5000000}}),
              "Over budget:         value         limit\n"
              "  draws                 64            50\n"
              "  bytes            5000001       5000000\n");
    EXPECT_EQ(BudgetTable({{"draws", 50, 50}}), "The model is within the budget.\n");
    EXPECT_EQ(BudgetTable({}), "");
}

TEST(Budget, JsonHasEveryLimit)
{
    EXPECT_EQ(BudgetAsJson({{"draws", 64, 50}, {"nodes", 3, 3}}).dump(),
              R"([{"name":"draws","value":64,"limit":50,"exceeded":true},)"
              R"({"name":"nodes","value":3,"limit":3,"exceeded":false}])");
}

}  // namespace
