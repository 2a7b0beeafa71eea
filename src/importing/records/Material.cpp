#include <importing/records/Material.h>

#include <importing/records/ContentHash.h>

namespace Importing
{
namespace
{

constexpr float kTwoThirds = 0.6666667F;  // 0x3F2AAAAB

}  // namespace

Material::Material()
    : name_("Default material"), diffuse_(kTwoThirds, kTwoThirds, kTwoThirds, 1), emissive_(0, 0, 0, 1),
      specular_(0, 0, 0, 1), specularPower_(16), opacity_(1)
{}

Material::~Material() = default;

std::string Material::GetName() { return name_; }

void Material::SetName(const std::string& name)
{
    name_ = name;
    SetHashInvalid();
}

D3DXCOLOR Material::GetDiffuse() { return diffuse_; }

void Material::SetDiffuse(const D3DXCOLOR& diffuse)
{
    diffuse_ = diffuse;
    SetHashInvalid();
}

D3DXCOLOR Material::GetEmissive() { return emissive_; }

void Material::SetEmissive(const D3DXCOLOR& emissive)
{
    emissive_ = emissive;
    SetHashInvalid();
}

D3DXCOLOR Material::GetSpecular() { return specular_; }

void Material::SetSpecular(const D3DXCOLOR& specular)
{
    specular_ = specular;
    SetHashInvalid();
}

float Material::GetSpecularPower() const { return specularPower_; }

void Material::SetSpecularPower(float power)
{
    specularPower_ = power;
    SetHashInvalid();
}

float Material::GetOpacity() const { return opacity_; }

void Material::SetOpacity(float opacity)
{
    opacity_ = opacity;
    SetHashInvalid();
}

void Material::CalculeteHash()
{
    ContentHash hash;
    hash.Add(name_).Add(opacity_).Add(specularPower_).Add(specular_).Add(emissive_).Add(diffuse_);
    StoreHash(hash.Value());
}

}  // namespace Importing
