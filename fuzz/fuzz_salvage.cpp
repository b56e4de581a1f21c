// SPDX-License-Identifier: GPL-3.0-or-later
// Salvaging what is readable in a damaged job. Input: the bytes of its file. Whatever comes back
// must keep the rules of a job.
#include "fuzz_input.h"
#include "store/database.h"
#include "store/format_check.h"
#include "store/recovery/job_salvage.h"

#include <QTemporaryDir>

using namespace zelto;

namespace {

store::Database emptyDatabase()
{
    static const QTemporaryDir folder;
    static const QString path = folder.filePath(u"vuoto.zlt"_s);
    if (!QFile::exists(path))
        store::Database::create(path);
    return store::Database::openCopyInMemory(path);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const store::SalvagedJob job = store::salvage(bytes);
    fuzz::require(job.broken >= 0);
    store::Database repaired = emptyDatabase();
    fuzz::require(store::writeSalvaged(repaired, job) >= job.broken);
    store::ControllaTabelle(repaired);
    return 0;
}
