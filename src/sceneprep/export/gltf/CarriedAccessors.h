#pragma once

#include <sceneprep/export/gltf/Buffers.h>
#include <sceneprep/model/Carried.h>

namespace Sceneprep::Gltf
{

/// Writes numbers of the input as they were stored. Elements of vertex attributes start at multiples of 4 bytes, as the
/// format demands.
/// @param needsBounds  computes min and max where the input had none
/// @return the index of the accessor.
int AddCarried(const CarriedAccessor& accessor, Usage usage, bool needsBounds, Buffers& buffers, Document& document);

/// Returns how many components an element has: 1 for "SCALAR", 16 for "MAT4"; 0 for an unknown type.
std::size_t ComponentsOf(const std::string& type);

}  // namespace Sceneprep::Gltf
