#include <sceneprep/run/PluginLibrary.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sceneprep/TestFiles.h>
#include <sceneprep/run/Error.h>

#include <filesystem>
#include <fstream>
#include <typeinfo>

namespace
{

using namespace Sceneprep;
using testing::HasSubstr;

std::string Fake(const std::string& kind)
{
    return std::filesystem::path(SCENEPREP_FAKE_PLUGINS) / ("libFake" + kind + ".so");
}

std::string LoadingError(const std::string& file)
{
    try
    {
        PluginLibrary plugin(file);
        plugin.CreateScene();
    }
    catch (const ToolError& error)
    {
        return error.what();
    }
    return "no error";
}

TEST(PluginLibrary, CreatesEmptyScenes)
{
    const PluginLibrary plugin(SCENEPREP_PLUGIN);
    const std::unique_ptr<Importing::SceneContainer> scene = plugin.CreateScene();
    const Importing::SceneContainer& created = *scene;
    EXPECT_EQ(typeid(created), typeid(Importing::SceneContainer));
    EXPECT_STREQ(scene->GetChannelName(), "SceneContainer");
    EXPECT_EQ(scene->GetRootNodeIndex(), -1);
    EXPECT_NE(plugin.CreateScene().get(), scene.get());
}

TEST(PluginLibrary, FindsThePluginNextToTheProgram)
{
    EXPECT_TRUE(std::filesystem::equivalent(PluginLibrary::FindDefault(), SCENEPREP_PLUGIN));
}

TEST(PluginLibrary, AMissingFileIsOneLineThatSaysWhatToDo)
{
    const std::string error = LoadingError("no/such.so");
    EXPECT_THAT(error, testing::StartsWith("cannot load the plug-in ("));
    EXPECT_THAT(error, HasSubstr("no/such.so"));
    EXPECT_THAT(error, testing::EndsWith("; name another one with --plugin"));
    EXPECT_THAT(error, Not(HasSubstr("\n")));
}

TEST(PluginLibrary, AFileThatIsNotALibraryIsRefused)
{
    const SceneprepTests::TemporaryFolder folder;
    const std::string file = folder.Write("text.so", "no library").string();
    EXPECT_THAT(LoadingError(file), testing::StartsWith("cannot load the plug-in (" + file));
}

TEST(PluginLibrary, AnEntryPointThatIsMissingIsNamed)
{
    EXPECT_EQ(LoadingError(Fake("NoInit")),
              Fake("NoInit") + " is not a plug-in: it has no entry point InitDLL; name another one with --plugin");
}

TEST(PluginLibrary, AnotherChannelTypeIsRefused)
{
    EXPECT_EQ(LoadingError(Fake("OtherName")),
              Fake("OtherName") +
                  " contributes the channel type 'SomethingElse', not 'SceneContainer'; name another "
                  "plug-in with --plugin");
}

TEST(PluginLibrary, IdentifiersThatDifferAreRefused)
{
    EXPECT_EQ(LoadingError(Fake("OtherId")), Fake("OtherId") +
                                                 " contributes another kind of 'SceneContainer': the type "
                                                 "identifiers differ; name another plug-in with --plugin");
}

TEST(PluginLibrary, NoTypeRecordIsRefused)
{
    EXPECT_EQ(LoadingError(Fake("NoType")),
              Fake("NoType") + " does not report its channel type; name another plug-in with --plugin");
}

TEST(PluginLibrary, ReportsThatAllocatingASceneFailed)
{
    EXPECT_EQ(LoadingError(Fake("NoMemory")), Fake("NoMemory") + " has no memory for a scene; free some and try again");
}

}  // namespace
