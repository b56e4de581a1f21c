// SPDX-License-Identifier: GPL-3.0-or-later
#include "coefficients/general_data.h"

#include "store/database.h"
#include "store/schema.h"
#include "text/decimal_text.h"

#include <QDate>

namespace zelto::coefficients {

using store::FieldType;
using store::TableRecordset;

namespace {

const QString DateShown = u"dd/MM/yyyy"_s;

const store::FieldDef& fieldOf(int text)
{
    return store::jobTable(store::TabellaDatiGenerali).fields[static_cast<std::size_t>(text) + 1];
}

/// On its first record, one that is added if there is none.
TableRecordset openGeneralData(store::Database& lavoro)
{
    TableRecordset record = lavoro.openTable(store::TabellaDatiGenerali);
    record.setIndex(store::IndicePrimario);
    if (record.EndOfFile()) {
        record.AddNew();
        record.setField(0, 1);
        record.Update();
        record.MoveFirst();
    }
    return record;
}

/// A stored date that is none is shown as it is.
QString shownText(int text, const QString& stored)
{
    if (fieldOf(text).type != FieldType::Date)
        return stored;
    const QDate date = QDate::fromString(stored, Qt::ISODate);
    return date.isValid() ? date.toString(DateShown) : stored;
}

/// A date that is none is left for the database to refuse.
QString storedText(int text, QString shown)
{
    switch (fieldOf(text).type) {
    case FieldType::Date: {
        const QDate date = QDate::fromString(shown.trimmed(), DateShown);
        return date.isValid() ? date.toString(Qt::ISODate) : shown.trimmed();
    }
    case FieldType::Integer:
    case FieldType::Long:
        text::StripBlanks(shown);
        return shown;
    default:
        return shown;
    }
}

GeneralTexts readGeneralData(const TableRecordset& record)
{
    GeneralTexts texts;
    for (int i = 0; i < NumGeneralTexts; ++i)
        texts.at(static_cast<std::size_t>(i)) = shownText(i, record.text(i + 1));
    return texts;
}

} // namespace

GeneralTexts loadGeneralData(store::Database& lavoro)
{
    return readGeneralData(openGeneralData(lavoro));
}

void saveGeneralData(store::Database& lavoro, const GeneralTexts& texts, const GeneralTexts& loaded)
{
    store::Database::Transaction transaction(lavoro);
    TableRecordset record = openGeneralData(lavoro);
    if (readGeneralData(record) != loaded)
        throw store::DatabaseError(store::ErrorNumber::RecordChanged,
                                   u"I dati generali del lavoro sono stati cambiati "
                                   u"da un altro programma. Annullare e riaprire la "
                                   u"finestra per vederli."_s);
    record.Edit();
    for (int i = 0; i < NumGeneralTexts; ++i)
        record.setField(
            i + 1, store::Value::nullIfEmpty(storedText(i, texts.at(static_cast<std::size_t>(i)))));
    record.Update();
    record.Close();
    transaction.commit();
}

} // namespace zelto::coefficients
