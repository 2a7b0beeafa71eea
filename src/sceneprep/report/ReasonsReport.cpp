#include <sceneprep/report/ReasonsReport.h>

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>
#include <vector>

namespace Sceneprep
{

using Pipeline::MergeReasonGroup;
using Pipeline::MergeReasons;
using Pipeline::TextOf;
using Pipeline::UnmergedSurface;

namespace
{

constexpr std::size_t kMostTexts = 5;
constexpr std::size_t kMostGroups = 1000;

struct ReasonTotal
{
    std::string text;
    std::size_t count = 0;
};

/// Adds up the groups of all materials that have the same text; the largest total comes first.
std::vector<ReasonTotal> TotalsOf(const MergeReasons& reasons)
{
    std::vector<ReasonTotal> totals;
    std::map<std::string, std::size_t> indexOf;
    for (const MergeReasonGroup& group : reasons.groups)
    {
        const std::string text = TextOf(group.reason, group.subject);
        const auto [index, isNew] = indexOf.try_emplace(text, totals.size());
        if (isNew)
            totals.push_back({text, 0});
        totals[index->second].count += group.count;
    }
    std::stable_sort(totals.begin(), totals.end(),
                     [](const ReasonTotal& a, const ReasonTotal& b) { return a.count > b.count; });
    return totals;
}

/// Returns the text on one line: names may have line breaks.
std::string WithoutBreaks(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return text;
}

Json GroupAsJson(const MergeReasonGroup& group)
{
    Json surfaces = Json::array();
    for (const UnmergedSurface& surface : group.surfaces)
        surfaces.push_back({{"node", surface.node}, {"mesh", surface.mesh}, {"surface", surface.surface}});
    return {{"material", group.material},
            {"reason", NameOf(group.reason)},
            {"subject", group.subject},
            {"surplus", group.count},
            {"text", fmt::format("{} {}", group.count, TextOf(group.reason, group.subject))},
            {"surfaces", surfaces}};
}

}  // namespace

std::string ReasonsText(const MergeReasons& reasons)
{
    if (reasons.drawCalls == reasons.needed)
        return fmt::format("{} draw call{}, one for each material in use\n", reasons.drawCalls,
                           reasons.drawCalls == 1 ? "" : "s");
    std::string text = fmt::format("{} draw calls; {} more than materials need: ", reasons.drawCalls,
                                   reasons.drawCalls - reasons.needed);
    const std::vector<ReasonTotal> totals = TotalsOf(reasons);
    std::size_t rest = reasons.drawCalls - reasons.needed;
    for (std::size_t i = 0; i < std::min(totals.size(), kMostTexts); ++i)
    {
        text += fmt::format("{}{} {}", i == 0 ? "" : ", ", totals[i].count, WithoutBreaks(totals[i].text));
        rest -= totals[i].count;
    }
    return text + (rest > 0 ? fmt::format(", {} for {} further reasons\n", rest, totals.size() - kMostTexts) : "\n");
}

Json ReasonsAsJson(const MergeReasons& reasons)
{
    Json groups = Json::array();
    for (std::size_t i = 0; i < std::min(reasons.groups.size(), kMostGroups); ++i)
        groups.push_back(GroupAsJson(reasons.groups[i]));
    return {{"drawCalls", reasons.drawCalls},
            {"neededByMaterials", reasons.needed},
            {"groupCount", reasons.groups.size()},
            {"groups", std::move(groups)}};
}

}  // namespace Sceneprep
