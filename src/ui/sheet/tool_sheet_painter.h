#pragma once

#include "result.h"
#include "tool_sheet.h"
#include "workspace.h"

#include <string>

class QPagedPaintDevice;
class QPainter;

namespace qor {

// Portrait pages of the given paper with the sheet's margins; for a QPdfWriter, or a QPrinter
// before its print dialog or preview shows.
void SetUpSheetPage(QPagedPaintDevice &device, PaperSize paper);

// Paints the sheet with an active painter on a paged device (a QPdfWriter, or the QPrinter of
// a print or of QPrintPreviewDialog::paintRequested), starting a new page of the device for
// each page after the first, whatever the device's paper and margins. Each page has the header
// (file, date, "Page n of m"); the overview table follows, its headings repeated on each page,
// then a block per tool that never runs across a page end, the tool drawn as the editor draws
// it at a standard scale that fits the block. Returns the number of pages. The workspace is left
// as it was.
int PaintToolSheet(QPainter &painter, QPagedPaintDevice &device, Workspace &workspace,
                   const ToolSheet &sheet);

// Writes the sheet of the workspace's table as a PDF file at `path` (UTF-8), replacing it only
// once the whole document is made. `fileName` and `fileDate` go into the page header. Fails
// with key MSG37-1 (the path and the reason) when the file cannot be written. Needs a
// QGuiApplication.
Status WriteToolSheetPdf(Workspace &workspace, const std::string &path, PaperSize paper,
                         const std::string &fileName, const std::string &fileDate);

} // namespace qor
