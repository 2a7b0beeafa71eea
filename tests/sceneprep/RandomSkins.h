#pragma once

#include <assimp/mesh.h>
#include <pipeline/SkinnedShape.h>
#include <sceneprep/assimp/Conversions.h>
#include <sceneprep/import/ImportSkins.h>
#include <support/Random.h>

#include <cmath>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace SceneprepTests
{

/// A random hierarchy in which some nodes are animated, and meshes with bones as in a file.
class RandomSkins
{
public:
    explicit RandomSkins(std::uint32_t seed, std::uint32_t mostMeshes = 3) : random_(seed)
    {
        const std::uint32_t nodes = 6 + random_.Below(10);
        for (std::uint32_t n = 0; n < nodes; ++n)
            AddNode(n);
        scene_.SetRootNodeIndex(0);
        const std::uint32_t meshes = 1 + random_.Below(mostMeshes);
        for (std::uint32_t m = 0; m < meshes; ++m)
            AddMesh(m);
    }

    Importing::SceneContainer& Scene() { return scene_; }
    const std::vector<Sceneprep::SkinnedSurface>& Skinned() const { return skinned_; }

    /// Returns the expected shape: vertices follow the nodes of their bones only.
    Shapes ShapesOfFile(int pose)
    {
        const std::vector<D3DXMATRIX> worlds = WorldsAt(scene_, Pipeline::WalkFromRoot(scene_), pose);
        Shapes shapes;
        for (std::size_t m = 0; m < meshes_.size(); ++m)
        {
            std::vector<D3DXMATRIX> bones;
            for (unsigned b = 0; b < meshes_[m]->mNumBones; ++b)
                bones.push_back(Pipeline::Product(Sceneprep::ToMatrix(meshes_[m]->mBones[b]->mOffsetMatrix),
                                                  Importing::At(worlds, boneNodes_[m][b])));
            for (Importing::Vertex& vertex : scene_.GeometryLibrary[m].VertexArray)
                shapes[scene_.GeometryLibrary[m].GetName()].push_back(Carried(vertex, bones));
        }
        return shapes;
    }

private:
    D3DXVECTOR3 Vector(float min, float max)
    {
        const float x = random_.Between(min, max);
        const float y = random_.Between(min, max);
        return {x, y, random_.Between(min, max)};
    }

    Importing::Key Placement()
    {
        const D3DXVECTOR3 turn = Vector(-1, 1);
        const float length = std::sqrt(1 + turn.x * turn.x + turn.y * turn.y + turn.z * turn.z);
        Importing::Key key;
        key.SetRotation({turn.x / length, turn.y / length, turn.z / length, 1 / length});
        key.SetPosition(Vector(-3, 3));
        if (random_.OneIn(3))
            key.SetScale(Vector(0.5F, 2));
        return key;
    }

    void AddNode(std::uint32_t index)
    {
        Importing::Node node;
        node.SetName("N" + std::to_string(index));
        if (!random_.OneIn(3))
            node.SetLocalTransform(Importing::Transform(Placement().GetMatrix()));
        if (random_.OneIn(3))
            node.SetAnimationID(AddAnimation());
        scene_.NodeLibrary.push_back(node);
        if (index > 0)
            scene_.NodeLibrary[random_.Below(index)].ChildList.push_back(static_cast<std::int32_t>(index));
    }

    int AddAnimation()
    {
        std::vector<Importing::Key> keys = {Placement(), Placement()};
        keys[1].SetTime(4800);
        scene_.AnimationLibrary.push_back(keys);
        return static_cast<int>(scene_.AnimationLibrary.size() - 1);
    }

    void AddMesh(std::uint32_t index)
    {
        auto mesh = std::make_unique<aiMesh>();
        std::vector<int>& nodes = boneNodes_.emplace_back();
        // The bones of a file are different nodes. The root is not a bone, so that a mesh can be above them.
        for (std::uint32_t n = 1; n < scene_.NodeLibrary.size(); ++n)
        {
            if (random_.OneIn(2) || nodes.empty())
                nodes.push_back(static_cast<int>(n));
        }
        mesh->mBones = new aiBone*[nodes.size()];
        for (const int node : nodes)
            mesh->mBones[mesh->mNumBones++] = MakeBone(node).release();

        Importing::Geometry geometry;
        geometry.SetName("M" + std::to_string(index));
        for (int v = 0; v < 3; ++v)
        {
            Importing::Vertex& vertex = geometry.VertexArray.emplace_back(Vector(-2, 2));
            vertex.SetNormal(D3DXVECTOR3(0, 0, 1));
            geometry.IndexArray.push_back(static_cast<std::uint32_t>(v));
        }
        Weigh(*mesh, geometry);
        scene_.GeometryLibrary.push_back(geometry);
        Importing::Surface surface;
        surface.SetGeometryID(static_cast<int>(index));
        surface.SetName("M" + std::to_string(index));
        scene_.SurfaceLibrary.push_back(surface);
        const std::uint32_t node = random_.Below(static_cast<std::uint32_t>(scene_.NodeLibrary.size()));
        scene_.NodeLibrary[node].SurfaceList.push_back(static_cast<std::int32_t>(index));
        skinned_.push_back({mesh.get(), static_cast<int>(index), static_cast<int>(node)});
        meshes_.push_back(std::move(mesh));
    }

    std::unique_ptr<aiBone> MakeBone(int node)
    {
        auto bone = std::make_unique<aiBone>();
        bone->mName = "N" + std::to_string(node);
        bone->mOffsetMatrix = Sceneprep::FromMatrix(Placement().GetMatrix());
        return bone;
    }

    /// Each vertex has two bones.
    void Weigh(const aiMesh& mesh, Importing::Geometry& geometry)
    {
        for (Importing::Vertex& vertex : geometry.VertexArray)
        {
            const std::uint32_t first = random_.Below(mesh.mNumBones);
            vertex.AddWeight(first, 0.75F);
            if (mesh.mNumBones > 1)
                vertex.AddWeight((first + 1) % mesh.mNumBones, 0.25F);
            else
                vertex.SetWeight(first, 1, 0);
        }
    }

    Support::Random random_;
    Importing::SceneContainer scene_;
    std::vector<std::unique_ptr<aiMesh>> meshes_;
    std::vector<std::vector<int>> boneNodes_;  // by mesh
    std::vector<Sceneprep::SkinnedSurface> skinned_;
};

}  // namespace SceneprepTests
