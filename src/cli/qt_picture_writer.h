#pragma once

#include "render_command.h"

#include <memory>

namespace qor::cli {

// The writer that paints with Qt: PNG through QImage (white, antialiased) and SVG through
// QSvgGenerator, both at 96 pixels an inch so that a true-size picture measures true on the
// screen. It brings its own QGuiApplication for as long as it lives, on the offscreen platform
// when QT_QPA_PLATFORM is unset and there is no display; so only one may exist at a time, and
// none beside another QGuiApplication.
std::unique_ptr<PictureWriter> MakeQtPictureWriter();

} // namespace qor::cli
