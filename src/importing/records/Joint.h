#pragma once

#include <importing/base/Export.h>
#include <importing/math/D3DXMath.h>

#include <cstdint>
#include <string>

namespace Importing
{

/// One joint of a mesh's skeleton. A joint has no content hash: joints are compared field by field.
class IMPORTING_API Joint
{
public:
    /// Creates a root joint without name and animation, with identity matrices.
    Joint();
    Joint(std::string name);
    Joint(const Joint&);
    Joint(Joint&&) noexcept;

    virtual ~Joint();
    virtual Joint& operator=(const Joint& other);
    /// Returns whether the names, both matrices and the animation indices are equal. Matrices are compared bit by bit,
    /// so +0 and -0 differ.
    ///
    /// Deliberate: the parent index is not compared.
    virtual bool operator==(const Joint& other) const;
    virtual bool operator!=(const Joint& other) const;

    virtual std::string GetName();
    virtual void SetName(std::string name);
    /// Returns the matrix that transforms a point from the mesh's frame into the joint's frame at bind time.
    virtual D3DXMATRIX GetBindPoseInverse();
    virtual void SetBindPoseInverse(const D3DXMATRIX& matrix);
    /// Returns the index into the joints of the same mesh; -1 means a root joint.
    virtual int GetParentID() const;
    virtual void SetParentID(int parent);
    virtual D3DXMATRIX GetLocalTM();
    virtual void SetLocalTM(const D3DXMATRIX& matrix);
    /// Returns the index into the scene's animation library; -1 means not animated.
    virtual int GetAnimationID() const;
    virtual void SetAnimationID(int animation);

private:
    std::string name_;
    D3DXMATRIX localTM_;
    D3DXMATRIX bindPoseInverse_;
    std::int32_t parentID_ = -1;
    std::int32_t animationID_ = -1;
};

}  // namespace Importing
