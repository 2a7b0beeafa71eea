#pragma once

#include <importing/base/Export.h>
#include <importing/records/Transform.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Importing
{

/// One element of the scene's hierarchy: a placement and four lists of indices into the scene's libraries.
///
/// The hierarchy is stored as child lists only; there is no link to the parent. Not a hashed record.
class IMPORTING_API Node
{
public:
    /// No name, no note, identity, not animated, empty lists.
    Node();
    Node(const Node&);
    Node(Node&&) noexcept;
    Node& operator=(const Node&);
    Node& operator=(Node&&) noexcept;
    virtual ~Node();

    virtual std::string GetName();
    virtual void SetName(const std::string& name);
    /// Free text that the importer brought along.
    virtual std::string GetNote();
    virtual void SetNote(const std::string& note);
    /// Placement relative to the parent, in the form in which it was set.
    virtual Transform GetLocalTransform();
    virtual void SetLocalTransform(const Transform& transform);
    /// Index into the animation library; -1 is not animated.
    virtual int GetAnimationID() const;
    virtual void SetAnimationID(int animation);
    /// Empties name, note and the four lists. Deliberate: local transform and animation index stay.
    virtual void Release();

private:
    std::string name_;
    std::string note_;
    Transform localTransform_;
    std::int32_t animationID_ = -1;

public:
    // The lists are edited directly.
    std::vector<std::int32_t> SurfaceList;  ///< into the surface library
    std::vector<std::int32_t> ChildList;    ///< into the node library
    std::vector<std::int32_t> CameraList;   ///< into the camera library
    std::vector<std::int32_t> LightList;    ///< into the light library
};

}  // namespace Importing
