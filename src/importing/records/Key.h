#pragma once

#include <importing/base/Export.h>
#include <importing/math/D3DXMath.h>

#include <cstdint>

namespace Importing
{

/// One key of an animation: a placement at a time. An animation is a sequence of keys. Not a hashed record.
class IMPORTING_API Key
{
public:
    /// Time 0, no movement, no turn, scale 1.
    Key();
    Key(const Key&);
    Key& operator=(const Key&);

    virtual ~Key();
    /// True when position, rotation, scale and time are equal as numbers: +0 equals -0, a NaN equals nothing.
    virtual bool operator==(const Key& other) const;
    virtual bool operator!=(const Key& other) const;

    /// In ticks of the importer's choice.
    virtual std::uint32_t GetTime() const;
    virtual void SetTime(std::uint32_t time);
    virtual D3DXVECTOR3 GetPosition();
    virtual void SetPosition(const D3DXVECTOR3& position);
    virtual D3DXVECTOR3 GetScale();
    virtual void SetScale(const D3DXVECTOR3& scale);
    virtual D3DXQUATERNION GetRotation();
    virtual void SetRotation(const D3DXQUATERNION& rotation);
    /// @return the placement as a matrix: scale, then rotation, then translation.
    virtual D3DXMATRIX GetMatrix();

private:
    std::uint32_t time_ = 0;
    D3DXQUATERNION rotation_;
    D3DXVECTOR3 position_;
    D3DXVECTOR3 scale_;
};

}  // namespace Importing
