#pragma once

#include <cstddef>
#include <ostream>

namespace Sceneprep::Report
{

/// Writes bytes as base64 text, padded, without line breaks.
void WriteBase64(std::ostream& out, const void* data, std::size_t size);

}  // namespace Sceneprep::Report
