#include <sceneprep/Commands.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/run/Error.h>

#include <sstream>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using namespace SceneprepTests;
using testing::HasSubstr;

class CommandsTest : public testing::Test
{
protected:
    CommandsTest() { options_.plugin = SCENEPREP_PLUGIN; }

    int Run() { return RunCommand(options_, {.out = out_, .errors = errors_, .state = state_}); }

    TemporaryFolder folder_;
    Options options_;
    std::ostringstream out_;
    std::ostringstream errors_;
    WorkState state_;
};

TEST_F(CommandsTest, PreparePrintsBothTablesAndWritesTheOutput)
{
    options_.command = Command::Prepare;
    options_.prepare.inputs = {WriteSmallObj(folder_)};
    options_.prepare.output = folder_ / "flat.glb";
    options_.prepare.steps.flatten = true;
    EXPECT_EQ(Run(), kDone) << errors_.str();
    EXPECT_THAT(out_.str(), HasSubstr("                  before       after\n"));
    EXPECT_THAT(out_.str(), HasSubstr("triangles              3           3\n"));
    EXPECT_THAT(out_.str(), HasSubstr("\nFlatten "));
    EXPECT_THAT(out_.str(), HasSubstr("  Flatten node finished : "));
    EXPECT_EQ(ReadText(folder_ / "flat.glb").substr(0, 4), "glTF");
}

TEST_F(CommandsTest, WithoutFlattenTheHierarchyStays)
{
    options_.command = Command::Prepare;
    options_.prepare.inputs = {WriteSmallObj(folder_)};
    options_.prepare.output = folder_ / "same.glb";
    EXPECT_EQ(Run(), kDone) << errors_.str();
    EXPECT_THAT(out_.str(), HasSubstr("nodes                  4           4\n"));
    EXPECT_THAT(out_.str(), Not(HasSubstr("Flatten")));
}

TEST_F(CommandsTest, AMissingInputIsOneLineAndNothingElse)
{
    options_.command = Command::Inspect;
    options_.inspect.input = "no/such.obj";
    EXPECT_EQ(Run(), kUnusable);
    EXPECT_EQ(errors_.str(), "sceneprep: cannot read no/such.obj: there is no such file; check the path\n");
    EXPECT_EQ(out_.str(), "");
}

TEST_F(CommandsTest, AMissingOutputFolderIsReportedBeforeTheWork)
{
    options_.command = Command::Prepare;
    options_.prepare.inputs = {WriteSmallObj(folder_)};
    options_.prepare.output = folder_ / "no/such.obj";
    EXPECT_EQ(Run(), kUnusable);
    EXPECT_EQ(errors_.str(), "sceneprep: cannot write " + (folder_ / "no/such.obj").string() + ": there is no folder " +
                                 (folder_ / "no").string() + "; create it first\n");
}

TEST_F(CommandsTest, FormatsNeedNoPlugin)
{
    options_.command = Command::Formats;
    options_.plugin = "no/such.so";
    EXPECT_EQ(Run(), kDone);
    EXPECT_THAT(out_.str(), HasSubstr("  .glb "));
}

TEST_F(CommandsTest, ResultsThatCannotBeWrittenAreAnError)
{
    options_.command = Command::Formats;
    out_.setstate(std::ios::badbit);
    EXPECT_EQ(Run(), kUnusable);
    EXPECT_EQ(errors_.str(), "sceneprep: cannot write the results to stdout; is its disk full, or is it closed?\n");
}

TEST_F(CommandsTest, NamesThatAreTooLongAreReportedBeforeTheWork)
{
    const std::string name(300, 'n');
    options_.command = Command::Prepare;
    options_.prepare.inputs = {WriteSmallObj(folder_)};
    options_.prepare.output = folder_ / (name + ".obj");
    EXPECT_EQ(Run(), kUnusable);
    EXPECT_THAT(errors_.str(), testing::MatchesRegex("sceneprep: cannot write [^\n]*: File name too long; choose "
                                                     "another name\n"));
    errors_.str("");
    options_.prepare.inputs = {folder_ / (name + ".obj")};
    EXPECT_EQ(Run(), kUnusable);
    EXPECT_THAT(errors_.str(),
                testing::MatchesRegex("sceneprep: cannot read [^\n]*: File name too long; check the path\n"));
}

TEST_F(CommandsTest, AnErrorIsOneLineForAnyFileName)
{
    options_.command = Command::Inspect;
    options_.inspect.input = "no\nsuch.obj";
    EXPECT_EQ(Run(), kUnusable);
    EXPECT_EQ(errors_.str(), "sceneprep: cannot read no such.obj: there is no such file; check the path\n");
}

TEST_F(CommandsTest, QuietPrintsOnlyResultsAndErrors)
{
    options_.command = Command::Prepare;
    options_.quiet = true;
    options_.prepare.inputs = {WriteSmallObj(folder_)};
    options_.prepare.output = folder_ / "same.glb";
    EXPECT_EQ(Run(), kDone);
    EXPECT_EQ(errors_.str(), "");
    EXPECT_NE(out_.str(), "");
    options_.prepare.inputs = {"no/such.obj"};
    EXPECT_EQ(Run(), kUnusable);
    EXPECT_NE(errors_.str(), "");
}

TEST_F(CommandsTest, TheSubjectIsTheInput)
{
    options_.prepare.inputs = {"a.obj", "c.obj"};
    options_.inspect.input = "b.obj";
    options_.command = Command::Prepare;
    EXPECT_EQ(SubjectOf(options_), "a.obj");
    options_.command = Command::Inspect;
    EXPECT_EQ(SubjectOf(options_), "b.obj");
}

}  // namespace
