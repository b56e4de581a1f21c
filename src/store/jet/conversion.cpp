// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/jet/conversion.h"

#include "store/database.h"
#include "store/files/file_names.h"
#include "store/files/new_file.h"
#include "store/format_check.h"
#include "store/jet/table.h"
#include "store/schema.h"
#include "text/decimal_text.h"

#include <QDate>
#include <QLocale>

#include <cmath>

namespace zelto::store::jet {

namespace {

/// A date of the calendar that the original knew, as it is stored; Null beyond it.
Value dateValue(Date date)
{
    constexpr double FirstDay = -657434; // 1 January 100
    constexpr double LastDay = 2958465;  // 31 December 9999
    const double day = std::trunc(date.days);
    if (!(day >= FirstDay && day <= LastDay))
        return {};
    return QDate(1899, 12, 30).addDays(static_cast<qint64>(day)).toString(Qt::ISODate);
}

/// The field as our tables hold it.
struct ToValue
{
    Value operator()(std::monostate /*null*/) const { return {}; }
    Value operator()(bool value) const { return value ? -1 : 0; }
    Value operator()(qint64 value) const { return value; }
    Value operator()(double value) const
    {
        return value == std::trunc(value) && std::abs(value) < 1e15
                   ? Value(static_cast<qint64>(value))
                   : Value(QString::number(value, 'g', QLocale::FloatingPointShortest));
    }
    Value operator()(Money value) const
    {
        constexpr double TenThousand = 10000;
        return (*this)(static_cast<double>(value.tenThousandths) / TenThousand);
    }
    Value operator()(Date value) const { return dateValue(value); }
    Value operator()(const QString& value) const { return value; }
    Value operator()(const QByteArray& /*binary*/) const { return {}; }
};

/// A text field takes numbers as texts.
Value fitted(const FieldDef& field, const Value& value)
{
    const bool isText = field.type == FieldType::Text || field.type == FieldType::Memo;
    return isText && value.isInteger() ? Value(value.text()) : value;
}

/// Reads the tables of one original into one new job.
class Conversion
{
public:
    explicit Conversion(const QString& path)
        : m_path(path), m_file(path), m_tables(userTables(m_file))
    {}

    void requireVersion() const
    {
        std::optional<float> version; // of the first record
        const std::optional<Table> marker = find(TabellaZelto);
        if (const auto place = marker ? marker->placeOf(u"Versione") : std::nullopt)
            marker->forEachRow([&](const std::vector<Field>& fields) {
                if (!version)
                    version = static_cast<float>(
                        text::leadingNumber(std::visit(ToValue(), fields[*place]).text()));
            });
        if (version != VersioneFormato)
            throw DatabaseError(ErrorNumber::BadValue,
                                u"«%1»: %2"_s.arg(m_path, IncompatibleFormat));
    }

    void copyInto(Database& job)
    {
        for (const TableDef& table : jobTables()) {
            const std::optional<Table> original = find(table.name);
            if (!original && table.name == TabellaVariabili)
                continue; // an earlier edition
            if (!original)
                throw DatabaseError(
                    ErrorNumber::TableNotFound,
                    u"La tabella «%1» non c'è nel file «%2»."_s.arg(table.name, m_path));
            job.appendTable(table);
            const int records = copyTable(table, *original, job.writer(table));
            if (table.name == TabellaUnita)
                m_report.units = records;
            if (table.name == TabellaVani)
                m_report.rooms = records;
        }
    }

    [[nodiscard]] const ConversionReport& report() const { return m_report; }

private:
    [[nodiscard]] std::optional<Table> find(QStringView name) const
    {
        for (const TableEntry& entry : m_tables)
            if (entry.name.compare(name, Qt::CaseInsensitive) == 0)
                return Table(m_file, entry.definitionPage);
        return std::nullopt;
    }

