#include "render_command.h"

#include "code_page.h"
#include "commands.h"
#include "native_file.h"
#include "tool_kinds.h"

#include <cstdio>
#include <filesystem>
#include <ostream>
#include <vector>

namespace qor::cli {

namespace {

namespace fs = std::filesystem;

const char *Extension(ImageFormat format)
{
    return format == ImageFormat::Svg ? "svg" : "png";
}

PictureRequest RequestFor(const ToolTable &table, int slot, std::string path,
                          const RenderOptions &options, int codePage)
{
    const ToolSlot &tool = table.Slots[static_cast<std::size_t>(slot)];
    std::string title(KindWords[static_cast<std::size_t>(tool.ToolKind)]);
    if (!tool.ToolComment.empty()) {
        title += ' ' + DecodeCodePage(tool.ToolComment, codePage);
    }
    return {slot,
            std::move(path),
            options.format,
            options.width,
            options.height,
            options.fixedScale,
            std::move(title),
            "Magazine position " + std::to_string(slot + 1)};
}

} // namespace

Status PictureWriter::WriteSheet(Workspace &, const SheetRequest &request)
{
    return Error("Cannot write \"" + request.path + "\": this program cannot paint tool sheets.");
}

int Sheet(Workspace &workspace, const Invocation &invocation, PictureWriterFactory makeWriter,
          std::ostream &out, std::ostream &err)
{
    std::string name = Utf8Path(NativePath(invocation.file).filename());
    const SheetRequest request{invocation.output.value_or(std::string()), invocation.paper,
                               name.empty() ? invocation.file : std::move(name),
                               FileDateText(invocation.file)};
    const std::unique_ptr<PictureWriter> writer = makeWriter();
    if (Status written = writer->WriteSheet(workspace, request); !written) {
        err << written.error().message << '\n';
        return ExitWriteFailed;
    }
    out << "wrote " << request.path << '\n';
    return 0;
}

std::string PictureFileName(int slot, int kind, ImageFormat format)
{
    char number[16];
    std::snprintf(number, sizeof number, "%02d", slot + 1);
    const std::string_view word =
        kind >= 0 && kind < KindCount ? KindWords[static_cast<std::size_t>(kind)] : "NONE";
    return "MAG" + std::string(number) + '_' + std::string(word) + '.' + Extension(format);
}

int Render(Workspace &workspace, const Invocation &invocation, PictureWriterFactory makeWriter,
           std::ostream &out, std::ostream &err)
{
    const ToolTable &table = workspace.Table;
    const RenderOptions &options = invocation.render;
    const std::string output = invocation.output.value_or(std::string());
    std::vector<PictureRequest> pictures;

    if (options.magazine) {
        const int magazine = *options.magazine;
        if (magazine > static_cast<int>(table.Slots.size())) {
            err << invocation.file << ": magazine " << magazine << " lies beyond the table of "
                << table.Slots.size() << " positions\n";
            return ExitNotFound;
        }
        if (!table.Slots[static_cast<std::size_t>(magazine - 1)].HasTool()) {
            err << invocation.file << ": magazine " << magazine << " holds no tool\n";
            return ExitNotFound;
        }
        pictures.push_back(
            RequestFor(table, magazine - 1, output, options, workspace.Globals.CodePage));
    } else {
        std::error_code made;
        std::error_code probed;
        fs::create_directories(NativePath(output), made);
        if (!fs::is_directory(NativePath(output), probed)) {
            err << "Cannot make the folder \"" << output
                << "\": " << (made ? made.message() : "a file of that name is in the way") << ".\n";
            return ExitWriteFailed;
        }
        for (int slot = 0; slot < static_cast<int>(table.Slots.size()); ++slot) {
            const ToolSlot &tool = table.Slots[static_cast<std::size_t>(slot)];
            if (tool.HasTool()) {
                const fs::path path =
                    NativePath(output) / PictureFileName(slot, tool.ToolKind, options.format);
                pictures.push_back(
                    RequestFor(table, slot, Utf8Path(path), options, workspace.Globals.CodePage));
            }
        }
    }

    if (pictures.empty()) {
        out << invocation.file << ": no tool to draw\n";
        return 0;
    }
    const std::unique_ptr<PictureWriter> writer = makeWriter();
    for (const PictureRequest &picture : pictures) {
        if (Status written = writer->Write(workspace, picture); !written) {
            err << written.error().message << '\n';
            return ExitWriteFailed;
        }
        out << "wrote " << picture.path << '\n';
    }
    return 0;
}

} // namespace qor::cli
