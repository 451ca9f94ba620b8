#pragma once

#include "arguments.h"
#include "result.h"
#include "workspace.h"

#include <iosfwd>
#include <memory>
#include <string>

namespace qor::cli {

// One picture to draw: a magazine position of the table into a file.
struct PictureRequest
{
    int slot = 0; // 0-based
    std::string path;
    ImageFormat format = ImageFormat::Png;
    int width = 800;
    int height = 600;
    bool fixedScale = false;
    std::string title;       // UTF-8: the kind word and the tool's comment
    std::string description; // UTF-8
};

// One tool sheet to write: the table's sheet as a PDF.
struct SheetRequest
{
    std::string path;
    PaperSize paper = PaperSize::A4;
    std::string fileName; // UTF-8, for the page header
    std::string fileDate; // "" when unknown
};

// Draws pictures and tool sheets; the one that paints with Qt lives in a library of its own so that
// the rest of the command line needs no Qt.
class PictureWriter
{
public:
    virtual ~PictureWriter() = default;
    // Fails with the reason when the file cannot be written; nothing is left half-written.
    virtual Status Write(Workspace &workspace, const PictureRequest &request) = 0;
    // Writes a tool sheet; a writer that cannot paint sheets fails with the reason.
    virtual Status WriteSheet(Workspace &workspace, const SheetRequest &request);
};

// Makes the writer when the first picture is due; null when this program cannot draw.
using PictureWriterFactory = std::unique_ptr<PictureWriter> (*)();

// "MAG03_CUT.png": the name of a position's picture in a render --all folder.
std::string PictureFileName(int slot, int kind, ImageFormat format);

// Draws what a render invocation asks for from the table read into `workspace`. Returns the
// exit status: 0, ExitNotFound for an empty position or one beyond the table, ExitWriteFailed
// when a folder or a picture cannot be written (--all stops at the first).
int Render(Workspace &workspace, const Invocation &invocation, PictureWriterFactory makeWriter,
           std::ostream &out, std::ostream &err);

// Writes the tool sheet of the table read into `workspace` to the PDF that -o names. Returns the
// exit status: 0, or ExitWriteFailed when the file cannot be written.
int Sheet(Workspace &workspace, const Invocation &invocation, PictureWriterFactory makeWriter,
          std::ostream &out, std::ostream &err);

} // namespace qor::cli
