#pragma once

#include <importing/plugin/SceneContainer.h>

#include <string>
#include <vector>

namespace Pipeline
{

/// Tracks nodes while operations of the container move and erase them: stores every node's index in its note. The
/// destructor restores the notes of the remaining nodes. No node may be added in between.
class NodeTags
{
public:
    explicit NodeTags(Importing::SceneContainer& scene);
    ~NodeTags();
    NodeTags(const NodeTags&) = delete;
    NodeTags& operator=(const NodeTags&) = delete;

    /// Returns for each node [nodes] its index at the time of construction.
    std::vector<int> Origins() const;

private:
    Importing::SceneContainer& scene_;
    std::vector<std::string> notes_;
};

}  // namespace Pipeline
