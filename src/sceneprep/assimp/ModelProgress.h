#pragma once

#include <sceneprep/run/Progress.h>
#include <assimp/ProgressHandler.hpp>

namespace Sceneprep
{

/// Forwards Assimp's progress to a Progress.
class ModelProgress : public Assimp::ProgressHandler
{
public:
    explicit ModelProgress(Progress& progress) : progress_(progress) {}

    /// Assimp reports a negative value when it does not know its progress.
    bool Update(float part) override
    {
        if (part >= 0)
            progress_.Update(static_cast<double>(part));
        return true;
    }

private:
    Progress& progress_;
};

}  // namespace Sceneprep
