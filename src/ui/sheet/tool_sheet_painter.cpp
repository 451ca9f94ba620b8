#include "tool_sheet_painter.h"

#include "atomic_file.h"
#include "qt_picture_surface.h"
#include "recording_surface.h"
#include "render_slot.h"

#include <QBuffer>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QMarginsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <algorithm>
#include <array>
#include <vector>

namespace qor {

namespace {

constexpr double MarginMm = 12.0;
constexpr double HeaderMm = 13.0;
constexpr double GapMm = 3.0;
constexpr double PaddingMm = 2.5;
constexpr double PictureWidthMm = 52.0;
constexpr double PictureMinHeightMm = 62.0;
constexpr double PenMm = 0.12; // a drawing's pen width 1; the editor draws with 2
constexpr int PdfResolution = 600;

// Shares of the overview's width, by column: the name takes what the numbers leave.
constexpr std::array<double, SheetColumnCount> ColumnShares = {0.06, 0.06, 0.095, 0.09,  0.08,
                                                               0.09, 0.08, 0.07,  0.045, 0.33};

bool IsNumberColumn(int column)
{
    const auto c = static_cast<SheetColumn>(column);
    return c != SheetColumn::Kind && c != SheetColumn::Arbor && c != SheetColumn::Name;
}

QString Q(const std::string &utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

// Where something of the sheet lies on a page.
struct Placed
{
    enum class Kind
    {
        SectionTitle, // index: 0 overview, 1 tools
        Headings,
        Row,
        Block,
        Empty,
    };
    Kind kind;
    int index;
    double top;
    double height;
};

class SheetPainter
{
public:
    SheetPainter(QPagedPaintDevice &device, Workspace &workspace, const ToolSheet &sheet)
        : m_device(device), m_workspace(workspace), m_sheet(sheet),
          m_pxPerMm(device.logicalDpiY() / 25.4), m_width(device.width()), m_height(device.height())
    {
        m_textFont = QFont(QStringLiteral("Sans Serif"));
        m_textFont.setStyleHint(QFont::SansSerif);
        m_textFont.setPointSizeF(8.5);
        // No ligatures: "fl" stays two letters, so that the PDF's text reads back as written.
        m_textFont.setStyleStrategy(QFont::PreferNoShaping);
        m_smallFont = m_textFont;
        m_smallFont.setPointSizeF(7.5);
        m_boldFont = m_textFont;
        m_boldFont.setBold(true);
        m_titleFont = m_boldFont;
        m_titleFont.setPointSizeF(11);
        // The summary lines up in columns where a wide character takes two: fonts whose kana
        // and kanji are exactly twice as wide as their Latin letters come first.
        m_monoFont = QFontDatabase::systemFont(QFontDatabase::FixedFont);
        m_monoFont.setFamilies({QStringLiteral("Noto Sans Mono CJK JP"),
                                QStringLiteral("MS Gothic"), m_monoFont.family()});
        m_monoFont.setPointSizeF(7.5);
        m_monoFont.setStyleStrategy(QFont::PreferNoShaping);
        m_rowHeight = Line(m_smallFont) * 1.35;
        Lay();
    }

    int PageCount() const { return static_cast<int>(m_pages.size()); }

    void Paint(QPainter &painter)
    {
        for (std::size_t page = 0; page < m_pages.size(); ++page) {
            if (page > 0) {
                m_device.newPage();
            }
            PaintHeader(painter, static_cast<int>(page) + 1);
            for (const Placed &placed : m_pages[page]) {
                PaintPlaced(painter, placed);
            }
        }
    }

private:
    double Mm(double mm) const { return mm * m_pxPerMm; }
    double Line(const QFont &font) const { return QFontMetricsF(font, &m_device).lineSpacing(); }

    double TextWidth() const { return m_width - Mm(PictureWidthMm) - 3 * Mm(PaddingMm); }

    double WrappedHeight(const QFont &font, const std::string &text) const
    {
        const QRectF bounds = QFontMetricsF(font, &m_device)
                                  .boundingRect(QRectF(0, 0, TextWidth(), 1e9),
                                                Qt::TextWordWrap | Qt::AlignLeft, Q(text));
        return std::max(bounds.height(), Line(font));
    }

    double BlockHeight(const SheetToolBlock &block) const
    {
        double text = 2 * Mm(PaddingMm) + Line(m_boldFont) * 1.3;
        text += static_cast<double>(block.summary.size()) * Line(m_monoFont);
        for (const auto *lines : {&block.feeds, &block.limits}) {
            for (const std::string &line : *lines) {
                text += Line(m_smallFont) * 0.3 + WrappedHeight(m_smallFont, line);
            }
        }
        return std::max(text, Mm(PictureMinHeightMm));
    }

    // Puts everything on pages: the overview's rows under their headings, repeated on each page,
    // then the tool blocks, each on the page where it fits whole.
    void Lay()
    {
        const double top = Mm(HeaderMm + GapMm);
        const double bottom = m_height;
        double y = top;
        m_pages.emplace_back();
        auto place = [&](Placed::Kind kind, int index, double height) {
            m_pages.back().push_back({kind, index, y, height});
            y += height;
        };
        auto newPage = [&] {
            m_pages.emplace_back();
            y = top;
        };

        if (m_sheet.rows.empty()) {
            place(Placed::Kind::Empty, 0, Line(m_textFont) * 1.5);
            return;
        }
        const double titleHeight = Line(m_boldFont) * 1.6;
        place(Placed::Kind::SectionTitle, 0, titleHeight);
        place(Placed::Kind::Headings, 0, m_rowHeight);
        for (std::size_t row = 0; row < m_sheet.rows.size(); ++row) {
            if (y + m_rowHeight > bottom) {
                newPage();
                place(Placed::Kind::Headings, 0, m_rowHeight);
            }
            place(Placed::Kind::Row, static_cast<int>(row), m_rowHeight);
        }

        y += Mm(GapMm * 2);
        bool titled = false;
        for (std::size_t tool = 0; tool < m_sheet.tools.size(); ++tool) {
            const double height = BlockHeight(m_sheet.tools[tool]);
            const double needed = height + (titled ? 0 : titleHeight);
            if (y + needed > bottom && y > top) {
                newPage();
            }
            if (!titled) {
                place(Placed::Kind::SectionTitle, 1, titleHeight);
                titled = true;
            }
            place(Placed::Kind::Block, static_cast<int>(tool), height);
            y += Mm(GapMm);
        }
    }

    void PaintHeader(QPainter &painter, int page)
    {
        const QRectF band(0, 0, m_width, Mm(HeaderMm));
        painter.setPen(Qt::black);
        painter.setFont(m_titleFont);
        const QString title = Q(m_sheet.title) + QStringLiteral("  \u2014  ") + Q(m_sheet.fileName);
        const QRectF titleBox(0, 0, m_width * 0.78, Line(m_titleFont));
        painter.drawText(titleBox, Qt::AlignLeft | Qt::AlignTop,
                         QFontMetricsF(m_titleFont, &m_device)
                             .elidedText(title, Qt::ElideMiddle, titleBox.width()));
        painter.setFont(m_textFont);
        painter.drawText(band, Qt::AlignRight | Qt::AlignTop,
                         Q(PageNumberText(m_sheet, page, PageCount())));
        if (!m_sheet.fileDate.empty()) {
            painter.drawText(QRectF(0, Line(m_titleFont), m_width, Line(m_textFont)),
                             Qt::AlignLeft | Qt::AlignTop,
                             Q(m_sheet.dateLabel) + ' ' + Q(m_sheet.fileDate));
        }
        painter.setPen(QPen(Qt::black, Mm(0.3)));
        painter.drawLine(QPointF(0, band.bottom()), QPointF(m_width, band.bottom()));
    }

    void PaintPlaced(QPainter &painter, const Placed &placed)
    {
        switch (placed.kind) {
        case Placed::Kind::SectionTitle:
            painter.setPen(Qt::black);
            painter.setFont(m_boldFont);
            painter.drawText(QRectF(0, placed.top, m_width, placed.height),
                             Qt::AlignLeft | Qt::AlignVCenter,
                             Q(placed.index == 0 ? m_sheet.overviewTitle : m_sheet.toolsTitle));
            break;
        case Placed::Kind::Headings:
            painter.fillRect(QRectF(0, placed.top, m_width, placed.height), QColor(225, 225, 225));
            PaintRow(painter, m_sheet.headings, placed.top, m_boldFont, true);
            break;
        case Placed::Kind::Row:
            if (placed.index % 2 == 1) {
                painter.fillRect(QRectF(0, placed.top, m_width, placed.height),
                                 QColor(245, 245, 245));
            }
            PaintRow(painter, m_sheet.rows[static_cast<std::size_t>(placed.index)].cells,
                     placed.top, m_smallFont, false);
            break;
        case Placed::Kind::Block:
            PaintBlock(painter, m_sheet.tools[static_cast<std::size_t>(placed.index)], placed.top,
                       placed.height);
            break;
        case Placed::Kind::Empty:
            painter.setPen(Qt::black);
            painter.setFont(m_textFont);
            painter.drawText(QRectF(0, placed.top, m_width, placed.height),
                             Qt::AlignLeft | Qt::AlignVCenter, Q(m_sheet.emptyText));
            break;
        }
    }

    void PaintRow(QPainter &painter, const std::array<std::string, SheetColumnCount> &cells,
                  double top, const QFont &font, bool headings)
    {
        QFont cellFont = font;
        if (headings) {
            cellFont.setPointSizeF(m_smallFont.pointSizeF());
        }
        painter.setFont(cellFont);
        painter.setPen(Qt::black);
        const QFontMetricsF metrics(cellFont, &m_device);
        const double pad = Mm(1.0);
        double x = 0;
        for (int column = 0; column < SheetColumnCount; ++column) {
            const double width = m_width * ColumnShares[static_cast<std::size_t>(column)];
            const QRectF cell(x + pad, top, width - 2 * pad, m_rowHeight);
            const QString text = metrics.elidedText(Q(cells[static_cast<std::size_t>(column)]),
                                                    Qt::ElideRight, cell.width());
            const Qt::Alignment across =
                IsNumberColumn(column) && !headings ? Qt::AlignRight : Qt::AlignLeft;
            painter.drawText(cell, across | Qt::AlignVCenter, text);
            x += width;
        }
    }

    void PaintBlock(QPainter &painter, const SheetToolBlock &block, double top, double height)
    {
        const QRectF frame(0, top, m_width, height);
        painter.setPen(QPen(QColor(120, 120, 120), Mm(0.2)));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(frame);

        const double pad = Mm(PaddingMm);
        const double scaleLine = Line(m_smallFont);
        const QRectF picture(pad, top + pad, Mm(PictureWidthMm), height - 2 * pad - scaleLine);
        const double paperPerTool = PaintPicture(painter, block.slot, picture);
        painter.setPen(Qt::black);
        painter.setFont(m_smallFont);
        painter.drawText(QRectF(picture.left(), picture.bottom(), picture.width(), scaleLine),
                         Qt::AlignHCenter | Qt::AlignTop,
                         Q(m_sheet.scaleLabel) + ' ' + Q(ScaleRatioText(paperPerTool)));

        const double left = picture.right() + pad;
        const double width = TextWidth();
        double y = top + pad;
        painter.setFont(m_boldFont);
        painter.drawText(QRectF(left, y, width, Line(m_boldFont)), Qt::AlignLeft | Qt::AlignTop,
                         QFontMetricsF(m_boldFont, &m_device)
                             .elidedText(Q(block.heading), Qt::ElideRight, width));
        y += Line(m_boldFont) * 1.3;
        painter.setFont(m_monoFont);
        for (const std::string &line : block.summary) {
            painter.drawText(QRectF(left, y, width, Line(m_monoFont)), Qt::AlignLeft | Qt::AlignTop,
                             Q(line));
            y += Line(m_monoFont);
        }
        painter.setFont(m_smallFont);
        for (const auto *lines : {&block.feeds, &block.limits}) {
            for (const std::string &line : *lines) {
                y += Line(m_smallFont) * 0.3;
                const double lineHeight = WrappedHeight(m_smallFont, line);
                painter.drawText(QRectF(left, y, width, lineHeight),
                                 Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, Q(line));
                y += lineHeight;
            }
        }
    }

    // Draws the slot as the editor does at true size, but scaled down (or up) to the largest
    // standard scale at which all of it fits the box, centred there. Returns the scale.
    double PaintPicture(QPainter &painter, int slot, const QRectF &box)
    {
        RecordingSurface probe(1000, 1000, 25.4); // a metre square, the millimetre its unit
        RenderSlot(m_workspace, slot, probe, true);
        const std::optional<Bounds> bounds = probe.BoundingBox();
        if (!bounds) {
            return 1.0;
        }
        const double inset = Mm(2.0);
        const double scale = ChooseSheetScale(
            bounds->right - bounds->left, bounds->top - bounds->bottom,
            (box.width() - 2 * inset) / m_pxPerMm, (box.height() - 2 * inset) / m_pxPerMm);
        // The drawing's own origin is the middle of its surface; move the surface so that the
        // middle of what is drawn lands in the middle of the box, and make it large enough to
        // still cover the whole box.
        const double dx = -(bounds->left + bounds->right) / 2 * scale * m_pxPerMm;
        const double dy = (bounds->bottom + bounds->top) / 2 * scale * m_pxPerMm;
        QRectF area(0, 0, box.width() + 2 * std::abs(dx), box.height() + 2 * std::abs(dy));
        area.moveCenter(box.center() + QPointF(dx, dy));

        painter.save();
        painter.setClipRect(box);
        {
            QtPictureSurface surface(painter, area, scale, PenMm);
            RenderSlot(m_workspace, slot, surface, true);
        }
        painter.restore();
        painter.setPen(QPen(QColor(200, 200, 200), Mm(0.15)));
        painter.drawRect(box);
        return scale;
    }

    QPagedPaintDevice &m_device;
    Workspace &m_workspace;
    const ToolSheet &m_sheet;
    double m_pxPerMm;
    double m_width;
    double m_height;
    double m_rowHeight = 0;
    QFont m_textFont;
    QFont m_smallFont;
    QFont m_boldFont;
    QFont m_titleFont;
    QFont m_monoFont;
    std::vector<std::vector<Placed>> m_pages;
};

} // namespace

void SetUpSheetPage(QPagedPaintDevice &device, PaperSize paper)
{
    const QPageSize size(paper == PaperSize::Letter ? QPageSize::Letter : QPageSize::A4);
    device.setPageLayout(QPageLayout(size, QPageLayout::Portrait,
                                     QMarginsF(MarginMm, MarginMm, MarginMm, MarginMm),
                                     QPageLayout::Millimeter));
}

int PaintToolSheet(QPainter &painter, QPagedPaintDevice &device, Workspace &workspace,
                   const ToolSheet &sheet)
{
    SheetPainter sheetPainter(device, workspace, sheet);
    painter.save();
    painter.resetTransform();
    painter.setRenderHint(QPainter::Antialiasing, true);
    sheetPainter.Paint(painter);
    painter.restore();
    return sheetPainter.PageCount();
}

Status WriteToolSheetPdf(Workspace &workspace, const std::string &path, PaperSize paper,
                         const std::string &fileName, const std::string &fileDate)
{
    const ToolSheet sheet = MakeToolSheet(workspace, fileName, fileDate);
    QByteArray bytes;
    {
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter pdf(&buffer);
        pdf.setResolution(PdfResolution);
        pdf.setTitle(Q(sheet.title + " - " + fileName));
        pdf.setCreator(QStringLiteral("QORTool"));
        SetUpSheetPage(pdf, paper);
        QPainter painter;
        if (!painter.begin(&pdf)) {
            return KeyedError("MSG37-1", {path, "the PDF could not be started"},
                              "Cannot write the tool sheet \"" + path +
                                  "\": the PDF could not be started.");
        }
        PaintToolSheet(painter, pdf, workspace, sheet);
        painter.end();
    }
    Status written = WriteFileAtomically(path, std::string_view(bytes.data(), bytes.size()));
    if (!written) {
        const std::string reason = written.error().message;
        return KeyedError("MSG37-1", {path, reason},
                          "Cannot write the tool sheet \"" + path + "\": " + reason);
    }
    return Success();
}

} // namespace qor
