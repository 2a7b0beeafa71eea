#include <sceneprep/Verification.h>

#include <fmt/format.h>
#include <sceneprep/assimp/Formats.h>
#include <sceneprep/import/InputFiles.h>
#include <sceneprep/import/OpenModel.h>
#include <sceneprep/run/Error.h>

#include <array>
#include <string>
#include <utility>

namespace Sceneprep
{

namespace
{

namespace fs = std::filesystem;

/// Formats that Assimp writes and does not read.
constexpr std::array<const char*, 4> kUnreadable = {"assxml", "json", "stp", "x3d"};

/// Formats other than glTF have numbers of six digits, or units of their own.
constexpr double kOtherFormats = 2e-5;

std::string WhyNotVerified(const PrepareCommand& command)
{
    if (!command.verify)
        return "--no-verify skips it";
    const std::optional<WriteFormat> format = FindWriteFormat(command.output);
    for (const char* extension : kUnreadable)
    {
        if (format && format->extension == extension)
            return fmt::format("sceneprep cannot read .{} files", extension);
    }
    return {};
}

CompareOptions OptionsFor(const PrepareCommand& command)
{
    const Pipeline::PrepareOptions& steps = command.steps;
    CompareOptions options;
    options.winding = !steps.checkOrientation && !steps.fixCulling;
    options.clips = !steps.ignoreAnimation;
    options.mayAddNormals = true;
    if (IsGltfFile(command.output))
        return options;
    options.materials = options.normals = options.texCoords = options.attributes = false;
    options.linesAndPoints = options.cameras = options.lights = options.clips = false;
    options.relativeTolerance = kOtherFormats;
    return options;
}

/// Returns a problem of reading a file in a temporary folder, with the name that it is going to have.
std::string UnreadableText(std::string problem, const fs::path& file, const fs::path& output)
{
    const std::size_t at = problem.find(file.string());
    if (at != std::string::npos)
        problem.replace(at, file.string().size(), output.string());
    return "the written file is not valid: " + problem;
}

}  // namespace

Model ReadBack(const fs::path& file, Progress& progress)
{
    Model model;
    ConvertModel(OpenModel(file, progress), model, {}, [&progress](double part) { progress.Update(part / 2); });
    return model;
}

Verification::Verification(const PrepareCommand& command) : command_(command), options_(OptionsFor(command))
{
    verdict_.reason = WhyNotVerified(command);
    verdict_.isVerified = verdict_.reason.empty();
}

AppearanceOptions Verification::RecordingOptions() const
{
    AppearanceOptions options;
    options.ignored.normals = command_.steps.normals || command_.steps.unifyNormals;
    for (const Pipeline::UVMapping& mapping : command_.steps.uvs)
        options.ignored.texCoordSets.insert(mapping.set);
    options.countsOnly = !verdict_.isVerified;
    return options;
}

void Verification::RecordInput(const Inputs& inputs)
{
    appearance_ = TakeAppearance(inputs.model, RecordingOptions());
    before_ = appearance_.counts;
    before_.fileBytes = BytesOf(inputs.files);
}

void Verification::MeasureOutput(const Model& model)
{
    SetCounts(TakeAppearance(model, {.countsOnly = true, .isProcessed = true}).counts);
}

/// Sets everything but the size of the file.
void Verification::SetCounts(const ViewerCounts& counts)
{
    const std::uintmax_t fileBytes = after_.fileBytes;
    after_ = counts;
    after_.fileBytes = fileBytes;
}

void Verification::AddFileSize(const fs::path& file)
{
    for (const fs::directory_entry& entry : fs::directory_iterator(file.parent_path()))
        after_.fileBytes += BytesOf({entry.path()});
}

void Verification::CheckFile(const fs::path& file, Progress& progress)
{
    Appearance after;
    try
    {
        AppearanceOptions options = RecordingOptions();
        options.imageFolders = {fs::absolute(command_.output).parent_path()};
        after = TakeAppearance(ReadBack(file, progress), options);
    }
    catch (const ToolError& error)
    {
        verdict_.differences.push_back({"unreadable", "", UnreadableText(error.what(), file, command_.output)});
        return;
    }
    SetCounts(after.counts);
    for (const fs::path& image : after.imageFiles)
    {
        if (image.parent_path() != file.parent_path())
            after_.fileBytes += BytesOf({image});
    }
    progress.Update(0.7);
    verdict_.compared = DescribeComparison(appearance_, options_);
    verdict_.differences = Sceneprep::Compare(appearance_, after, options_);
}

Verdict CompareFiles(const Appearance& before, const Appearance& after)
{
    return {.isVerified = true, .compared = DescribeComparison(before, {}), .differences = Compare(before, after, {})};
}

}  // namespace Sceneprep
