#pragma once

#include <sceneprep/export/gltf/Nodes.h>
#include <sceneprep/run/Notes.h>

#include <string>
#include <unordered_map>
#include <vector>

namespace Sceneprep::Gltf
{

/// Writes the cameras and lights of nodes; those of glTF inputs are written unchanged.
///
/// A camera or light is at the node itself if its offset is only the half turn between the two conventions, the node
/// has no other one, and the node had it in the input, too. Otherwise it is at a child with the name of the node that
/// had it, or with its own name.
class NodeObjectWriter
{
public:
    NodeObjectWriter(const Model& model, Document& document) : model_(model), document_(document) {}

    /// @param node    a node of the scene
    /// @param target  the node of the document
    void Write(int node, int target);

    /// Returns the index in the document of a camera or light of the input; -1 if it is not written.
    int FindCamera(int key) const;
    int FindLight(int key) const;

    /// Returns the number of matrices that are not finite.
    std::size_t Unplaced() const { return unplaced_; }
    /// Adds notes about dropped lights.
    void AddNotes(Notes& notes) const;

private:
    void WriteCamera(int camera, int node, int target);
    void WriteLight(int light, int node, int target);
    int Place(const D3DXMATRIX& matrix, const std::string& name, bool isTaken, int target);
    bool IsOfOtherNode(const CarriedObject* carried, int node) const;

    const Model& model_;
    Document& document_;
    std::unordered_map<int, int> cameras_, lights_;  // by index into Carried::cameras and Carried::lights
    std::size_t unplaced_ = 0;
    std::size_t droppedLights_ = 0;
};

}  // namespace Sceneprep::Gltf
