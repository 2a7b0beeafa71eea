#pragma once

#include <assimp/material.h>

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace Sceneprep
{

/// Counts materials with features that the scene container cannot hold.
class MaterialLosses
{
public:
    void Count(const aiMaterial& material);

    /// Returns one note for each kind of lost feature.
    std::vector<std::string> Notes() const;

    static constexpr std::size_t kKinds = 6;

private:
    std::array<std::size_t, kKinds> counts_ = {};
};

}  // namespace Sceneprep
