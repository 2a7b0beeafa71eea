#pragma once

#include <memory>
#include <vector>

namespace Sceneprep
{

/// Moves a list of owned records into an array of Assimp's scene; an empty list does not change the array.
template <typename T>
void MoveInto(std::vector<std::unique_ptr<T>>& list, T**& array, unsigned& count)
{
    if (list.empty())
        return;
    array = new T*[list.size()];
    for (std::unique_ptr<T>& entry : list)
        array[count++] = entry.release();
    list.clear();
}

}  // namespace Sceneprep
