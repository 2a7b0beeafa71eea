#pragma once

#include <sceneprep/model/Json.h>

#include <string_view>

namespace Sceneprep::GltfImport
{

/// Parses the JSON text of a document in UTF-8.
///
/// Deliberate: objects that name a key twice, and values nested more than 500 deep, are refused: the first are
/// ambiguous, the second would overflow the stack where a value is copied or written.
///
/// @throws FormatError with line and column where the text is not JSON.
Json ParseJson(std::string_view text);

}  // namespace Sceneprep::GltfImport
