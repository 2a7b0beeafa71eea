#include <sceneprep/report/Inspection.h>

#include <fmt/format.h>
#include <pipeline/scene/HasNormals.h>
#include <pipeline/scene/VertexLayouts.h>
#include <sceneprep/compare/Appearance.h>
#include <sceneprep/model/ImageKind.h>
#include <sceneprep/model/TextureReferences.h>
#include <sceneprep/report/JsonFigures.h>
#include <sceneprep/report/PrintableName.h>
#include <sceneprep/report/Report.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <map>
#include <system_error>

namespace Sceneprep
{

namespace
{

namespace fs = std::filesystem;

constexpr std::size_t kMeshesInText = 10;
constexpr std::uint64_t kFloat = sizeof(float);

// Meshes.

/// Describes a mesh that is kept as the file has it.
void SummarizePrimitive(const CarriedPrimitive& primitive, MeshSummary& mesh)
{
    for (const auto& [name, accessor] : primitive.attributes)
    {
        mesh.attributes.push_back(name);
        mesh.bytes += accessor.bytes.size();
    }
    for (const auto& target : primitive.targets)
    {
        for (const auto& [name, accessor] : target)
            mesh.bytes += accessor.bytes.size();
    }
    if (!primitive.targets.empty())
        mesh.attributes.push_back(fmt::format("{} morph targets", primitive.targets.size()));
    if (primitive.indices)
        mesh.bytes += primitive.indices->bytes.size();
}

void SummarizeVertices(Importing::Geometry& geometry, const Pipeline::VertexLayout& layout, MeshSummary& mesh)
{
    constexpr std::uint64_t kJointsAndWeights = 4 * sizeof(std::uint16_t) + 4 * kFloat;
    constexpr std::size_t kLargestOfShortIndices = 65535;
    std::uint64_t stride = 3 * kFloat;
    mesh.attributes = {"POSITION"};
    const auto add = [&](std::string name, std::uint64_t bytes) {
        mesh.attributes.push_back(std::move(name));
        stride += bytes;
    };
    if (Pipeline::HasNormals(geometry))
        add("NORMAL", 3 * kFloat);
    for (int set = 0; set < layout.texCoordSets; ++set)
        add(fmt::format("TEXCOORD_{}", set), 2 * kFloat);
    for (const Pipeline::VertexAttribute& attribute : layout.attributes)
        add(attribute.name, static_cast<std::uint64_t>(attribute.components) * kFloat);
    if (!geometry.JointArray.empty())
        add("JOINTS_0, WEIGHTS_0", kJointsAndWeights);
    mesh.bytes = stride * mesh.vertices + mesh.indices * (mesh.vertices <= kLargestOfShortIndices ? 2 : 4);
}

const CarriedPrimitive* PrimitiveOf(const Model& model, std::size_t geometry)
{
    const int key = Pipeline::EntryOr(model.supplement.meshKeys, geometry, -1);
    if (key < 0 || static_cast<std::size_t>(key) >= model.carried.meshOf.size())
        return nullptr;
    const std::optional<CarriedPrimitive>& primitive = model.carried.meshOf[static_cast<std::size_t>(key)].primitive;
    return primitive ? &*primitive : nullptr;
}

std::vector<MeshSummary> SummarizeMeshes(Model& model)
{
    std::vector<std::size_t> uses(model.scene->GeometryLibrary.size(), 0);
    for (const Importing::Surface& surface : model.scene->SurfaceLibrary)
    {
        if (const int geometry = surface.GetGeometryID(); geometry >= 0)
            ++uses.at(static_cast<std::size_t>(geometry));
    }
    std::vector<MeshSummary> meshes;
    for (std::size_t i = 0; i < uses.size(); ++i)
    {
        Importing::Geometry& geometry = model.scene->GeometryLibrary[i];
        const CarriedPrimitive* primitive = PrimitiveOf(model, i);
        if (Pipeline::IsEmptied(geometry) && primitive == nullptr)
            continue;
        MeshSummary mesh{.geometry = i,
                         .name = geometry.GetName(),
                         .vertices = geometry.VertexArray.size(),
                         .indices = geometry.IndexArray.size(),
                         .uses = uses[i]};
        if (primitive != nullptr)
            SummarizePrimitive(*primitive, mesh);
        else
            SummarizeVertices(geometry, Pipeline::LayoutOf(model.supplement, i, geometry), mesh);
        meshes.push_back(std::move(mesh));
    }
    std::stable_sort(meshes.begin(), meshes.end(),
                     [](const MeshSummary& a, const MeshSummary& b) { return a.bytes > b.bytes; });
    return meshes;
}

/// Returns how many meshes have each attribute.
std::map<std::string, std::size_t> CountAttributes(const Inspection& inspection)
{
    std::map<std::string, std::size_t> counts;
    for (const MeshSummary& mesh : inspection.meshes)
    {
        for (const std::string& attribute : mesh.attributes)
            ++counts[attribute];
    }
    return counts;
}

// Textures.

void DescribeImage(const std::vector<unsigned char>& content, TextureSummary& texture)
{
    if (const ImageKind* kind = ImageKindOf(content))
        texture.kind = kind->mimeType;
    texture.size = SizeOfImage(content);
}

TextureSummary SummarizeEmbedded(const EmbeddedTexture& image, const std::string& name)
{
    TextureSummary texture{.name = name.empty() ? image.fileName : name, .isEmbedded = true};
    texture.bytes = image.content.size();
    DescribeImage(image.content, texture);
    return texture;
}

TextureSummary SummarizeFile(const fs::path& file, const std::string& reference)
{
    constexpr std::size_t kHeaderBytes = std::size_t{1} << 20U;
    TextureSummary texture{.name = reference};
    std::error_code error;
    const std::uintmax_t size = fs::file_size(file, error);
    if (error)
        return texture;
    texture.bytes = size;
    std::vector<unsigned char> content(std::min<std::size_t>(size, kHeaderBytes));
    std::ifstream stream(file, std::ios::binary);
    stream.read(reinterpret_cast<char*>(content.data()), static_cast<std::streamsize>(content.size()));
    content.resize(static_cast<std::size_t>(stream.gcount()));
    DescribeImage(content, texture);
    return texture;
}

std::vector<TextureSummary> SummarizeTextures(const Model& model)
{
    std::vector<TextureSummary> textures;
    const fs::path folder = model.file.parent_path();
    for (const CarriedImage& image : model.carried.images)
    {
        if (image.embedded >= 0)
            textures.push_back(SummarizeEmbedded(model.textures.embedded.at(static_cast<std::size_t>(image.embedded)),
                                                 image.object.value("name", fmt::format("*{}", image.embedded))));
        else
            textures.push_back(SummarizeFile(folder / image.file, image.file.string()));
    }
    if (!textures.empty())
        return textures;
    for (const std::string& entry : model.scene->TextureLibrary)
    {
        const std::string reference = SpellingOf(model.textures, entry);
        if (const EmbeddedTexture* image = FindEmbedded(model.textures, reference))
            textures.push_back(SummarizeEmbedded(*image, reference));
        else
            textures.push_back(SummarizeFile(folder / reference, reference));
    }
    return textures;
}

// Materials and clips.

std::vector<MaterialSummary> SummarizeMaterials(Importing::SceneContainer& scene)
{
    std::vector<MaterialSummary> materials;
    for (Importing::Material& material : scene.MaterialLibrary)
        materials.push_back({material.GetName()});
    for (const Importing::Surface& surface : scene.SurfaceLibrary)
    {
        if (const int material = surface.GetMaterialID(); material >= 0)
            ++materials.at(static_cast<std::size_t>(material)).uses;
    }
    return materials;
}

/// Times are single-precision numbers in ascending order.
double LastTime(const CarriedAccessor& times)
{
    float time = 0;
    if (times.bytes.size() >= sizeof time)
        std::memcpy(&time, times.bytes.data() + times.bytes.size() - sizeof time, sizeof time);
    return time;
}

std::vector<ClipSummary> SummarizeClips(const Carried& carried)
{
    std::vector<ClipSummary> clips;
    for (const CarriedClip& clip : carried.clips)
    {
        ClipSummary summary{.name = clip.object.value("name", ""), .channels = clip.channels.size()};
        for (const CarriedSampler& sampler : clip.samplers)
        {
            if (sampler.input >= 0)
                summary.seconds =
                    std::max(summary.seconds, LastTime(carried.accessors.at(static_cast<std::size_t>(sampler.input))));
        }
        clips.push_back(std::move(summary));
    }
    return clips;
}

// Text.

std::string NameOrNone(const std::string& name) { return name.empty() ? "(no name)" : PrintableName(name); }

std::string MeshesText(const Inspection& inspection)
{
    if (inspection.meshes.empty())
        return {};
    std::string text = "\nMeshes have:\n";
    for (const auto& [attribute, count] : CountAttributes(inspection))
        text += fmt::format("{:>12}  {}\n", count, attribute);
    const std::size_t shown = std::min(inspection.meshes.size(), kMeshesInText);
    text += fmt::format("\nLargest meshes ({} of {}):\n{:>12}{:>12}{:>12}{:>8}  {}\n", shown, inspection.meshes.size(),
                        "bytes", "vertices", "indices", "uses", "name");
    for (std::size_t i = 0; i < shown; ++i)
    {
        const MeshSummary& mesh = inspection.meshes[i];
        text += fmt::format("{:>12}{:>12}{:>12}{:>8}  {}\n", mesh.bytes, mesh.vertices, mesh.indices, mesh.uses,
                            NameOrNone(mesh.name));
    }
    return text;
}

std::string TexturesText(const Inspection& inspection)
{
    std::string text = inspection.textures.empty() ? "" : "\nTextures:\n";
    for (const TextureSummary& texture : inspection.textures)
    {
        const std::string bytes = texture.bytes ? std::to_string(*texture.bytes) : "missing";
        const std::string size = texture.size ? fmt::format("{} x {}", texture.size->width, texture.size->height) : "";
        text += fmt::format("{:>12}{:>14}  {:<12}{}{}\n", bytes, size, texture.kind, PrintableName(texture.name),
                            texture.isEmbedded ? " (embedded)" : "");
    }
    return text;
}

std::string MaterialsText(const Inspection& inspection)
{
    std::string text = inspection.materials.empty() ? "" : "\nMaterials, and how many surfaces use them:\n";
    for (const MaterialSummary& material : inspection.materials)
        text += fmt::format("{:>12}  {}\n", material.uses, NameOrNone(material.name));
    return text;
}

std::string ClipsText(const Inspection& inspection)
{
    std::string text = inspection.clips.empty() ? "" : "\nClips:\n";
    for (const ClipSummary& clip : inspection.clips)
        text += fmt::format("{:>10.3f} s{:>6} channel{}  {}\n", clip.seconds, clip.channels,
                            clip.channels == 1 ? " " : "s", NameOrNone(clip.name));
    return text;
}

// JSON.

Json NodesAsJson(Importing::SceneContainer& scene)
{
    Json nodes = Json::array();
    for (Importing::Node& node : scene.NodeLibrary)
    {
        nodes.push_back({{"name", node.GetName()},
                         {"animation", node.GetAnimationID()},
                         {"children", node.ChildList},
                         {"surfaces", node.SurfaceList},
                         {"cameras", node.CameraList},
                         {"lights", node.LightList}});
    }
    return nodes;
}

Json SurfacesAsJson(Importing::SceneContainer& scene)
{
    Json surfaces = Json::array();
    for (Importing::Surface& surface : scene.SurfaceLibrary)
    {
        surfaces.push_back({{"name", surface.GetName()},
                            {"geometry", surface.GetGeometryID()},
                            {"material", surface.GetMaterialID()},
                            {"collisionOffset", surface.GetCollisionOffset()}});
    }
    return surfaces;
}

Json MeshesAsJson(const Inspection& inspection)
{
    Json meshes = Json::array();
    for (const MeshSummary& mesh : inspection.meshes)
        meshes.push_back({{"geometry", mesh.geometry},
                          {"name", mesh.name},
                          {"bytes", mesh.bytes},
                          {"vertices", mesh.vertices},
                          {"indices", mesh.indices},
                          {"uses", mesh.uses},
                          {"attributes", mesh.attributes}});
    return meshes;
}

/// Unknown values are null.
Json TexturesAsJson(const Inspection& inspection)
{
    Json textures = Json::array();
    for (const TextureSummary& texture : inspection.textures)
        textures.push_back({{"name", texture.name},
                            {"kind", texture.kind.empty() ? Json() : Json(texture.kind)},
                            {"width", texture.size ? Json(texture.size->width) : Json()},
                            {"height", texture.size ? Json(texture.size->height) : Json()},
                            {"bytes", texture.bytes ? Json(*texture.bytes) : Json()},
                            {"embedded", texture.isEmbedded}});
    return textures;
}

Json MaterialsAsJson(const Inspection& inspection)
{
    Json materials = Json::array();
    for (const MaterialSummary& material : inspection.materials)
        materials.push_back({{"name", material.name}, {"uses", material.uses}});
    return materials;
}

Json ClipsAsJson(const Inspection& inspection)
{
    Json clips = Json::array();
    for (const ClipSummary& clip : inspection.clips)
        clips.push_back({{"name", clip.name}, {"seconds", clip.seconds}, {"channels", clip.channels}});
    return clips;
}

}  // namespace

Inspection InspectModel(Model& model, const std::vector<fs::path>& files, std::uint64_t bytes)
{
    SceneFigures figures = FiguresOf(*model.scene);
    figures.viewer = TakeAppearance(model, {.countsOnly = true}).counts;
    figures.viewer.fileBytes = bytes;
    return {.figures = figures,
            .files = files,
            .meshes = SummarizeMeshes(model),
            .textures = SummarizeTextures(model),
            .materials = SummarizeMaterials(*model.scene),
            .clips = SummarizeClips(model.carried),
            .findings = FindImprovements(model)};
}

std::string InspectionText(const Inspection& inspection)
{
    return StatsTable(inspection.figures.counts) +
           fmt::format("{:<12}{:>12}\n", "draw calls", inspection.figures.viewer.drawCalls) +
           fmt::format("{:<12}{:>12}\n", "files", inspection.files.size()) +
           fmt::format("{:<12}{:>12}\n", "bytes", inspection.figures.viewer.fileBytes) +
           WorldTable({inspection.figures.world}) + MeshesText(inspection) + TexturesText(inspection) +
           MaterialsText(inspection) + ClipsText(inspection) + (inspection.findings.empty() ? "" : "\n") +
           FindingsText(inspection.findings, inspection.findings.size());
}

std::string InspectionJson(const fs::path& file, Importing::SceneContainer& scene, const Inspection& inspection,
                           const std::vector<BudgetResult>& budget, bool withTree)
{
    Json files = Json::array();
    for (const fs::path& path : inspection.files)
        files.push_back(path.string());
    Json json = {{"file", file.string()}, {"files", files}};
    json.update(FiguresAsJson(inspection.figures));
    json.update({{"attributes", Json(CountAttributes(inspection))},
                 {"meshes", MeshesAsJson(inspection)},
                 {"textures", TexturesAsJson(inspection)},
                 {"materials", MaterialsAsJson(inspection)},
                 {"clips", ClipsAsJson(inspection)},
                 {"findings", FindingsAsJson(inspection.findings)},
                 {"surfaces", SurfacesAsJson(scene)}});
    if (!budget.empty())
        json["budget"] = BudgetAsJson(budget);
    if (withTree)
    {
        json["root"] = scene.GetRootNodeIndex();
        json["nodes"] = NodesAsJson(scene);
    }
    return JsonText(json);
}

}  // namespace Sceneprep
