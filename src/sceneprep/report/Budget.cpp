#include <sceneprep/report/Budget.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <stdexcept>
#include <string_view>

namespace Sceneprep
{

namespace
{

struct BudgetName
{
    std::string_view name;
    std::uint64_t ModelSize::*value;
};

constexpr std::array<BudgetName, 7> kBudgetNames = {{{"draws", &ModelSize::draws},
                                                     {"triangles", &ModelSize::triangles},
                                                     {"vertices", &ModelSize::vertices},
                                                     {"nodes", &ModelSize::nodes},
                                                     {"materials", &ModelSize::materials},
                                                     {"textures", &ModelSize::textures},
                                                     {"bytes", &ModelSize::bytes}}};

const BudgetName* FindBudget(std::string_view name)
{
    const auto* found =
        std::find_if(kBudgetNames.begin(), kBudgetNames.end(), [&](const BudgetName& row) { return row.name == name; });
    return found == kBudgetNames.end() ? nullptr : found;
}

/// Returns the factor of a suffix; 0 for any other text.
double FactorOf(std::string_view suffix)
{
    if (suffix.empty())
        return 1;
    if (suffix == "k" || suffix == "K")
        return 1e3;
    if (suffix == "M")
        return 1e6;
    return suffix == "G" ? 1e9 : 0;
}

std::optional<std::uint64_t> ParseAmount(std::string_view text)
{
    constexpr double kLargest = 1e15;
    double number = 0;
    const char* end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, number, std::chars_format::fixed);
    const double amount = number * FactorOf({read, static_cast<std::size_t>(end - read)});
    const bool hasSuffix = FactorOf({read, static_cast<std::size_t>(end - read)}) > 0;
    if (error != std::errc() || !hasSuffix || !(amount >= 0 && amount <= kLargest))
        return std::nullopt;
    return static_cast<std::uint64_t>(amount);
}

std::string AddLimit(std::string_view text, std::vector<BudgetLimit>& budget)
{
    const std::size_t sign = text.find('=');
    const std::string_view name = text.substr(0, sign);
    if (FindBudget(name) == nullptr)
    {
        std::vector<std::string_view> names;
        names.reserve(kBudgetNames.size());
        for (const BudgetName& row : kBudgetNames)
            names.push_back(row.name);
        return fmt::format("'{}' is not the name of a limit; allowed are {}", name, fmt::join(names, ", "));
    }
    const std::string_view amount = sign == std::string_view::npos ? "" : text.substr(sign + 1);
    const std::optional<std::uint64_t> limit = ParseAmount(amount);
    if (!limit)
        return fmt::format("'{}' is not a limit for {}; give a number, with k, M or G after it if needed, as {}=5k",
                           amount, name, name);
    if (std::any_of(budget.begin(), budget.end(), [&](const BudgetLimit& other) { return other.name == name; }))
        return fmt::format("{} has two limits; give one", name);
    budget.push_back({std::string(name), *limit});
    return {};
}

}  // namespace

std::string AddLimits(const std::string& text, std::vector<BudgetLimit>& budget)
{
    std::vector<BudgetLimit> extended = budget;
    std::size_t begin = 0;
    while (begin <= text.size())
    {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        if (std::string problem = AddLimit(std::string_view(text).substr(begin, end - begin), extended);
            !problem.empty())
            return problem;
        begin = end + 1;
    }
    budget = std::move(extended);
    return {};
}

std::vector<BudgetResult> CheckBudget(const std::vector<BudgetLimit>& budget, const ModelSize& size)
{
    std::vector<BudgetResult> results;
    for (const BudgetLimit& limit : budget)
    {
        const BudgetName* row = FindBudget(limit.name);
        if (row == nullptr)
            throw std::out_of_range("there is no number '" + limit.name + "'");
        results.push_back({limit.name, size.*(row->value), limit.limit});
    }
    return results;
}

bool IsExceeded(const std::vector<BudgetResult>& results)
{
    return std::any_of(results.begin(), results.end(), [](const BudgetResult& result) { return result.IsExceeded(); });
}

std::string BudgetTable(const std::vector<BudgetResult>& results)
{
    if (results.empty())
        return {};
    if (!IsExceeded(results))
        return "The model is within the budget.\n";
    std::string table = fmt::format("{:<12}{:>14}{:>14}\n", "Over budget:", "value", "limit");
    for (const BudgetResult& result : results)
    {
        if (result.IsExceeded())
            table += fmt::format("  {:<10}{:>14}{:>14}\n", result.name, result.value, result.limit);
    }
    return table;
}

Json BudgetAsJson(const std::vector<BudgetResult>& results)
{
    Json json = Json::array();
    for (const BudgetResult& result : results)
        json.push_back({{"name", result.name},
                        {"value", result.value},
                        {"limit", result.limit},
                        {"exceeded", result.IsExceeded()}});
    return json;
}

}  // namespace Sceneprep
