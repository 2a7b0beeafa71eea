#include <sceneprep/compare/Appearance.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/HasNormals.h>
#include <pipeline/scene/Hierarchy.h>
#include <sceneprep/compare/CanonicalJson.h>
#include <sceneprep/compare/ContentDigest.h>
#include <sceneprep/compare/MaterialKeys.h>
#include <sceneprep/export/gltf/CarriedKeys.h>
#include <sceneprep/export/gltf/Objects.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>

namespace Sceneprep
{

namespace
{

using Importing::At;
using Importing::Geometry;
using Importing::SceneContainer;
using Importing::Surface;

PieceKind KindOfMesh(const Geometry& geometry)
{
    const std::uint64_t corners = geometry.GetPolySize();
    return corners == 1 ? PieceKind::Point : corners == 2 ? PieceKind::Line : PieceKind::Triangle;
}

bool ShowsPieces(const Geometry& geometry)
{
    return geometry.GetPolySize() >= 1 && geometry.GetPolySize() <= 3 &&
           geometry.IndexArray.size() >= geometry.GetPolySize();
}

Pipeline::VertexLayout LayoutIn(const Model& model, int geometry)
{
    return Pipeline::EntryOr(model.supplement.layouts, static_cast<std::size_t>(geometry), Pipeline::VertexLayout());
}

/// Returns what describes the morph targets of a mesh, which are written as they came; empty without targets.
std::string MorphKey(const Model& model, int geometry)
{
    const CarriedMesh* mesh = Gltf::CarriedMeshOf(model, geometry);
    if (mesh == nullptr || !mesh->primitive)
        return {};
    std::string key;
    for (const auto& target : mesh->primitive->targets)
    {
        key += "|target";
        for (const auto& [name, values] : target)
            key += fmt::format(" {} {}", name, ContentDigest(values.bytes.data(), values.bytes.size()));
    }
    return key;
}

/// Takes the appearance of one model.
class AppearanceTaker
{
public:
    AppearanceTaker(const Model& model, const AppearanceOptions& options)
        : model_(model), scene_(*model.scene), options_(options), walk_(Pipeline::WalkFromRoot(scene_)),
          matrices_(Pipeline::WorldMatricesOf(scene_, walk_)), materials_(model, options.imageFolders),
          surfacePieces_(options.ignored), meshes_(scene_.GeometryLibrary.size())
    {}

    Appearance Take()
    {
        Reserve();
        for (const int node : walk_.order)
        {
            TakeSurfaces(node);
            TakeObjects(node);
            result_.counts.nodes += IsOwnNode(node) ? 1 : 0;
        }
        result_.counts.materials = usedMaterials_.size();
        result_.imageFiles = materials_.ImageFiles();
        if (!options_.countsOnly)
            result_.clips = ListClips(model_);
        FindBounds();
        return std::move(result_);
    }

private:
    /// What is known about a geometry after its first use.
    struct Mesh
    {
        bool isKnown = false;
        std::size_t texCoordSets = 0;
        std::string key;  ///< skin and morph targets
    };

    void Reserve()
    {
        if (options_.countsOnly)
            return;
        std::size_t count = 0;
        for (const int node : walk_.order)
        {
            for (const std::int32_t surface : At(scene_.NodeLibrary, node).SurfaceList)
            {
                const int geometry = At(scene_.SurfaceLibrary, surface).GetGeometryID();
                if (geometry >= 0 && ShowsPieces(At(scene_.GeometryLibrary, geometry)))
                    count += At(scene_.GeometryLibrary, geometry).IndexArray.size() /
                             At(scene_.GeometryLibrary, geometry).GetPolySize();
            }
        }
        result_.pieces.reserve(count + scene_.CameraLibrary.size() + scene_.LightLibrary.size());
    }

    /// Instances of a mesh, and a root that was added, are no nodes of a glTF file.
    bool IsOwnNode(int node) const
    {
        return options_.isProcessed || model_.supplement.nodeKeys.empty() ||
               Pipeline::EntryOr(model_.supplement.nodeKeys, static_cast<std::size_t>(node), -1) >= 0;
    }

