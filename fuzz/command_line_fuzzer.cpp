// Feeds arbitrary command lines to ttltool: one argument a line. Parsing must
// accept or refuse with one line; what parses runs, with every path taken to
// a scratch folder of this process, and ends with one of ttltool's statuses.
#include "arguments.h"
#include "commands.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

void Check(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

void WriteFile(const fs::path &path, const std::string &bytes)
{
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

// The scratch folder, made once: the program folder with its catalogue, and
// a tool list file written anew before every run.
// The scratch folder, made anew when the fuzzer starts, in the build folder.
const fs::path &Scratch()
{
    static const fs::path folder = [] {
        const fs::path made = QOR_FUZZ_SCRATCH;
        std::error_code ec;
        fs::remove_all(made, ec);
        fs::create_directories(made / "bin");
        fs::copy_file(QOR_RUNTIME_DIR "/QORTool.msg", made / "bin/QORTool.msg",
                      fs::copy_options::overwrite_existing);
        return made;
    }();
    return folder;
}

// Only the last part of a path, in the scratch folder, so that nothing
// outside it is read or written. (The process keeps its own current folder,
// where libFuzzer keeps its corpus.)
std::string Confined(const std::string &path)
{
    const auto cut = path.find_last_of("/\\");
    std::string name = cut == std::string::npos ? path : path.substr(cut + 1);
    if (name.empty() || name == "." || name == "..") {
        name = "x.TTL";
    }
    return (Scratch() / name).string();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    std::vector<std::string> args;
    std::string current;
    for (std::size_t i = 0; i < size && args.size() < 16; ++i) {
        if (data[i] == '\n') {
            args.push_back(current);
            current.clear();
        } else {
            current += static_cast<char>(data[i]);
        }
    }
    if (!current.empty() && args.size() < 16) {
        args.push_back(current);
    }

    auto parsed = qor::cli::ParseArguments(args);
    if (!parsed) {
        const std::string line = qor::cli::UsageErrorLine(parsed.error());
        Check(!line.empty() && line.find('\n') == std::string::npos);
        return 0;
    }
    qor::cli::Invocation invocation = parsed.value();
    if (invocation.command == qor::cli::CommandKind::Render) {
        return 0; // draws with Qt, which this build has not
    }
    const fs::path &scratch = Scratch();
    invocation.file = Confined(invocation.file);
    if (invocation.output) {
        invocation.output = Confined(*invocation.output);
    }
    if (invocation.overrides.catalogue) {
        invocation.overrides.catalogue = (scratch / "bin/QORTool.msg").string();
    }
    static const std::string sample = [] {
        std::ifstream in(QOR_SAMPLE, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }();
    WriteFile(scratch / "Atc.TTL", sample);

    std::ostringstream out;
    std::ostringstream err;
    const int status =
        qor::cli::RunInvocation(invocation, (scratch / "bin").string() + "/", out, err);

    Check(status == 0 || status == qor::cli::ExitNotFound || status == qor::cli::ExitFormatError ||
          status == qor::cli::ExitWriteFailed || status == qor::cli::ExitNotOverwritten ||
          status == qor::cli::ExitUsage);
    return 0;
}
