#pragma once

#include <importing/base/Export.h>
#include <importing/math/D3DXMath.h>
#include <importing/records/HashObject.h>

#include <string>

namespace Importing
{

/// The lighting colours of a surface. Every field is hashed, and every setter invalidates the hash.
class IMPORTING_API Material : public HashObject
{
public:
    /// Creates a material named "Default material": diffuse grey of two thirds, black emissive and specular colours,
    /// specular power 16, opacity 1.
    Material();
    Material(const Material&) = default;
    Material(Material&&) noexcept = default;
    Material& operator=(const Material&) = default;
    Material& operator=(Material&&) noexcept = default;
    ~Material() override;

    virtual std::string GetName();
    virtual void SetName(const std::string& name);
    virtual D3DXCOLOR GetDiffuse();
    virtual void SetDiffuse(const D3DXCOLOR& diffuse);
    virtual D3DXCOLOR GetEmissive();
    virtual void SetEmissive(const D3DXCOLOR& emissive);
    virtual D3DXCOLOR GetSpecular();
    virtual void SetSpecular(const D3DXCOLOR& specular);
    virtual float GetSpecularPower() const;
    virtual void SetSpecularPower(float power);
    virtual float GetOpacity() const;
    virtual void SetOpacity(float opacity);

protected:
    void CalculeteHash() override;

private:
    std::string name_;
    D3DXCOLOR diffuse_;
    D3DXCOLOR emissive_;
    D3DXCOLOR specular_;
    float specularPower_;
    float opacity_;
};

}  // namespace Importing
