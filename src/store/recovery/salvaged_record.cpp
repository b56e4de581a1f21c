// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/recovery/salvaged_record.h"

#include "store/job_limits.h"
#include "store/schema.h"
#include "text/decimal_text.h"

namespace zelto::store {

namespace {

constexpr qsizetype UnitKeyLength = 5;

bool hasFieldsOf(QStringView table, const FoundRecord& found)
{
    return found.values.size() == jobTable(table).fields.size();
}

/// A unit number or position; none when the value cannot be one.
std::optional<int> positiveNumber(const Value& value)
{
    if (!value.isInteger() || value.integer() < 1 || value.integer() > MostRecords)
        return std::nullopt;
    return static_cast<int>(value.integer());
}

/// The number of a unit key, or of either half of a room key.
std::optional<int> keyNumber(QStringView key)
{
    bool isNumber = false;
    const int number = key.trimmed().toInt(&isNumber);
    if (!isNumber || number < 1 || unitKey(number) != key)
        return std::nullopt;
    return number;
}

/// The number that the key tells, or the one that stands beside it should the key be damaged.
std::optional<int> numberOf(QStringView key, const Value& stored)
{
    const std::optional<int> number = keyNumber(key);
    return number ? number : positiveNumber(stored);
}

std::optional<TableRecord> unit(const FoundRecord& found)
{
    const std::optional<int> number = numberOf(found.values[0].text(), found.values[1]);
    if (!number || !found.whole)
        return std::nullopt;
    TableRecord record{.table = TabellaUnita, .values = found.values};
    record.values[0] = unitKey(*number);
    record.values[1] = *number;
    return record;
}

std::optional<TableRecord> room(const FoundRecord& found)
{
    const QString key = found.values[0].text();
    const std::optional<int> number = numberOf(key.left(UnitKeyLength), found.values[1]);
    const std::optional<int> position = numberOf(key.mid(UnitKeyLength), found.values[2]);
    if (!number || !position || !found.whole)
        return std::nullopt;
    TableRecord record{.table = TabellaVani, .values = found.values};
    record.values[0] = roomKey(*number, *position);
    record.values[1] = *number;
    record.values[2] = *position;
    return record;
}

std::optional<TableRecord> marker(const FoundRecord& found)
{
    const double version = text::leadingNumber(found.values[0].text());
    if (static_cast<float>(version) != VersioneFormato)
        return std::nullopt;
    return TableRecord{.table = TabellaZelto, .values = found.values};
}

/// The record does not repeat the key, which is its number.
TableRecord generalData(const FoundRecord& found)
{
    TableRecord record{.table = TabellaDatiGenerali, .values = found.values};
    record.values[0] = found.rowNumber;
    return record;
}

} // namespace

bool isListed(const FoundRecord& found)
{
    // Tables that another program made may number the records of units too.
    return hasFieldsOf(TabellaVani, found) ||
           (hasFieldsOf(TabellaUnita, found) && (found.keyed || found.values[1].isInteger()));
}

std::optional<TableRecord> recordOfJob(const FoundRecord& found)
{
    if (isListed(found))
        return recordOfTable(hasFieldsOf(TabellaVani, found) ? TabellaVani : TabellaUnita, found);
    if (found.keyed)
        return std::nullopt;
    if (hasFieldsOf(TabellaVariabili, found))
        return recordOfTable(TabellaVariabili, found);
    if (hasFieldsOf(TabellaDatiGenerali, found))
        return generalData(found);
    if (hasFieldsOf(TabellaZelto, found))
        return marker(found);
    return std::nullopt;
}

std::optional<TableRecord> recordOfTable(QStringView table, const FoundRecord& found)
{
    if (table == TabellaUnita)
        return unit(found);
    if (table == TabellaVani)
        return room(found);
    return TableRecord{.table = table, .values = found.values};
}

} // namespace zelto::store
