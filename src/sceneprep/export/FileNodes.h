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

    /// Adds a node below another one, or the root.
    /// @param parent  -1 for the root
    /// @param name    is made writable in the format
    /// @return its index.
    int Add(int parent, const std::string& name, const aiMatrix4x4& matrix = {});

    void SetMesh(int node, unsigned mesh);

    /// Returns the name as the format has it.
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
