// SPDX-License-Identifier: GPL-3.0-or-later
// Pages on pictures and in PDF files.
#include "print/painter_surface.h"
#include "print/pdf_surface.h"
#include "print/print_engine.h"
#include "store/store_fixture.h"
#include "support/pdf_file.h"
#include "support/runner.h"

#include <QImage>
#include <QTest>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;
using namespace zelto::print;
using namespace zelto::test;

namespace {

QImage sheet(int width = 800, int height = 1150)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

void drawPage(PrintEngine& print)
{
    print.SetFontName(u"Times New Roman"_s);
    print.SetFontSize(12);
    print.WriteState();
    print.SetColours(0, 0x0000FF);
    print.PrintField(7, 5, 8, {.size = 20, .italic = true, .underline = true}, u"Città bella"_s);
    print.DrawBox(9.5F, 10, 20, 60, 2, true);
    float row = 13;
    QString text = u"Relazione tecnica con un testo giustificato su alcune righe.\r\nFine"_s;
    print.PrintParagraph(12, 30, row, 19, text, Alignment::Justified);
}

/// Three sections, one of which draws nothing, and four pages, one without a label of its own.
void drawSections(PrintEngine& print)
{
    const auto page = [&] {
        print.WriteState();
        print.PrintText(1, 1, 0, QString(60, u'x'));
        print.NewPage();
    };
    print.beginSection(u"Niente"_s);
    print.beginSection(u"Città «A»"_s);
    print.labelPage({u"Pag. "_s, 0});
    page();
    print.labelPage({u"Pag. "_s, 1});
    page();
    page();
    print.beginSection(u" Calcolo "_s);
    print.labelPage({u"N. "_s, 7});
    page();
    print.beginSection(u"Niente"_s);
    print.EndDocument();
}

} // namespace

class TestSurfaces : public QObject
{
    Q_OBJECT

    JobFolder m_folder;
    PrintEngine m_print{m_folder.file({}), {.LocalDecimalSeparator = u','}};

private slots:
    void cleanup() { m_print.setSurface(nullptr); }

    void replayLooksLikeDrawing()
    {
        m_print.BeginDocument();
        drawPage(m_print);
        m_print.EndDocument();
        const auto picture = [this](double zoom, auto draw) {
            QImage image = sheet();
            PictureSurface surface(image, zoom);
            m_print.setSurface(&surface);
            draw(m_print);
            surface.finish();
            return image;
        };
        for (const double zoom : {0.3, 1.0, 2.0}) {
            const QImage replayed = picture(zoom, [](PrintEngine& print) { print.ReplayPage(); });
            QVERIFY(replayed != sheet());
            QCOMPARE(replayed, picture(zoom, drawPage));
        }
    }

    void aPictureShowsTheWholePage()
    {
        QVERIFY(qAbs(m_print.PageWidth() - 200 / 25.4F * 1440) < 20);
        QVERIFY(qAbs(m_print.PageHeight() - 287 / 25.4F * 1440) < 20);
        QImage image = sheet(567, 814);
        const double zoom = PictureSurface::zoomToFit(image, m_print.PageWidth());
        PictureSurface surface(image, zoom);
        m_print.setSurface(&surface);
        QCOMPARE(m_print.Zoom(), zoom);
        m_print.setCharWidth(m_print.PageWidth() / 100);
        m_print.setLineHeight(m_print.PageHeight() / 100);
        m_print.DrawBox(25, 25, 75, 75, 1, false);
        surface.finish();
        for (const QPoint corner : {QPoint(142, 203), QPoint(425, 610)}) {
            const QRect around(corner - QPoint(2, 2), QSize(5, 5));
            QVERIFY(image.copy(around) != sheet(5, 5));
        }
        QCOMPARE(image.pixel(283, 407), qRgb(255, 255, 255));
    }

    void aTextHangsFromItsRow()
    {
        QImage image = sheet(100, 100);
        PictureSurface surface(image, 1); // 15 twips to a dot
        surface.drawText({0, 150}, QString(5, u'M'), FontMetrics({.size = 45}));
        surface.finish();
        const auto inked = [&](int y) { return image.copy(0, y, 100, 1) != sheet(100, 1); };
        QVERIFY(!inked(20)); // capitals start 0.19 of the size, 11 dots, below the row
        QVERIFY(inked(23));
        QVERIFY(inked(62)); // and stand on a line 0.91 of it below
        QVERIFY(!inked(66));
    }

