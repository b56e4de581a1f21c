// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/jet/jet_file.h"

#include <QString>

#include <functional>
#include <optional>
#include <variant>
#include <vector>

namespace zelto::store::jet {

enum class Type : unsigned {
    Boolean = 1,
    Byte = 2,
    Integer = 3,
    Long = 4,
    Money = 5,
    Single = 6,
    Double = 7,
    Date = 8,
    Text = 10,
    Binary = 11,
    Memo = 12,
};

struct Column
{
    QString name;
    Type type = Type::Text;
    int size = 0; ///< in bytes
    unsigned id = 0;
    unsigned variableIndex = 0;
    unsigned order = 0;
    unsigned fixedOffset = 0;
    bool isFixed = false;
};

/// An amount of money in ten-thousandths.
struct Money
{
    qint64 tenThousandths = 0;
};

/// Whole days from 30 December 1899; the fraction is the time of day, positive also before that
/// day.
struct Date
{
    double days = 0;
};

/// A field of a row; monostate stands for Null, which is not the empty text.
using Field = std::variant<std::monostate, bool, qint64, double, Money, Date, QString, QByteArray>;

/// What reading the rows of a table came to.
struct RowCounts
{
    int read = 0;
    int unreadable = 0; ///< rows and pages that are damaged
};

/// One table of the file, which outlives it.
class Table
{
public:
    /// Reads the definition that begins on the page. Throws BadBytes.
    Table(const JetFile& file, std::uint32_t definitionPage);

    /// In the order of the fields.
    [[nodiscard]] const std::vector<Column>& columns() const { return m_columns; }

    /// Where it has the field of that name, in whatever letters; none where it lacks it.
    [[nodiscard]] std::optional<std::size_t> placeOf(QStringView field) const;

    /// How many rows there are by the definition; 0 also after an unclean close.
    [[nodiscard]] std::uint32_t statedRows() const { return m_statedRows; }

    /// Calls visit with the fields of every row, in the order of the columns. What is damaged is
    /// counted and passed over.
    RowCounts forEachRow(const std::function<void(const std::vector<Field>&)>& visit) const;

private:
    class Row;

    [[nodiscard]] QByteArray wholeDefinition() const;
    void readColumns(const ByteView& definition);
    [[nodiscard]] std::vector<std::uint32_t> ownedPages() const;
    void readRow(const ByteView& bytes, std::vector<Field>& fields) const;
    [[nodiscard]] Field fieldOf(const Column& column, const ByteView& bytes) const;
    [[nodiscard]] QByteArray longValue(const ByteView& head) const;

    const JetFile& m_file;
    std::uint32_t m_definitionPage;
    std::uint32_t m_statedRows = 0;
    std::uint32_t m_ownedMap = 0;
    std::vector<Column> m_columns;
};

/// A user's table of the catalogue.
struct TableEntry
{
    QString name;
    std::uint32_t definitionPage = 0;
};

/// The user's tables in stored order. Throws BadBytes when the catalogue cannot be read.
[[nodiscard]] std::vector<TableEntry> userTables(const JetFile& file);

} // namespace zelto::store::jet
