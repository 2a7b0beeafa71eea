#pragma once

#include <sceneprep/model/Json.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Sceneprep
{

/// The exit status, in addition to those of run/Error.h, if a model exceeds a limit.
inline constexpr int kOverBudget = 3;

/// The numbers of a model that a budget can limit.
struct ModelSize
{
    std::uint64_t draws = 0;      ///< draw calls: primitives of meshes that nodes show
    std::uint64_t triangles = 0;  ///< shown triangles; every use of a mesh counts
    std::uint64_t vertices = 0;   ///< of stored meshes, each of which counts once
    std::uint64_t nodes = 0;
    std::uint64_t materials = 0;  ///< that are in use
    std::uint64_t textures = 0;
    std::uint64_t bytes = 0;  ///< of the model file and the files that belong to it
};

/// A limit for one of these numbers.
struct BudgetLimit
{
    std::string name;  ///< as "draws"
    std::uint64_t limit = 0;

    friend bool operator==(const BudgetLimit&, const BudgetLimit&) = default;
};

/// A limit and the number of the model.
struct BudgetResult
{
    std::string name;
    std::uint64_t value = 0;
    std::uint64_t limit = 0;

    bool IsExceeded() const { return value > limit; }
};

/// Appends limits given as "draws=50,bytes=5M". Numbers may have a fraction, and a suffix: k, M or G.
/// @return what is wrong with the text, in which case the budget is unchanged; empty if nothing.
std::string AddLimits(const std::string& text, std::vector<BudgetLimit>& budget);

/// Returns one result for each limit, in their order.
/// @throws std::out_of_range if a limit has a name that AddLimits() refuses.
std::vector<BudgetResult> CheckBudget(const std::vector<BudgetLimit>& budget, const ModelSize& size);

bool IsExceeded(const std::vector<BudgetResult>& results);

/// Returns a table of the limits that are exceeded, or a line that says that none is; empty without limits.
std::string BudgetTable(const std::vector<BudgetResult>& results);

/// Returns an array of objects with the keys "name", "value", "limit" and "exceeded".
Json BudgetAsJson(const std::vector<BudgetResult>& results);

}  // namespace Sceneprep
