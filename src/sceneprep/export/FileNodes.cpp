#include <sceneprep/export/FileNodes.h>

#include <importing/base/CheckedAccess.h>
#include <sceneprep/export/ExportNames.h>

#include <utility>

namespace Sceneprep
{

using Importing::At;

int FileNodes::Add(int parent, const std::string& name, const aiMatrix4x4& matrix)
{
    auto node = std::make_unique<aiNode>(ExportName(name, format_));
    node->mTransformation = matrix;
    const int index = static_cast<int>(nodes_.size());
    nodes_.push_back({std::move(node)});
    if (parent >= 0)
        At(nodes_, parent).children.push_back(index);
    return index;
}

void FileNodes::SetMesh(int node, unsigned mesh)
{
    aiNode& target = *At(nodes_, node).node;
    target.mMeshes = new unsigned[1]{mesh};
    target.mNumMeshes = 1;
}

std::string FileNodes::NameOf(int node) const { return At(nodes_, node).node->mName.C_Str(); }

void FileNodes::MoveTo(aiScene& target)
{
    for (Entry& entry : nodes_)
    {
        std::vector<aiNode*> children;
        children.reserve(entry.children.size());
        for (const int child : entry.children)
            children.push_back(At(nodes_, child).node.get());
        if (!children.empty())
            entry.node->addChildren(static_cast<unsigned>(children.size()), children.data());
    }
    target.mRootNode = nodes_.front().node.get();
    for (Entry& entry : nodes_)
        static_cast<void>(entry.node.release());  // the root owns them
    nodes_.clear();
}

}  // namespace Sceneprep
