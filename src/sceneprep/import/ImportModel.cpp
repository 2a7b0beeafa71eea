#include <sceneprep/import/ImportModel.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <sceneprep/assimp/Conversions.h>
#include <sceneprep/assimp/SurfaceExtras.h>
#include <sceneprep/import/ImportAnimations.h>
#include <sceneprep/import/ImportMaterials.h>
#include <sceneprep/import/ImportObjects.h>
#include <sceneprep/import/ImportSkins.h>

namespace Sceneprep
{

using Pipeline::PartCounter;
using Pipeline::PartListener;

namespace
{

using Importing::At;
using Importing::Geometry;
using Importing::SceneContainer;

bool HoldsTriangles(const aiMesh& mesh) { return (mesh.mPrimitiveTypes & aiPrimitiveType_TRIANGLE) != 0; }

void FillVertices(const aiMesh& mesh, Geometry& geometry)
{
    geometry.VertexArray.reserve(mesh.mNumVertices);
    for (unsigned v = 0; v < mesh.mNumVertices; ++v)
    {
        Importing::Vertex& vertex = geometry.VertexArray.emplace_back(ToVector(mesh.mVertices[v]));
        if (mesh.HasNormals())
            vertex.SetNormal(ToVector(mesh.mNormals[v]));
        for (unsigned set = 0; set < mesh.GetNumUVChannels(); ++set)
        {
            const aiVector3D& uv = mesh.mTextureCoords[set][v];
            vertex.SetTexCoord({uv.x, uv.y}, set);
        }
    }
}

void FillTriangles(const aiMesh& mesh, Geometry& geometry)
{
    geometry.IndexArray.reserve(3 * static_cast<std::size_t>(mesh.mNumFaces));
    for (unsigned f = 0; f < mesh.mNumFaces; ++f)
    {
        const aiFace& face = mesh.mFaces[f];
        if (face.mNumIndices == 3)
            geometry.IndexArray.insert(geometry.IndexArray.end(), face.mIndices, face.mIndices + 3);
    }
}

/// Returns how many weights are dropped.
std::size_t FillGeometry(const aiMesh& mesh, Geometry& geometry)
{
    geometry.SetName(mesh.mName.C_Str());
    FillVertices(mesh, geometry);
    const std::size_t dropped = ImportWeights(mesh, geometry);
    FillTriangles(mesh, geometry);
    if (!mesh.HasNormals())
        geometry.ComputeNormals();  // copies weights to the vertices that it splits
    return dropped;
}

/// Converts the nodes and meshes of one file into a scene.
class SceneImporter
{
public:
    SceneImporter(ModelSource& file, Model& model, const PartListener& listener)
        : file_(file), source_(file.Scene()), scene_(*model.scene), materials_(source_, scene_, model.textures),
          geometryOf_(source_.mNumMeshes, -1), counter_(listener, source_.mNumMeshes)
    {}

    NodeNames ImportNodes()
    {
        struct Pending
        {
            const aiNode* node;
            int parent;
        };
        NodeNames names;
        std::vector<Pending> pending = {{source_.mRootNode, -1}};
        while (!pending.empty())
        {
            const auto [node, parent] = pending.back();
            pending.pop_back();
            const int index = ImportNode(*node, parent);
            names.emplace(node->mName.C_Str(), index);
            for (unsigned c = node->mNumChildren; c > 0; --c)
                pending.push_back({node->mChildren[c - 1], index});
        }
        return names;
    }

    std::vector<std::string> NotesOnMaterials() const { return materials_.Notes(); }

