#include <sceneprep/compare/Compare.h>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <sceneprep/compare/MatchPieces.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <map>
#include <set>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace Sceneprep
{

namespace
{

constexpr double kAreaShare = 1e-3;
constexpr std::size_t kMostDifferences = 20;

/// Nearly equal pieces may be matched crosswise; what remains gets a second chance with this factor.
constexpr double kSecondChance = 4;

constexpr std::array<const char*, 5> kSingular = {"triangle", "line", "point", "camera", "light"};
constexpr std::array<const char*, 5> kPlural = {"triangles", "lines", "points", "cameras", "lights"};

/// What one line says about changed values.
struct Phrase
{
    std::string_view kind;
    const char* text;
};

constexpr std::array kPhrases = {Phrase{"winding", "the winding differs"}, Phrase{"normals", "the normals differ"},
                                 Phrase{"texture-coordinates", "the texture coordinates differ"},
                                 Phrase{"attributes", "colours or other attributes differ"},
                                 Phrase{"tangents", "the tangents differ"}};

std::string CountText(std::size_t count, PieceKind kind)
{
    const auto index = static_cast<std::size_t>(kind);
    return fmt::format("{} {}", count, count == 1 ? kSingular[index] : kPlural[index]);
}

bool IsObject(PieceKind kind) { return kind == PieceKind::Camera || kind == PieceKind::Light; }

double DiagonalOf(const Appearance& appearance)
{
    double squares = 0;
    for (std::size_t c = 0; c < 3; ++c)
        squares += (appearance.max[c] - appearance.min[c]) * (appearance.max[c] - appearance.min[c]);
    return std::sqrt(squares);
}

/// What the differences of one line have in common.
struct Group
{
    std::size_t count = 0;
    std::uint32_t first = 0;  ///< piece
    bool isOfAfter = false;
};

class Comparison
{
public:
    Comparison(const Appearance& before, const Appearance& after, const CompareOptions& options)
        : before_(before), after_(after), options_(options)
    {
        lookOfBefore_ = NumberLooks(before);
        lookOfAfter_ = NumberLooks(after);
        tolerance_.position = std::max(before.noise, after.noise) + options.relativeTolerance * DiagonalOf(before);
        tolerance_.winding = options.winding;
        tolerance_.normals = options.normals;
        tolerance_.texCoords = options.texCoords;
        tolerance_.others = options.attributes;
        tolerance_.mayAddNormals = options.mayAddNormals;
    }

    std::vector<Difference> Run()
    {
        ComparePieceLists();
        CompareAreas();
        if (options_.clips)
            CompareClips();
        return Limited();
    }

private:
    std::vector<int> NumberLooks(const Appearance& appearance)
    {
        std::vector<int> numbers;
        numbers.reserve(appearance.looks.size());
        for (const Look& look : appearance.looks)
        {
            const bool hasKey = options_.materials || IsObject(look.kind);
            const std::string text = fmt::format("{}|{}", static_cast<int>(look.kind), hasKey ? look.key : "");
            numbers.push_back(lookNumbers_.emplace(text, static_cast<int>(lookNumbers_.size())).first->second);
        }
        return numbers;
    }

    bool IsCompared(PieceKind kind) const
    {
        switch (kind)
        {
            case PieceKind::Triangle:
                return true;
            case PieceKind::Line:
            case PieceKind::Point:
                return options_.linesAndPoints;
            case PieceKind::Camera:
                return options_.cameras;
            case PieceKind::Light:
                return options_.lights;
        }
        return true;
    }

    std::vector<std::uint32_t> ChoosePieces(const Appearance& appearance) const
    {
        std::vector<std::uint32_t> chosen;
        chosen.reserve(appearance.pieces.size());
        for (std::size_t i = 0; i < appearance.pieces.size(); ++i)
        {
            if (IsCompared(appearance.looks[LookOf(appearance.pieces[i])].kind))
                chosen.push_back(static_cast<std::uint32_t>(i));
        }
        return chosen;
    }

    std::vector<PiecePair> Match(std::vector<std::uint32_t>& before, std::vector<std::uint32_t>& after) const
    {
        return MatchPieces(before_.pieces, after_.pieces, lookOfBefore_, lookOfAfter_, tolerance_, before, after);
    }

    std::vector<std::uint32_t> StartsOfRuns() const
    {
        std::vector<std::uint32_t> starts;
        starts.reserve(before_.runs.size());
        for (const PieceRun& run : before_.runs)
        {
            const bool isLast = &run == &before_.runs.back();
            if (run.first < before_.pieces.size() && (isLast || run.first < (&run)[1].first))
                starts.push_back(run.first);
        }
        return starts;
    }

    void ComparePieceLists()
    {
        std::vector<std::uint32_t> missing = ChoosePieces(before_);
        std::vector<std::uint32_t> added = ChoosePieces(after_);
        MatchRuns(before_.pieces, after_.pieces, lookOfBefore_, lookOfAfter_, tolerance_, StartsOfRuns(), missing,
                  added);
        Match(missing, added);
        if (missing.empty() && added.empty())
            return;
        tolerance_.factor = kSecondChance;
        Match(missing, added);
        DropSlivers(before_, missing);
        DropSlivers(after_, added);
        tolerance_.placeOnly = true;
        for (const PiecePair& pair : Match(missing, added))
            AddChange(pair);
        for (const std::uint32_t piece : missing)
            AddPiece("missing", before_, piece, false);
        for (const std::uint32_t piece : added)
            AddPiece("added", after_, piece, true);
        for (const auto& [key, group] : groups_)
            AddGroup(key, group);
    }

    /// Drops triangles that are thinner than what rounding may change.
    void DropSlivers(const Appearance& appearance, std::vector<std::uint32_t>& pieces) const
    {
        std::erase_if(pieces, [&](std::uint32_t index) {
            const Piece& piece = appearance.pieces[index];
            if (appearance.looks[LookOf(piece)].kind != PieceKind::Triangle)
                return false;
            const double doubleArea = std::hypot(piece.across[0], piece.across[1], piece.across[2]);
            return doubleArea <= 2 * (tolerance_.position + RoundingOf(piece)) * piece.size;
        });
    }

    /// Sorts a pair at one place by what differs.
    void AddChange(const PiecePair& pair)
    {
        const Piece& before = before_.pieces[pair.before];
        const Piece& after = after_.pieces[pair.after];
        const PieceDifferences differences = ComparePieces(before, after, lookOfBefore_, lookOfAfter_, tolerance_);
        const auto add = [&](bool differs, const char* kind) {
            if (differs)
                Count({kind, LookOf(before), LookOf(after)}, pair.before, false);
        };
        if (before_.looks[LookOf(before)].kind != after_.looks[LookOf(after)].kind)
        {
            AddPiece("missing", before_, pair.before, false);
            AddPiece("added", after_, pair.after, true);
            return;
        }
        add(differences.look, "material");
        add(differences.winding, "winding");
        add(differences.normals, "normals");
        add(differences.texCoords, "texture-coordinates");
        add(differences.others, "attributes");
        add(differences.tangents, "tangents");
    }

    using GroupKey = std::tuple<std::string, std::uint32_t, std::uint32_t>;  // kind, look before, look after

    void AddPiece(const char* kind, const Appearance& appearance, std::uint32_t piece, bool isOfAfter)
    {
        const std::uint32_t look = LookOf(appearance.pieces[piece]);
        Count({kind, look, look}, piece, isOfAfter);
    }

    void Count(const GroupKey& key, std::uint32_t piece, bool isOfAfter)
    {
        Group& group = groups_[key];
        if (group.count++ == 0)
        {
            group.first = piece;
            group.isOfAfter = isOfAfter;
        }
    }

    void AddGroup(const GroupKey& key, const Group& group)
    {
        const auto& [kind, lookBefore, lookAfter] = key;
        const Appearance& appearance = group.isOfAfter ? after_ : before_;
        const Look& look = appearance.looks[lookBefore];
        changedLooks_.insert(group.isOfAfter ? lookOfAfter_[lookBefore] : lookOfBefore_[lookBefore]);
        if (!group.isOfAfter && kind != "missing")
            changedLooks_.insert(lookOfAfter_[lookAfter]);
        const std::string count = CountText(group.count, look.kind);
        const std::string first = PlaceText(appearance, group);
        if (kind == "missing" || kind == "added")
        {
            const std::string listKind = IsObject(look.kind) ? kSingular[static_cast<std::size_t>(look.kind)]
                                                             : kPlural[static_cast<std::size_t>(look.kind)];
            Add(listKind, look.name, fmt::format("{}: {} {}{}", LookText(look), count, kind, first), group.count);
            return;
        }
        Add(kind, look.name, ChangeText(kind, look, after_.looks[lookAfter], count) + first, group.count);
    }

    static std::string ChangeText(const std::string& kind, const Look& look, const Look& lookAfter,
                                  const std::string& count)
    {
        for (const Phrase& phrase : kPhrases)
        {
            if (phrase.kind == kind)
                return fmt::format("{}: {} on {}", LookText(look), phrase.text, count);
        }
        if (IsObject(look.kind))
            return fmt::format("{}: its values differ ({})", LookText(look), count);
        if (look.name == lookAfter.name)
            return fmt::format("{}: its values or textures differ on {}", LookText(look), count);
        return fmt::format("{}: replaced by '{}' on {}", LookText(look), lookAfter.name, count);
    }

    static std::string LookText(const Look& look)
    {
        if (look.kind == PieceKind::Camera)
            return fmt::format("camera '{}'", look.name);
        if (look.kind == PieceKind::Light)
            return fmt::format("light '{}'", look.name);
        return look.name.empty() ? "material without a name" : fmt::format("material '{}'", look.name);
    }

    static std::string PlaceText(const Appearance& appearance, const Group& group)
    {
        const Piece& piece = appearance.pieces[group.first];
        const auto run = std::upper_bound(appearance.runs.begin(), appearance.runs.end(), group.first,
                                          [](std::uint32_t index, const PieceRun& r) { return index < r.first; });
        const std::string node = run == appearance.runs.begin() ? std::string() : std::prev(run)->node;
        return fmt::format("{} at ({:.6g}, {:.6g}, {:.6g}){}", group.count == 1 ? "," : ", the first", piece.center[0],
                           piece.center[1], piece.center[2],
                           node.empty() ? std::string() : fmt::format(" of node '{}'", node));
    }

    /// Checks in another way that each material covers as much as before.
    void CompareAreas()
    {
        std::map<int, std::array<double, 2>> areas;  // by look: before, after
        std::map<int, const Look*> looks;
        const auto add = [&](const Appearance& appearance, const std::vector<int>& numbers, std::size_t side) {
            for (std::size_t i = 0; i < appearance.looks.size(); ++i)
            {
                areas[numbers[i]][side] += appearance.looks[i].area;
                looks.emplace(numbers[i], &appearance.looks[i]);
            }
        };
        add(before_, lookOfBefore_, 0);
        add(after_, lookOfAfter_, 1);
        for (const auto& [number, area] : areas)
        {
            const double largest = std::max(area[0], area[1]);
            if (changedLooks_.contains(number) || std::fabs(area[0] - area[1]) <= AreaTolerance(largest))
                continue;
            Add("area", looks[number]->name,
                fmt::format("{}: area {:.6g}, {:.6g} expected", LookText(*looks[number]), area[1], area[0]), 1);
        }
    }

    /// Small triangles far from the origin have areas that rounding changes.
    double AreaTolerance(double area) const
    {
        const double diagonal = DiagonalOf(before_);
        double farthest = tolerance_.position;
        for (std::size_t c = 0; c < 3; ++c)
            farthest = std::max({farthest, std::fabs(before_.min[c]), std::fabs(before_.max[c])});
        return kAreaShare * area + 1e-6 * farthest * diagonal;
    }

    void CompareClips()
    {
        std::map<std::pair<std::string, std::string>, int> counts;  // by name and content
        for (const ClipKey& clip : before_.clips)
            ++counts[{clip.name, clip.text}];
        std::vector<const ClipKey*> added;
        for (const ClipKey& clip : after_.clips)
        {
            if (--counts[{clip.name, clip.text}] < 0)
                added.push_back(&clip);
        }
        for (const ClipKey& clip : before_.clips)
        {
            int& count = counts[{clip.name, clip.text}];
            if (count > 0)
            {
                --count;
                AddMissingClip(clip, added);
            }
        }
        for (const ClipKey* clip : added)
            Add("clip", clip->name, fmt::format("clip '{}': added", clip->name), 1);
    }

    /// @param added  a clip of the same name is removed from it
    void AddMissingClip(const ClipKey& clip, std::vector<const ClipKey*>& added)
    {
        const auto same =
            std::find_if(added.begin(), added.end(), [&](const ClipKey* other) { return other->name == clip.name; });
        if (same == added.end())
        {
            Add("clip", clip.name, fmt::format("clip '{}': missing", clip.name), 1);
            return;
        }
        const ClipKey& other = **same;
        if (other.channels != clip.channels)
            Add("clip", clip.name,
                fmt::format("clip '{}': {} channels, {} expected", clip.name, other.channels, clip.channels), 1);
        else if (other.duration != clip.duration)
            Add("clip", clip.name,
                fmt::format("clip '{}': {:.6g} s long, {:.6g} s expected", clip.name, other.duration, clip.duration),
                1);
        else
            Add("clip", clip.name, fmt::format("clip '{}': its keys differ", clip.name), 1);
        added.erase(same);
    }

    void Add(std::string kind, std::string name, std::string text, std::size_t weight)
    {
        found_.push_back({weight, {std::move(kind), std::move(name), std::move(text)}});
    }

    std::vector<Difference> Limited()
    {
        std::stable_sort(found_.begin(), found_.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
        std::vector<Difference> limited;
        for (auto& [weight, difference] : found_)
        {
            if (limited.size() < kMostDifferences)
                limited.push_back(std::move(difference));
        }
        if (found_.size() > kMostDifferences)
            limited.push_back({"more", "", fmt::format("{} further differences", found_.size() - kMostDifferences)});
        return limited;
    }

    const Appearance& before_;
    const Appearance& after_;
    const CompareOptions& options_;
    std::unordered_map<std::string, int> lookNumbers_;
    std::vector<int> lookOfBefore_;
    std::vector<int> lookOfAfter_;
    PieceTolerance tolerance_;
    std::map<GroupKey, Group> groups_;
    std::set<int> changedLooks_;  // numbers
    std::vector<std::pair<std::size_t, Difference>> found_;
};

}  // namespace

std::vector<Difference> Compare(const Appearance& before, const Appearance& after, const CompareOptions& options)
{
    return Comparison(before, after, options).Run();
}

std::vector<std::string> DescribeComparison(const Appearance& before, const CompareOptions& options)
{
    std::array<std::size_t, 5> counts = {};
    for (const Piece& piece : before.pieces)
        ++counts[static_cast<std::size_t>(before.looks[LookOf(piece)].kind)];
    const auto countOf = [&](PieceKind kind) { return CountText(counts[static_cast<std::size_t>(kind)], kind); };

    std::vector<std::string> values = {"positions"};
    const auto addValue = [&](bool isCompared, const char* value) {
        if (isCompared)
            values.emplace_back(value);
    };
    addValue(options.winding, "winding");
    addValue(options.materials, "materials");
    addValue(options.normals, "normals");
    addValue(options.normals, "tangents");
    addValue(options.texCoords, "texture coordinates");
    addValue(options.attributes, "colours and other attributes");

    std::vector<std::string> lines = {fmt::format("{}: {}", countOf(PieceKind::Triangle), fmt::join(values, ", "))};
    if (options.linesAndPoints && counts[1] + counts[2] > 0)
        lines.push_back(fmt::format("{}, {}", countOf(PieceKind::Line), countOf(PieceKind::Point)));
    if (options.cameras && counts[3] > 0)
        lines.push_back(countOf(PieceKind::Camera));
    if (options.lights && counts[4] > 0)
        lines.push_back(countOf(PieceKind::Light));
    if (options.clips && !before.clips.empty())
        lines.push_back(
            fmt::format("{} clip{}: names, channels, keys", before.clips.size(), before.clips.size() == 1 ? "" : "s"));
    return lines;
}

}  // namespace Sceneprep
