// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/master_database.h"

#include <QByteArrayView>
#include <QCryptographicHash>
#include <QtEndian>

#include <utility>

namespace zelto::store {

namespace {

constexpr QByteArrayView Credentials = "admin:vurtemol";

Database openMaster(const QString& path)
{
    Database database = Database::open(path, OpenMode::ReadOnly);
    if (database.query(u"PRAGMA user_version"_s).integer(0) != masterAccessMark())
        throw DatabaseError(
            ErrorNumber::WrongAccess,
            u"Il file «%1» non è il database principale del programma."_s.arg(path));
    return database;
}

} // namespace

const TableDef& masterTable()
{
    static const TableDef table{
        .name = TabellaCoefficenti.toString(),
        .fields = {{.name = u"Descrizione"_s, .type = FieldType::Text, .size = 100},
                   {.name = u"Gruppo"_s, .type = FieldType::Text, .size = 20}}};
    return table;
}

int masterAccessMark()
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(Credentials);
    return qFromBigEndian<qint32>(hash.result().constData());
}

MasterDatabase::MasterDatabase(QString path) : m_path(std::move(path))
{
    reopen();
}

void MasterDatabase::reopen()
{
    m_database = openMaster(m_path);
}

QStringList MasterDatabase::groupDescriptions()
{
    if (!m_database)
        reopen();
    QStringList descriptions;
    for (Query records = m_database->records(TabellaCoefficenti);
         !records.atEnd() && descriptions.size() < MaxDescriptions; records.next())
        descriptions += records.text(0);
    return descriptions;
}

} // namespace zelto::store
