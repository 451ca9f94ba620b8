#include "arguments.h"

#include <charconv>
#include <string_view>
#include <vector>

namespace qor::cli {

namespace {

struct CommandName
{
    std::string_view name;
    CommandKind kind;
};

constexpr CommandName Commands[] = {
    {"check", CommandKind::Check},
    {"dump", CommandKind::Dump},
    {"normalize", CommandKind::Normalize},
    {"catalogue-check", CommandKind::CatalogueCheck},
    {"render", CommandKind::Render},
    {"sheet", CommandKind::Sheet},
    {"export-csv", CommandKind::ExportCsv},
    {"import-csv", CommandKind::ImportCsv},
    {"diff", CommandKind::Diff},
};

// Larger pictures would only be a way to run out of memory.
constexpr int MaxPictureSide = 8192;

std::optional<int> ParseWhole(std::string_view text, int lowest, int highest)
{
    int value = 0;
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || ec != std::errc() || end != text.data() + text.size() || value < lowest ||
        value > highest) {
        return std::nullopt;
    }
    return value;
}

// "WIDTHxHEIGHT", as in 800x600.
bool ParseSize(std::string_view text, RenderOptions &render)
{
    const auto cross = text.find_first_of("xX");
    if (cross == text.npos) {
        return false;
    }
    const auto width = ParseWhole(text.substr(0, cross), 1, MaxPictureSide);
    const auto height = ParseWhole(text.substr(cross + 1), 1, MaxPictureSide);
    if (!width || !height) {
        return false;
    }
    render.width = *width;
    render.height = *height;
    return true;
}

std::string Lower(std::string_view text)
{
    std::string lower(text);
    for (char &c : lower) {
        c = (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return lower;
}

std::optional<ImageFormat> FormatNamed(std::string_view name)
{
    const std::string lower = Lower(name);
    if (lower == "png") {
        return ImageFormat::Png;
    }
    if (lower == "svg") {
        return ImageFormat::Svg;
    }
    return std::nullopt;
}

std::optional<ImageFormat> FormatOfFileName(std::string_view name)
{
    const auto dot = name.rfind('.');
    const auto slash = name.find_last_of("/\\");
    if (dot == name.npos || (slash != name.npos && dot < slash)) {
        return std::nullopt;
    }
    return FormatNamed(name.substr(dot + 1));
}

std::string Quoted(std::string_view text)
{
    std::string quoted;
    quoted.reserve(text.size() + 2);
    quoted += '\'';
    quoted += text;
    quoted += '\'';
    return quoted;
}

} // namespace

Result<Invocation> ParseArguments(std::span<const std::string> args)
{
    Invocation invocation;
    RenderOptions &render = invocation.render;
    std::vector<std::string> positional;
    std::optional<Error> firstError;
    std::optional<std::string> renderOption; // the first option only render takes
    std::optional<ImageFormat> format;
    bool paperGiven = false;
    bool help = false;
    bool optionsEnded = false;

    auto fail = [&firstError](std::string message) {
        if (!firstError) {
            firstError = Error(std::move(message));
        }
    };
    // No system passes a NUL inside an argument; one would cut a file name
    // short where the system reads it.
    for (const std::string &arg : args) {
        if (arg.find('\0') != std::string::npos) {
            return Error("an argument holds a NUL character.");
        }
    }

    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string &arg = args[i];
        if (optionsEnded || arg.size() < 2 || arg[0] != '-') {
            positional.push_back(arg);
            continue;
        }
        if (arg == "--") {
            optionsEnded = true;
            continue;
        }
        if (arg == "-h" || arg == "--help") {
            help = true;
            continue;
        }
        if (arg == "--overwrite") {
            invocation.overwrite = true;
            continue;
        }
        if (arg == "--all" || arg == "--fixed") {
            (arg == "--all" ? render.all : render.fixedScale) = true;
            renderOption = renderOption.value_or(arg);
            continue;
        }

        // "--name=value" or "--name value" (and "-o value").
        std::string_view name = arg;
        std::optional<std::string> value;
        if (auto equals = name.find('='); name.starts_with("--") && equals != name.npos) {
            value = std::string(name.substr(equals + 1));
            name = name.substr(0, equals);
        }
        const bool forRender = name == "--slot" || name == "--size" || name == "--format";
        const bool known = forRender || name == "--paper" || name == "--catalogue" ||
                           name == "--magazine-max" || name == "-o" || name == "--output";
        if (!known) {
            fail("unknown option " + Quoted(name));
            continue;
        }
        if (!value) {
            if (i + 1 == args.size()) {
                fail("option " + std::string(name) + " needs a value");
                continue;
            }
            value = args[++i];
        }
        if (forRender) {
            renderOption = renderOption.value_or(std::string(name));
        }

        if (name == "--catalogue") {
            if (value->empty()) {
                fail("option --catalogue needs a file name");
            }
            invocation.overrides.catalogue = *value;
        } else if (name == "--magazine-max") {
            if (auto count = ParseWhole(*value, 1, 32767)) {
                invocation.overrides.magazineMax = static_cast<std::int16_t>(*count);
            } else {
                fail("--magazine-max takes a whole number from 1 to 32767, not " + Quoted(*value));
            }
        } else if (name == "--slot") {
            render.magazine = ParseWhole(*value, 1, 32767);
            if (!render.magazine) {
                fail("--slot takes a magazine number from 1 to 32767, not " + Quoted(*value));
            }
        } else if (name == "--size") {
            if (!ParseSize(*value, render)) {
                fail("--size takes WIDTHxHEIGHT in pixels, each from 1 to " +
                     std::to_string(MaxPictureSide) + ", not " + Quoted(*value));
            }
        } else if (name == "--paper") {
            paperGiven = true;
            if (*value == "a4" || *value == "A4") {
                invocation.paper = PaperSize::A4;
            } else if (*value == "letter" || *value == "Letter") {
                invocation.paper = PaperSize::Letter;
            } else {
                fail("--paper takes a4 or letter, not " + Quoted(*value));
            }
        } else if (name == "--format") {
            format = FormatNamed(*value);
            if (!format) {
                fail("--format takes png or svg, not " + Quoted(*value));
            }
        } else {
            if (value->empty()) {
                fail("option " + std::string(name) + " needs a file name");
            }
            invocation.output = *value;
        }
    }

    if (help) {
        return Invocation{};
    }
    if (firstError) {
        return *firstError;
    }
    if (positional.empty()) {
        return Error("no command given");
    }

    const std::string &commandWord = positional[0];
    std::optional<CommandKind> command;
    for (const CommandName &known : Commands) {
        if (commandWord == known.name) {
            command = known.kind;
        }
    }
    if (!command) {
        return Error("unknown command " + Quoted(commandWord));
    }
    invocation.command = *command;

    const bool diff = invocation.command == CommandKind::Diff;
    if (positional.size() < (diff ? 3u : 2u)) {
        switch (invocation.command) {
        case CommandKind::CatalogueCheck:
            return Error(commandWord + " needs a catalogue file");
        case CommandKind::ImportCsv:
            return Error(commandWord + " needs a CSV file");
        case CommandKind::Diff:
            return Error(commandWord + " needs two tool list files");
        default:
            return Error(commandWord + " needs a tool list file");
        }
    }
    if (positional.size() > (diff ? 3u : 2u)) {
        return Error("unexpected argument " + Quoted(positional[diff ? 3 : 2]));
    }
    invocation.file = positional[1];
    if (diff) {
        invocation.secondFile = positional[2];
    }

    const bool rendering = invocation.command == CommandKind::Render;
    const bool sheet = invocation.command == CommandKind::Sheet;
    const bool csv = invocation.command == CommandKind::ExportCsv ||
                     invocation.command == CommandKind::ImportCsv;
    if (invocation.output && invocation.command != CommandKind::Normalize && !rendering && !sheet &&
        !csv) {
        return Error("-o is for normalize, render, sheet, export-csv and import-csv only");
    }
    if (paperGiven && !sheet) {
        return Error("--paper is for sheet only");
    }
    if (sheet && !invocation.output) {
        return Error("sheet needs -o OUT.pdf");
    }
    if (invocation.overwrite && invocation.command != CommandKind::Normalize &&
        invocation.command != CommandKind::ImportCsv) {
        return Error("--overwrite is for normalize and import-csv only");
    }
    if (invocation.command == CommandKind::ImportCsv && !invocation.output) {
        return Error("import-csv needs -o FILE, the tool list file to write");
    }
    if (renderOption && !rendering) {
        return Error(*renderOption + " is for render only");
    }
    if (invocation.command == CommandKind::CatalogueCheck &&
        (invocation.overrides.catalogue || invocation.overrides.magazineMax)) {
        return Error("catalogue-check takes neither --catalogue nor --magazine-max");
    }
    if (rendering) {
        if (render.all == render.magazine.has_value()) {
            return Error(render.all ? "render takes either --slot or --all, not both"
                                    : "render needs --slot N or --all");
        }
        if (!invocation.output) {
            return Error(render.all ? "render --all needs -o FOLDER" : "render needs -o OUT");
        }
        if (!format && render.magazine) {
            format = FormatOfFileName(*invocation.output);
            if (!format) {
                return Error("cannot tell the picture format of " + Quoted(*invocation.output) +
                             ": end it in .png or .svg, or give --format");
            }
        }
        render.format = format.value_or(ImageFormat::Png);
    }
    return invocation;
}

std::string UsageErrorLine(const Error &error)
{
    return "ttltool: " + error.message + " (try 'ttltool --help')";
}

const char *HelpText()
{
    return R"(Usage: ttltool COMMAND FILE [OPTIONS]

Checks, shows, rewrites and draws the tool list files (.TTL) of the tool
changer.

Commands:
  check FILE               Read FILE and report the first fault in it.
                           Exit 0 read, 1 no such file, 2 format error
                           (printed as FILE:LINE: what is wrong, then the line).
                           Tools in positions beyond the table are skipped
                           with a warning.
                             ttltool check Atc.ttl
  dump FILE                Print the tool table of FILE as JSON: the initial
                           magazine, the file-level arbor and every position
                           that holds a tool, with all its values.
                           Exit codes as for check.
                             ttltool dump Atc.ttl > atc.json
  normalize FILE [-o OUT]  Read FILE and write it in QORTool's own form, to OUT
                           or over FILE. Overwriting a file that QORTool did not
                           write first keeps it as FILE_org<n>.TTL.
                           Exit codes as for check, 3 when it cannot be written.
                           A file with tools in positions beyond the table
                           (see --magazine-max) is not written, since they
                           would be lost: exit 1. Nothing is written either,
                           exit 4, when OUT is an existing file other than
                           FILE (unless --overwrite), or when FILE changed
                           while it was being normalized.
                             ttltool normalize Atc.ttl
                             ttltool normalize Atc.ttl -o Atc_clean.ttl
  render FILE --slot N -o OUT [--fixed] [--size WxH] [--format png|svg]
                           Draw the tool in magazine position N as the editor
                           shows it, into the picture OUT (PNG or SVG, by
                           --format or OUT's name ending in .png or .svg).
                           Exit codes as for check, 1 also when position N is
                           empty or beyond the table, 3 when OUT cannot be
                           written.
                             ttltool render Atc.ttl --slot 3 -o m3.png
                             ttltool render Atc.ttl --slot 3 --fixed -o m3.svg
  render FILE --all -o FOLDER [--fixed] [--size WxH] [--format png|svg]
                           Draw every tool of FILE into FOLDER (made when
                           missing), one picture a position, named after its
                           magazine number and kind, as MAG03_CUT.png.
                             ttltool render Atc.ttl --all -o pictures
                             ttltool render Atc.ttl --all --format svg -o svg
  sheet FILE -o OUT.pdf [--paper a4|letter]
                           Write the tool sheet of FILE as a PDF for the
                           machine: on every page the file, its date and the
                           page number; a table of every position that holds
                           a tool, then each tool drawn to a stated scale
                           with its values, option feeds and limit. Words in
                           the catalogue's language. Exit codes as for check,
                           3 when OUT cannot be written.
                             ttltool sheet Atc.ttl -o atc-sheet.pdf
                             ttltool sheet Atc.ttl -o sheet.pdf --paper letter
  export-csv FILE [-o CSV] Write the tool table of FILE as CSV for a
                           spreadsheet, to CSV or to the standard output: a
                           header row, a row "FILE" with the initial magazine
                           and the file-level arbor, then one row a tool.
                           Exit codes as for check, 3 when CSV cannot be
                           written.
                             ttltool export-csv Atc.ttl -o atc.csv
  import-csv CSV -o FILE   Read a CSV table (as export-csv writes it, or as a
                           spreadsheet saves it back, also with ";") and write
                           it as the tool list file FILE. The first faulty
                           cell refuses the whole CSV, named by row and
                           column. Exit 0 written, 1 no such CSV, 2 CSV
                           refused, 3 FILE cannot be written, 4 FILE exists
                           and --overwrite was not given.
                             ttltool import-csv atc.csv -o Atc.ttl --overwrite
  diff FILE1 FILE2         List what differs between the tool tables of two
                           files, position by position, as "field: old -> new",
                           and the tools added and removed; comments and the
                           form of the lines do not count. Exit 0 the same,
                           1 different, 2 a file cannot be read or has a
                           format error.
                             ttltool diff Atc_org1.TTL Atc.ttl
  catalogue-check FILE     Load FILE as a message catalogue, print its version
                           and each text it leaves empty, one "section key" a
                           line, and warn of a file title (Str80) with
                           characters that the Code Page of QorTool.INI cannot
                           hold. Exit 0 complete, 1 texts missing, 2 FILE
                           cannot be loaded.
                             ttltool catalogue-check QORTool_de.msg

Options, before or after the file names:
  --catalogue FILE         Take the texts (kind words, file title) from FILE
                           instead of the catalogue beside the program
                           (QORTool.msg, or the one "TEXT FILE" names).
                             ttltool dump --catalogue QORTool_en.msg Atc.ttl
  --magazine-max N         Use N magazine positions (1 to 32767) instead of
                           "Magazine Max" of QorTool.INI beside the program.
                             ttltool check Atc.ttl --magazine-max 200
  -o, --output OUT         normalize: write to OUT instead of over FILE.
                           render: the picture, or the folder for --all.
                           sheet: the PDF.
                           export-csv: the CSV file; import-csv: the tool
                           list file.
                             ttltool normalize -o Atc_clean.ttl Atc.ttl
  --overwrite              normalize, import-csv: replace OUT even when it is
                           an existing file that was not read.
                             ttltool normalize Atc.ttl -o old.ttl --overwrite
  --slot N                 render: the magazine position N (from 1).
  --all                    render: every position that holds a tool.
  --fixed                  render: draw at true size (96 pixels an inch)
                           instead of fitting tool and arbor into the picture;
                           a long arbor then runs off the top.
                             ttltool render Atc.ttl --slot 1 --fixed -o a.png
  --size WxH               render: the picture's size in pixels (default
                           800x600, each side at most 8192).
                             ttltool render a.ttl --all --size 400x300 -o small
  --format png|svg         render: the picture format; for --slot the name of
                           OUT decides when this is not given, for --all png.
  --paper a4|letter        sheet: the paper size (default a4), portrait.
  -h, --help               Show this text.
                             ttltool --help
  --                       Everything after it is a file name.
                             ttltool check -- -odd-name.ttl

Options that take a value also accept the form --option=VALUE.
Like the editor, ttltool reads QorTool.INI and the catalogue from its own folder
(catalogue-check needs neither). A wrong command line exits with 64, and so
do render and sheet in a ttltool built without Qt. Without a display, render
and sheet draw on Qt's offscreen platform unless QT_QPA_PLATFORM says otherwise.
)";
}

} // namespace qor::cli
