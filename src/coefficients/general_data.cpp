// SPDX-License-Identifier: GPL-3.0-or-later
#include "coefficients/general_data.h"

#include "store/database.h"
#include "store/schema.h"
#include "text/decimal_text.h"

#include <QDate>

namespace zelto::coefficients {

using store::FieldType;

namespace {

const QString DateShown = u"dd/MM/yyyy"_s;

const store::FieldDef& fieldOf(std::size_t text)
{
    return store::jobTable(store::TabellaDatiGenerali).fields[text + 1];
}

/// The first record, one that is added if there is none.
store::Record generalRecord(store::Database& lavoro)
{
    if (lavoro.count(store::TabellaDatiGenerali) == 0)
        store::addGeneralData(lavoro);
    return lavoro.records(store::TabellaDatiGenerali, {}, store::CampoChiave).record();
}

/// A stored date that is none is shown as it is.
QString shownText(std::size_t text, const QString& stored)
{
    if (fieldOf(text).type != FieldType::Date)
        return stored;
    const QDate date = QDate::fromString(stored, Qt::ISODate);
    return date.isValid() ? date.toString(DateShown) : stored;
}

/// A date that is none is left for the database to refuse.
QString storedText(std::size_t text, QString shown)
{
    switch (fieldOf(text).type) {
    case FieldType::Date: {
        const QDate date = QDate::fromString(shown.trimmed(), DateShown);
        return date.isValid() ? date.toString(Qt::ISODate) : shown.trimmed();
    }
    case FieldType::Integer:
        text::StripBlanks(shown);
        return shown;
    default:
        return shown;
    }
}

GeneralTexts readGeneralData(const store::Record& record)
{
    GeneralTexts texts;
    for (std::size_t i = 0; i < texts.size(); ++i)
        texts.at(i) = shownText(i, record[i + 1].text());
    return texts;
}

} // namespace

GeneralTexts loadGeneralData(store::Database& lavoro)
{
    return readGeneralData(generalRecord(lavoro));
}

void saveGeneralData(store::Database& lavoro, const GeneralTexts& texts, const GeneralTexts& loaded)
{
    store::Database::Transaction transaction(lavoro);
    const store::Record stored = generalRecord(lavoro);
    if (readGeneralData(stored) != loaded)
        throw store::DatabaseError(store::ErrorNumber::RecordChanged,
                                   u"I dati generali del lavoro sono stati cambiati "
                                   u"da un altro programma. Annullare e riaprire la "
                                   u"finestra per vederli."_s);
    store::Record record = stored;
    for (std::size_t i = 0; i < texts.size(); ++i)
        record[i + 1] = store::Value::nullIfEmpty(storedText(i, texts.at(i)));
    lavoro.writer(store::jobTable(store::TabellaDatiGenerali)).change(stored, record);
    transaction.commit();
}

} // namespace zelto::coefficients
