#pragma once

#include <importing/base/Export.h>
#include <importing/math/D3DXMath.h>

#include <cstdint>
#include <string>

namespace Importing
{

/// One bone of a mesh's skeleton. Not a hashed record: joints compare field by field.
class IMPORTING_API Joint
{
public:
    /// No name, identity matrices, no parent, not animated.
    Joint();
    Joint(std::string name);
    Joint(const Joint&);
    Joint(Joint&&) noexcept;

    virtual ~Joint();
    virtual Joint& operator=(const Joint& other);
    /// True when names, both matrices (bit by bit: +0 differs from -0) and animation indices agree.
    ///
    /// Deliberate: the parent index is not compared.
    virtual bool operator==(const Joint& other) const;
    virtual bool operator!=(const Joint& other) const;

    virtual std::string GetName();
    virtual void SetName(std::string name);
    /// Carries a point from the mesh's frame into the joint's frame at bind time.
    virtual D3DXMATRIX GetBindPoseInverse();
    virtual void SetBindPoseInverse(const D3DXMATRIX& matrix);
    /// Index into the joints of the same mesh; -1 is a root.
    virtual int GetParentID() const;
    virtual void SetParentID(int parent);
    virtual D3DXMATRIX GetLocalTM();
    virtual void SetLocalTM(const D3DXMATRIX& matrix);
    /// Index into the scene's animation library; -1 is not animated.
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
