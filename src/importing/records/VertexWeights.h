#pragma once

#include <importing/base/Export.h>

#include <array>
#include <cstdint>

namespace Importing
{

/// Exactly four (joint, weight) slots, for skinning with a fixed number of four joints. It has no content hash. Every
/// operation costs constant time.
class IMPORTING_API VertexWeights
{
public:
    /// Creates four slots with joint -1 and weight 0.
    VertexWeights();
    VertexWeights(const VertexWeights&) = default;

    virtual ~VertexWeights();
    virtual VertexWeights& operator=(const VertexWeights& other);
    /// Returns whether the four joints and the four weights are equal. A NaN weight is equal to nothing.
    virtual bool operator==(const VertexWeights& other) const;
    virtual bool operator!=(const VertexWeights& other) const;

    /// @name Access to slot i, which is 0 to 3
    /// @throws std::out_of_range with nothing changed, for any other i.
    /// @{
    virtual float GetWeight(std::uint32_t i) const;
    virtual void SetWeight(std::uint32_t i, float weight);
    virtual void SetWeights(float w0, float w1, float w2, float w3);
    virtual int GetJoint(std::uint32_t i) const;
    virtual void SetJoint(std::uint32_t i, int joint);
    virtual void SetJoints(int j0, int j1, int j2, int j3);
    /// @}

private:
    std::array<std::int32_t, 4> joints_;
    std::array<float, 4> weights_;
};

}  // namespace Importing
