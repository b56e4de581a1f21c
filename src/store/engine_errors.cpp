// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/engine_errors.h"

#include "store/files/passing_folder.h"
#include "store/table_def.h"

#include <array>
#include <sqlite3.h>

namespace zelto::store {

namespace {

struct FailureText
{
    int engineCode;
    ErrorNumber number;
    QStringView description;
};

constexpr std::array FailureTexts{
    FailureText{SQLITE_BUSY, ErrorNumber::InUse, u"Il file «%1» è in uso da un altro programma."},
    FailureText{SQLITE_LOCKED, ErrorNumber::Locked,
                u"Una tabella del file «%1» è bloccata da un'altra operazione in corso."},
    FailureText{SQLITE_READONLY, ErrorNumber::ReadOnly,
                u"Il file «%1» è di sola lettura e non può essere aggiornato."},
    FailureText{SQLITE_FULL, ErrorNumber::DiskFull,
                u"Spazio su disco esaurito durante la scrittura del file «%1»."},
    FailureText{SQLITE_IOERR, ErrorNumber::DiskError,
                u"Errore di disco o di rete nell'accesso al file «%1»."},
    FailureText{SQLITE_CANTOPEN, ErrorNumber::CannotOpen, u"Impossibile aprire il file «%1»."},
    FailureText{SQLITE_PERM, ErrorNumber::CannotOpen,
                u"Permessi insufficienti per aprire il file «%1»."},
    FailureText{SQLITE_NOTADB, ErrorNumber::NotADatabase,
                u"Il file «%1» non è un database riconosciuto."},
    FailureText{SQLITE_INTERRUPT, ErrorNumber::Damaged,
                u"L'operazione sul file «%1» durava troppo ed è stata interrotta. «Riparazione "
                "archivio» può ricostruire il file."},
    FailureText{SQLITE_TOOBIG, ErrorNumber::TextTooLong,
                u"Un testo del file «%1» supera la lunghezza massima."},
    FailureText{SQLITE_MISMATCH, ErrorNumber::BadValue,
                u"Un valore non è del tipo richiesto dalla tabella nel file «%1»."},
};

/// How the engine begins to say so; it has no code of its own.
constexpr QStringView NoSuchTable = u"no such table: ";

/// "Table.Field", as the engine names a field in its messages.
DatabaseError keyError(ErrorNumber number, QStringView description, const QString& column)
{
    const qsizetype dot = column.indexOf(u'.');
    return {number, description.toString().arg(column.mid(dot + 1), column.left(dot))};
}

DatabaseError constraintError(const SQLite::Exception& failure)
{
    const QString message = QString::fromUtf8(failure.what());
    const QString subject = message.section(u": "_s, 1);
    switch (failure.getExtendedErrorCode()) {
    case SQLITE_CONSTRAINT_CHECK:
        return brokenRule(subject);
    case SQLITE_CONSTRAINT_NOTNULL:
        return keyError(ErrorNumber::NullKey,
                        u"Il campo chiave «%1» della tabella «%2» non può essere vuoto.", subject);
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_ROWID:
        return keyError(ErrorNumber::DuplicateKey,
                        u"Il valore del campo chiave «%1» esiste già nella tabella «%2».", subject);
    default:
        return {ErrorNumber::BadValue, u"Il valore non è ammesso (%1)."_s.arg(message)};
    }
}

} // namespace

DatabaseError damagedFile(const QString& path, const QString& detail)
{
    return {ErrorNumber::Damaged,
            u"Il file «%1» è danneggiato%2. Nel menu File, «Riparazione archivio» recupera ciò che "
            "ancora vi si legge, «Ripristina copia ...» ne riapre uno stato precedente."_s.arg(
                path, detail.isEmpty() ? QString() : u" (%1)"_s.arg(detail))};
}

DatabaseError translated(const SQLite::Exception& failure, const QString& path)
{
    // Extended codes carry the plain code in their lowest byte.
    const int code = failure.getErrorCode() & 0xff;
    if (code == SQLITE_CONSTRAINT)
        return constraintError(failure);
    if (failure.getExtendedErrorCode() == SQLITE_READONLY_DBMOVED)
        return {ErrorNumber::ReadOnly,
                u"Il file «%1» è stato spostato, sostituito o eliminato da un altro programma: "
                "riaprire il lavoro prima di modificarlo."_s.arg(path)};
    if (code == SQLITE_CORRUPT)
        return damagedFile(path);
    if (const QString message = QString::fromUtf8(failure.what()); message.startsWith(NoSuchTable))
        return {ErrorNumber::TableNotFound, u"La tabella «%1» non è presente nel file «%2»."_s.arg(
                                                message.sliced(NoSuchTable.size()), path)};
    for (const FailureText& text : FailureTexts)
        if (text.engineCode == code)
            return {text.number, text.description.toString().arg(targetPath(path))};
    return {ErrorNumber::Internal, u"Operazione non riuscita sul file «%1» (%2)."_s.arg(
                                       path, QString::fromUtf8(failure.what()))};
}

} // namespace zelto::store
