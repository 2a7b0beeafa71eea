#pragma once

#include <importing/base/Export.h>
#include <importing/math/D3DXMath.h>

#include <cstdint>

namespace Importing
{

/// One key of an animation: a transform at a time. An animation is a sequence of keys. A key has no content hash.
class IMPORTING_API Key
{
public:
    /// Creates a key at time 0 with the identity as transform.
    Key();
    Key(const Key&);
    Key& operator=(const Key&);

    virtual ~Key();
    /// Returns whether position, rotation, scale and time are equal as numbers: +0 equals -0, and a NaN equals nothing.
    virtual bool operator==(const Key& other) const;
    virtual bool operator!=(const Key& other) const;

    /// Returns the time in ticks. The importer chooses the unit.
    virtual std::uint32_t GetTime() const;
    virtual void SetTime(std::uint32_t time);
    virtual D3DXVECTOR3 GetPosition();
    virtual void SetPosition(const D3DXVECTOR3& position);
    virtual D3DXVECTOR3 GetScale();
    virtual void SetScale(const D3DXVECTOR3& scale);
    virtual D3DXQUATERNION GetRotation();
    virtual void SetRotation(const D3DXQUATERNION& rotation);
    /// Returns the transform as a matrix: scale, then rotation, then translation.
    virtual D3DXMATRIX GetMatrix();

private:
    std::uint32_t time_ = 0;
    D3DXQUATERNION rotation_;
    D3DXVECTOR3 position_;
    D3DXVECTOR3 scale_;
};

}  // namespace Importing
