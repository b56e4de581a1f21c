// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/complete_file.h"
#include "print/print_error.h"
#include "reports/table_export.h"
#include "store/files/passing_folder.h"
#include "text/system_reason.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <map>
#include <unistd.h>
#include <utility>
#include <xlsxwriter.h>

namespace zelto::reports {

namespace {

constexpr lxw_row_t TitleRow = 0;
constexpr lxw_row_t NoteRow = 1;
constexpr lxw_row_t HeadRow = 3;

lxw_col_t columnNumber(std::size_t column)
{
    return static_cast<lxw_col_t>(column);
}

print::PrintError notWritten(const QString& path, int error)
{
    return {print::PrintErrorNumber::DeviceFailed,
            u"Impossibile scrivere il file «%1»: %2."_s.arg(store::targetPath(path),
                                                            text::systemReason(error))};
}

/// More bytes than the parts of the workbook have together before they are packed.
qint64 mostBytes(const Tables& tables)
{
    constexpr qint64 FixedParts = 65'536;
    constexpr qint64 Field = 128;
    constexpr qint64 Character = 6; // "&quot;"
    qint64 bytes = FixedParts;
    for (const TableReport& table : tables)
        for (const TableRow& row : table.rows)
            for (const Cell& cell : row.cells)
                bytes += Field + Character * cell.text.size();
    return bytes;
}

/// The library puts parts by in files and does not notice when one does not fit: there must be room
/// before it begins.
void requireRoom(const QString& path, qint64 bytes)
{
    QFile file(path + u".posto"_s);
    const bool opened = file.open(QIODevice::WriteOnly);
    const int error = opened ? ::posix_fallocate(file.handle(), 0, bytes) : errno;
    file.remove();
    if (error != 0)
        throw notWritten(path, error);
}

/// What the library writes to standard error is no Italian, and the exception says it anyway.
class QuietLibrary
{
public:
    QuietLibrary() : m_nothing(::open("/dev/null", O_WRONLY | O_CLOEXEC))
    {
        if (m_nothing >= 0 && m_errors >= 0)
            ::dup2(m_nothing, STDERR_FILENO);
    }
    ~QuietLibrary()
    {
        if (m_errors >= 0)
            ::dup2(m_errors, STDERR_FILENO);
        ::close(m_errors);
        ::close(m_nothing);
    }
    QuietLibrary(const QuietLibrary&) = delete;
    QuietLibrary& operator=(const QuietLibrary&) = delete;

private:
    int m_errors = ::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0);
    int m_nothing;
};

/// The library gathers a workbook in memory and writes it at once.
class Workbook
{
public:
    /// What the library puts by meanwhile goes to the file's folder.
    explicit Workbook(const QString& path)
        : m_temporaryFolder(QFile::encodeName(QFileInfo(path).absolutePath())),
          m_path(QFile::encodeName(path))
    {
        lxw_workbook_options options = {};
        options.tmpdir = m_temporaryFolder.data();
        m_workbook = workbook_new_opt(m_path.constData(), &options);
        if (m_workbook == nullptr)
            throw std::bad_alloc();
    }
    ~Workbook()
    {
        if (m_workbook != nullptr)
            lxw_workbook_free(m_workbook);
    }
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;

    void setInfo(const print::PdfInfo& info)
    {
        QByteArray title = print::withoutControls(info.title).toUtf8();
        QByteArray author = print::withoutControls(info.author).toUtf8();
        lxw_doc_properties properties = {};
        properties.title = title.data();
        properties.author = author.data();
        workbook_set_properties(m_workbook, &properties);
    }

    void addSheet(const QString& name, const TableReport& table);

    /// Writes the file. Throws PrintError naming the one that it is going to be.
    void close()
    {
        const QuietLibrary quiet;
        errno = 0;
        const lxw_error error = workbook_close(std::exchange(m_workbook, nullptr));
        // Of a part that it could not put by wholly the library says nothing.
        if (error != LXW_NO_ERROR || errno == ENOSPC || errno == EDQUOT || errno == EFBIG ||
            errno == EIO)
            throw notWritten(QFile::decodeName(m_path), errno);
    }

private:
    /// A cell's looks: what stands in it and where.
    struct Look
    {
        int decimals = -1;
        bool bold = false;
        bool total = false;
        bool right = false;

        auto operator<=>(const Look&) const = default;
    };
    lxw_format* format(const Look& look);
    void writeText(lxw_worksheet* sheet, lxw_row_t row, lxw_col_t column, const QString& text,
                   const Look& look);
    void writeCell(lxw_worksheet* sheet, lxw_row_t row, const TableReport& table,
                   std::size_t column, const Cell& cell);
    void writeTotals(lxw_worksheet* sheet, const TableReport& table);
    void layOut(lxw_worksheet* sheet, const TableReport& table);

