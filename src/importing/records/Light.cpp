#include <importing/records/Light.h>

#include <importing/records/ContentHash.h>

namespace Importing
{

Light::Light()
    : diffuse_(1, 1, 1, 1), ambient_(0, 0, 0, 1), specular_(0, 0, 0, 1), attenuation_(1, 0, 0), range_(10000.0F),
      theta_(7.5035F),  // 0x40F01CAC
      phi_(7.8525F),    // 0x40FB47AE
      shadowDensity_(1)
{}
Light::Light(const Light&) = default;
Light& Light::operator=(const Light&) = default;
Light::~Light() = default;

std::string Light::GetName() { return name_; }

void Light::SetName(const std::string& name)
{
    name_ = name;
    SetHashInvalid();
}

Transform Light::GetOffsetMatrix() { return offset_; }

void Light::SetOffsetMatrix(const Transform& offset)
{
    offset_ = offset;
    SetHashInvalid();
}

D3DXCOLOR Light::GetDiffuse() { return diffuse_; }

void Light::SetDiffuse(const D3DXCOLOR& diffuse)
{
    diffuse_ = diffuse;
    SetHashInvalid();
}

D3DXCOLOR Light::GetAmbient() { return ambient_; }

void Light::SetAmbient(const D3DXCOLOR& ambient)
{
    ambient_ = ambient;
    SetHashInvalid();
}

D3DXCOLOR Light::GetSpecular() { return specular_; }

void Light::SetSpecular(const D3DXCOLOR& specular)
{
    specular_ = specular;
    SetHashInvalid();
}

D3DXVECTOR3 Light::GetAttenuation() { return attenuation_; }

void Light::SetAttenuation(const D3DXVECTOR3& attenuation)
{
    attenuation_ = attenuation;
    SetHashInvalid();
}

float Light::GetRange() const { return range_; }

void Light::SetRange(float range)
{
    range_ = range;
    SetHashInvalid();
}

float Light::GetTheta() const { return theta_; }

void Light::SetTheta(float theta)
{
    theta_ = theta;
    SetHashInvalid();
}

float Light::GetPhi() const { return phi_; }

void Light::SetPhi(float phi)
{
    phi_ = phi;
    SetHashInvalid();
}

bool Light::GetShadowCast() const { return shadowCast_; }

void Light::SetShadowCast(bool cast)
{
    shadowCast_ = cast;
    SetHashInvalid();
}

float Light::GetShadowDensity() const { return shadowDensity_; }

void Light::SetShadowDensity(float density)
{
    shadowDensity_ = density;
    SetHashInvalid();
}

Light::LightType Light::GetType() { return type_; }

void Light::SetType(LightType type)
{
    type_ = type;
    SetHashInvalid();
}

void Light::CalculeteHash()
{
    ContentHash hash;
    hash.Add(name_).Add(offset_).Add(static_cast<std::int32_t>(type_));
    hash.Add(diffuse_).Add(ambient_).Add(specular_).Add(attenuation_);
    hash.Add(range_).Add(theta_).Add(phi_).Add(shadowCast_).Add(shadowDensity_);
    StoreHash(hash.Value());
}

}  // namespace Importing
