// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/job_queries.h"

#include "store/schema.h"

namespace zelto::store {

namespace {

/// The first field of the first record; 0 when there is none.
int numberFound(Database& job, const QString& sql, std::span<const Value> parameters = {})
{
    const Query query = job.query(sql, parameters);
    return query.atEnd() ? 0 : static_cast<int>(query.integer(0));
}

} // namespace

QStringList levels(Database& job)
{
    QStringList found;
    Query query = job.query(
        u"SELECT Livello FROM [%1] WHERE Livello IS NOT NULL GROUP BY Livello"_s.arg(TabellaUnita));
    for (; !query.atEnd(); query.next())
        found << query.text(0);
    return found;
}

int nearestUnit(Database& job, int number)
{
    return numberFound(
        job,
        u"SELECT [%2] FROM [%1] ORDER BY abs([%2] - :1) LIMIT 1"_s.arg(TabellaUnita, CampoUnita),
        std::array{Value(number)});
}

int nextUnit(Database& job)
{
    const QString numbers = u"SELECT [%2] AS n FROM [%1] UNION ALL "
                            u"SELECT CAST(substr(Chiave, 1, 5) AS INTEGER) FROM [%1]"_s;
    const QString sql = u"SELECT max(n) FROM (%1 UNION ALL %2)"_s.arg(
        numbers.arg(TabellaUnita, CampoUnita), numbers.arg(TabellaVani, CampoUnita));
    return numberFound(job, sql) + 1;
}

int nextPosition(Database& job, int unit)
{
    return numberFound(
               job,
               u"SELECT max(Posizione) FROM [%1] WHERE [%2] = :1"_s.arg(TabellaVani, CampoUnita),
               std::array{Value(unit)}) +
           1;
}

int unitsBefore(Database& job, const Value& key)
{
    return numberFound(job, u"SELECT count(*) FROM [%1] WHERE Chiave < :1"_s.arg(TabellaUnita),
                       std::array{key});
}

Query roomsByKey(Database& job)
{
    return job.query(
        u"SELECT * FROM [%1] WHERE Chiave >= :1 AND Chiave < :2 ORDER BY Chiave"_s.arg(TabellaVani),
        std::array<Value, 2>());
}

std::array<Value, 2> roomKeysOf(int unit)
{
    const QString first = unitKey(unit);
    return {first, first.chopped(1) + QChar(first.back().unicode() + 1)};
}

Query roomsWithoutUnit(Database& job)
{
    return job.query(u"SELECT * FROM [%1] WHERE substr(Chiave, 1, 5) NOT IN "
                     u"(SELECT substr('     ' || [%3], -5) FROM [%2]) ORDER BY Chiave"_s.arg(
                         TabellaVani, TabellaUnita, CampoUnita));
}

} // namespace zelto::store
