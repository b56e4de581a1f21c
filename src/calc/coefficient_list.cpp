// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/coefficient_list.h"

#include "store/job_limits.h"
#include "text/decimal_text.h"
#include "text/literals.h"
#include "text/table_text.h"

#include <algorithm>

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
    if (!field.starts_with('['))
        return text::leadingNumber(field);
    const auto known = m_resolved.find(field);
    if (known != m_resolved.end())
        return known->second;
    return m_resolved.emplace(std::string{field}, lookUp(field)).first->second;
}

bool CoefficientList::knows(std::string_view reference) const
{
    return std::any_of(m_entries.begin(), m_entries.end(),
                       [&](const std::string& entry) { return entry.starts_with(reference); });
}

double CoefficientList::lookUp(std::string_view reference) const
{
    for (const std::string_view entry : m_entries) {
        if (!entry.starts_with(reference))
            continue;
        const std::size_t bracket = entry.find("] ");
        return bracket == std::string_view::npos ? 0
                                                 : text::leadingNumber(entry.substr(bracket + 2));
    }
    return 0;
}

} // namespace zelto::calc
