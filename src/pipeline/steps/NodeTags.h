#pragma once

#include <importing/plugin/SceneContainer.h>

#include <string>
#include <vector>

namespace Pipeline
{

/// Follows nodes while operations of the container move and erase them: writes every node's index into its note, and
/// restores the notes of the nodes that are left when it is destroyed. No node may be added meanwhile.
class NodeTags
{
public:
    explicit NodeTags(Importing::SceneContainer& scene);
    ~NodeTags();
    NodeTags(const NodeTags&) = delete;
    NodeTags& operator=(const NodeTags&) = delete;

    /// Returns for each node [nodes] the index that it had at first.
    std::vector<int> Origins() const;

private:
    Importing::SceneContainer& scene_;
    std::vector<std::string> notes_;
};

}  // namespace Pipeline
