#include <sceneprep/import/gltf/Tracks.h>

#include <sceneprep/import/gltf/Components.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace Sceneprep::GltfImport
{

namespace
{

using Value = std::array<double, 4>;

std::vector<float> FloatsOf(const CarriedAccessor& accessor)
{
    Elements elements = {.data = accessor.bytes.data(),
                         .count = accessor.count,
                         .type = ElementTypeOf(accessor.type),
                         .component = static_cast<Component>(accessor.componentType),
                         .isNormalized = accessor.isNormalized};
    elements.stride = elements.type.SizeIn(elements.component);
    std::vector<float> floats(elements.count * elements.type.Count());
    ToFloats(elements, floats.data());
    return floats;
}

Value Mix(const Value& a, double partOfA, const Value& b, double partOfB)
{
    Value mixed{};
    for (std::size_t i = 0; i < mixed.size(); ++i)
        mixed[i] = a[i] * partOfA + b[i] * partOfB;
    return mixed;
}

double Dot(const Value& a, const Value& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3]; }

Value Normalized(const Value& q)
{
    const double length = std::sqrt(Dot(q, q));
    return length > 0 ? Mix(q, 1 / length, q, 0) : Value{0, 0, 0, 1};
}

/// The shorter way between two rotations.
Value Slerp(const Value& a, const Value& b, double part)
{
    const double cosine = Dot(a, b);
    const double sign = cosine < 0 ? -1 : 1;
    const double angle = std::acos(std::min(std::fabs(cosine), 1.0));
    constexpr double kSmall = 1e-6;
    if (angle < kSmall)
        return Normalized(Mix(a, 1 - part, b, sign * part));
    const double sine = std::sin(angle);
    return Normalized(Mix(a, std::sin((1 - part) * angle) / sine, b, sign * std::sin(part * angle) / sine));
}

}  // namespace

Track::Track(const CarriedSampler& sampler, const std::vector<CarriedAccessor>& accessors, bool isRotation)
    : times_(FloatsOf(accessors[static_cast<std::size_t>(sampler.input)])),
      values_(FloatsOf(accessors[static_cast<std::size_t>(sampler.output)])), components_(isRotation ? 4 : 3),
      isRotation_(isRotation), interpolation_(sampler.interpolation == "STEP"          ? Interpolation::Step
                                              : sampler.interpolation == "CUBICSPLINE" ? Interpolation::CubicSpline
                                                                                       : Interpolation::Linear)
{}

std::array<double, 4> Track::ValueAt(double time) const
{
    const auto next = std::upper_bound(times_.begin(), times_.end(), time,
                                       [](double t, float key) { return t < static_cast<double>(key); });
    const auto after = static_cast<std::size_t>(std::distance(times_.begin(), next));
    const std::size_t key = after == 0 ? 0 : after - 1;
    Value value = Stored(key, Part::Value);
    if (after > 0 && after < times_.size() && interpolation_ != Interpolation::Step)
    {
        const double start = static_cast<double>(times_[key]);
        const double span = static_cast<double>(times_[after]) - start;
        const double part = span > 0 ? (time - start) / span : 0;
        if (part > 0)
            value = interpolation_ == Interpolation::Linear ? Linear(key, part) : CubicSpline(key, part, span);
    }
    return isRotation_ ? Normalized(value) : value;
}

Value Track::Stored(std::size_t key, Part part) const
{
    const std::size_t element =
        interpolation_ == Interpolation::CubicSpline ? 3 * key + static_cast<std::size_t>(part) : key;
    Value value{};
    for (std::size_t i = 0; i < components_; ++i)
        value[i] = static_cast<double>(values_[element * components_ + i]);
    return value;
}

Value Track::Linear(std::size_t key, double part) const
{
    const Value from = Stored(key, Part::Value);
    const Value to = Stored(key + 1, Part::Value);
    return isRotation_ ? Slerp(Normalized(from), Normalized(to), part) : Mix(from, 1 - part, to, part);
}

/// The cubic Hermite spline of the format: tangents are per second.
Value Track::CubicSpline(std::size_t key, double t, double span) const
{
    const double t2 = t * t;
    const double t3 = t2 * t;
    const Value values =
        Mix(Stored(key, Part::Value), 2 * t3 - 3 * t2 + 1, Stored(key + 1, Part::Value), -2 * t3 + 3 * t2);
    const Value tangents = Mix(Stored(key, Part::OutTangent), span * (t3 - 2 * t2 + t),
                               Stored(key + 1, Part::InTangent), span * (t3 - t2));
    return Mix(values, 1, tangents, 1);
}

}  // namespace Sceneprep::GltfImport
