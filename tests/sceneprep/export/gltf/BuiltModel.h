#pragma once

#include <sceneprep/Models.h>
#include <sceneprep/export/gltf/BuildModel.h>
#include <sceneprep/export/gltf/ReadBack.h>
#include <support/Meshes.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace SceneprepTests
{

/// A model that tests fill and build: a root node, and a triangle as the first geometry.
class BuiltModel : public testing::Test
{
protected:
    BuiltModel()
    {
        AddNode("Root");
        scene_.SetRootNodeIndex(0);
        scene_.GeometryLibrary.push_back(Support::Triangle({0, 0, 1}));
    }

    int AddNode(const std::string& name, int parent = -1)
    {
        Importing::Node node;
        node.SetName(name);
        scene_.NodeLibrary.push_back(node);
        const int index = static_cast<int>(scene_.NodeLibrary.size() - 1);
        if (parent >= 0)
            NodeAt(parent).ChildList.push_back(index);
        return index;
    }

    /// Adds a node that came from glTF.
    int AddCarried(const std::string& object, int parent)
    {
        Sceneprep::CarriedNode carried;
        carried.object = Sceneprep::Json::parse(object);
        D3DXMatrixIdentity(&carried.local);
        const int node = AddNode(carried.object.value("name", std::string()), parent);
        model_.supplement.nodeKeys.resize(scene_.NodeLibrary.size(), -1);
        model_.supplement.nodeKeys.back() = static_cast<int>(model_.carried.nodes.size());
        model_.carried.nodes.push_back(carried);
        return node;
    }

    int AddSurface(int node, int geometry = 0, const std::string& name = "")
    {
        Importing::Surface surface;
        surface.SetGeometryID(geometry);
        surface.SetName(name);
        scene_.SurfaceLibrary.push_back(surface);
        const int index = static_cast<int>(scene_.SurfaceLibrary.size() - 1);
        NodeAt(node).SurfaceList.push_back(index);
        return index;
    }

    Importing::Surface& SurfaceAt(int surface) { return scene_.SurfaceLibrary[static_cast<std::size_t>(surface)]; }

    Importing::Node& NodeAt(int node) { return scene_.NodeLibrary[static_cast<std::size_t>(node)]; }

    void SetLocal(int node, const D3DXMATRIX& matrix) { NodeAt(node).SetLocalTransform(Importing::Transform(matrix)); }

    const Sceneprep::Gltf::Document& Build()
    {
        built_ = BuildModel(model_, options_, written_.buffers, written_.document);
        return written_.document;
    }

    std::vector<std::string> Notes() const { return TextsOf(built_.notes); }

    Sceneprep::Model model_;
    Importing::SceneContainer& scene_ = *model_.scene;
    Sceneprep::Gltf::WriteOptions options_;
    WrittenDocument written_;
    Sceneprep::Gltf::BuiltFiles built_;
};

}  // namespace SceneprepTests
