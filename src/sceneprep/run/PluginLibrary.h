#pragma once

#include <importing/plugin/SceneContainer.h>

#include <filesystem>
#include <memory>

namespace Sceneprep
{

/// The plug-in, loaded at run time through its two entry points, as the host engine loads it.
class PluginLibrary
{
public:
    /// Loads the library and checks that it contributes the channel type SceneContainer: the name, and both
    /// identifiers.
    /// @throws ToolError if it cannot be loaded, lacks an entry point or contributes another type.
    /// @throws std::bad_alloc if there is no memory for it.
    explicit PluginLibrary(const std::filesystem::path& file);

    /// Unloads the library. The scenes that it created must have been destroyed.
    ~PluginLibrary();
    PluginLibrary(const PluginLibrary&) = delete;
    PluginLibrary& operator=(const PluginLibrary&) = delete;

    /// Returns a new, empty scene, which is destroyed through its virtual destructor.
    /// @throws ToolError if the plug-in has no memory for one.
    std::unique_ptr<Importing::SceneContainer> CreateScene() const;

    /// Returns the plug-in in the folder of this program, or else in the library folders next to that folder.
    /// @throws ToolError if it is in none of them.
    static std::filesystem::path FindDefault();

private:
    using CreateChannel = Vyk_Channel* (*)();

    void* EntryPoint(const char* name) const;
    void CheckType() const;

    std::filesystem::path file_;
    std::unique_ptr<void, int (*)(void*)> handle_;
    CreateChannel createChannel_ = nullptr;
};

}  // namespace Sceneprep
