#pragma once

#include <sceneprep/run/Progress.h>
#include <assimp/ProgressHandler.hpp>

namespace Sceneprep
{

/// Hands on how far the model library has come.
class ModelProgress : public Assimp::ProgressHandler
{
public:
    explicit ModelProgress(Progress& progress) : progress_(progress) {}

    /// A negative part is "no idea".
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
