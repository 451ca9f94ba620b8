#pragma once

#include "result.h"
#include "startup.h"
#include "tool_sheet.h"

#include <optional>
#include <span>
#include <string>

namespace qor::cli {

// Exit status of a wrong command line (EX_USAGE of sysexits.h).
inline constexpr int ExitUsage = 64;

enum class CommandKind
{
    Help,
    Check,
    Dump,
    Normalize,
    CatalogueCheck,
    Render,
    Sheet,
    ExportCsv,
    ImportCsv,
    Diff
};

enum class ImageFormat
{
    Png,
    Svg
};

// What render draws and where (-o is the picture, or the folder for --all).
struct RenderOptions
{
    std::optional<int> magazine; // --slot N, 1-based as in the file
    bool all = false;            // every position that holds a tool
    bool fixedScale = false;     // true size instead of fitted to the picture
    int width = 800;             // pixels
    int height = 600;
    ImageFormat format = ImageFormat::Png; // --format, else the name of OUT (--slot)

    bool operator==(const RenderOptions &) const = default;
};

// A command line that makes sense: one command, its file and the options.
struct Invocation
{
    CommandKind command = CommandKind::Help;
    std::string file;
    std::optional<std::string> output; // normalize, render, sheet, export-csv and import-csv -o
    bool overwrite = false;            // normalize, import-csv: OUT may be a file not read
    StartupOverrides overrides;        // --catalogue, --magazine-max
    RenderOptions render;
    PaperSize paper = PaperSize::A4; // sheet --paper
    std::string secondFile;          // diff: the table compared with `file`

    bool operator==(const Invocation &other) const
    {
        return command == other.command && file == other.file && output == other.output &&
               overwrite == other.overwrite && overrides.catalogue == other.overrides.catalogue &&
               overrides.magazineMax == other.overrides.magazineMax && render == other.render &&
               paper == other.paper && secondFile == other.secondFile;
    }
};

// Parses the arguments after the program name. Options may stand before or
// after the file names; "--" ends the options. "-h" or "--help" anywhere
// gives Help. Fails with a one-sentence description (no program name, no
// hint) of the first thing that is wrong.
Result<Invocation> ParseArguments(std::span<const std::string> args);

// The single line printed for a wrong command line.
std::string UsageErrorLine(const Error &error);

// The text of --help.
const char *HelpText();

} // namespace qor::cli
