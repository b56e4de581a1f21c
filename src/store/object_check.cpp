// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/object_check.h"

#include "store/files/database_error.h"
#include "store/master_database.h"
#include "store/schema.h"

#include <QString>

#include <SQLiteCpp/Statement.h>
#include <algorithm>
#include <initializer_list>
#include <sqlite3.h>
#include <vector>

namespace zelto::store {

namespace {

/// The table of ours of that name; nullptr for others.
const TableDef* findOurs(const QString& name)
{
    const auto isNamed = [&](const TableDef& table) {
        return table.name.compare(name, Qt::CaseInsensitive) == 0;
    };
    if (isNamed(masterTable()))
        return &masterTable();
    const auto found = std::ranges::find_if(jobTables(), isNamed);
    return found == jobTables().end() ? nullptr : &*found;
}

/// The end of what begins at the place and is no word: a name in quotes, a text, a comment, or a
/// single character.
qsizetype endOfToken(QStringView sql, qsizetype from)
{
    const auto endAfter = [&](QStringView close, qsizetype opened) {
        const qsizetype at = sql.indexOf(close, from + opened);
        return at < 0 ? sql.size() : at + close.size();
    };
    const QStringView rest = sql.sliced(from);
    if (rest.startsWith(u"--"))
        return endAfter(u"\n", 2);
    if (rest.startsWith(u"/*"))
        return endAfter(u"*/", 2);
    if (rest.startsWith(u'['))
        return endAfter(u"]", 1);
    if (rest.startsWith(u'\'') || rest.startsWith(u'"') || rest.startsWith(u'`'))
        return endAfter(rest.first(1), 1);
    return from + 1;
}

bool isWordCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == u'_' || c == u'$' || c.unicode() > 0x7F;
}

/// Whether one of the reserved words stands in the statement outside of names and texts.
bool hasWord(QStringView sql, std::initializer_list<QStringView> reserved)
{
    for (qsizetype at = 0; at < sql.size();) {
        if (!isWordCharacter(sql[at])) {
            at = endOfToken(sql, at);
            continue;
        }
        const auto* const end = std::find_if_not(sql.begin() + at, sql.end(), isWordCharacter);
        const QStringView word = sql.sliced(at, end - sql.begin() - at);
        for (const QStringView one : reserved)
            if (word.compare(one, Qt::CaseInsensitive) == 0)
                return true;
        at += word.size();
    }
    return false;
}

struct Object
{
    QString type;
    QString name;
    QString table;
    QString sql;
    bool hasPages = false;
    bool isPlainIndex = false;
};

std::vector<Object> objectsOf(SQLite::Database& handle)
{
    SQLite::Statement list(
        handle,
        "SELECT type, name, tbl_name, coalesce(sql, ''), rootpage > 0, "
        "type = 'index' AND NOT EXISTS (SELECT 1 FROM pragma_index_xinfo(s.name) WHERE cid = -2) "
        "AND NOT EXISTS (SELECT 1 FROM pragma_index_list(s.tbl_name) AS i WHERE i.name = s.name "
        "AND i.partial) FROM sqlite_schema AS s");
    std::vector<Object> objects;
    while (list.executeStep()) {
        const auto text = [&](int column) {
            return QString::fromUtf8(list.getColumn(column).getText());
        };
        objects.push_back({.type = text(0),
                           .name = text(1),
                           .table = text(2),
                           .sql = text(3),
                           .hasPages = list.getColumn(4).getInt() != 0,
                           .isPlainIndex = list.getColumn(5).getInt() != 0});
    }
    return objects;
}

/// Indexes without a text belong to the keys of their table. When createTableSql or a table
/// changes, the texts that were written before must go on being accepted here.
bool isOurs(const Object& object, const TableDef& table)
{
    return object.type == u"index"
               ? object.sql.isEmpty()
               : object.type == u"table" &&
                     object.sql.compare(createTableSql(table), Qt::CaseInsensitive) == 0;
}

bool isPlain(const Object& object)
{
    if (!object.hasPages)
        return false;
    return object.type == u"index"
               ? object.isPlainIndex
               : object.type == u"table" && !hasWord(object.sql, {u"CHECK", u"AS"});
}

} // namespace

void checkObjects(SQLite::Database& handle, const QString& path)
{
    for (const Object& object : objectsOf(handle)) {
        const TableDef* const ours = findOurs(object.table);
        if (ours == nullptr ? isPlain(object) : isOurs(object, *ours))
            continue;
        if (ours != nullptr && (object.type == u"table" || object.type == u"index"))
            throw DatabaseError(
                ErrorNumber::Damaged,
                u"La tabella «%1» del file «%2» non è come la scrive Zelto. «Riparazione "
                "archivio» la ricostruisce con i suoi dati."_s.arg(ours->name, path));
        throw DatabaseError(ErrorNumber::NotADatabase,
                            u"Il file «%1» contiene un oggetto non ammesso («%2»). «Riparazione "
                            u"archivio» ricostruisce "
                            "il lavoro senza."_s.arg(path, object.name));
    }
}

void removeForeignObjects(SQLite::Database& handle)
{
    for (const Object& object : objectsOf(handle)) {
        const bool isTable = object.type == u"table";
        const bool isTableOfOurs = isTable && findOurs(object.name) != nullptr;
        // The code of a virtual table would remove it, and columns that are computed stay so.
        if (isTable && (!object.hasPages || (isTableOfOurs && hasWord(object.sql, {u"AS"}))))
            throw SQLite::Exception("code", SQLITE_CORRUPT);
        if (!isTableOfOurs && !isPlain(object) && !object.sql.isEmpty())
            handle.exec(
                u"DROP %1 IF EXISTS %2"_s.arg(object.type, quoted(object.name)).toStdString());
    }
}

} // namespace zelto::store
