// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/coefficient_list.h"

#include "store/job_limits.h"
#include "text/decimal_text.h"
#include "text/literals.h"
#include "text/table_text.h"

namespace zelto::calc {

CoefficientList::CoefficientList(QStringView tableText)
{
    const text::CellTable table = text::TextToTable(tableText, store::MostGroupRows, 2);
    for (int row = 1; row <= store::MostGroupRows && !table.at(row, 1).isEmpty(); ++row) {
        const QString& value = table.at(row, 1);
        const QString& name = table.at(row, 2);
        const QString entry = name.isEmpty() ? value : u"[%1] %2"_s.arg(name, value);
        m_entries.push_back(entry.toStdString());
    }
}

double CoefficientList::resolve(std::string_view field)
{
    return field.starts_with('[') ? find(field).value : text::leadingNumber(field);
}

int CoefficientList::rowOf(std::string_view reference)
{
    return find(reference).row;
}

const CoefficientList::Found& CoefficientList::find(std::string_view reference)
{
    const auto known = m_resolved.find(reference);
    if (known != m_resolved.end())
        return known->second;
    return m_resolved.emplace(std::string{reference}, lookUp(reference)).first->second;
}

CoefficientList::Found CoefficientList::lookUp(std::string_view reference) const
{
    int row = 0;
    for (const std::string_view entry : m_entries) {
        ++row;
        if (!entry.starts_with(reference))
            continue;
        const std::size_t bracket = entry.find("] ");
        return {row, bracket == std::string_view::npos
                         ? 0
                         : text::leadingNumber(entry.substr(bracket + 2))};
    }
    return {};
}

} // namespace zelto::calc
