#pragma once

#include <assimp/scene.h>
#include <sceneprep/assimp/Formats.h>

#include <memory>
#include <string>
#include <vector>

namespace Sceneprep
{

/// The nodes of Assimp's scene while it is built. The first one is the root.
class FileNodes
{
public:
    explicit FileNodes(const WriteFormat& format) : format_(format) {}

    /// Adds a node and returns its index.
    /// @param parent  index of the parent; -1 for the root, which is the first node
    /// @param name    is changed by ExportName() if the format needs it
    int Add(int parent, const std::string& name, const aiMatrix4x4& matrix = {});

    void SetMesh(int node, unsigned mesh);

    /// Returns the name of a node as it is written.
    std::string NameOf(int node) const;

    /// Moves the nodes into a scene.
    void MoveTo(aiScene& target);

private:
    struct Entry
    {
        std::unique_ptr<aiNode> node;
        std::vector<int> children = {};
    };

    const WriteFormat& format_;
    std::vector<Entry> nodes_;
};

}  // namespace Sceneprep
