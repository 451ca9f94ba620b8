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
};

std::optional<std::int16_t> ParseMagazineMax(std::string_view text)
{
    int value = 0;
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || ec != std::errc() || end != text.data() + text.size() || value < 1 ||
        value > 32767) {
        return std::nullopt;
    }
    return static_cast<std::int16_t>(value);
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
    std::vector<std::string> positional;
    std::optional<Error> firstError;
    bool help = false;
    bool optionsEnded = false;

    auto fail = [&firstError](std::string message) {
        if (!firstError) {
            firstError = Error(std::move(message));
        }
    };

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

        // "--name=value" or "--name value" (and "-o value").
        std::string_view name = arg;
        std::optional<std::string> value;
        if (auto equals = name.find('='); name.starts_with("--") && equals != name.npos) {
            value = std::string(name.substr(equals + 1));
            name = name.substr(0, equals);
        }
        const bool known =
            name == "--catalogue" || name == "--magazine-max" || name == "-o" || name == "--output";
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

        if (name == "--catalogue") {
            if (value->empty()) {
                fail("option --catalogue needs a file name");
            }
            invocation.overrides.catalogue = *value;
        } else if (name == "--magazine-max") {
            if (auto count = ParseMagazineMax(*value)) {
                invocation.overrides.magazineMax = count;
            } else {
                fail("--magazine-max takes a whole number from 1 to 32767, not " + Quoted(*value));
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

    if (positional.size() < 2) {
        return Error(commandWord + (invocation.command == CommandKind::CatalogueCheck
                                        ? " needs a catalogue file"
                                        : " needs a tool list file"));
    }
    if (positional.size() > 2) {
        return Error("unexpected argument " + Quoted(positional[2]));
    }
    invocation.file = positional[1];

    if (invocation.output && invocation.command != CommandKind::Normalize) {
        return Error("-o is for normalize only");
    }
    if (invocation.command == CommandKind::CatalogueCheck &&
        (invocation.overrides.catalogue || invocation.overrides.magazineMax)) {
        return Error("catalogue-check takes neither --catalogue nor --magazine-max");
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

Checks, shows and rewrites the tool list files (.TTL) of the tool changer.

Commands:
  check FILE               Read FILE and report the first fault in it.
                           Exit 0 read, 1 no such file, 2 format error
                           (printed as FILE:LINE: what is wrong, then the line).
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
                             ttltool normalize Atc.ttl
                             ttltool normalize Atc.ttl -o Atc_clean.ttl
  catalogue-check FILE     Load FILE as a message catalogue, print its version
                           and each text it leaves empty, one "section key" a
                           line. Exit 0 complete, 1 texts missing, 2 FILE cannot
                           be loaded.
                             ttltool catalogue-check QORTool_de.msg

Options, before or after the file names:
  --catalogue FILE         Take the texts (kind words, file title) from FILE
                           instead of QORTool.msg beside the program.
                             ttltool dump --catalogue QORTool_en.msg Atc.ttl
  --magazine-max N         Use N magazine positions (1 to 32767) instead of
                           "Magazine Max" of QorTool.INI beside the program.
                             ttltool check Atc.ttl --magazine-max 200
  -o, --output OUT         normalize: write to OUT instead of over FILE.
                             ttltool normalize -o Atc_clean.ttl Atc.ttl
  -h, --help               Show this text.
                             ttltool --help
  --                       Everything after it is a file name.
                             ttltool check -- -odd-name.ttl

Options that take a value also accept the form --option=VALUE.
Like the editor, ttltool reads QorTool.INI and QORTool.msg from its own folder
(catalogue-check needs neither). A wrong command line exits with 64.
)";
}

} // namespace qor::cli
