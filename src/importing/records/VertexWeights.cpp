#include <importing/records/VertexWeights.h>

#include <importing/base/CheckedAccess.h>

namespace Importing
{

VertexWeights::VertexWeights() : joints_{-1, -1, -1, -1}, weights_{} {}

VertexWeights::~VertexWeights() = default;

VertexWeights& VertexWeights::operator=(const VertexWeights& other) = default;

bool VertexWeights::operator==(const VertexWeights& other) const
{
    for (std::uint32_t i = 0; i < 4; ++i)
        if (joints_[i] != other.GetJoint(i))
            return false;
    for (std::uint32_t i = 0; i < 4; ++i)
        if (weights_[i] != other.GetWeight(i))
            return false;
    return true;
}

bool VertexWeights::operator!=(const VertexWeights& other) const { return !(*this == other); }

float VertexWeights::GetWeight(std::uint32_t i) const { return At(weights_, i); }

void VertexWeights::SetWeight(std::uint32_t i, float weight) { At(weights_, i) = weight; }

void VertexWeights::SetWeights(float w0, float w1, float w2, float w3) { weights_ = {w0, w1, w2, w3}; }

int VertexWeights::GetJoint(std::uint32_t i) const { return At(joints_, i); }

void VertexWeights::SetJoint(std::uint32_t i, int joint) { At(joints_, i) = joint; }

void VertexWeights::SetJoints(int j0, int j1, int j2, int j3) { joints_ = {j0, j1, j2, j3}; }

}  // namespace Importing
