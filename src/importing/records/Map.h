#pragma once

#include <importing/base/Export.h>
#include <importing/math/D3DXMath.h>
#include <importing/records/HashObject.h>

#include <cstdint>
#include <string>

namespace Importing
{

/// One texture layer of a surface: its texture, the kind of layer, the UV set, the transform of the texture coordinates
/// and the blend amount. Every field is hashed, and every setter invalidates the hash.
class IMPORTING_API Map : public HashObject
{
public:
    /// Creates a layer without a texture: empty type, UV set 0, identity matrix, amount 1.
    Map();
    Map(const Map&) = default;
    Map(Map&&) noexcept = default;
    Map& operator=(const Map&) = default;
    Map& operator=(Map&&) noexcept = default;
    ~Map() override;

    /// Returns the index into the scene's texture library; -1 means no texture.
    virtual int GetTextureID() const;
    virtual void SetTextureID(int texture);
    /// Returns the kind of layer. Importers define the names; they are compared exactly.
    virtual std::string GetType();
    virtual void SetType(const std::string& type);
    virtual std::uint32_t GetUVSetIndex() const;
    virtual void SetUVSetIndex(std::uint32_t set);
    /// Returns the matrix that is applied to the texture coordinates.
    virtual D3DXMATRIX GetMatrix();
    virtual void SetMatrix(const D3DXMATRIX& matrix);
    virtual float GetAmount() const;
    virtual void SetAmount(float amount);

protected:
    void CalculeteHash() override;

private:
    std::int32_t textureID_ = -1;
    std::string type_;
    std::uint32_t uvSetIndex_ = 0;
    D3DXMATRIX matrix_;
    float amount_ = 1;
};

}  // namespace Importing
