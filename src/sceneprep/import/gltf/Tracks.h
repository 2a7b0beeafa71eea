#pragma once

#include <sceneprep/model/Carried.h>

#include <array>
#include <cstddef>
#include <vector>

namespace Sceneprep::GltfImport
{

/// The values of one sampler over time, in seconds.
class Track
{
public:
    /// @param isRotation  values are quaternions
    Track(const CarriedSampler& sampler, const std::vector<CarriedAccessor>& accessors, bool isRotation);

    const std::vector<float>& Times() const { return times_; }

    /// Computes the value at a time as the format interpolates it; before the first key and after the last one the
    /// value is constant. There must be a key.
    /// @return three numbers, or the four of a unit quaternion
    std::array<double, 4> ValueAt(double time) const;

private:
    enum class Interpolation
    {
        Linear,
        Step,
        CubicSpline
    };
    enum class Part
    {
        InTangent,
        Value,
        OutTangent
    };

    std::array<double, 4> Stored(std::size_t key, Part part) const;
    std::array<double, 4> Linear(std::size_t key, double part) const;
    std::array<double, 4> CubicSpline(std::size_t key, double part, double span) const;

    std::vector<float> times_;
    std::vector<float> values_;
    std::size_t components_;
    bool isRotation_;
    Interpolation interpolation_;
};

}  // namespace Sceneprep::GltfImport
