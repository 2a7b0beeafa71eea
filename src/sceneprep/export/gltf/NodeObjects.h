#pragma once

#include <sceneprep/export/gltf/Nodes.h>
#include <sceneprep/run/Notes.h>

#include <string>
#include <unordered_map>
#include <vector>

namespace Sceneprep::Gltf
{

/// Gives nodes their cameras and lights, those of the input's glTF as they were.
///
/// A camera or light is at the node itself where its offset is only the half turn between the two conventions, the node
/// has no other one, and the node is the one that had it in the input. Otherwise it is at a child, which has the name
/// of that node, or of the camera or light.
class NodeObjectWriter
{
public:
    NodeObjectWriter(const Model& model, Document& document) : model_(model), document_(document) {}

    /// @param node    a node of the scene
    /// @param target  the node of the document
    void Write(int node, int target);

    /// @return the index in the document of a camera or light of the input; -1 when it is not written.
    int FindCamera(int key) const;
    int FindLight(int key) const;

    /// @return how many matrices are not finite.
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
