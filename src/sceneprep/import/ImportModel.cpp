#include <sceneprep/import/ImportModel.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <sceneprep/assimp/Conversions.h>
#include <sceneprep/assimp/SurfaceExtras.h>
#include <sceneprep/import/CarryClips.h>
#include <sceneprep/import/CarryPrimitive.h>
#include <sceneprep/import/ImportAnimations.h>
#include <sceneprep/import/ImportMaterials.h>
#include <sceneprep/import/ImportMesh.h>
#include <sceneprep/import/ImportObjects.h>
#include <sceneprep/import/ImportSkins.h>

#include <numeric>

namespace Sceneprep
{

using Pipeline::PartCounter;
using Pipeline::PartListener;

namespace
{

using Importing::At;
using Importing::SceneContainer;

/// Converts the nodes and meshes of one file into a scene.
class SceneImporter
{
public:
    SceneImporter(ModelSource& file, Model& model, const PartListener& listener)
        : file_(file), source_(file.Scene()), model_(model), scene_(*model.scene), materials_(source_, model),
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

    void AddMaterialNotes() { materials_.AddNotes(model_.notes); }

    /// Must be called after the animations of nodes were imported.
    void ImportSkinsOfMeshes()
    {
        model_.notes.Append(ImportSkins(skinned_, scene_));
        model_.notes.AddLoss("weights", "skin weights that are not finite or refer to a missing vertex are dropped",
                             droppedWeights_);
    }

private:
    int ImportNode(const aiNode& source, int parent)
    {
        Importing::Node node;
        node.SetName(source.mName.C_Str());
        node.SetLocalTransform(Importing::Transform(ToMatrix(source.mTransformation)));
        for (unsigned m = 0; m < source.mNumMeshes; ++m)
        {
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
            FillGeometry(*source_.mMeshes[mesh], first);
            file_.Release(mesh);
            counter_.Add(1);
        }
        return first;
    }

    void FillGeometry(const aiMesh& source, int index)
    {
        ImportedMesh imported = ImportMesh(source, At(scene_.GeometryLibrary, index));
        droppedWeights_ += imported.droppedWeights;
        Pipeline::SceneSupplement& supplement = model_.supplement;
        const auto size = scene_.GeometryLibrary.size();
        supplement.layouts.resize(size);
        supplement.layouts.back() = std::move(imported.layout);
        supplement.pinnedMeshes.resize(size, false);
        supplement.meshKeys.resize(size, -1);
        if (!IsCarriedWhole(source))
            return;
        supplement.pinnedMeshes.back() = true;
        supplement.meshKeys.back() = static_cast<int>(model_.carried.meshOf.size());
        Json object = Json::object();
        CarriedMesh& carried = model_.carried.meshOf.emplace_back();
        carried.primitive = CarryPrimitive(source, object);
        carried.mesh = static_cast<int>(model_.carried.meshes.size());
        model_.carried.meshes.push_back(std::move(object));
    }

    ModelSource& file_;
    const aiScene& source_;
    Model& model_;
    SceneContainer& scene_;
    MaterialImporter materials_;
    std::vector<int> geometryOf_;  // by mesh of the file: its geometry, or -1
    std::vector<SkinnedSurface> skinned_;
    std::size_t droppedWeights_ = 0;
    PartCounter counter_;
};

/// Nodes have their index as key, so that clips can refer to them.
void CarryNodes(Model& model)
{
    model.carried.nodes.resize(model.scene->NodeLibrary.size());
    model.supplement.nodeKeys.resize(model.scene->NodeLibrary.size());
    std::iota(model.supplement.nodeKeys.begin(), model.supplement.nodeKeys.end(), 0);
}

std::size_t CountMorphChannels(const aiScene& source)
{
    std::size_t count = 0;
    for (unsigned a = 0; a < source.mNumAnimations; ++a)
        count += source.mAnimations[a]->mNumMeshChannels + source.mAnimations[a]->mNumMorphMeshChannels;
    return count;
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
    scene.SetName(model.file.stem().string());
    SceneImporter importedScene(file, model, listener);
    const NodeNames nodes = importedScene.ImportNodes();
    model.notes.Append(ImportCameras(source, nodes, scene));
    ImportLights(source, nodes, scene);
    model.textures.embedded = ImportEmbeddedTextures(source);
    importedScene.AddMaterialNotes();
    CarryNodes(model);
    model.notes.Append(ImportAnimations(source, nodes, scene));
    model.notes.AddLoss("animation-channels", "animation channels of unknown nodes are dropped",
                        CarryClips(source, nodes, model.carried));
    model.notes.AddLoss("animation-channels", "animation channels of morph targets are dropped",
                        CountMorphChannels(source));
    importedScene.ImportSkinsOfMeshes();
}

}  // namespace Sceneprep
