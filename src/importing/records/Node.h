#pragma once

#include <importing/base/Export.h>
#include <importing/records/Transform.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Importing
{

/// One element of the scene's hierarchy: a transform and four lists of indices into the scene's libraries.
///
/// The hierarchy is stored as child lists only; a node has no link to its parent. A node has no content hash.
class IMPORTING_API Node
{
public:
    /// Creates a node without name, note and animation, with the identity as transform and empty lists.
    Node();
    Node(const Node&);
    Node(Node&&) noexcept;
    Node& operator=(const Node&);
    Node& operator=(Node&&) noexcept;
    virtual ~Node();

    virtual std::string GetName();
    virtual void SetName(const std::string& name);
    /// Returns free text that the importer stored.
    virtual std::string GetNote();
    virtual void SetNote(const std::string& note);
    /// Returns the transform relative to the parent, in the form in which it was set.
    virtual Transform GetLocalTransform();
    virtual void SetLocalTransform(const Transform& transform);
    /// Returns the index into the animation library; -1 means not animated.
    virtual int GetAnimationID() const;
    virtual void SetAnimationID(int animation);
    /// Empties the name, the note and the four lists. Deliberate: the local transform and the animation index do not
    /// change.
    virtual void Release();

private:
    std::string name_;
    std::string note_;
    Transform localTransform_;
    std::int32_t animationID_ = -1;

public:
    // Edit the lists directly.
    std::vector<std::int32_t> SurfaceList;  ///< into the surface library
    std::vector<std::int32_t> ChildList;    ///< into the node library
    std::vector<std::int32_t> CameraList;   ///< into the camera library
    std::vector<std::int32_t> LightList;    ///< into the light library
};

}  // namespace Importing