    /// Where the fields of ours are among those of the original; nothing for one that it lacks.
    [[nodiscard]] std::vector<std::optional<std::size_t>> placesOf(const TableDef& table,
                                                                   const Table& original)
    {
        std::vector<std::optional<std::size_t>> places;
        for (const FieldDef& field : table.fields) {
            places.push_back(original.placeOf(field.name));
            if (!places.back())
                remark(u"La tabella «%1» non ha il campo «%2», che resta vuoto."_s.arg(table.name,
                                                                                       field.name));
        }
        for (std::size_t i = 0; i < original.columns().size(); ++i)
            if (std::ranges::find(places, std::optional(i)) == places.end())
                remark(u"Il campo «%2» della tabella «%1» non è di un lavoro e non è stato letto."_s
                           .arg(table.name, original.columns()[i].name));
        return places;
    }

    int copyTable(const TableDef& table, const Table& original, RecordWriter writer)
    {
        const auto places = placesOf(table, original);
        std::vector<Value> values(table.fields.size());
        static const Field Null;
        int record = 0;
        const RowCounts counts = original.forEachRow([&](const std::vector<Field>& fields) {
            ++record;
            for (std::size_t i = 0; i < values.size(); ++i) {
                const Field& field = places[i] ? fields[*places[i]] : Null;
                values[i] = fitted(table.fields[i], std::visit(ToValue(), field));
                if (values[i].isNull() && !std::holds_alternative<std::monostate>(field))
                    remark(u"Tabella «%1», record %2: il campo «%3» non è una data del calendario, "
                           "o non è un testo, e resta vuoto."_s.arg(table.name)
                               .arg(record)
                               .arg(table.fields[i].name));
            }
            addRecord(table, record, values, writer);
        });
        m_report.skipped += counts.unreadable;
        if (counts.unreadable > 0)
            remark(u"Tabella «%1»: record illeggibili, non convertiti: %2."_s.arg(table.name)
                       .arg(counts.unreadable));
        if (static_cast<std::int64_t>(original.statedRows()) != counts.read)
            remark(u"Tabella «%1»: l'archivio dichiara %2 record, ne sono stati letti %3."_s
                       .arg(table.name)
                       .arg(original.statedRows())
                       .arg(counts.read));
        return counts.read;
    }

    void addRecord(const TableDef& table, int record, std::span<const Value> values,
                   RecordWriter& writer)
    {
        try {
            writer.add(values);
        } catch (const DatabaseError& error) {
            throw DatabaseError(error.number(), u"«%1», tabella «%2», record %3: %4"_s.arg(
                                                    m_path, table.name, QString::number(record),
                                                    error.description()));
        }
    }

    void remark(const QString& sentence) { m_report.remarks << sentence; }

    QString m_path;
    JetFile m_file;
    std::vector<TableEntry> m_tables;
    ConversionReport m_report;
};

} // namespace

QString ConversionReport::text() const
{
    constexpr qsizetype MostRemarks = 20;
    QStringList lines{u"Unità convertite: %1; vani: %2; record non letti: %3."_s.arg(
        QString::number(units), QString::number(rooms), QString::number(skipped))};
    lines += remarks.mid(0, MostRemarks);
    if (remarks.size() > MostRemarks)
        lines += u"Altre osservazioni: %1."_s.arg(remarks.size() - MostRemarks);
    return lines.join(u'\n');
}

ConversionReport convertJob(const QString& original, const QString& target,
                            const std::function<void(Database&)>& check)
{
    requireFreeName(target);
    NewFile file(target);
    try {
        Conversion conversion(original);
        conversion.requireVersion();
        {
            Database job = Database::create(file.path());
            Database::Transaction transaction(job);
            conversion.copyInto(job);
            transaction.commit();
            ControllaVersione(job);
            ControllaLimiti(job, original);
            // The tables have refused already what no job may hold.
            check(job);
        }
        file.publish();
        return conversion.report();
    } catch (const BadBytes&) {
        throw DatabaseError(
            ErrorNumber::Damaged,
            u"Il file «%1» è danneggiato e non può essere convertito."_s.arg(original));
    }
}

QString convertedPath(const QString& original)
{
    return withoutExtension(original) + u" convertito.ZLT"_s;
}

bool mayBeInUse(const QString& original)
{
    return !findFile(withoutExtension(original) + u".ldb"_s).isEmpty();
}

} // namespace zelto::store::jet
