// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/format_check.h"

#include "store/database.h"
#include "store/schema.h"
#include "store/user_interface.h"
#include "text/decimal_text.h"

namespace zelto::store {

namespace {

/// The number in the marker table, 0 without one.
float formatVersion(Database& database)
{
    if (!database.tableNames().contains(TabellaZelto, Qt::CaseSensitive))
        return 0;
    const Query marker = database.records(TabellaZelto);
    if (marker.utf8(0).empty())
        throw DatabaseError(ErrorNumber::BadValue,
                            u"La tabella «%1» del file «%2» non indica la versione."_s.arg(
                                TabellaZelto, database.path()));
    return static_cast<float>(text::leadingNumber(marker.utf8(0)));
}

bool hasGroupsTable(const Database& database)
{
    return database.tableNames().contains(TabellaVariabili, Qt::CaseInsensitive);
}

} // namespace

bool isOfThisFormat(Database& database)
{
    return formatVersion(database) == VersioneFormato;
}

void VerificaFormato(QString& path, Messages& user)
{
    Database database = Database::open(path, OpenMode::ReadOnly);
    if (isOfThisFormat(database))
        return;
    user.showMessage(IncompatibleFormat.toString());
    path.clear();
}

void ControllaVersione(Database& database)
{
    const bool tablePresent = hasGroupsTable(database);
    if (tablePresent && !database.records(TabellaVariabili).atEnd())
        return;
    Database::Transaction transaction(database);
    if (!tablePresent)
        database.appendTable(jobTable(TabellaVariabili));
    addBlankGroups(database);
    transaction.commit();
}

} // namespace zelto::store
