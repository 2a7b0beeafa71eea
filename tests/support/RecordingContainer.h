#pragma once

#include <importing/plugin/SceneContainer.h>

#include <algorithm>
#include <ios>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Support
{

/// A derived container that overrides nothing, so that operations use their literal forms.
class DerivedContainer : public Importing::SceneContainer
{
public:
    DerivedContainer() = default;
    explicit DerivedContainer(const SceneContainer& scene) : SceneContainer(scene) {}
};

/// A derived container that overrides every operation: it records the call and then calls the base class.
///
/// A call is recorded as "MoveSurfaces(0,2)", with indices, numbers, flags and texts, but without matrices and records.
class RecordingContainer : public Importing::SceneContainer
{
public:
    RecordingContainer() = default;
    explicit RecordingContainer(const SceneContainer& scene) : SceneContainer(scene) {}

    /// Returns the calls of these operations in order, separated by blanks.
    std::string Calls(const std::vector<std::string>& operations) const
    {
        std::string text;
        for (const std::string& call : calls_)
            if (std::find(operations.begin(), operations.end(), call.substr(0, call.find('('))) != operations.end())
                text.append(text.empty() ? "" : " ").append(call);
        return text;
    }

    void Forget() { calls_.clear(); }

    void SetStatus(int status) override
    {
        Record("SetStatus", status);
        SceneContainer::SetStatus(status);
    }
    int GetStatus() override
    {
        Record("GetStatus");
        return SceneContainer::GetStatus();
    }
    void SetName(const std::string& name) override
    {
        Record("SetName", name);
        SceneContainer::SetName(name);
    }
    std::string GetName() override
    {
        Record("GetName");
        return SceneContainer::GetName();
    }
    void Clear() override
    {
        Record("Clear");
        SceneContainer::Clear();
    }
    void SetRootNodeIndex(int node) override
    {
        Record("SetRootNodeIndex", node);
        SceneContainer::SetRootNodeIndex(node);
    }
    int GetRootNodeIndex() const override
    {
        Record("GetRootNodeIndex");
        return SceneContainer::GetRootNodeIndex();
    }

    int MakeNodeNamesUnambiguous() override
    {
        Record("MakeNodeNamesUnambiguous");
        return SceneContainer::MakeNodeNamesUnambiguous();
    }
    int MakeGeometryNamesUnambiguous() override
    {
        Record("MakeGeometryNamesUnambiguous");
        return SceneContainer::MakeGeometryNamesUnambiguous();
    }
    int MakeMaterialNamesUnambiguous() override
    {
        Record("MakeMaterialNamesUnambiguous");
        return SceneContainer::MakeMaterialNamesUnambiguous();
    }
    int MakeSurfaceNamesUnambiguous() override
    {
        Record("MakeSurfaceNamesUnambiguous");
        return SceneContainer::MakeSurfaceNamesUnambiguous();
    }
    int CreateSurfaceNames() override
    {
        Record("CreateSurfaceNames");
        return SceneContainer::CreateSurfaceNames();
    }

    int FindNodeByName(const std::string& name) const override
    {
        Record("FindNodeByName", name);
        return SceneContainer::FindNodeByName(name);
    }
    int FindParentNode(int index) const override
    {
        Record("FindParentNode", index);
        return SceneContainer::FindParentNode(index);
    }
    D3DXMATRIX CalculateGlobalTM(int index) override
    {
        Record("CalculateGlobalTM", index);
        return SceneContainer::CalculateGlobalTM(index);
    }

    int MoveSurfaces(int toNode, int fromNode, const D3DXMATRIX& matrix) override
    {
        Record("MoveSurfaces", toNode, fromNode);
        return SceneContainer::MoveSurfaces(toNode, fromNode, matrix);
    }
    int MoveCameras(int toNode, int fromNode, const D3DXMATRIX& matrix) override
    {
        Record("MoveCameras", toNode, fromNode);
        return SceneContainer::MoveCameras(toNode, fromNode, matrix);
    }
    int MoveLights(int toNode, int fromNode, const D3DXMATRIX& matrix) override
    {
        Record("MoveLights", toNode, fromNode);
        return SceneContainer::MoveLights(toNode, fromNode, matrix);
    }

    int FlatHierarchy(int targetNode, const D3DXMATRIX& targetMatrix, int startNode, const D3DXMATRIX& startMatrix,
                      int minSurfaces, int maxVertices, bool ignoreAnimation) override
    {
        Record("FlatHierarchy", targetNode, startNode, minSurfaces, maxVertices, ignoreAnimation);
        return SceneContainer::FlatHierarchy(targetNode, targetMatrix, startNode, startMatrix, minSurfaces, maxVertices,
                                             ignoreAnimation);
    }
    int FlatHierarchyInternal(int targetNode, const D3DXMATRIX& targetMatrix, int node, const D3DXMATRIX& nodeMatrix,
                              std::vector<std::uint32_t>& erased, bool ignoreAnimation) override
    {
        Record("FlatHierarchyInternal", targetNode, node, ignoreAnimation);
        return SceneContainer::FlatHierarchyInternal(targetNode, targetMatrix, node, nodeMatrix, erased,
                                                     ignoreAnimation);
    }
    int MergeSurfaces(int node, int minSurfaces, int maxVertices) override
    {
        Record("MergeSurfaces", node, minSurfaces, maxVertices);
        return SceneContainer::MergeSurfaces(node, minSurfaces, maxVertices);
    }

    void EraseNodeFromLibrary(int index) override
    {
        Record("EraseNodeFromLibrary", index);
        SceneContainer::EraseNodeFromLibrary(index);
    }
    int AddGeometryToLibrary(Importing::Geometry& geometry, bool unique) override
    {
        Record("AddGeometryToLibrary", geometry.GetName(), unique);
        return SceneContainer::AddGeometryToLibrary(geometry, unique);
    }
    void EraseGeometryFromLibrary(int index) override
    {
        Record("EraseGeometryFromLibrary", index);
        SceneContainer::EraseGeometryFromLibrary(index);
    }
    int AddMaterialToLibrary(Importing::Material& material, bool unique) override
    {
        Record("AddMaterialToLibrary", material.GetName(), unique);
        return SceneContainer::AddMaterialToLibrary(material, unique);
    }
    int AddTextureToLibrary(const std::string& texture, bool unique) override
    {
        Record("AddTextureToLibrary", texture, unique);
        return SceneContainer::AddTextureToLibrary(texture, unique);
    }
    int AddAnimationToLibrary(std::vector<Importing::Key> animation, bool unique) override
    {
        Record("AddAnimationToLibrary", static_cast<int>(animation.size()), unique);
        return SceneContainer::AddAnimationToLibrary(std::move(animation), unique);
    }
    int AddSurfaceToLibrary(Importing::Surface surface, bool unique) override
    {
        Record("AddSurfaceToLibrary", surface.GetName(), unique);
        return SceneContainer::AddSurfaceToLibrary(std::move(surface), unique);
    }
    void EraseSurfaceFromLibrary(int index) override
    {
        Record("EraseSurfaceFromLibrary", index);
        SceneContainer::EraseSurfaceFromLibrary(index);
    }
    int GetGeometryInstanceCount(int geometry) override
    {
        Record("GetGeometryInstanceCount", geometry);
        return SceneContainer::GetGeometryInstanceCount(geometry);
    }
    int GetMaterialInstanceCount(int material) override
    {
        Record("GetMaterialInstanceCount", material);
        return SceneContainer::GetMaterialInstanceCount(material);
    }

    int GetBoundingBox(D3DXVECTOR3& min, D3DXVECTOR3& max) const override
    {
        Record("GetBoundingBox");
        return SceneContainer::GetBoundingBox(min, max);
    }
    int CheckFacesOrientation(int node, const D3DXMATRIX& worldMatrix) override
    {
        Record("CheckFacesOrientation", node);
        return SceneContainer::CheckFacesOrientation(node, worldMatrix);
    }
    int RemoveNegativeScaleMatricies(int node, const D3DXMATRIX& pendingScale, const D3DXMATRIX& parentWorld) override
    {
        Record("RemoveNegativeScaleMatricies", node);
        return SceneContainer::RemoveNegativeScaleMatricies(node, pendingScale, parentWorld);
    }
    int ResolveGeomInstances() override
    {
        Record("ResolveGeomInstances");
        return SceneContainer::ResolveGeomInstances();
    }
    int AppendSC(SceneContainer* other) override
    {
        Record("AppendSC");
        return SceneContainer::AppendSC(other);
    }
    int CalculateSurfaceCollisionOffset() override
    {
        Record("CalculateSurfaceCollisionOffset");
        return SceneContainer::CalculateSurfaceCollisionOffset();
    }

private:
    template <typename Argument>
    static void Write(std::ostream& text, const Argument& argument)
    {
        if constexpr (std::is_same_v<Argument, std::string>)
            text << '"' << argument << '"';
        else
            text << std::boolalpha << argument;
    }

    template <typename... Arguments>
    void Record(const char* operation, const Arguments&... arguments) const
    {
        std::ostringstream text;
        text << operation << '(';
        [[maybe_unused]] const char* separator = "";
        ((text << separator, Write(text, arguments), separator = ","), ...);
        text << ')';
        calls_.push_back(text.str());
    }

    mutable std::vector<std::string> calls_;
};

}  // namespace Support
