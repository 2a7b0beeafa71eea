#pragma once

#include <importing/base/Export.h>
#include <importing/records/HashObject.h>
#include <importing/records/Transform.h>

#include <string>

namespace Importing
{

/// A camera, attached to the node that lists it. Every field is hashed; every setter invalidates the hash.
class IMPORTING_API Camera : public HashObject
{
public:
    /// Identity offset, fields of view 45.
    ///
    /// Deliberate: the near plane starts at 1000 and the far plane at 0.1, the other way round from what is usual;
    /// importers set both.
    Camera();
    Camera(const Camera&);
    Camera& operator=(const Camera&);
    ~Camera() override;

    virtual std::string GetName();
    virtual void SetName(const std::string& name);
    /// Placement relative to the node, in the form in which it was set.
    virtual Transform GetOffsetMatrix();
    virtual void SetOffsetMatrix(const Transform& offset);

    /// Horizontal field of view in degrees.
    float GetFovX() const;
    void SetFovX(float fov);
    /// Vertical field of view in degrees.
    float GetFovY() const;
    void SetFovY(float fov);
    float GetNearZ() const;
    void SetNearZ(float z);
    float GetFarZ() const;
    void SetFarZ(float z);

protected:
    void CalculeteHash() override;

private:
    std::string name_;
    Transform offset_;
    float fovX_ = 45.0F;
    float fovY_ = 45.0F;
    float nearZ_ = 1000.0F;
    float farZ_ = 0.1F;
};

}  // namespace Importing
