#pragma once

#include <cstddef>
#include <string>

namespace Sceneprep
{

/// Returns a text that is equal for equal bytes, and different for different ones except by a chance of about one in
/// 2^100. Takes linear time. Not for protection against forgery.
std::string ContentDigest(const void* data, std::size_t size);

}  // namespace Sceneprep
