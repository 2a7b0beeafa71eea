#pragma once

#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/StepListener.h>
#include <support/SceneText.h>

#include <string>
#include <vector>

namespace PipelineTests
{

/// A scene with its supplement, as steps take it.
struct TestScene
{
    explicit TestScene(const std::string& text) : container(Support::Scene(text)) {}
    explicit TestScene(Importing::SceneContainer scene) : container(std::move(scene)) {}

    operator Pipeline::WorkScene() { return {container, supplement}; }

    Importing::SceneContainer container;
    Pipeline::SceneSupplement supplement = {};
};

/// Returns a scene with one mesh that two surfaces share. A step that changes meshes must change it once.
inline TestScene SceneOf(const Importing::Geometry& mesh)
{
    TestScene scene("Root( A[a=m] B[b=m] )");
    scene.container.GeometryLibrary[0] = mesh;
    return scene;
}

/// Records all calls.
class RecordingListener : public Pipeline::StepListener
{
public:
    void Begin(const std::string& step) override { lines.push_back("begin " + step); }
    void Update(double part) override { parts.push_back(part); }
    void Finish(double /*milliseconds*/) override { lines.emplace_back("finish"); }

    std::vector<std::string> lines;
    std::vector<double> parts;
};

}  // namespace PipelineTests
