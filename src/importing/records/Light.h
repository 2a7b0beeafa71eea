#pragma once

#include <importing/base/Export.h>
#include <importing/math/D3DXMath.h>
#include <importing/records/HashObject.h>
#include <importing/records/Transform.h>

#include <cstdint>
#include <string>

namespace Importing
{

/// A light, attached to the node that references it. Every field is hashed, and every setter invalidates the hash.
class IMPORTING_API Light : public HashObject
{
public:
    enum class LightType : std::int32_t
    {
        Unspecified = 0,
        Point = 1,
        Spot = 2,
        Directional = 3
    };

    /// Creates a light of unspecified type: white diffuse, black ambient and specular colours, constant attenuation,
    /// range 10000, no shadow.
    ///
    /// Deliberate: the cone angles are 7.5035 and 7.8525, more than a full turn.
    Light();
    Light(const Light&);
    Light& operator=(const Light&);
    ~Light() override;

    virtual std::string GetName();
    virtual void SetName(const std::string& name);
    /// Returns the transform relative to the node, in the form in which it was set.
    virtual Transform GetOffsetMatrix();
    virtual void SetOffsetMatrix(const Transform& offset);
    virtual D3DXCOLOR GetDiffuse();
    virtual void SetDiffuse(const D3DXCOLOR& diffuse);
    virtual D3DXCOLOR GetAmbient();
    virtual void SetAmbient(const D3DXCOLOR& ambient);
    virtual D3DXCOLOR GetSpecular();
    virtual void SetSpecular(const D3DXCOLOR& specular);
    /// Returns the constant, linear and quadratic attenuation factors.
    virtual D3DXVECTOR3 GetAttenuation();
    virtual void SetAttenuation(const D3DXVECTOR3& attenuation);
    virtual float GetRange() const;
    virtual void SetRange(float range);
    /// Returns the inner cone angle in radians.
    virtual float GetTheta() const;
    virtual void SetTheta(float theta);
    /// Returns the outer cone angle in radians.
    virtual float GetPhi() const;
    virtual void SetPhi(float phi);
    virtual bool GetShadowCast() const;
    virtual void SetShadowCast(bool cast);
    virtual float GetShadowDensity() const;
    virtual void SetShadowDensity(float density);

    LightType GetType();
    void SetType(LightType type);

protected:
    void CalculeteHash() override;

private:
    std::string name_;
    Transform offset_;
    LightType type_ = LightType::Unspecified;
    D3DXCOLOR diffuse_;
    D3DXCOLOR ambient_;
    D3DXCOLOR specular_;
    D3DXVECTOR3 attenuation_;
    float range_;
    float theta_;
    float phi_;
    bool shadowCast_ = false;
    float shadowDensity_;
};

}  // namespace Importing