    /// Must be called after the animations of nodes were imported.
    std::vector<std::string> ImportSkinsOfMeshes()
    {
        std::vector<std::string> notes = ImportSkins(skinned_, scene_);
        if (droppedWeights_ > 0)
            notes.push_back(fmt::format(
                "skin weights that are not finite or refer to a missing vertex are dropped ({})", droppedWeights_));
        return notes;
    }

private:
    int ImportNode(const aiNode& source, int parent)
    {
        Importing::Node node;
        node.SetName(source.mName.C_Str());
        node.SetLocalTransform(Importing::Transform(ToMatrix(source.mTransformation)));
        for (unsigned m = 0; m < source.mNumMeshes; ++m)
        {
            if (HoldsTriangles(*source_.mMeshes[source.mMeshes[m]]))
                node.SurfaceList.push_back(ImportSurface(source, source.mMeshes[m]));
        }
        scene_.NodeLibrary.push_back(std::move(node));

        const int index = static_cast<int>(scene_.NodeLibrary.size() - 1);
        if (parent >= 0)
            At(scene_.NodeLibrary, parent).ChildList.push_back(index);
        else
            scene_.SetRootNodeIndex(index);
        return index;
    }

    int ImportSurface(const aiNode& node, unsigned mesh)
    {
        const aiMesh& source = *source_.mMeshes[mesh];
        Importing::Surface surface;
        surface.SetName(source.mName.C_Str());
        surface.SetGeometryID(GeometryFor(mesh));
        materials_.Apply(source.mMaterialIndex, surface);
        ApplyExtras(node, surface);
        const int index = scene_.AddSurfaceToLibrary(std::move(surface), false);
        if (source.HasBones())
            skinned_.push_back({&source, index, static_cast<int>(scene_.NodeLibrary.size())});
        return index;
    }

    int GeometryFor(unsigned mesh)
    {
        int& first = geometryOf_[mesh];
        if (first < 0)
        {
            first = scene_.CreateNewGeometryInLibrary();
            droppedWeights_ += FillGeometry(*source_.mMeshes[mesh], At(scene_.GeometryLibrary, first));
            file_.Release(mesh);
            counter_.Add(1);
        }
        return first;
    }

    ModelSource& file_;
    const aiScene& source_;
    SceneContainer& scene_;
    MaterialImporter materials_;
    std::vector<int> geometryOf_;  // by mesh of the file: its geometry, or -1
    std::vector<SkinnedSurface> skinned_;
    std::size_t droppedWeights_ = 0;
    PartCounter counter_;
};

std::vector<std::string> NotesOnMeshes(const aiScene& source)
{
    std::size_t pointsAndLines = 0;
    std::size_t colored = 0;
    std::size_t morphed = 0;
    for (unsigned m = 0; m < source.mNumMeshes; ++m)
    {
        const aiMesh& mesh = *source.mMeshes[m];
        if (!HoldsTriangles(mesh))
            pointsAndLines += mesh.mNumFaces;
        colored += mesh.HasVertexColors(0) ? 1 : 0;
        morphed += mesh.mNumAnimMeshes > 0 ? 1 : 0;
    }

    std::vector<std::string> notes;
    if (pointsAndLines > 0)
        notes.push_back(fmt::format("points and lines are dropped ({})", pointsAndLines));
    if (colored > 0)
        notes.push_back(fmt::format("vertex colours are dropped (meshes: {})", colored));
    if (morphed > 0)
        notes.push_back(fmt::format("morph targets are dropped (meshes: {})", morphed));
    return notes;
}

void AddNotes(std::vector<std::string> texts, Notes& notes)
{
    for (std::string& text : texts)
        notes.Add(std::move(text));
}

}  // namespace

void ImportModel(const std::filesystem::path& file, Model& model, Progress& progress)
{
    ImportModel(ModelSource(file, progress), model);
}

void ImportModel(ModelSource file, Model& model, const PartListener& listener)
{
    const aiScene& source = file.Scene();
    SceneContainer& scene = *model.scene;
    model.file = file.File();
    AddNotes(NotesOnMeshes(source), model.notes);  // before meshes are released
    scene.SetName(model.file.stem().string());
    SceneImporter importedScene(file, model, listener);
    const NodeNames nodes = importedScene.ImportNodes();
    AddNotes(ImportCameras(source, nodes, scene), model.notes);
    ImportLights(source, nodes, scene);
    model.textures.embedded = ImportEmbeddedTextures(source);
    AddNotes(importedScene.NotesOnMaterials(), model.notes);
    AddNotes(ImportAnimations(source, nodes, scene), model.notes);
    AddNotes(importedScene.ImportSkinsOfMeshes(), model.notes);
}

}  // namespace Sceneprep
