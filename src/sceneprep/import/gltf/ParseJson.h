#pragma once

#include <sceneprep/model/Json.h>

#include <string_view>

namespace Sceneprep::GltfImport
{

/// Parses the JSON text of a document in UTF-8.
///
/// Deliberate: objects with a repeated key and values nested more than 500 deep are refused. The former are ambiguous,
/// the latter would overflow the stack when a value is copied or written.
///
/// @throws FormatError with line and column if the text is not JSON.
Json ParseJson(std::string_view text);

}  // namespace Sceneprep::GltfImport
