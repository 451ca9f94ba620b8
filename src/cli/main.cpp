// ttltool: checks, shows, rewrites and draws tool list files from the command line.
#include "arguments.h"
#include "commands.h"
#include "executable_dir.h"
#include "settings_folder.h"
#ifdef QOR_TTLTOOL_RENDERS
#include "qt_picture_writer.h"
#endif

#include <iostream>
#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif
#include <string>
#include <vector>

int main(int argc, char **argv)
{
#ifdef _WIN32
    // The same bytes on every system: the C runtime adds no CR before each
    // line feed, so that a dump or a report compares equal across systems.
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
#endif
    const std::vector<std::string> args = qor::cli::ProgramArguments(argc, argv);
    auto parsed = qor::cli::ParseArguments(args);
    if (!parsed) {
        std::cerr << qor::cli::UsageErrorLine(parsed.error()) << '\n';
        return qor::cli::ExitUsage;
    }
    // The same settings as the windows' program: beside the executable, or in
    // the user's own folder when the program is installed.
    parsed.value().overrides.userSettingsFolder = qor::UserSettingsFolder("QORTool");
#ifdef QOR_TTLTOOL_RENDERS
    const qor::cli::PictureWriterFactory makeWriter = qor::cli::MakeQtPictureWriter;
#else
    const qor::cli::PictureWriterFactory makeWriter = nullptr;
#endif
    const int status = qor::cli::RunInvocation(
        parsed.value(), qor::cli::ExecutableDir(argc > 0 ? argv[0] : nullptr), std::cout, std::cerr,
        makeWriter);
    std::cout.flush();
    if (!std::cout) {
        std::cerr << "ttltool: the output cannot be written\n";
        return status == 0 ? qor::cli::ExitWriteFailed : status;
    }
    return status;
}
