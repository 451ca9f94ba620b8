#include "qt_picture_writer.h"

#include "atomic_file.h"
#include "qt_picture_surface.h"
#include "render_slot.h"
#include "tool_sheet_painter.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QImage>
#include <QSvgGenerator>
#include <cstdio>

namespace qor::cli {

namespace {

constexpr int DotsPerInch = 96;
constexpr int DotsPerMetre = 3780; // 96 dpi, as Qt rounds it back
constexpr int FastPngQuality = 80; // Qt's PNG writer makes this zlib level 1

// Qt's notes about the environment (XDG_RUNTIME_DIR unset and the like) are noise in a script's
// error stream; what goes wrong with a picture is reported by the command itself.
void DropQtNotes(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtCriticalMsg || type == QtFatalMsg) {
        std::fprintf(stderr, "ttltool: %s\n", qPrintable(message));
    }
}

// Qt picks its platform from the environment; without a display the default one would abort.
void ChooseOffscreenWhenHeadless()
{
#if !defined(_WIN32) && !defined(__APPLE__)
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
#endif
}

class QtPictureWriter final : public PictureWriter
{
public:
    QtPictureWriter()
    {
        m_previousHandler = qInstallMessageHandler(DropQtNotes);
        ChooseOffscreenWhenHeadless();
        m_app = std::make_unique<QGuiApplication>(m_argc, m_argv);
    }

    ~QtPictureWriter() override
    {
        m_app.reset();
        qInstallMessageHandler(m_previousHandler);
    }

    QtPictureWriter(const QtPictureWriter &) = delete;
    QtPictureWriter &operator=(const QtPictureWriter &) = delete;

    Status Write(Workspace &workspace, const PictureRequest &request) override
    {
        const QByteArray bytes =
            request.format == ImageFormat::Svg ? Svg(workspace, request) : Png(workspace, request);
        if (bytes.isEmpty()) {
            return Error("Cannot draw \"" + request.path + "\": the picture could not be made.");
        }
        return WriteFileAtomically(request.path, std::string_view(bytes.data(), bytes.size()));
    }

    Status WriteSheet(Workspace &workspace, const SheetRequest &request) override
    {
        return WriteToolSheetPdf(workspace, request.path, request.paper, request.fileName,
                                 request.fileDate);
    }

private:
    static QByteArray Png(Workspace &workspace, const PictureRequest &request)
    {
        QImage image(request.width, request.height, QImage::Format_RGB32);
        if (image.isNull()) {
            return {};
        }
        image.setDotsPerMeterX(DotsPerMetre);
        image.setDotsPerMeterY(DotsPerMetre);
        image.fill(Qt::white);
        {
            QtPictureSurface surface(image);
            RenderSlot(workspace, request.slot, surface, request.fixedScale);
        }
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        // A line drawing needs no strong compression; zlib's fastest level saves a third of the
        // time.
        return image.save(&buffer, "PNG", FastPngQuality) ? bytes : QByteArray();
    }

    static QByteArray Svg(Workspace &workspace, const PictureRequest &request)
    {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QSvgGenerator svg;
        svg.setOutputDevice(&buffer);
        svg.setSize(QSize(request.width, request.height));
        svg.setViewBox(QRect(0, 0, request.width, request.height));
        svg.setResolution(DotsPerInch);
        // The generator writes both into the document as they are.
        svg.setTitle(QString::fromStdString(request.title).toHtmlEscaped());
        svg.setDescription(QString::fromStdString(request.description).toHtmlEscaped());
        {
            QtPictureSurface surface(svg); // the document is complete when its painter ends
            RenderSlot(workspace, request.slot, surface, request.fixedScale);
        }
        return bytes;
    }

    int m_argc = 1;
    char m_name[8] = "ttltool";
    char *m_argv[2] = {m_name, nullptr};
    QtMessageHandler m_previousHandler = nullptr;
    std::unique_ptr<QGuiApplication> m_app;
};

} // namespace

std::unique_ptr<PictureWriter> MakeQtPictureWriter()
{
    return std::make_unique<QtPictureWriter>();
}

} // namespace qor::cli