    void TakeSurfaces(int node)
    {
        for (const std::int32_t index : At(scene_.NodeLibrary, node).SurfaceList)
        {
            Surface& surface = At(scene_.SurfaceLibrary, index);
            const int geometry = surface.GetGeometryID();
            if (geometry < 0 || !ShowsPieces(At(scene_.GeometryLibrary, geometry)))
                continue;
            Importing::CheckIndices(At(scene_.GeometryLibrary, geometry).IndexArray,
                                    At(scene_.GeometryLibrary, geometry).VertexArray.size());
            TakeSurface(node, surface, geometry);
        }
    }

    void TakeSurface(int node, Surface& surface, int index)
    {
        Geometry& geometry = At(scene_.GeometryLibrary, index);
        const Mesh& mesh = MeshOf(index, geometry);
        usedMaterials_.insert(materials_.FindNumber(surface, mesh.texCoordSets));
        CountDrawCall(node, index);
        if (options_.countsOnly)
            return;
        const MaterialKey& material = materials_.Find(surface, mesh.texCoordSets);
        const std::uint32_t look = LookFor(fmt::format("{}|{}", static_cast<const void*>(&material), mesh.key),
                                           KindOfMesh(geometry), material.name, material.text + mesh.key);
        BeginRun(node);
        const PieceCounts counts =
            surfacePieces_.Add(geometry, LayoutIn(model_, index), At(matrices_, node), look, result_.pieces);
        result_.looks[look].area += counts.area;
        result_.broken += counts.broken;
        result_.noise = std::max(result_.noise, counts.noise);
    }

    const Mesh& MeshOf(int index, Geometry& geometry)
    {
        Mesh& mesh = At(meshes_, index);
        if (mesh.isKnown)
            return mesh;
        mesh.isKnown = true;
        std::uint64_t sets = 0;
        for (const Importing::Vertex& vertex : geometry.VertexArray)
            sets = std::max(sets, vertex.Vertex::GetTexCoordCount());
        const Pipeline::VertexLayout layout = LayoutIn(model_, index);
        mesh.texCoordSets = layout.texCoordSets < 0 ? sets : static_cast<std::size_t>(layout.texCoordSets);
        mesh.key = MorphKey(model_, index);
        if (!geometry.JointArray.empty())
            mesh.key += "|skinned";
        result_.counts.gpuBytes += BytesOf(geometry, mesh.texCoordSets, layout);
        return mesh;
    }

    static std::uintmax_t BytesOf(Geometry& geometry, std::size_t texCoordSets, const Pipeline::VertexLayout& layout)
    {
        constexpr std::size_t kMostShort = 65535;
        std::uintmax_t vertex = 12 + (Pipeline::HasNormals(geometry) ? 12 : 0) + 8 * texCoordSets;
        for (const Pipeline::VertexAttribute& attribute : layout.attributes)
            vertex += 4 * static_cast<std::uintmax_t>(attribute.components);
        if (!geometry.JointArray.empty())
            vertex += 24;  // four joints and weights
        const std::uintmax_t index = geometry.VertexArray.size() <= kMostShort ? 2 : 4;
        return vertex * geometry.VertexArray.size() + index * geometry.IndexArray.size();
    }

    /// The instances of one node are one draw call.
    void CountDrawCall(int node, int geometry)
    {
        const int parent = At(walk_.parent, node);
        const bool isInstance = !IsOwnNode(node) && parent >= 0;
        if (!isInstance || instanced_.insert({parent, geometry}).second)
            ++result_.counts.drawCalls;
    }

    /// @param identity  shorter than the key, and different for different looks of this model
    std::uint32_t LookFor(const std::string& identity, PieceKind kind, const std::string& name, const std::string& key)
    {
        const auto [found, isNew] = lookOf_.emplace(fmt::format("{}|{}", static_cast<int>(kind), identity),
                                                    static_cast<std::uint32_t>(result_.looks.size()));
        if (isNew)
            result_.looks.push_back({.kind = kind, .name = name, .key = key});
        return found->second;
    }

    std::uint32_t LookForObject(PieceKind kind, const Json& object)
    {
        const std::string name = object.value("name", std::string());
        const std::string key = CanonicalText(object);
        return LookFor(name + '|' + key, kind, name, key);
    }

