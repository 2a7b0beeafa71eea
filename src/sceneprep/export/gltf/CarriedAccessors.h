#pragma once

#include <sceneprep/export/gltf/Buffers.h>
#include <sceneprep/model/Carried.h>

#include <string>
#include <unordered_map>

namespace Sceneprep::Gltf
{

/// Writes an accessor of the input with its numbers unchanged, and returns its index. Elements of vertex attributes
/// start at multiples of 4 bytes, as the format demands.
/// @param needsBounds  computes min and max if the input has none
int AddCarried(const CarriedAccessor& accessor, Usage usage, bool needsBounds, Buffers& buffers, Document& document);

/// Writes accessors of Carried::accessors, each of them once.
class CarriedAccessorList
{
public:
    CarriedAccessorList(const Carried& carried, Buffers& buffers, Document& document)
        : carried_(carried), buffers_(buffers), document_(document)
    {}

    /// Returns the index in the document; writes the accessor if necessary. Scalars get bounds, which the format
    /// requires for times.
    int Find(int accessor);

private:
    const Carried& carried_;
    Buffers& buffers_;
    Document& document_;
    std::unordered_map<int, int> written_;
};

/// Returns how many components an element has: 1 for "SCALAR", 16 for "MAT4"; 0 for an unknown type.
std::size_t ComponentsOf(const std::string& type);

}  // namespace Sceneprep::Gltf
