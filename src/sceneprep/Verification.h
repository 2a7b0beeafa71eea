#pragma once

#include <sceneprep/Options.h>
#include <sceneprep/compare/Appearance.h>
#include <sceneprep/compare/Compare.h>
#include <sceneprep/compare/Verdict.h>
#include <sceneprep/import/LoadInputs.h>
#include <sceneprep/run/Progress.h>

#include <filesystem>

namespace Sceneprep
{

/// Reads a file, as an input.
/// @throws ToolError if the file cannot be read.
Model ReadBack(const std::filesystem::path& file, Progress& progress);

/// Compares the file that `prepare` writes with its input. Steps that change something on purpose make no difference:
/// what they change is not compared.
class Verification
{
public:
    explicit Verification(const PrepareCommand& command);

    /// Records what the inputs show, before any step.
    void RecordInput(const Inputs& inputs);

    /// Returns whether CheckFile() reads files of the output's format.
    bool ReadsOutput() const { return verdict_.isVerified; }

    /// Measures a model that is about to be written to a file that is not read back.
    void MeasureOutput(const Model& model);

    /// Adds the size of the output: of the file and everything in its folder.
    void AddFileSize(const std::filesystem::path& file);

    /// Reads the written file and compares it.
    /// @param file  complete, with its companions, in a folder that has nothing else
    void CheckFile(const std::filesystem::path& file, Progress& progress);

    const ViewerCounts& Before() const { return before_; }
    const ViewerCounts& After() const { return after_; }
    Verdict& Result() { return verdict_; }

private:
    AppearanceOptions RecordingOptions() const;
    void SetCounts(const ViewerCounts& counts);

    const PrepareCommand& command_;
    CompareOptions options_;
    Appearance appearance_;
    ViewerCounts before_;
    ViewerCounts after_;
    Verdict verdict_;
};

/// Compares two files. The first one is the one that is expected.
Verdict CompareFiles(const Appearance& before, const Appearance& after);

}  // namespace Sceneprep
