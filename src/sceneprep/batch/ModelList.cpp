#include <sceneprep/batch/ModelList.h>

#include <fmt/format.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/PlaceFiles.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <system_error>

namespace Sceneprep::Batch
{

namespace
{

namespace fs = std::filesystem;

std::string LowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

bool HasExtension(const fs::path& file, const std::vector<std::string>& extensions)
{
    const std::string extension = LowerCase(file.extension().string());
    return !extension.empty() &&
           std::find(extensions.begin(), extensions.end(), extension.substr(1)) != extensions.end();
}

}  // namespace

std::vector<fs::path> FindModels(const fs::path& folder, const fs::path& skipped,
                                 const std::vector<std::string>& extensions)
{
    std::vector<fs::path> models;
    std::error_code error;
    auto entry = fs::recursive_directory_iterator(folder, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error))
    {
        std::error_code ignored;
        if (entry->is_directory(ignored) && NameOneFile(entry->path(), skipped))
            entry.disable_recursion_pending();
        else if (entry->is_regular_file(ignored) && HasExtension(entry->path(), extensions))
            models.push_back(entry->path().lexically_relative(folder));
    }
    if (error)
        throw ToolError(
            fmt::format("cannot search {}: {}; name a folder that can be read", folder.string(), error.message()));
    std::sort(models.begin(), models.end());
    return models;
}

std::vector<ModelFile> NameOutputs(const std::vector<fs::path>& inputs, const std::string& format)
{
    const auto shortName = [&](const fs::path& input) { return fs::path(input).replace_extension(format); };
    const auto longName = [&](const fs::path& input) { return fs::path(input) += '.' + format; };
    std::map<std::string, int> uses;
    for (const fs::path& input : inputs)
    {
        ++uses[LowerCase(shortName(input).string())];
        ++uses[LowerCase(longName(input).string())];  // as the short name of a file "a.obj.fbx"
    }
    std::vector<ModelFile> files;
    for (const fs::path& input : inputs)
    {
        const bool isUnique = uses[LowerCase(shortName(input).string())] == 1;
        files.push_back({input, isUnique ? shortName(input) : longName(input)});
    }
    return files;
}

}  // namespace Sceneprep::Batch
