#pragma once

#include <assimp/material.h>

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace Sceneprep
{

/// Counts the materials that are more than a scene can hold.
class MaterialLosses
{
public:
    void Count(const aiMaterial& material);

    /// @return what gets lost, one line each.
    std::vector<std::string> Notes() const;

    static constexpr std::size_t kKinds = 6;

private:
    std::array<std::size_t, kKinds> counts_ = {};
};

}  // namespace Sceneprep
