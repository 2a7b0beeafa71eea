#pragma once

#include <sceneprep/model/Json.h>

#include <string>

namespace Sceneprep
{

/// Returns a text that is equal for objects of glTF that mean the same to a viewer: members sorted, numbers with six
/// digits, without names, extras and members that have the default value of the format.
///
/// Known defaults are those of materials, their textures and samplers; other members are compared as they are.
std::string CanonicalText(const Json& object);

}  // namespace Sceneprep
