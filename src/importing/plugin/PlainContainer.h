#pragma once

#include <importing/plugin/SceneContainer.h>

#include <typeinfo>

namespace Importing
{

/// True when nothing can be overridden: then an operation may stand in for the calls that it would make through the
/// virtual table. Asked inside the default bodies of operations only, never where they are called.
inline bool IsPlain(const SceneContainer& scene) { return typeid(scene) == typeid(SceneContainer); }

}  // namespace Importing
