// SPDX-License-Identifier: GPL-3.0-or-later
// Page files, replayed on a small picture. Input: the bytes of a page file.
#include "fuzz_input.h"
#include "print/painter_surface.h"
#include "print/print_engine.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QImage>

#include <cmath>

using namespace zelto;
using namespace zelto::fuzz;

namespace {

/// What stays the same from run to run; making it takes longer than many pages.
struct Desk
{
    Desk(int& argc, char** argv) : application(argc, argv) {}

    QGuiApplication application;
    print::PrintEngine engine{u"/nonexistent"_s, text::DecimalSeparators{}};
    QImage paper{120, 170, QImage::Format_RGB32};
};

/// Never destroyed: libFuzzer ends the program by exit(), when Qt is no longer whole.
Desk*& desk()
{
    static Desk* desk = nullptr;
    return desk;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    desk() = new Desk(*argc, *argv);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Desk& place = *desk();
    QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QBuffer page(&bytes);
    page.open(QIODevice::ReadOnly);

    place.paper.fill(Qt::white);
    print::PictureSurface surface(
        place.paper, print::PictureSurface::zoomToFit(place.paper, place.engine.PageWidth()));
    place.engine.setSurface(&surface);
    place.engine.ReplayRecords(page);
    place.engine.EndDocument();
    place.engine.setSurface(nullptr);

    require(page.atEnd());
    require(!place.engine.isRecording());
    require(std::isfinite(place.engine.LineHeight()) && place.engine.LineHeight() >= 0);
    require(std::isfinite(place.engine.CharWidth()) && place.engine.CharWidth() >= 0);
    return 0;
}
