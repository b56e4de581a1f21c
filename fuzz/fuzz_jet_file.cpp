// SPDX-License-Identifier: GPL-3.0-or-later
// Reading every table of a database of the Windows edition's engine, whatever its bytes are.
#include "fuzz_input.h"
#include "store/database_error.h"
#include "store/jet/table.h"

#include <QFile>
#include <QTemporaryDir>

using namespace zelto;
using namespace zelto::fuzz;

namespace {

void readAll(const QString& path)
{
    const store::jet::PageFile file(path);
    for (const store::jet::TableEntry& entry : store::jet::userTables(file)) {
        const store::jet::Table table(file, entry.definitionPage);
        int visited = 0;
        const auto counts = table.forEachRow([&](const std::vector<store::jet::Field>& fields) {
            require(fields.size() == table.columns().size());
            ++visited;
        });
        require(counts.read == visited);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString memory = QStringLiteral("/dev/shm");
    static const QTemporaryDir folder((QFile::exists(memory) ? memory : QDir::tempPath()) +
                                      QStringLiteral("/zelto-XXXXXX"));
    const std::string_view bytes = bytesOf(data, size);
    QFile file(folder.filePath(QStringLiteral("VECCHIO.ZLT")));
    require(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    require(file.write(bytes.data(), static_cast<qint64>(bytes.size())) >= 0);
    file.close();
    try {
        readAll(file.fileName());
    } catch (const store::DatabaseError& error) {
        require(!error.description().isEmpty());
    } catch (const store::jet::BadBytes&) {
        return 0;
    }
    return 0;
}
