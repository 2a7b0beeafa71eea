#pragma once

#include <importing/base/Export.h>
#include <importing/math/D3DXMath.h>
#include <importing/records/HashObject.h>

#include <cstdint>
#include <string>

namespace Importing
{

/// One texture layer of a surface: which texture, what kind of layer, which UV set, how the coordinates are carried
/// and how much of it is blended in. Every field is hashed; every setter invalidates the hash.
class IMPORTING_API Map : public HashObject
{
public:
    /// No texture, empty type, UV set 0, identity, amount 1.
    Map();
    Map(const Map&) = default;
    Map(Map&&) noexcept = default;
    Map& operator=(const Map&) = default;
    Map& operator=(Map&&) noexcept = default;
    ~Map() override;

    /// Index into the scene's texture library; -1 is none.
    virtual int GetTextureID() const;
    virtual void SetTextureID(int texture);
    /// The kind of layer, in the importer's own vocabulary; compared exactly.
    virtual std::string GetType();
    virtual void SetType(const std::string& type);
    virtual std::uint32_t GetUVSetIndex() const;
    virtual void SetUVSetIndex(std::uint32_t set);
    /// Applied to the texture coordinates.
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