    QByteArray m_temporaryFolder;
    QByteArray m_path;
    lxw_workbook* m_workbook = nullptr;
    std::map<Look, lxw_format*> m_formats;
};

lxw_format* Workbook::format(const Look& look)
{
    lxw_format*& made = m_formats[look];
    if (made != nullptr)
        return made;
    made = workbook_add_format(m_workbook);
    if (look.decimals >= 0) {
        const QByteArray places(look.decimals, '0');
        const QByteArray whole = look.decimals == 2 ? "#,##0." : "0.";
        format_set_num_format(made, (whole + places).constData());
    }
    if (look.bold || look.total)
        format_set_bold(made);
    if (look.total)
        format_set_top(made, LXW_BORDER_THIN);
    if (look.right)
        format_set_align(made, LXW_ALIGN_RIGHT);
    return made;
}

void Workbook::writeText(lxw_worksheet* sheet, lxw_row_t row, lxw_col_t column, const QString& text,
                         const Look& look)
{
    constexpr qsizetype LongestText = 32'000; // a little less than a cell takes
    worksheet_write_string(sheet, row, column,
                           print::withoutControls(text.left(LongestText)).toUtf8().constData(),
                           format(look));
}

void Workbook::writeCell(lxw_worksheet* sheet, lxw_row_t row, const TableReport& table,
                         std::size_t column, const Cell& cell)
{
    const TableColumn& definition = table.columns[column];
    if (cell.value)
        worksheet_write_number(sheet, row, columnNumber(column), *cell.value,
                               format({.decimals = definition.decimals}));
    else if (!cell.text.trimmed().isEmpty())
        writeText(sheet, row, columnNumber(column), cell.text.trimmed(),
                  {.right = !definition.isText()});
}

/// Shares are summed by the sheet. The total of an allocation is the amount itself, which parts
/// that are rounded one by one may miss.
void Workbook::writeTotals(lxw_worksheet* sheet, const TableReport& table)
{
    const lxw_row_t first = HeadRow + 1;
    const lxw_row_t totals = first + static_cast<lxw_row_t>(table.rows.size());
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const TableColumn& definition = table.columns[i];
        const Look look{.decimals = definition.decimals, .total = true};
        if (definition.isShare) {
            double sum = 0;
            for (const TableRow& row : table.rows)
                sum += row.cells[i].value.value_or(0);
            std::array<char, LXW_MAX_CELL_RANGE_LENGTH> range = {};
            lxw_rowcol_to_range(range.data(), first, columnNumber(i), totals - 1, columnNumber(i));
            worksheet_write_formula_num(
                sheet, totals, columnNumber(i),
                QByteArray("=SUM(").append(range.data()).append(")").constData(), format(look),
                sum);
        } else if (table.totals[i].value)
            worksheet_write_number(sheet, totals, columnNumber(i), *table.totals[i].value,
                                   format(look));
        else
            worksheet_write_blank(sheet, totals, columnNumber(i), format(look));
    }
}

void Workbook::layOut(lxw_worksheet* sheet, const TableReport& table)
{
    constexpr qsizetype LeastWidth = 11; // characters
    constexpr qsizetype Margin = 2;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        qsizetype width = std::max(LeastWidth, table.columns[i].head.size());
        for (const TableRow& row : table.rows)
            width = std::max(width, row.cells[i].text.trimmed().size());
        worksheet_set_column(sheet, columnNumber(i), columnNumber(i),
                             static_cast<double>(width + Margin), nullptr);
    }
    worksheet_freeze_panes(sheet, HeadRow + 1, 0);
    worksheet_repeat_rows(sheet, HeadRow, HeadRow);
    constexpr std::uint8_t A4 = 9;
    worksheet_set_paper(sheet, A4);
    worksheet_fit_to_pages(sheet, 1, 0);
}

void Workbook::addSheet(const QString& name, const TableReport& table)
{
    lxw_worksheet* sheet = workbook_add_worksheet(m_workbook, name.toUtf8().constData());
    if (sheet == nullptr)
        throw print::PrintError(print::PrintErrorNumber::DeviceFailed,
                                u"Impossibile creare il foglio «%1»."_s.arg(name));
    writeText(sheet, TitleRow, 0, table.title.trimmed(), {.bold = true});
    if (!table.note.isEmpty())
        writeText(sheet, NoteRow, 0, table.note, {});
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        writeText(sheet, HeadRow, columnNumber(i), table.columns[i].head,
                  {.bold = true, .right = !table.columns[i].isText()});
    lxw_row_t row = HeadRow;
    for (const TableRow& unit : table.rows) {
        ++row;
        for (std::size_t i = 0; i < table.columns.size(); ++i)
            writeCell(sheet, row, table, i, unit.cells[i]);
    }
    writeTotals(sheet, table);
    layOut(sheet, table);
}

} // namespace

void writeWorkbook(const QString& path, const Tables& tables, const print::PdfInfo& info)
{
    print::CompleteFile file(path);
    requireRoom(file.passingPath(), mostBytes(tables));
    Workbook workbook(file.passingPath());
    workbook.setInfo(info);
    const QStringList names = sheetNames(tables);
    for (std::size_t i = 0; i < tables.size(); ++i)
        workbook.addSheet(names[static_cast<qsizetype>(i)], tables[i]);
    workbook.close();
    file.commit();
}

} // namespace zelto::reports