    void penWidthsOnAPicture()
    {
        const auto dots = [](double zoom, float penWidth) {
            QImage image = sheet(100, 100);
            PictureSurface surface(image, zoom);
            surface.drawLine({0, 750 / zoom, 1500 / zoom, 750 / zoom}, penWidth);
            surface.finish();
            int dots = 0;
            for (int y = 0; y < image.height(); ++y)
                dots += image.pixel(50, y) == qRgb(0, 0, 0) ? 1 : 0;
            return dots;
        };
        // 300 units are an inch of paper, here of 96 dots.
        QCOMPARE(dots(1, 31.25), 10);
        QCOMPARE(dots(0.5, 31.25), 5);
        QCOMPARE(dots(2, 6), 4);
        QCOMPARE(dots(0.1, 1), 1);
        QCOMPARE(dots(1, -4), 1); // of a damaged record
    }

    void pagesOfAPdf()
    {
        const QString fileName = m_folder.file(u"tabelle.pdf"_s);
        writeBytes(fileName, "vecchio");
        {
            PdfSurface givenUp(fileName, {});
            const DrawingTarget target(m_print, givenUp);
            m_print.PrintText(1, 1, 0, u"x"_s);
        }
        QCOMPARE(bytesOf(fileName), "vecchio");
        m_print.BeginDocument();
        m_print.setLineHeight(240);
        m_print.setCharWidth(144);
        for (int page = 1; page <= 3; ++page) {
            m_print.WriteState();
            if (page != 2) // an empty page between others stays
                m_print.PrintText(10, 5, 0, u"Città n. %1\tfine"_s.arg(page));
            m_print.WriteState();
            m_print.NewPage();
        }
        m_print.EndDocument();
        QCOMPARE(m_print.pageCount(), 3);
        PdfSurface surface(fileName, {.title = u"Stampa «prova»"_s});
        m_print.setSurface(&surface);
        m_print.PrintDocument(1, 3);
        QCOMPARE(bytesOf(fileName), "vecchio");
        surface.commit();
        QVERIFY(bytesOf(fileName).startsWith("%PDF-"));

        const QString info = QString::fromUtf8(outputOf(u"pdfinfo"_s, {fileName})).simplified();
        for (const QString& said : {u"Title: Stampa «prova» "_s, u"Pages: 3 "_s, u"(A4)"_s})
            QVERIFY2(info.contains(said), qPrintable(info));
        const QString texts =
            QString::fromUtf8(outputOf(u"pdftotext"_s, {u"-layout"_s, fileName, u"-"_s}));
        QCOMPARE(texts.split(u'\f').replaceInStrings(u"\n"_s, u""_s).join(u'|').simplified(),
                 u"Città n. 1 fine||Città n. 3 fine|"_s);
    }

    /// Drawn at once or from page files; of a range, what is on its pages.
    void sectionsAndLabels()
    {
        const auto written = [this](auto draw) {
            const QString fileName = m_folder.file(u"sezioni.pdf"_s);
            PdfSurface surface(fileName, {});
            const DrawingTarget target(m_print, surface);
            draw(m_print);
            surface.commit();
            const PdfFile file(fileName);
            return file.outline().join(u',') + u'|' + file.labels().join(u',');
        };
        const QString whole = u"1 Città «A»,4 Calcolo|Pag. 0,Pag. 1,Città «A»,N. 7"_s;
        QCOMPARE(written(drawSections), whole);
        m_print.BeginDocument();
        drawSections(m_print);
        QCOMPARE(written([](PrintEngine& print) { print.PrintDocument(1, 4); }), whole);
        QCOMPARE(written([](PrintEngine& print) { print.PrintDocument(3, 4); }),
                 u"2 Calcolo|Città «A»,N. 7"_s);
        m_print.BeginDocument();
        drawPage(m_print);
        m_print.EndDocument();
        QCOMPARE(written([](PrintEngine& print) { print.PrintDocument(1, 1); }), u"|"_s);
    }

    void titlesFromStrangers()
    {
        const QString title = QString(u"a\u0001\u009F\uFFFFb"_s) + QChar(0xD800);
        QXmlStreamReader metadata(pdfMetadata({.title = title, .author = title}, {}));
        QStringList texts;
        while (!metadata.atEnd())
            if (metadata.readNext() == QXmlStreamReader::Characters && !metadata.isWhitespace())
                texts << metadata.text().toString();
        QVERIFY2(!metadata.hasError(), qPrintable(metadata.errorString()));
        QCOMPARE(texts.filter(u"a   b"_s).size(), 2);
    }
};

ZELTO_TEST(TestSurfaces)
#include "tst_surfaces.moc"
