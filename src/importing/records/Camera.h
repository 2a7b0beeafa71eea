#pragma once

#include <importing/base/Export.h>
#include <importing/records/HashObject.h>
#include <importing/records/Transform.h>

#include <string>

namespace Importing
{

/// A camera, attached to the node that references it. Every field is hashed, and every setter invalidates the hash.
class IMPORTING_API Camera : public HashObject
{
public:
    /// Creates a camera with the identity as offset and fields of view of 45 degrees.
    ///
    /// Deliberate: the near plane is at 1000 and the far plane at 0.1, the reverse of the usual order. Importers set
    /// both.
    Camera();
    Camera(const Camera&);
    Camera& operator=(const Camera&);
    ~Camera() override;

    virtual std::string GetName();
    virtual void SetName(const std::string& name);
    /// Returns the transform relative to the node, in the form in which it was set.
    virtual Transform GetOffsetMatrix();
    virtual void SetOffsetMatrix(const Transform& offset);

    /// Returns the horizontal field of view in degrees.
    float GetFovX() const;
    void SetFovX(float fov);
    /// Returns the vertical field of view in degrees.
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
