// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "print/complete_file.h"
#include "print/page_size.h"
#include "print/painter_surface.h"
#include "print/pdf_info.h"

#include <QIODevice>
#include <QPageLayout>
#include <QPdfWriter>

namespace zelto::print {

/// Passes everything on to the target and keeps the end of it.
class TailKeeper : public QIODevice
{
public:
    /// The target, open for writing, outlives it.
    explicit TailKeeper(QIODevice& target) : m_target(target) {}

    static constexpr qsizetype TailLength = 1024;

    /// At least the last bytes written, or all of them.
    [[nodiscard]] const QByteArray& tail() const { return m_tail; }

protected:
    qint64 readData(char* /*data*/, qint64 /*length*/) override { return -1; }
    qint64 writeData(const char* data, qint64 length) override;

private:
    QIODevice& m_target;
    QByteArray m_tail;
};

/// The file of a PdfSurface; apart, so that it outlives the painter.
class PdfTarget
{
protected:
    PdfTarget(const QString& fileName, PdfInfo info, const QPageLayout& layout);

    /// Completes the written file and puts it in its place.
    void complete();

private:
    QIODevice* open();

    PdfInfo m_info;
    QDateTime m_made = QDateTime::currentDateTimeUtc();
    CompleteFile m_file;
    TailKeeper m_end{m_file.device()};

protected:
    QPdfWriter m_writer;
};

/// Pages in a PDF/A-1b file. The file appears, and an older one of the name goes, only when
/// commit() has seen every byte written; without it nothing changes on disk.
class PdfSurface : private PdfTarget, public PagedSurface
{
public:
    /// Throws PrintError naming the file when it cannot be created.
    PdfSurface(const QString& fileName, const PdfInfo& info,
               const QPageLayout& layout = standardPageLayout());

    /// Finishes the pages and puts the file in its place. Throws PrintError naming the file,
    /// EmptyDocument when nothing has been drawn.
    void commit();
};

} // namespace zelto::print
