// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/master_database.h"

#include "store/database.h"
#include "store/job_limits.h"

namespace zelto::store {

const TableDef& masterTable()
{
    static const TableDef table{
        .name = TabellaCoefficenti.toString(),
        .fields = {{.name = u"Descrizione"_s, .type = FieldType::Text, .size = 100},
                   {.name = u"Gruppo"_s, .type = FieldType::Text, .size = 20}}};
    return table;
}

QStringList groupDescriptions(const QString& masterPath)
{
    Database master = Database::open(masterPath, OpenMode::ReadOnly);
    if (master.query(u"PRAGMA user_version"_s).integer(0) != MasterAccessMark)
        throw DatabaseError(
            ErrorNumber::WrongAccess,
            u"Il file «%1» non è il database principale del programma."_s.arg(masterPath));
    QStringList descriptions;
    for (Query records = master.records(TabellaCoefficenti);
         !records.atEnd() && descriptions.size() < Groups; records.next())
        descriptions += records.text(0);
    return descriptions;
}

} // namespace zelto::store
