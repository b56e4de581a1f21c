// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/job_limits.h"

#include "store/database_error.h"

namespace zelto::store {

void requireFileSize(qint64 size, const QString& path)
{
    constexpr int Megabyte = 20; // as a power of 2
    if (size > LargestFile)
        throw DatabaseError(
            ErrorNumber::Damaged,
            u"Il file «%1» è troppo grande per un lavoro: %2 MB, al massimo %3."_s.arg(path)
                .arg(size >> Megabyte)
                .arg(LargestFile >> Megabyte));
}

void requireMemoLength(qint64 length, const QString& subject)
{
    if (length > LongestMemo)
        throw DatabaseError(
            ErrorNumber::TextTooLong,
            u"Il testo di %1 è troppo lungo: %2 caratteri, al massimo %3."_s.arg(subject)
                .arg(length)
                .arg(LongestMemo));
}

void requireUnits(qint64 count, const QString& path)
{
    if (count > MostRecords)
        throw DatabaseError(
            ErrorNumber::Damaged,
            u"Il file «%1» contiene %2 unità, al massimo possono essere %3."_s.arg(path)
                .arg(count)
                .arg(MostRecords));
}

void requireRoomsOfUnit(qint64 count, const QString& unit, const QString& path)
{
    if (count > MostRecords)
        throw DatabaseError(
            ErrorNumber::Damaged,
            u"L'unità %2 del file «%1» ha %3 vani, al massimo possono essere %4."_s.arg(path, unit)
                .arg(count)
                .arg(MostRecords));
}

} // namespace zelto::store
