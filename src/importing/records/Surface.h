#pragma once

#include <importing/base/Export.h>
#include <importing/records/HashObject.h>
#include <importing/records/Map.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Importing
{

/// Binds one mesh to one material and holds the texture layers that are applied to it.
///
/// The two indices and the maps are hashed. The name and the collision offset are not, and their setters keep the hash.
class IMPORTING_API Surface : public HashObject
{
public:
    /// Creates a surface without mesh, material, name and maps, with collision offset 0.
    Surface();
    Surface(const Surface&);
    Surface(Surface&&) noexcept;
    Surface& operator=(const Surface&);
    Surface& operator=(Surface&&) noexcept;
    ~Surface() override;

    /// Returns whether the cached hashes of the surface and of all its maps are valid. Cost: linear in the maps.
    bool GetIsHashCodeValid() override;

protected:
    void CalculeteHash() override;

public:
    /// Returns the index into the scene's geometry library; -1 means no mesh.
    virtual int GetGeometryID() const;
    virtual void SetGeometryID(int geometry);
    /// Returns the index into the scene's material library; -1 means no material.
    virtual int GetMaterialID() const;
    virtual void SetMaterialID(int material);
    virtual std::string GetName();
    /// Sets the name and keeps the hash.
    virtual void SetName(const std::string& name);
    virtual int GetCollisionOffset() const;
    /// Sets the collision offset and keeps the hash.
    virtual void SetCollisionOffset(int offset);

    /// Returns the position in MapList of the nth map of exactly this type, counted from 0; -1 when there is none.
    /// Cost: linear in the maps.
    virtual int GetMap(const std::string& type, int n) const;

    /// Returns whether the material indices are equal and the maps have equal content, pair by pair. The mesh, the name
    /// and the collision offset are not compared. Computes the hashes of the maps of both surfaces, up to the first
    /// pair that differs. Cost: linear in the maps.
    virtual bool IsSameMaterialAndMaps(Surface& other);

    /// Resets the surface to no mesh, no material, collision offset 0 and no maps.
    ///
    /// Deliberate: the name and the cached hash do not change.
    void Release();

private:
    std::int32_t geometryID_ = -1;
    std::int32_t materialID_ = -1;
    std::string name_;
    std::int32_t collisionOffset_ = 0;

public:
    /// The texture layers, in layer order. Edit the list directly: GetHash() computes the hash again when the hash of a
    /// map is not valid.
    std::vector<Map> MapList;
};

}  // namespace Importing
