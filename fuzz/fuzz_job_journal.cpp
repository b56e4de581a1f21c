// SPDX-License-Identifier: GPL-3.0-or-later
// Opening a job with a journal and a WAL file beside it, whatever their bytes are. Input: length of
// the journal, length of the WAL file (three bytes each, 0 for none), the two, the job. Nothing but
// the job and what belongs to it may change, and reading changes nothing at all.
#include "fuzz_input.h"
#include "fuzz_journal.h"
#include "store/database.h"
#include "store/format_check.h"

#include <QDirIterator>
#include <QMap>
#include <QTemporaryDir>

#include <random>

using namespace zelto;
using namespace zelto::fuzz;

namespace {

using Contents = QMap<QString, QByteArray>;

/// A folder in memory, with files that a journal could name.
class Place
{
public:
    Place() : m_folder(folderTemplate())
    {
        require(m_folder.isValid());
        for (const QString& folder : {u"lavori"_s, u"passing"_s})
            require(QDir(m_folder.path()).mkdir(folder));
        for (const QString& name : {u"lavori/VICINO.ZLT"_s, u"NOTE.TXT"_s, u"lavori/NOTE.TXT"_s})
            writeFile(m_folder.filePath(name), "precious");
        require(QDir::setCurrent(m_folder.filePath(u"lavori"_s)));
        qputenv("TMPDIR", QFile::encodeName(m_folder.filePath(u"passing"_s)));
    }

    [[nodiscard]] QString job() const { return m_folder.filePath(u"lavori/LAVORO.ZLT"_s); }

    void lay(const Parts& parts) const
    {
        for (const char* suffix : {"-journal", "-wal", "-shm"})
            QFile::remove(job() + QString::fromLatin1(suffix));
        writeFile(job(), parts.job);
        if (!parts.journal.empty())
            writeFile(job() + u"-journal"_s, parts.journal);
        if (!parts.wal.empty())
            writeFile(job() + u"-wal"_s, parts.wal);
    }

    [[nodiscard]] Contents contents() const
    {
        Contents contents;
        QDirIterator files(m_folder.path(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            contents[file.fileName()] =
                file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        }
        return contents;
    }

    /// All but the job and what the engine keeps beside it.
    [[nodiscard]] Contents others() const
    {
        Contents contents = this->contents();
        contents.removeIf(
            [&](const Contents::iterator& file) { return file.key().startsWith(job()); });
        return contents;
    }

private:
    QTemporaryDir m_folder;
};

/// Whether it was not refused.
template <typename Operation>
bool accepted(Operation operation)
{
    try {
        operation();
        return true;
    } catch (const store::DatabaseError& error) {
        require(!error.description().isEmpty());
        return false;
    }
}

void open(const Place& place, store::OpenMode mode)
{
    store::Database job = store::Database::open(place.job(), mode);
    require(!job.path().isEmpty());
    store::ControllaTabelle(job);
}

} // namespace

/// Most bytes of a journal only tell whether it counts.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t limit, unsigned seed)
{
    std::minstd_rand chance(seed);
    const bool structured = chance() % 4 != 0;
    return structured ? mutateJournal(data, size, limit, chance)
                      : LLVMFuzzerMutate(data, size, limit);
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Place place;
    const Parts parts = partsOf(bytesOf(data, size));
    place.lay(parts);
    const Contents before = place.contents();
    const Contents others = place.others();
    accepted([&] { open(place, store::OpenMode::ReadOnly); });
    accepted([&] { (void)store::Database::openCopyInMemory(place.job()); });
    require(place.contents() == before);
    if (accepted([&] { (void)store::Database::open(place.job()); }))
        require(place.others() == others);
    else
        require(place.contents() == before);
    return 0;
}
