// SPDX-License-Identifier: GPL-3.0-or-later
#include "coefficients/job_texts.h"

#include "store/database.h"
#include "store/schema.h"

#include <QDate>

namespace zelto::coefficients {

using store::FieldDef;

namespace {

const QString DateShown = u"dd/MM/yyyy"_s;

bool isText(const FieldDef& field)
{
    return field.type != store::FieldType::AutoNumber;
}

/// The first record, one that is added if there is none.
store::Record recordOf(store::Database& lavoro, QStringView table)
{
    store::addOnlyRecord(lavoro, table);
    return lavoro.records(table, {}, store::jobTable(table).primaryKey).record();
}

/// A stored date that is none is shown as it is.
QString shownText(const FieldDef& field, const QString& stored)
{
    const QDate date = QDate::fromString(stored, Qt::ISODate);
    return field.type == store::FieldType::Date && date.isValid() ? date.toString(DateShown)
                                                                  : stored;
}

/// A date that is none is left for the database to refuse.
QString storedText(const FieldDef& field, const QString& shown)
{
    if (field.type != store::FieldType::Date)
        return shown;
    const QDate date = QDate::fromString(shown.trimmed(), DateShown);
    return date.isValid() ? date.toString(Qt::ISODate) : shown.trimmed();
}

JobTexts readTexts(const store::Record& record, QStringView table)
{
    JobTexts texts;
    for (std::size_t i = 0; const FieldDef& field : store::jobTable(table).fields)
        if (const QString text = record[i++].text(); isText(field) && !text.isEmpty())
            texts[field.name] = shownText(field, text);
    return texts;
}

} // namespace

JobTexts loadTexts(store::Database& lavoro, QStringView table)
{
    return readTexts(recordOf(lavoro, table), table);
}

void saveTexts(store::Database& lavoro, QStringView table, const JobTexts& texts,
               const JobTexts& loaded, const std::function<void()>& along)
{
    store::Database::Transaction transaction(lavoro);
    const store::Record stored = recordOf(lavoro, table);
    if (readTexts(stored, table) != loaded)
        throw store::DatabaseError(
            store::ErrorNumber::RecordChanged,
            u"I %1 del lavoro sono stati cambiati da un altro programma. Annullare e riaprire la "
            u"finestra per vederli."_s.arg(table == store::TabellaVariabili ? u"coefficienti"_s
                                                                            : u"dati generali"_s));
    along();
    store::Record record = stored;
    for (std::size_t i = 0; const FieldDef& field : store::jobTable(table).fields) {
        if (isText(field))
            record[i] = store::Value::nullIfEmpty(storedText(field, texts.value(field.name)));
        ++i;
    }
    lavoro.writer(store::jobTable(table)).change(stored, record);
    transaction.commit();
}

} // namespace zelto::coefficients
