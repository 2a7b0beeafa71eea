#pragma once

#include <importing/plugin/SceneContainer.h>

#include <typeinfo>

namespace Importing
{

/// Returns whether the object is a SceneContainer and not of a derived class. Then nothing is overridden, and an
/// operation may replace calls through the virtual table by a faster equivalent. Only default bodies of operations use
/// this test, never their callers.
inline bool IsPlain(const SceneContainer& scene) { return typeid(scene) == typeid(SceneContainer); }

}  // namespace Importing
