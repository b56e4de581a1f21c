// SPDX-License-Identifier: GPL-3.0-or-later
// The readable text that the delivered databases are built from: rows of cells and running text.
#pragma once

#include "text/literals.h"

#include <QString>
#include <QStringList>

#include <stdexcept>
#include <vector>

namespace zelto::data {

/// A fault of a text; the message is Italian and begins with file and line ("unita.txt:12: …").
class DataFault : public std::runtime_error
{
public:
    /// A line of 0 stands for the file as a whole.
    DataFault(const QString& path, int line, const QString& what);
};

enum class RowKind { Heading, Plain, Indented };

/// One line of a text that is neither empty nor a comment.
struct Row
{
    int line = 0;
    RowKind kind = RowKind::Plain;
    /// Trimmed; of a heading the one text between its brackets.
    QStringList cells;
};

/// The rows of one file.
class DataText
{
public:
    /// Reads the whole file, in UTF-8. Throws DataFault when it cannot be read.
    static DataText read(const QString& path);

    [[nodiscard]] const QString& path() const { return m_path; }
    [[nodiscard]] const std::vector<Row>& rows() const { return m_rows; }

    [[noreturn]] void fail(const Row& row, const QString& what) const;

    /// Fails unless the row has as many cells.
    void requireCells(const Row& row, qsizetype count) const;

    /// The cell, which has to exist; fails when it is longer than maxLength characters.
    [[nodiscard]] QString cell(const Row& row, qsizetype index, qsizetype maxLength) const;

private:
    QString m_path;
    std::vector<Row> m_rows;
};

/// Running text with its paragraphs ended by CR LF. Lines of the file are joined; an empty line, or
/// "- " at the beginning of a line, ends a paragraph, and every further empty line stays as one.
QString readParagraphs(const QString& path);

} // namespace zelto::data
