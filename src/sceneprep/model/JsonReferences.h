#pragma once

#include <sceneprep/model/Json.h>

#include <functional>
#include <string>

namespace Sceneprep
{

/// Returns the new index of a list entry.
using Renumber = std::function<int(int)>;

/// Renumbers an integer member of an object; changes nothing if the object has no such member.
void RenumberMember(Json& object, const char* key, const Renumber& renumber);

/// Renumbers the references to textures anywhere in a JSON value, except in extras: the integer "index" of each object
/// whose key is "texture" or ends with "Texture". A reference whose new index is negative is removed. Takes values of
/// any depth, and linear time apart from the calls of `renumber`.
void RenumberTextures(Json& value, const Renumber& renumber);

/// Renumbers the references to materials and variants in the "KHR_materials_variants" extension of a primitive.
/// @param primitive  an object that may have extensions
void RenumberVariants(Json& primitive, const Renumber& material, const Renumber& variant);

/// Renumbers a JSON pointer of "KHR_animation_pointer": `renumber` gets the name of the list, as "materials" or
/// "lights", and the index in it. Pointers without an index are returned unchanged.
std::string RenumberPointer(const std::string& pointer,
                            const std::function<int(const std::string& list, int index)>& renumber);

}  // namespace Sceneprep
