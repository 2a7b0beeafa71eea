#include <sceneprep/report/Findings.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <importing/base/ForReading.h>
#include <pipeline/scene/Hierarchy.h>
#include <pipeline/scene/SceneStats.h>
#include <pipeline/scene/VertexLayouts.h>
#include <sceneprep/report/SimilarMaterials.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <map>
#include <set>
#include <unordered_map>
#include <utility>

namespace Sceneprep
{

namespace
{

using Importing::At;
using Importing::ForReading;
using Importing::Geometry;
using Importing::SceneContainer;

constexpr std::size_t kMostNames = 20;
constexpr std::size_t kMostFindings = 20;
constexpr std::size_t kMostNamesInText = 3;

void AddName(const std::string& name, Finding& finding)
{
    ++finding.count;
    if (finding.names.size() < kMostNames)
        finding.names.push_back(name);
}

/// Returns "'a', 'b', 'c' and 5 more".
std::string ListNames(const Finding& finding)
{
    const std::size_t shown = std::min(finding.names.size(), kMostNamesInText);
    std::string text;
    for (std::size_t i = 0; i < shown; ++i)
        text += fmt::format("{}'{}'", i == 0 ? "" : ", ", finding.names[i]);
    return text + (finding.count > shown ? fmt::format(" and {} more", finding.count - shown) : "");
}

/// Returns the materials that surfaces use, ascending.
std::vector<int> UsedMaterials(const SceneContainer& scene)
{
    std::set<int> used;
    for (const Importing::Surface& surface : scene.SurfaceLibrary)
    {
        if (Importing::IsValidIndex(surface.GetMaterialID(), scene.MaterialLibrary.size()))
            used.insert(surface.GetMaterialID());
    }
    return {used.begin(), used.end()};
}

void AddSimilarMaterials(const Model& model, std::vector<Finding>& findings)
{
    std::vector<SimilarMaterials> similar = FindSimilarMaterials(model, UsedMaterials(*model.scene));
    similar.resize(std::min(similar.size(), kMostFindings));
    for (SimilarMaterials& group : similar)
    {
        Finding& finding = findings.emplace_back(Finding{.kind = "similar-materials", .text = std::move(group.text)});
        for (const int material : group.materials)
            AddName(ForReading(At(model.scene->MaterialLibrary, material)).GetName(), finding);
    }
}

/// Returns everything that makes meshes without joints equal, as numbers and bits of numbers.
std::vector<std::uint32_t> ContentOf(const Geometry& mesh)
{
    std::vector<std::uint32_t> content = {static_cast<std::uint32_t>(mesh.GetPolySize()),
                                          static_cast<std::uint32_t>(mesh.VertexArray.size())};
    const auto add = [&content](float number) { content.push_back(std::bit_cast<std::uint32_t>(number)); };
    for (const Importing::Vertex& record : mesh.VertexArray)
    {
        Importing::Vertex& vertex = ForReading(record);
        for (const D3DXVECTOR3& v : {vertex.Vertex::GetPosition(), vertex.Vertex::GetNormal()})
        {
            add(v.x);
            add(v.y);
            add(v.z);
        }
        const auto sets = static_cast<int>(vertex.Vertex::GetTexCoordCount());
        content.push_back(static_cast<std::uint32_t>(sets));
        for (int set = 0; set < sets; ++set)
        {
            const D3DXVECTOR2 uv = vertex.Vertex::GetTexCoord(set);
            add(uv.x);
            add(uv.y);
        }
    }
    content.insert(content.end(), mesh.IndexArray.begin(), mesh.IndexArray.end());
    return content;
}

std::uint64_t HashOf(const std::vector<std::uint32_t>& content)
{
    std::uint64_t hash = 0xCBF29CE484222325ULL;
    for (const std::uint32_t number : content)
        hash = (hash ^ number) * 0x100000001B3ULL;
    return hash;
}

/// Returns groups of meshes of equal content, the largest first.
std::vector<std::vector<std::size_t>> EqualMeshes(const Model& model)
{
    std::vector<std::vector<std::size_t>> groups;
    std::unordered_map<std::uint64_t, std::vector<std::size_t>> groupsOf;  // by hash of the content
    const std::vector<Geometry>& meshes = model.scene->GeometryLibrary;
    for (std::size_t mesh = 0; mesh < meshes.size(); ++mesh)
    {
        if (Pipeline::IsEmptied(meshes[mesh]) || !meshes[mesh].JointArray.empty() ||
            Pipeline::IsPinned(model.supplement, mesh))
            continue;
        const std::vector<std::uint32_t> content = ContentOf(meshes[mesh]);
        std::vector<std::size_t>& candidates = groupsOf[HashOf(content)];
        const auto same = std::find_if(candidates.begin(), candidates.end(), [&](std::size_t group) {
            const std::size_t first = groups[group].front();
            return ContentOf(meshes[first]) == content &&
                   LayoutOf(model.supplement, first, meshes[first]) == LayoutOf(model.supplement, mesh, meshes[mesh]);
        });
        if (same != candidates.end())
        {
            groups[*same].push_back(mesh);
            continue;
        }
        candidates.push_back(groups.size());
        groups.push_back({mesh});
    }
    std::erase_if(groups, [](const auto& group) { return group.size() < 2; });
    std::stable_sort(groups.begin(), groups.end(), [](const auto& a, const auto& b) { return a.size() > b.size(); });
    return groups;
}

void AddEqualMeshes(const Model& model, std::vector<Finding>& findings)
{
    std::vector<std::vector<std::size_t>> groups = EqualMeshes(model);
    groups.resize(std::min(groups.size(), kMostFindings));
    for (const std::vector<std::size_t>& group : groups)
    {
        Finding& finding = findings.emplace_back(Finding{.kind = "equal-meshes"});
        for (const std::size_t mesh : group)
            AddName(ForReading(model.scene->GeometryLibrary[mesh]).GetName(), finding);
        finding.text = fmt::format("{} meshes have equal content: {}", finding.count, ListNames(finding));
    }
}

/// Counts the records of each name and adds a finding if one is used several times. Empty names do not count.
class NameCounter
{
public:
    void Count(const std::string& name)
    {
        if (!name.empty())
            ++uses_[name];
    }

