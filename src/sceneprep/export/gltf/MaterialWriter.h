#pragma once

#include <sceneprep/export/gltf/Materials.h>

#include <set>
#include <string>
#include <unordered_map>

namespace Sceneprep::Gltf
{

/// The members of a primitive that come from the surface: its material, and extras and extensions of the input.
struct PrimitiveLook
{
    int material = -1;  ///< -1 for the default material of the format
    Json primitive = Json::object();
};

/// Writes materials: those of glTF inputs unchanged, others as MaterialConverter converts them. Equal materials are
/// written once, except those that animations refer to.
class MaterialWriter
{
public:
    /// @param animated  keys of materials that animations refer to
    MaterialWriter(const Model& model, TextureWriter& textures, Document& document, std::set<int> animated = {})
        : model_(model), textures_(textures), document_(document), converter_(model, textures),
          animated_(std::move(animated))
    {}

    /// Returns the look of a surface; writes its material if necessary.
    /// @param texCoordSets  the number of texture coordinate sets of the surface's mesh
    const PrimitiveLook& Find(Importing::Surface& surface, std::size_t texCoordSets);

    /// Writes a material of Carried::materials and returns its index in the document.
    int WriteCarried(int key, const std::string& name = "");

    /// Returns the index in the document of a material of Carried::materials; -1 if it has not been written.
    int FindCarried(int key) const;

    /// Adds notes about dropped texture layers.
    void AddNotes(Notes& notes) const;

private:
    PrimitiveLook LookOf(Importing::Surface& surface, const CarriedMaterial* carried, std::size_t texCoordSets);
    const CarriedMaterial* CarriedOf(const Importing::Surface& surface) const;
    Json ReindexPrimitive(Json primitive);
    int AppendOnce(Json material, bool mayShare);

    const Model& model_;
    TextureWriter& textures_;
    Document& document_;
    MaterialConverter converter_;
    std::set<int> animated_;
    std::unordered_map<std::string, PrimitiveLook> looks_;
    std::map<std::pair<int, std::string>, int> carried_;  // by key and name
    std::unordered_map<std::string, int> known_;
};

}  // namespace Sceneprep::Gltf