    void BeginRun(int node)
    {
        const auto first = static_cast<std::uint32_t>(result_.pieces.size());
        if (!result_.runs.empty() && result_.runs.back().first == first)
            result_.runs.pop_back();
        result_.runs.push_back({first, At(scene_.NodeLibrary, node).GetName()});
    }

    void TakeObjects(int node)
    {
        if (options_.countsOnly)
            return;
        for (const std::int32_t camera : At(scene_.NodeLibrary, node).CameraList)
            TakeCamera(node, camera);
        for (const std::int32_t light : At(scene_.NodeLibrary, node).LightList)
            TakeLight(node, light);
    }

    /// Returns what the glTF of the input held of a camera or light; none for others.
    static std::optional<Json> CarriedOf(const std::vector<CarriedObject>& uses, int index,
                                         const std::vector<Json>& objects)
    {
        if (!Importing::IsValidIndex(index, uses.size()) ||
            !Importing::IsValidIndex(At(uses, index).object, objects.size()))
            return std::nullopt;
        return At(objects, At(uses, index).object);
    }

    void TakeCamera(int node, int index)
    {
        Importing::Camera& camera = At(scene_.CameraLibrary, index);
        const std::optional<Json> carried = CarriedOf(model_.carried.cameraOf, index, model_.carried.cameras);
        const Json object = carried ? *carried : Gltf::ConvertCamera(camera);
        const std::uint32_t look = LookForObject(PieceKind::Camera, object);
        AddObject(node, camera.GetOffsetMatrix(), look, true, true);
    }

    void TakeLight(int node, int index)
    {
        Importing::Light& light = At(scene_.LightLibrary, index);
        std::optional<Json> object = CarriedOf(model_.carried.lightOf, index, model_.carried.lights);
        if (!object)
            object = Gltf::ConvertLight(light);
        if (!object)
            return;  // not written
        const std::uint32_t look = LookForObject(PieceKind::Light, *object);
        AddObject(node, light.GetOffsetMatrix(), look, object->value("type", std::string()) != "point", false);
    }

    void AddObject(int node, const Importing::Transform& offset, std::uint32_t look, bool hasDirection, bool hasUp)
    {
        const D3DXMATRIX world = Pipeline::Product(Gltf::PlacementOf(offset), At(matrices_, node));
        Piece piece{.center = {world._41, world._42, world._43}, .look = look};
        if (hasDirection)
            piece.normals += static_cast<float>(ProjectedRow(world, 2));
        if (hasUp)
            piece.normals += static_cast<float>(2 * ProjectedRow(world, 1));
        if (!std::isfinite(piece.center[0] + piece.center[1] + piece.center[2]))
            return;
        BeginRun(node);
        result_.pieces.push_back(piece);
    }

    static double ProjectedRow(const D3DXMATRIX& matrix, unsigned row)
    {
        const double length = std::hypot(matrix(row, 0), matrix(row, 1), matrix(row, 2));
        if (!(length > 0))
            return std::numeric_limits<double>::quiet_NaN();
        return ProjectedNormal({matrix(row, 0) / length, matrix(row, 1) / length, matrix(row, 2) / length});
    }

    void FindBounds()
    {
        if (result_.pieces.empty())
            return;
        result_.min.fill(std::numeric_limits<double>::max());
        result_.max.fill(std::numeric_limits<double>::lowest());
        for (const Piece& piece : result_.pieces)
        {
            for (std::size_t c = 0; c < 3; ++c)
            {
                result_.min[c] = std::min<double>(result_.min[c], piece.center[c] - piece.size);
                result_.max[c] = std::max<double>(result_.max[c], piece.center[c] + piece.size);
            }
        }
    }

    const Model& model_;
    SceneContainer& scene_;
    const AppearanceOptions& options_;
    Pipeline::NodeWalk walk_;
    std::vector<D3DXMATRIX> matrices_;
    MaterialKeys materials_;
    SurfacePieces surfacePieces_;
    std::vector<Mesh> meshes_;
    std::set<int> usedMaterials_;
    std::set<std::pair<int, int>> instanced_;  // parent and geometry
    std::unordered_map<std::string, std::uint32_t> lookOf_;
    Appearance result_;
};

}  // namespace

Appearance TakeAppearance(const Model& model, const AppearanceOptions& options)
{
    return AppearanceTaker(model, options).Take();
}

}  // namespace Sceneprep
