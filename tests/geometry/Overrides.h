#pragma once

#include <importing/geometry/Geometry.h>

#include <cstdint>
#include <utility>

namespace Support
{

/// A mesh that overrides its poly size, regardless of the stored one.
class MeshOfPolySize : public Importing::Geometry
{
public:
    MeshOfPolySize(Importing::Geometry mesh, std::uint64_t reported) : Geometry(std::move(mesh)), reported_(reported) {}

    std::uint64_t GetPolySize() const override
    {
        ++calls_;
        return reported_;
    }

    int GetCalls() const { return calls_; }

private:
    std::uint64_t reported_;
    mutable int calls_ = 0;
};

/// A mesh that overrides its bounds.
class MeshOfBounds : public Importing::Geometry
{
public:
    MeshOfBounds(Importing::Geometry mesh, const D3DXVECTOR3& min, const D3DXVECTOR3& max)
        : Geometry(std::move(mesh)), min_(min), max_(max)
    {}

    int GetBoundingBox(D3DXVECTOR3& min, D3DXVECTOR3& max) const override
    {
        ++calls_;
        min = min_;
        max = max_;
        return 0;
    }

    int GetCalls() const { return calls_; }

private:
    D3DXVECTOR3 min_;
    D3DXVECTOR3 max_;
    mutable int calls_ = 0;
};

/// A mesh that counts how often its hash is invalidated and computed.
class MeshOfCountedHash : public Importing::Geometry
{
public:
    explicit MeshOfCountedHash(Importing::Geometry mesh) : Geometry(std::move(mesh)) {}

    int GetInvalidations() const { return invalidations_; }
    int GetComputations() const { return computations_; }

protected:
    void SetHashInvalid() override
    {
        ++invalidations_;
        Geometry::SetHashInvalid();
    }

    void CalculeteHash() override
    {
        ++computations_;
        Geometry::CalculeteHash();
    }

private:
    int invalidations_ = 0;
    int computations_ = 0;
};

}  // namespace Support