    void AddTo(std::vector<Finding>& findings, const char* kindOfRecord) const
    {
        std::vector<std::pair<std::string, std::size_t>> repeated;
        for (const auto& [name, uses] : uses_)
        {
            if (uses > 1)
                repeated.emplace_back(name, uses);
        }
        if (repeated.empty())
            return;
        std::stable_sort(repeated.begin(), repeated.end(),
                         [](const auto& a, const auto& b) { return a.second > b.second; });
        Finding finding{.kind = "repeated-names"};
        for (const auto& [name, uses] : repeated)
            AddName(name, finding);
        finding.text =
            fmt::format("{} name{} of {} occur{} several times: {}", finding.count, finding.count == 1 ? "" : "s",
                        kindOfRecord, finding.count == 1 ? "s" : "", ListNames(finding));
        findings.push_back(std::move(finding));
    }

private:
    std::map<std::string, std::size_t> uses_;
};

/// The primitives of a mesh of a glTF file have its name, and count once.
bool IsFurtherPrimitive(const Model& model, std::size_t mesh, std::set<int>& known)
{
    const int key = mesh < model.supplement.meshKeys.size() ? model.supplement.meshKeys[mesh] : -1;
    if (!Importing::IsValidIndex(key, model.carried.meshOf.size()))
        return false;
    const int source = At(model.carried.meshOf, key).mesh;
    return source >= 0 && !known.insert(source).second;
}

void AddRepeatedNames(const Model& model, std::vector<Finding>& findings)
{
    SceneContainer& scene = *model.scene;
    NameCounter nodes;
    for (const int node : Pipeline::WalkFromRoot(scene).order)
        nodes.Count(At(scene.NodeLibrary, node).GetName());
    nodes.AddTo(findings, "nodes");

    NameCounter meshes;
    std::set<int> known;
    for (std::size_t mesh = 0; mesh < scene.GeometryLibrary.size(); ++mesh)
    {
        if (!Pipeline::IsEmptied(scene.GeometryLibrary[mesh]) && !IsFurtherPrimitive(model, mesh, known))
            meshes.Count(scene.GeometryLibrary[mesh].GetName());
    }
    meshes.AddTo(findings, "meshes");

    NameCounter materials;
    for (const int material : UsedMaterials(scene))
        materials.Count(At(scene.MaterialLibrary, material).GetName());
    materials.AddTo(findings, "materials");
}

/// Collects the UV sets that the textures of a glTF material use.
void CollectUVSets(const Json& json, std::set<int>& sets)
{
    if (json.is_object() && json.contains("index") && json["index"].is_number_integer() && !json.contains("texCoord"))
        sets.insert(0);
    for (const auto& [key, value] : json.items())
    {
        if (key == "texCoord" && value.is_number_integer())
            sets.insert(value.get<int>());
        else if (value.is_structured())
            CollectUVSets(value, sets);
    }
}

/// Returns the UV sets that textures use, by mesh.
std::map<int, std::set<int>> UsedUVSets(const Model& model)
{
    std::map<int, std::set<int>> ofMaterial;
    for (const int material : UsedMaterials(*model.scene))
    {
        const auto position = static_cast<std::size_t>(material);
        if (position >= model.carried.materialOf.size())
            continue;
        const CarriedMaterial& carried = model.carried.materialOf[position];
        CollectUVSets(carried.patch, ofMaterial[material]);
        if (carried.material >= 0)
            CollectUVSets(At(model.carried.materials, carried.material), ofMaterial[material]);
    }
    std::map<int, std::set<int>> ofMesh;
    for (Importing::Surface& surface : model.scene->SurfaceLibrary)
    {
        std::set<int>& used = ofMesh[surface.GetGeometryID()];
        used.merge(std::set<int>(ofMaterial[surface.GetMaterialID()]));
        for (const Importing::Map& map : surface.MapList)
            used.insert(static_cast<int>(map.GetUVSetIndex()));
    }
    return ofMesh;
}

void AddUnusedUVs(const Model& model, std::vector<Finding>& findings)
{
    std::map<int, Finding> unused;  // by set
    for (const auto& [mesh, used] : UsedUVSets(model))
    {
        if (mesh < 0 || Pipeline::IsPinned(model.supplement, static_cast<std::size_t>(mesh)))
            continue;
        const Geometry& geometry = At(model.scene->GeometryLibrary, mesh);
        const int sets = LayoutOf(model.supplement, static_cast<std::size_t>(mesh), geometry).texCoordSets;
        for (int set = 0; set < sets; ++set)
        {
            if (!used.contains(set))
                AddName(ForReading(geometry).GetName(), unused[set]);
        }
    }
    for (auto& [set, finding] : unused)
    {
        finding.kind = "unused-uvs";
        finding.text = fmt::format("no texture uses UV set {} of {} mesh{}: {}", set, finding.count,
                                   finding.count == 1 ? "" : "es", ListNames(finding));
        findings.push_back(std::move(finding));
    }
}

}  // namespace

std::vector<Finding> FindImprovements(const Model& model)
{
    std::vector<Finding> findings;
    AddSimilarMaterials(model, findings);
    AddEqualMeshes(model, findings);
    AddRepeatedNames(model, findings);
    AddUnusedUVs(model, findings);
    return findings;
}

std::string FindingsText(const std::vector<Finding>& findings, std::size_t limit)
{
    if (findings.empty())
        return {};
    std::string text = "Findings:\n";
    for (std::size_t i = 0; i < std::min(findings.size(), limit); ++i)
    {
        std::string line = findings[i].text;
        std::replace_if(
            line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
        text += "  " + line + '\n';
    }
    return text + (findings.size() > limit ? fmt::format("  and {} more\n", findings.size() - limit) : "");
}

Json FindingsAsJson(const std::vector<Finding>& findings)
{
    Json list = Json::array();
    for (const Finding& finding : findings)
        list.push_back(
            {{"kind", finding.kind}, {"text", finding.text}, {"names", finding.names}, {"count", finding.count}});
    return list;
}

}  // namespace Sceneprep
