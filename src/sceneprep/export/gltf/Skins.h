#pragma once

#include <sceneprep/export/gltf/Nodes.h>
#include <sceneprep/export/plan/ExportPlan.h>

#include <array>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Sceneprep::Gltf
{

/// Finds the skins of the input that can be written as they came: those whose joints are all still nodes.
class KeptSkins
{
public:
    KeptSkins(const Model& model, const Pipeline::NodeWalk& walk);

    /// @return the skin, an index into Carried::skins, for a geometry that a node shows; -1 for none.
    int Find(int geometry, int node) const;

private:
    const Model& model_;
    std::vector<bool> isKept_;  // [Carried::skins]
};

/// Writes skins, each once.
class SkinWriter
{
public:
    SkinWriter(const Model& model, const ExportPlan& plan, Buffers& buffers, Document& document)
        : model_(model), plan_(plan), buffers_(buffers), document_(document)
    {}

    /// Writes a skin of Carried::skins as it came.
    /// @return its index.
    int AddKept(int skin, const WrittenNodes& nodes);

    /// Makes a skin of the joints of a geometry.
    /// @param skeleton  index into ExportPlan::skeletons
    /// @return its index.
    int AddMade(int geometry, int skeleton, const WrittenNodes& nodes);

private:
    using Matrices = std::vector<std::array<float, 16>>;

    int FindSkeletonRoot(const CarriedSkin& skin, const WrittenNodes& nodes) const;
    int AddInverseBinds(Importing::Geometry& geometry);

    const Model& model_;
    const ExportPlan& plan_;
    Buffers& buffers_;
    Document& document_;
    std::unordered_map<int, int> kept_;
    std::map<Matrices, int> inverseBinds_;
    std::map<std::pair<int, int>, int> made_;  // by skeleton and inverse bind matrices
};

}  // namespace Sceneprep::Gltf
