#include <sceneprep/CommandLine.h>

#include <fmt/format.h>
#include <pipeline/steps/Steps.h>
#include <sceneprep/assimp/Formats.h>

#include <charconv>
#include <limits>
#include <string>
#include <vector>

namespace Sceneprep
{

namespace
{

std::string CheckOutput(const std::string& output)
{
    if (FindWriteFormat(output))
        return {};
    return fmt::format("unsupported file extension '{}'; 'sceneprep formats' lists the supported ones",
                       std::filesystem::path(output).extension().string());
}

/// Returns whether a text is a number above 0 and below a limit.
bool IsPositive(const std::string& text, double limit)
{
    double number = 0;
    const char* end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && read == end && number > 0 && number < limit;
}

std::string CheckMemory(const std::string& text)
{
    return IsPositive(text, 1e6) ? std::string() : fmt::format("'{}' is not a positive number of GiB", text);
}

std::string CheckSize(const std::string& text)
{
    return IsPositive(text, std::numeric_limits<double>::infinity())
               ? std::string()
               : fmt::format("'{}' is not a positive number", text);
}

std::string CheckGrowth(const std::string& text)
{
    double factor = 0;
    const char* end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, factor);
    if (error == std::errc() && read == end && factor > 0 && factor < 1e9)
        return {};
    return fmt::format("'{}' is not a positive number", text);
}

void AddCommonOptions(CLI::App& command, Options& options)
{
    command.add_flag("--quiet", options.quiet, "Suppress progress and notes");
    command
        .add_option("--memory-limit", options.memoryLimit,
                    "Memory that the program may use, in GiB (default: three quarters of the machine's)")
        ->type_name("GIB")
        ->check(CLI::Validator(CheckMemory, ""));
    command.add_flag_callback(
        "--no-isolation", [&options] { options.isIsolated = false; },
        "Do all work in one process, without a memory limit, for a debugger");
    command.add_option("--plugin", options.plugin, "Plug-in to load (default: the one installed with sceneprep)")
        ->type_name("PATH");
}

void AddScene(CLI::App& command, std::optional<std::string>& scene)
{
    command
        .add_option("--scene", scene,
                    "Scene to read from a glTF file, by its name or its index (default: the file's default scene)")
        ->type_name("NAME|N");
}

std::string RecommendedOptions()
{
    std::string options;
    for (const Pipeline::Step& step : Pipeline::Steps())
    {
        if (step.isRecommended && *step.option != '\0')
            options += fmt::format("{}{}", options.empty() ? "" : " ", step.option);
    }
    return options;
}

void AddStep(CLI::App& command, const Pipeline::Step& step, Pipeline::PrepareOptions& options)
{
    if (*step.option == '\0')
        return;
    if (step.flag != nullptr)
    {
        command.add_flag(step.option, options.*step.flag, step.help)->group(kStepGroup);
        return;
    }
    command
        .add_option_function<std::vector<std::string>>(
            step.option,
            [&step, &options](const std::vector<std::string>& values) {
                for (const std::string& value : values)
                {
                    if (const std::string problem = step.setValue(options, value); !problem.empty())
                        throw CLI::ValidationError(step.option, problem);
                }
            },
            step.help)
        ->type_name(step.value)
        ->allow_extra_args(false)
        ->group(kStepGroup);
}

void AddSetting(CLI::App& command, const Pipeline::StepSetting& setting, Pipeline::PrepareOptions& options)
{
    if (setting.flag != nullptr)
        command.add_flag(setting.option, options.*setting.flag, setting.help)->group(kStepGroup);
    else if (setting.names != nullptr)
        command.add_option(setting.option, options.*setting.names, setting.help)
            ->type_name(setting.value)
            ->allow_extra_args(false)
            ->group(kStepGroup);
    else if (setting.size != nullptr)
        command.add_option(setting.option, options.*setting.size, setting.help)
            ->type_name(setting.value)
            ->check(CLI::Validator(CheckSize, ""))
            ->group(kStepGroup);
    else
        command.add_option(setting.option, options.*setting.number, setting.help)
            ->type_name(setting.value)
            ->capture_default_str()
            ->group(kStepGroup);
}

/// Adds an option for each recommended step that omits it from --all. The help shows them once, at --all.
void AddOmissions(CLI::App& command, Pipeline::PrepareOptions& options)
{
    for (const Pipeline::Step& step : Pipeline::Steps())
    {
        if (!step.isRecommended)
            continue;
        command
            .add_flag_callback(
                OmissionOf(step), [&step, &options] { options.*step.flag = false; },
                fmt::format("Omit {} from --all", step.option))
            ->group("");
    }
}

void AddSteps(CLI::App& command, Pipeline::PrepareOptions& options)
{
    command
        .add_flag_callback(
            "--all",
            [&options] {
                for (const Pipeline::Step& step : Pipeline::Steps())
                {
                    if (step.isRecommended)
                        options.*step.flag = true;
                }
            },
            "Run the recommended steps: " + RecommendedOptions() + "; --no-STEP omits one, as --no-weld")
        ->group(kStepGroup);
    for (const Pipeline::Step& step : Pipeline::Steps())
    {
        AddStep(command, step, options);
        for (const Pipeline::StepSetting& setting : Pipeline::StepSettings())
        {
            if (std::string_view(setting.step) == step.option)
                AddSetting(command, setting, options);
        }
    }
    AddOmissions(command, options);
}

void AddBudget(CLI::App& command, std::vector<BudgetLimit>& budget)
{
    command
        .add_option_function<std::vector<std::string>>(
            "--budget",
            [&budget](const std::vector<std::string>& texts) {
                for (const std::string& text : texts)
                {
                    if (const std::string problem = AddLimits(text, budget); !problem.empty())
                        throw CLI::ValidationError("--budget", problem);
                }
            },
            "Limits for the result, as draws=50,vertices=200k,bytes=5M; the exit status is 3 if it exceeds one. Names: "
            "draws, triangles, vertices, nodes, materials, textures, bytes")
        ->type_name("NAME=N,...")
        ->allow_extra_args(false)
        ->group(kVerificationGroup);
}

void AddChecks(CLI::App& command, PrepareCommand& prepare)
{
    command
        .add_flag("--strict", prepare.strict,
                  "Write nothing if the result differs from the input, or if anything of the input is lost")
        ->group(kVerificationGroup);
    command.add_option("--allow-loss", prepare.allowedLosses, "Loss that --strict accepts, by the name in the report")
        ->type_name("NAME")
        ->allow_extra_args(false)
        ->group(kVerificationGroup);
    command
        .add_flag_callback(
            "--no-verify", [&prepare] { prepare.verify = false; },
            "Do not read the written file back to compare it with the input")
        ->group(kVerificationGroup);
    command
        .add_option("--max-growth", prepare.maxGrowth,
                    "Write nothing if the file, or its vertices and indices, are more than X times as large as before")
        ->type_name("X")
        ->check(CLI::Validator(CheckGrowth, ""))
        ->group(kVerificationGroup);
    AddBudget(command, prepare.budget);
}

void AddReports(CLI::App& command, PrepareCommand& prepare)
{
    command
        .add_option("--json", prepare.jsonFile, "Write the report as JSON to FILE; - is stdout, instead of the text")
        ->type_name("FILE")
        ->group(kVerificationGroup);
    command
        .add_option("--report", prepare.reportFile,
                    "Write an HTML report to FILE: numbers, and views of the scene before and after")
        ->type_name("FILE")
        ->group(kVerificationGroup);
    command
        .add_option("--depfile", prepare.depfile,
                    "Write the names of the files that the inputs refer to into FILE, for Make or Ninja")
        ->type_name("FILE")
        ->group(kVerificationGroup);
}

void AddPrepare(CLI::App& app, Options& options)
{
    PrepareCommand& prepare = options.prepare;
    CLI::App* command = app.add_subcommand("prepare", "Import models, run the chosen steps, export the result");
    command->callback([&options] { options.command = Command::Prepare; });
    command->add_option("INPUT", prepare.inputs, "Model file to read; further ones are appended to the first")
        ->required()
        ->type_name("");
    command
        ->add_option("-o,--output", prepare.output,
                     "Output file, required except for --dry-run; the extension selects the format")
        ->type_name("OUTPUT")
        ->check(CLI::Validator(CheckOutput, ""));
    command->add_flag("--in-place", prepare.inPlace, "Allow the output to be an input, which it replaces");
    command->add_flag("--dry-run", prepare.dryRun, "Do everything except for writing the output");
    AddScene(*command, prepare.scene);
    command->add_flag("--external-textures", prepare.externalTextures,
                      "Refer to the original texture files instead of copying or embedding them");
    command->add_flag("--gpu-instancing", prepare.gpuInstancing,
                      "Write nodes that share a mesh as EXT_mesh_gpu_instancing; for glTF output");
    command->add_flag("--keep-going", prepare.keepGoing, "Skip inputs that cannot be read; the exit status is then 1");
    AddCommonOptions(*command, options);
    AddSteps(*command, prepare.steps);
    AddChecks(*command, prepare);
    AddReports(*command, prepare);
}

void AddInspect(CLI::App& app, Options& options)
{
    InspectOptions& inspect = options.inspect;
    CLI::App* command = app.add_subcommand("inspect", "Print the contents of a model");
    command->callback([&options] { options.command = Command::Inspect; });
    command->add_option("INPUT", inspect.input, "Model file to read")->required()->type_name("");
    AddScene(*command, inspect.scene);
    command->add_flag("--json", inspect.json, "Print JSON instead of a table");
    command->add_flag("--tree", inspect.tree, "Print the node hierarchy, too");
    AddBudget(*command, inspect.budget);
    AddCommonOptions(*command, options);
}

void AddCompare(CLI::App& app, Options& options)
{
    CompareCommand& compare = options.compare;
    CLI::App* command =
        app.add_subcommand("compare", "Compare what two models show; the exit status is 1 if they differ");
    command->callback([&options] { options.command = Command::Compare; });
    command->add_option("FILE", compare.files, "The expected model, and the model to check")
        ->required()
        ->expected(2)
        ->type_name("");
    command
        ->add_option("--json", compare.jsonFile, "Write the result as JSON to FILE; - is stdout, instead of the text")
        ->type_name("FILE");
    AddCommonOptions(*command, options);
}

std::string CheckFormat(const std::string& format)
{
    return format == "glb" || format == "gltf" ? "" : fmt::format("'{}' is not a format; use glb or gltf", format);
}

/// The options of `prepare` go to `options.prepare`, to be checked; every model gets them as they are given.
void AddBatch(CLI::App& app, Options& options)
{
    Batch::BatchCommand& batch = options.batch;
    CLI::App* command = app.add_subcommand("batch", "Prepare all models of a folder with Ninja");
    command->callback([&options] { options.command = Command::Batch; });
    command->add_option("DIR", batch.folder, "Folder with model files, also in subfolders")->required()->type_name("");
    command->add_option("-o,--output", batch.output, "Folder for the outputs, the reports and index.json")
        ->required()
        ->type_name("OUT");
    command->add_option("--format", batch.format, "Format of the outputs: glb or gltf")
        ->type_name("FORMAT")
        ->capture_default_str()
        ->check(CLI::Validator(CheckFormat, ""));
    command->add_option("-j,--jobs", batch.jobs, "Prepare N models at a time (default: chosen by Ninja)")
        ->type_name("N")
        ->check(CLI::Range(1, 10000));
    command->add_flag("--print", batch.print, "Print the Ninja file, and do nothing else");
    command->add_flag("--collect", batch.collect,
                      "Print the table and write index.json for the last run, without a run");
    command->add_flag("--external-textures", options.prepare.externalTextures,
                      "Refer to the original texture files instead of copying or embedding them");
    AddCommonOptions(*command, options);
    AddSteps(*command, options.prepare.steps);
    AddChecks(*command, options.prepare);
}

void AddPrintDocs(CLI::App& app, Options& options)
{
    CLI::App* command = app.add_subcommand("print-docs", "Print a text that is generated from the tables");
    command->callback([&options] { options.command = Command::PrintDocs; });
    command->group("");  // not in the help
    command->add_option("KIND", options.docs, "The text to print")->required()->type_name("");
}

}  // namespace

std::string OmissionOf(const Pipeline::Step& step) { return fmt::format("--no-{}", step.option + 2); }

std::unique_ptr<CLI::App> DescribeCommandLine(Options& options)
{
    auto app = std::make_unique<CLI::App>("Prepares 3D scenes for real time.", "sceneprep");
    app->set_version_flag("--version", "sceneprep " SCENEPREP_VERSION);
    app->require_subcommand(1);
    AddPrepare(*app, options);
    AddInspect(*app, options);
    AddCompare(*app, options);
    AddBatch(*app, options);
    app->add_subcommand("formats", "List the formats that can be read and written")->callback([&options] {
        options.command = Command::Formats;
    });
    AddPrintDocs(*app, options);
    return app;
}

}  // namespace Sceneprep
