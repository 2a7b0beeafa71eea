#pragma once

#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/StepListener.h>
#include <support/SceneText.h>

#include <string>
#include <vector>

namespace PipelineTests
{

/// A scene with what the host knows about it, as steps take it.
struct TestScene
{
    explicit TestScene(const std::string& text) : container(Support::Scene(text)) {}
    explicit TestScene(Importing::SceneContainer scene) : container(std::move(scene)) {}

    operator Pipeline::WorkScene() { return {container, supplement}; }

    Importing::SceneContainer container;
    Pipeline::SceneSupplement supplement = {};
};

/// Writes down what it is told.
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
