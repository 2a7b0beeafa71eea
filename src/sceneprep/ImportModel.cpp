#include <sceneprep/ImportModel.h>

#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <sceneprep/Conversions.h>
#include <sceneprep/Error.h>
#include <sceneprep/ImportAnimations.h>
#include <sceneprep/ImportMaterials.h>
#include <sceneprep/ImportObjects.h>
#include <sceneprep/ImportSkins.h>
#include <sceneprep/ModelProgress.h>
#include <sceneprep/SurfaceExtras.h>
#include <sceneprep/WorkState.h>
#include <assimp/Importer.hpp>

#include <new>

namespace Sceneprep
{

namespace
{

using Importing::At;
using Importing::Geometry;
using Importing::SceneContainer;

const aiScene& Read(const std::filesystem::path& file, Assimp::Importer& importer, Progress& progress)
{
    CheckReadable(file);
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    importer.SetProgressHandler(new ModelProgress(progress));  // the importer owns it
    // Sorting splits meshes that mix triangles with points and lines.
    const aiScene* scene = importer.ReadFile(file.string(), aiProcess_Triangulate | aiProcess_SortByPType);
    if (scene == nullptr && WorkState::RanOutOfMemory())
        throw std::bad_alloc();
    if (scene == nullptr || scene->mRootNode == nullptr)
        throw ToolError(fmt::format("cannot read {}: {}; repair the file or convert it to another format",
                                    file.string(), OneLine(importer.GetErrorString())));
    return *scene;
}

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

/// @return how many weights are left out.
std::size_t FillGeometry(const aiMesh& mesh, Geometry& geometry)
{
    geometry.SetName(mesh.mName.C_Str());
    FillVertices(mesh, geometry);
    const std::size_t leftOut = ImportWeights(mesh, geometry);
    FillTriangles(mesh, geometry);
    if (!mesh.HasNormals())
        geometry.ComputeNormals();  // splits vertices, which takes weights along
    return leftOut;
}

/// Carries one file's nodes and meshes over into a scene.
class SceneImporter
{
public:
    SceneImporter(const aiScene& source, SceneContainer& scene, ImportedModel& model)
        : source_(source), scene_(scene), materials_(source, scene, model.textures), geometryOf_(source.mNumMeshes, -1)
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

    /// To be called when nodes have their animations.
    std::vector<std::string> ImportSkinsOfMeshes()
    {
        std::vector<std::string> notes = ImportSkins(skinned_, scene_);
        if (weightsLeftOut_ > 0)
            notes.push_back(
                fmt::format("weights that are no numbers or name no vertex are left out ({})", weightsLeftOut_));
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
            weightsLeftOut_ += FillGeometry(*source_.mMeshes[mesh], At(scene_.GeometryLibrary, first));
        }
        return first;
    }

    const aiScene& source_;
    SceneContainer& scene_;
    MaterialImporter materials_;
    std::vector<int> geometryOf_;  // by mesh of the file: the geometry made of it, or -1
    std::vector<SkinnedSurface> skinned_;
    std::size_t weightsLeftOut_ = 0;
};

std::vector<std::string> NotesOnMeshes(const aiScene& source)
{
    std::size_t pointsAndLines = 0;
    std::size_t colored = 0;
    for (unsigned m = 0; m < source.mNumMeshes; ++m)
    {
        const aiMesh& mesh = *source.mMeshes[m];
        if (!HoldsTriangles(mesh))
            pointsAndLines += mesh.mNumFaces;
        colored += mesh.HasVertexColors(0) ? 1 : 0;
    }

    std::vector<std::string> notes;
    if (pointsAndLines > 0)
        notes.push_back(fmt::format("only triangles are kept: points and lines are left out ({})", pointsAndLines));
    if (colored > 0)
        notes.push_back(fmt::format("vertex colours are left out (meshes with colours: {})", colored));
    return notes;
}

}  // namespace

void CheckReadable(const std::filesystem::path& file)
{
    if (!std::filesystem::exists(file))
        throw ToolError(fmt::format("cannot read {}: there is no such file; check the path", file.string()));
    if (!std::filesystem::is_regular_file(file))
        throw ToolError(fmt::format("cannot read {}: it is not a file; name a model file", file.string()));
    if (!Assimp::Importer().IsExtensionSupported(file.extension().string()))
        throw ToolError(fmt::format("cannot read {}: '{}' is no known kind of model; 'sceneprep formats' lists them",
                                    file.string(), file.extension().string()));
}

ImportedModel ImportModel(const std::filesystem::path& file, SceneContainer& scene, Progress& progress)
{
    Assimp::Importer importer;
    const aiScene& source = Read(file, importer, progress);

    ImportedModel model;
    scene.SetName(file.stem().string());
    SceneImporter importedScene(source, scene, model);
    const NodeNames nodes = importedScene.ImportNodes();
    ImportCameras(source, nodes, scene);
    ImportLights(source, nodes, scene);
    model.textures.embedded = ImportEmbeddedTextures(source);
    model.notes = NotesOnMeshes(source);
    for (std::string& note : importedScene.NotesOnMaterials())
        model.notes.push_back(std::move(note));
    for (std::string& note : ImportAnimations(source, nodes, scene))
        model.notes.push_back(std::move(note));
    for (std::string& note : importedScene.ImportSkinsOfMeshes())
        model.notes.push_back(std::move(note));
    return model;
}

}  // namespace Sceneprep
