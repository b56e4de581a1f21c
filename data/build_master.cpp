// SPDX-License-Identifier: GPL-3.0-or-later
// zelto_build_master TEXT FILE.mdb: makes the master database from its readable text.
#include "data/data_text.h"
#include "data/output_file.h"
#include "store/database.h"
#include "store/master_database.h"
#include "store/schema.h"

#include <array>

namespace zelto::data {
namespace {

using store::Database;
using store::Value;

void requireGroups(const DataText& text)
{
    QStringList names;
    QStringList expected;
    for (const QStringView name : store::GroupNames)
        expected += name.toString();
    for (const Row& row : text.rows()) {
        text.requireCells(row, 2);
        names += row.cells[0];
    }
    if (names != expected)
        throw DataFault(text.path(), 0,
                        u"i gruppi devono essere %1."_s.arg(expected.join(u", "_s)));
}

void writeMaster(const QString& path, const DataText& text)
{
    Database master = Database::create(path);
    master.Execute(u"PRAGMA user_version = %1"_s.arg(store::MasterAccessMark));
    master.appendTable(store::masterTable());
    const store::TableDef& table = store::masterTable();
    store::RecordWriter writer = master.writer(table);
    for (const Row& row : text.rows())
        writer.add(store::Record{Value::nullIfEmpty(row.cells[1]), row.cells[0]});
}

void buildMaster(const QString& textPath, const QString& output)
{
    const DataText text = DataText::read(textPath);
    requireGroups(text);
    buildFile(output, [&](const QString& path) { writeMaster(path, text); });
}

} // namespace
} // namespace zelto::data

int main(int argc, char* argv[])
{
    return zelto::data::runBuilder(argc, argv, "zelto_build_master TESTO FILE.mdb",
                                   zelto::data::buildMaster);
}
